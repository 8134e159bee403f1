// SPDX-License-Identifier: GPL-3.0-or-later
/// Reading the formats before 7.2. The files are made here, value by value in the order that those releases
/// wrote, with a recognisable value in every place: a field that slips shows.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/startup.h"
#include "files/model_file.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Error_Box;
using testing::Expected_Box;
using testing::Script;

enum class Header { of_five_lines, path_for_release, of_three_lines };
enum class Lists { none, short_lists, full_lists };

/// What one old release wrote.
struct Old_File {
    const char* tag;
    const char* release;
    Header header = Header::of_five_lines;
    int max_variables = 59;
    int last_row = 53;
    int first_row = 0;
    bool cutter = true;
    Lists lists = Lists::full_lists;
    bool seg_programs = true;
    bool to_model_type = true;
    bool after_model_type = true;
    int constraints = 0;
    int points = 360;
};

class Old_Writer {
public:
    explicit Old_Writer(const Old_File& f) : f_(f) { Write(); }
    const std::string& Text() const { return text_; }

private:
    void Number(double x)
    {
        std::string number = std::to_string(x);  // six decimals, as plain as can be
        text_ += number + "\r\n";
    }
    void Whole(int n) { text_ += std::to_string(n) + "\r\n"; }
    void Text(const std::string& text) { text_ += "\"" + text + "\"\r\n"; }
    void Truth(bool on) { text_ += on ? "#TRUE#\r\n" : "#FALSE#\r\n"; }

    void Write()
    {
        Text("LOBEMAX");
        Text(f_.tag);
        if (f_.header == Header::path_for_release) {
            Text("C:\\old\\press.cam");
        } else if (f_.header == Header::of_three_lines) {
            Text(f_.release);
        } else {
            Text(f_.release);
            Text("Professional");
            Text("C:\\old\\press.cam");
        }
        Text("old user");
        Whole(7);
        Text("a date");
        Text("a time");
        Number(4.0);  // shaft speed
        Whole(2);     // segments
        Number(1.0);  // step
        Whole(f_.max_variables);
        Whole(20);
        Whole(40);
        Whole(f_.points);
        for (int i = 1; i <= 2; ++i) {
            Number(100 * i + 1);  // base shift
            Text("R");
            Text("MS");
            Text("MS - Mod Sine");
            Number(100 * i + 2);  // displacement
            Number(100 * i + 3);  // shift
            Number(100 * i + 4);  // gamma
            Number(100 * i + 5);  // beta, degrees
            Number(100 * i + 6);  // beta, radians
            Text("s" + std::to_string(i));
            Text("e" + std::to_string(i));
            for (int j = 1; j <= 40; ++j)
                for (int k = 1; k <= 5; ++k)
                    Number(1000 * i + 10 * j + k);
            for (int a = 0; a <= 2; ++a)
                for (int b = 0; b <= 3; ++b)
                    Number(5000 + 100 * i + 10 * a + b);
            Whole(10 + i);  // conditions of a polynomial
            for (int j = 1; j <= 40; ++j)
                for (int k = 6; k <= 9; ++k)
                    Number(1000 * i + 10 * j + k);
        }
        for (int v = f_.first_row; v <= f_.last_row; ++v)
            for (int p = 0; p <= f_.points; ++p)
                Number(v + p / 1000.0);
        Cam();
        if (f_.cutter)
            Text_or_Number_Cutter();
        Conditions();
        if (f_.seg_programs)
            for (int i = 1; i <= 20; ++i)
                Whole(i == 20 ? 4 : 3);
        if (f_.to_model_type)
            Splines();
        if (f_.after_model_type)
            Settings();
    }

    void Cam()
    {
        Number(601);   // prime radius
        Number(602);   // offset
        Whole(2);      // follower type
        Number(604);   // roller
        Whole(1);      // rotation
        Whole(-1);     // arm direction
        Truth(false);  // translating
        Text("Barrel");
        for (int n = 609; n <= 613; ++n)
            Number(n);  // arm x, y, radius, lift, range of lift
        Truth(true);    // calculated
        Truth(true);    // sized
        Truth(false);   // dynamics
        Whole(5);       // print step
        for (int n = 618; n <= 626; ++n)
            Number(n);  // mass ... coefficient of fluctuation
        Whole(1);       // unit system
    }

