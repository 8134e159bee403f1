// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/exports.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "camgeom/sizing.h"
#include "core/startup.h"
#include "core/traps.h"
#include "core/unit_change.h"
#include "files/byte_stream.h"
#include "files/model_file.h"
#include "forms/home_commands.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Cam_Maker;
using testing::Data;
using testing::Error_Box;
using testing::Expected_Box;
using testing::Script;

constexpr double pi = 3.14159265358979323846;

class Exports : public ::testing::Test {
protected:
    void SetUp() override
    {
        path_ = ::testing::TempDir() + "lobemax_export_" + std::to_string(::getpid()) + ".txt";
        Cam_Maker().Make();
        ASSERT_TRUE(Calc_Phi(design, 1));
        ASSERT_TRUE(Calc_Rho(design, 1));
        design.flags.Sized = true;
        design.identity.User = "A. Designer";
        design.identity.File_Name = "/designs/rocker.cam";
        design.identity.Model_Name = "rocker";
        script_.path = path_;
    }
    void TearDown() override
    {
        std::filesystem::remove(path_);
        design = {};
    }
    /// Lines of the written file, each split at its tabs; the line ends must be CR LF.
    std::vector<std::vector<std::string>> Lines() const
    {
        std::ostringstream whole;
        whole << std::ifstream(path_, std::ios::binary).rdbuf();
        const std::string text = whole.str();
        std::vector<std::vector<std::string>> lines;
        std::size_t from = 0;
        while (from < text.size()) {
            const std::size_t end = text.find("\r\n", from);
            EXPECT_NE(end, std::string::npos);
            std::vector<std::string>& cells = lines.emplace_back();
            std::istringstream line(text.substr(from, end - from));
            for (std::string cell; std::getline(line, cell, '\t');)
                cells.push_back(cell);
            from = end + 2;
        }
        return lines;
    }
    bool Written() const { return std::filesystem::exists(path_); }
    void Expect_Told(const std::string& what)
    {
        script_.Expect({what + path_ + "\nThis tab-delimited file can be opened in any spreadsheet program"});
    }

    std::string path_;
    Script script_;
};

TEST_F(Exports, the_spreadsheet_has_every_variable_of_every_point)
{
    ASSERT_TRUE(Export_All_to_File(design, path_));
    const auto lines = Lines();
    ASSERT_EQ(lines.size(), 7U + 361U);
    EXPECT_EQ(lines[0], (std::vector<std::string>{"File: ", "/designs/rocker.cam", "Design #", "2"}));
    EXPECT_EQ(lines[1], (std::vector<std::string>{"A. Designer", "2026-11-21", "12:34:56"}));
    EXPECT_TRUE(lines[2].empty() && lines[5].empty() && lines[6].empty());
    EXPECT_EQ(lines[3][0], "Cam Angle");
    EXPECT_EQ(lines[3][6], "Radius of Curvature");
    EXPECT_EQ(lines[4][0], "deg");
    for (int i = 0; i <= 360; ++i) {
        const auto& cells = lines[static_cast<std::size_t>(7 + i)];
        ASSERT_EQ(cells.size(), 54U);
        for (int v = 0; v <= 53; ++v)
            EXPECT_EQ(std::stof(cells[static_cast<std::size_t>(v)]), static_cast<float>(Data(v, i))) << v;
    }
}

TEST_F(Exports, a_print_step_of_two_gives_181_and_180_lines)
{
    design.cam.Printstep = 2;
    ASSERT_TRUE(Export_All_to_File(design, path_));
    EXPECT_EQ(Lines().size(), 7U + 181U);
    ASSERT_TRUE(Export_Profile_to_File(design, path_, 1));
    EXPECT_EQ(Lines().size(), 7U + 180U);
    design.cam.Printstep = 0;  // no step at all prints every point
    ASSERT_TRUE(Export_Profile_to_File(design, path_, 1));
    EXPECT_EQ(Lines().size(), 7U + 360U);
}

