// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/spline.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "core/lanes.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/text.h"
#include "motion/motion_programs.h"
#include "motion/polynomial.h"

namespace lobemax {

namespace {

void Warn(const std::string& text)
{
    Show_Message(text, Buttons::OK, Symbol::exclamation);
}

std::size_t Place(int i)
{
    return static_cast<std::size_t>(i);
}

/// Length of a segment, degrees.
Single Length(const Design_State& design, int Seg)
{
    return design.motion.Gamma(Seg) - design.motion.Shift(Seg);
}

/// The knots of one segment, knot 1 in element 1.
using Knot_Row = std::array<double, Max_Knots + 1>;

Knot_Row Knots_of(const Design_State& design, int Seg)
{
    Knot_Row row{};
    for (int i = 1; i <= design.motion.Number_of_Knots(Seg); ++i)
        row[Place(i)] = design.motion.Knots(i, Seg);
    return row;
}

void Count_Knots(Design_State& design, int Seg)
{
    Motion_Group& m = design.motion;
    m.Number_of_Knots(Seg) = Requested_Conditions(design, Seg) + m.Orders(Seg);
    m.Interior_Knots(Seg) = m.Number_of_Knots(Seg) - 2 * m.Orders(Seg);
}

/// Whether typed interior knots stand in ascending order inside the segment.
bool Interior_Knots_Fit(const Design_State& design, int Seg)
{
    const Motion_Group& m = design.motion;
    double before = 0.0;
    for (int i = m.Orders(Seg) + 1; i <= m.Orders(Seg) + m.Interior_Knots(Seg); ++i) {
        if (m.Knots(i, Seg) < before)
            return false;
        before = m.Knots(i, Seg);
    }
    return before <= Length(design, Seg);
}

/// Index of the knot interval that x belongs to: the last one is closed, and the end intervals go on.
int Interval_of(std::span<const double> knots, double x, int order, int last)
{
    int interval = last;
    while (interval > order && x < knots[Place(interval)])
        --interval;
    return interval;
}

static_assert(formulas::most_functions == Max_Bounds && formulas::spline_derivatives == Max_Spline_Derivative);

/// The collocation system: allocated once a calculation.
struct Work {
    std::array<double, Max_Bounds * Max_Bounds> matrix;
    std::array<double, Max_Bounds * Max_Bounds> eliminated;
    std::array<double, Max_Bounds> right_side;
    std::array<int, Max_Bounds> orders;
    Basis_Values basis;
};

}  // namespace

double B_Spline(std::span<const double> knots, double x, int order, int i, int last)
{
    if (order < 1 || order > Max_Bounds || i < 1 || Place(i + order) >= knots.size())
        throw Fault{out_of_bounds};
    if (i == last + 1)
        return 0.0;
    // The recursion from below: in step m, value[j] is function i + j of order m.
    std::array<double, Max_Bounds> value{};
    for (int j = 0; j < order; ++j) {
        const double low = knots[Place(i + j)];
        const double high = knots[Place(i + j + 1)];
        const bool closed = i + j == last && x == high;
        value[Place(j)] = i + j <= last && low <= x && (x < high || closed) ? 1.0 : 0.0;
    }
    for (int m = 2; m <= order; ++m) {
        for (int j = 0; j <= order - m; ++j) {
            const double d1 = knots[Place(i + j + m - 1)] - knots[Place(i + j)];
            const double d2 = knots[Place(i + j + m)] - knots[Place(i + j + 1)];
            double sum = 0.0;
            if (d1 != 0.0)
                sum += (x - knots[Place(i + j)]) / d1 * value[Place(j)];
            if (d2 != 0.0)
                sum += (knots[Place(i + j + m)] - x) / d2 * value[Place(j + 1)];
            value[Place(j)] = sum;
        }
    }
    return value[0];
}

void MakeDerivs(std::span<const double> knots, int span, int order, std::span<double> values)
{
    formulas::Derive(knots.data(), span, order, values.data());
}

void New_B_Spline(std::span<const double> knots, double x, int order, int last, Basis_Values& basis)
{
    if (order < 1 || order > last || last > Max_Bounds || Place(last + order) >= knots.size())
        throw Fault{out_of_bounds};
    const int span = Interval_of(knots, x, order, last);
    basis.first = span - order + 1;
    std::array<double, Max_Bounds> work;
    formulas::Basis(knots.data(), x, order, span, work.data(),
                    [&basis](int d) { return basis.value[Place(d)].data(); });
}

void Boundary_Knots(Design_State& design, int Seg)
{
    Check_Segment(Seg);
    Motion_Group& m = design.motion;
    const Single end = Length(design, Seg);
    for (int i = 1; i <= m.Orders(Seg); ++i) {
        m.Knots(i, Seg) = 0.0;
        m.Knots(m.Number_of_Knots(Seg) - m.Orders(Seg) + i, Seg) = end;
    }
}

void Even_Knots(Design_State& design, int Seg)
{
    Check_Segment(Seg);
    Motion_Group& m = design.motion;
    for (int i = m.Orders(Seg) + 1; i <= m.Orders(Seg) + m.Interior_Knots(Seg); ++i)
        m.Knots(i, Seg) = (i - m.Orders(Seg)) * Length(design, Seg) / (m.Interior_Knots(Seg) + 1);
    m.EvenKnots(Seg) = true;
}

bool Knots_Fit_Table(const Design_State& design, int Seg)
{
    return Requested_Conditions(design, Seg) + design.motion.Orders(Seg) <= Max_Knots;
}

bool Knot_Count_Allowed(const Design_State& design, int Seg)
{
    const Motion_Group& m = design.motion;
    if (m.Interior_Knots(Seg) > Requested_Conditions(design, Seg)) {
        Warn("The number of interior knots must be no greater than the number of boundary conditions.");
        return false;
    }
    if (m.Interior_Knots(Seg) <= Max_Interior_Knots && Knots_Fit_Table(design, Seg))
        return true;
    Warn(
        "This program can only handle cases with 17 or fewer interior knots.\n"
        "Increase the order of your spline to reduce the number of interior knots required.\n"
        "Alternatively, you may go back to the boundary condition form and add more boundary conditions which will "
        "reduce the number of interior knots for a given spline order.");
    return false;
}

void Lay_Knots(Design_State& design, int Seg)
{
    Motion_Group& m = design.motion;
    const int conditions = Requested_Conditions(design, Seg);
    const int former_order = m.Orders(Seg);
    const int former_knots = m.Number_of_Knots(Seg);
    if (m.Orders(Seg) < Min_Spline_Order)
        m.Orders(Seg) = Default_Spline_Order;
    m.Orders(Seg) = std::min<int>(m.Orders(Seg), conditions);
    Count_Knots(design, Seg);
    if (!Knots_Fit_Table(design, Seg))
        return;
    const bool same_count = m.Orders(Seg) == former_order && m.Number_of_Knots(Seg) == former_knots;
    Boundary_Knots(design, Seg);
    if (m.EvenKnots(Seg) || !same_count || !Interior_Knots_Fit(design, Seg))
        Even_Knots(design, Seg);
}

void Lay_Even_Knots(Design_State& design, int Seg)
{
    Check_Segment(Seg);
    Count_Knots(design, Seg);
    if (Knots_Fit_Table(design, Seg)) {
        Boundary_Knots(design, Seg);
        Even_Knots(design, Seg);
    }
    design.motion.EvenKnots(Seg) = true;
    design.motion.Splines_Calculated(Seg) = false;
}

bool New_Spline(Design_State& design, int Seg)
{
    Check_Segment(Seg);
    Lay_Knots(design, Seg);
    return Knot_Count_Allowed(design, Seg);
}

bool Solve_Spline(const Design_State& design, int Seg, Spline_Curve& curve)
{
    Check_Segment(Seg);
    const Motion_Group& m = design.motion;
    const int n = m.Total_No_of_BCs(Seg);
    const int order = m.Orders(Seg);
    curve.order_ = order;
    curve.count_ = n;
    curve.knots_ = Knots_of(design, Seg);

    const auto work = std::make_unique<Work>();
    const Matrix_View A(work->matrix, n, n, Max_Bounds);
    for (int i = 1; i <= n; ++i) {
        const int d = To_Integer(m.Eq(i, Seg));
        Checked_Place(d, 0, Max_Spline_Derivative);
        const Single theta = m.Theta_Normalized(i, Seg) * m.Beta_Deg(Seg);
        New_B_Spline(curve.knots_, theta, order, n, work->basis);
        const std::span<double> row = A.Elements(i);
        std::ranges::fill(row, 0.0);
        for (int j = 0; j < order; ++j)
            row[Place(work->basis.first + j - 1)] = work->basis.value[Place(d)][Place(j)];
        // The user's unit to a derivative per degree. The degrees base is divided as the radians one is: meant.
        // Mechanics would take its conditions as they are; docs/theory.md, 3.2.
        double value = m.Boundary(i, Seg);
        if (m.Time_Base == 1)
            value /= Power(m.Shaft_speed, d);
        work->right_side[Place(i - 1)] = value / Power(Deg_per_Rad, d);
        work->orders[Place(i - 1)] = d;
    }
    work->eliminated = work->matrix;
    curve.C_ = work->right_side;
    int status = 0;
    SimQ(n, Matrix_View(work->eliminated, n, n, Max_Bounds), curve.C_, status);
    return status == 0 && !Digits_Lost(n, A, curve.C_, work->right_side, work->orders, Length(design, Seg));
}

void Spline_Curve::Basis(double theta, Basis_Values& basis) const
{
    New_B_Spline(knots_, theta, order_, count_, basis);
}

double Spline_Curve::Sum(const Basis_Values& basis, int d) const
{
    double sum = 0.0;
    for (int j = 0; j < order_; ++j)
        sum += C_[Place(basis.first + j - 1)] * basis.value[Place(d)][Place(j)];
    return sum;
}

double Spline_Curve::Sum_of_Tabulated(const Basis_Values& basis, int d) const
{
    double sum = 0.0;
    for (int j = 0; j < order_; ++j) {
        const Single tabulated = basis.value[Place(d)][Place(j)];
        sum += C_[Place(basis.first + j - 1)] * tabulated;
    }
    return sum;
}

std::size_t Spline_Curve::Store(const Spline_Run& run, std::size_t first, std::size_t count) const
{
    const Spline_Kernels& kernels = Kernels_in_Use<Spline_Kernels>();
    const auto theta = [&run](std::size_t p) { return static_cast<double>(p) * run.step; };
    std::size_t at = first;
    while (at < count) {
        const int span = Interval_of(knots_, theta(at), order_, count_);
        std::size_t until = count;
        if (span < count_) {
            until = at + 1;
            while (until < count && theta(until) < knots_[Place(span + 1)])
                ++until;
        }
        at = kernels.store({.knots = knots_.data(), .C = C_.data(), .order = order_, .span = span}, run, at, until);
        if (at < until)
            break;
    }
    return at;
}

Svajp Spline_Curve::At(double theta) const
{
    Basis_Values basis;
    Basis(theta, basis);
    double per_radian = 1.0;
    const auto next = [&](int d) {
        const double value = Sum(basis, d) * per_radian;
        per_radian *= Deg_per_Rad;
        return value;
    };
    Svajp point;
    point.S = next(0);
    point.V = next(1);
    point.A = next(2);
    point.J = next(3);
    point.P = next(4);
    return point;
}

Verdict Order_may_be(const Design_State& design, int Seg, double order)
{
    if (order < Min_Order(design, Seg))
        return {std::string(Order_Too_Low)};
    if (order > Max_Order(design, Seg))
        return {"Spline Order must be less than " + std::to_string(Max_Order(design, Seg) + 1)};
    return {};
}

Verdict Knot_may_be(const Design_State& design, int Seg, int knot, double value)
{
    const Motion_Group& m = design.motion;
    if (value < 0.0)
        return {"This value must be positive.  Please redo."};
    const bool ascending = (knot == 0 || value >= m.Knots(knot - 1, Seg)) &&
                           (knot >= m.Number_of_Knots(Seg) || value <= m.Knots(knot + 1, Seg));
    return ascending ? Verdict{} : Verdict{" Knot values must be in ascending order, left to right.  Please redo."};
}

int Min_Order(const Design_State& design, int Seg)
{
    return std::min(Min_Spline_Order, Requested_Conditions(design, Seg));
}

int Max_Order(const Design_State& design, int Seg)
{
    return Requested_Conditions(design, Seg);
}

std::string Order_Help(const Design_State& design, int Seg)
{
    return "Order must be an integer, and should be four or greater for practical cams.\n"
           "Order must also be <= the number of boundary conditions, which for this design is " +
           std::to_string(Requested_Conditions(design, Seg)) +
           ". \n"
           "The resulting spline functions will be continuous through derivatives up to order minus 2.\n"
           "Lower orders than the maximum allowed may give better results.\n"
           "Changing the order of the spline will default the interior knots to even spacing.\n"
           "Moving the interior knot locations can make significant improvements in the result.\n"
           "Interior knot locations must be in ascending order from left to right.\n"
           "You must hit 'Enter' or move off a (yellow) text box for your input value to be accepted.";
}

std::string Knot_Help()
{
    return "To move the interior knot locations you may:\n"
           "   1.  Type the new location of a knot in its yellow box at right of form, or\n"
           "   2.  Select a knot by clicking on the dot to the left of its yellow box,\n"
           "       or select it by 'shift-clicking' near the knot's vertical magenta line on any plot.\n"
           "   3.  Then, clicking on any plot where you want that knot to be will move it there.\n"
           "Note that knots must be in ascending order left to right.";
}

}  // namespace lobemax
