// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/check.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <string>

#include "camgeom/profile.h"
#include "core/ladder.h"
#include "core/startup.h"
#include "edit/door.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "files/example_designs.h"
#include "tests/support/random_design.h"
#include "tests/support/truth_design.h"
#include "truth/retrace.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Data;
using testing::Put_Segments;
using testing::Truth_Maker;

const Finding* Find(const Check& check, std::string_view code)
{
    const auto found = std::ranges::find(check.findings, code, &Finding::code);
    return found == check.findings.end() ? nullptr : &*found;
}

std::string Codes(const Check& check)
{
    std::string codes;
    for (const Finding& f : check.findings)
        codes += std::string(f.code) + ": " + f.sentence + "\n";
    return codes;
}

void Make_Published()
{
    ASSERT_NO_FATAL_FAILURE((Cam_Maker{.lift = 30.0, .step = 0.25}.Make()));
    ASSERT_NO_FATAL_FAILURE(Put_Segments({{'D', "DW", 60, 0, 0},
                                          {'R', "CF", 120, 0, 30},
                                          {'D', "DW", 20, 30, 30},
                                          {'F', "CF", 80, 30, 0},
                                          {'D', "DW", 80, 0, 0}}));
    design.cam.Prime_Rad = 61.0;
    design.cam.Follow_Rad = 42.0;
    design.cam.Offset = -7.04;
}

TEST(Checks, the_published_cam_must_not_be_cut_and_both_figures_are_said)
{
    ASSERT_NO_FATAL_FAILURE(Make_Published());
    ASSERT_TRUE(Run_Size(design));
    const Check check = Check_Design(design, Limits{});
    const Finding* const f = Find(check, "pointed");
    ASSERT_NE(f, nullptr) << Codes(check);
    EXPECT_EQ(f, check.Worst());
    EXPECT_TRUE(check.Do_Not_Cut());
    EXPECT_NEAR(*f->truth, 42.097, 5e-4);
    EXPECT_NEAR(*f->row, 43.656, 5e-4);
    EXPECT_EQ(*f->angle, 221.25);
    EXPECT_EQ(f->segment, 4);
    EXPECT_EQ(f->sentence,
              "The radius of curvature of the roller centre's path is 42.097 mm at 221.25 deg, so that 0.097 mm are "
              "left for the surface under a roller of 42 mm; the row of Rho says 43.656 and 1.66 mm.");
    ASSERT_EQ(f->stretch.size(), 1U);
    EXPECT_LT(f->stretch[0].from, 221.25);
    EXPECT_GT(f->stretch[0].to, 221.25);
    // The row's own smallest is off on the unsafe side, and that is said too.
    ASSERT_NE(Find(check, "rho_row"), nullptr);
    EXPECT_EQ(Find(check, "rho_row")->severity, Severity::warning);
    // A smaller roller makes a cam that can be cut.
    design.cam.Follow_Rad = 20.0;
    ASSERT_TRUE(Run_Size(design));
    EXPECT_FALSE(Check_Design(design, Limits{}).Do_Not_Cut());
}

TEST(Checks, an_undercut_says_by_how_much_the_lift_falls_short)
{
    ASSERT_NO_FATAL_FAILURE(Make_Published());
    design.cam.Follow_Rad = 55.0;
    ASSERT_TRUE(Run_Size(design));
    const Check check = Check_Design(design, Limits{});
    const Finding* const f = Find(check, "undercut");
    ASSERT_NE(f, nullptr) << Codes(check);
    EXPECT_EQ(f->severity, Severity::do_not_cut);
    EXPECT_NEAR(*f->truth, 42.097, 5e-4);
    EXPECT_EQ(*f->limit, 55.0);
    EXPECT_NE(f->sentence.find("the lift falls short by up to 2.3"), std::string::npos) << f->sentence;
    EXPECT_EQ(Find(check, "Rho_Ratio"), nullptr);  // said already
}