TEST_F(Exports, a_radial_profile_has_its_two_columns_for_each_code)
{
    const std::vector<std::pair<int, int>> rows{{9, 10}, {36, 37}, {40, 41}, {13, 14}, {38, 39}};
    for (int code = 1; code <= 5; ++code) {
        ASSERT_TRUE(Export_Profile_to_File(design, path_, code));
        const auto lines = Lines();
        const auto [x, y] = rows[static_cast<std::size_t>(code - 1)];
        EXPECT_EQ(lines[3], (std::vector<std::string>{design.plot.Var_Name(x), design.plot.Var_Name(y)}));
        EXPECT_EQ(lines[4], (std::vector<std::string>{"mm", "mm"}));
        for (int i = 0; i < 360; ++i) {
            EXPECT_EQ(std::stof(lines[static_cast<std::size_t>(7 + i)][0]), static_cast<float>(Data(x, i)));
            EXPECT_EQ(std::stof(lines[static_cast<std::size_t>(7 + i)][1]), static_cast<float>(Data(y, i)));
        }
    }
}

TEST_F(Exports, machine_zero_is_the_cam_zero_profile_turned_rigidly)
{
    design.cam.Shift_Angle = 40.0;
    ASSERT_TRUE(Calc_Phi(design, 1));
    ASSERT_TRUE(Export_Profile_to_File(design, path_, 2));
    const auto cam_zero = Lines();
    ASSERT_TRUE(Export_Profile_to_File(design, path_, 5));
    const auto machine_zero = Lines();
    const std::complex<double> turn = std::polar(1.0, -design.cam.Rotflag * 40.0 * pi / 180);
    for (std::size_t line = 7; line < cam_zero.size(); line += 30) {
        const std::complex<double> a(std::stod(cam_zero[line][0]), std::stod(cam_zero[line][1]));
        const std::complex<double> b(std::stod(machine_zero[line][0]), std::stod(machine_zero[line][1]));
        EXPECT_NEAR(std::abs(b - a * turn), 0.0, 1e-3);
    }
}

TEST_F(Exports, a_barrel_profile_has_its_radius_first_and_lambda_before_z)
{
    design.cam.Camtype = "Barrel";
    ASSERT_TRUE(Calc_Phi(design, 1));
    ASSERT_TRUE(Export_Profile_to_File(design, path_, 1));
    auto lines = Lines();
    EXPECT_EQ(lines[3].size(), 3U);
    EXPECT_EQ(lines[3][0], "Radius");
    EXPECT_EQ(lines[4][0], design.plot.Var_Unit(11));
    for (const std::size_t i : {0U, 120U, 359U}) {
        ASSERT_EQ(lines[7 + i].size(), 3U);
        EXPECT_EQ(std::stof(lines[7 + i][0]), 60.0F);
        EXPECT_EQ(std::stof(lines[7 + i][1]), static_cast<float>(Data(12, static_cast<int>(i))));
        EXPECT_EQ(std::stof(lines[7 + i][2]), static_cast<float>(Data(11, static_cast<int>(i))));
    }
    design.cam.Shift_Angle = 30.0;
    ASSERT_TRUE(Export_Profile_to_File(design, path_, 5));
    lines = Lines();
    EXPECT_NEAR(std::stod(lines[7 + 10][1]), Data(37, 10) + 30.0, 1e-3);
    EXPECT_NEAR(std::stod(lines[7 + 345][1]), Data(37, 345) + 30.0 - 360.0, 1e-3);  // within one turn
    EXPECT_EQ(std::stof(lines[7 + 10][2]), static_cast<float>(Data(36, 10)));
}

