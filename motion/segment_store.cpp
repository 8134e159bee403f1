// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/segment_store.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/ladder.h"
#include "core/lanes.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/points.h"
#include "core/text.h"
#include "core/traps.h"
#include "motion/motion_programs.h"

namespace lobemax {

namespace {

/// The rows of CalcData that the evaluation of a segment writes.
constexpr std::array written_rows{var::Angle, var::S, var::V, var::A, var::J, var::Ping, var::Ext_Force};

void Warn(const std::string& text)
{
    Show_Message(text, Buttons::OK, Symbol::exclamation);
}

/// Keeps what the evaluation of a segment given by conditions writes, and puts it back unless the evaluation went
/// through.
class Points_Keeper {
public:
    Points_Keeper(Design_State& design, int Seg);
    ~Points_Keeper();
    Points_Keeper(const Points_Keeper&) = delete;
    Points_Keeper& operator=(const Points_Keeper&) = delete;

    /// The new points stay.
    void Accept() noexcept { accepted_ = true; }

private:
    /// The points that the segment may write, of each row.
    std::array<std::span<Single>, written_rows.size() + 1> Written() const;

    Design_State& design_;
    std::size_t first_;
    std::size_t count_;
    std::vector<float> kept_;
    decltype(Motion_Group::Firstlast) ends_;
    Single lift_;
    Flag force_calculated_;
    bool accepted_ = false;
};

Points_Keeper::Points_Keeper(Design_State& design, int Seg)
    : design_(design),
      ends_(design.motion.Firstlast),
      lift_(design.motion.Lift),
      force_calculated_(design.flags.Ext_Force_Calc)
{
    constexpr double slack = 2.0;  // points; more than the rounding of angles and steps moves one
    const Motion_Group& m = design.motion;
    const double points = design.results.CalcData.Last_Point() + 1;
    double first = 0.0;
    double end = points;
    if (m.Deltatheta > 0.0) {
        first = std::clamp(std::floor(m.Shift(Seg) / m.Deltatheta) - slack, 0.0, points);
        end = std::clamp((m.Shift(Seg) + m.Beta_Deg(Seg)) / m.Deltatheta + slack + 1.0, first, points);
    }
    first_ = static_cast<std::size_t>(first);
    count_ = static_cast<std::size_t>(end - first);
    kept_.resize(count_ * (written_rows.size() + 1));
    auto kept = kept_.begin();
    for (const auto& values : Written())
        kept = std::copy_n(Bits(values), count_, kept);
}

Points_Keeper::~Points_Keeper()
{
    if (accepted_)
        return;
    auto kept = kept_.cbegin();
    for (const auto& values : Written()) {
        std::copy_n(kept, count_, Bits(values));
        kept += static_cast<std::ptrdiff_t>(count_);
    }
    design_.motion.Firstlast = ends_;
    design_.motion.Lift = lift_;
    if (!force_calculated_)
        Apply(design_, Event::external_force_dropped);
}

std::array<std::span<Single>, written_rows.size() + 1> Points_Keeper::Written() const
{
    Results_Group& r = design_.results;
    std::array<std::span<Single>, written_rows.size() + 1> written;
    for (std::size_t k = 0; k < written_rows.size(); ++k)
        written[k] = r.CalcData.Points(written_rows[k]).subspan(first_, count_);
    written.back() = r.Ext_Force_Table.Points().subspan(first_, count_);
    return written;
}

/// Makes the point the working point, each value rounded to 32 bits.
void Set_Working_Point(Design_State& design, const Svajp& point)
{
    Motion_Group& m = design.motion;
    m.Seg_S = point.S;
    m.Seg_V = point.V;
    m.Seg_A = point.A;
    m.Seg_J = point.J;
    m.Seg_P = point.P;
}

/// Turns the working point of a rise into that of the fall: docs/theory.md, (14). Seg_P is left alone, and meant: a
/// mirrored fall keeps the rise's sign of Ping, where mechanics turns it.
void Fall_Mirror(Design_State& design)
{
    Motion_Group& m = design.motion;
    m.Seg_S = m.Lift - m.Seg_S;
    m.Seg_V = -m.Seg_V;
    m.Seg_A = -m.Seg_A;
    m.Seg_J = -m.Seg_J;
}

std::size_t Order(int d)
{
    return static_cast<std::size_t>(d);
}

/// What a derivative per degree is multiplied by for storing it: variables 1, 2, 3, 4 and 17. docs/theory.md, 3.2.
std::array<double, Max_Spline_Derivative + 1> Store_Scales(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    std::array<double, Max_Spline_Derivative + 1> scale{1.0};
    for (int d = 1; d <= Max_Spline_Derivative; ++d) {
        const double per_radian = Power(Deg_per_Rad, d);
        switch (m.Time_Base) {
        case 1:  // per second; jerk and ping are kept in thousands
            scale[Order(d)] = Power(m.Shaft_speed * Deg_per_Rad, d) / (d >= 3 ? 1000.0 : 1.0);
            break;
        case 2:  // per degree: the one factor that all derivatives share, meant; see Store_Point
            scale[Order(d)] = per_radian * PI / 180.0;
            break;
        default:
            scale[Order(d)] = per_radian;
            break;
        }
    }
    return scale;
}

/// Whether the time base is one of those that V to Ping are stored in.
bool Has_Derivatives(const Motion_Group& m)
{
    return m.Time_Base >= 1 && m.Time_Base <= 3;
}

Table_Units Units_of_Table(const Motion_Group& m)
{
    return {.Time_Base = m.Time_Base,
            .Shaft_speed = m.Shaft_speed,
            .Shaft_Speed_Sq = m.Shaft_Speed_Sq,
            .Shaft_Speed_Cu = m.Shaft_Speed_Cu};
}

/// The table's point at which the segment at work starts, if its points, a step from one to the next by the sum of
/// their 32-bit angles, are neighbours in the table: where the step is one that no sum of steps is rounded by, and the
/// segment does not start so near the middle between two points that the rounding of an angle decides to which one a
/// point goes.
std::optional<int> First_Neighbour(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    if (std::ranges::find(Steps, double{m.Deltatheta}) == Steps.end())
        return {};
    const double last = design.results.CalcData.Last_Point();
    const double place = m.Shift(m.Seg) / m.Deltatheta;
    const double nearest = std::nearbyint(place);
    const double rounding = (last + 1) * 0x1p-23;  // of a 32-bit angle within the table, points
    if (!(nearest >= 0.0 && nearest <= last) || std::abs(place - nearest) + rounding >= 0.5)
        return {};
    return static_cast<int>(nearest);
}

/// The points of the segment at work as a run of neighbours in the table, which kernels store.
class Run_of_Points {
public:
    /// @param first  point of the table, or none: there is no run
    Run_of_Points(Design_State& design, std::optional<int> first);