TEST(Checks, a_flat_face_over_a_hollow_must_not_be_cut)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.flat = true}.Make()));
    EXPECT_FALSE(Check_Design(design, Limits{}).Do_Not_Cut());
    design.cam.Prime_Rad = 12.0;
    ASSERT_TRUE(Run_Size(design));
    const Check check = Check_Design(design, Limits{});
    const Finding* const f = Find(check, "undercut");
    ASSERT_NE(f, nullptr) << Codes(check);
    EXPECT_EQ(f->name, "Hollow under a flat face");
    EXPECT_LT(*f->truth, 0.0);
}

// The contact moves along the face by the velocity per radian of cam.
TEST(Checks, the_width_that_a_flat_face_needs_is_twice_the_largest_velocity)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.flat = true}.Make()));
    double fastest = 0.0;
    for (int i = 0; i < design.motion.Max_Data_Points_used; ++i)
        fastest = std::max(fastest, std::abs(Data(var::V, i)) / 12.0);
    design.cam.Face_Width = 2.0 * fastest + 0.1;
    {
        const Check check = Check_Design(design, Limits{});
        const Finding* const f = Find(check, "face_width");
        ASSERT_NE(f, nullptr);
        EXPECT_EQ(f->severity, Severity::note);
        EXPECT_NEAR(*f->truth, 2.0 * fastest, 1e-4);
    }
    design.cam.Face_Width = 2.0 * fastest - 0.1;
    const Check check = Check_Design(design, Limits{});
    EXPECT_EQ(Find(check, "face_width")->severity, Severity::warning);
}

// docs/theory.md, 7.4: the surface of a flat face on an arm whose sense is opposed to the cam's.
TEST(Checks, the_surface_of_a_flat_face_on_an_arm_in_opposed_senses_must_not_be_cut)
{
    for (const int rot : {-1, 1}) {
        ASSERT_NO_FATAL_FAILURE(
            (Truth_Maker{.arm = true, .flat = true, .rot = rot, .dir = -rot, .ArmX = 110.0, .lift = 6.0}.Make()));
        const Check check = Check_Design(design, Limits{});
        const Finding* const f = Find(check, "surface_row");
        ASSERT_NE(f, nullptr) << Codes(check);
        EXPECT_EQ(f->severity, Severity::do_not_cut);
        EXPECT_GT(std::abs(*f->row - *f->truth), 1.0);
        // In one sense it is right; what departs there are curvature and cutter.
        ASSERT_NO_FATAL_FAILURE(
            (Truth_Maker{.arm = true, .flat = true, .rot = rot, .dir = rot, .ArmX = 110.0, .lift = 6.0}.Make()));
        const Check same = Check_Design(design, Limits{});
        EXPECT_FALSE(same.Do_Not_Cut()) << Codes(same);
        EXPECT_NE(Find(same, "rho_row"), nullptr);
        EXPECT_NE(Find(same, "cutter_row"), nullptr);
    }
}

// 20 degrees in 10 of the cam: the face is faster than the cam, and nothing else is told of such a surface.
TEST(Checks, a_face_that_swings_as_fast_as_the_cam_turns_is_told_of_alone)
{
    ASSERT_NO_FATAL_FAILURE(
        (Truth_Maker{.arm = true, .flat = true, .rot = 1, .dir = 1, .ArmX = 110.0, .lift = 20.0}.Make()));
    ASSERT_NO_FATAL_FAILURE(Put_Segments({{'R', "67", 10, 0, 20}, {'F', "67", 120, 20, 0}, {'D', "DW", 230, 0, 0}}));
    Run_Size(design);
    const Check check = Check_Design(design, Limits{});
    ASSERT_NE(Find(check, "face_runs_back"), nullptr) << Codes(check);
    for (const Finding& f : check.findings)
        EXPECT_EQ(f.sentence.find("infinity"), std::string::npos) << f.sentence;
}

