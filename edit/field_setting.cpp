// SPDX-License-Identifier: GPL-3.0-or-later
#include "edit/field_setting.h"

#include <array>
#include <optional>
#include <span>

#include "core/field_directory.h"
#include "core/linkage_setup.h"
#include "core/text.h"
#include "core/units.h"
#include "motion/motion_programs.h"
#include "motion/segments.h"

namespace lobemax {

namespace {

struct Choice {
    std::string_view field;
    std::string_view words;  // separated by '|'
};

// Texts that know only certain words.
constexpr std::array choices{
    Choice{"Number_Format", "USA|Europe"},
    Choice{"Camtype$", "Radial|Barrel|Linear"},
    Choice{"Barrel_Type$", "|Grooved|Ribbed"},
    Choice{"Closure$", "Force|Form"},
    Choice{"Keyway_Text", "12 O'clock|3 O'clock|6 O'clock|9 O'clock"},
    Choice{"Rise_Fall_Dwell", "R|F|P|D|S"},
};

struct Whole_Range {
    std::string_view field;
    int low;
    int high;
};

// Integers that know only certain values.
constexpr std::array ranges{
    Whole_Range{"WhichUnit", First_Unit_System, Last_Unit_System},
    Whole_Range{"No of segments", 1, Max_Segments},
    Whole_Range{"Seg", 1, Max_Segments},
    Whole_Range{"Time Base", 1, 3},
    Whole_Range{"Followtype", 1, 2},
    Whole_Range{"Model_Type", 1, 5},
    Whole_Range{"Linkage_Type", 0, 3},
    Whole_Range{"Printstep", 1, 32767},
};

// Directions and sides: +1 or -1.
constexpr std::array signs{"Rotflag", "ArmDirect", "In_Out", "Top_Bot", "Assemflag1", "Assemflag2", "Side_Sign"};

std::string Quoted(std::string_view text)
{
    return "'" + std::string(text) + "'";
}

/// The word of the list that the text is, written as the list writes it.
std::optional<std::string> Chosen_Word(std::string_view words, std::string_view text)
{
    while (true) {
        const std::size_t bar = words.find('|');
        if (Same_Text(words.substr(0, bar), text))
            return std::string(words.substr(0, bar));
        if (bar == std::string_view::npos)
            return std::nullopt;
        words.remove_prefix(bar + 1);
    }
}

/// Why the value cannot stand in the field, or empty; the value comes back as the field's own wording.
std::string Check_Value(std::string_view name, std::string& value)
{
    for (const Choice& choice : choices)
        if (choice.field == name) {
            const auto word = Chosen_Word(choice.words, Trim(value));
            if (!word)
                return Quoted(value) + " is none of " + std::string(choice.words);
            value = *word;
            return {};
        }
    const Number_Read number = Read_Number(value, Decimal_Symbol::point);
    for (const Whole_Range& range : ranges)
        if (range.field == name && (!number.whole || number.value < range.low || number.value > range.high))
            return Quoted(value) + " is not a whole number from " + std::to_string(range.low) + " to " +
                   std::to_string(range.high);
    for (const std::string_view sign : signs)
        if (sign == name && (!number.whole || (number.value != 1.0 && number.value != -1.0)))
            return Quoted(value) + " is neither 1 nor -1";
    if (name == "Beta_Deg" && number.whole && (number.value < 0.0 || number.value > 360.0))
        return "Beta cannot be > 360 or < 0";
    if (name == "Zoom Factor" && number.whole && number.value <= 0.0)
        return Quoted(value) + " is not above 0";
    if (name == "Program" && Find_Program(Trim(value)) == nullptr)
        return "there is no motion program " + Quoted(value);
    return {};
}

/// Whether the element belongs to segment 0, which no design uses.
bool Of_Segment_0(const Design_State& design, const Field& field, const Field_Index& index)
{
    const Bounds bounds = field.bounds(design)[0];
    return field.dimensions == 1 && bounds.lo == 0 && bounds.hi == Max_Segments && index.count == 1 && index.at[0] == 0;
}

/// What follows from a field that was set.
void Follow(Design_State& design, std::string_view name, const Field_Index& index)
{
    Motion_Group& m = design.motion;
    Cam_Group& c = design.cam;
    for (const std::string_view cell : {"Beta_Deg", "Rise_Fall_Dwell", "Program", "Start Value", "End Value"})
        if (name == cell)
            m.Seg_Done(index.at[0]) = false;  // an edited row waits for its calculation
    if (name == "Shaft speed") {
        Set_Shaft_Speed(design, m.Shaft_speed);
    } else if (name == "Beta_Deg") {
        m.Beta_Rad(index.at[0]) = m.Beta_Deg(index.at[0]) / Deg_per_Rad;
        Update_Segment_Angles(design);
    } else if (name == "No of segments") {
        Update_Segment_Angles(design);
    } else if (name == "Program") {
        const std::string code = m.Program(index.at[0]);
        Pick_Program(design, index.at[0], Trim(code));
    } else if (name == "Rise_Fall_Dwell") {
        const char kind = m.Rise_Fall_Dwell(index.at[0])[0];
        if (kind == 'P' || kind == 'D' || kind == 'S')
            Pick_Motion(design, index.at[0], kind);  // these kinds have one program each
    } else if (name == "Ext_Force_On") {
        if (m.Ext_Force_On == 0)
            Drop_External_Force(design);
    } else if (name == "No of conditions") {
        m.No_Conditions(index.at[0]) = To_Integer(Val(m.No_of_conditions(index.at[0]), Decimal_Symbol::point));
    } else if (name == "Shift_Angle") {
        c.Shift_Points = To_Integer(c.Shift_Angle / 360.0 * m.Max_Data_Points_used);
    } else if (name == "ArmX" || name == "ArmY") {
        c.Arm_Pivot_Dist = Sqr(c.ArmX * c.ArmX + c.ArmY * c.ArmY);
    } else if (name == "WhichUnit" || name == "Time Base" || name == "Camtype$" || name == "Translating") {
        Set_Units(design);
    } else if (name == "Links" || name == "Linkage_Type") {
        Set_Up_Linkage(design, design.linkage.Links);
    }
}

}  // namespace

std::string Apply_Setting(Design_State& design, std::string_view setting)
{
    const std::size_t equals = setting.find('=');
    if (equals == std::string_view::npos)
        return Quoted(setting) + " is not FIELD=VALUE";
    const Field_Reference reference = Read_Field_Reference(design, setting.substr(0, equals));
    if (reference.field == nullptr)
        return reference.error;
    const Field& field = *reference.field;
    std::string value(setting.substr(equals + 1));
    if (field.name == "Deltatheta") {
        const Number_Read step = Read_Number(value, Decimal_Symbol::point);
        return step.whole && Set_Step(design, step.value) ? "" : Quoted(value) + " is no step: 1.0, 0.50, 0.25, 0.125";
    }
    if (Of_Segment_0(design, field, reference.index))
        return "index 0 of " + Quoted(field.name) + " is outside 1 to " + std::to_string(Max_Segments);
    if (std::string refusal = Check_Value(field.name, value); !refusal.empty())
        return refusal;
    const Design_State before = design;
    std::string refusal = Set_Field(design, field, reference.index, value);
    if (refusal.empty())
        try {
            Follow(design, field.name, reference.index);
        } catch (const Fault&) {
            refusal = Quoted(value) + " is too large for " + Quoted(field.name);
        }
    if (!refusal.empty())
        design = before;
    return refusal;
}

}  // namespace lobemax