    void Text_or_Number_Cutter()
    {
        // Read_Old_file's releases kept a text here, the later ones the radius itself.
        const std::string tag = f_.tag;
        const bool text = tag[0] == '6' || (tag == "7" && std::string(f_.release) <= "1.3");
        if (text)
            Text("0.5");
        else
            Number(0.5);
    }

    void Conditions()
    {
        if (f_.lists == Lists::none)
            return;
        const int angles = f_.lists == Lists::short_lists ? 3 : 8;
        const int last = f_.lists == Lists::short_lists ? 4 : 9;
        for (int i = 1; i <= 20; ++i) {
            Truth(i == 2);
            Text(i == 1 ? "2" : i == 3 ? std::to_string(f_.constraints) : "");
            for (int k = 1; k <= angles; ++k)
                Text("t" + std::to_string(100 * i + k));
            for (int k = 0; k <= last; ++k)
                for (const char* kind : {"s", "v", "a", "j"})
                    Text(kind + std::to_string(100 * i + k));
        }
    }

    void Splines()
    {
        Number(701);  // start and end theta
        Number(702);
        for (int i = 1; i <= 2; ++i) {
            Truth(i == 1);
            Truth(false);
            Whole(4);  // order
            Whole(i == 1 ? 6 : 4);
            Whole(0);
            const int knots = 4 + (i == 1 ? 2 : 0);
            for (int j = 1; j <= knots; ++j)
                Number(800 + 10 * i + j);
            for (int k = 0; k <= 9; ++k)
                Text("p" + std::to_string(10 * i + k));
        }
        for (int j = 1; j <= f_.constraints; ++j)
            for (int k = 1; k <= 3; ++k) {
                Number(900 + 10 * j + k);
                for (int p = 0; p <= f_.points; ++p)
                    Number(100 * k + j + p / 1000.0);
            }
        for (int i = 1; i <= 2; ++i) {
            Number(20 + i);  // mass
            Number(30 + i);  // spring
            Number(40 + i);  // damping ratio
        }
        Whole(2);  // model
    }

    void Settings()
    {
        Truth(true);   // polydyne
        Truth(false);  // versus keyway
        for (int i = 1; i <= 2; ++i) {
            Whole(i);
            Whole(3 - i);
        }
        Whole(90);
        for (int n = 951; n <= 956; ++n)
            Number(n);  // follower angle, shift angle, moduli, ratios
        Whole(2);       // roller type
        Number(958);
        Number(959);
        Truth(true);  // motion
        Whole(0);     // external force
        Truth(false);
        Number(963);  // weight
        Whole(-1);    // in, out
        Whole(1);     // top, bottom
        Number(966);  // range of S
        for (int i = 0; i < 42; ++i)
            Text("Null");
    }

    Old_File f_;
    std::string text_;
};

class Old_Formats : public ::testing::Test {
protected:
    Old_Formats() { Sub_Main(design, "", {}); }

    static bool Read(const Old_File& file)
    {
        design.identity.WhichUnit = 5;
        Reset_All(design);
        const Old_Writer writer(file);
        Text_Source source(writer.Text());
        return ReadFile(design, source);
    }