// The offset counts twice: the base circle is larger by twice the offset, 10 mm for 5.
TEST(Checks, the_face_offset_of_an_arm_that_counts_twice_is_found)
{
    ASSERT_NO_FATAL_FAILURE(
        (Truth_Maker{.arm = true, .flat = true, .rot = 1, .dir = 1, .offset = 5.0, .ArmX = 110.0, .lift = 6.0}.Make()));
    const Check check = Check_Design(design, Limits{});
    ASSERT_NE(Find(check, "surface_row"), nullptr) << Codes(check);
}

TEST(Checks, the_curvature_of_a_roller_arm_in_opposed_senses_is_found)
{
    for (const int dir : {-1, 1}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.arm = true, .rot = -1, .dir = dir}.Make()));
        const Check check = Check_Design(design, Limits{});
        EXPECT_EQ(Find(check, "rho_row") != nullptr, dir == 1) << Codes(check);
        EXPECT_EQ(Find(check, "surface_row"), nullptr) << Codes(check);
    }
}

// At an instant of rest between rise and fall the row has R in place of the limit: docs/theory.md, (82).
TEST(Checks, the_point_of_rest_of_a_roller_arm_is_found)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.arm = true, .rot = 1, .dir = 1, .step = 1.0}.Make()));
    // Accelerations that are zero at the bottom and not at the top.
    ASSERT_NO_FATAL_FAILURE(Put_Segments({{'R', "DH", 120, 0, 20}, {'F', "DH", 120, 20, 0}, {'D', "DW", 120, 0, 0}}));
    ASSERT_TRUE(Run_Size(design));
    const Check check = Check_Design(design, Limits{});
    const Finding* const f = Find(check, "rho_row");
    ASSERT_NE(f, nullptr) << Codes(check);
    EXPECT_EQ(*f->angle, 120.0);
    EXPECT_NEAR(*f->row, Data(var::Rho, 120), 1e-6);
    EXPECT_NEAR(*f->truth, (Data(var::Rho, 119) + Data(var::Rho, 121)) / 2.0, 0.5);
}

TEST(Checks, axial_curvature_in_the_base_of_degrees_is_found)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Linear", .time_base = 1}.Make()));
    EXPECT_EQ(Find(Check_Design(design, Limits{}), "rho_row"), nullptr);
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.Camtype = "Linear", .time_base = 2}.Make()));
    EXPECT_NE(Find(Check_Design(design, Limits{}), "rho_row"), nullptr);
}

TEST(Checks, axial_arms_whose_signs_do_not_agree_are_found)
{
    for (const char* const body : {"Barrel", "Linear"})
        for (const int rot : {-1, 1})
            for (const int dir : {-1, 1}) {
                const Truth_Maker maker{
                    .Camtype = body, .arm = true, .rot = rot, .dir = dir, .ArmX = 100.0, .ArmY = 0.0, .ArmRad = 100.0};
                SCOPED_TRACE(maker.Name());
                ASSERT_NO_FATAL_FAILURE(maker.Make());
                const Check check = Check_Design(design, Limits{});
                EXPECT_EQ(Find(check, "phi_row") != nullptr, dir != 1) << Codes(check);
                EXPECT_NE(Find(check, "center_row"), nullptr) << Codes(check);
                EXPECT_NE(Find(check, "surface_row"), nullptr) << Codes(check);
            }
}

// Form-closed with an offset: (98), the sum under the root. 0.81 mm for a prime radius of 61 and an offset of 7.04.
TEST(Checks, the_conjugate_of_an_offset_follower_is_found)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.offset = 7.0}.Make()));
    EXPECT_EQ(Find(Check_Design(design, Limits{}), "surface_row"), nullptr);
    design.cam.Closure = "Form";
    const Check check = Check_Design(design, Limits{});
    const Finding* const f = Find(check, "surface_row");
    ASSERT_NE(f, nullptr) << Codes(check);
    EXPECT_EQ(f->name, "Conjugate: Surface does not give the lift");
    EXPECT_EQ(f->severity, Severity::warning);
    EXPECT_NEAR(*f->row - *f->truth, std::sqrt(60.0 * 60.0 + 49.0) - std::sqrt(60.0 * 60.0 - 49.0), 1e-3);
    design.cam.Offset = 0.0;
    ASSERT_TRUE(Run_Size(design));
    EXPECT_EQ(Find(Check_Design(design, Limits{}), "surface_row"), nullptr);
}

