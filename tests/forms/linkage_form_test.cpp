// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/linkage_form.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "core/units.h"
#include "edit/door.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "linkage/linkage_kinematics.h"
#include "tests/support/cam_design.h"
#include "tests/support/recording_surface.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Expected_Box;
using testing::Script;

const Expected_Box positive{"This value must be positive.  Please redo.", Buttons::OK, Symbol::exclamation};

// Places of txt_Linkout.
constexpr int Link_1 = 0;
constexpr int Theta1 = 1;
constexpr int Link_2 = 2;
constexpr int Link_3 = 3;
constexpr int O4x = 8;
constexpr int O4y = 9;
constexpr int Offset6 = 17;

class Linkage_Forms : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }
    static void Build(const char* example) { ASSERT_TRUE(Build_Example(design, example) && Run_Size(design)); }

    Script script_;
    Linkage_Group& k_ = design.linkage;
};

TEST_F(Linkage_Forms, each_choice_takes_its_type_links_kind_and_screen)
{
    struct Case {
        int links;
        const char* kind;
        const char* screen;
        const char* title;
    };
    const Case cases[]{{4, "Linkage", "frm_Linkage", "Fourbar linkage"},
                       {6, "Linkage", "frm_Linkage", "Sixbar linkage"},
                       {4, "Fourslide", "frm_CamSlider4", "Fourbar linkage with slider"},
                       {6, "Sixslide", "frm_CamSlider6", "Sixbar linkage with slider"}};
    for (int choice = 0; choice < 4; ++choice) {
        Choose_Linkage_Type(design, choice);
        EXPECT_EQ(k_.Linkage_Type, choice);
        EXPECT_EQ(Choice_of_Linkage(design), choice);
        EXPECT_EQ(k_.Links, cases[choice].links);
        EXPECT_EQ(k_.Linkage_Kind, cases[choice].kind);
        EXPECT_EQ(Screen_of_Linkage(design), cases[choice].screen);
        EXPECT_EQ(Title_of_Linkage(design), cases[choice].title);
        EXPECT_FALSE(Linkage_Help(choice).empty());
    }
    EXPECT_THROW(Choose_Linkage_Type(design, 4), Fault);
    EXPECT_THROW(Linkage_Help(-1), Fault);
}

TEST_F(Linkage_Forms, the_fields_have_their_captions_in_their_order)
{
    const char* const captions[]{
        "Link 1",           "Theta1",          "Link 2", "Link 3", "Link 4",       "Angle to Roller",
        "Delta4 or Delta3", "O4D or cp3 dist", "O4x",    "O4y",    "O6x",          "O6y",
        "Link 5",           "Link 6",          "S3x",    "S3y",    "Slider angle", "Offset6"};
    const auto rows = Fields_of_Linkage();
    ASSERT_EQ(rows.size(), std::size(captions));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i].caption, captions[i]);
        EXPECT_EQ(rows[i].name, "txt_Linkout(" + std::to_string(i) + ")");
        EXPECT_FALSE(rows[i].tip.empty()) << rows[i].name;
    }
}

TEST_F(Linkage_Forms, a_train_shows_the_fields_that_move_it_and_no_others)
{
    const std::vector<int> shown[]{{0, 1, 2, 3, 4, 5, 6, 7, 8, 9},
                                   {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13},
                                   {2, 3, 5, 14, 15, 16},
                                   {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 12, 16, 17}};
    for (int choice = 0; choice < 4; ++choice) {
        Choose_Linkage_Type(design, choice);
        std::vector<int> found;
        for (int i = 0; i < static_cast<int>(Fields_of_Linkage().size()); ++i)
            if (Linkout_Shown(design, i))
                found.push_back(i);
        EXPECT_EQ(found, shown[choice]) << choice;
    }
    EXPECT_THROW(Linkout_Shown(design, 18), Fault);
}

