// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/model_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <bit>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "core/field_directory.h"
#include "core/startup.h"
#include "core/text.h"
#include "core/unit_change.h"
#include "core/units.h"
#include "edit/rungs.h"
#include "edit/unsaved.h"
#include "files/example_designs.h"
#include "motion/motion_programs.h"
#include "motion/segments.h"
#include "tests/support/faulty_files.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

using testing::Error_Box;
using testing::Expected_Box;
using testing::Script;

std::string Content(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/// A file of one design with a distinct value in every field. It was made from the description of the format
/// by a script that shares nothing with this program, and checked record by record.
std::string Reference(const std::string& format)
{
    return Content(std::string(LOBEMAX_TEST_DATA) + "/every_field_distinct_" + format + ".cam");
}

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::size_t from = 0;
    while (from < text.size()) {
        const std::size_t end = text.find("\r\n", from);
        lines.push_back(text.substr(from, end - from));
        from = end == std::string::npos ? text.size() : end + 2;
    }
    return lines;
}

std::string Joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

/// The text with one line replaced: the one that begins with this label.
std::string With(const std::string& text, const std::string& label, const std::string& value)
{
    std::vector<std::string> lines = Lines(text);
    for (std::string& line : lines)
        if (line.starts_with("\"" + label + "\",")) {
            line = "\"" + label + "\"," + value;
            return Joined(lines);
        }
    ADD_FAILURE() << "no record " << label;
    return text;
}

std::string With_Line(const std::string& text, std::size_t number, const std::string& line)
{
    std::vector<std::string> lines = Lines(text);
    lines.at(number - 1) = line;
    return Joined(lines);
}

bool Read(const std::string& text)
{
    Reset_All(design);
    Text_Source source(text);
    return ReadFile(design, source);
}

/// The 32 bits of a Single: the sign of a zero counts.
std::uint32_t Pattern(Single value)
{
    return std::bit_cast<std::uint32_t>(value.Bits());
}

std::string Written(std::string_view tag)
{
    Text_Sink sink;
    Write_Model(design, sink, tag);
    return sink.Text();
}

class Model_File : public ::testing::Test {
protected:
    Model_File() { Sub_Main(design, "", {}); }

    /// The four-segment design of the program's own examples of use.
    static void Make_Design(int points_per_degree = 1)
    {
        Set_Step(design, 1.0 / points_per_degree);
        Motion_Group& m = design.motion;
        m.No_of_segments = 4;
        const char* const kinds = "RDFD";
        const char* const programs[] = {"MS", "DW", "CF", "DW"};
        const char* const ends[] = {"0", "25", "25", "0", "0"};
        for (int i = 1; i <= 4; ++i) {
            Pick_Motion(design, i, kinds[i - 1]);
            Pick_Program(design, i, programs[i - 1]);
            m.Beta_Deg(i) = 90.0;
            m.Beta_Rad(i) = 90.0 / Deg_per_Rad;
            m.Start_Value(i) = ends[i - 1];
            m.End_Value(i) = ends[i];
        }
        Set_Shaft_Speed(design, 12.566370616);
        ASSERT_TRUE(Calc_All(design, true));
        ASSERT_TRUE(Motion_Done(design));
    }

    Script user_;
};

// ---- the written formats, byte by byte

class Written_Format : public Model_File, public ::testing::WithParamInterface<std::string> {
protected:
    static std::string Tag() { return GetParam() == "72" ? "7.2" : GetParam(); }
};

TEST_P(Written_Format, a_read_and_a_write_give_every_byte_of_the_reference_back)
{
    const std::string reference = Reference(GetParam());
    ASSERT_TRUE(Read(reference));
    EXPECT_TRUE(Written(Tag()) == reference);
}

TEST_P(Written_Format, every_line_ends_in_carriage_return_and_line_feed)
{
    Make_Design();
    const std::string text = Written(Tag());
    std::size_t ends = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] == '\n') {
            ASSERT_TRUE(i > 0 && text[i - 1] == '\r');
            ++ends;
        }
    EXPECT_EQ(ends, Lines(text).size());
    EXPECT_TRUE(text.ends_with("\r\n"));
}

TEST_P(Written_Format, a_calculated_design_comes_back_bit_for_bit)
{
    Make_Design();
    design.results.CalcData(var::Phi, 7) = -0.0;
    design.results.CalcData(var::X_Cutter, 360) = -0.0;
    design.cam.Offset = -0.0;
    const Table<Single> before = design.results.CalcData;
    const std::string text = Written(Tag());
    ASSERT_TRUE(Read(text));
    ASSERT_EQ(design.results.CalcData.Last_Row(), 53);
    ASSERT_EQ(design.results.CalcData.Last_Point(), 360);
    for (int v = 0; v <= 53; ++v)
        for (int p = 0; p <= 360; ++p)
            ASSERT_EQ(Pattern(design.results.CalcData(v, p)), Pattern(before(v, p))) << v << " " << p;
    EXPECT_EQ(Pattern(design.cam.Offset), Pattern(-0.0));
    EXPECT_TRUE(design.flags.Calculated);
    EXPECT_TRUE(design.flags.From_Disk);
    EXPECT_TRUE(design.flags.File_Loaded);
    EXPECT_FALSE(design.flags.Model_Saved) << "a load does not touch it: the next Save asks for a name";
    EXPECT_EQ(Written(Tag()), text);
}

INSTANTIATE_TEST_SUITE_P(Model_File, Written_Format, ::testing::Values("9", "8", "72"));

TEST_F(Model_File, the_header_is_five_quoted_lines)
{
    design.identity.File_Name = "/cams/press \"2\".cam";
    const std::vector<std::string> lines = Lines(Written("8"));
    EXPECT_EQ(lines[0], "\"LOBEMAX Plus\"");
    EXPECT_EQ(lines[1], "\"8\"");
    EXPECT_EQ(lines[2], "\"9.0\"");
    EXPECT_EQ(lines[3], "\"Professional\"");
    EXPECT_EQ(lines[4], "\"/cams/press \"\"2\"\".cam\"");
}

TEST_F(Model_File, fillers_last_record_table_and_tail_stand_in_their_places)
{
    for (const auto& [tag, fillers, tail] :
         {std::tuple("9", 143, 50), std::tuple("8", 143, 50), std::tuple("7.2", 21, 0)}) {
        const std::vector<std::string> lines = Lines(Written(tag));
        const std::size_t table = 54 * 361;
        const std::size_t last = lines.size() - static_cast<std::size_t>(tail) - table - 1;
        EXPECT_EQ(lines[last], "\"Last Labeled Item\",\"Calculated data follow\"") << tag;
        for (int i = 1; i <= fillers; ++i)
            EXPECT_EQ(lines[last - static_cast<std::size_t>(i)], "\"Null\",\"Null\"");
        EXPECT_NE(lines[last - static_cast<std::size_t>(fillers) - 1], "\"Null\",\"Null\"");
        for (int i = 1; i <= tail; ++i)
            EXPECT_EQ(lines[lines.size() - static_cast<std::size_t>(i)], "\"\"");
    }
}

TEST_F(Model_File, two_segments_give_two_segment_blocks_but_twenty_condition_entries)
{
    design.motion.No_of_segments = 2;
    const std::string text = Written("9");
    EXPECT_NE(text.find("\"Segment 2 Base_Shift\""), std::string::npos);
    EXPECT_EQ(text.find("\"Segment 3 Base_Shift\""), std::string::npos);
    EXPECT_NE(text.find("\"Polydone for segment (20)\""), std::string::npos);
    EXPECT_NE(text.find("\"Seg_Program( 20, 10)\""), std::string::npos) << "the 10 is meant, in every record";
}

TEST_F(Model_File, format_8_keeps_the_link_masses_without_labels)
{
    for (int n = 2; n <= 6; ++n)
        design.linkage.Mass_of_link(n) = n + 0.25;
    const std::string eight = Written("8");
    EXPECT_EQ(eight.find("Mass of link"), std::string::npos);
    EXPECT_NE(Written("9").find("\"Mass of link  2\",2.25"), std::string::npos);
    ASSERT_TRUE(Read(eight));
    for (int n = 2; n <= 6; ++n)
        EXPECT_EQ(design.linkage.Mass_of_link(n), n + 0.25);
}