TEST(Checks, the_conjugate_of_an_arm_is_found)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.arm = true, .rot = 1, .dir = 1}.Make()));
    design.cam.Closure = "Form";
    const Check check = Check_Design(design, Limits{});
    const Finding* const f = Find(check, "phi_row");
    ASSERT_NE(f, nullptr) << Codes(check);
    EXPECT_TRUE(f->name.starts_with("Conjugate"));
}

TEST(Checks, series_over_another_lift_than_one_are_found)
{
    for (const char* const program : {"ST", "TH"}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
        ASSERT_NO_FATAL_FAILURE(
            Put_Segments({{'R', program, 110, 0, 20}, {'F', "67", 120, 20, 0}, {'D', "DW", 130, 0, 0}}));
        const Check check = Check_Design(design, Limits{});
        const Finding* const f = Find(check, "series_lift");
        ASSERT_NE(f, nullptr) << Codes(check);
        EXPECT_EQ(f->segment, 1);
    }
}

TEST(Checks, jumps_and_an_open_cycle_are_found)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    ASSERT_NO_FATAL_FAILURE(Put_Segments({{'R', "SF", 110, 0, 20}, {'D', "DW", 60, 20, 20}, {'F', "67", 190, 20, 5}}));
    const Check check = Check_Design(design, Limits{});
    ASSERT_NE(Find(check, "jump_of_position"), nullptr) << Codes(check);
    EXPECT_EQ(Find(check, "jump_of_position")->severity, Severity::do_not_cut);
    EXPECT_EQ(*Find(check, "jump_of_position")->angle, 0.0);
    EXPECT_EQ(Find(check, "jump_of_velocity"), nullptr);
    ASSERT_NE(Find(check, "jump_of_acceleration"), nullptr) << Codes(check);
    EXPECT_TRUE(check.Fails());
    // Only the motion was checked: there is no size.
    EXPECT_FALSE(check.truth);
}

TEST(Checks, rows_of_another_motion_than_the_tables_are_found)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i)
        design.results.CalcData(var::S, i) = 1.01 * Data(var::S, i);
    const Check check = Check_Design(design, Limits{});
    ASSERT_NE(Find(check, "stale_motion"), nullptr) << Codes(check);
}

TEST(Checks, rows_of_another_size_than_the_fields_are_found)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    design.cam.Prime_Rad = 62.0;
    const Check check = Check_Design(design, Limits{});
    EXPECT_NE(Find(check, "surface_row"), nullptr) << Codes(check);
    EXPECT_NE(Find(check, "phi_row"), nullptr) << Codes(check);
}

TEST(Checks, forces_of_another_spring_than_the_fields_are_found)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.step = 1.0}.Make()));
    Dynamics_Group& d = design.dynamics;
    d.Mass = 2.0;
    d.Return_Spring_Rate = 4000.0;
    d.Preload = 150.0;
    ASSERT_TRUE(Run_Forces(design));
    for (const int base : {1, 2, 3}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.step = 1.0, .time_base = base}.Make()));
        d.Mass = 2.0;
        d.Return_Spring_Rate = 4000.0;
        d.Preload = 150.0;
        ASSERT_TRUE(Run_Forces(design));
        EXPECT_EQ(Find(Check_Design(design, Limits{}), "stale_forces"), nullptr)
            << Codes(Check_Design(design, Limits{}));
    }
    d.Preload = 180.0;
    const Check check = Check_Design(design, Limits{});
    const Finding* const f = Find(check, "stale_forces");
    ASSERT_NE(f, nullptr) << Codes(check);
    EXPECT_NEAR(*f->truth - *f->row, 30.0, 0.01);
    EXPECT_EQ(f->place, Finding_Place::forces);
}