TEST_F(Exports, the_heads_of_an_axial_cam_are_its_own_also_after_a_load)
{
    using Texts = std::vector<std::string>;
    for (const char* kind : {"Barrel", "Linear"}) {
        design.cam.Camtype = kind;
        const bool barrel = design.cam.Camtype == "Barrel";
        ASSERT_TRUE(Calc_Phi(design, 1));
        Text_Sink model;
        Write_Model(design, model, "9");
        design.cam.Camtype = "Radial";
        Reset_All(design);
        Text_Source source(model.Text());
        ASSERT_TRUE(ReadFile(design, source));
        const std::vector<Texts> heads{{"Lambda", "Z-coord"},
                                       {"Lambda_Surf", "Z_Surface"},
                                       {},
                                       {"Lambda", "Z-coord"},
                                       {"Lambda_Surf", "Z_Surface"}};
        for (const int code : {1, 2, 4, 5}) {
            Texts expected = heads[static_cast<std::size_t>(code - 1)];
            Texts units{barrel ? "deg" : "mm", "mm"};
            if (barrel) {
                expected.insert(expected.begin(), "Radius");
                units.insert(units.begin(), "mm");
            }
            ASSERT_TRUE(Export_Profile_to_File(design, path_, code));
            EXPECT_EQ(Lines()[3], expected) << kind << code;
            EXPECT_EQ(Lines()[4], units) << kind << code;
        }
        ASSERT_TRUE(Export_All_to_File(design, path_));
        const Texts columns = Lines()[3];
        EXPECT_EQ(columns.at(11), "Z-coord");
        EXPECT_EQ(columns.at(12), "Lambda");
        EXPECT_EQ(columns.at(36), "Z_Surface");
        EXPECT_EQ(columns.at(37), "Lambda_Surf");
        EXPECT_EQ(columns.at(40), "Z_Cutter");
        EXPECT_EQ(columns.at(41), "Lambda_Ctr");
        EXPECT_EQ(columns.at(9), "X-Cam Profile");
    }
}

TEST_F(Exports, a_turned_lambda_never_shows_a_whole_turn)
{
    design.cam.Camtype = "Barrel";
    ASSERT_TRUE(Calc_Phi(design, 1));
    design.cam.Shift_Angle = 300.0;
    design.results.CalcData(12, 4) = 60.0;        // 360 of 360
    design.results.CalcData(12, 5) = 59.99999;    // 32 bits cannot tell their sum from 360
    design.results.CalcData(12, 6) = -300.00003;  // just below nothing, so just below the turn
    design.results.CalcData(12, 7) = 59.999;
    ASSERT_TRUE(Export_Profile_to_File(design, path_, 4));
    const auto lines = Lines();
    for (const std::size_t i : {4U, 5U})
        EXPECT_EQ(lines[7 + i][1], "0") << i;
    EXPECT_NEAR(std::stod(lines[7 + 6][1]), 359.99997, 2e-5);
    EXPECT_NEAR(std::stod(lines[7 + 7][1]), 359.999, 1e-4);
}

/// However many turns it is away, and however small a linear cam's turn is against it.
TEST_F(Exports, a_lambda_of_any_size_is_turned_in_one_step)
{
    for (const char* const kind : {"Barrel", "Linear"}) {
        design.cam.Camtype = kind;
        design.cam.Prime_Rad = 1e-30;
        ASSERT_TRUE(Calc_Phi(design, 1));
        design.cam.Shift_Angle = 90.0;
        design.results.CalcData(12, 4) = 3e38;
        design.results.CalcData(12, 5) = -3e38;
        for (const int code : {4, 5}) {
            ASSERT_TRUE(Export_Profile_to_File(design, path_, code));
            const double turn = std::string(kind) == "Linear" ? 1e-30 * PI2 : 360.0;
            for (const std::size_t i : {4U, 5U}) {
                const double turned = std::stod(Lines()[7 + i][1 - (turn < 1.0)]);
                EXPECT_GE(turned, 0.0);
                EXPECT_LT(turned, turn);
            }
        }
    }
}

TEST_F(Exports, a_text_of_several_lines_stands_in_one)
{
    design.identity.User = "two\nlines\tand a tab";
    design.identity.File_Name = "a\r\nb.cam";
    ASSERT_TRUE(Export_All_to_File(design, path_));
    const auto lines = Lines();
    EXPECT_EQ(lines[0][1], "a  b.cam");
    EXPECT_EQ(lines[1][0], "two lines and a tab");
}

