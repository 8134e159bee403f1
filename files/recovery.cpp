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
#include "files/whole_file.h"

namespace lobemax {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view present_format = "9";

/// A short text file; what stands beyond is cut off.
std::string Read_Note(const std::string& path)
{
    constexpr std::size_t most = std::size_t{64} * 1024;  // three lines, one of them a path
    File_Source source(path);
    std::string text(most, '\0');
    std::size_t held = 0;
    while (const std::size_t count = source.Read(text.data() + held, most - held))
        held += count;
    text.resize(held);
    return text;
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
    for (fs::directory_iterator entry(folder, none), end; !none && entry != end; entry.increment(none)) {
        const std::string name = entry->path().filename().string();
        if (!name.starts_with(name_begins_with) || !name.ends_with(model_ends))
            continue;
        int process = 0;
        if (name.starts_with(name_begins))
            std::from_chars(name.data() + name_begins.size(), name.data() + name.size(), process);
        std::error_code unknown;  // an age that cannot be told is the oldest
        if (!Runs(process))
            found.emplace_back(entry->last_write_time(unknown), entry->path().string());
    }
    std::ranges::sort(found, std::greater<>());
    std::vector<std::string> models;
    for (auto& [when, model] : found)
        models.push_back(std::move(model));
    return models;
}

/// Puts a recovery aside under a name that is not offered again. @return that name, or the old one where it had to stay
std::string Put_Aside(const std::string& model)
{
    constexpr int most_kept = 1000;
    for (int i = 1; i < most_kept; ++i) {
        const std::string name = model + ".bad" + (i == 1 ? "" : std::to_string(i));
        std::error_code error;
        if (fs::exists(fs::symlink_status(name, error)))
            continue;
        fs::rename(model, name, error);
        if (error)
            break;
        fs::remove(Note_of(model), error);
        return name;
    }
    return model;
}

/// What the note beside a recovery tells. A model without its note is read in the number format in force.
struct Note {
    std::string format;
    std::string path;          // may have line breaks of its own: it stands between the first line and the last
    int units_of_results = 0;  // 0: not told
};

Note Note_beside(const std::string& model)
{
    Note note;
    std::string text;
    try {
        text = Read_Note(Note_of(model));
    } catch (const Fault&) {
        return note;
    }
    if (text.ends_with('\n'))
        text.pop_back();
    note.format = text.substr(0, text.find('\n'));
    text.erase(0, note.format.size() + 1);
    const std::size_t last = text.rfind('\n');
    Number_Read units;
    try {
        units = Read_Number(last == std::string::npos ? text : text.substr(last + 1), Decimal_Symbol::point);
    } catch (const Fault&) {  // too large for any number: no unit system
    }
    if (units.whole && units.value >= 0 && units.value <= Last_Unit_System) {
        note.units_of_results = static_cast<int>(units.value);
        text.erase(last == std::string::npos ? 0 : last);
    }
    note.path = text;
    return note;
}

/// Reads a recovery into the design, unsaved, under the name it had. Its files go once the design is in this program's
/// own recovery; one that was not read in full is put aside.
bool Recover(Design_State& design, const std::string& folder, const std::string& model)
{
    const Note note = Note_beside(model);
    if (note.format == "USA" || note.format == "Europe")
        design.identity.Number_Format = note.format;
    Reset_All(design);
    const bool read = Load_Model(design, model);
    if (!read && !design.run.Read_Partial) {
        const std::string kept = Put_Aside(model);
        Reset_All(design);
        Show_Message("The recovery file could not be read.  It is kept as\n" + kept, Buttons::OK, Symbol::exclamation);
        return false;
    }
    design.identity.File_Name = note.path;
    if (note.units_of_results != 0) {  // a model file does not tell
        design.results.WhichUnit = note.units_of_results;
        Reach(design, Mark::units_changed);
    }
    design.identity.Model_Name = note.path.empty() ? "Recovered" : StripFilename(note.path);
    Apply(design, Event::edited);
    Mark_Unsaved(design);
    if (!read)
        Apply(design, Event::load_partial);
    Set_Units(design);
    if (!read) {
        const std::string kept = Put_Aside(model);
        Write_Recovery(design, folder);
        Show_Message("The recovery file was read in part only.  It is kept as\n" + kept, Buttons::OK,
                     Symbol::exclamation);
    } else if (Write_Recovery(design, folder) && model != Recovery_Model_Path(folder)) {
        Drop(model);
    }
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
        Write_Whole_File(Recovery_Note_Path(folder), design.identity.Number_Format + "\n" + design.identity.File_Name +
                                                         "\n" + std::to_string(int{design.results.WhichUnit}) + "\n");
        Write_Whole_File(Recovery_Model_Path(folder), Model_Text(design));
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
            return Recover(design, folder, model);
        Drop(model);
    }
    return false;
}

}  // namespace lobemax