TEST(Checks, a_follower_that_leaves_the_cam_is_found)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.step = 1.0}.Make()));
    Dynamics_Group& d = design.dynamics;
    d.Mass = 20.0;
    d.Return_Spring_Rate = 100.0;
    d.Preload = 1.0;
    design.flags.Separation_Answer = 5;
    ASSERT_TRUE(Run_Forces(design));
    const Check check = Check_Design(design, Limits{});
    ASSERT_NE(Find(check, "separation"), nullptr) << Codes(check);
    EXPECT_FALSE(Find(check, "separation")->stretch.empty());
}

TEST(Checks, units_whose_labels_mislead_are_said)
{
    for (const int units : {1, 2, 3, 4, 5}) {
        ASSERT_NO_FATAL_FAILURE((Truth_Maker{.step = 1.0}.Make()));
        design.identity.WhichUnit = units;
        Set_Units(design);
        Dynamics_Group& d = design.dynamics;
        d.Mass = 0.1;
        d.Return_Spring_Rate = 4000.0;
        d.Preload = 1500.0;
        design.flags.Separation_Answer = 5;
        ASSERT_TRUE(Run_Forces(design));
        d.Youngs_modulus.Fill(200000.0);
        d.Poissons_ratio.Fill(0.3);
        d.Roller_type = 1;
        d.Roller_length = 10.0;
        Contact_Field refused{};
        ASSERT_TRUE(Run_Stress(design, refused));
        const Check check = Check_Design(design, Limits{});
        EXPECT_EQ(Find(check, "torque_unit") != nullptr, units >= 4) << Codes(check);
        EXPECT_EQ(Find(check, "stress_unit") != nullptr, units == 2 || units == 4) << Codes(check);
    }
}

TEST(Checks, chords_are_held_against_their_tolerance_and_the_step_that_does_is_said)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.step = 1.0}.Make()));
    EXPECT_EQ(Find(Check_Design(design, Limits{}), "chord"), nullptr);
    Limits limits;
    limits[Limit::Chord] = 0.001;
    const Check check = Check_Design(design, limits);
    const Finding* const f = Find(check, "chord");
    ASSERT_NE(f, nullptr) << Codes(check);
    // What lines leave out is an arc's height over its chord: re-traced between the points it is as much, over cos Phi.
    std::vector<Vector> surface;
    std::vector<double> between;
    for (int i = 0; i < 360; ++i) {
        surface.push_back(check.truth->points[static_cast<std::size_t>(i)].surface);
        between.push_back(i + 0.5);
    }
    const Retraced lift = Retrace(check.truth->cam, Surface_Path::Through(surface), between);
    EXPECT_NEAR(lift.largest_error, *f->truth, 0.2 * *f->truth);
    EXPECT_EQ(f->advice, "A step of 0.5 deg does, or arcs.");
    limits[Limit::Chord] = 1e-6;
    EXPECT_EQ(Find(Check_Design(design, limits), "chord")->advice,
              "Not even the finest step does: use arcs or a spline through the points.");
    // Printed at every fourth point the steps are four times as long.
    design.cam.Printstep = 4;
    const Check sparse = Check_Design(design, Limits{});
    EXPECT_NE(Find(sparse, "chord"), nullptr) << Codes(sparse);
}

TEST(Checks, a_cutter_larger_than_a_hollow_is_found)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.lift = 40.0, .step = 0.5}.Make()));
    double hollow = 1e9;
    const std::optional<True_Design> truth = Find_Truth(design);
    ASSERT_TRUE(truth);
    for (const True_Point& p : truth->points)
        if (p.Rho_Surface < 0.0)
            hollow = std::min(hollow, -p.Rho_Surface);
    ASSERT_LT(hollow, 1e6) << "this cam has no hollow";
    design.cam.Cutter_Radius = hollow * 1.01;
    ASSERT_TRUE(Run_Size(design));
    EXPECT_NE(Find(Check_Design(design, Limits{}), "cutter_too_large"), nullptr);
    design.cam.Cutter_Radius = hollow * 0.99;
    ASSERT_TRUE(Run_Size(design));
    EXPECT_EQ(Find(Check_Design(design, Limits{}), "cutter_too_large"), nullptr);
}