TEST_F(Model_File, the_constraints_are_counted_by_the_segment_one_past_the_last_on_purpose)
{
    design.motion.No_of_segments = 2;
    design.motion.No_of_conditions(3) = "2";
    for (int j = 1; j <= 2; ++j)
        for (int k = 1; k <= 3; ++k)
            design.motion.Constraints(j, k) = 10 * j + k;
    const std::string text = Written("9");
    EXPECT_NE(text.find("\"Constraints( 2, 3)\",23\r\n\"Mass_m (1)\""), std::string::npos);
    ASSERT_TRUE(Read(text));
    EXPECT_EQ(design.motion.Constraints(1, 2), 12.0);
    EXPECT_EQ(design.motion.Constraints(2, 3), 23.0);
}

TEST_F(Model_File, twenty_segments_end_in_the_error_handler_when_written_and_when_read)
{
    design.motion.No_of_segments = 20;
    design.identity.File_Name = ::testing::TempDir() + "lobemax_twenty.cam";
    user_.Expect(Error_Box(9, "Index out of bounds", "WriteFile_8"));
    EXPECT_FALSE(Write_Model_File(design, std::string(design.identity.File_Name), Save_From::command_line));
    const std::string cut = Content(design.identity.File_Name);
    EXPECT_TRUE(Lines(cut).back().starts_with("\"Pbound( 20, 9)\"")) << "the records after that step are missing";
    EXPECT_FALSE(design.flags.Model_Saved);
    std::remove(design.identity.File_Name.c_str());

    user_.Expect(Error_Box(9, "Index out of bounds", "ReadFile_8"));
    EXPECT_FALSE(Read(cut));
    EXPECT_TRUE(design.run.Read_Partial);
    EXPECT_FALSE(design.run.Read_Complete);
    EXPECT_EQ(design.motion.No_of_segments, 20);
}

// ---- fields: the reference's labelled values against the members themselves

TEST_F(Model_File, the_fields_of_the_file_are_the_members_of_those_names)
{
    const std::string reference = Reference("9");
    std::map<std::string, std::string> value;
    for (const std::string& line : Lines(reference))
        if (const std::size_t comma = line.find("\","); comma != std::string::npos && line.front() == '"')
            value[line.substr(1, comma - 1)] = line.substr(comma + 2);
    ASSERT_TRUE(Read(reference));

    const Motion_Group& m = design.motion;
    const Cam_Group& c = design.cam;
    const Dynamics_Group& d = design.dynamics;
    const Linkage_Group& k = design.linkage;
    const std::vector<std::pair<const char*, double>> members{
        {"Shaft speed", m.Shaft_speed},
        {"Segment 1 Base_Shift", m.Base_Shift(1)},
        {"Segment 2 Total_Displacement", m.Total_Displacement(2)},
        {"Segment 2 Shift", m.Shift(2)},
        {"Segment 1 Gamma", m.Gamma(1)},
        {"Segment 1 Beta_Deg", m.Beta_Deg(1)},
        {"Segment 2 Beta_Rad", m.Beta_Rad(2)},
        {"Thetanorm 3, for segment 2", m.Thetanorm(3, 2)},
        {"Boundary 40, for segment 1", m.Boundary(40, 1)},
        {"Equation 7, for segment 2", m.Equation(7, 2)},
        {"Coefficient 8, for segment 1", m.Coefficient(8, 1)},
        {"Pow 9, for segment 1", m.Pow(9, 1)},
        {"Firstlast 2, 1, 3", m.Firstlast(2, 1, 3)},
        {"Total No of BCs 2", m.Total_No_of_BCs(2)},
        {"Theta_Normalized 5, for segment 2", m.Theta_Normalized(5, 2)},
        {"Eq 6, for segment 1", m.Eq(6, 1)},
        {"BC 7, for segment 1", m.BC(7, 1)},
        {"Power 8, for segment 2", m.Power(8, 2)},
        {"Prime_Rad", c.Prime_Rad},
        {"Offset", c.Offset},
        {"Followtype", c.Followtype},
        {"Follow_Rad", c.Follow_Rad},
        {"Rotflag", c.Rotflag},
        {"ArmDirect", c.ArmDirect},
        {"ArmX", c.ArmX},
        {"ArmY", c.ArmY},
        {"ArmRad", c.ArmRad},
        {"Lift", m.Lift},
        {"Liftmax", m.Liftmax},
        {"Printstep", c.Printstep},
        {"Mass", d.Mass},
        {"Return_Spring_Rate", d.Return_Spring_Rate},
        {"Preload", d.Preload},
        {"Zeta_Initial", d.Zeta_Initial},
        {"Damping", d.Damping},
        {"Bearing Radius", d.Bearing_Radius},
        {"Mu of Shaft", d.Mu_of_Shaft},
        {"Mu of Follower", d.Mu_of_Follower},
        {"Coeff of Fluctuation", d.Coeff_of_Fluctuation},
        {"WhichUnit", design.identity.WhichUnit},
        {"Cutter Radius", c.Cutter_Radius},
        {"Seg_Program( 13, 10)", m.Seg_Program(13)},
        {"Start_theta", m.Start_theta},
        {"End_theta", m.End_theta},
        {"Orders 1", m.Orders(1)},
        {"Number_of_Knots 2", m.Number_of_Knots(2)},
        {"Interior_Knots 1", m.Interior_Knots(1)},
        {"Knots( 3, 2)", m.Knots(3, 2)},
        {"Mass_m (2)", d.Mass_m(2)},
        {"Kspring (1)", d.Kspring(1)},
        {"Zeta (2)", d.Zeta(2)},
        {"Model_Type", d.Model_Type},
        {"Full_Half (2)", m.Full_Half(2)},
        {"Which_half (1)", m.Which_half(1)},
        {"Keyway_Clockangle", c.Keyway_Clockangle},
        {"Follower_Angle", c.Follower_Angle},
        {"Shift_Angle", c.Shift_Angle},
        {"Young's modulus (1)", d.Youngs_modulus(1)},
        {"Poissons' ratio (2)", d.Poissons_ratio(2)},
        {"Roller type", d.Roller_type},
        {"Crown radius", d.Crown_radius},
        {"Roller length", d.Roller_length},
        {"Ext_Force_On", m.Ext_Force_On},
        {"Follower_Weight", d.Follower_Weight},
        {"In_Out", c.In_Out},
        {"Top_Bot", c.Top_Bot},
        {"MaxLift", m.MaxLift},
        {"Comp_Mass", d.Comp_Mass},
        {"Comp_Spring_Rate", d.Comp_Spring_Rate},
        {"Comp_Preload", d.Comp_Preload},
        {"Links", k.Links},
        {"Theta1", k.Theta1},
        {"Link 1", k.Link_1},
        {"Link 2", k.Link_2},
        {"Link 3", k.Link_3},
        {"Link 4", k.Link_4},
        {"Link 4a", k.Link_4a},
        {"Delta4", k.Delta4},
        {"Link 5", k.Link_5},
        {"Link 6", k.Link_6},
        {"S3x", k.S3x},
        {"S3y", k.S3y},
        {"Delta2", k.Delta2},
        {"O4x", k.O4x},
        {"O4y", k.O4y},
        {"O6x", k.O6x},
        {"O6y", k.O6y},
        {"Assemflag1", k.Assemflag1},
        {"Assemflag2", k.Assemflag2},
        {"Mass of link  2", k.Mass_of_link(2)},
        {"Inertia of link  3", k.Inertia_of_link(3)},
        {"CGx of link  4", k.CGx_of_link(4)},
        {"CGy of link  5", k.CGy_of_link(5)},
        {"Global_Slider_angle_deg", k.Global_Slider_angle_deg},
        {"Offset6", k.Offset6},
        {"Max_Neg_Disp", m.Max_Neg_Disp},
        {"Zoom Factor", c.Zoom_Factor},
        {"Linkage_Type", k.Linkage_Type},
        {"Time Base", m.Time_Base},
        {"Design No.", design.identity.Design_No}};
    for (const auto& [label, member] : members) {
        ASSERT_TRUE(value.contains(label)) << label;
        EXPECT_EQ(Single(std::stod(value[label])), member) << label;
    }
    const auto quoted = [](const std::string& text) { return "\"" + text + "\""; };
    EXPECT_EQ(value["User"], quoted(design.identity.User));
    EXPECT_EQ(value["Camtype$"], quoted(c.Camtype));
    EXPECT_EQ(value["Closure$"], quoted(c.Closure));
    EXPECT_EQ(value["Segment 2 Function"], quoted(m.Function(2)));
    EXPECT_EQ(value["Segment 1 Start Value"], quoted(m.Start_Value(1)));
    EXPECT_EQ(value["Segment 2 End Value"], quoted(m.End_Value(2)));
    EXPECT_EQ(value["T boundary cond for segment 4 at angle 8"], quoted(m.T_boundary_cond(4, 8)));
    EXPECT_EQ(value["S boundary cond for segment 5 at angle 0"], quoted(m.S_boundary_cond(5, 0)));
    EXPECT_EQ(value["V boundary cond for segment 6 at angle 9"], quoted(m.V_boundary_cond(6, 9)));
    EXPECT_EQ(value["A boundary cond for segment 7 at angle 1"], quoted(m.A_boundary_cond(7, 1)));
    EXPECT_EQ(value["J boundary cond for segment 8 at angle 2"], quoted(m.J_boundary_cond(8, 2)));
    EXPECT_EQ(value["Pbound( 2, 9)"], quoted(m.Pbound(2, 9)));
    EXPECT_EQ(value["Calculated"] == "#TRUE#", design.flags.Calculated);
    EXPECT_EQ(value["Drive_End_Effector"] == "#TRUE#", k.Drive_End_Effector);
    for (const auto& [v, p] : {std::pair(0, 0), std::pair(17, 359), std::pair(53, 360)})
        EXPECT_EQ(design.results.CalcData(v, p), Single(v + p / 10000.0)) << "the reference's own rule";
    EXPECT_EQ(design.motion.No_Conditions(1), 4);
    EXPECT_EQ(design.motion.Shaft_Speed_Sq, Single(Single(3.1) * Single(3.1)));
    EXPECT_EQ(design.results.Ext_Force_Table(7), Single(44.0007));
    EXPECT_EQ(design.identity.Model_Name, "test model") << "from the stored path";
}

