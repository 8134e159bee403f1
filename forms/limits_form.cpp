// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/limits_form.h"

#include "core/design_state.h"
#include "core/messages.h"
#include "core/text.h"

namespace lobemax {

namespace {

constexpr int figures = 7;

constexpr std::array controls{
    Form_Control{"frm_Limits", "Limits"},
    Form_Control{"lbl_Head", "", "Yours, whatever the design: kept beside the preferences"},
    Form_Control{"cmd_Usual", "&Usual Values", "The limits that the program starts with"},
    Form_Control{"cmd_Help", "&Help"},
    Form_Control{"cmd_OK", "&OK"},
    Form_Control{"cmd_Cancel", "&Cancel"},
};

std::string Text_of(const Design_State& design, const Limits& limits, Limit limit)
{
    const std::optional<double> value = In_Design_Units(design, limits, limit);
    return value ? In_Figures(design, *value, figures) : std::string();
}

}  // namespace

std::span<const Form_Control> Controls_of_Limits()
{
    return controls;
}

std::string Tip_of_Limit(const Design_State& design, Limit limit)
{
    const Limit_Entry& entry = Entry_of(limit);
    const std::string usual = Text_of(design, Limits(), limit);
    return std::string(entry.least ? "The least that is allowed" : "The most that is allowed") + "; usually " +
           (usual.empty() ? "off" : usual) + ". On the command line --limit " + std::string(entry.key);
}

std::array<Limit_Line, Limit_Count> Lines_of_Limits(const Design_State& design, const Limits& limits)
{
    std::array<Limit_Line, Limit_Count> lines;
    for (const Limit_Entry& entry : Limit_Table()) {
        Limit_Line& line = lines[static_cast<std::size_t>(entry.limit)];
        line.on = limits[entry.limit].has_value();
        line.text = Text_of(design, limits, entry.limit);
    }
    return lines;
}

Form_Entry Enter_Limit(const Design_State& design, Limits& limits, Limit limit, std::string_view text)
{
    const std::string refusal = Put_Limit(limits, design, limit, text);
    if (refusal.empty())
        return {true, std::string(text)};
    Show_Message(refusal, Buttons::OK, Symbol::exclamation);
    return {false, Text_of(design, limits, limit), true};
}

bool Turn_On(const Design_State& design, Limits& limits, Limit limit, std::string_view text)
{
    if (!Trim(text).empty())
        return Put_Limit(limits, design, limit, text).empty();
    limits[limit] = Entry_of(limit).usual;
    return limits[limit].has_value();
}

bool Limits_Are_Whole(const Design_State& design, std::span<const Limit_Line, Limit_Count> lines, Limit& missing)
{
    for (const Limit_Entry& entry : Limit_Table()) {
        const Limit_Line& line = lines[static_cast<std::size_t>(entry.limit)];
        if (!line.on || !Trim(line.text).empty())
            continue;
        missing = entry.limit;
        const std::string unit = Unit_of_Limit(design, entry.limit);
        Show_Message("'" + std::string(entry.caption) + "' is on and has no value.\nType one" +
                         (unit.empty() ? "" : " in " + unit) + ", or take the tick away.",
                     Buttons::OK, Symbol::exclamation);
        return false;
    }
    return true;
}

}  // namespace lobemax
