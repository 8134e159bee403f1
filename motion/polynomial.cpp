// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/polynomial.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <string>

#include "core/ladder.h"
#include "core/lanes.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/traps.h"
#include "motion/motion_programs.h"

namespace lobemax {

namespace {

void Warn(const std::string& text)
{
    Show_Message(text, Buttons::OK, Symbol::exclamation);
}

/// Whether the boxes of a row count: rows 1 to 8 need an angle.
bool Row_Counts(const Design_State& design, int Seg, int row)
{
    return row == 0 || row == Last_Condition_Row || !design.motion.T_boundary_cond(Seg, row).empty();
}

/// Runs visit(row, order, text) over the filled boxes in the order in which they become conditions: the first
/// row, the last, then the rows between.
template <class Visit>
void For_Each_Filled_Box(Design_State& design, int Seg, Visit&& visit)
{
    constexpr std::array<int, Last_Condition_Row + 1> rows{0, Last_Condition_Row, 1, 2, 3, 4, 5, 6, 7, 8};
    for (const int row : rows) {
        if (!Row_Counts(design, Seg, row))
            continue;
        for (int order = 0; order <= Max_Bound_Order; ++order) {
            const std::string& text = Bound_Text(design, Seg, row, order);
            if (!text.empty())
                visit(row, order, text);
        }
    }
}

bool Count_Allowed(double count)
{
    const Verdict verdict = No_of_Conditions_may_be(count);
    if (!verdict)
        Warn(verdict.sentence);
    return static_cast<bool>(verdict);
}

/// Condition k at x = theta / beta, its typed value standing in BC(k); the scaled one takes its place.
void Store_Bound(Design_State& design, int k, Single x, int order)
{
    Motion_Group& m = design.motion;
    const int segment = m.Seg;
    Single& value = m.BC(k, segment);
    m.Theta_Normalized(k, segment) = x;
    m.Eq(k, segment) = order;
    if (order == 0) {
        m.Lift = std::max<double>(m.Lift, value);
        return;
    }
    // Per radian to per x. The degrees base takes no factor from degrees to radians, and the seconds base no
    // thousands in J and Ping: both meant. Mechanics has 57.2958 per order in degrees; docs/theory.md, 3.1.
    const double b = Power(m.Beta_Rad(segment), order);
    value = m.Time_Base == 1 ? b * value / Power(m.Shaft_speed, order) : b * value;
}

/// The system of a polynomial: allocated once a calculation.
struct Work {
    std::array<double, Max_Bounds * Max_Bounds> matrix;
    std::array<double, Max_Bounds * Max_Bounds> eliminated;
    std::array<double, Max_Bounds> right_side;
    std::array<int, Max_Bounds> orders;
};

}  // namespace

std::string& Bound_Text(Design_State& design, int Seg, int row, int order)
{
    Motion_Group& m = design.motion;
    switch (order) {
    case 0:
        return m.S_boundary_cond(Seg, row);
    case 1:
        return m.V_boundary_cond(Seg, row);
    case 2:
        return m.A_boundary_cond(Seg, row);
    case 3:
        return m.J_boundary_cond(Seg, row);
    case 4:
        return m.Pbound(Seg, row);
    default:
        throw Fault{out_of_bounds};
    }
}

void Ask_Boundaries(Design_State& design, int Seg)
{
    Check_Segment(Seg);
    Motion_Group& m = design.motion;
    m.S_boundary_cond(Seg, 0) = m.Start_Value(Seg);
    m.S_boundary_cond(Seg, Last_Condition_Row) = m.End_Value(Seg);
    if (m.No_Conditions(Seg) == 0) {
        m.No_Conditions(Seg) = Min_Bounds;
        m.No_of_conditions(Seg) = std::to_string(Min_Bounds);
    }
}

int Requested_Conditions(const Design_State& design, int Seg)
{
    Check_Segment(Seg);
    const int count = design.motion.No_Conditions(Seg);
    return count == 0 ? Min_Bounds : count;
}

int Count_Filled_Boxes(Design_State& design, int Seg)
{
    Check_Segment(Seg);
    int count = 0;
    For_Each_Filled_Box(design, Seg, [&count](int, int, const std::string&) { ++count; });
    return count;
}

Verdict No_of_Conditions_may_be(double count)
{
    if (count >= Min_Bounds && count <= Max_Bounds)
        return {};
    return {"Number of boundary conditions must be between 2 and " + std::to_string(Max_Bounds) + " - please re-enter"};
}

bool Read_Bounds(Design_State& design, int Seg)
{
    Check_Segment(Seg);
    Motion_Group& m = design.motion;
    m.Seg = Seg;
    m.Poly_OK = false;
    const int requested = Requested_Conditions(design, Seg);
    if (!Count_Allowed(requested))
        return false;

    m.Poly_Lift_Fix = m.S_boundary_cond(Seg, Last_Condition_Row).empty();
    int k = 0;
    bool stored = true;
    For_Each_Filled_Box(design, Seg, [&](int row, int order, const std::string& text) {
        ++k;
        if (k > Max_Bounds)
            return;  // the ten rows hold 50 boxes: the count alone goes on
        m.BC(k, Seg) = Val(design, text);
        if (row == 0 || row == Last_Condition_Row) {
            m.Boundary(k, Seg) = m.BC(k, Seg);
            Store_Bound(design, k, row == 0 ? 0.0 : 1.0, order);
        } else {
            Add_Bound(design, k, Val(design, m.T_boundary_cond(Seg, row)), order);
            stored = stored && m.Beta_Deg(Seg) != 0.0;
        }
    });

    m.Total_No_of_BCs(Seg) = requested;
    if (k != requested) {
        Warn("Something wrong - Have input different number of boundary conditions than specified");
    } else if (stored) {
        m.Poly_OK = true;
        for (int i = 1; i <= k; ++i) {
            m.Constraints(i, 1) = m.Theta_Normalized(i, Seg) * m.Beta_Deg(Seg);
            m.Constraints(i, 2) = m.Eq(i, Seg);
            m.Constraints(i, 3) = m.Boundary(i, Seg);
        }
    }
    for (int j = 1; j <= requested; ++j)
        m.Power(j, Seg) = j - 1;
    return m.Poly_OK;
}

void Add_Bound(Design_State& design, int k, Single theta, int order)
{
    Motion_Group& m = design.motion;
    m.Boundary(k, m.Seg) = m.BC(k, m.Seg);
    if (m.Beta_Deg(m.Seg) == 0.0) {
        Warn("Something wrong - Beta is zero for this segment");
        return;
    }
    Store_Bound(design, k, theta / m.Beta_Deg(m.Seg), order);
}

double Bound_Element(int d, int p, double x)
{
    if (d > p)
        return 0.0;
    double product = 1.0;
    for (int i = 0; i < d; ++i)
        product *= p - i;
    return p == d ? product : product * Power(x, p - d);
}

bool Digits_Lost(int n, Matrix_View A, std::span<const double> solution, std::span<const double> right_side,
                 std::span<const int> orders, double length)
{
    constexpr double allowed = 0.001;  // what the continuity report lets pass
    double largest_terms = 0.0;
    double largest_miss = 0.0;  // what the elimination itself has lost
    double scale = 0.0;
    for (int i = 1; i <= n; ++i) {
        const std::size_t place = static_cast<std::size_t>(i - 1);
        const double weight = std::pow(length / n, orders[place]);
        const std::span<const double> row = A.Elements(i);
        double terms = 0.0;
        double sum = 0.0;
        for (std::size_t j = 0; j < static_cast<std::size_t>(n); ++j) {
            sum += row[j] * solution[j];
            terms += std::abs(row[j] * solution[j]);
        }
        if (!std::isfinite(terms))
            return true;
        largest_terms = std::max(largest_terms, terms * weight);
        largest_miss = std::max(largest_miss, std::abs(sum - right_side[place]) * weight);
        scale = std::max(scale, std::abs(right_side[place]) * weight);
    }
    const double rounding = largest_terms * std::numeric_limits<double>::epsilon();
    return std::max(rounding, largest_miss) > allowed * scale;
}

bool Solve_Polynomial(const Design_State& design, int Seg, Polynomial_Solution& solution)
{
    Check_Segment(Seg);
    const Motion_Group& m = design.motion;
    const int n = m.Total_No_of_BCs(Seg);
    const auto work = std::make_unique<Work>();
    const Matrix_View A(work->matrix, n, n, Max_Bounds);
    for (int i = 1; i <= n; ++i) {
        const std::size_t place = static_cast<std::size_t>(i - 1);
        const int order = To_Integer(m.Eq(i, Seg));
        work->right_side[place] = m.BC(i, Seg);
        work->orders[place] = order;
        for (int j = 1; j <= n; ++j)
            A(i, j) = Bound_Element(order, To_Integer(m.Power(j, Seg)), m.Theta_Normalized(i, Seg));
    }
    work->eliminated = work->matrix;
    solution.C = work->right_side;
    solution.count = n;
    int status = 0;
    SimQ(n, Matrix_View(work->eliminated, n, n, Max_Bounds), solution.C, status);
    return status == 0 && !Digits_Lost(n, A, solution.C, work->right_side, work->orders, 1.0);
}

Polynomial_Curve::Polynomial_Curve(const Polynomial_Solution& solution, double b)
    : form_({.S = 1.0,
             .V = Single(1.0 / b),
             .A = Single(1.0 / (b * b)),
             .J = Single(1.0 / (b * b * b)),
             .P = Single(1.0 / (b * b * b * b))},
            solution.C.data(), solution.count)
{
    static_assert(sizeof(form_.factor[0]) == sizeof(solution.C));
}

Svajp Polynomial_Curve::At(double x) const
{
    return form_(x);
}

std::size_t Polynomial_Curve::Store(const Segment_Run& run, std::size_t first, std::size_t count) const
{
    return Kernels_in_Use<Law_Kernels>().Law_Kernel<law_forms::Solved_Polynomial>::store(form_, run, first, count);
}

}  // namespace lobemax