TEST(Checks, limits_that_are_broken_are_told_and_those_that_are_off_are_not)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.step = 1.0}.Make()));
    Limits limits;
    ASSERT_EQ(Put_Limit(limits, design, "Phi", "5"), "");
    ASSERT_EQ(Put_Limit(limits, design, "Rho_Ratio", "20"), "");
    ASSERT_EQ(Put_Limit(limits, design, "V", "1"), "");
    ASSERT_EQ(Put_Limit(limits, design, "A", "1"), "");
    ASSERT_EQ(Put_Limit(limits, design, "J", "1"), "");
    ASSERT_EQ(Put_Limit(limits, design, "Cam_Size", "30"), "");
    const Check check = Check_Design(design, limits);
    for (const char* const code : {"Phi", "Rho_Ratio", "V", "A", "J", "Cam_Size"}) {
        const Finding* const f = Find(check, code);
        ASSERT_NE(f, nullptr) << code << "\n" << Codes(check);
        EXPECT_TRUE(f->beyond_limit);
        EXPECT_EQ(f->severity, Severity::warning);
    }
    EXPECT_TRUE(check.Fails());
    EXPECT_FALSE(check.Do_Not_Cut());
    double fastest = 0.0;
    for (int i = 0; i < 360; ++i)
        fastest = std::max(fastest, std::abs(Data(var::V, i)));
    EXPECT_NEAR(*Find(check, "V")->truth, fastest, 1e-3);
    for (const char* const name : {"Phi", "Rho_Ratio", "V", "A", "J", "Cam_Size"})
        ASSERT_EQ(Put_Limit(limits, design, name, "off"), "");
    EXPECT_FALSE(Check_Design(design, limits).Fails());
}

TEST(Checks, an_arm_that_does_not_reach_and_a_design_of_other_units_are_told_of)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.arm = true}.Make()));
    design.cam.ArmRad = 10.0;
    const Check check = Check_Design(design, Limits{});
    ASSERT_NE(Find(check, "no_geometry"), nullptr) << Codes(check);
    EXPECT_FALSE(check.truth);
    EXPECT_FALSE(With_True_Profile(design));
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{}.Make()));
    design.results.WhichUnit = 1;
    ASSERT_NE(Find(Check_Design(design, Limits{}), "other_units"), nullptr);
    EXPECT_FALSE(Find_Truth(design));
}

TEST(Checks, coordinates_too_coarse_for_the_tolerance_are_told_of)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.step = 1.0}.Make()));
    EXPECT_EQ(Find(Check_Design(design, Limits{}), "resolution"), nullptr);
    Limits limits;
    limits[Limit::Surface] = 1e-5;
    EXPECT_NE(Find(Check_Design(design, limits), "resolution"), nullptr);
}

TEST(Checks, nothing_is_shown_and_nothing_is_changed)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.arm = true, .step = 1.0}.Make()));
    design.cam.Closure = "Form";
    const Design_State before = design;
    const Check check = Check_Design(design, Limits{});
    EXPECT_EQ(before.cam.Prime_Rad, design.cam.Prime_Rad);
    EXPECT_EQ(before.flags.Calc_Error, design.flags.Calc_Error);
    for (int row = 0; row <= var::Last_Stored; ++row)
        for (int i = 0; i <= 360; ++i)
            ASSERT_EQ(before.results.CalcData(row, i), design.results.CalcData(row, i));
    EXPECT_EQ(Check_Design(Design_State{}, Limits{}).findings.size(), 0U);
}

