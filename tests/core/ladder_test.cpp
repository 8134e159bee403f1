// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ladder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

#include "core/startup.h"
#include "core/units.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Script;

/// What falls with an event in a design on which everything stands.
struct Falls_of {
    Event event;
    const char* name;
    const char* falls;
    void (*before)(Design_State& design) = nullptr;  // what else is the case
};

void Example(Design_State& d)
{
    d.flags.Example_Loaded = true;
}

void Plain_Sizing(Design_State& d)
{
    d.flags.Polydyne_Calc = false;
    d.linkage.Drive_End_Effector = true;
}

void Force_Function(Design_State& d)
{
    d.motion.Motion = false;
}

const std::vector<Falls_of> expected{
    {Event::edited, "edited", "Model_Saved "},
    {Event::row_edited, "row_edited",
     "Calculated Sized Dynamicflag Modelflag Stressflag Polydyne_Calc CompCam_Calc Linkage_Calc FFT_Done "
     "Model_Saved "},
    {Event::cam_edited, "cam_edited_of_a_polydyne_cam", "Sized Dynamicflag Stressflag Linkage_Calc Model_Saved "},
    {Event::cam_edited, "cam_edited_with_a_driven_end_effector", "Sized Dynamicflag Modelflag Stressflag Model_Saved ",
     Plain_Sizing},
    {Event::forces_edited, "forces_edited", "Dynamicflag Stressflag Model_Saved "},
    {Event::stress_edited, "stress_edited", "Stressflag Model_Saved "},
    {Event::vibration_edited, "vibration_edited", "Modelflag Model_Saved "},
    {Event::compensation_edited, "compensation_edited", "Model_Saved "},
    {Event::linkage_edited, "linkage_edited", "Linkage_Calc Model_Saved "},
    {Event::linkage_edited, "linkage_edited_with_a_driven_end_effector",
     "Sized Dynamicflag Modelflag Stressflag Linkage_Calc Model_Saved ", Plain_Sizing},
    {Event::effector_changed, "effector_changed_of_a_polydyne_cam", "Sized Dynamicflag Stressflag Model_Saved "},
    {Event::effector_changed, "effector_changed", "Sized Dynamicflag Modelflag Stressflag Model_Saved ", Plain_Sizing},
    {Event::linkage_began, "linkage_began", "Linkage_Calc "},
    {Event::imported, "imported",
     "Sized Dynamicflag Modelflag Stressflag Polydyne_Calc Ext_Force_Calc CompCam_Calc Linkage_Calc FFT_Done "
     "Model_Saved Example_Loaded File_Loaded Units_Changed ",
     Example},
    {Event::import_given_up, "import_given_up",
     "Calculated Sized Dynamicflag Modelflag Stressflag Polydyne_Calc Ext_Force_Calc CompCam_Calc Linkage_Calc "
     "FFT_Done Model_Saved Example_Loaded File_Loaded ",
     Example},
    {Event::segment_calculated, "segment_calculated", "Units_Changed "},
    {Event::segment_calculated, "segment_calculated_of_an_example", "Example_Loaded Units_Changed ", Example},
    {Event::status_reset, "status_reset",
     "Calculated Sized Dynamicflag Modelflag Stressflag Polydyne_Calc Ext_Force_Calc CompCam_Calc Linkage_Calc "
     "File_Loaded "},
    {Event::motion_done, "motion_done", "Sized Dynamicflag Modelflag Polydyne_Calc CompCam_Calc FFT_Done File_Loaded "},
    {Event::motion_done, "motion_done_over_an_example",
     "Modelflag Polydyne_Calc CompCam_Calc Example_Loaded File_Loaded ", Example},
    {Event::motion_done, "motion_done_of_a_force_function",
     "Sized Dynamicflag Modelflag Polydyne_Calc CompCam_Calc File_Loaded ", Force_Function},
    {Event::external_force_dropped, "external_force_dropped", "Ext_Force_Calc "},
    {Event::rows_cleared, "rows_cleared", "Calculated Sized Dynamicflag Modelflag Polydyne_Calc "},
    {Event::table_cleared, "table_cleared", "From_Disk Model_Saved File_Loaded "},
    {Event::step_changed, "step_changed",
     "Calculated Sized Dynamicflag Modelflag Stressflag Polydyne_Calc Ext_Force_Calc CompCam_Calc Linkage_Calc "
     "FFT_Done Model_Saved "},
    {Event::speed_changed, "speed_changed",
     "Calculated Sized Dynamicflag Modelflag Stressflag Polydyne_Calc CompCam_Calc Linkage_Calc FFT_Done "
     "Model_Saved "},
    {Event::follower_motion_changed, "follower_motion_changed", "Calculated Model_Saved "},
    {Event::time_base_changed, "time_base_changed",
     "Calculated Sized Dynamicflag Modelflag Stressflag Polydyne_Calc Linkage_Calc FFT_Done Model_Saved "},
    {Event::units_changed_in_table, "units_changed_in_table",
     "Calculated Sized Dynamicflag Modelflag Stressflag Model_Saved "},
    {Event::units_changed_open, "units_changed_open", "Calculated "},
    {Event::sizing_began, "sizing_began_for_a_polydyne_cam", "Sized Dynamicflag Stressflag Linkage_Calc Model_Saved "},
    {Event::sizing_began, "sizing_began_with_a_driven_end_effector",
     "Sized Dynamicflag Modelflag Stressflag Model_Saved ", Plain_Sizing},
    {Event::cam_changed, "cam_changed", "Sized Dynamicflag Modelflag Stressflag Polydyne_Calc Linkage_Calc "},
    {Event::forces_began, "forces_began", "Dynamicflag "},
    {Event::forces_done, "forces_done", "Stressflag "},
    {Event::closing_spring_edited, "closing_spring_edited", "Dynamicflag Modelflag Stressflag Model_Saved "},
    {Event::vibration_began, "vibration_began", "Modelflag "},
    {Event::vibration_done, "vibration_done", "Stressflag "},
    {Event::polydyne_given_up, "polydyne_given_up", "Polydyne_Calc "},
    {Event::stress_began, "stress_began", "Stressflag "},
    {Event::transform_began, "transform_began", "FFT_Done "},
    {Event::compensation_done, "compensation_done",
     "Sized Dynamicflag Modelflag Stressflag Polydyne_Calc Linkage_Calc FFT_Done Model_Saved File_Loaded "},
    {Event::compensation_given_up, "compensation_given_up", "CompCam_Calc "},
    {Event::load_without_table, "load_without_table", "Calculated Sized Dynamicflag Modelflag Stressflag "},
    {Event::load_partial, "load_partial", "Calculated Modelflag Polydyne_Calc "},
    {Event::load_succeeded, "load_succeeded", "CompCam_Calc "},
    {Event::save_failed, "save_failed", "Model_Saved "},
    {Event::results_let_go, "results_let_go",
     "Calculated Sized Dynamicflag Modelflag Stressflag Polydyne_Calc Ext_Force_Calc CompCam_Calc Linkage_Calc "
     "FFT_Done "},
    {Event::started, "started", "Linkage_Calc "},
};