TEST_F(Exports, a_linear_profile_is_turned_by_its_share_of_the_length)
{
    design.cam.Camtype = "Linear";
    design.cam.Prime_Rad = 720.0 / PI2;
    design.cam.Shift_Angle = 90.0;
    ASSERT_TRUE(Calc_Phi(design, 1));
    ASSERT_TRUE(Export_Profile_to_File(design, path_, 4));
    const auto lines = Lines();
    EXPECT_EQ(lines[7].size(), 2U);
    EXPECT_NEAR(std::stod(lines[7 + 10][0]), 20.0 + 180.0, 1e-3);
    EXPECT_NEAR(std::stod(lines[7 + 300][0]), 600.0 + 180.0 - 720.0, 1e-3);
}

TEST_F(Exports, the_cutter_of_an_axial_cam_is_refused)
{
    design.cam.Camtype = "Barrel";
    for (int times = 0; times < 2; ++times)
        script_.Expect(
            {"The cutter center coordinates of this cam are not calculated; use the roller center with a "
             "cutter of the roller's size.",
             Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Export_Profile_to_File(design, path_, 3));
    EXPECT_FALSE(Run_Export(design, "mnu_Barrel_Ctr"));
    EXPECT_FALSE(Written());
    EXPECT_TRUE(script_.dialogs.empty());
}

TEST_F(Exports, entries_ask_for_a_name_write_and_tell)
{
    Expect_Told("All calculated data for this cam has been written to ");
    EXPECT_TRUE(Run_Export(design, "mnu_Spread"));
    EXPECT_EQ(script_.dialogs[0].title, "Export All Data to a Text File");
    EXPECT_EQ(script_.dialogs[0].filter, "(*.txt)|*.txt");
    EXPECT_EQ(script_.dialogs[0].suggestion, "rocker.txt");
    EXPECT_EQ(design.identity.Model_Name, "rocker");
    Expect_Told("The profile data for this cam has been written to ");
    EXPECT_TRUE(Run_Export(design, "mnu_Surface"));
    EXPECT_EQ(script_.dialogs[1].title, "Export Profile Data to a Text File");
    EXPECT_EQ(script_.dialogs[1].filter, "(*.pts)|*.pts");
    EXPECT_EQ(script_.dialogs[1].suggestion, "rocker.pts");
    EXPECT_EQ(design.identity.Model_Name, std::filesystem::path(path_).stem());
    EXPECT_EQ(design.identity.File_Name, "/designs/rocker.cam");
}

TEST_F(Exports, every_profile_entry_writes_its_own_rows)
{
    for (const auto& [entry, head] :
         std::vector<std::pair<std::string, std::string>>{{"mnu_profile", "X_coord"},
                                                          {"mnu_Surface", "X_Surface"},
                                                          {"mnu_Cutter", "X_Cutter"},
                                                          {"mnu_Profile_mach", "X_vs_key"},
                                                          {"mnu_Surface_mach", "X_Surf_key"}}) {
        Expect_Told("The profile data for this cam has been written to ");
        EXPECT_TRUE(Run_Export(design, entry));
        EXPECT_EQ(Lines()[3][0], head);
    }
}

/// The rows of a translating roller are true ones, but for the point that is spoilt here: 3 mm and 4 mm are 5 mm.
TEST_F(Exports, a_profile_of_true_points_tells_how_far_the_rows_are_from_them)
{
    auto& data = design.results.CalcData;
    const double x = data(var::X_Surface, 7), y = data(var::Y_Surface, 7);
    data(var::X_Surface, 7) = x + 3.0;
    data(var::Y_Surface, 7) = y - 4.0;
    script_.Expect(
        {"The profile data for this cam has been written to " + path_ +
         "\nThis tab-delimited file can be opened in any spreadsheet program\nIts points are true ones, up to "
         "5 mm from those that the program calculates."});
    ASSERT_TRUE(Run_Export(design, "mnu_Surface", Profile_Rows::truth));
    const auto lines = Lines();
    EXPECT_EQ(lines.size(), 7U + 360U);
    EXPECT_EQ(lines[3][0], "X_Surface");
    EXPECT_NEAR(std::stod(lines[7 + 7][0]), x, 1e-4);
    EXPECT_NEAR(std::stod(lines[7 + 7][1]), y, 1e-4);
    EXPECT_EQ(design.identity.Model_Name, std::filesystem::path(path_).stem());
    EXPECT_EQ(data(var::X_Surface, 7), Single(x + 3.0)) << "the design keeps its rows";
    ASSERT_TRUE(Export_Profile_to_File(design, path_, 2));
    EXPECT_EQ(std::stof(Lines()[7 + 7][0]), static_cast<float>(x + 3.0));
}

TEST_F(Exports, points_of_two_profiles_are_apart_along_the_surface_of_the_cam)
{
    for (const char* const kind : {"Radial", "Barrel", "Linear"}) {
        design.cam.Camtype = kind;
        const Design_State other = design;
        EXPECT_EQ(Profile_Distance(design, other, 2), 0.0);
        auto& data = design.results.CalcData;
        const bool radial = design.cam.Camtype == "Radial";
        data(radial ? var::X_Surface : var::Z_Surface, 5) += 3.0;
        EXPECT_NEAR(Profile_Distance(design, other, 2), 3.0, 1e-4) << kind;
        EXPECT_EQ(Profile_Distance(design, other, 1), 0.0) << kind;
        design = other;
    }
    const auto turned_by = [](const char* kind, double turn) {
        design.cam.Camtype = kind;
        const Design_State other = design;
        design.results.CalcData(var::Lambda, 5) += turn;
        const double distance = Profile_Distance(design, other, 4);
        design = other;
        return distance;
    };
    EXPECT_NEAR(turned_by("Barrel", 360.0), 0.0, 1e-4);
    EXPECT_NEAR(turned_by("Barrel", 90.0), 60.0 * pi / 2.0, 1e-4);
    EXPECT_NEAR(turned_by("Linear", 120.0 * pi), 0.0, 1e-3) << "once round";
    EXPECT_NEAR(turned_by("Linear", 7.0), 7.0, 1e-4);
    EXPECT_THROW(Profile_Distance(design, design, 6), Fault);
}

TEST_F(Exports, what_has_no_true_points_is_told)
{
    const auto refused = [&](const std::string& why) {
        script_.Expect({why, Buttons::OK, Symbol::exclamation});
        EXPECT_FALSE(Run_Export(design, "mnu_Surface", Profile_Rows::truth));
        EXPECT_EQ(Why_No_True_Profile(design), why);
        EXPECT_FALSE(Written());
        EXPECT_TRUE(script_.dialogs.empty());
    };
    EXPECT_EQ(Why_No_True_Profile(design), "");
    design.flags.Sized = false;
    refused("The cam is not sized: it has no true surface.");
    design.flags.Sized = true;
    design.cam.Offset = 61.0;
    refused("There is no true surface: arm, offset and prime radius do not go together.");
}

TEST_F(Exports, motion_entries_are_for_oscillating_followers)
{
    const Expected_Box refusal{"This feature is intended for oscillating follower systems only.", Buttons::OK,
                               Symbol::exclamation};
    script_.Expect(refusal);
    EXPECT_FALSE(Run_Export(design, "mnu_sva"));
    script_.Expect(refusal);
    EXPECT_FALSE(Run_Export(design, "mnu_xdot"));
    design.cam.Translating = false;
    Expect_Told("All calculated data for this cam has been written to ");
    EXPECT_TRUE(Run_Export(design, "mnu_sva"));
    EXPECT_EQ(script_.dialogs[0].title, "Export SVA Data to a Text File");
    EXPECT_EQ(script_.dialogs[0].suggestion, "rocker_4bar.sva");
}

TEST_F(Exports, a_motion_file_has_identification_counts_geometry_and_columns)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.time_base = 3;
    maker.Make();
    ASSERT_TRUE(Export_SVA_to_File(design, path_, Motion_Columns::sva));
    auto lines = Lines();
    ASSERT_EQ(lines.size(), 9U + 361U);
    EXPECT_EQ(lines[3][0], "Points");
    EXPECT_EQ(lines[3][1], "361");
    EXPECT_EQ(lines[4][0], "ArmX");
    EXPECT_EQ(lines[4][1], "90");
    EXPECT_EQ(lines[5][0], "Link 1");
    EXPECT_EQ(lines[7], (std::vector<std::string>{"Angle", "S", "V", "A"}));
    EXPECT_EQ(lines[8], (std::vector<std::string>{"deg", "deg", "deg/rad", "deg/rad"}));
    EXPECT_EQ(std::stof(lines[9 + 40][2]), static_cast<float>(Data(var::V, 40)));
    ASSERT_TRUE(Export_SVA_to_File(design, path_, Motion_Columns::xdot));
    lines = Lines();
    EXPECT_EQ(lines[7], (std::vector<std::string>{"Angle", "X", "Xdot", "Xddot"}));
    EXPECT_NEAR(std::stod(lines[9 + 40][2]), Data(var::V, 40) * 12.0, 1e-3);
    EXPECT_NEAR(std::stod(lines[9 + 40][3]), Data(var::A, 40) * 144.0, 1e-1);
}