/// A field that is hidden has no say: the end effector of an example moves the same whatever it is.
TEST_F(Linkage_Forms, hidden_fields_move_nothing)
{
    for (const char* const example : {"4-bar Linkage", "6-bar Linkage", "4-bar Slider", "6-bar Slider"}) {
        Build(example);
        ASSERT_TRUE(Run_Linkage(design));
        const auto row = design.results.Link_Theta.Points(Last_Link(design));
        const std::vector<Single> before(row.begin(), row.end());
        for (int i = 0; i < static_cast<int>(Fields_of_Linkage().size()); ++i) {
            if (Linkout_Shown(design, i))
                continue;
            Edit_Linkout(design, i, "37");
            ASSERT_TRUE(Run_Linkage(design));
            const auto now = design.results.Link_Theta.Points(Last_Link(design));
            for (std::size_t p = 0; p < before.size(); ++p)
                ASSERT_NEAR(now[p], before[p], 2E-4) << example << " " << Fields_of_Linkage()[std::size_t(i)].name;
        }
    }
}

TEST_F(Linkage_Forms, what_was_not_changed_is_shown_as_stored_and_each_entry_reaches_its_field)
{
    Choose_Linkage_Type(design, 1);
    for (int i = 0; i < static_cast<int>(Fields_of_Linkage().size()); ++i) {
        if (i == Link_1 || i == Theta1)
            continue;
        const std::string typed = std::to_string(20 + i) + ".5";
        const Form_Entry entry = Edit_Linkout(design, i, typed);
        EXPECT_TRUE(entry.accepted) << i;
        EXPECT_EQ(entry.text, typed);
        EXPECT_EQ(Linkout_Text(design, i), typed) << i;
    }
    EXPECT_EQ(k_.Link_2, Single(22.5));
    EXPECT_EQ(k_.Delta2, Single(25.5));
    EXPECT_EQ(k_.Link_4a, Single(27.5));
    EXPECT_EQ(k_.Link_6, Single(33.5));
    EXPECT_EQ(k_.Global_Slider_angle_deg, Single(36.5));
    EXPECT_EQ(k_.Offset6, Single(37.5));
}

TEST_F(Linkage_Forms, a_length_that_is_not_positive_is_told_and_stays_as_it_was)
{
    k_.Link_2 = 40.0;
    for (const char* const typed : {"0", "-3", "x"}) {
        script_.Expect(positive);
        const Form_Entry entry = Edit_Linkout(design, Link_2, typed);
        EXPECT_FALSE(entry.accepted);
        EXPECT_EQ(entry.text, "40");
        EXPECT_EQ(k_.Link_2, Single(40.0));
    }
    EXPECT_TRUE(Edit_Linkout(design, Offset6, "-3").accepted);
}

TEST_F(Linkage_Forms, the_ground_follows_the_pivots_and_moves_o4_when_it_is_typed)
{
    design.cam.ArmX = 100.0;
    design.cam.ArmY = 60.0;
    Edit_Linkout(design, O4x, "103");
    Edit_Linkout(design, O4y, "64");
    EXPECT_EQ(Linkout_Text(design, Link_1), "5");
    EXPECT_NEAR(k_.Theta1, std::atan2(4.0, 3.0) * 180.0 / 3.14159265358979, 1E-4);
    design.cam.ArmX = 97.0;  // the pivot of the arm was moved on another screen
    design.cam.ArmY = 56.0;
    EXPECT_EQ(Linkout_Text(design, Link_1), "10");
    // The value that stood before the move is a new one: it moves O4.
    ASSERT_TRUE(Edit_Linkout(design, Link_1, "5").accepted);
    EXPECT_NEAR(k_.O4x, 100.0, 1E-4);
    EXPECT_NEAR(k_.O4y, 60.0, 1E-4);
    ASSERT_TRUE(Edit_Linkout(design, Theta1, "90").accepted);
    EXPECT_NEAR(k_.O4x, 97.0, 1E-4);
    EXPECT_NEAR(k_.O4y, 61.0, 1E-4);
}

