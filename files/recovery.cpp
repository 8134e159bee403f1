// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/recovery.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

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

}  // namespace

bool Worth_Recovering(const Design_State& design)
{
    return Unsaved(design);
}

bool Write_Recovery(Design_State& design, const std::string& folder)
{
    if (!Worth_Recovering(design)) {
        Drop_Recovery(folder);
        return true;
    }
    try {
        Write_Whole(folder + Recovery_Note_Name,
                    design.identity.Number_Format + "\n" + design.identity.File_Name + "\n");
        Write_Whole(folder + Recovery_Model_Name, Model_Text(design));
        return true;
    } catch (const Fault&) {
        return false;  // an unattended write tells nobody: the user's own save will
    }
}

void Drop_Recovery(const std::string& folder)
{
    std::error_code ignored;
    fs::remove(folder + Recovery_Model_Name, ignored);
    fs::remove(folder + Recovery_Note_Name, ignored);
}

bool Offer_Recovery(Design_State& design, const std::string& folder)
{
    const std::string model = folder + Recovery_Model_Name;
    std::error_code none;
    if (!fs::exists(model, none))
        return false;
    const Answer answer = Show_Message(
        "An unsaved design of the last run was found.\n"
        "Do you want to recover it?",
        Buttons::Yes_No, Symbol::exclamation);
    if (answer != Answer::Yes) {
        Drop_Recovery(folder);
        return false;
    }
    std::string note;
    try {
        note = Read_All(folder + Recovery_Note_Name);
    } catch (const Fault&) {
        // a model without its note is read in the number format in force
    }
    const std::size_t line = note.find('\n');
    if (const std::string format = note.substr(0, line); format == "USA" || format == "Europe")
        design.identity.Number_Format = format;
    Reset_All(design);
    const bool read = Load_Model(design, model);
    if (!read && !design.run.Read_Partial) {
        fs::rename(model, model + ".bad", none);
        Drop_Recovery(folder);
        Reset_All(design);
        Show_Message("The recovery file could not be read.  It is kept as\n" + model + ".bad", Buttons::OK,
                     Symbol::exclamation);
        return false;
    }
    std::string path;
    if (line != std::string::npos)
        path = note.substr(line + 1, note.find('\n', line + 1) - line - 1);
    design.identity.File_Name = path;
    design.identity.Model_Name = path.empty() ? "Recovered" : StripFilename(path);
    Apply(design, Event::edited);
    Mark_Unsaved(design);
    if (!read)
        Apply(design, Event::load_partial);
    Set_Units(design);
    Drop_Recovery(folder);
    Refresh_Screens();
    return true;
}

}  // namespace lobemax
