// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/polynomial.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <string>

#include "core/ladder.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/traps.h"
#include "motion/motion_programs.h"
#include "motion/segments.h"
#include "motion/spline.h"

namespace lobemax {

namespace {

constexpr int Last_Row = 9;  // of the table: local angle beta

// The values of Seg_Program that conditions belong to.
constexpr int polynomial_program = 6;
constexpr int spline_program = 11;

/// The rows of CalcData that the evaluation of a segment writes.
constexpr std::array written_rows{var::Angle, var::S, var::V, var::A, var::J, var::Ping, var::Ext_Force};

void Check_Segment(int Seg)
{
    Checked_Place(Seg, 1, Max_Segments);
}

void Warn(const std::string& text)
{
    Show_Message(text, Buttons::OK, Symbol::exclamation);
}

/// Whether the boxes of a row count: rows 1 to 8 need an angle.
bool Row_Counts(const Design_State& design, int Seg, int row)
{
    return row == 0 || row == Last_Row || !design.motion.T_boundary_cond(Seg, row).empty();
}

/// Runs visit(row, order, text) over the filled boxes in the order in which they become conditions: the first
/// row, the last, then the rows between.
template <class Visit>
void For_Each_Filled_Box(Design_State& design, int Seg, Visit&& visit)
{
    constexpr std::array<int, Last_Row + 1> rows{0, Last_Row, 1, 2, 3, 4, 5, 6, 7, 8};
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
    if (count >= Min_Bounds && count <= Max_Bounds)
        return true;
    Warn("Number of boundary conditions must be between 2 and " + std::to_string(Max_Bounds) + " - please re-enter");
    return false;
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
    // thousands in J and Ping: both meant.
    const double b = Power(m.Beta_Rad(segment), order);
    value = m.Time_Base == 1 ? b * value / Power(m.Shaft_speed, order) : b * value;
}

/// The system of a polynomial: allocated once a calculation.
struct Work {
    std::array<double, Max_Bounds * Max_Bounds> matrix;
    std::array<double, Max_Bounds * Max_Bounds> eliminated;
    std::array<double, Max_Bounds> right_side;
    std::array<double, Max_Bounds> solution;
    std::array<int, Max_Bounds> orders;
};

/// A polynomial's coefficients after 0 to 4 derivations by the power rule; factor(d)[p] belongs to x^(p - d).
struct Derived_Coefficients {
    int count;
    std::array<std::array<double, Max_Bounds>, Max_Bound_Order + 1> factor;

