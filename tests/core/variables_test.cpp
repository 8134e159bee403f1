// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/variables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/startup.h"
#include "core/units.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using List = std::vector<int>;

class The_Variables : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }

    static std::vector<std::string> Words(int row)
    {
        const Variable_Labels words = Labels_of(design, row);
        return {words.Var_Name, words.Var_Long, words.Var_Short, words.Var_Symbol};
    }
    static std::vector<std::string> Stored_Words(int row)
    {
        const Plot_Group& p = design.plot;
        return {p.Var_Name(row), p.Var_Long(row), p.Var_Short(row - 1), p.Var_Symbol(row)};
    }
    static List Rows_of(Rung rung)
    {
        List rows;
        for (const Variable& v : Variables())
            if (v.rung == rung)
                rows.push_back(v.row);
        return rows;
    }
};

List From(int first, int last)
{
    List rows;
    for (int v = first; v <= last; ++v)
        rows.push_back(v);
    return rows;
}

TEST_F(The_Variables, are_rows_0_to_59_in_order)
{
    ASSERT_EQ(Variables().size(), 60U);
    for (int v = 0; v <= 59; ++v) {
        EXPECT_EQ(Variables()[static_cast<std::size_t>(v)].row, v);
        EXPECT_EQ(&Variable_at(v), &Variables()[static_cast<std::size_t>(v)]);
    }
    for (const int v : {-1, 60}) {
        EXPECT_THROW(Variable_at(v), Fault);
        EXPECT_THROW(Labels_of(design, v), Fault);
    }
}

TEST_F(The_Variables, have_their_number_by_name)
{
    EXPECT_EQ((List{var::Angle, var::S, var::V, var::A, var::J, var::Phi, var::Rho, var::Force, var::Torque}),
              From(0, 8));
    EXPECT_EQ((List{var::X, var::Y, var::Radius, var::Theta, var::X_Key, var::Y_Key}), From(9, 14));
    EXPECT_EQ((List{var::Friction_Torque, var::Flywheel_Torque, var::Ping}), From(15, 17));
    EXPECT_EQ((List{var::FFT_Real, var::FFT_Imag, var::FFT_Mag, var::FFT_Phase}), From(18, 21));
    EXPECT_EQ((List{var::Polydyne_S, var::Polydyne_V, var::Polydyne_A}), From(22, 24));
    EXPECT_EQ((List{var::Nonpolydyne_X, var::Nonpolydyne_Y, var::Nonpolydyne_Radius, var::Nonpolydyne_Theta}),
              From(25, 28));
    EXPECT_EQ((List{var::Response_Error, var::Response_X, var::Response_Xdot, var::Response_Xddot, var::Dynamic_Force}),
              From(29, 33));
    EXPECT_EQ((List{var::Radius_Key, var::Theta_Key, var::X_Surface, var::Y_Surface, var::X_Surface_Key,
                    var::Y_Surface_Key, var::X_Cutter, var::Y_Cutter}),
              From(34, 41));
    EXPECT_EQ((List{var::Sigma_Max, var::Tau_Max, var::Ext_Force, var::Torque_Integral, var::World_X, var::World_Y,
                    var::Comp_Torque, var::Net_Torque}),
              From(42, 49));
    EXPECT_EQ((List{var::Time_X, var::Time_Xdot, var::Time_Xddot, var::Time_Error}), From(50, 53));
    EXPECT_EQ((List{var::Profile_Curve, var::Nonpolydyne_Curve, var::Profile_Key_Curve, var::Surface_Curve,
                    var::Surface_Key_Curve, var::Cutter_Curve}),
              From(54, 59));
    EXPECT_EQ((List{var::Z, var::Lambda, var::Z_Surface, var::Lambda_Surface, var::Z_Cutter, var::Lambda_Cutter}),
              (List{11, 12, 36, 37, 40, 41}));
}

struct Profile_Row {
    int row;
    std::vector<std::string> radial;  // name, long, short, symbol
    std::vector<std::string> axial;
};