// ---- what a load brings with it

TEST_F(Model_File, max_variables_of_59_gives_rows_0_to_53)
{
    ASSERT_TRUE(Read(Reference("9")));
    EXPECT_EQ(design.run.File_Max_Variables, 59);
    EXPECT_EQ(design.run.File_Saved_Variables, 53);
    EXPECT_EQ(design.results.CalcData.Last_Row(), 53);
}

TEST_F(Model_File, max_variables_of_6_gives_the_row_of_the_angles_alone)
{
    const std::vector<std::string> reference = Lines(Reference("9"));
    std::vector<std::string> lines;
    int points = -1;  // behind the last labelled record
    for (const std::string& line : reference) {
        if (line.starts_with("\"Last Labeled Item\""))
            points = 0;
        else if (points >= 0 && line != "\"\"" && ++points > 361)
            continue;
        lines.push_back(line);
    }
    ASSERT_TRUE(Read(With(Joined(lines), "Max Variables", "6")));
    EXPECT_EQ(design.run.File_Saved_Variables, 0);
    EXPECT_EQ(design.results.CalcData.Last_Row(), 53);
    EXPECT_EQ(design.results.CalcData(0, 360), Single(0.036)) << "the reference's own rule";
    for (int v = 1; v <= 53; ++v)
        for (const Single value : design.results.CalcData.Points(v))
            ASSERT_EQ(value, 0.0) << v;

    Script box({Error_Box(9, "Index out of bounds", "ReadFile_8")});
    EXPECT_FALSE(Read(With(Joined(lines), "Max Variables", "5")));
}

TEST_F(Model_File, a_zoom_factor_of_zero_is_read_as_one)
{
    ASSERT_TRUE(Read(With(Reference("9"), "Zoom Factor", "0")));
    EXPECT_EQ(design.cam.Zoom_Factor, 1.0);
}

TEST_F(Model_File, the_lumped_fields_follow_the_two_masses_after_a_vibration_run)
{
    struct Row {
        const char* model;
        double rate, stiffness, zeta;
    };
    const auto file = [](const char* model, const char* run) {
        return With(With(With(With(With(With(With(With(Reference("9"), "Model_Type", model), "Modelflag", run),
                                             "Mass_m (1)", "11"),
                                        "Kspring (1)", "21"),
                                   "Kspring (2)", "22"),
                              "Zeta (1)", "0.31"),
                         "Zeta (2)", "0.32"),
                    "Mass", "5");
    };
    for (const Row& row : {Row{"1", 0, 21, 0.32}, Row{"2", 22, 21, 0.32}, Row{"3", 21, 22, 0.31},
                           Row{"4", 21, 22, 0.31}, Row{"5", 22, 21, 0.32}}) {
        ASSERT_TRUE(Read(file(row.model, "#TRUE#")));
        EXPECT_EQ(design.dynamics.Mass, 11.0) << row.model;
        EXPECT_EQ(design.dynamics.Return_Spring_Rate, row.rate) << row.model;
        EXPECT_EQ(design.dynamics.Follower_Stiffness, row.stiffness) << row.model;
        EXPECT_EQ(design.dynamics.Zeta_Initial, Single(row.zeta)) << row.model;
    }
    for (const char* outside : {"0", "6"}) {
        ASSERT_TRUE(Read(file(outside, "#TRUE#")));
        EXPECT_EQ(design.dynamics.Mass, 5.0) << outside;
    }
    ASSERT_TRUE(Read(file("1", "#FALSE#")));
    EXPECT_EQ(design.dynamics.Mass, 5.0) << "no vibration run stands behind the masses";
}

TEST_F(Model_File, the_keyway_text_is_rebuilt_from_its_angle_and_the_rotation)
{
    const auto text_of = [](const char* angle, const char* rotation) {
        Read(With(With(Reference("9"), "Keyway_Clockangle", angle), "Rotflag", rotation));
        return design.cam.Keyway_Text;
    };
    EXPECT_EQ(text_of("0", "-1"), "12 O'clock");
    EXPECT_EQ(text_of("-90", "-1"), "3 O'clock");
    EXPECT_EQ(text_of("90", "1"), "3 O'clock");
    EXPECT_EQ(text_of("-180", "-1"), "6 O'clock");
    EXPECT_EQ(text_of("270", "1"), "9 O'clock");
    EXPECT_EQ(text_of("45", "1"), "") << "no position of the clock";
}

TEST_F(Model_File, a_start_angle_of_16_bits_of_points_stays)
{
    Make_Design();
    const std::string text = Written("9");
    for (const int angle : {725, 32767, -32768}) {  // a point a degree
        ASSERT_TRUE(Read(With(text, "Shift_Angle", std::to_string(angle))));
        EXPECT_EQ(design.cam.Shift_Points, angle);
        EXPECT_EQ(design.cam.Shift_Angle, angle);
    }
}

TEST_F(Model_File, a_start_angle_beyond_16_bits_of_points_is_taken_within_one_turn_and_told)
{
    Make_Design();
    const std::string text = Written("9");
    ASSERT_TRUE(Read(With(text, "Shift_Angle", "-1080")));
    EXPECT_EQ(design.cam.Shift_Points, -1080) << "a count that fits stays as it is";
    for (const auto& [angle, words, place] :
         {std::tuple{"1E+06", "1000000", "280"}, {"-1E+06", "-1000000", "-280"}, {"1E+30", "1E+30", "120"}}) {
        user_.Expect({std::string("The starting angle of this file, ") + words +
                          " degrees, is beyond any count of turns.  It is taken as " + place + " degrees.",
                      Buttons::OK, Symbol::exclamation});
        ASSERT_TRUE(Read(With(text, "Shift_Angle", angle)));
        EXPECT_EQ(Shortest(design.cam.Shift_Angle), place);
        EXPECT_EQ(std::to_string(int{design.cam.Shift_Points}), place);
    }
}

TEST_F(Model_File, a_step_that_does_not_fit_the_points_is_taken_from_them_and_told)
{
    Make_Design(2);
    const std::string text = Written("9");
    ASSERT_TRUE(Read(With(text, "Deltatheta", ".49999")));
    for (const char* const step : {"1", "0", "-0.5", "1E-30", "1E+30", "0.25"}) {
        user_.Expect({"The Delta Theta of this file, " + Shortest(Single(Val(step, Decimal_Symbol::point))) +
                          " degrees, does not fit its 720 points.  It is taken as 0.5 degrees.",
                      Buttons::OK, Symbol::exclamation});
        ASSERT_TRUE(Read(With(text, "Deltatheta", step)));
        EXPECT_EQ(design.motion.Deltatheta, 0.5);
    }
}