    explicit Derived_Coefficients(std::span<const double> solution) : count(static_cast<int>(solution.size()))
    {
        for (int d = 0; d <= Max_Bound_Order; ++d)
            for (int p = 0; p < count; ++p)
                At(d, p) = d == 0 ? solution[static_cast<std::size_t>(p)] : At(d - 1, p) * (p - d + 1);
    }
    double& At(int d, int p) { return factor[static_cast<std::size_t>(d)][static_cast<std::size_t>(p)]; }
    double Sum(int d, double x)
    {
        double sum = 0.0;
        for (int p = count - 1; p >= d; --p)
            sum = sum * x + At(d, p);
        return sum;
    }
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
    m.S_boundary_cond(Seg, Last_Row) = m.End_Value(Seg);
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

bool Set_No_of_Conditions(Design_State& design, int Seg, std::string_view text)
{
    bool accepted = false;
    Trap("txt_NoConds", [&] {
        Check_Segment(Seg);
        if (text.empty()) {
            accepted = true;
            return;
        }
        const double count = Val(design, text);
        if (!Count_Allowed(count))
            return;
        Motion_Group& m = design.motion;
        m.No_Conditions(Seg) = To_Integer(count);
        m.No_of_conditions(Seg) = std::to_string(int{m.No_Conditions(Seg)});
        accepted = true;
        if (Count_Filled_Boxes(design, Seg) > m.No_Conditions(Seg))
            Warn("You have input more boundary conditions than specified");
    });
    return accepted;
}

void Clear_Bounds(Design_State& design, int Seg)
{
    Check_Segment(Seg);
    for (int row = 0; row <= Last_Row; ++row) {
        for (int order = 0; order <= Max_Bound_Order; ++order)
            Bound_Text(design, Seg, row, order).clear();
        if (row != 0)
            design.motion.T_boundary_cond(Seg, row).clear();
    }
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

    m.Poly_Lift_Fix = m.S_boundary_cond(Seg, Last_Row).empty();
    int k = 0;
    bool stored = true;
    For_Each_Filled_Box(design, Seg, [&](int row, int order, const std::string& text) {
        ++k;
        if (k > Max_Bounds)
            return;  // the ten rows hold 50 boxes: the count alone goes on
        m.BC(k, Seg) = Val(design, text);
        if (row == 0 || row == Last_Row) {
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
    double scale = 0.0;
    for (int i = 1; i <= n; ++i) {
        const std::size_t place = static_cast<std::size_t>(i - 1);
        const double weight = std::pow(length / n, orders[place]);
        const std::span<const double> row = A.Elements(i);
        double terms = 0.0;
        for (std::size_t j = 0; j < static_cast<std::size_t>(n); ++j)
            terms += std::abs(row[j] * solution[j]);
        if (!std::isfinite(terms))
            return true;
        largest_terms = std::max(largest_terms, terms * weight);
        scale = std::max(scale, std::abs(right_side[place]) * weight);
    }
    return largest_terms * std::numeric_limits<double>::epsilon() > allowed * scale;
}

bool CalPoly(Design_State& design, int Seg)
{
    Check_Segment(Seg);
    Motion_Group& m = design.motion;
    m.Seg = Seg;
    const int n = m.Total_No_of_BCs(Seg);
    if (n != Requested_Conditions(design, Seg)) {
        Warn("Something is wrong - no. of boundary conditions doesn't match no. of equations ");
        m.Poly_OK = false;
        return false;
    }

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
    work->solution = work->right_side;
    int status = 0;
    SimQ(n, Matrix_View(work->eliminated, n, n, Max_Bounds), work->solution, status);
    if (status != 0 || Digits_Lost(n, A, work->solution, work->right_side, work->orders, 1.0)) {
        Warn(
            " There has been an error in the calculation of your polynomial coefficients"
            " - Check your boundary condition data");
        m.Poly_OK = false;
        return false;
    }
    Points_Keeper keeper(design);
    Eval_Poly(design, Seg, std::span<const double>(work->solution).first(static_cast<std::size_t>(n)));
    keeper.Accept();
    return true;
}

void Eval_Poly(Design_State& design, int Seg, std::span<const double> solution)
{
    Check_Segment(Seg);
    Motion_Group& m = design.motion;
    m.Seg = Seg;
    Derived_Coefficients c(solution);
    for (int j = 1; j <= c.count; ++j) {
        m.Coefficient(j, Seg) = solution[static_cast<std::size_t>(j - 1)];
        m.Thetanorm(j, Seg) = m.Theta_Normalized(j, Seg);
        m.Equation(j, Seg) = m.Eq(j, Seg);
    }
    Load_Beta(design);
    const double b = m.Beta_Rad(Seg);
    const Single per_b = 1.0 / b;
    const Single per_b2 = 1.0 / (b * b);
    const Single per_b3 = 1.0 / (b * b * b);
    const Single per_b4 = 1.0 / (b * b * b * b);

    const int last = To_Integer(m.Beta_Deg(Seg) / m.Deltatheta);
    Single theta = 0.0;
    for (int n = 0; n <= last; ++n) {
        const Single x = theta / m.Beta_Deg(Seg);
        m.Seg_S = c.Sum(0, x);
        m.Seg_V = c.Sum(1, x) * per_b;
        m.Seg_A = c.Sum(2, x) * per_b2;
        m.Seg_J = c.Sum(3, x) * per_b3;
        m.Seg_P = c.Sum(4, x) * per_b4;
        Store_Point(design, theta);
        theta += m.Deltatheta;
    }
    Store_Segment_Ends(design);
}

bool Calc_Polynomial(Design_State& design, int Seg)
{
    bool solved = false;
    Trap("CalPoly", [&] {
        Check_Segment(Seg);
        design.motion.Polydone(Seg) = false;
        design.motion.Base_Shift(Seg) = 0.0;  // the S values are positions, as typed
        Ask_Boundaries(design, Seg);
        solved = Read_Bounds(design, Seg) && CalPoly(design, Seg);
        if (solved)
            Update_Liftmax(design);
        design.motion.Polydone(Seg) = solved;
    });
    design.motion.Poly_OK = solved;
    return solved;
}

bool Calc_Bounds_Segment(Design_State& design, int Seg)
{
    Check_Segment(Seg);
    switch (design.motion.Seg_Program(Seg)) {
    case polynomial_program:
        return Calc_Polynomial(design, Seg);
    case spline_program:
        return Calc_Spline(design, Seg);
    default:
        Warn("Something is wrong - Data are corrupted");
        design.motion.Poly_OK = false;
        return false;
    }
}

Points_Keeper::Points_Keeper(Design_State& design)
    : design_(design),
      ends_(design.motion.Firstlast),
      lift_(design.motion.Lift),
      force_calculated_(design.flags.Ext_Force_Calc)
{
    Results_Group& r = design.results;
    const std::size_t points = static_cast<std::size_t>(r.CalcData.Last_Point() + 1);
    rows_.reserve(points * written_rows.size());
    for (const int row : written_rows) {
        const auto values = r.CalcData.Points(row);
        rows_.insert(rows_.end(), values.begin(), values.end());
    }
    const auto force = r.Ext_Force_Table.Points();
    force_.assign(force.begin(), force.end());
}

Points_Keeper::~Points_Keeper()
{
    if (accepted_)
        return;
    Results_Group& r = design_.results;
    const std::size_t points = static_cast<std::size_t>(r.CalcData.Last_Point() + 1);
    auto kept = rows_.cbegin();
    for (const int row : written_rows) {
        std::copy_n(kept, points, r.CalcData.Points(row).begin());
        kept += static_cast<std::ptrdiff_t>(points);
    }
    std::ranges::copy(force_, r.Ext_Force_Table.Points().begin());
    design_.motion.Firstlast = ends_;
    design_.motion.Lift = lift_;
    if (!force_calculated_)
        Apply(design_, Event::external_force_dropped);
}

}  // namespace lobemax
