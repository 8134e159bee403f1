// SPDX-License-Identifier: GPL-3.0-or-later
/// The one way from a routine to the user, and the few other services that the program around the
/// logic provides: clock, file dialogs, refresh of what a screen shows.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace lobemax {

class File_System;

enum class Buttons { OK, OK_Cancel, Yes_No, Yes_No_Cancel, Abort_Retry_Ignore, Retry_Cancel };
enum class Symbol { none, information, exclamation, stop };
enum class Answer { OK = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

/// A message box: lines of the text are separated by '\n'.
struct Message {
    std::string text;
    Buttons buttons = Buttons::OK;
    Symbol symbol = Symbol::none;
    Answer default_answer = Answer::OK;
    std::string title{};  // empty: the program's name
};

/// Whether a box with these buttons offers this answer.
bool Offers(Buttons buttons, Answer answer);

/// What a box answers where nobody prefers another: OK; Yes; Ignore; Cancel.
Answer Usual_Answer(Buttons buttons);

/// The word on the button, "OK", "Cancel", "Abort", "Retry", "Ignore", "Yes", "No".
const char* Button_Word(Answer answer);

/// A common dialog for a file: what it shows, and the path it came back with (none: cancelled).
struct File_Dialog {
    std::string title;
    std::string filter;      // "Name (*.ext)|*.ext|..." pairs
    int filter_index = 1;    // counted from 1
    std::string suggestion;  // name to start with
    bool overwrite_prompt = false;
};

/// What the program around the logic provides. Every function may be left empty: a message is then
/// answered with its usual answer, a dialog is cancelled, a refresh does nothing. All threads share one host, but for
/// one that has a Thread_Host.
struct Host {
    std::function<Answer(const Message&)> messenger;
    std::function<std::optional<std::string>(const File_Dialog&)> open_dialog;
    std::function<std::optional<std::string>(const File_Dialog&)> save_dialog;
    std::function<std::string()> date;        // text of today, as it is stored in a design
    std::function<std::string()> time;        // text of now
    std::function<void(bool)> wait_pointer;   // true: show it, false: restore the normal one
    std::function<void(int)> error_reported;  // told of each run-time error before its message
    std::function<void()> show_home;          // bring the Home screen up
    std::function<void()> refresh;            // lamps, buttons and menus follow the state again
    File_System* file_system = nullptr;       // in place of the operating system's (files/whole_file.h)
    std::function<bool(double)> progress;     // told the share done, 0 to 1, of long work; true: the user stops it
};

/// Installs the host, by main() or by a test, and returns the one before.
Host Install_Host(Host host);
/// That of this thread.
const Host& Installed_Host();

/// While it lives, its thread has a host of its own, which must outlive it; the innermost counts.
class Thread_Host {
public:
    explicit Thread_Host(const Host& host) noexcept;
    ~Thread_Host();
    Thread_Host(const Thread_Host&) = delete;
    Thread_Host& operator=(const Thread_Host&) = delete;

private:
    const Host* before_;
};

/// Shows a message box and returns the answer; an answer that the box does not offer counts as the usual one.
Answer Show_Message(const Message& box);
Answer Show_Message(const std::string& text, Buttons buttons = Buttons::OK, Symbol symbol = Symbol::none);
Answer Show_Message(const std::string& text, Buttons buttons, Symbol symbol, Answer default_answer);

void Show_Wait_Pointer();
void Restore_Pointer();
void Refresh_Screens();
/// Tells how far long work has got, 0 to 1; 1 ends it. @return whether the user wishes to stop
bool Stop_Wished(double share_done);
std::string Today_Text();
std::string Now_Text();

}  // namespace lobemax