TEST_F(Exports, velocities_per_second_are_the_same_whatever_the_time_base)
{
    std::vector<std::string> xdot;
    std::vector<std::string> xddot;
    for (const int base : {1, 2, 3}) {
        Cam_Maker maker;
        maker.translating = false;
        maker.time_base = base;
        maker.Make();
        ASSERT_TRUE(Export_SVA_to_File(design, path_, Motion_Columns::xdot));
        xdot.push_back(Lines()[9 + 40][2]);
        xddot.push_back(Lines()[9 + 40][3]);
    }
    EXPECT_NE(std::stod(xddot[0]), 0.0);
    for (const std::size_t base : {1U, 2U}) {
        EXPECT_NEAR(std::stod(xdot[0]), std::stod(xdot[base]), 1e-3);
        EXPECT_NEAR(std::stod(xddot[0]) / std::stod(xddot[base]), 1.0, 1e-5);
    }
}

TEST_F(Exports, a_calculated_vibration_gives_its_response_brought_to_seconds)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.time_base = 3;
    maker.Make();
    for (int i = 0; i <= 360; ++i)
        for (const int row : {30, 31, 32})
            design.results.CalcData(row, i) = row + i * 0.25;
    design.flags.Modelflag = true;
    ASSERT_TRUE(Export_SVA_to_File(design, path_, Motion_Columns::xdot));
    auto lines = Lines();
    EXPECT_EQ(lines[8], (std::vector<std::string>{"deg", "deg", "deg/sec", "deg/sec^2"}));
    constexpr double omega = 12.0;  // rad/s; the rows are per radian
    for (int i = 0; i <= 360; ++i)
        for (const auto& [k, factor] : {std::pair{1U, 1.0}, std::pair{2U, omega}, std::pair{3U, omega * omega}})
            EXPECT_FLOAT_EQ(std::stof(lines[static_cast<std::size_t>(9 + i)][k]),
                            static_cast<float>((29.0 + k + i * 0.25) * factor));
    ASSERT_TRUE(Export_SVA_to_File(design, path_, Motion_Columns::sva));  // the motion stays the motion
    lines = Lines();
    for (const int i : {0, 40, 360})
        for (const int row : {1, 2, 3})
            EXPECT_EQ(std::stof(lines[static_cast<std::size_t>(9 + i)][static_cast<std::size_t>(row)]),
                      static_cast<float>(Data(row, i)));
}