struct Named {
    Flag Flags_Group::*flag;
    const char* name;
};
constexpr Named names[]{
    {&Flags_Group::Calculated, "Calculated"},         {&Flags_Group::Sized, "Sized"},
    {&Flags_Group::Dynamicflag, "Dynamicflag"},       {&Flags_Group::Modelflag, "Modelflag"},
    {&Flags_Group::Stressflag, "Stressflag"},         {&Flags_Group::Polydyne_Calc, "Polydyne_Calc"},
    {&Flags_Group::Ext_Force_Calc, "Ext_Force_Calc"}, {&Flags_Group::CompCam_Calc, "CompCam_Calc"},
    {&Flags_Group::Linkage_Calc, "Linkage_Calc"},     {&Flags_Group::FFT_Done, "FFT_Done"},
    {&Flags_Group::From_Disk, "From_Disk"},           {&Flags_Group::Model_Saved, "Model_Saved"},
    {&Flags_Group::Example_Loaded, "Example_Loaded"}, {&Flags_Group::File_Loaded, "File_Loaded"},
    {&Flags_Group::Units_Changed, "Units_Changed"}};

/// All marks stand but that of an example in the table.
void Everything_Stands(Design_State& d)
{
    for (const Named& each : names)
        d.flags.*each.flag = true;
    d.flags.Example_Loaded = false;
    d.motion.Motion = true;
    d.linkage.Drive_End_Effector = false;
}

class Every_Event : public ::testing::TestWithParam<Falls_of> {};