TEST_F(Linkage_Forms, choices_reach_their_fields)
{
    Choose_Linkage_Type(design, 1);
    for (const int stage : {1, 2}) {
        EXPECT_FALSE(Is_Crossed(design, stage));
        Choose_Assembly(design, stage, true);
        EXPECT_TRUE(Is_Crossed(design, stage));
    }
    EXPECT_EQ(k_.Assemflag1, 1);
    EXPECT_EQ(k_.Assemflag2, 1);
    Choose_Assembly(design, 2, false);
    EXPECT_EQ(k_.Assemflag2, -1);
    EXPECT_EQ(k_.Stage_Mode, "W");
    Choose_Stage_Mode(design, true);
    EXPECT_EQ(k_.Stage_Mode, "S");
    Choose_Stage_Mode(design, false);
    EXPECT_EQ(k_.Stage_Mode, "W");
    const bool second[]{false, true, false, true};
    const bool mode[]{false, true, false, false};
    for (int choice = 0; choice < 4; ++choice) {
        Choose_Linkage_Type(design, choice);
        const Linkage_Choices_Shown shown = Choices_of_Linkage(design);
        EXPECT_EQ(shown.second_stage, second[choice]);
        EXPECT_EQ(shown.stage_mode, mode[choice]);
        EXPECT_EQ(shown.first_stage_title, second[choice] ? "Assembly of stage 1" : "Assembly");
    }
    design.cam.Translating = false;
    Choose_Effector(design, true);
    EXPECT_TRUE(k_.Drive_End_Effector);
    Choose_Effector(design, false);
    EXPECT_FALSE(k_.Drive_End_Effector);
}

TEST_F(Linkage_Forms, a_new_train_says_what_to_type_until_it_has_its_lengths)
{
    Build("Oscillating");
    EXPECT_TRUE(May_Suggest(design));
    EXPECT_EQ(What_to_Type(design),
              "Link 2 has no length above zero.  Please redo.\n\n"
              "Type the dimensions of the train at the left,\n"
              "or press Suggest for a train in proportion to the arm.");
    EXPECT_FALSE(Window_of_Linkage(design).has_value());
    ASSERT_TRUE(Suggest_Linkage(design));
    EXPECT_FALSE(May_Suggest(design));
    EXPECT_EQ(What_to_Type(design), "");
    EXPECT_TRUE(Window_of_Linkage(design).has_value());
    EXPECT_TRUE(Edit_Linkout(design, Link_3, "40").accepted);
    EXPECT_FALSE(May_Suggest(design));
}

/// The proportions are those of the examples, so over the examples' arm they are the examples, up to O4's height.
TEST_F(Linkage_Forms, the_suggestion_over_the_arm_of_the_examples_is_the_example)
{
    for (const char* const example : {"4-bar Linkage", "6-bar Linkage", "4-bar Slider", "6-bar Slider"}) {
        Build(example);
        const Linkage_Group wanted = k_;
        const std::vector<bool> crossed{Is_Crossed(design, 1), Is_Crossed(design, 2)};
        for (int i = 0; i < static_cast<int>(Fields_of_Linkage().size()); ++i)
            if (Linkout_Shown(design, i) && i != Link_1 && i != Theta1)
                Edit_Linkout(design, i, "1");
        ASSERT_TRUE(Suggest_Linkage(design));
        const Linkage_Group was = std::exchange(k_, wanted);
        std::vector<std::string> texts;
        for (int i = 0; i < static_cast<int>(Fields_of_Linkage().size()); ++i)
            texts.push_back(Linkout_Text(design, i));
        k_ = was;
        for (int i = 0; i < static_cast<int>(Fields_of_Linkage().size()); ++i)
            if (Linkout_Shown(design, i)) {
                EXPECT_EQ(Linkout_Text(design, i), texts[std::size_t(i)])
                    << example << " " << Fields_of_Linkage()[std::size_t(i)].caption;
            }
        EXPECT_EQ((std::vector<bool>{Is_Crossed(design, 1), Is_Crossed(design, 2)}), crossed) << example;
    }
}