TEST_F(Exports, a_calculated_linkage_adds_the_columns_of_its_moving_links)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    design.linkage.Links = 4;
    design.linkage.Delta4 = 12.5;
    design.cam.Printstep = 4;
    for (int link = 2; link <= 6; ++link)
        for (int i = 0; i <= 360; ++i) {
            design.results.Link_Theta(link, i) = link * 1000.0 + i;
            design.results.Link_Omega(link, i) = link + i * 0.5;
            design.results.Link_Alpha(link, i) = -link - i * 0.125;
        }
    design.flags.Linkage_Calc = true;
    for (const Motion_Columns columns : {Motion_Columns::sva, Motion_Columns::xdot}) {
        ASSERT_TRUE(Export_SVA_to_File(design, path_, columns));
        const auto lines = Lines();
        ASSERT_EQ(lines.size(), 9U + 91U);
        ASSERT_EQ(lines[7].size(), 4U + 3U * 3U);
        EXPECT_EQ(lines[7][4], "Theta2");
        EXPECT_EQ(lines[7][12], "Alpha4");
        EXPECT_EQ(lines[8][4], "deg");
        EXPECT_EQ(lines[8][5], "rad/sec");
        EXPECT_EQ(lines[8][12], "rad/sec^2");
        for (int i = 0; i <= 360; i += 4) {
            const auto& cells = lines[static_cast<std::size_t>(9 + i / 4)];
            ASSERT_EQ(cells.size(), 13U);
            EXPECT_EQ(std::stod(cells[0]), i);
            for (int link = 2; link <= 4; ++link) {
                const auto at = static_cast<std::size_t>(4 + 3 * (link - 2));
                EXPECT_EQ(std::stod(cells[at]), link * 1000.0 + i);
                EXPECT_EQ(std::stod(cells[at + 1]), link + i * 0.5);
                EXPECT_EQ(std::stod(cells[at + 2]), -link - i * 0.125);
            }
        }
        const auto delta4 = std::find(lines[5].begin(), lines[5].end(), "Delta4 deg");
        ASSERT_NE(delta4, lines[5].end());
        EXPECT_EQ(*(delta4 + 1), "12.5");
    }
    design.linkage.Links = 6;
    ASSERT_TRUE(Export_SVA_to_File(design, path_, Motion_Columns::sva));
    EXPECT_EQ(Lines()[7].back(), "Alpha6");
    EXPECT_EQ(Lines()[7].size(), 4U + 5U * 3U);
}