    /// What every old file holds, up to and with the cam and dynamics block.
    static void Expect_Start(const Old_File& file)
    {
        const Motion_Group& m = design.motion;
        EXPECT_EQ(design.identity.User, "old user");
        EXPECT_EQ(design.identity.Design_No, 7);
        EXPECT_EQ(m.Shaft_speed, 4.0);
        EXPECT_EQ(m.Shaft_Speed_Sq, 16.0);
        EXPECT_EQ(m.Shaft_Speed_Cu, 64.0);
        EXPECT_EQ(m.No_of_segments, 2);
        EXPECT_EQ(m.Max_Data_Points_used, file.points);
        EXPECT_EQ(m.Base_Shift(2), 201.0);
        EXPECT_EQ(m.Gamma(1), 104.0);
        EXPECT_EQ(m.Beta_Rad(2), 206.0);
        EXPECT_EQ(m.Start_Value(1), "s1");
        EXPECT_EQ(m.End_Value(2), "e2");
        EXPECT_EQ(m.Thetanorm(40, 2), 2401.0);
        EXPECT_EQ(m.Pow(3, 1), 1035.0);
        EXPECT_EQ(m.Firstlast(2, 2, 3), 5223.0);
        EXPECT_EQ(m.Total_No_of_BCs(1), 11);
        EXPECT_EQ(m.Theta_Normalized(1, 1), 1016.0);
        EXPECT_EQ(m.Power(40, 2), 2409.0);
        EXPECT_EQ(design.cam.Prime_Rad, 601.0);
        EXPECT_EQ(design.cam.Followtype, 2);
        EXPECT_EQ(design.cam.ArmDirect, -1);
        EXPECT_FALSE(design.cam.Translating);
        EXPECT_EQ(design.cam.Camtype, "Barrel");
        EXPECT_EQ(design.cam.ArmRad, 611.0);
        EXPECT_EQ(m.Liftmax, 613.0);
        EXPECT_TRUE(design.flags.Sized);
        EXPECT_EQ(design.cam.Printstep, 5);
        EXPECT_EQ(design.dynamics.Damping, 622.0);
        EXPECT_EQ(design.dynamics.Coeff_of_Fluctuation, 626.0);
        EXPECT_EQ(design.identity.WhichUnit, 1);
        EXPECT_EQ(design.plot.Var_Unit(6), "in") << "the units in force are those of the file";
        EXPECT_TRUE(design.flags.From_Disk);
        EXPECT_FALSE(design.run.Reading_File);
        EXPECT_FALSE(design.run.Read_Complete) << "no older reader sets it";
    }

    static void Expect_Rows(const Old_File& file)
    {
        const auto& data = design.results.CalcData;
        for (const int p : {0, 1, file.points / 2, file.points}) {
            EXPECT_EQ(data(file.last_row, p), Single(file.last_row + p / 1000.0)) << p;
            EXPECT_EQ(data(1, p), Single(1 + p / 1000.0)) << p;
            // row 0 is the file's, or the angles where the release did not store them
            EXPECT_EQ(data(0, p), file.first_row == 0 ? Single(p / 1000.0) : Single(p)) << p;
        }
        if (file.last_row < 53) {
            EXPECT_EQ(data(file.last_row + 1, 5), 0.0);
        }
    }

    static void Expect_Full_Lists()
    {
        const Motion_Group& m = design.motion;
        EXPECT_TRUE(m.Polydone(2));
        EXPECT_EQ(m.No_Conditions(1), 2);
        EXPECT_EQ(m.T_boundary_cond(20, 8), "t2008");
        EXPECT_EQ(m.S_boundary_cond(1, 0), "s100");
        EXPECT_EQ(m.J_boundary_cond(20, 9), "j2009");
        EXPECT_EQ(m.Seg_Program(19), 3);
        EXPECT_EQ(m.Seg_Program(20), 4);
    }

    static void Expect_to_Model_Type()
    {
        const Motion_Group& m = design.motion;
        EXPECT_EQ(m.Start_theta, 701.0);
        EXPECT_TRUE(m.Splines_Calculated(1));
        EXPECT_EQ(m.Orders(2), 4);
        EXPECT_EQ(m.Knots(6, 1), 816.0);
        EXPECT_EQ(m.Knots(4, 2), 824.0);
        EXPECT_EQ(m.Pbound(2, 9), "p29");
        EXPECT_EQ(design.dynamics.Mass_m(2), 22.0);
        EXPECT_EQ(design.dynamics.Model_Type, 2);
        // model 2: the lumped fields are set whatever a vibration flag says
        EXPECT_EQ(design.dynamics.Mass, 21.0);
        EXPECT_EQ(design.dynamics.Return_Spring_Rate, 32.0);
        EXPECT_EQ(design.dynamics.Follower_Stiffness, 31.0);
        EXPECT_EQ(design.dynamics.Zeta_Initial, 42.0);
    }