TEST_F(Linkage_Forms, a_suggested_train_connects_over_the_whole_cycle_of_any_arm)
{
    struct Arm {
        double x, y, radius;
        int direction;
    };
    for (const Arm& arm : {Arm{90, 30, 80, 1}, Arm{90, 30, 80, -1}, Arm{-90, 30, 80, 1}, Arm{-90, 30, 80, -1},
                           Arm{110, -20, 100, 1}, Arm{-120, 50, 110, -1}})
        for (int choice = 0; choice < 4; ++choice) {
            Cam_Maker{.translating = false}.Make();
            design.cam.ArmX = arm.x;
            design.cam.ArmY = arm.y;
            design.cam.ArmRad = arm.radius;
            design.cam.ArmDirect = arm.direction;
            ASSERT_TRUE(Run_Size(design)) << arm.x << " " << arm.direction;
            Choose_Linkage_Type(design, choice);
            ASSERT_TRUE(Suggest_Linkage(design));
            EXPECT_TRUE(Calc_Linkage_Quietly(design)) << arm.x << " " << arm.direction << " " << choice;
            EXPECT_EQ(k_.Link_Broken, 0) << arm.x << " " << arm.direction << " " << choice;
        }
}

/// The mirror image of an arm has the mirror image of a train: the end effector's motion is the same.
TEST_F(Linkage_Forms, the_train_of_an_arm_on_the_other_side_is_the_mirror_image)
{
    for (int choice = 0; choice < 4; ++choice) {
        std::vector<double> moves[2];
        for (const int side : {0, 1}) {
            Cam_Maker{.translating = false}.Make();
            design.cam.ArmX = side == 0 ? 90.0 : -90.0;
            design.cam.ArmDirect = side == 0 ? 1 : -1;
            design.cam.Rotflag = side == 0 ? 1 : -1;
            ASSERT_TRUE(Run_Size(design));
            Choose_Linkage_Type(design, choice);
            ASSERT_TRUE(Suggest_Linkage(design));
            ASSERT_TRUE(Calc_Linkage_Quietly(design));
            const auto row = design.results.Link_Theta.Points(Last_Link(design));
            const std::vector<double> angles =
                Ends_in_Slider(design) ? std::vector<double>(row.begin(), row.end()) : Unwrapped(row);
            for (const double angle : angles)
                moves[side].push_back(std::abs(angle - angles.front()));
        }
        for (std::size_t i = 0; i < moves[0].size(); ++i)
            ASSERT_NEAR(moves[0][i], moves[1][i], 1E-3) << choice << " at " << i;
    }
}