TEST_F(Exports, a_sliders_columns_are_lengths_per_second)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.Make();
    for (const auto& [type, links] : {std::pair{2, 4}, std::pair{3, 6}}) {
        design.linkage.Linkage_Type = type;
        design.linkage.Links = links;
        design.flags.Linkage_Calc = true;
        for (const Motion_Columns columns : {Motion_Columns::sva, Motion_Columns::xdot}) {
            ASSERT_TRUE(Export_SVA_to_File(design, path_, columns));
            const auto lines = Lines();
            const auto last = static_cast<std::size_t>(4 + 3 * (links - 2));
            const std::string number = std::to_string(links);
            ASSERT_EQ(lines[7].size(), last + 3);
            EXPECT_EQ(lines[7][last], "S" + number);
            EXPECT_EQ(lines[7][last + 1], "V" + number);
            EXPECT_EQ(lines[7][last + 2], "A" + number);
            EXPECT_EQ(lines[8][last], "mm");
            EXPECT_EQ(lines[8][last + 1], "mm/sec");
            EXPECT_EQ(lines[8][last + 2], "mm/sec^2");
            EXPECT_EQ(lines[7][last - 1], "Alpha" + std::to_string(links - 1));
            EXPECT_EQ(lines[8][last - 3], "deg");
        }
    }
}

TEST_F(Exports, a_blank_model_has_nothing_to_export)
{
    design.flags.Calculated = false;
    const Expected_Box blank{
        "The current model is blank.  There is nothing to export.  Use S-V-A-J and Sizecam buttons to calculate the "
        "model, then export",
        Buttons::OK, Symbol::exclamation};
    for (const char* entry : {"mnu_Spread", "mnu_profile", "mnu_sva"}) {
        script_.Expect(blank);
        EXPECT_FALSE(Run_Export(design, entry));
    }
    EXPECT_FALSE(Written());
}

TEST_F(Exports, results_of_other_units_are_refused)
{
    Change_Units(design, 1);
    const Expected_Box other{
        "The results in memory are those of the units before (mm-kg-N-s): \n"
        "a change of units converts the data of the design, and no calculated results. \n"
        "Please recalculate first: File menu, Recalculate.",
        Buttons::OK, Symbol::exclamation};
    for (const char* entry : {"mnu_Spread", "mnu_profile", "mnu_sva"}) {
        script_.Expect(other);
        EXPECT_FALSE(Run_Export(design, entry));
    }
    EXPECT_FALSE(Written());
}