    bool Exists() const { return room_ > 0; }

    /// Points from local angle 0 to the last step within beta, or more than the table has room for.
    std::size_t Count_to(double beta) const;

    /// The rows from the first point on: of a curve that is asked at theta / beta, and of a spline.
    Segment_Run Rows(double beta, bool mirrored) const;
    Spline_Run Rows_of_Spline() const;

    /// Stores a segment of so many points: by the kernel within the table, by point(p) where the kernel leaves one, and
    /// the last, which stays the working point.
    template <class Kernel, class Point>
    void Store(std::size_t count, const Kernel& kernel, const Point& point) const;

private:
    std::span<Single> Row_of(int variable) const { return design_.results.CalcData.Points(variable).subspan(first_); }
    void Copy_Force(std::size_t first, std::size_t end) const;

    Design_State& design_;
    std::size_t first_ = 0;  // point of the table
    std::size_t room_ = 0;   // points from there to the table's end
};

Run_of_Points::Run_of_Points(Design_State& design, std::optional<int> first) : design_(design)
{
    const Results_Group& r = design.results;
    int last = r.CalcData.Last_Point();
    if (!design.motion.Motion)
        last = std::min(last, r.Ext_Force_Table.Last());
    if (!Has_Derivatives(design.motion) || !first || *first < 0 || *first > last)
        return;
    first_ = Order(*first);
    room_ = Order(last - *first + 1);
}

std::size_t Run_of_Points::Count_to(double beta) const
{
    const double last = std::floor(beta / design_.motion.Deltatheta);
    return last < 0.0 ? 0 : static_cast<std::size_t>(std::min(last, static_cast<double>(room_))) + 1;
}

Segment_Run Run_of_Points::Rows(double beta, bool mirrored) const
{
    const Motion_Group& m = design_.motion;
    return {.place = {.step = m.Deltatheta,
                      .beta = beta,
                      .shift = m.Shift(m.Seg),
                      .base = m.Base_Shift(m.Seg),
                      .lift = m.Lift,
                      .mirrored = mirrored,
                      .units = Units_of_Table(m)},
            .angle = Bits(Row_of(var::Angle)),
            .S = Bits(Row_of(var::S)),
            .V = Bits(Row_of(var::V)),
            .A = Bits(Row_of(var::A)),
            .J = Bits(Row_of(var::J)),
            .P = Bits(Row_of(var::Ping))};
}

Spline_Run Run_of_Points::Rows_of_Spline() const
{
    const Motion_Group& m = design_.motion;
    const auto scale = Store_Scales(design_);
    return {.step = m.Deltatheta,
            .shift = m.Shift(m.Seg),
            .scale = {scale[0], scale[1], scale[2], scale[3], scale[4]},
            .angle = Bits(Row_of(var::Angle)),
            .row = {Bits(Row_of(var::S)), Bits(Row_of(var::V)), Bits(Row_of(var::A)), Bits(Row_of(var::J)),
                    Bits(Row_of(var::Ping))}};
}

/// A force function's points go to its table as well.
void Run_of_Points::Copy_Force(std::size_t first, std::size_t end) const
{
    if (design_.motion.Motion || first >= end)
        return;
    const auto stored = Row_of(var::S).subspan(first, end - first);
    std::ranges::copy(stored, design_.results.Ext_Force_Table.Points().subspan(first_ + first).begin());
    std::ranges::copy(stored, Row_of(var::Ext_Force).subspan(first).begin());
    Reach(design_, Mark::external_force);
}

template <class Kernel, class Point>
void Run_of_Points::Store(std::size_t count, const Kernel& kernel, const Point& point) const
{
    if (count == 0)
        return;
    const std::size_t within = std::min(count - 1, room_);
    const auto by_kernel = [&](std::size_t first, std::size_t end) {
        const std::size_t stored = kernel(first, end);
        Copy_Force(first, stored);
        return stored;
    };
    if (within > 0)
        Run_Points(within, by_kernel, point);
    for (std::size_t p = within; p < count; ++p)
        point(p);
}

/// Puts the points of a spline into the table.
class Spline_Store {
public:
    explicit Spline_Store(Design_State& design)
        : design_(design),
          start_(Point_at(design, design.motion.Shift(design.motion.Seg))),
          derivatives_(Has_Derivatives(design.motion) ? Max_Spline_Derivative : 0),
          scale_(Store_Scales(design))
    {
    }