    static void Expect_Settings()
    {
        EXPECT_TRUE(design.flags.Polydyne_Calc);
        EXPECT_EQ(design.motion.Full_Half(2), 2);
        EXPECT_EQ(design.motion.Which_half(1), 2);
        EXPECT_EQ(design.cam.Keyway_Clockangle, 90);
        EXPECT_EQ(design.cam.Keyway_Text, "3 O'clock");
        EXPECT_EQ(design.cam.Shift_Angle, 952.0);
        EXPECT_EQ(design.dynamics.Youngs_modulus(1), 953.0);
        EXPECT_EQ(design.dynamics.Poissons_ratio(2), 956.0);
        EXPECT_EQ(design.dynamics.Roller_length, 959.0);
        EXPECT_EQ(design.dynamics.Follower_Weight, 963.0);
        EXPECT_EQ(design.motion.MaxLift, 966.0);
    }

    Script user_;
};

TEST_F(Old_Formats, tag_7_1_is_read_to_its_fillers)
{
    const Old_File file{.tag = "7.1", .release = "2.0"};
    ASSERT_TRUE(Read(file));
    Expect_Start(file);
    Expect_Rows(file);
    EXPECT_EQ(design.cam.Cutter_Radius, 0.5);
    Expect_Full_Lists();
    Expect_to_Model_Type();
    Expect_Settings();
    EXPECT_EQ(design.results.Ext_Force_Table(3), Single(44.003));
    EXPECT_EQ(design.identity.Model_Name, "press");
}

TEST_F(Old_Formats, tag_7_1_keeps_a_curve_with_each_constraint)
{
    const Old_File file{.tag = "7.1", .release = "2.0", .constraints = 2};
    ASSERT_TRUE(Read(file));
    EXPECT_EQ(design.motion.Constraints(2, 3), 923.0);
    EXPECT_EQ(design.results.Constraint_Curve(3, 2, 360), Single(302.360));
    EXPECT_EQ(design.results.Constraint_Curve(1, 1, 0), 101.0);
    EXPECT_EQ(design.results.Constraint_Curve(0, 1, 0), 0.0) << "column 0 is in no file";
    Expect_to_Model_Type();
    Expect_Settings();
}

TEST_F(Old_Formats, tag_7_0_counts_its_rows_by_its_release)
{
    // release 1.7 and later: six fewer than Max Variables; above 1.3 and below: two fewer
    for (const auto& [release, variables, last] :
         {std::tuple("1.8", 59, 53), std::tuple("1.7", 59, 53), std::tuple("1.5", 50, 48), std::tuple("1.4", 46, 44)}) {
        const Old_File file{.tag = "7", .release = release, .max_variables = variables, .last_row = last};
        ASSERT_TRUE(Read(file)) << release;
        Expect_Start(file);
        Expect_Rows(file);
        Expect_Settings();
        EXPECT_EQ(design.run.File_Saved_Variables, last) << release;
        EXPECT_EQ(design.results.Ext_Force_Table(3), Single(44.003)) << release;
    }
}

TEST_F(Old_Formats, tag_7_1_counts_its_rows_alike_in_every_release)
{
    for (const char* release : {"1.0", "1.2", "1.3", "1.5", "1.6", "1.7"}) {
        const Old_File file{.tag = "7.1", .release = release};
        ASSERT_TRUE(Read(file)) << release;
        Expect_Start(file);
        Expect_Rows(file);
        Expect_Settings();
        EXPECT_EQ(design.run.File_Saved_Variables, 53) << release;
        EXPECT_EQ(design.results.Ext_Force_Table(3), Single(44.003)) << release;
    }
}