const std::vector<Profile_Row> profile_rows{
    {11, {"Radius", "Cam Profile Radius", "Radius", "R"}, {"Z-coord", "Z-coord", "Z-coord", "Z"}},
    {12, {"Theta", "Cam Profile Theta", "Theta ", "Th"}, {"Lambda", "Lambda", "Lambda", "Lm"}},
    {36, {"X_Surface", "X_Surface", "", "X_Srf"}, {"Z_Surface", "Z_Surface", "", "Z_Srf"}},
    {37, {"Y_Surface", "Y_Surface", "", "Y_Srf"}, {"Lambda_Surf", "Lambda_Surf", "", "Lm_Srf"}},
    {40, {"X_Cutter", "X_Cutter", "", "X_Ctr"}, {"Z_Cutter", "Z_Cutter", "", "Z_Ctr"}},
    {41, {"Y_Cutter", "Y_Cutter", "", "Y_Ctr"}, {"Lambda_Ctr", "Lambda_Ctr", "", "Lm_Ctr"}},
};

TEST_F(The_Variables, of_the_profile_are_named_by_the_kind_of_cam)
{
    for (const char* kind : {"Barrel", "Radial", "Linear", "Radial"}) {
        design.cam.Camtype = kind;
        Set_Units(design);
        for (const Profile_Row& row : profile_rows) {
            const auto& words = design.cam.Camtype == "Radial" ? row.radial : row.axial;
            EXPECT_EQ(Words(row.row), words) << kind << row.row;
            EXPECT_EQ(Stored_Words(row.row), words) << kind << row.row;
        }
    }
}

TEST_F(The_Variables, beside_the_profile_keep_their_names_on_every_cam)
{
    const auto of_profile = [](int v) {
        return std::ranges::find(profile_rows, v, &Profile_Row::row) != profile_rows.end();
    };
    std::vector<std::vector<std::string>> radial;
    for (int v = 0; v <= 59; ++v)
        radial.push_back(Words(v));
    for (const char* kind : {"Barrel", "Linear"}) {
        design.cam.Camtype = kind;
        for (int v = 0; v <= 59; ++v)
            if (!of_profile(v)) {
                EXPECT_EQ(Words(v), radial[static_cast<std::size_t>(v)]) << kind << v;
            }
    }
}

TEST_F(The_Variables, jerk_and_ping_lose_their_thousands_outside_seconds_on_every_cam)
{
    for (const char* kind : {"Radial", "Barrel", "Linear"})
        for (const int base : {1, 2, 3}) {
            design.cam.Camtype = kind;
            Set_Time_Base(design, base);
            const bool seconds = base == 1;
            using Texts = std::vector<std::string>;
            EXPECT_EQ(Stored_Words(4),
                      (Texts{seconds ? "Jerk *E3" : "Jerk", seconds ? "Jerk x 10^3" : "Jerk", "Jrk", "J"}));
            EXPECT_EQ(Stored_Words(17),
                      (Texts{seconds ? "Ping *E3" : "Ping", seconds ? "Ping x 10^3" : "Ping", "Ping", "Pg"}));
            EXPECT_EQ(Stored_Words(12)[0], std::string(kind) == "Radial" ? "Theta" : "Lambda");
        }
}

TEST_F(The_Variables, of_a_reset_design_are_those_of_the_kind_of_cam_that_it_keeps)
{
    design.cam.Camtype = "Linear";
    Reset_All(design);
    EXPECT_EQ(design.cam.Camtype, "Linear");
    EXPECT_EQ(Stored_Words(37), profile_rows[3].axial);
}

TEST_F(The_Variables, of_a_start_are_those_of_the_preferred_kind_of_cam)
{
    Start_Services services;
    services.read_preferences = [] { design.cam.Camtype = "Barrel"; };
    ASSERT_TRUE(Sub_Main(design, "", services));
    EXPECT_EQ(Stored_Words(12), profile_rows[1].axial);
}