    /// The table's point at the start of the segment.
    int Start() const { return start_; }

    /// Point p of the segment at work.
    void Point(const Spline_Curve& spline, int p)
    {
        constexpr std::array<int, Max_Spline_Derivative + 1> variables{var::S, var::V, var::A, var::J, var::Ping};
        const Motion_Group& m = design_.motion;
        Results_Group& r = design_.results;
        const double theta = p * m.Deltatheta;
        const int i = start_ + p;
        spline.Basis(theta, basis_);
        r.CalcData(var::Angle, i) = m.Shift(m.Seg) + theta;
        for (int d = 0; d <= derivatives_; ++d)
            r.CalcData(variables[Order(d)], i) = spline.Sum_of_Tabulated(basis_, d) * scale_[Order(d)];
        if (!m.Motion) {  // the spline is a force function
            r.Ext_Force_Table(i) = r.CalcData(var::S, i);
            r.CalcData(var::Ext_Force, i) = r.Ext_Force_Table(i);
            Reach(design_, Mark::external_force);
        }
    }

private:
    Design_State& design_;
    int start_;
    int derivatives_;
    std::array<double, Max_Spline_Derivative + 1> scale_;
    Basis_Values basis_;
};

/// Points 0..last of a spline over the segment at work.
void Store_Spline(Design_State& design, const Spline_Curve& spline, int last)
{
    Spline_Store store(design);
    const Run_of_Points points(design, store.Start());
    if (!points.Exists()) {
        for (int p = 0; p <= last; ++p)
            store.Point(spline, p);
        return;
    }
    const Spline_Run run = points.Rows_of_Spline();
    points.Store(
        Order(std::max(last + 1, 0)), [&](std::size_t first, std::size_t end) { return spline.Store(run, first, end); },
        [&](std::size_t p) { store.Point(spline, static_cast<int>(p)); });
}

/// Stores a law over the segment at work; Lift is its lift.
void Store_Law(Design_State& design, const Segment_Law& law)
{
    const int segment = design.motion.Seg;
    Store_Segment(design, segment, {law, design.motion.Beta_Deg(segment)});
}

/// What a law of powers of the caller's knows of the segment at work.
Law_Segment Segment_at_Work(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    return Segment_of_Law(design, m.Seg, m.Lift);
}

/// A law's bare number takes the place of the list text, once all its points stand: meant.
void Replace_Function(Design_State& design, std::string_view text)
{
    design.motion.Function(design.motion.Seg) = text;
}

/// How the law of a selector runs: the name that it reports a fault under (none: the caller reports), and what takes
/// the place of Function (none: it stays).
struct Run_Rule {
    int Seg_Program;
    std::string_view routine;
    std::string_view Function;
};
constexpr std::array run_rules{
    Run_Rule{selector::poly_345, "Poly_345", "5"},
    Run_Rule{selector::poly_3456, "Poly_3456", ""},
    Run_Rule{selector::poly_4567, "Poly_4567", "7"},
    Run_Rule{selector::poly_11, "Poly_11", "11"},
    Run_Rule{selector::berzak_d, "Berzak_D", ""},
    Run_Rule{selector::berzak_e, "Berzak_E", ""},
    Run_Rule{selector::freudenstein, "Freudenstein 1-3", ""},
    Run_Rule{selector::gutman, "GutmanF3", ""},
};

/// Runs the law that the segment's selector names; false when it reported a fault under its own name.
bool Run_Law(Design_State& design, int Seg)
{
    const int Seg_Program = design.motion.Seg_Program(Seg);
    const auto thoren = [&](const std::array<double, 4>& n) { return Thoren(design, n[0], n[1], n[2], n[3]); };
    switch (Seg_Program) {
    case selector::dwell:
        Dwell(design, design.motion.Lift);
        return true;
    case selector::dudley:
        return Dudley(design, law_forms::dudley_power);
    case selector::stoddard:
        return thoren(law_forms::stoddard_powers);
    case selector::thoren:
        return thoren(law_forms::thoren_powers);
    default:
        break;
    }
    const auto store = [&] { Store_Law(design, Law_of_Segment(design, Seg, design.motion.Lift)); };
    const auto rule = std::ranges::find(run_rules, Seg_Program, &Run_Rule::Seg_Program);
    if (rule == run_rules.end()) {
        store();
        return true;
    }
    return Trap(rule->routine, [&] {
        store();
        if (!rule->Function.empty())
            Replace_Function(design, rule->Function);
    });
}

}  // namespace

void Load_Beta(Design_State& design)
{
    Motion_Group& m = design.motion;
    const double b = m.Beta_Rad(m.Seg);
    m.Beta_Sq = b * b;
    m.Beta_Cu = b * b * b;
}

void Store_Point(Design_State& design, Single theta)
{
    Motion_Group& m = design.motion;
    Results_Group& r = design.results;
    const Single angle = theta + m.Shift(m.Seg);
    const int i = Point_at(design, angle);
    Table<Single>& data = r.CalcData;

    data(var::Angle, i) = angle;
    data(var::S, i) = m.Seg_S + m.Base_Shift(m.Seg);
    if (Has_Derivatives(m)) {
        const Svajp stored =
            Units_of_Table(m)(Svajp{.S = m.Seg_S, .V = m.Seg_V, .A = m.Seg_A, .J = m.Seg_J, .P = m.Seg_P});
        data(var::V, i) = stored.V;
        data(var::A, i) = stored.A;
        data(var::J, i) = stored.J;
        data(var::Ping, i) = stored.P;
    }
    if (!m.Motion) {
        r.Ext_Force_Table(i) = m.Seg_S + m.Base_Shift(m.Seg);
        data(var::Ext_Force, i) = r.Ext_Force_Table(i);
        Reach(design, Mark::external_force);
    }
}

void Store_Segment(Design_State& design, int Seg, const Segment_Curve& curve)
{
    Check_Segment(Seg);
    if (!curve.Has_Points())
        return;
    Motion_Group& m = design.motion;
    m.Seg = Seg;
    Load_Beta(design);
    const Single beta = m.Beta_Deg(Seg);
    const Segment_Law* const law = curve.Law();
    const int last = law != nullptr ? 0 : int{Point_at(design, beta)};
    if (const Spline_Curve* const spline = curve.Spline()) {
        Store_Spline(design, *spline, last);
        return;
    }
    const bool mirrored = law != nullptr && law->Mirrored();
    const auto store_point = [&](Single theta) {
        const Single x = theta / beta;  // a beta of zero ends here: 0 / 0 is no Single
        Set_Working_Point(design, law != nullptr ? law->Before_Mirror(x, theta) : curve.Polynomial()->At(x));
        if (mirrored)
            Fall_Mirror(design);
        Store_Point(design, theta);
    };
    const Run_of_Points points(design, First_Neighbour(design));
    if (points.Exists()) {
        const Segment_Run run = points.Rows(beta, mirrored);
        const std::size_t count = law != nullptr ? points.Count_to(beta) : Order(std::max(last + 1, 0));
        points.Store(
            count,
            [&](std::size_t first, std::size_t end) {
                return law != nullptr ? law->Store(run, first, end) : curve.Polynomial()->Store(run, first, end);
            },
            [&](std::size_t p) { store_point(static_cast<double>(p) * m.Deltatheta); });
        return;
    }
    Single theta;
    for (int p = 0; law != nullptr ? theta <= beta : p <= last; ++p, theta += m.Deltatheta)
        store_point(theta);
}

void Store_Segment_Ends(Design_State& design)
{
    Motion_Group& m = design.motion;
    const Table<Single>& data = design.results.CalcData;
    const int segment = m.Seg;
    const bool dwell = m.Rise_Fall_Dwell(segment) == "D";
    const double inside = dwell ? 1.0 : 0.0;
    const int i0 = To_Integer(m.Shift(segment) / m.Deltatheta + inside);
    const int i1 = To_Integer((m.Beta_Deg(segment) + m.Shift(segment)) / m.Deltatheta - inside);
    for (int d = 0; d <= 3; ++d) {
        m.Firstlast(segment, 1, d) = data(d + 1, i0);
        m.Firstlast(segment, 2, d) = data(d + 1, i1);
    }
    if (!dwell && m.Poly_Lift_Fix)
        m.Lift = m.Firstlast(segment, 2, 0);
}

void Update_Liftmax(Design_State& design)
{
    Single largest;
    Single smallest;
    MaxMin1(design.results.CalcData.Points(var::S), 1, design.motion.Max_Data_Points_used, largest, smallest);
    design.motion.Liftmax = largest - smallest;
}

bool Run_Motion_Program(Design_State& design, int Seg)
{
    Check_Segment(Seg);
    design.motion.Seg = Seg;
    if (!Run_Law(design, Seg))
        return false;
    Store_Segment_Ends(design);
    Update_Liftmax(design);
    return true;
}

bool Dudley(Design_State& design, Single p)
{
    return Trap("Dudley", [&] {
        Store_Law(design, Segment_Law::Dudley(Segment_at_Work(design), p));
        Replace_Function(design, Shortest(Single(std::max<double>(p, 4.0) + 4.0)));
    });
}

bool Thoren(Design_State& design, Single p, Single q, Single r, Single s)
{
    return Trap("Thoren", [&] {
        Store_Law(design, Segment_Law::Thoren(Segment_at_Work(design), p, q, r, s));
        Replace_Function(design, Shortest(r));
    });
}

void Dwell(Design_State& design, Single value)
{
    design.motion.Total_Displacement(design.motion.Seg) = value;
    Store_Law(design, Segment_Law::Dwell(value));
}

bool CalPoly(Design_State& design, int Seg)
{
    Check_Segment(Seg);
    Motion_Group& m = design.motion;
    m.Seg = Seg;
    if (m.Total_No_of_BCs(Seg) != Requested_Conditions(design, Seg)) {
        Warn("Something is wrong - no. of boundary conditions doesn't match no. of equations ");
        m.Poly_OK = false;
        return false;
    }
    Polynomial_Solution solution;
    if (!Solve_Polynomial(design, Seg, solution)) {
        Warn(
            " There has been an error in the calculation of your polynomial coefficients"
            " - Check your boundary condition data");
        m.Poly_OK = false;
        return false;
    }
    Points_Keeper keeper(design, Seg);
    for (int j = 1; j <= solution.count; ++j) {
        m.Coefficient(j, Seg) = solution.C[static_cast<std::size_t>(j - 1)];
        m.Thetanorm(j, Seg) = m.Theta_Normalized(j, Seg);
        m.Equation(j, Seg) = m.Eq(j, Seg);
    }
    Load_Beta(design);  // before a beta of zero faults
    Store_Segment(design, Seg, {Polynomial_Curve(solution, m.Beta_Rad(Seg)), m.Beta_Deg(Seg)});
    Store_Segment_Ends(design);
    keeper.Accept();
    return true;
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

bool CalcSplines(Design_State& design, int Seg)
{
    Check_Segment(Seg);
    design.motion.Seg = Seg;
    Load_Beta(design);
    Spline_Curve spline;
    if (!Solve_Spline(design, Seg, spline))
        return false;
    Points_Keeper keeper(design, Seg);
    Store_Segment(design, Seg, {spline, design.motion.Beta_Deg(Seg)});
    Store_Segment_Ends(design);
    keeper.Accept();
    return true;
}

bool Calc_Spline(Design_State& design, int Seg)
{
    bool solved = false;
    Trap("CalcSplines", [&] {
        Check_Segment(Seg);
        Motion_Group& m = design.motion;
        m.Splines_Calculated(Seg) = false;
        m.Poly_OK = false;
        m.Base_Shift(Seg) = 0.0;  // the S values are positions, as typed
        Ask_Boundaries(design, Seg);
        if (!Read_Bounds(design, Seg))
            return;
        m.No_Conditions(Seg) = m.Total_No_of_BCs(Seg);
        m.No_of_conditions(Seg) = std::to_string(int{m.No_Conditions(Seg)});
        if (!New_Spline(design, Seg))
            return;
        if (!CalcSplines(design, Seg)) {
            Warn(
                "There has been an error in the calculation of the \n"
                "spline data with your choice of knot locations.\n"
                "Please review your data and try again.");
            return;
        }
        Update_Liftmax(design);
        m.Splines_Calculated(Seg) = solved = true;
    });
    return solved;
}

bool Calc_Bounds_Segment(Design_State& design, int Seg)
{
    Check_Segment(Seg);
    switch (design.motion.Seg_Program(Seg)) {
    case selector::polynomial:
        return Calc_Polynomial(design, Seg);
    case selector::spline:
        return Calc_Spline(design, Seg);
    default:
        Warn("Something is wrong - Data are corrupted");
        design.motion.Poly_OK = false;
        return false;
    }
}

}  // namespace lobemax