TEST_F(Linkage_Forms, an_arm_without_length_has_no_suggestion)
{
    design.cam.Translating = false;
    design.cam.ArmRad = 0.0;
    script_.Expect({"The follower arm has no length.  Size the cam first.", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Suggest_Linkage(design));
}

TEST_F(Linkage_Forms, figures_are_the_extremes_of_the_tables)
{
    Build("4-bar Linkage");
    for (const Effector_Line& line : Effector_Lines(design))
        EXPECT_EQ(line.least + line.largest + line.unit, "") << "before a calculation";
    ASSERT_TRUE(Run_Linkage(design));
    const auto lines = Effector_Lines(design);
    EXPECT_EQ(lines[0].name, "Position");
    EXPECT_EQ(lines[0].unit, "deg");
    EXPECT_EQ(lines[1].unit, "rad/sec");
    EXPECT_EQ(lines[2].unit, "rad/sec^2");
    const auto omega = design.results.Link_Omega.Points(4);
    const auto largest = std::ranges::max_element(omega);
    EXPECT_NEAR(std::stod(lines[1].largest), *largest, 5E-4 * std::abs(*largest));
    EXPECT_EQ(std::stod(lines[1].largest_at), static_cast<double>(largest - omega.begin()));
    design.identity.Number_Format = "Europe";
    EXPECT_NE(Effector_Lines(design)[1].largest.find(','), std::string::npos);
    Build("4-bar Slider");
    ASSERT_TRUE(Run_Linkage(design));
    EXPECT_EQ(Effector_Lines(design)[0].unit, "mm");
}

TEST_F(Linkage_Forms, quiet_work_asks_nothing_and_the_notes_count_what_does_not_connect)
{
    Build("4-bar Linkage");
    EXPECT_TRUE(Notes_of_Linkage(design).empty()) << "before a calculation";
    double length = 0.0;  // of a coupler that is too short for a part of the stroke
    for (length = 60.0; length < 190.0; length += 2.0) {
        k_.Link_3 = length;
        if (Calc_Linkage_Quietly(design) && k_.Link_Broken > 0)
            break;
    }
    ASSERT_LT(length, 190.0) << "no such length";
    const std::vector<std::string> notes = Notes_of_Linkage(design);
    ASSERT_FALSE(notes.empty());
    EXPECT_EQ(notes[0], "The links do not connect at " + std::to_string(int{k_.Link_Broken}) +
                            " of 361 points: no results stand there.  Change the dimensions.");
    k_.Link_3 = 187.5;
    ASSERT_TRUE(Calc_Linkage_Quietly(design));
    for (const std::string& note : Notes_of_Linkage(design))
        EXPECT_EQ(note.find("do not connect"), std::string::npos);
}

TEST_F(Linkage_Forms, a_step_draws_its_point_and_stands_a_stride_further_and_wraps_to_the_first)
{
    design.motion.Max_Data_Points_used = 360;
    k_.Link_Anim_Step = 0;
    EXPECT_EQ(Take_Step(design, 1), 0);
    EXPECT_EQ(k_.Link_Anim_Step, 1);
    k_.Link_Anim_Step = 360;
    EXPECT_EQ(Take_Step(design, 1), 360) << "the last point is drawn";
    EXPECT_EQ(k_.Link_Anim_Step, 361);
    EXPECT_EQ(Take_Step(design, 24), 0);
    EXPECT_EQ(k_.Link_Anim_Step, 24);
}

TEST_F(Linkage_Forms, a_moved_bar_is_followed_unless_the_program_moves_it_and_its_left_end_draws_nothing)
{
    EXPECT_TRUE(Move_Step(design, 90, false));
    EXPECT_EQ(k_.Link_Anim_Step, 90);
    EXPECT_FALSE(Move_Step(design, 200, true));
    EXPECT_EQ(k_.Link_Anim_Step, 90);
    EXPECT_FALSE(Move_Step(design, 0, false));
    EXPECT_EQ(k_.Link_Anim_Step, 0);
}

TEST_F(Linkage_Forms, an_animation_makes_as_many_turns_as_asked)
{
    design.motion.Max_Data_Points_used = 360;
    for (const int cycles : {1, 3}) {
        k_.Link_Anim_Step = 361;  // where the one before has ended
        Begin_Anew_at_End(design);
        int left = cycles;
        int frames = 0;
        while (Play_On(design, left)) {
            Take_Step(design, 1);
            ASSERT_LT(++frames, 5000);
        }
        EXPECT_EQ(frames, 361 * cycles);
    }
    k_.Link_Anim_Step = 90;
    Begin_Anew_at_End(design);
    EXPECT_EQ(k_.Link_Anim_Step, 90) << "from where it stands";
}

TEST_F(Linkage_Forms, strides_are_those_of_the_list_and_the_usual_one_is_a_degree)
{
    for (const int stride : {1, 2, 4, 8, 12, 24, 36, 72})
        EXPECT_EQ(Stride_of(std::to_string(stride)), stride);
    EXPECT_EQ(Stride_of(" 12 "), 12);
    for (const char* const other : {"5", "", "x", "-1", "1.0"}) {
        script_.Expect({"Please select one of the drop-down menu items for Steps", Buttons::OK, Symbol::exclamation});
        EXPECT_FALSE(Stride_of(other).has_value());
    }
    const std::pair<double, int> usual[]{{1.0, 1}, {0.5, 2}, {0.25, 4}, {0.125, 8}};
    for (const auto& [step, stride] : usual) {
        design.motion.Deltatheta = step;
        EXPECT_EQ(Usual_Stride(design), stride);
    }
}

TEST_F(Linkage_Forms, a_larger_wait_is_slower_and_a_faster_speed_is_faster)
{
    int before = 0;
    for (int range = 0; range < static_cast<int>(Anim_Waits.size()); ++range) {
        const int slowest = Anim_Interval(Wait_of(range, 0));
        EXPECT_GT(slowest, before);
        before = slowest;
        EXPECT_EQ(Wait_of(range, 0), Anim_Waits[std::size_t(range)]);
        EXPECT_EQ(Wait_of(range, Fastest_Speed), 0);
        int faster = slowest;
        for (int speed = 10; speed <= Fastest_Speed; speed += 10) {
            const int delay = Anim_Interval(Wait_of(range, speed));
            EXPECT_LE(delay, faster);
            faster = delay;
        }
        EXPECT_EQ(faster, 10);
    }
    EXPECT_EQ(before, 1000);
    EXPECT_THROW(Wait_of(6, 0), Fault);
}

TEST_F(Linkage_Forms, cycles_are_whole_and_positive)
{
    int cycles = 4;
    EXPECT_EQ(Edit_Cycles(design, cycles, "7").text, "7");
    EXPECT_EQ(cycles, 7);
    EXPECT_EQ(Edit_Cycles(design, cycles, "2.6").text, "3");
    for (const char* const typed : {"0", "-2", "0.2", ""}) {
        script_.Expect(positive);
        const Form_Entry entry = Edit_Cycles(design, cycles, typed);
        EXPECT_FALSE(entry.accepted);
        EXPECT_EQ(entry.text, "3");
    }
    script_.Expect({"That is too many.  Please redo.", Buttons::OK, Symbol::exclamation});
    EXPECT_EQ(Edit_Cycles(design, cycles, "1E9").text, "3");
}

TEST_F(Linkage_Forms, a_moved_point_takes_its_fields_along_and_the_results_away)
{
    Build("6-bar Linkage");
    ASSERT_TRUE(Run_Linkage(design));
    ASSERT_TRUE(Move_Point(design, Drag_Point::O4, {280.123456, 70.98765}, 0.5));
    EXPECT_EQ(k_.O4x, Single(280.1)) << "no finer than the mouse";
    EXPECT_EQ(k_.O4y, Single(71.0));
    EXPECT_FALSE(design.flags.Linkage_Calc);
    EXPECT_NEAR(k_.Link_1, std::hypot(280.1 - 100.0, 71.0 - 62.5), 1E-3) << "the ground follows";
    ASSERT_TRUE(Move_Point(design, Drag_Point::O6, {455.0, 60.0}, 0.01));
    EXPECT_EQ(k_.O6x, Single(455.0));
    EXPECT_EQ(k_.O6y, Single(60.0));
    Build("4-bar Slider");
    ASSERT_TRUE(Move_Point(design, Drag_Point::slider, {340.0, 150.0}, 1.0));
    EXPECT_EQ(k_.S3x, Single(340.0));
    EXPECT_EQ(k_.S3y, Single(150.0));
}

TEST_F(Linkage_Forms, the_axis_of_a_sixbars_slider_goes_through_where_it_is_dragged_to)
{
    Build("6-bar Slider");
    for (const double angle : {180.0, 30.0, -75.0}) {
        Put(design, "Global_Slider_angle_deg", angle);
        const World_Point to{300.0, 210.0};
        ASSERT_TRUE(Move_Point(design, Drag_Point::slider, to, 1E-4));
        // The distance of a point from a line through O4, by the cross product.
        const double a = angle * 3.14159265358979 / 180.0;
        const double distance = std::cos(a) * (to.y - k_.O4y) - std::sin(a) * (to.x - k_.O4x);
        EXPECT_NEAR(k_.Offset6, distance, 1E-3);
        const std::vector<Draggable> points = Draggable_Points(design);
        const auto slider = std::ranges::find(points, Drag_Point::slider, &Draggable::point);
        ASSERT_NE(slider, points.end());
        EXPECT_NEAR(std::cos(a) * (slider->at.y - k_.O4y) - std::sin(a) * (slider->at.x - k_.O4x), distance, 1E-3);
    }
}

TEST_F(Linkage_Forms, a_changed_choice_of_the_driven_end_leads_to_the_sizing_with_its_text)
{
    EXPECT_FALSE(Linkage_Done(design, false, false));
    k_.Drive_End_Effector = true;
    EXPECT_FALSE(Linkage_Done(design, true, false));
    script_.Expect(
        {"You have chosen to apply the SVAJ functions to the end effector \n"
         "of the linkage rather than to the cam follower arm directly.\n"
         "This requires that you recalculate the cam profile. The cam\n"
         "pressure angles and radii of curvature will also change.\n"
         "You will now be taken back to the Sizecam Screen to regenerate these data."});
    EXPECT_TRUE(Linkage_Done(design, false, false));
    k_.Drive_End_Effector = false;
    script_.Expect(
        {"You have changed the point of application of the SVAJ functions.\n"
         "This requires that you recalculate the cam profile. The cam\n"
         "pressure angles and radii of curvature will also change.\n"
         "You will now be taken back to the Sizecam Screen to regenerate these data."});
    EXPECT_TRUE(Linkage_Done(design, true, false));
}

TEST_F(Linkage_Forms, a_size_that_was_lost_leads_to_the_sizing_screen)
{
    Build("4-bar Linkage");
    ASSERT_TRUE(Put(design, "Drive_End_Effector", 1));
    ASSERT_TRUE(Run_Size(design));
    EXPECT_FALSE(Linkage_Done(design, true, true));
    ASSERT_TRUE(Put(design, "Link 3", double{design.linkage.Link_3} + 5));
    ASSERT_FALSE(design.flags.Sized);
    script_.Expect(
        {"The cam's size rested on what you have changed.\n"
         "You will now be taken to the Sizecam Screen to calculate its profile again."});
    EXPECT_TRUE(Linkage_Done(design, true, true));
    EXPECT_FALSE(Linkage_Done(design, true, false)) << "it had none before";
}

TEST_F(Linkage_Forms, advice_has_its_text)
{
    EXPECT_EQ(Run_Advice(),
              "To run the linkage in either forward or reverse direction,\n"
              "click and hold the arrows at either end of the scroll bar.\n"
              "at the bottom of the white graphic window, or drag its scroll button.");
}

/// The window of the drawing is that of a frame drawn by itself.
TEST_F(Linkage_Forms, the_window_is_found_without_drawing)
{
    Build("6-bar Slider");
    const auto window = Window_of_Linkage(design);
    ASSERT_TRUE(window.has_value());
    testing::Recording_Surface surface;
    ASSERT_TRUE(Draw_Linkage_at(design, surface, 0));
    EXPECT_EQ(window->left, surface.left);
    EXPECT_EQ(window->top, surface.top);
    EXPECT_EQ(window->right, surface.right);
    EXPECT_EQ(window->bottom, surface.bottom);
}

}  // namespace
}  // namespace lobemax
