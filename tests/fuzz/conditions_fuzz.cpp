// SPDX-License-Identifier: GPL-3.0-or-later
// Polynomial and spline segments given wild conditions, knots and orders. The first line is "KIND BETA SPEED BASE";
// then come, in their order, "c ROW ORDER TEXT" for a box of the table, "t ROW TEXT" for a row's angle, "n TEXT" for
// the count of conditions, "o TEXT" for the order of a spline, "k KNOT TEXT" for an interior knot.
#include <algorithm>
#include <cmath>
#include <memory>
#include <sstream>

#include "core/text.h"
#include "core/traps.h"
#include "edit/conditions.h"
#include "edit/door.h"
#include "files/model_file.h"
#include "motion/motion_programs.h"
#include "motion/polynomial.h"
#include "motion/segments.h"
#include "motion/spline.h"
#include "tests/fuzz/fuzz.h"

namespace lobemax::fuzz {
namespace {

constexpr int segment = 1;

double Number(const std::string& text)
{
    const Number_Read number = Read_Number(text, Decimal_Symbol::point);
    return std::abs(number.value) < 1E+30 ? number.value : 1E+30;
}

void Start(Design_State& design, const std::string& line)
{
    std::istringstream words(line);
    std::string kind, beta, speed, base;
    words >> kind >> beta >> speed >> base;
    Put(design, "No of segments", 2.0);
    Pick_Motion(design, 1, kind == "P" ? 'P' : 'S');
    Pick_Motion(design, 2, 'D');
    Put(design, "Beta_Deg", At(1), Number(beta));
    Put(design, "Beta_Deg", At(2), 360.0 - design.motion.Beta_Deg(1));
    Put(design, "Shaft speed", Number(speed));
    Put(design, "Time Base", std::clamp(std::floor(Number(base)), 1.0, 3.0));
    Put(design, "Start Value", At(2), std::string("0"));
    Put(design, "End Value", At(2), std::string("0"));
    Ask_Boundaries(design, segment);
}

void Take(Design_State& design, const std::string& line)
{
    std::istringstream words(line);
    char what = 0;
    std::string text;
    int row = 0, order = 0;
    words >> what;
    if (what == 'c')
        words >> row >> order >> text;
    else if (what == 't' || what == 'k')
        words >> row >> text;
    else
        words >> text;
    if (what == 'c')
        Put_Condition(design, segment, row, order, Text_as_Read(design, text));  // as an entry leaves it
    else if (what == 't')
        Put_Condition(design, segment, row, Angle_Box, Text_as_Read(design, text));
    else if (what == 'n')
        Set_No_of_Conditions(design, segment, text);
    else if (what == 'o')
        Set_Order(design, segment, text);
    else if (what == 'k')
        Set_Knot(design, segment, row, text);
}

/// The solvers themselves, whatever the table asked for.
void Solve(Design_State& design)
{
    if (!Read_Bounds(design, segment))
        return;
    const double beta = design.motion.Beta_Deg(segment);
    const auto finite = [](const Svajp& point) {
        return std::isfinite(point.S) && std::isfinite(point.V) && std::isfinite(point.A) && std::isfinite(point.J) &&
               std::isfinite(point.P);
    };
    if (design.motion.Rise_Fall_Dwell(segment) == "P") {
        Polynomial_Solution solution;
        if (Solve_Polynomial(design, segment, solution))
            Require(finite(Polynomial_Curve(solution, design.motion.Beta_Rad(segment)).At(0.5)),
                    "a polynomial that was solved is finite");
    } else if (New_Spline(design, segment)) {
        Spline_Curve curve;
        if (Solve_Spline(design, segment, curve))
            Require(finite(curve.At(beta / 2.0)), "a spline that was solved is finite");
    }
}

void Run(std::string_view input)
{
    constexpr std::size_t most_lines = 120;
    const Host_of_Fuzz host;
    const std::vector<std::string> lines = Lines_of(input);
    if (lines.empty() || lines.size() > most_lines)
        return;
    const auto design = std::make_unique<Design_State>(Started_Design());
    Trap("start", [&] { Start(*design, lines.front()); });
    for (std::size_t i = 1; i < lines.size(); ++i)
        Trap("take", [&] { Take(*design, lines[i]); });
    Trap("solve", [&] { Solve(*design); });
    if (Has_Turn(input, 0, 6))
        Require_Same_Model_Back(*design, "9");
    Work_Through(*design, host);
    if (Has_Turn(input, 1, 6))
        Require_Same_Model_Back(*design, "9");
}

const Registered registered("conditions", Run);

}  // namespace
}  // namespace lobemax::fuzz