/// Rows keep the units that they were calculated in until the motion is calculated anew or nothing of them holds.
TEST(Units_of_Rows, follow_the_design_again_when_its_motion_is_calculated_or_no_result_is_left)
{
    Design_State d;
    const auto stand = [&d] {
        Everything_Stands(d);
        d.identity.WhichUnit = 5;
        d.results.WhichUnit = 1;
        Set_Units(d);
        ASSERT_EQ(d.plot.Var_Unit(var::S), "in");
    };
    for (const Event event : {Event::segment_calculated, Event::load_without_table}) {
        stand();
        if (event == Event::load_without_table)
            Apply(d, Event::status_reset);  // vibration, linkage and the rest
        Apply(d, Event::transform_began);
        Apply(d, event);
        EXPECT_FALSE(Results_in_Other_Units(d));
        EXPECT_EQ(d.plot.Var_Unit(var::S), "mm");
    }
    for (const Event event : {Event::edited, Event::cam_edited, Event::units_changed_open, Event::forces_began}) {
        stand();
        Apply(d, event);
        EXPECT_TRUE(Results_in_Other_Units(d));
        EXPECT_EQ(d.plot.Var_Unit(var::S), "in");
    }
}

TEST_P(Every_Event, takes_away_what_rests_on_what_it_changes)
{
    Design_State d;
    Everything_Stands(d);
    if (GetParam().before != nullptr)
        GetParam().before(d);
    const Flags_Group before = d.flags;
    Apply(d, GetParam().event);
    std::string fallen;
    for (const Named& each : names)
        if (before.*each.flag && !(d.flags.*each.flag))
            fallen += std::string(each.name) + " ";
    EXPECT_EQ(fallen, GetParam().falls);
    for (const Named& each : names)
        EXPECT_TRUE(before.*each.flag || !(d.flags.*each.flag)) << each.name << " was set by an event";
}

INSTANTIATE_TEST_SUITE_P(Ladder, Every_Event, ::testing::ValuesIn(expected),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(Ladder, every_event_has_a_row_with_a_reason_and_a_test)
{
    for (int e = 0; e < Event_Count; ++e) {
        const auto event = static_cast<Event>(e);
        EXPECT_TRUE(std::any_of(Falls().begin(), Falls().end(), [&](const Fall& f) { return f.event == event; })) << e;
        EXPECT_TRUE(std::any_of(expected.begin(), expected.end(), [&](const Falls_of& f) { return f.event == event; }))
            << e;
    }
    for (const Fall& fall : Falls())
        EXPECT_FALSE(fall.why.empty());
}

TEST(Ladder, every_mark_is_reached_and_held_by_its_own_flag)
{
    ASSERT_EQ(Mark_Table().size(), static_cast<std::size_t>(Mark_Count));
    for (int k = 0; k < Mark_Count; ++k) {
        const auto mark = static_cast<Mark>(k);
        EXPECT_EQ(Mark_Table()[static_cast<std::size_t>(k)].mark, mark);
        Design_State d;
        EXPECT_FALSE(Holds(d, mark));
        Reach(d, mark);
        EXPECT_TRUE(Holds(d, mark));
        int set = 0;
        for (const Named& each : names)
            set += d.flags.*each.flag ? 1 : 0;
        EXPECT_EQ(set, 1) << k;
    }
}

TEST(Ladder, a_reset_takes_everything_away)
{
    Script script;
    ASSERT_TRUE(Sub_Main(design, "", {}));
    Everything_Stands(design);
    design.flags.Imported_Model = true;
    design.motion.Motion = false;
    Reset_All(design);
    for (const Named& each : names)
        EXPECT_FALSE(design.flags.*each.flag) << each.name;
    EXPECT_FALSE(design.flags.Imported_Model);
    EXPECT_TRUE(design.motion.Motion);
}

TEST(Ladder, no_line_of_the_program_but_the_ladders_own_writes_a_mark)
{
    const std::regex writes(
        R"(\b(Calculated|Sized|Dynamicflag|Modelflag|Stressflag|Polydyne_Calc|Ext_Force_Calc|CompCam_Calc|Linkage_Calc|FFT_Done|From_Disk|Model_Saved|Example_Loaded|File_Loaded|Units_Changed)\s*=[^=])");
    int lines = 0;
    for (const char* room :
         {"core", "motion", "camgeom", "dynamics", "edit", "files", "present", "forms", "paint", "screens", "cli"})
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(std::string(LOBEMAX_SOURCE) + "/" + room)) {
            if (entry.path().extension() != ".cpp")
                continue;
            std::ifstream file(entry.path());
            std::string line;
            for (int number = 1; std::getline(file, line); ++number, ++lines)
                EXPECT_FALSE(std::regex_search(line.substr(0, line.find("//")), writes))
                    << entry.path() << ":" << number << ": " << line;
        }
    EXPECT_GT(lines, 10000);
}

}  // namespace
}  // namespace lobemax
