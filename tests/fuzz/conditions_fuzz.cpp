// SPDX-License-Identifier: GPL-3.0-or-later
// Polynomial and spline segments given wild conditions, knots and orders. The first line is "KIND BETA SPEED BASE";
// then come, in their order, "c ROW ORDER TEXT" for a box of the table, "t ROW TEXT" for a row's angle, "n TEXT" for
// the count of conditions, "o TEXT" for the order of a spline, "k KNOT TEXT" for an interior knot.
#include <algorithm>
#include <array>
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

/// What the curve has at each condition, and what was asked for, both with the weight of their derivative.
class Met_Conditions {
public:
    void Add(double found, double wanted, double weight)
    {
        worst_ = std::max(worst_, std::abs(found - wanted) * weight);
        scale_ = std::max(scale_, std::abs(wanted) * weight);
        finite_ = finite_ && std::isfinite(found);
    }
    void Require_Met() const
    {
        constexpr double allowed = 0.01;  // of the largest: ten times what the solver itself lets pass
        Require(finite_, "a segment that was solved is finite");
        Require(worst_ <= allowed * scale_ || !std::isfinite(scale_), "a segment that was solved meets its conditions");
    }

private:
    double worst_ = 0.0;
    double scale_ = 0.0;
    bool finite_ = true;
};

double Of_Order(const Svajp& point, int order)
{
    return std::array{point.S, point.V, point.A, point.J, point.P}.at(static_cast<std::size_t>(order));
}

void Solve_by_Powers(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    Polynomial_Solution solution;
    if (!Solve_Polynomial(design, segment, solution))
        return;
    const double b = m.Beta_Rad(segment);
    const Polynomial_Curve curve(solution, b);
    Met_Conditions met;
    for (int k = 1; k <= solution.count; ++k) {
        const int order = To_Integer(m.Eq(k, segment));
        const double found = Of_Order(curve.At(m.Theta_Normalized(k, segment)), order) * std::pow(b, order);
        met.Add(found, m.BC(k, segment), std::pow(solution.count, -order));
    }
    met.Require_Met();
}

void Solve_by_Knots(Design_State& design)
{
    const Motion_Group& m = design.motion;
    Spline_Curve curve;
    if (!New_Spline(design, segment) || !Solve_Spline(design, segment, curve))
        return;
    const int count = m.Total_No_of_BCs(segment);
    const double speed = m.Time_Base == 1 ? double{m.Shaft_speed} : 1.0;
    Met_Conditions met;
    Basis_Values basis;
    for (int k = 1; k <= count; ++k) {
        const int order = To_Integer(m.Eq(k, segment));
        curve.Basis(Single(m.Theta_Normalized(k, segment) * m.Beta_Deg(segment)), basis);
        met.Add(curve.Sum(basis, order), m.Boundary(k, segment) / std::pow(speed * Deg_per_Rad, order),
                std::pow(m.Beta_Deg(segment) / count, order));
    }
    met.Require_Met();
}

/// The solvers themselves, whatever the table asked for.
void Solve(Design_State& design)
{
    if (!Read_Bounds(design, segment))
        return;
    if (design.motion.Rise_Fall_Dwell(segment) == "P")
        Solve_by_Powers(design);
    else
        Solve_by_Knots(design);
}

void Run(std::string_view input)
{
    constexpr std::size_t most_lines = 120;
    const Host_of_Fuzz host;
    const std::vector<std::string> lines = Lines_of(input);
    if (lines.empty() || lines.size() > most_lines)
        return;
    const auto design = std::make_unique<Design_State>(Started_Design());
    Coarsen(*design);
    Trap("start", [&] { Start(*design, lines.front()); });
    for (std::size_t i = 1; i < lines.size(); ++i)
        Trap("take", [&] { Take(*design, lines[i]); });
    Trap("solve", [&] { Solve(*design); });
    if (Has_Turn(input, 0, 8))
        Require_Same_Model_Back(*design, "9");
    Work_Through(*design, host);
    if (Has_Turn(input, 1, 8))
        Require_Same_Model_Back(*design, "9");
}

const Registered registered("conditions", Run);

}  // namespace
}  // namespace lobemax::fuzz