TEST_F(The_Variables, have_the_rung_that_fills_them)
{
    EXPECT_EQ(Rows_of(Rung::motion), (List{0, 1, 2, 3, 4, 17}));
    EXPECT_EQ(Rows_of(Rung::size), (List{5, 6}));
    EXPECT_EQ(Rows_of(Rung::force), (List{7, 8, 15, 16, 45}));
    EXPECT_EQ(Rows_of(Rung::profile),
              (List{9, 10, 11, 12, 13, 14, 34, 35, 36, 37, 38, 39, 40, 41, 46, 47, 54, 56, 57, 58, 59}));
    EXPECT_EQ(Rows_of(Rung::polydyne), (List{22, 23, 24, 25, 26, 27, 28, 55}));
    EXPECT_EQ(Rows_of(Rung::vibration), (List{29, 30, 31, 32, 33, 50, 51, 52, 53}));
    EXPECT_EQ(Rows_of(Rung::stress), (List{42, 43}));
    EXPECT_EQ(Rows_of(Rung::external_force), List{44});
    EXPECT_EQ(Rows_of(Rung::fft), (List{18, 19, 20, 21}));
    EXPECT_EQ(Rows_of(Rung::compensation), (List{48, 49}));
}

TEST_F(The_Variables, a_rung_is_done_while_its_own_flag_stands)
{
    Flags_Group& f = design.flags;
    const std::vector<std::pair<Flag*, std::vector<Rung>>> cases{{&f.Calculated, {Rung::motion}},
                                                                 {&f.Sized, {Rung::size, Rung::profile}},
                                                                 {&f.Dynamicflag, {Rung::force}},
                                                                 {&f.Polydyne_Calc, {Rung::polydyne}},
                                                                 {&f.Modelflag, {Rung::vibration}},
                                                                 {&f.Stressflag, {Rung::stress}},
                                                                 {&f.Ext_Force_Calc, {Rung::external_force}},
                                                                 {&f.FFT_Done, {Rung::fft}},
                                                                 {&f.CompCam_Calc, {Rung::compensation}}};
    for (const auto& [flag, rungs] : cases) {
        *flag = true;
        for (int r = 0; r <= static_cast<int>(Rung::compensation); ++r) {
            const Rung rung = static_cast<Rung>(r);
            EXPECT_EQ(Rung_Done(design, rung), std::ranges::find(rungs, rung) != rungs.end()) << r;
        }
        *flag = false;
    }
}

TEST_F(The_Variables, are_offered_in_these_places)
{
    EXPECT_EQ(Rows_Offered(offer::spreadsheet), From(0, 53));
    EXPECT_EQ(Rows_Offered(offer::polar_curve), From(54, 59));
    EXPECT_EQ(Rows_Offered(offer::screen_table), List{1});
    EXPECT_EQ(Rows_Offered(offer::table),
              (List{2, 3, 4, 5, 6, 7, 8, 15, 16, 17, 18, 19, 20, 21, 29, 30, 31, 32, 33, 42, 43, 44, 45, 48, 49}));
    List radial = From(1, 24);
    for (const int v : {27, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42, 43, 44, 45, 46, 47, 48, 49})
        radial.push_back(v);
    EXPECT_EQ(Rows_Offered(offer::radial_plot), radial);
    EXPECT_EQ(Rows_Offered(offer::axial_plot), (List{1,  2,  3,  4,  5,  6,  7,  8,  11, 12, 15, 16, 17, 18, 19,
                                                     20, 21, 29, 30, 31, 32, 33, 36, 37, 42, 43, 44, 45, 48, 49}));
    EXPECT_EQ(Rows_Offered(offer::nowhere), List{});
}

TEST_F(The_Variables, closed_curves_stand_for_pairs_of_coordinates)
{
    const std::vector<List> radial{{9, 10}, {25, 26}, {13, 14}, {36, 37}, {38, 39}, {40, 41}};
    const std::vector<List> axial{{12, 11}, {}, {12, 11}, {37, 36}, {37, 36}, {41, 40}};
    for (int curve = 54; curve <= 59; ++curve) {
        const std::size_t k = static_cast<std::size_t>(curve - 54);
        const Coordinate_Rows of_radial = Radial_Coordinates(curve);
        EXPECT_EQ((List{of_radial.first, of_radial.second}), radial[k]) << curve;
        if (curve == 55) {
            EXPECT_THROW(Axial_Coordinates(curve), Fault);
            continue;
        }
        const Coordinate_Rows of_axial = Axial_Coordinates(curve);
        EXPECT_EQ((List{of_axial.first, of_axial.second}), axial[k]) << curve;
    }
    for (const int curve : {53, 60}) {
        EXPECT_THROW(Radial_Coordinates(curve), Fault);
        EXPECT_THROW(Axial_Coordinates(curve), Fault);
    }
}

}  // namespace
}  // namespace lobemax
