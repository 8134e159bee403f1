// SPDX-License-Identifier: GPL-3.0-or-later
#include "shop/cam_tables.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "core/variables.h"
#include "motion/polynomial.h"
#include "motion/spline.h"
#include "tests/support/script.h"
#include "tests/support/truth_design.h"
#include "truth/true_motion.h"

namespace lobemax {
namespace {

using testing::Truth_Maker;

constexpr double pi = 3.14159265358979323846;

std::vector<std::string> Lines_of(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        EXPECT_EQ(line.back(), '\r');
        line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

/// Rows of numbers of a text table behind its comments and one line of words.
std::vector<std::vector<double>> Rows_of(const std::string& text, char separator, char decimal)
{
    std::vector<std::vector<double>> rows;
    bool words = true;
    for (std::string line : Lines_of(text)) {
        if (line.starts_with("#"))
            continue;
        if (words) {
            words = false;
            continue;
        }
        rows.emplace_back();
        std::istringstream in(line);
        for (std::string cell; std::getline(in, cell, separator);) {
            std::ranges::replace(cell, decimal, '.');
            std::size_t used = 0;
            rows.back().push_back(std::stod(cell, &used));
            EXPECT_EQ(used, cell.size()) << cell;
        }
    }
    return rows;
}

/// The numbers between the brackets that follow a name in structured text; comments are no part of it.
std::vector<double> Array_of(std::string text, const std::string& name)
{
    for (std::size_t a = text.find("(*"); a != std::string::npos; a = text.find("(*")) {
        const std::size_t b = text.find("*)", a);
        if (b == std::string::npos)
            return {};
        text.erase(a, b + 2 - a);
    }
    std::size_t at = text.find(name);
    at = at == std::string::npos ? at : text.find(":= [", at);
    if (at == std::string::npos)
        return {};
    const std::size_t end = text.find(']', at);
    std::istringstream in(text.substr(at + 4, end - at - 4));
    std::vector<double> values;
    for (std::string cell; std::getline(in, cell, ',');)
        values.push_back(std::stod(cell));
    return values;
}

double Constant_of(const std::string& text, const std::string& name)
{
    const std::size_t at = text.find(name + " : ");
    EXPECT_NE(at, std::string::npos) << name;
    return at == std::string::npos ? 0.0 : std::stod(text.substr(text.find(":=", at) + 2));
}

/// 4-5-6-7 over a lift, 20 mm in 110, rest of 60, back in 120 degrees: the formula.
double Formula(double theta)
{
    const auto rise = [](double x) { return ((((-20 * x + 70) * x - 84) * x + 35) * x * x) * x * x; };
    theta = std::fmod(theta, 360.0);
    if (theta < 110)
        return 20 * rise(theta / 110);
    if (theta < 170)
        return 20;
    if (theta < 290)
        return 20 - 20 * rise((theta - 170) / 120);
    return 0;
}

class Cam_Tables : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_NO_FATAL_FAILURE(Truth_Maker{}.Make()); }
    testing::Script script_;
};

TEST_F(Cam_Tables, of_text_have_the_motion_at_even_powers_of_two)
{
    for (const int points : {256, 1024, 8192})
        for (const bool comma : {false, true}) {
            Motion_Table_Options options;
            options.points = points;
            options.separator = comma ? ';' : ',';
            options.decimal = comma ? Decimal_Symbol::comma : Decimal_Symbol::point;
            options.closing_point = !comma;
            options.derivatives = true;
            const Machine_File file = Motion_Table(design, options);
            ASSERT_EQ(file.refusal, "");
            const auto rows = Rows_of(file.text, options.separator, comma ? ',' : '.');
            ASSERT_EQ(static_cast<int>(rows.size()), points + (comma ? 0 : 1));
            double largest = 0.0;
            for (std::size_t i = 0; i < rows.size(); ++i) {
                ASSERT_EQ(rows[i].size(), 4U);
                const double theta = 360.0 * static_cast<double>(i) / points;
                EXPECT_NEAR(rows[i][0], theta, 1e-9);
                EXPECT_NEAR(rows[i][1], Formula(theta), 1e-7);
                const double h = 1e-3;
                if (theta > h) {
                    EXPECT_NEAR(rows[i][2], (Formula(theta + h) - Formula(theta - h)) / (2 * h), 1e-6);
                    EXPECT_NEAR(rows[i][3], (Formula(theta + h) + Formula(theta - h) - 2 * Formula(theta)) / (h * h),
                                1e-5);
                }
                if (i > 0)
                    largest = std::max(largest,
                                       std::abs(0.5 * (rows[i][1] + rows[i - 1][1]) - Formula(theta - 180.0 / points)));
            }
            EXPECT_NEAR(file.largest_deviation, largest, 0.05 * largest);
        }
}

TEST_F(Cam_Tables, of_structured_text_are_reals_or_scaled_integers)
{
    struct Case {
        Plc_Number number;
        const char* type;
        double scale;
        double within;
    };
    for (const Case& c :
         {Case{Plc_Number::REAL, "REAL", 0.0, 1e-6}, Case{Plc_Number::LREAL, "LREAL", 0.0, 1e-9},
          Case{Plc_Number::INT, "INT", 1000.0, 0.5e-3 + 1e-9}, Case{Plc_Number::DINT, "DINT", 1e8, 0.5e-8 + 1e-9}}) {
        Motion_Table_Options options;
        options.form = Table_Form::structured_text;
        options.number = c.number;
        options.name = "Feed_Cam";
        options.points = 512;
        const Machine_File file = Motion_Table(design, options);
        ASSERT_EQ(file.refusal, "");
        EXPECT_NE(file.text.find(std::string("ARRAY[0..512] OF ") + c.type + ";"), std::string::npos);
        const std::vector<double> values = Array_of(file.text, "Feed_Cam_Position");
        ASSERT_EQ(values.size(), 513U);
        const double step = Constant_of(file.text, "Feed_Cam_Step");
        EXPECT_EQ(step, 0.703125);
        double scale = 1.0;
        if (c.scale > 0.0) {
            scale = Constant_of(file.text, "Feed_Cam_Scale");
            EXPECT_EQ(scale, c.scale);
        }
        const bool single = c.number == Plc_Number::REAL;  // a controller reads it into 32 bits
        for (std::size_t i = 0; i < values.size(); ++i)
            EXPECT_NEAR((single ? static_cast<float>(values[i]) : values[i]) / scale,
                        Formula(static_cast<double>(i) * step), c.within);
    }
    Motion_Table_Options options;
    options.form = Table_Form::structured_text;
    options.number = Plc_Number::INT;
    options.scale = 2000.0;
    EXPECT_EQ(Motion_Table(design, options).refusal, "A position of 20 mm at 2000 counts each does not fit into INT.");
}

// An arm's position is an angle; a motion that stands in the rows is the curve through them.
TEST_F(Cam_Tables, have_the_position_of_an_arm_in_degrees)
{
    ASSERT_NO_FATAL_FAILURE((Truth_Maker{.arm = true}.Make()));
    const Machine_File file = Motion_Table(design, {});
    EXPECT_NE(file.text.find("Position deg"), std::string::npos);
    const auto rows = Rows_of(file.text, ';', '.');
    for (std::size_t i = 0; i < rows.size(); i += 7)
        EXPECT_NEAR(rows[i][1], Formula(rows[i][0]), 2e-7);
}

double Value_of(const std::vector<Motion_Piece>& pieces, double theta)
{
    for (const Motion_Piece& piece : pieces)
        if (theta >= piece.start && theta <= piece.start + piece.beta) {
            const double x = (theta - piece.start) / piece.beta;
            double value = 0.0;
            double power = 1.0;
            for (const double c : piece.coefficients) {
                value += c * power;
                power *= x;
            }
            return value;
        }
    return std::nan("");
}

TEST_F(Cam_Tables, of_polynomials_are_the_motion)
{
    std::string why;
    const auto pieces = Pieces_of(design, why);
    ASSERT_TRUE(pieces) << why;
    ASSERT_EQ(pieces->size(), 4U);
    // The normal form itself: 35, -84, 70, -20 times the lift.
    const std::vector<double> rise{0, 0, 0, 0, 700, -1680, 1400, -400};
    ASSERT_EQ((*pieces)[0].coefficients.size(), 8U);
    for (std::size_t k = 0; k < 8; ++k) {
        EXPECT_NEAR((*pieces)[0].coefficients[k], rise[k], 1e-9);
        EXPECT_NEAR((*pieces)[2].coefficients[k], (k == 0 ? 20.0 : 0.0) - rise[k], 1e-9);
    }
    EXPECT_EQ((*pieces)[1].coefficients, std::vector<double>{20.0});
    for (double theta = 0.0; theta < 360.0; theta += 0.37)
        EXPECT_NEAR(Value_of(*pieces, theta), Formula(theta), 2e-9);

    for (const Table_Form form : {Table_Form::csv, Table_Form::structured_text}) {
        Piece_Table_Options options;
        options.form = form;
        const Machine_File file = Piece_Table(design, options);
        ASSERT_EQ(file.refusal, "");
        EXPECT_EQ(file.points, 4);
        if (form == Table_Form::csv) {
            const auto rows = Rows_of(file.text, ';', '.');
            ASSERT_EQ(rows.size(), 4U);
            EXPECT_EQ(rows[2][0], 170.0);
            EXPECT_EQ(rows[2][1], 120.0);
            EXPECT_EQ(rows[2][2], 7.0);
            ASSERT_EQ(rows[2].size(), 11U);
            for (std::size_t k = 0; k < 8; ++k)
                EXPECT_EQ(rows[2][3 + k], (*pieces)[2].coefficients[k]);
        } else {
            const std::vector<double> c = Array_of(file.text, "Degree := 7, C");
            ASSERT_EQ(c.size(), 8U);
            for (std::size_t k = 0; k < 8; ++k)
                EXPECT_EQ(c[k], (*pieces)[0].coefficients[k]);
            EXPECT_NE(file.text.find("Cam_Pieces : ARRAY[1..4] OF Cam_Piece"), std::string::npos);
        }
    }
}

void Take_Program(int segment, char kind, const char* program)
{
    Pick_Motion(design, segment, kind);
    Pick_Program(design, segment, program);
    Update_Segment_Angles(design);
}

// Every law that is a polynomial, rise and fall, against the law's own curve; the others are told.
TEST_F(Cam_Tables, of_polynomials_have_the_polynomial_laws_alone)
{
    for (const Motion_Program& program : Motion_Programs()) {
        if (program.kinds.find('R') == std::string_view::npos || program.kinds.find('F') == std::string_view::npos)
            continue;
        const std::string code(program.code);
        SCOPED_TRACE(code);
        Take_Program(1, 'R', code.c_str());
        Take_Program(3, 'F', code.c_str());
        if (!Calc_All(design, true))
            continue;
        std::string why;
        const auto pieces = Pieces_of(design, why);
        const int law = program.Seg_Program;
        const bool polynomial = law == selector::poly_345 || law == selector::poly_3456 || law == selector::poly_4567 ||
                                law == selector::poly_11 || law == selector::berzak_d || law == selector::berzak_e;
        EXPECT_EQ(pieces.has_value(), polynomial) << why;
        if (!pieces) {
            EXPECT_NE(why.find("Segment 1, "), std::string::npos);
            EXPECT_NE(why.find("is no polynomial: take a table of points."), std::string::npos);
            EXPECT_EQ(Piece_Table(design, {}).refusal, why);
            continue;
        }
        const Motion_Curve curve(design);
        for (double theta = 0.11; theta < 360.0; theta += 0.37)
            EXPECT_NEAR(Value_of(*pieces, theta), curve.At(theta).S, 2e-8);
    }
}

/// A rise of conditions: rest at both ends.
void Take_Conditions(const char* program, int count)
{
    Motion_Group& m = design.motion;
    Pick_Program(design, 1, program);
    m.Seg = 1;
    m.No_of_conditions(1) = std::to_string(count);
    m.No_Conditions(1) = Integer(count);
    Ask_Boundaries(design, 1);
    for (const int row : {0, 9})
        for (int order = 0; order < 3; ++order)
            Bound_Text(design, 1, row, order) = order == 0 ? (row == 0 ? "0" : "20") : "0";
    if (count > 6) {
        m.T_boundary_cond(1, 4) = "40";
        Bound_Text(design, 1, 4, 0) = "6";
    }
    Update_Segment_Angles(design);
}

TEST_F(Cam_Tables, of_polynomials_have_conditions_and_splines)
{
    for (const char* const program : {"PO", "BS"}) {
        SCOPED_TRACE(program);
        Take_Conditions(program, 7);
        ASSERT_TRUE(Read_Bounds(design, 1));
        if (std::string(program) == "BS") {
            ASSERT_TRUE(New_Spline(design, 1));
        }
        ASSERT_TRUE(Calc_All(design, true));
        std::string why;
        const auto pieces = Pieces_of(design, why);
        ASSERT_TRUE(pieces) << why;
        const Motion_Curve curve(design);
        EXPECT_EQ(pieces->size(), std::string(program) == "PO" ? 4U : 5U);
        EXPECT_NEAR(Value_of(*pieces, 40.0), 6.0, 1e-6);
        for (double theta = 0.11; theta < 360.0; theta += 0.37)
            EXPECT_NEAR(Value_of(*pieces, theta), curve.At(theta).S, 1e-8);
    }
}

// A lobe of (1 - cos) over 240 degrees about 170: all figures by hand.
TEST_F(Cam_Tables, of_lift_count_from_the_nose)
{
    Motion_Group& m = design.motion;
    m.No_of_segments = 4;
    const auto segment = [&](int i, char kind, const char* program, double beta, const char* from, const char* to) {
        Pick_Motion(design, i, kind);
        Pick_Program(design, i, program);
        m.Beta_Deg(i) = Single(beta);
        m.Beta_Rad(i) = Single(beta / Deg_per_Rad);
        m.Start_Value(i) = from;
        m.End_Value(i) = to;
    };
    segment(1, 'D', "DW", 50, "0", "0");
    segment(2, 'R', "SF", 120, "0", "9");
    segment(3, 'F', "SF", 120, "9", "0");
    segment(4, 'D', "DW", 70, "0", "0");
    Update_Segment_Angles(design);
    ASSERT_TRUE(Calc_All(design, true));
    for (const double step : {1.0, 0.25}) {
        Lift_Table_Options options;
        options.step = step;
        options.at_lift = 2.25;
        const Machine_File file = Lift_Table(design, options);
        ASSERT_EQ(file.refusal, "");
        const auto rows = Rows_of(file.text, ';', '.');
        ASSERT_EQ(static_cast<double>(rows.size()), 180.0 / step + 1.0);
        for (const auto& row : rows) {
            ASSERT_EQ(row.size(), 3U);
            const double lift = row[0] < 120.0 ? 4.5 + 4.5 * std::cos(row[0] * pi / 120.0) : 0.0;
            EXPECT_NEAR(row[1], lift, 2e-6);
            EXPECT_NEAR(row[2], lift, 2e-6);
        }
        // 4.5 + 4.5 cos(x) = 2.25 at 80 degrees from the nose; the mean of the lobe is half its height.
        const auto figure = [&](const std::string& words) {
            const std::size_t at = file.text.find(words);
            EXPECT_NE(at, std::string::npos) << words;
            return at == std::string::npos ? 0.0 : std::stod(file.text.substr(at + words.size()));
        };
        EXPECT_NEAR(figure("Duration at a lift of 2.25 mm: "), 160.0, 2e-3);
        EXPECT_NEAR(figure("Lobe centre "), 170.0, 1e-3);
        EXPECT_NEAR(figure("Area under the lift curve "), 4.5 * 240.0, 0.05);
        EXPECT_NEAR(figure("Largest lift "), 9.0, 1e-6);
        EXPECT_NEAR(figure("The nose is at 0, at "), 170.0, 1e-4);
    }
    Lift_Table_Options options;
    options.at_lift = 9.5;
    EXPECT_EQ(Lift_Table(design, options).refusal, "The motion never has a lift of 9.5 mm, or always.");
    for (const double step : {2.0, 0.7, 0.0, -1.0}) {
        options = {};
        options.step = step;
        EXPECT_NE(Lift_Table(design, options).refusal.find("The step of a lift table"), std::string::npos);
    }
}

TEST_F(Cam_Tables, tell_where_they_come_from)
{
    design.identity.Model_Name = "Feeder (* 3 *)";
    design.identity.Design_No = 12;
    Motion_Table_Options points;
    points.form = Table_Form::structured_text;
    Piece_Table_Options pieces;
    for (const Machine_File& file : {Motion_Table(design, points), Motion_Table(design, {}),
                                     Piece_Table(design, pieces), Lift_Table(design, {})}) {
        ASSERT_EQ(file.refusal, "");
        for (const char* const part : {"Model: Feeder", "Design: 12", "Date: ", "mm", "olerance", "egrees"})
            EXPECT_NE(file.text.find(part), std::string::npos) << part;
    }
}

TEST_F(Cam_Tables, are_refused_with_a_sentence)
{
    const auto refused = [](auto change) {
        Motion_Table_Options options;
        change(options);
        return Motion_Table(design, options).refusal;
    };
    EXPECT_EQ(refused([](auto& o) { o.points = 1000; }), "The points of a table are a power of two from 256 to 8192.");
    EXPECT_NE(refused([](auto& o) { o.points = 128; }), "");
    EXPECT_NE(refused([](auto& o) { o.points = 16384; }), "");
    EXPECT_NE(refused([](auto& o) { o.separator = '7'; }), "");
    EXPECT_EQ(refused([](auto& o) {
                  o.separator = ',';
                  o.decimal = Decimal_Symbol::comma;
              }),
              "The comma cannot be both separator and decimal symbol.");
    for (const char* const name : {"", "1a", "a b", "a__b", "a_", "x;"})
        EXPECT_NE(refused([&](auto& o) {
                      o.form = Table_Form::structured_text;
                      o.name = name;
                  }),
                  "")
            << name;
    Initialize(design);
    EXPECT_EQ(Motion_Table(design, {}).refusal, "The design has no calculated motion.");
    EXPECT_EQ(Piece_Table(design, {}).refusal, "The design has no calculated motion.");
    EXPECT_EQ(Lift_Table(design, {}).refusal, "The design has no calculated motion.");
}

}  // namespace
}  // namespace lobemax
