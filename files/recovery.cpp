// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/recovery.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/startup.h"
#include "core/text.h"
#include "core/units.h"
#include "edit/unsaved.h"
#include "files/byte_stream.h"
#include "files/model_file.h"

namespace lobemax {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view present_format = "9";

std::string Read_All(const std::string& path)
{
    File_Source source(path);
    std::string text(source.Size(), '\0');
    text.resize(source.Read(text.data(), text.size()));
    return text;
}

void Write_Whole(const std::string& path, const std::string& text)
{
    Whole_File file(path);
    file.Sink().Write(text.data(), text.size());
    file.Commit();
}

/// The design as a model file. What the format cannot hold (the last conditions of 20 segments) is left out, as in any
/// saved file.
std::string Model_Text(Design_State& design)
{
    Text_Sink sink;
    try {
        Write_Model(design, sink, present_format);
    } catch (const Fault&) {
        // what came before the fault stands in the text: all that was typed, but not the calculated table
    }
    return sink.Text();
}

constexpr std::string_view name_begins_with = "Recovery";
const std::string name_begins = "Recovery-";
const std::string model_ends = ".cam";

std::string Note_of(const std::string& model)
{
    return model.substr(0, model.size() - model_ends.size()) + ".txt";
}

void Drop(const std::string& model)
{
    std::error_code ignored;
    fs::remove(model, ignored);
    fs::remove(Note_of(model), ignored);
}

/// Whether a program of ours runs under this number, other than this one.
bool Runs(int process)
{
    if (process <= 0 || process == ::getpid() || (::kill(process, 0) != 0 && errno != EPERM))
        return false;
    std::ifstream name("/proc/" + std::to_string(process) + "/comm");
    std::string word;
    return std::getline(name, word) && word.starts_with("lobemax");  // the number may be another program's by now
}

/// The recoveries in a folder whose program runs no more, the newest first; one of an earlier release has no number.
std::vector<std::string> Left_Behind(const std::string& folder)
{
    std::vector<std::pair<fs::file_time_type, std::string>> found;
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(folder, none)) {
        const std::string name = entry.path().filename().string();
        if (!name.starts_with(name_begins_with) || !name.ends_with(model_ends))
            continue;
        int process = 0;
        if (name.starts_with(name_begins))
            std::from_chars(name.data() + name_begins.size(), name.data() + name.size(), process);
        if (!Runs(process))
            found.emplace_back(entry.last_write_time(none), entry.path().string());
    }
    std::ranges::sort(found, std::greater<>());
    std::vector<std::string> models;
    for (auto& [when, model] : found)
        models.push_back(std::move(model));
    return models;
}

/// Reads a recovery into the design, unsaved, under the name it had, and drops its files.
bool Recover(Design_State& design, const std::string& model)
{
    std::error_code none;
    std::string note;
    try {
        note = Read_All(Note_of(model));
    } catch (const Fault&) {
        // a model without its note is read in the number format in force
    }
    std::istringstream lines(note);
    std::string format;
    std::string path;
    std::string units_of_results;
    std::getline(lines, format);
    std::getline(lines, path);
    std::getline(lines, units_of_results);
    if (format == "USA" || format == "Europe")
        design.identity.Number_Format = format;
    Reset_All(design);
    const bool read = Load_Model(design, model);
    if (!read && !design.run.Read_Partial) {
        fs::rename(model, model + ".bad", none);
        Drop(model);
        Reset_All(design);
        Show_Message("The recovery file could not be read.  It is kept as\n" + model + ".bad", Buttons::OK,
                     Symbol::exclamation);
        return false;
    }
    design.identity.File_Name = path;
    if (const Number_Read units = Read_Number(units_of_results, Decimal_Symbol::point);
        units.whole && units.value >= First_Unit_System && units.value <= Last_Unit_System) {
        design.results.WhichUnit = static_cast<int>(units.value);  // a model file does not tell
        Reach(design, Mark::units_changed);
    }
    design.identity.Model_Name = path.empty() ? "Recovered" : StripFilename(path);
    Apply(design, Event::edited);
    Mark_Unsaved(design);
    if (!read)
        Apply(design, Event::load_partial);
    Set_Units(design);
    Drop(model);
    Refresh_Screens();
    return true;
}

}  // namespace

bool Worth_Recovering(const Design_State& design)
{
    return Unsaved(design);
}

std::string Recovery_Model_Path(const std::string& folder)
{
    return folder + name_begins + std::to_string(::getpid()) + model_ends;
}

std::string Recovery_Note_Path(const std::string& folder)
{
    return Note_of(Recovery_Model_Path(folder));
}

bool Write_Recovery(Design_State& design, const std::string& folder)
{
    if (!Worth_Recovering(design)) {
        Drop_Recovery(folder);
        return true;
    }
    try {
        Write_Whole(Recovery_Note_Path(folder), design.identity.Number_Format + "\n" + design.identity.File_Name +
                                                    "\n" + std::to_string(int{design.results.WhichUnit}) + "\n");
        Write_Whole(Recovery_Model_Path(folder), Model_Text(design));
        return true;
    } catch (const Fault&) {
        return false;  // an unattended write tells nobody: the user's own save will
    }
}

void Drop_Recovery(const std::string& folder)
{
    Drop(Recovery_Model_Path(folder));
}

bool Offer_Recovery(Design_State& design, const std::string& folder)
{
    for (const std::string& model : Left_Behind(folder)) {
        const Answer answer = Show_Message(
            "An unsaved design of the last run was found.\n"
            "Do you want to recover it?",
            Buttons::Yes_No, Symbol::exclamation);
        if (answer == Answer::Yes)
            return Recover(design, model);
        Drop(model);
    }
    return false;
}

}  // namespace lobemax
