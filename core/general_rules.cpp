// SPDX-License-Identifier: GPL-3.0-or-later
#include <vector>

#include "core/field_rule.h"
#include "core/number_format.h"
#include "core/text.h"
#include "core/unit_change.h"
#include "core/units.h"

namespace lobemax {

namespace {

using enum Field_Role;

std::string Quoted(std::string_view text)
{
    return "'" + std::string(text) + "'";
}

constexpr std::string_view number_formats = "USA|Europe";

Verdict Number_Format_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return One_of(number_formats, value.text);
}

/// The texts that hold numbers are the same numbers in the new format.
void Store_Number_Format(Design_State& design, const Field_Index&, const Typed_Value& value)
{
    Use_Number_Format(design, *Listed_Word(number_formats, value.text));
}

Verdict Units_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Whole_from(First_Unit_System, Last_Unit_System, value);
}

void Store_Units(Design_State& design, const Field_Index&, const Typed_Value& value)
{
    Change_Units(design, static_cast<int>(value.number));
}

template <int Low, int High>
Verdict Whole(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Whole_from(Low, High, value);
}

Verdict Above_Zero(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Positive(value, Quoted(value.text) + " is not above 0");
}

Field_Rule Derived(std::string_view field, std::string_view from)
{
    return {.field = field, .role = derived, .words = from, .event = {}};
}

Field_Rule Setting(std::string_view field, std::string_view words, decltype(Field_Rule::may_be) may_be = nullptr)
{
    return {.field = field, .role = setting, .words = words, .event = {}, .may_be = may_be};
}

std::vector<Field_Rule> Make_Rules()
{
    std::vector<Field_Rule> rules{
        Setting("User", "User"),
        Setting("Design No.", "Design number"),
        Setting("Date", "Date"),
        Setting("Time", "Time"),
        Setting("Model_Name", "Model name"),
        Setting("File_Name", "File name"),
        {.field = "Number_Format",
         .role = setting,
         .words = "Number format",
         .event = {},
         .may_be = Number_Format_may_be,
         .store = Store_Number_Format},
        {.field = "WhichUnit",
         .role = input,
         .words = "Units",
         .event = {},
         .may_be = Units_may_be,
         .store = Store_Units,
         .rows = true},
        Setting("Printstep", "Print step", Whole<1, 32767>),
        Setting("Zoom Factor", "Zoom", Above_Zero),
        Setting("Plot_Style", "Plot style", Whole<1, 4>),
        Setting("Plot_Vars", "Plotted variable", Whole<0, Plot_Group::Last_Variable>),
        Setting("Num_Sets", "Data sets", Whole<0, 4>),
        Setting("Segment_Pick", "Plotted segment"),
        Setting("Plot_First", "First plotted angle"),
        Setting("Plot_Last", "Last plotted angle"),
        Setting("Plot_Color", "Plot colours"),
    };
    for (const std::string_view field : {"Program_Name", "Version_Str", "Release_Str", "Release_Date", "Release_Year"})
        rules.push_back(Derived(field, "the program's release"));
    for (const std::string_view field :
         {"Decimals_1", "Decimals_2", "Decimals_3", "Decimals_4", "Decimals_5", "Decimals_6"})
        rules.push_back(Derived(field, "WhichUnit"));
    for (const std::string_view field :
         {"Var_Name", "Var_Short", "Var_Symbol", "Var_Long", "Var_Unit", "Idx_X", "Idx_Xdot", "Idx_Xddot", "Idx_SX"})
        rules.push_back(Derived(field, "the table of variables"));
    for (const std::string_view field : {"Calculated", "Sized", "Dynamicflag", "Modelflag", "Stressflag",
                                         "Polydyne_Calc", "Ext_Force_Calc", "CompCam_Calc", "Linkage_Calc", "FFT_Done"})
        rules.push_back(Derived(field, "the calculation that reaches it"));
    for (const std::string_view field :
         {"From_Disk", "Imported_Model", "Model_Saved", "Example_Loaded", "File_Loaded", "Units_Changed"})
        rules.push_back(Derived(field, "where the design comes from"));
    for (const std::string_view field : {"Calc_Abort", "Calc_Error", "Math_Error", "Separated", "Separation_Answer"})
        rules.push_back(Derived(field, "the last calculation"));
    for (const std::string_view field :
         {"Saved Variables", "Max Variables", "Max Segments possible", "Max Bounds possible"})
        rules.push_back(Derived(field, "the limits of the program"));
    for (const std::string_view field :
         {"File_Version", "File_Release", "File_Max_Variables", "File_Max_Segments", "File_Max_Bounds",
          "File_Saved_Variables", "Read_Abort", "Read_Partial", "Read_Complete"})
        rules.push_back(Derived(field, "the file that was read"));
    for (const std::string_view field :
         {"CalcData", "Profile_X", "Profile_Y", "Fft_Work_A", "Fft_Work_B", "Ext_Force_Table", "Arm_Pivot_X",
          "Arm_Pivot_Y", "Link_Theta", "Link_Omega", "Link_Alpha", "Link_X", "Link_Y", "Link_Ratio_S", "Link_Ratio_V",
          "Link_Ratio_A", "Ode_Time", "Ode_States"})
        rules.push_back(Derived(field, "the calculation that fills it"));

    return rules;
}

}  // namespace

std::span<const Field_Rule> General_Rules()
{
    static const std::vector<Field_Rule> rules = Make_Rules();
    return rules;
}

std::optional<std::string> Listed_Word(std::string_view words, std::string_view text)
{
    const std::string wanted = Trim(text);
    while (true) {
        const std::size_t bar = words.find('|');
        if (Same_Text(words.substr(0, bar), wanted))
            return std::string(words.substr(0, bar));
        if (bar == std::string_view::npos)
            return std::nullopt;
        words.remove_prefix(bar + 1);
    }
}

void Show_Refusal(const Verdict& refusal)
{
    Show_Message({refusal.sentence, Buttons::OK, refusal.symbol, Answer::OK, refusal.title});
}

Verdict One_of(std::string_view words, std::string_view text)
{
    return Listed_Word(words, text) ? Verdict{} : Verdict{Quoted(text) + " is none of " + std::string(words)};
}

Verdict Whole_from(int low, int high, const Typed_Value& value)
{
    if (value.number >= low && value.number <= high)
        return {};
    return {Quoted(value.text) + " is not a whole number from " + std::to_string(low) + " to " + std::to_string(high)};
}

Verdict Sign(const Typed_Value& value)
{
    return value.number == 1.0 || value.number == -1.0 ? Verdict{}
                                                       : Verdict{Quoted(value.text) + " is neither 1 nor -1"};
}

Verdict Positive(const Typed_Value& value, std::string_view sentence)
{
    return value.number > 0.0 ? Verdict{} : Verdict{std::string(sentence)};
}

}  // namespace lobemax