TEST_F(Exports, entries_that_do_not_export_say_why)
{
    script_.Expect(
        {"This feature is not implemented because you should not start cutting within a motion event. \n"
         "Use the cutter centerline data referenced to the cam zero instead.",
         Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Run_Export(design, "mnu_Cutter_mach"));
    script_.Expect(
        {"You should not start cutting a cam within a motion event at machine zero. \n"
         "Use the cutter center xy data referenced to the cam zero instead.",
         Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Run_Export(design, "mnu_Barrel_Ctr_mach"));
    script_.Expect({"Presently this program can only export the roller-center coordinates of conjugate radial cams."});
    EXPECT_FALSE(Run_Export(design, "mnu_Cadkey"));
    EXPECT_FALSE(Run_Export(design, "mnu_Unknown"));
    EXPECT_FALSE(Written());
}

TEST_F(Exports, every_entry_of_the_menu_leads_somewhere)
{
    for (const Export_Entry& entry : Export_Menu()) {
        Host host = Installed_Host();
        int shown = 0;
        host.messenger = [&](const Message&) {
            ++shown;
            return Answer::OK;
        };
        const Host before = Install_Host(host);
        Run_Export(design, entry.name);
        Install_Host(before);
        EXPECT_EQ(shown, 1) << entry.name;
    }
}

TEST_F(Exports, a_cancelled_dialog_ends_quietly)
{
    script_.path.reset();
    EXPECT_FALSE(Run_Export(design, "mnu_Spread"));
    EXPECT_FALSE(Run_Export(design, "mnu_profile"));
    EXPECT_FALSE(Written());
}

TEST_F(Exports, a_failed_export_leaves_the_older_file_as_it_was)
{
    ASSERT_TRUE(Export_Profile_to_File(design, path_, 1));
    const auto before = Lines();
    script_.Expect(Error_Box(9, Error_Description(9), "Export_Profile_to_File"));
    EXPECT_FALSE(Export_Profile_to_File(design, path_, 6));  // there is no such code
    EXPECT_EQ(Lines(), before);
    const std::string name = std::filesystem::path(path_).filename();
    for (const auto& entry : std::filesystem::directory_iterator(::testing::TempDir()))  // nothing left beside it
        EXPECT_TRUE(entry.path() == path_ || entry.path().filename().string().find(name) == std::string::npos);
}

TEST_F(Exports, a_folder_that_is_not_there_is_reported_by_the_routines_name)
{
    script_.path = "/no/such/folder/x.txt";
    const auto error = [](const std::string& routine) {
        return Expected_Box{"Error 53   (File not found)  has occurred in " + routine +
                            "\nThere are no files with your chosen name in the selected directory"};
    };
    script_.Expect(error("Export_All_to_File"));
    EXPECT_FALSE(Run_Export(design, "mnu_Spread"));
    script_.Expect(error("Export_Profile_to_File"));
    EXPECT_FALSE(Run_Export(design, "mnu_profile"));
    design.cam.Translating = false;
    script_.Expect(error("Export_SVA_to_File"));
    EXPECT_FALSE(Run_Export(design, "mnu_xdot"));
    script_.path = path_;
}

TEST_F(Exports, cutter_data_versus_machine_zero_is_refused)
{
    script_.Expect(
        {"This feature is not implemented because you should not start cutting within a motion event. \n"
         "Use the cutter centerline data referenced to the cam zero instead.",
         Buttons::OK, Symbol::exclamation});
    Refuse_Cutter_at_Machine_Zero();
    script_.Expect(
        {"You should not start cutting a cam within a motion event at machine zero. \n"
         "Use the cutter center xy data referenced to the cam zero instead.",
         Buttons::OK, Symbol::exclamation});
    Refuse_Barrel_Cutter_at_Machine_Zero();
}

}  // namespace
}  // namespace lobemax