TEST_F(Old_Formats, a_table_without_row_44_has_no_external_force_to_copy)
{
    const Old_File file{.tag = "7", .release = "1.5", .max_variables = 45, .last_row = 43};
    ASSERT_TRUE(Read(file));
    Expect_Rows(file);
    EXPECT_EQ(design.results.Ext_Force_Table(3), 0.0);
}

TEST_F(Old_Formats, tag_7_0_up_to_release_1_3_ends_at_the_model_type)
{
    for (const char* release : {"1.3", "1.2", "1.0"}) {
        const Old_File file{
            .tag = "7", .release = release, .max_variables = 45, .last_row = 45, .after_model_type = false};
        ASSERT_TRUE(Read(file)) << release;
        Expect_Start(file);
        Expect_Rows(file);
        Expect_Full_Lists();
        Expect_to_Model_Type();
        EXPECT_EQ(design.cam.Cutter_Radius, 8.0) << "the text was dropped: the fresh design's own stays";
        EXPECT_EQ(design.results.Ext_Force_Table(3), 0.0) << "this reader copies no force";
        EXPECT_FALSE(design.flags.Polydyne_Calc);
    }
}

TEST_F(Old_Formats, tag_6_from_release_2_5_ends_at_the_programs)
{
    const Old_File file{.tag = "6",
                        .release = "2.6",
                        .max_variables = 30,
                        .last_row = 30,
                        .lists = Lists::short_lists,
                        .to_model_type = false,
                        .after_model_type = false};
    ASSERT_TRUE(Read(file));
    Expect_Start(file);
    Expect_Rows(file);
    EXPECT_EQ(design.motion.T_boundary_cond(20, 3), "t2003");
    EXPECT_EQ(design.motion.T_boundary_cond(20, 4), "");
    EXPECT_EQ(design.motion.J_boundary_cond(20, 4), "j2004");
    EXPECT_EQ(design.motion.S_boundary_cond(20, 5), "");
    EXPECT_EQ(design.motion.Seg_Program(20), 4);
    EXPECT_EQ(design.dynamics.Mass, 618.0) << "no two-mass model stands in the file";
}

TEST_F(Old_Formats, tag_6_below_release_2_5_has_no_programs)
{
    for (const char* release : {"2.4", "2.3"}) {
        const Old_File file{.tag = "6",
                            .release = release,
                            .max_variables = 30,
                            .last_row = 30,
                            .lists = Lists::short_lists,
                            .seg_programs = false,
                            .to_model_type = false,
                            .after_model_type = false};
        ASSERT_TRUE(Read(file)) << release;
        Expect_Start(file);
        EXPECT_EQ(design.motion.J_boundary_cond(20, 4), "j2004") << release;
        EXPECT_EQ(design.motion.Seg_Program(20), 0) << release;
    }
}

TEST_F(Old_Formats, tag_6_of_release_2_2_ends_at_the_cutter)
{
    const Old_File file{.tag = "6",
                        .release = "2.2",
                        .max_variables = 30,
                        .last_row = 30,
                        .lists = Lists::none,
                        .seg_programs = false,
                        .to_model_type = false,
                        .after_model_type = false};
    ASSERT_TRUE(Read(file));
    Expect_Start(file);
    Expect_Rows(file);
    EXPECT_EQ(design.motion.Polydone(2), false);
}

TEST_F(Old_Formats, tag_6_below_release_2_2_is_too_old)
{
    for (const char* release : {"2.1", "1.4"}) {
        const Old_File file{.tag = "6",
                            .release = release,
                            .max_variables = 30,
                            .last_row = 30,
                            .cutter = false,
                            .lists = Lists::none,
                            .seg_programs = false,
                            .to_model_type = false,
                            .after_model_type = false};
        user_.Expect({"This file is too old to read", Buttons::OK, Symbol::stop});
        EXPECT_FALSE(Read(file)) << release;
        EXPECT_TRUE(design.run.Read_Partial) << release;
        EXPECT_FALSE(design.run.Reading_File) << release;
    }
}