// The rows of a copy are the true ones: where the rows are right already, they stay within their 32 bits.
TEST(Checks, the_true_profile_stands_in_the_rows_of_a_copy)
{
    for (const Truth_Maker& maker :
         {Truth_Maker{.offset = 7.0}, Truth_Maker{.rot = 1, .In_Out = 1}, Truth_Maker{.flat = true},
          Truth_Maker{.arm = true, .rot = 1}, Truth_Maker{.Camtype = "Linear"}}) {
        SCOPED_TRACE(maker.Name());
        ASSERT_NO_FATAL_FAILURE(maker.Make());
        design.cam.Shift_Angle = 30.0;
        design.cam.Cutter_Radius = 5.0;
        ASSERT_TRUE(Run_Size(design));
        const std::optional<Design_State> copy = With_True_Profile(design);
        ASSERT_TRUE(copy);
        const bool disk = std::string(maker.Camtype) == "Radial";
        for (const int row : {5, 9, 10, 11, 12, 13, 14, 34, 35, 36, 37, 38, 39, 40, 41}) {
            if (!disk && (row == 9 || row == 10 || row == 13 || row == 14 || row == 34 || row == 35 || row >= 38))
                continue;
            for (int i = 0; i < design.motion.Max_Data_Points_used; ++i) {
                const double off = copy->results.CalcData(row, i) - Data(row, i);
                const bool angle = disk && (row == 12 || row == 35);
                ASSERT_NEAR(angle ? std::remainder(off, 360.0) : off, 0.0, 2e-4) << row << " at " << i;
            }
        }
    }
}

// No false alarm: the examples, and random designs of the configurations in which the rows are what mechanics has.
TEST(Checks, no_example_is_said_not_to_be_cut)
{
    for (const std::string_view name : Example_Names) {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        ASSERT_TRUE(Open_Example(design, name)) << name;
        const Check check = Check_Design(design, Limits{});
        EXPECT_TRUE(check.truth) << name;
        EXPECT_FALSE(check.Do_Not_Cut()) << name << "\n" << Codes(check);
    }
}

/// Whether a design is sound by what the program said before there was a check: no jump of position or velocity, no
/// series out of its lift, a curvature that leaves the surface a tenth of the roller's radius.
bool Sound(const Check& check)
{
    const std::set<std::string_view> rough{"jump_of_position", "jump_of_velocity", "series_lift", "cutter_too_large"};
    if (std::ranges::any_of(check.findings, [&](const Finding& f) { return rough.contains(f.code); }))
        return false;
    if (!check.truth)
        return false;
    const Mechanism& m = check.truth->cam.Follower();
    return std::ranges::all_of(check.truth->points, [&](const True_Point& p) {
        const double convex = m.roller ? m.side * p.Rho : p.Rho;
        return m.roller ? convex <= 0.0 || convex > 1.1 * m.roller_radius : convex > 0.0;
    });
}

TEST(Checks, sound_random_designs_are_not_said_not_to_be_cut)
{
    int sound = 0;
    for (std::uint32_t seed = 1; sound < 200 && seed < 5000; ++seed) {
        testing::Dice dice(seed);
        const testing::Drawn_Design drawn = testing::Draw_Design(dice);
        ASSERT_TRUE(Sub_Main(design, "", {}));
        ASSERT_EQ(testing::Type_into(design, drawn), "") << seed;
        const Cam_Group& c = design.cam;
        const bool disk = c.Camtype == "Radial";
        const bool right = disk ? c.Translating || c.Followtype == 1 : bool{c.Translating};
        if (!right || !Calc_All(design, true) || !Motion_Done(design) || !Run_Size(design))
            continue;
        const Check check = Check_Design(design, Limits{});
        if (!Sound(check))
            continue;
        ++sound;
        EXPECT_FALSE(check.Do_Not_Cut()) << seed << "\n" << Codes(check);
    }
    EXPECT_EQ(sound, 200);
}

}  // namespace
}  // namespace lobemax