TEST_F(Model_File, a_choice_that_is_none_is_taken_as_the_usual_one_and_told)
{
    Make_Design();
    design.flags.Sized = true;
    const std::string text = Written("9");
    const std::string end = "Please check the cam and size it again.";
    for (const auto& [field, held, words] : {std::tuple{"Rotflag", "0", "Rotflag is 0 in this file: -1 is taken.\n"},
                                             {"Followtype", "3", "Followtype is 3 in this file: 1 is taken.\n"}}) {
        user_.Expect({words + end, Buttons::OK, Symbol::exclamation});
        ASSERT_TRUE(Read(With(text, field, held)));
        EXPECT_FALSE(design.flags.Sized) << "it was calculated with the other";
    }
    // An arm's direction counts for a follower on an arm alone.
    ASSERT_TRUE(Read(With(text, "ArmDirect", "0")));
    EXPECT_EQ(design.cam.ArmDirect, 0);
    EXPECT_TRUE(design.flags.Sized);
    user_.Expect({"ArmDirect is 0 in this file: 1 is taken.\n" + end, Buttons::OK, Symbol::exclamation});
    ASSERT_TRUE(Read(With(With(text, "ArmDirect", "0"), "Translating", "0")));
    EXPECT_EQ(design.cam.ArmDirect, 1);
}

TEST_F(Model_File, what_could_not_be_read_again_is_not_written)
{
    Make_Design();
    design.identity.User = std::string(65536, '"');  // doubled in the file, one text for its reader
    ASSERT_TRUE(Read(Written("9")));
    EXPECT_EQ(design.identity.User, std::string(65536, '"'));
    design.identity.User += 'x';
    Text_Sink sink;
    EXPECT_THROW(Write_Model(design, sink, "9"), Fault);
}

TEST_F(Model_File, line_breaks_tabs_and_quotes_in_a_text_come_back)
{
    Make_Design();
    design.identity.User = "two\r\nlines,\ta tab, \"quotes\" and \xC3\xA9";
    const std::string user = design.identity.User;
    ASSERT_TRUE(Read(Written("9")));
    EXPECT_EQ(design.identity.User, user);
}

TEST_F(Model_File, fields_that_no_file_holds_come_back_at_their_defaults)
{
    design.cam.Face_Width = 12.0;
    design.linkage.Stiffness_of_link(3) = 7.0;
    ASSERT_TRUE(Read(Reference("9")));
    EXPECT_EQ(design.cam.Face_Width, 0.0);
    EXPECT_EQ(design.linkage.Stiffness_of_link(3), 0.0);
}

TEST_F(Model_File, units_labels_and_pivot_distance_follow_the_loaded_fields)
{
    ASSERT_TRUE(Read(With(With(Reference("9"), "ArmX", "3"), "ArmY", "4")));
    EXPECT_EQ(design.cam.Arm_Pivot_Dist, 5.0);
    EXPECT_EQ(design.plot.Var_Unit(6), "m");
    EXPECT_EQ(design.identity.Decimals_1, 4);
    EXPECT_EQ(design.plot.Var_Name(4), "Jerk") << "the file's time base is degrees";
}

TEST_F(Model_File, the_names_of_the_profile_follow_the_kind_of_cam_that_was_loaded)
{
    const std::map<std::string, std::vector<std::string>> names{
        {"Radial", {"Radius", "Theta", "X_Surface", "Y_Surface", "X_Cutter", "Y_Cutter"}},
        {"Barrel", {"Z-coord", "Lambda", "Z_Surface", "Lambda_Surf", "Z_Cutter", "Lambda_Ctr"}},
        {"Linear", {"Z-coord", "Lambda", "Z_Surface", "Lambda_Surf", "Z_Cutter", "Lambda_Ctr"}}};
    const auto found = [] {
        std::vector<std::string> texts;
        for (const int v : {11, 12, 36, 37, 40, 41})
            texts.push_back(design.plot.Var_Name(v));
        return texts;
    };
    for (const char* tag : {"9", "8", "7.2"})
        for (const auto& [kind, expected] : names) {
            design.cam.Camtype = kind;
            const std::string text = Written(tag);
            for (const char* before : {"Radial", "Barrel"}) {  // the kind that the read begins with
                design.cam.Camtype = before;
                ASSERT_TRUE(Read(text));
                EXPECT_EQ(design.cam.Camtype, kind);
                EXPECT_EQ(found(), expected) << tag << " " << kind << " after " << before;
            }
        }
}

// ---- versions

TEST_F(Model_File, a_7_2_file_of_release_1_9_comes_in_with_its_inputs_only)
{
    std::string text = With_Line(Reference("72"), 3, "\"1.9\"");
    text.resize(text.find("\"Last Labeled Item\""));
    text += "\"Last Labeled Item\",\"Calculated data follow\"\r\n";
    ASSERT_TRUE(Read(text));
    const Flags_Group& f = design.flags;
    EXPECT_FALSE(f.Calculated || f.Sized || f.Dynamicflag || f.Modelflag || f.Stressflag);
    EXPECT_EQ(design.motion.Shaft_speed, Single(3.1));
    EXPECT_TRUE(design.run.Read_Complete);
    EXPECT_EQ(design.results.CalcData(1, 5), 0.0);
}

TEST_F(Model_File, a_7_2_file_of_release_2_or_more_keeps_flags_and_table)
{
    for (const char* release : {"\"2.0\"", "\"9.0\""}) {
        ASSERT_TRUE(Read(With_Line(Reference("72"), 3, release)));
        EXPECT_TRUE(design.flags.Calculated) << release;
        EXPECT_EQ(design.results.CalcData(1, 5), Single(1.0005)) << release;
    }
}

TEST_F(Model_File, tag_7_5_is_read_as_7_2_with_its_table)
{
    ASSERT_TRUE(Read(With_Line(With_Line(Reference("72"), 2, "\"7.5\""), 3, "\"1.0\"")));
    EXPECT_EQ(design.results.CalcData(1, 5), Single(1.0005));
}

TEST_F(Model_File, tag_9_of_a_release_below_5_has_bare_link_masses)
{
    ASSERT_TRUE(Read(With_Line(With_Line(Reference("8"), 2, "\"9\""), 3, "\"4.0\"")));
    EXPECT_EQ(design.linkage.Mass_of_link(2), Single(1882.1));
}

TEST_F(Model_File, a_file_of_a_newer_version_asks_and_goes_on_when_accepted)
{
    const std::string newer = With_Line(Reference("9"), 2, "\"9.5\"");
    const Expected_Box question{
        "This file was saved from LOBEMAX version 9.5\nYou are now running LOBEMAX version 9\n\n"
        "The file may input incorrectly or incompletely. \nPlease check all input data if you proceed.\n\n"
        "Click OK to proceed or Cancel to abort. ",
        Buttons::OK_Cancel, Symbol::exclamation, Answer::OK};
    user_.Expect(question);
    EXPECT_TRUE(Read(newer));
    EXPECT_EQ(design.cam.ArmX, Single(775.1));

    Expected_Box refused = question;
    refused.answer = Answer::Cancel;
    user_.Expect(refused);
    EXPECT_FALSE(Read(newer));
    EXPECT_TRUE(design.run.Read_Abort);
    EXPECT_EQ(design.cam.ArmX, 1.0) << "the design stays reset";
}

TEST_F(Model_File, a_version_that_never_was_is_refused)
{
    for (const char* tag : {"\"7.3\"", "\"5\"", "\"6.5\"", "\"0\"", "\"abc\"", "\"7.9\""}) {
        user_.Expect({"This data file is corrupted and cannot be read.", Buttons::OK, Symbol::exclamation});
        EXPECT_FALSE(Read(With_Line(Reference("9"), 2, tag))) << tag;
        EXPECT_TRUE(design.run.Read_Abort) << tag;
        EXPECT_FALSE(design.run.Reading_File) << tag;
    }
}

TEST_F(Model_File, another_programs_file_is_refused_by_its_first_line)
{
    for (const char* line : {"\"OTHER Plus\"", "lobemax plus", "\"LOBEMA\"", "MZ\x90"}) {
        const bool ours = std::string(line) == "\"LOBEMA\"";  // six characters decide
        if (!ours)
            user_.Expect({"This data file is not compatible with LOBEMAX Plus. ", Buttons::OK, Symbol::exclamation});
        EXPECT_EQ(Read(With_Line(Reference("9"), 1, line)), ours) << line;
        EXPECT_EQ(design.run.Read_Abort, !ours) << line;
    }
}

