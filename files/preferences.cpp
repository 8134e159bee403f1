// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/preferences.h"

#include <array>
#include <filesystem>
#include <functional>
#include <sstream>
#include <vector>

#include "core/design_state.h"
#include "core/text.h"
#include "core/traps.h"
#include "files/byte_stream.h"
#include "files/whole_file.h"

namespace lobemax {

namespace {

constexpr const char* file_name = "Preferences.txt";
constexpr const char* line_end = "\r\n";

/// A record: its label, how its field is written, and how it is read.
struct Record {
    const char* label;
    std::function<std::string()> write;
    std::function<void(const std::string& value)> read;
};

std::string Quoted(const std::string& text)
{
    return '"' + text + '"';
}

std::string Unquoted(const std::string& value)
{
    if (value.size() < 2 || value.front() != '"' || value.back() != '"')
        throw Fault{type_mismatch};
    return value.substr(1, value.size() - 2);
}

int Whole(const std::string& value)
{
    const Number_Read number = Read_Number(value, Decimal_Symbol::point);
    if (!number.any || !number.whole)
        throw Fault{type_mismatch};
    return To_Integer(number.value);
}

Record Number_Record(const char* label, Integer& field, int least, int most)
{
    return {label, [&field] { return std::to_string(field); },
            [&field, least, most](const std::string& value) {
                const int number = Whole(value);
                if (number < least || number > most)
                    throw Fault{out_of_bounds};
                field = number;
            }};
}

Record Flag_Record(const char* label, Flag& field)
{
    return {label, [&field] { return std::string(field ? "#TRUE#" : "#FALSE#"); },
            [&field](const std::string& value) {
                if (value != "#TRUE#" && value != "#FALSE#")
                    throw Fault{type_mismatch};
                field = value == "#TRUE#";
            }};
}

Record Text_Record(const char* label, std::string& field, std::vector<std::string> known)
{
    return {label, [&field] { return Quoted(field); },
            [&field, known = std::move(known)](const std::string& value) {
                const std::string text = Unquoted(value);
                if (std::find(known.begin(), known.end(), text) == known.end())
                    throw Fault{type_mismatch};
                field = text;
            }};
}

std::array<Record, 9> Records(Design_State& design)
{
    return {Number_Record("Unit Code =  ", design.identity.WhichUnit, 1, 5),
            Text_Record("Format  ", design.identity.Number_Format, {"USA", "Europe"}),
            Text_Record("Cam Type  ", design.cam.Camtype, {"Radial", "Barrel", "Linear"}),
            Number_Record("Follower  ", design.cam.Followtype, 1, 2),
            Flag_Record("Translating   ", design.cam.Translating),
            Flag_Record("Full Screen   ", design.run.Full_Screen),
            Flag_Record("Open Clicked File Flag ", design.run.Open_Clicked_File),
            Flag_Record("Aspect Ratio Correction Flag ", design.run.Aspect_Flag),
            Number_Record("Time Base Flag", design.motion.Time_Base, 0, 3)};
}

/// Runs work whose stage changes as it goes on; a fault is reported under the routine's name with the stage it met.
template <class Work>
bool Staged(const std::string& routine, Work&& work)
{
    std::string stage = "Unknown cause";
    try {
        work(stage);
        return true;
    } catch (const Fault& fault) {
        Error_Report(fault.Number(), routine + stage);
    }
    return false;
}

}  // namespace

std::string Program_Folder(const Design_State& design, const std::string& documents)
{
    constexpr std::size_t name_length = 7;
    return documents + "/" + design.identity.Program_Name.substr(0, name_length) + "/";
}

bool Read_Preferences(Design_State& design, const std::string& folder)
{
    const std::string path = folder + file_name;
    std::error_code none;
    if (!std::filesystem::exists(path, none)) {
        std::filesystem::create_directories(folder, none);
        Write_Preferences(design, folder);
        return false;
    }
    return Staged("Read_Preferences", [&](std::string& stage) {
        stage = " when opening Pref_File";
        File_Source source(path);
        constexpr std::size_t most = 64 * 1024;  // nine short lines
        std::string text(std::min(source.Size() + 1, most), '\0');
        stage = " when reading Pref_File";
        text.resize(source.Read(text.data(), text.size()));
        std::istringstream lines(text);
        for (const Record& record : Records(design)) {
            std::string line;
            if (!std::getline(lines, line))
                throw Fault{past_end_of_file};
            const std::string label = Quoted(record.label) + ",";
            if (!line.starts_with(label))
                throw Fault{type_mismatch};
            record.read(Trim(line.substr(label.size())));
        }
    });
}

bool Write_Preferences(Design_State& design, const std::string& folder)
{
    return Staged("Write_Preferences", [&](std::string& stage) {
        stage = " when opening Preferences.txt File";
        Whole_File file(folder + file_name);
        stage = " when writing Preferences.txt File";
        std::string text;
        for (const Record& record : Records(design))
            text += Quoted(record.label) + "," + record.write() + line_end;
        file.Sink().Write(text.data(), text.size());
        file.Commit();
    });
}

std::string Register_Cam_File(std::string_view application, std::string_view extension, const std::string& mimeapps)
{
    const std::string type = "application/x-lobemax-" + std::string(extension) + "=";
    const std::string ours = type + "lobemax.desktop;";
    const std::string section = "[Default Applications]";
    const bool wanted = application == "Lobemax";
    std::string text;
    bool in_section = false;
    bool done = !wanted;
    std::istringstream lines(mimeapps);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with('[')) {
            in_section = line.starts_with(section);
            text += line + "\n";
            if (in_section && !done) {
                text += ours + "\n";
                done = true;
            }
            continue;
        }
        if (!(in_section && line.starts_with(type)))
            text += line + "\n";
    }
    if (!done)
        text += section + "\n" + ours + "\n";
    return text;
}

void Write_Default_Application(std::string_view application, const std::string& folder)
{
    Trap("Register_Cam_File", [&] {
        constexpr std::size_t most = 1024 * 1024;  // a list of lines, one a kind of file
        const std::string path = folder + "mimeapps.list";
        std::error_code none;
        std::string before;
        if (std::filesystem::exists(path, none)) {
            File_Source source(path);
            before.resize(most);
            std::size_t held = 0;
            while (const std::size_t count = source.Read(before.data() + held, most - held))
                held += count;
            if (held == most)
                return;
            before.resize(held);
        }
        const std::string after = Register_Cam_File(application, "cam", before);
        if (after == before)
            return;
        std::filesystem::create_directories(folder, none);  // a new account has no folder of settings yet
        Write_Whole_File(path, after);
    });
}

}  // namespace lobemax
