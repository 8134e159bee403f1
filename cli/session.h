// SPDX-License-Identifier: GPL-3.0-or-later
/// What the commands share: the host of the command line, input, output and settings.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "core/design_state.h"
#include "core/messages.h"

namespace lobemax::cli {

/// Options that every command takes.
struct Common_Options {
    std::vector<std::string> answers;  // buttons preferred wherever a box offers them
    std::optional<std::string> date;
    std::optional<std::string> time;
};

void Add_Common_Options(CLI::App& app, Common_Options& options);

/// Which joint the second stage of a sixbar hangs on: no file holds the choice, and one that is read is of Watt.
struct Stage_Choice {
    bool watt = false;
    bool stephenson = false;
};
void Add_Stage_Options(CLI::App& command, Stage_Choice& choice);

/// Makes the choice. @return empty, or why it is refused
std::string Take_Stage(Design_State& design, const Stage_Choice& choice);

/// The option of the commands that show or write rows: the true ones in place of the program's.
void Add_Truth_Option(CLI::App& command, bool& truth);

/// One run of a command: its design, its streams, and the host that prints each message as one line on standard error
/// and answers it. Nothing is read from or written to the user's documents.
class Session {
public:
    /// Installs the host and starts a fresh design. @param terminal  errors is one: long work shows its progress there
    Session(const Common_Options& options, std::istream& in, std::ostream& out, std::ostream& err,
            bool terminal = false);
    /// Puts the host before it back.
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Design_State design;
    std::istream& in;
    std::ostream& out;
    std::ostream& err;

    /// Whether a run-time error was reported since the session started.
    bool Error_Reported() const { return error_reported_; }

    /// Whether anything was printed on standard error.
    bool Told() const { return told_; }

    /// Prints a line of the command's own on standard error.
    void Say(const std::string& what) const;

    /// Prints what is wrong with the command line or an input, and returns the status for it.
    int Wrong(const std::string& what) const;

    /// Runs a check that shows a box where it refuses. What it shows although it accepts is printed.
    /// @return empty, or the sentence of its refusal, which is then left to the caller to print
    std::string Refusal_of(const std::function<bool()>& check);

    /// Reads a model. The user was told of whatever is not well.
    /// @return done; wrong_input: it was not read in full; failed: it was, and an error was reported on the way, as
    ///         from figures that follow from its fields. Such a design may be looked at, not written on.
    int Load(const std::string& path);

    /// Applies the settings in order; false: one was refused, and the user was told.
    bool Apply_Settings(const std::vector<std::string>& settings);

    /// Writes the design to a file, whole or not at all, and returns the command's status. After a reported error an
    /// older file stays as it was.
    int Save(const std::string& path);

    /// Writes a text to a file by the same rules. @param routine  name that an error is reported under
    int Save_Text(const std::string& path, const std::string& text, const char* routine);

    /// Reads the design as of a stage, for a command that shows it: what was calculated of it stands as it was read.
    /// @return false: it has no such choice, and the user was told
    bool Read_as(const Stage_Choice& choice);

    /// Puts the true rows of pressure angle, curvature and profile into the design.
    /// @return false: it has none, and the user was told why
    bool Take_Truth();

    /// Works the linkage out for a command that shows or writes its results, where the design has one and a motion.
    /// @return false: it could not be, and the user was told why
    bool Linkage_Worked_Out();

    /// Answers the save dialogs of what runs from here on with a path: they are the command's output.
    void Answer_Save_Dialogs(const std::string& path);

    /// Sets the unit system of a fresh design, whose defaults then follow it.
    void Use_Units_for_New_Design(int units);

    /// Why a segment that was asked for cannot be, or empty.
    std::string Refused_Segment(std::optional<int> segment) const;

private:
    void Print(const std::string& line) const;
    void Show_Progress(double share);
    void Wipe_Bar() const;

    Host before_;
    std::vector<std::string> answers_;
    std::vector<Message>* held_ = nullptr;  // where boxes go in place of standard error
    bool error_reported_ = false;
    mutable bool told_ = false;
    mutable int bar_ = -1;  // what the progress bar shows, percent; -1: there is none
};

/// An option that may be given any number of times, one value each.
CLI::Option* Add_Repeated(CLI::App& command, const std::string& name, std::vector<std::string>& values,
                          const std::string& help);

void Add_Settings(CLI::App& command, std::vector<std::string>& settings);
void Add_Output(CLI::App& command, std::string& path, const std::string& help);

/// An option with a number from low to high, with a decimal point whatever the locale: Qt sets that of the user.
/// @param take  what becomes of the number
CLI::Option* Add_Number(CLI::App& command, const std::string& name, double low, double high,
                        std::function<void(double)> take, const std::string& help);

/// The same with any number.
CLI::Option* Add_Number(CLI::App& command, const std::string& name, std::optional<double>& value,
                        const std::string& help);

/// A number wholly read from an argument, with a decimal point.
std::optional<double> Whole_Number(const std::string& text);

}  // namespace lobemax::cli