// ---- bad files

TEST_F(Model_File, an_empty_file_is_reported)
{
    user_.Expect(Error_Box(62, "Input past end of file", "ReadFile"));
    EXPECT_FALSE(Read(""));
    EXPECT_TRUE(design.run.Read_Abort);
}

TEST_F(Model_File, a_binary_file_is_refused)
{
    std::string bytes;
    for (int n = 0; n < 100000; ++n)
        bytes += static_cast<char>(n * 37 % 256);
    user_.Expect({"This data file is not compatible with LOBEMAX Plus. ", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Read(bytes));
    EXPECT_TRUE(design.run.Read_Abort);
}

TEST_F(Model_File, a_directory_and_a_missing_file_are_reported)
{
    Reset_All(design);
    user_.Expect(Error_Box(75, "Path or file access error", "ReadFile"));
    EXPECT_FALSE(Load_Model(design, ::testing::TempDir()));
    EXPECT_TRUE(design.run.Read_Abort);

    Expected_Box missing = Error_Box(53, "File not found", "ReadFile");
    missing.text += "There are no files with your chosen name in the selected directory";
    user_.Expect(missing);
    EXPECT_FALSE(Load_Model(design, "/no/such/model.cam"));
    EXPECT_TRUE(design.run.Read_Abort);
}

TEST_F(Model_File, a_file_without_permission_is_reported)
{
    const std::string path = ::testing::TempDir() + "lobemax_no_permission.cam";
    std::ofstream(path) << "\"LOBEMAX Plus\"\r\n";
    ::chmod(path.c_str(), 0);
    const bool root = ::geteuid() == 0;
    if (root && ::seteuid(65534) != 0)
        GTEST_SKIP() << "cannot become another user";
    user_.Expect(Error_Box(70, "Permission denied", "ReadFile"));
    EXPECT_FALSE(Load_Model(design, path));
    if (root) {
        ASSERT_EQ(::seteuid(0), 0);
    }
    EXPECT_TRUE(design.run.Read_Abort);
    std::remove(path.c_str());
}

struct Bad_Count {
    const char* label;
    const char* value;
    int error;
    const char* description;
    bool complete;          // the labelled items had ended
    const char* step = "";  // what the step is taken as
};

class Bad_Counts : public Model_File, public ::testing::WithParamInterface<Bad_Count> {};

TEST_P(Bad_Counts, are_reported_and_leave_a_usable_state)
{
    const Bad_Count& bad = GetParam();
    if (bad.error != 0)
        user_.Expect(Error_Box(bad.error, bad.description, "ReadFile_8"));
    if (*bad.step != '\0')
        user_.Expect({std::string("The Delta Theta of this file, 1 degrees, does not fit its ") + bad.value +
                          " points.  It is taken as " + bad.step + " degrees.",
                      Buttons::OK, Symbol::exclamation});
    EXPECT_EQ(Read(With(Reference("9"), bad.label, bad.value)), bad.error == 0);
    EXPECT_EQ(design.run.Read_Partial, bad.error != 0);
    EXPECT_EQ(design.run.Read_Complete, bad.complete);
    EXPECT_FALSE(design.run.Reading_File);
    EXPECT_EQ(design.identity.User, "Miller, A.") << "what was read before stays";
    EXPECT_GE(design.motion.No_of_segments, 1);
    EXPECT_LE(design.motion.No_of_segments, 20);
    EXPECT_EQ(design.results.CalcData.Last_Point(), design.motion.Max_Data_Points_used);
    EXPECT_GE(design.results.CalcData.Last_Row(), 53);
}

constexpr const char* bounds = "Index out of bounds";
constexpr const char* mismatch = "Type mismatch";
constexpr const char* past_end = "Input past end of file";

INSTANTIATE_TEST_SUITE_P(
    Model_File, Bad_Counts,
    ::testing::Values(
        // segments: only 1 to 20 exist; too many blocks run into the cam's fields
        Bad_Count{"No of segments", "-1", 9, bounds, false}, Bad_Count{"No of segments", "0", 9, bounds, false},
        Bad_Count{"No of segments", "21", 9, bounds, false}, Bad_Count{"No of segments", "32767", 9, bounds, false},
        Bad_Count{"No of segments", "20", 13, mismatch, false}, Bad_Count{"No of segments", "1", 13, mismatch, false},
        // variables: rows are six fewer; too few leave numbers behind the table, too many need a longer file
        Bad_Count{"Max Variables", "-1", 9, bounds, false}, Bad_Count{"Max Variables", "0", 9, bounds, false},
        Bad_Count{"Max Variables", "21", 13, mismatch, true}, Bad_Count{"Max Variables", "32767", 62, past_end, false},
        // limits of the file's own lists
        Bad_Count{"Max Segments possible", "-1", 13, mismatch, false},
        Bad_Count{"Max Segments possible", "0", 13, mismatch, false},
        Bad_Count{"Max Segments possible", "21", 9, bounds, false},
        Bad_Count{"Max Segments possible", "32767", 9, bounds, false},
        Bad_Count{"Max Bounds possible", "-1", 13, mismatch, false},
        Bad_Count{"Max Bounds possible", "0", 13, mismatch, false},
        Bad_Count{"Max Bounds possible", "21", 13, mismatch, false},
        Bad_Count{"Max Bounds possible", "32767", 9, bounds, false},
        // points
        Bad_Count{"Max Data Points used", "-1", 9, bounds, false},
        Bad_Count{"Max Data Points used", "0", 9, bounds, false},
        Bad_Count{"Max Data Points used", "21", 13, mismatch, true, "17.142857"},
        Bad_Count{"Max Data Points used", "720", 13, mismatch, true, "0.5"},
        Bad_Count{"Max Data Points used", "32767", 9, bounds, false},
        Bad_Count{"Max Data Points used", "99999", 6, "Overflow", false},
        Bad_Count{"WhichUnit", "9", 9, bounds, false}));

struct Value_That_Cannot_Stay {
    const char* label;
    const char* value;
    int error;
    const char* description;
};

class Values_That_Cannot_Stay : public Model_File, public ::testing::WithParamInterface<Value_That_Cannot_Stay> {};

TEST_P(Values_That_Cannot_Stay, are_reported_and_what_was_read_before_can_be_saved_and_opened)
{
    const Value_That_Cannot_Stay& bad = GetParam();
    user_.Expect(Error_Box(bad.error, bad.description, "ReadFile_8"));
    EXPECT_FALSE(Read(With(Reference("9"), bad.label, bad.value)));
    EXPECT_TRUE(design.run.Read_Partial);
    EXPECT_EQ(design.identity.User, "Miller, A.");
    const std::string saved = Written("9");
    EXPECT_TRUE(Read(saved));
    EXPECT_EQ(Written("9"), saved);
}

INSTANTIATE_TEST_SUITE_P(
    Model_File, Values_That_Cannot_Stay,
    ::testing::Values(Value_That_Cannot_Stay{"Shaft speed", "1E+20", 6, "Overflow"},  // its cube is no Single
                      Value_That_Cannot_Stay{"Camtype$", "\"abc\"", 13, "Type mismatch"},
                      Value_That_Cannot_Stay{"No of conditions for segment (1)", "\"41\"", 9, "Index out of bounds"},
                      Value_That_Cannot_Stay{"No of conditions for segment (1)", "\"-1\"", 9, "Index out of bounds"},
                      Value_That_Cannot_Stay{"No of conditions for segment (1)", "\"1E+999\"", 6, "Overflow"}));

TEST_F(Model_File, a_kind_of_cam_in_other_letters_is_that_kind)
{
    EXPECT_TRUE(Read(With(Reference("9"), "Camtype$", "\"barrel\"")));
    EXPECT_EQ(design.cam.Camtype, "Barrel");
}

TEST_F(Model_File, a_position_too_large_for_any_number_leaves_the_read_whole)
{
    EXPECT_TRUE(Read(With(Reference("9"), "S boundary cond for segment 1 at angle 0", "\"1E+999\"")));
    EXPECT_EQ(design.motion.S_boundary_cond(1, 0), "1E+999");
}

TEST_F(Model_File, a_spline_of_more_knots_than_the_table_has_is_saved_and_comes_back)
{
    Reset_All(design);
    design.motion.No_of_conditions(1) = "40";
    design.motion.No_Conditions(1) = 40;
    design.motion.Orders(1) = 30;
    for (const char* const format : {"7.2", "8", "9"}) {
        const std::string saved = Written(format);
        EXPECT_TRUE(Read(saved)) << format;
        EXPECT_EQ(Written(format), saved) << format;
        EXPECT_EQ(design.motion.Orders(1), 30) << format;
    }
}

TEST_F(Model_File, a_file_cut_at_any_labelled_record_is_reported_and_its_start_survives)
{
    const std::string reference = Reference("9");
    const std::size_t labelled_end = reference.find("\"Last Labeled Item\"");
    std::size_t end = 0;
    int record = 0;
    while ((end = reference.find("\r\n", end)) != std::string::npos && (end += 2) <= labelled_end) {
        ++record;
        const bool header = record < 5;
        user_.Expect(Error_Box(62, past_end, header ? "ReadFile" : "ReadFile_8"));
        ASSERT_FALSE(Read(reference.substr(0, end))) << record;
        ASSERT_EQ(design.run.Read_Abort, header) << record;
        ASSERT_EQ(design.run.Read_Partial, !header) << record;
        ASSERT_FALSE(design.run.Read_Complete) << record;
        ASSERT_EQ(design.identity.User, record >= 6 ? "Miller, A." : "") << record;
        if (record > 1000)  // every record of the kinds has come by; the rest in strides
            for (int stride = 0; stride < 7 && end < labelled_end; ++stride, ++record)
                end = reference.find("\r\n", end) + 2;
    }
    EXPECT_GT(record, 2000);
}

TEST_F(Model_File, a_file_cut_in_its_table_keeps_every_labelled_item)
{
    const std::string reference = Reference("9");
    const std::size_t table = reference.find("\"Last Labeled Item\"");
    const std::size_t tail = reference.find("\r\n\"\"\r\n");
    for (const std::size_t cut : {table + 46, table + 100, (table + tail) / 2, tail - 1, tail}) {
        user_.Expect(Error_Box(62, past_end, "ReadFile_8"));
        EXPECT_FALSE(Read(reference.substr(0, cut))) << cut;
        EXPECT_TRUE(design.run.Read_Partial && design.run.Read_Complete) << cut;
        EXPECT_EQ(design.motion.Time_Base, 2) << cut;
    }
    EXPECT_TRUE(Read(reference.substr(0, tail + 2))) << "the tail itself holds nothing";
}

TEST_F(Model_File, a_text_for_a_number_and_a_number_for_a_text_are_reported)
{
    std::vector<std::string> lines = Lines(Reference("9"));
    int swapped = 0;
    for (std::size_t n = 5; n < lines.size() && !lines[n].starts_with("\"Null\""); n += n < 60 ? 1 : 5) {
        const std::string whole = lines[n];
        const std::size_t comma = whole.find("\",") + 1;
        const bool text = whole[comma + 1] == '"';
        lines[n] = whole.substr(0, comma + 1) + (text ? "12.5" : "\"R\"");
        user_.Expect(Error_Box(13, mismatch, "ReadFile_8"));
        ASSERT_FALSE(Read(Joined(lines))) << whole;
        ASSERT_TRUE(design.run.Read_Partial) << whole;
        lines[n] = whole;
        ++swapped;
    }
    EXPECT_GT(swapped, 400);
}

/// Bytes that go on for 200 MB behind a start, none of them kept.
class Endless_Line final : public Byte_Source {
public:
    explicit Endless_Line(std::string start) : start_(std::move(start)) {}
    std::size_t Read(char* into, std::size_t size) override
    {
        const std::size_t count = std::min(size, left_);
        std::fill_n(into, count, 'x');
        const std::size_t head = std::min(count, start_.size());
        std::copy_n(start_.data(), head, into);
        start_.erase(0, head);
        left_ -= count;
        taken += count;
        return count;
    }
    std::size_t Size() const override { return 200'000'000; }
    std::size_t taken = 0;

private:
    std::string start_;
    std::size_t left_ = 200'000'000;
};

TEST_F(Model_File, a_line_of_200_megabytes_is_given_up_after_its_first_part)
{
    const std::string header = "\"LOBEMAX Plus\"\r\n\"9\"\r\n\"9.0\"\r\n\"Professional\"\r\n\"x.cam\"\r\n";
    for (const auto& [start, reader] :
         {std::pair(std::string("\"LOBEMAX "), "ReadFile"), std::pair(std::string("LOBEMAX "), "ReadFile"),
          std::pair(header + "\"User\",\"", "ReadFile_8"),
          std::pair(header + "\"User\",\"a\"\r\n\"Design No.\",", "ReadFile_8")}) {
        Reset_All(design);
        Endless_Line source(start);
        user_.Expect(Error_Box(59, "Bad record length", reader));
        EXPECT_FALSE(ReadFile(design, source));
        EXPECT_LT(source.taken, 1'000'000U) << "no more memory than a record may take";
    }
}

// ---- saving

class Saving : public Model_File {
protected:
    Saving() : path_(::testing::TempDir() + "lobemax_save_" + std::to_string(::getpid()) + ".cam")
    {
        user_.path = path_;
    }
    ~Saving() override
    {
        std::remove(path_.c_str());
        std::remove((path_ + ".bak").c_str());
    }
    Expected_Box Success() const
    {
        return {"The file was successfully written to \n" + path_, Buttons::OK, Symbol::information};
    }
    std::string path_;
};

TEST_F(Saving, save_as_shows_its_dialog_and_names_the_model_after_the_file)
{
    design.identity.Model_Name = "Press";
    user_.Expect(Success());
    EXPECT_TRUE(Save_As_Plus(design));
    ASSERT_EQ(user_.dialogs.size(), 1U);
    EXPECT_EQ(user_.dialogs[0].title, "Save the Model");
    EXPECT_EQ(user_.dialogs[0].filter, "(*.cam)|*.cam");
    EXPECT_EQ(user_.dialogs[0].suggestion, "Press.cam");
    EXPECT_TRUE(user_.dialogs[0].overwrite_prompt);
    EXPECT_TRUE(design.flags.Model_Saved);
    EXPECT_EQ(design.identity.File_Name, path_);
    EXPECT_EQ("/" + design.identity.Model_Name + ".cam", path_.substr(path_.rfind('/')));
    EXPECT_EQ(Lines(Content(path_))[1], "\"9\"");
}

TEST_F(Saving, what_the_file_has_no_place_for_is_told)
{
    const auto lost = [](const std::string& what) {
        return Expected_Box{"This file has no place for " + what + ".\nPlease set that again after opening it.",
                            Buttons::OK, Symbol::exclamation};
    };
    design.linkage.Stage_Mode = "S";
    user_.Expect(Success());
    user_.Expect(lost("the choice of Stephenson"));
    EXPECT_TRUE(Save_As_Plus(design));
    design.linkage.Stiffness_of_link(5) = 2.0;
    user_.Expect(Success());
    user_.Expect(lost("the choice of Stephenson and the stiffnesses of the links"));
    EXPECT_TRUE(Save_As_Plus(design));
    design.linkage.Stage_Mode = "W";
    user_.Expect(Success());
    user_.Expect(lost("the stiffnesses of the links"));
    EXPECT_TRUE(Save_As_Plus(design));
}

TEST_F(Saving, a_cancelled_dialog_changes_nothing)
{
    user_.path.reset();
    EXPECT_FALSE(Save_As_Plus(design));
    EXPECT_FALSE(design.flags.Model_Saved);
    EXPECT_EQ(design.identity.Model_Name, "Model1");
    EXPECT_EQ(design.identity.File_Name, "");
}

TEST_F(Saving, the_older_formats_ask_first_and_the_version_comes_back)
{
    const Expected_Box question{
        "This will save in a format readable by an earlier version of \n"
        "Lobemax and will lose some information unique to this version.\n\nDo you wish to proceed?",
        Buttons::Yes_No, Symbol::none, Answer::Yes};
    user_.Expect(question);
    user_.Expect(Success());
    EXPECT_TRUE(Save_As_V8(design));
    EXPECT_EQ(Lines(Content(path_))[1], "\"8\"");
    user_.Expect(question);
    user_.Expect(Success());
    EXPECT_TRUE(Save_As_V7(design));
    EXPECT_EQ(Lines(Content(path_))[1], "\"7.2\"");
    EXPECT_EQ(Lines(Content(path_))[2], "\"9.0\"");
    EXPECT_EQ(design.identity.Version_Str, "9");

    Expected_Box no = question;
    no.answer = Answer::No;
    user_.Expect(no);
    const std::size_t shown = user_.dialogs.size();
    EXPECT_FALSE(Save_As_V7(design));
    EXPECT_EQ(user_.dialogs.size(), shown) << "no dialog after No";
}

TEST_F(Saving, save_overwrites_a_saved_model_and_asks_for_a_name_otherwise)
{
    user_.Expect(Success());
    EXPECT_TRUE(Save_Model(design));
    EXPECT_EQ(user_.dialogs.size(), 1U);
    design.identity.User = "later";
    user_.Expect(Success());
    EXPECT_TRUE(Save_Model(design));
    EXPECT_EQ(user_.dialogs.size(), 1U) << "no name is asked for";
    EXPECT_NE(Content(path_).find("\"User\",\"later\""), std::string::npos);
}

TEST_F(Saving, a_force_function_is_written_in_the_units_of_the_design_whatever_the_results_have)
{
    ASSERT_TRUE(Open_Example(design, "Double Dwell"));
    Change_Units(design, 1);
    ASSERT_TRUE(Recalculate(design, Standing_of(design)));
    for (int p = 0; p <= 360; ++p)  // lb
        design.results.Ext_Force_Table(p) = design.results.CalcData(var::Ext_Force, p) = 0.25 * p;
    const double force_of_the_cam = design.results.CalcData(var::Force, 45);
    Change_Units(design, 5);
    ASSERT_TRUE(Results_in_Other_Units(design));
    user_.Expect(
        {"The results in memory are those of the units before (in-lb-bl-s): \n"
         "a change of units converts the data of the design, and no calculated results. \n"
         "The file would give them the names of the new units.\n"
         "Do you want to recalculate them before saving?",
         Buttons::Yes_No_Cancel, Symbol::exclamation, Answer::No});
    user_.Expect(Success());
    ASSERT_TRUE(Save_As_Plus(design));
    design = {};
    ASSERT_TRUE(Load_Model(design, path_));
    constexpr double newtons = 4.448222;
    for (int p = 0; p <= 360; ++p) {
        ASSERT_NEAR(design.results.Ext_Force_Table(p), 0.25 * p * newtons, 1e-6 * p * newtons) << p;
        ASSERT_EQ(design.results.Ext_Force_Table(p), design.results.CalcData(var::Ext_Force, p)) << p;
    }
    EXPECT_EQ(design.results.CalcData(var::Force, 45), force_of_the_cam) << "a calculated row is not converted";
}

TEST_F(Saving, results_of_other_units_are_offered_a_recalculation)
{
    ASSERT_TRUE(Open_Example(design, "Double Dwell"));
    Change_Units(design, 1);
    Expected_Box ask{
        "The results in memory are those of the units before (mm-kg-N-s): \n"
        "a change of units converts the data of the design, and no calculated results. \n"
        "The file would give them the names of the new units.\n"
        "Do you want to recalculate them before saving?",
        Buttons::Yes_No_Cancel, Symbol::exclamation, Answer::Cancel};
    const std::size_t shown = user_.dialogs.size();
    user_.Expect(ask);
    EXPECT_FALSE(Save_As_Plus(design));
    EXPECT_EQ(user_.dialogs.size(), shown);
    EXPECT_TRUE(Results_in_Other_Units(design));

    ask.answer = Answer::No;
    user_.Expect(ask);
    user_.Expect(Success());
    EXPECT_TRUE(Save_As_Plus(design));
    EXPECT_TRUE(Results_in_Other_Units(design));

    ask.answer = Answer::Yes;
    user_.Expect(ask);
    user_.Expect(Success());
    EXPECT_TRUE(Save_Model(design));  // over the file just written
    EXPECT_FALSE(Results_in_Other_Units(design));
    EXPECT_NEAR(design.results.CalcData(var::S, 120), 0.984, 1e-6);

    Change_Units(design, 5);
    design.motion.Beta_Deg(1) = 0.0;
    ask.text.replace(ask.text.find("mm-kg-N-s"), 9, "in-lb-bl-s");
    user_.Expect(ask);
    user_.Expect(testing::No_Beta_Box(1));
    EXPECT_FALSE(Save_Model(design)) << "what was to be recalculated and was not is not written";
}

TEST_F(Saving, texts_of_the_other_number_format_come_over_with_the_file)
{
    design.motion.No_of_segments = 2;
    design.motion.Start_Value(1) = "0";
    design.motion.End_Value(1) = "25.7";
    design.motion.Start_Value(2) = "25.7";
    design.motion.End_Value(2) = "0.5";
    user_.Expect(Success());
    ASSERT_TRUE(Save_As_Plus(design));
    Reset_All(design);
    design.identity.Number_Format = "Europe";
    ASSERT_TRUE(Load_Model(design, path_));
    EXPECT_EQ(design.identity.Number_Format, "Europe");
    EXPECT_EQ(design.motion.End_Value(1), "25,7");
    EXPECT_EQ(Val(design, design.motion.End_Value(2)), 0.5);
}

TEST_F(Saving, a_replaced_file_stands_as_a_backup_until_the_new_one_is_whole)
{
    std::ofstream(path_) << "older";
    user_.Expect(Success());
    EXPECT_TRUE(Save_As_Plus(design));
    EXPECT_NE(::access((path_ + ".bak").c_str(), F_OK), 0);

    std::ofstream(path_) << "older";
    design.motion.No_of_segments = 20;
    user_.Expect(Error_Box(9, bounds, "WriteFile_8"));
    user_.Expect({"The file was cut short, for its format cannot hold all of this design:\n" + path_ +
                      "\nThe last whole copy is \n" + path_ + ".bak",
                  Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Save_As_Plus(design));
    EXPECT_EQ(Content(path_ + ".bak"), "older");
    EXPECT_TRUE(Content(path_).starts_with("\"LOBEMAX Plus\"")) << "the cut file stays on disk";
}

TEST_F(Saving, a_place_that_cannot_be_written_is_reported_and_the_older_file_stays)
{
    user_.path = "/no/such/folder/m.cam";
    Expected_Box missing = Error_Box(53, "File not found", "frm_Homescreen.Save");
    missing.text += "There are no files with your chosen name in the selected directory";
    const auto not_saved = [](const std::string& whole) {
        return Expected_Box{"The design was not saved to \n/no/such/folder/m.cam\n" + whole, Buttons::OK,
                            Symbol::exclamation};
    };
    user_.Expect(missing);
    user_.Expect(not_saved("There is no whole copy of it on the disk."));
    EXPECT_FALSE(Save_As_Plus(design));
    EXPECT_FALSE(design.flags.Model_Saved);
    EXPECT_EQ(design.identity.File_Name, "") << "it has no file yet";

    design.identity.File_Name = path_;  // opened from here, saved to a folder that is gone
    std::ofstream(path_) << "older";
    user_.Expect(missing);
    user_.Expect(not_saved("The last whole copy is \n" + path_));
    EXPECT_FALSE(Save_As_Plus(design));
    EXPECT_EQ(design.identity.File_Name, path_);
    design.identity.File_Name = "/no/such/folder/m.cam";
    design.flags.Model_Saved = true;
    user_.Expect(missing);
    user_.Expect(not_saved("There is no whole copy of it on the disk."));
    EXPECT_FALSE(Save_Model(design)) << "the file's folder is gone";
}

TEST_F(Saving, on_a_full_disk_the_older_file_stays_however_often_it_is_tried_and_the_design_counts_as_unsaved)
{
    user_.Expect(Success());
    ASSERT_TRUE(Save_As_Plus(design));
    const std::string older = Content(path_);
    std::ofstream(path_ + ".bak") << "the user's own";
    design.identity.User = "later";
    Mark_Saved(design);  // even if nothing was changed since: the disk is not to be trusted
    Expected_Box full = Error_Box(61, "Disk full", "WriteFile_8");
    full.text += " The floppy disk in the drive is full - please substitute another";
    for (int again = 0; again < 3; ++again) {
        const testing::Faulty_Files disk({3, ENOSPC, true, true, {}});
        design.flags.Model_Saved = true;
        user_.Expect(full);
        user_.Expect({"The design was not saved to \n" + path_ + "\nThe last whole copy is \n" + path_, Buttons::OK,
                      Symbol::exclamation});
        EXPECT_FALSE(Save_Model(design));
        EXPECT_FALSE(design.flags.Model_Saved);
        EXPECT_TRUE(Unsaved(design)) << "Quit asks, and recovery stays";
        EXPECT_EQ(Content(path_), older);
        EXPECT_EQ(Content(path_ + ".bak"), "the user's own");
    }
    design.flags.Model_Saved = true;
    user_.Expect(Success());
    EXPECT_TRUE(Save_Model(design));
    EXPECT_FALSE(Unsaved(design));
    EXPECT_EQ(Content(path_ + ".bak"), "the user's own");
}

TEST_F(Saving, a_cut_file_never_takes_the_place_of_a_backup)
{
    user_.Expect(Success());
    ASSERT_TRUE(Save_As_Plus(design));
    const std::string whole = Content(path_);
    design.motion.No_of_segments = 20;
    for (int again = 0; again < 3; ++again) {
        design.identity.User = "try " + std::to_string(again);
        user_.Expect(Error_Box(9, bounds, "WriteFile_8"));
        user_.Expect({"The file was cut short, for its format cannot hold all of this design:\n" + path_ +
                          "\nThe last whole copy is \n" + path_ + ".bak",
                      Buttons::OK, Symbol::exclamation});
        EXPECT_FALSE(Save_As_Plus(design));
        EXPECT_TRUE(Unsaved(design));
        EXPECT_NE(Content(path_).find("try " + std::to_string(again)), std::string::npos);
        EXPECT_EQ(Content(path_ + ".bak"), whole);
        EXPECT_FALSE(std::filesystem::exists(path_ + ".bak2"));
    }
}

TEST_F(Saving, a_disk_that_fails_under_a_design_of_20_segments_leaves_the_older_file)
{
    std::ofstream(path_) << "older";
    design.motion.No_of_segments = 20;
    const testing::Faulty_Files disk({4, EIO, true, false, {}});
    bool told = false;
    Host host = Installed_Host();
    host.messenger = [&](const Message& box) {
        told = told || box.text.find("Error 57") != std::string::npos;
        return Answer::OK;
    };
    const Host before = Install_Host(std::move(host));
    EXPECT_FALSE(Save_As_Plus(design));
    Install_Host(before);
    EXPECT_TRUE(told);
    EXPECT_EQ(Content(path_), "older");
}

// ---- opening

class Opening : public Saving {
protected:
    Opening()
    {
        std::ofstream(path_, std::ios::binary) << Reference("9");
        Mark_Saved(design);
    }

    std::string Report(bool whole) const
    {
        return "The LOBEMAX file  " + path_ + " has been" + (whole ? " successfully " : " only partially ") +
               "read into memory.\nAll previously saved setup data for this cam-follower design have been updated on "
               "their screens. \n" +
               (whole ? "Any previously calculated parameters are now in memory and can be plotted or printed. "
                      : "The model must now be recalculated to plot and print results. ") +
               "\nThe setup data from the saved model will be preserved until you change it and recalculate.\n"
               "You can view any segment's boundary conditions or spline data by recalculating that segment (SVAJ "
               "button).\nWhen you recalculate at any level, all higher levels of results that are dependent\n"
               "on that calculation will be zeroed. \nFor example, if you recalculate SVAJ data,the Sizecam and "
               "Dynamic data results \nwill be erased, though their setup data is preserved.\n"
               "Before exporting any manufacturing data from an old file, recalculate and check all design data,\n"
               "especially if you have updated LOBEMAX since the file was last saved.  ";
    }
    const Expected_Box question_{"The current data has not been saved.  Do you want to save it before resetting?",
                                 Buttons::Yes_No_Cancel, Symbol::none, Answer::No};
};

TEST_F(Opening, what_was_typed_is_asked_about_calculated_or_not_and_cancel_keeps_it)
{
    design.motion.End_Value(1) = "12";
    Expected_Box cancel = question_;
    cancel.answer = Answer::Cancel;
    user_.Expect(cancel);
    EXPECT_FALSE(Open_Model(design, path_));
    EXPECT_EQ(design.motion.End_Value(1), "12");
}

TEST_F(Opening, a_file_just_opened_is_saved_and_bears_the_path_it_was_opened_by)
{
    user_.Expect({Report(true)});
    ASSERT_TRUE(Open_Model(design, path_));
    EXPECT_FALSE(Unsaved(design));
    EXPECT_EQ(design.identity.File_Name, path_);  // the file itself tells another
    design.cam.Prime_Rad = 99.0;
    EXPECT_TRUE(Unsaved(design));
}

TEST_F(Opening, a_design_never_calculated_is_opened_over_without_a_question)
{
    design.flags.CompCam_Calc = true;
    Mark_Saved(design);
    user_.Expect({Report(true)});
    EXPECT_TRUE(Open_Model(design));
    ASSERT_EQ(user_.dialogs.size(), 1U);
    EXPECT_EQ(user_.dialogs[0].title, "Open a model");
    EXPECT_EQ(user_.dialogs[0].filter, "LOBEMAX (*.cam)|*.cam|All (*.*)|*.*|");
    EXPECT_EQ(user_.dialogs[0].filter_index, 1);
    EXPECT_EQ(user_.dialogs[0].suggestion, "*.cam");
    EXPECT_TRUE(design.flags.Calculated);
    EXPECT_FALSE(design.flags.CompCam_Calc);
    EXPECT_EQ("/" + design.identity.Model_Name + ".cam", path_.substr(path_.rfind('/')));
    EXPECT_GT(user_.waiting, 0);
}

TEST_F(Opening, unsaved_results_are_asked_about)
{
    design.flags.Calculated = true;
    user_.Expect(question_);
    user_.Expect({Report(true)});
    EXPECT_TRUE(Open_Model(design));
}

TEST_F(Opening, a_yes_saves_first_and_a_cancelled_save_loses_nothing)
{
    design.flags.Calculated = true;
    design.identity.User = "unsaved work";
    Expected_Box yes = question_;
    yes.answer = Answer::Yes;
    user_.Expect(yes);
    user_.path.reset();  // the save dialog is cancelled
    EXPECT_FALSE(Open_Model(design, path_));
    EXPECT_TRUE(design.flags.Calculated);
    EXPECT_EQ(design.identity.User, "unsaved work");
}

TEST_F(Opening, a_cancelled_dialog_leaves_the_design_reset)
{
    design.cam.Prime_Rad = 99.0;
    Mark_Saved(design);
    user_.path.reset();
    EXPECT_FALSE(Open_Model(design));
    EXPECT_EQ(design.cam.Prime_Rad, Single(76.2));
    EXPECT_FALSE(design.flags.From_Disk);
}

TEST_F(Opening, a_file_cut_in_its_items_is_told_as_partial_and_loses_its_flags)
{
    const std::string reference = Reference("9");
    std::ofstream(path_, std::ios::binary) << reference.substr(0, reference.find("\"Links\""));
    user_.Expect(Error_Box(62, past_end, "ReadFile_8"));
    user_.Expect({"The LOBEMAX file     " + path_ +
                      "     was only partially read into memory.\n It may have been created in an earlier version of "
                      "LOBEMAX and its setup info may be incomplete.  Please check carefully.",
                  Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Open_Model(design));
    EXPECT_FALSE(design.flags.Calculated || design.flags.Modelflag || design.flags.Polydyne_Calc);
    EXPECT_EQ(design.cam.ArmX, Single(775.1));
}

TEST_F(Opening, a_file_cut_in_its_table_is_told_as_read_only_partially)
{
    const std::string reference = Reference("9");
    std::ofstream(path_, std::ios::binary) << reference.substr(0, reference.size() / 2);
    user_.Expect(Error_Box(62, past_end, "ReadFile_8"));
    user_.Expect({Report(false)});
    EXPECT_FALSE(Open_Model(design));
}

TEST_F(Opening, a_file_of_another_program_leaves_the_design_reset)
{
    std::ofstream(path_) << "hello\n";
    user_.Expect({"This data file is not compatible with LOBEMAX Plus. ", Buttons::OK, Symbol::exclamation});
    EXPECT_FALSE(Open_Model(design));
    EXPECT_EQ(design.identity.Model_Name, "Model1");
}

TEST_F(Saving, the_number_format_of_the_screens_does_not_reach_the_file)
{
    design.identity.Number_Format = "Europe";
    design.cam.Prime_Rad = 38.5;
    EXPECT_NE(Written("9").find("\"Prime_Rad\",38.5\r\n"), std::string::npos);
}

}  // namespace
}  // namespace lobemax