TEST_F(Old_Formats, tag_6_below_release_1_3_has_a_header_of_three_lines_and_rows_from_1)
{
    for (const Header header : {Header::path_for_release, Header::of_three_lines}) {
        const Old_File file{.tag = "6",
                            .release = "1.2",
                            .header = header,
                            .max_variables = 30,
                            .last_row = 30,
                            .first_row = 1,
                            .cutter = false,
                            .lists = Lists::none,
                            .seg_programs = false,
                            .to_model_type = false,
                            .after_model_type = false};
        user_.Expect({"This file is too old to read", Buttons::OK, Symbol::stop});
        EXPECT_FALSE(Read(file));
        Expect_Rows(file);
        const bool path = header == Header::path_for_release;
        EXPECT_EQ(design.identity.File_Name, path ? "C:\\old\\press.cam" : "1.2");
        EXPECT_EQ(design.run.File_Release, path ? Single(0.0) : Single(1.2));
        EXPECT_EQ(design.identity.Model_Name, path ? "press" : "1");
    }
}

TEST_F(Old_Formats, an_end_right_behind_the_header_ends_the_read_at_once)
{
    Reset_All(design);
    Text_Source source("\"LOBEMAX\"\r\n\"6\"\r\n\"2.6\"\r\n\"Professional\"\r\n\"x.cam\"\r\n");
    EXPECT_TRUE(ReadFile(design, source));
    EXPECT_FALSE(design.flags.From_Disk);
}

TEST_F(Old_Formats, an_error_in_the_oldest_reader_keeps_what_was_read_and_runs_its_end)
{
    const Old_File file{.tag = "6",
                        .release = "2.6",
                        .max_variables = 30,
                        .last_row = 30,
                        .lists = Lists::short_lists,
                        .to_model_type = false,
                        .after_model_type = false};
    const std::string text = Old_Writer(file).Text();
    Reset_All(design);
    Text_Source source(std::string_view(text).substr(0, text.size() / 2));
    user_.Expect(Error_Box(62, "Input past end of file", "Read_Old_file"));
    EXPECT_FALSE(ReadFile(design, source));
    EXPECT_TRUE(design.run.Read_Partial);
    EXPECT_FALSE(design.run.Read_Complete);
    EXPECT_TRUE(design.flags.From_Disk);
    EXPECT_EQ(design.motion.Gamma(1), 104.0);
}

TEST_F(Old_Formats, an_error_in_the_7_1_reader_bears_its_name)
{
    const std::string text = Old_Writer({.tag = "7.1", .release = "2.0"}).Text();
    Reset_All(design);
    Text_Source source(std::string_view(text).substr(0, text.size() / 2));
    user_.Expect(Error_Box(62, "Input past end of file", "ReadFile71"));
    EXPECT_FALSE(ReadFile(design, source));
    EXPECT_TRUE(design.run.Read_Partial);
}

TEST_F(Old_Formats, counts_that_no_table_could_fill_take_no_memory)
{
    for (const auto& [variables, points, error, description] :
         {std::tuple(32767, 360, 62, "Input past end of file"), std::tuple(59, 32767, 9, "Index out of bounds"),
          std::tuple(-1, 360, 9, "Index out of bounds")}) {
        Old_File file{.tag = "7.1", .release = "2.0"};
        std::string text = Old_Writer(file).Text();
        const std::string counts = "1.000000\r\n59\r\n20\r\n40\r\n360\r\n";
        const std::size_t at = text.find(counts);
        ASSERT_NE(at, std::string::npos);
        text.replace(at, counts.size(),
                     "1\r\n" + std::to_string(variables) + "\r\n20\r\n40\r\n" + std::to_string(points) + "\r\n");
        Reset_All(design);
        Text_Source source(text);
        user_.Expect(Error_Box(error, description, "ReadFile71"));
        EXPECT_FALSE(ReadFile(design, source));
        EXPECT_EQ(design.results.CalcData.Last_Row(), 53);
        EXPECT_EQ(design.results.CalcData.Last_Point(), 360);
    }
}

}  // namespace
}  // namespace lobemax
