// SPDX-License-Identifier: GPL-3.0-or-later
#include "linkage/linkage_kinematics.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>
#include <vector>

#include "camgeom/arm.h"
#include "core/ladder.h"
#include "core/lanes.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/variables.h"

namespace lobemax {

static_assert(formulas::link_rows == Max_Links + 1);

bool Six_Links(const Design_State& design)
{
    return design.linkage.Links > 4;
}

bool Ends_in_Slider(const Design_State& design)
{
    return design.linkage.Linkage_Type > 1;
}

bool Is_Stephenson(const Design_State& design)
{
    return Six_Links(design) && !Ends_in_Slider(design) && design.linkage.Stage_Mode == "S";
}

int Last_Link(const Design_State& design)
{
    return Six_Links(design) ? 6 : 4;
}

int Link_of_D(const Design_State& design)
{
    return Is_Stephenson(design) ? 3 : 4;
}

namespace {

Train_Kind Kind_of(const Design_State& design)
{
    if (Ends_in_Slider(design))
        return Six_Links(design) ? Train_Kind::six_link_slider : Train_Kind::fourbar_slider;
    if (!Six_Links(design))
        return Train_Kind::fourbar;
    return Is_Stephenson(design) ? Train_Kind::stephenson : Train_Kind::watt;
}

/// A line from one point to another, by its length and its direction, radians.
struct Straight {
    double length;
    double direction;

    Straight(const formulas::Vector<double>& from, const formulas::Vector<double>& to)
        : length(std::hypot(to.x - from.x, to.y - from.y)), direction(Atan2(to.x - from.x, to.y - from.y))
    {
    }
};

/// How far the axis through S3 lies from the arm's pivot.
double Offset_of_Axis(const Design_State& design, const Circular<double>& axis)
{
    const double x = design.linkage.S3x - design.cam.ArmX;
    const double y = design.linkage.S3y - design.cam.ArmY;
    return y * axis.cos - x * axis.sin;
}

double Sign_of(int assembly)
{
    return assembly < 0 ? -1.0 : 1.0;
}

formulas::Train Train_of(const Design_State& design, Train_Kind kind)
{
    const Linkage_Group& k = design.linkage;
    formulas::Train t{};
    t.pivot = {design.cam.ArmX, design.cam.ArmY};
    t.O4 = {k.O4x, k.O4y};
    t.O6 = {k.O6x, k.O6y};
    const Straight ground(t.pivot, t.O4);
    const Straight second(t.O4, t.O6);
    const double delta4 = k.Delta4 * Rad_per_Deg;
    const double slider_angle = k.Global_Slider_angle_deg * Rad_per_Deg;
    const double sign1 = Sign_of(k.Assemflag1);
    const double sign2 = Sign_of(k.Assemflag2);
    t.L1 = ground.length;
    t.L2 = k.Link_2;
    t.L4 = k.Link_4;
    t.L4a = k.Link_4a;
    t.L6 = k.Link_6;
    t.delta4_degrees = k.Delta4;
    t.theta1 = Sin_Cos(ground.direction);
    t.D_on_link = Sin_Cos(ground.direction + delta4);
    t.axis = Sin_Cos(slider_angle);
    const Circular<double> half_turn = Sin_Cos(PI);
    if (kind != Train_Kind::fourbar_slider)
        t.first = formulas::Fourbar_Stage::Of(t.L1, t.L2, k.Link_3, t.L4, sign1);
    switch (kind) {
    case Train_Kind::watt:
        t.second = formulas::Fourbar_Stage::Of(second.length, t.L4a, k.Link_5, t.L6, sign2);
        t.second_input = Sin_Cos(delta4 - (second.direction - ground.direction));
        t.theta1b = Sin_Cos(second.direction);
        break;
    case Train_Kind::stephenson:
        t.dyad = {.L5 = k.Link_5, .L6 = t.L6, .sign = sign2, .O6 = t.O6, .theta1b = second.direction};
        break;
    case Train_Kind::six_link_slider:
        t.slider = {.input = t.L4a, .coupler = k.Link_5, .offset = k.Offset6, .sign = sign2, .half_turn = half_turn};
        t.slider_input = Sin_Cos(ground.direction + delta4 - slider_angle);
        break;
    case Train_Kind::fourbar_slider:
        t.slider = {.input = t.L2,
                    .coupler = k.Link_3,
                    .offset = Offset_of_Axis(design, t.axis),
                    .sign = sign1,
                    .half_turn = half_turn};
        t.slider_input = Sin_Cos(ground.direction - slider_angle);
        break;
    case Train_Kind::fourbar:
        break;
    }
    return t;
}

formulas::Pose<double> Pose_of(const formulas::Train& train, Train_Kind kind, const formulas::Link<double>& input)
{
    switch (kind) {
    case Train_Kind::watt:
        return train.Watt(input);
    case Train_Kind::stephenson:
        return train.Stephenson(input);
    case Train_Kind::fourbar_slider:
        return train.Four_Slider(input);
    case Train_Kind::six_link_slider:
        return train.Six_Slider(input);
    case Train_Kind::fourbar:
        break;
    }
    return train.Fourbar(input);
}

}  // namespace

Linkage_Train::Linkage_Train(const Design_State& design)
    : kind_(Kind_of(design)),
      theta1_(Atan2(design.linkage.O4x - design.cam.ArmX, design.linkage.O4y - design.cam.ArmY)),
      train_(Train_of(design, kind_))
{
}

Train_Pose Linkage_Train::At(const Link_Input& input) const
{
    const formulas::Link<double> two{
        .theta = input.theta2, .omega = input.omega2, .alpha = input.alpha2, .direction = Sin_Cos(input.theta2)};
    const bool slides_at_once = kind_ == Train_Kind::fourbar_slider;
    Train_Pose pose;
    pose.link[2] = {two.theta, two.omega, two.alpha};
    if (!slides_at_once && !train_.first.Connects(two.direction)) {
        pose.fails_at = 1;
        return pose;
    }
    const formulas::Pose<double> found = Pose_of(train_, kind_, two);
    const auto take = [&](int first, int last) {
        for (int link = first; link <= last; ++link) {
            const formulas::Link<double>& from = found.link[link];
            pose.link[static_cast<std::size_t>(link)] = {from.theta, from.omega, from.alpha};
        }
    };
    if (!found.first_connects)
        pose.fails_at = 1;
    else if (!found.connects)
        pose.fails_at = 2;
    pose.slider_fails =
        slides_at_once ? pose.fails_at == 1 : kind_ == Train_Kind::six_link_slider && pose.fails_at == 2;
    if (pose.fails_at != 1)
        take(3, 4);
    if (pose.Connects())
        take(5, 6);
    pose.dead_centre = pose.Connects() && !found.moves;
    for (std::size_t p = 0; p < pose.point.size(); ++p)
        pose.point[p] = {found.point[p].x, found.point[p].y};
    return pose;
}

double Arm_Angle_at_Rest(Design_State& design)
{
    const Cam_Group& c = design.cam;
    Flags_Group& f = design.flags;
    f.Calc_Error = false;
    f.Math_Error = false;
    double angle = 0.0;
    if (c.Camtype == "Radial") {
        Arm_Geometry(design);
        angle = Atan2(c.Arm_Start_X - c.ArmX, c.Arm_Start_Y - c.ArmY) * Deg_per_Rad;
    } else {
        angle = Axial_Rest_Angle(design, c.ArmX, c.ArmY, c.ArmRad);
    }
    if (f.Calc_Error || f.Math_Error)
        throw Fault{invalid_argument};
    return angle;
}

formulas::Arm_Input Arm_Input_of(const Design_State& design, double rest)
{
    const Linkage_Group& k = design.linkage;
    const Cam_Group& c = design.cam;
    const Motion_Group& m = design.motion;
    const double theta1 = Atan2(k.O4x - c.ArmX, k.O4y - c.ArmY) * Deg_per_Rad;
    return {.direction = double(c.ArmDirect),
            .rest = rest - k.Delta2 - theta1,
            .speed = m.Time_Base == 1 ? 1.0 : double{m.Shaft_speed}};
}

Link_Input Input_at(const Design_State& design, const formulas::Arm_Input& input, int i)
{
    const Table<Single>& data = design.results.CalcData;
    return {input.Theta2(double{data(var::S, i)}), input.Omega2(double{data(var::V, i)}),
            input.Alpha2(double{data(var::A, i)})};
}

Link_Input Input_at(const Design_State& design, double rest, int i)
{
    return Input_at(design, Arm_Input_of(design, rest), i);
}

Link_Input True_Input(const Design_State& design, double rest, int i)
{
    Link_Input in = Input_at(design, rest, i);
    const int direction = design.cam.ArmDirect;
    const bool degrees = design.motion.Time_Base == 2;
    // The accelerations of that base carry one factor of 57.3 themselves, (41).
    in.omega2 *= direction * (degrees ? Deg_per_Rad : 1.0);
    in.alpha2 *= direction * (degrees ? Deg_per_Rad : 1.0);
    return in;
}

Ground_Line Ground_of(const Design_State& design)
{
    const double x = design.linkage.O4x - design.cam.ArmX;
    const double y = design.linkage.O4y - design.cam.ArmY;
    return {Sqr(x * x + y * y), Atan2D(x, y)};
}

void Set_Ground(Design_State& design)
{
    Linkage_Group& k = design.linkage;
    const Ground_Line ground = Ground_of(design);
    k.Theta1 = ground.direction;
    k.Link_1 = ground.length;
    k.O4D = k.Link_4a;
}

std::string Missing_Length(const Design_State& design)
{
    const Linkage_Group& k = design.linkage;
    const bool six = Six_Links(design);
    const bool slider = Ends_in_Slider(design);
    const bool fourbar = six || !slider;
    struct Needed {
        bool needed;
        Single length;
        const char* name;
    };
    for (const Needed& link :
         {Needed{true, k.Link_2, "Link 2"}, Needed{true, k.Link_3, "Link 3"}, Needed{fourbar, k.Link_4, "Link 4"},
          Needed{six, k.Link_4a, Is_Stephenson(design) ? "cp3 dist" : "O4D"}, Needed{six, k.Link_5, "Link 5"},
          Needed{six && !slider, k.Link_6, "Link 6"}})
        if (link.needed && !(link.length > 0.0))
            return std::string(link.name) + " has no length above zero.  Please redo.";
    return {};
}

namespace {

/// Angles of a turn as they are stored; a slider's place as it is.
double Stored_Position(const Design_State& design, int link, double theta)
{
    const bool slides = Ends_in_Slider(design) && link == Last_Link(design);
    return slides ? theta : double{FN_Modulo(theta * Deg_per_Rad, 360.0)};
}

void Store_Pose(Design_State& design, int point, const Train_Pose& pose)
{
    Results_Group& r = design.results;
    Linkage_Group& k = design.linkage;
    for (int link = First_Moving_Link; link <= Last_Link(design); ++link) {
        const Link_Motion& motion = pose.link[static_cast<std::size_t>(link)];
        k.Theta_of_link(link) = Stored_Position(design, link, motion.theta);
        k.Omega_of_link(link) = motion.omega;
        k.Alpha_of_link(link) = motion.alpha;
        r.Link_Theta(link, point) = k.Theta_of_link(link);
        r.Link_Omega(link, point) = k.Omega_of_link(link);
        r.Link_Alpha(link, point) = k.Alpha_of_link(link);
    }
    for (int p = 0; p <= Max_Links; ++p) {
        r.Link_X(p, point) = pose.point[static_cast<std::size_t>(p)].x;
        r.Link_Y(p, point) = pose.point[static_cast<std::size_t>(p)].y;
    }
}

/// The pose of another point, at rest.
void Keep_Pose(Design_State& design, int point, int from)
{
    Results_Group& r = design.results;
    for (Table<Single>* table : {&r.Link_Theta, &r.Link_X, &r.Link_Y})
        for (int row = 0; row <= Max_Links; ++row)
            (*table)(row, point) = (*table)(row, from);
    for (Table<Single>* table : {&r.Link_Omega, &r.Link_Alpha})
        for (int row = 0; row <= Max_Links; ++row)
            (*table)(row, point) = 0.0;
}

constexpr int abort_answer = static_cast<int>(Answer::Abort);
constexpr int retry_answer = static_cast<int>(Answer::Retry);

enum class Outcome { connects, dead_centre, kept, ended };

/// One point into the tables. A pose that does not connect is told of while the user wants to know.
Outcome Calculate_Point(Design_State& design, const Linkage_Train& train, double rest, int point, Integer& answer)
{
    const Link_Input input = Input_at(design, rest, point);
    const Train_Pose pose = train.At(input);
    if (pose.slider_fails) {
        design.flags.Calc_Abort = true;
        Show_Message("There is a problem with your data.  Cannot calculate linkage.", Buttons::OK, Symbol::stop);
        return Outcome::ended;
    }
    if (pose.Connects()) {
        Store_Pose(design, point, pose);
        return pose.dead_centre ? Outcome::dead_centre : Outcome::connects;
    }
    if (answer == retry_answer) {
        const double angle = FNRound(FN_Modulo(input.theta2 * Deg_per_Rad, 360.0), 2);
        if (Six_Links(design) && !Ends_in_Slider(design))
            Report_No_Connect_Stage(design, pose.fails_at, angle, answer);
        else
            Report_No_Connect(design, angle, answer);
    }
    return answer == abort_answer ? Outcome::ended : Outcome::kept;
}

/// What is asked of the user at a position that does not connect.
void Ask_No_Connect(const std::string& subject, const Design_State& design, double angle, Integer& answer)
{
    answer = static_cast<int>(Show_Message(
        subject + " cannot connect or is indeterminate at Theta2 =  " + Shown(design, angle) +
            " Degrees\n"
            "\n"
            "Choose Abort to terminate further calculations beyond the current position\n"
            "\n"
            "Choose Retry to continue calculating the linkage motion and flag new problem positions with this message\n"
            "\n"
            "Choose Ignore to continue calculating, skipping over new problem positions and suppressing further "
            "messages",
        Buttons::Abort_Retry_Ignore, Symbol::exclamation, Answer::Ignore));
}

/// Whether the train may be calculated; the tables have the cycle's points then.
bool Prepare(Design_State& design)
{
    if (const std::string missing = Missing_Length(design); !missing.empty()) {
        Show_Message(missing, Buttons::OK, Symbol::exclamation);
        return false;
    }
    Set_Ground(design);
    const int points = design.motion.Max_Data_Points_used;
    if (design.results.Link_Theta.Last_Point() != points)
        Dimension_Link_Arrays(design, points);
    return true;
}

}  // namespace

void Report_No_Connect(const Design_State& design, double angle, Integer& answer)
{
    Ask_No_Connect("Linkage", design, angle, answer);
}

void Report_No_Connect_Stage(const Design_State& design, int stage, double angle, Integer& answer)
{
    Ask_No_Connect("Stage " + std::to_string(stage) + " of linkage", design, angle, answer);
}

bool Calc_Linkage_At(Design_State& design, int point, Integer& answer)
{
    bool shown = false;
    Trap("Calc_Linkage_At", [&] {
        if (!Prepare(design))
            return;
        const double rest = Arm_Angle_at_Rest(design);
        const Outcome outcome = Calculate_Point(design, Linkage_Train(design), rest, point, answer);
        if (outcome == Outcome::kept) {
            const int points = design.motion.Max_Data_Points_used;
            Keep_Pose(design, point, point > 0 ? point - 1 : points);
        }
        shown = outcome != Outcome::ended;
    });
    return shown;
}

namespace {

Linkage_Rows Rows_of(Design_State& design)
{
    Results_Group& r = design.results;
    const Table<Single>& data = r.CalcData;
    Linkage_Rows rows{.S = Bits(data.Points(var::S)),
                      .V = Bits(data.Points(var::V)),
                      .A = Bits(data.Points(var::A)),
                      .theta{},
                      .omega{},
                      .alpha{},
                      .x{},
                      .y{}};
    for (int row = 0; row < formulas::link_rows; ++row) {
        rows.theta[row] = Bits(r.Link_Theta.Points(row));
        rows.omega[row] = Bits(r.Link_Omega.Points(row));
        rows.alpha[row] = Bits(r.Link_Alpha.Points(row));
        rows.x[row] = Bits(r.Link_X.Points(row));
        rows.y[row] = Bits(r.Link_Y.Points(row));
    }
    return rows;
}

/// All points of a train in their order: as many at a time as the processor has lanes, and one by one those that do not
/// connect, stand at a dead centre or fault.
class Cycle_of_Train {
public:
    Cycle_of_Train(Design_State& design, Integer& answer)
        : design_(design),
          answer_(answer),
          rest_(Arm_Angle_at_Rest(design)),
          train_(design),
          count_(static_cast<std::size_t>(design.motion.Max_Data_Points_used) + 1),
          rows_(Rows_of(design))
    {
        Checked_Place(static_cast<int>(count_) - 1, 0, design.results.CalcData.Last_Point());
    }

    /// @return false where the user or a slider without a place ended it
    bool Go()
    {
        const formulas::Arm_Input input = Arm_Input_of(design_, rest_);
        const Linkage_Kernels::Poses kernel =
            Kernels_in_Use<Linkage_Kernels>().poses[static_cast<std::size_t>(train_.Kind())];
        bool goes_on = true;
        Run_Points(
            count_,
            [&](std::size_t first, std::size_t count) {
                if (!goes_on)
                    return count;
                const std::size_t next = kernel(train_.Formula(), input, rows_, first, count);
                if (next > first)
                    Connects(first, next - 1);
                return next;
            },
            [&](std::size_t i) { goes_on = One_Point(i); });
        if (last_good_ >= 0)
            Take_Working_Values();
        return goes_on;
    }
    bool Connects_Somewhere() const { return first_good_ >= 0; }

private:
    void Connects(std::size_t first, std::size_t last)
    {
        if (first_good_ < 0) {
            first_good_ = static_cast<int>(first);
            for (int before = 0; before < first_good_; ++before)
                Keep_Pose(design_, before, first_good_);
        }
        last_good_ = static_cast<int>(last);
    }

    bool One_Point(std::size_t i)
    {
        const int point = static_cast<int>(i);
        const Outcome outcome = Calculate_Point(design_, train_, rest_, point, answer_);
        if (outcome == Outcome::ended)
            return false;
        Linkage_Group& k = design_.linkage;
        if (outcome == Outcome::kept) {
            if (first_good_ >= 0)
                Keep_Pose(design_, point, point - 1);
            k.Link_Broken += 1;
        } else {
            Connects(i, i);
            k.Link_Indeterminate += outcome == Outcome::dead_centre ? 1 : 0;
        }
        return true;
    }

    /// The working values are those of the last point that connects.
    void Take_Working_Values()
    {
        const Results_Group& r = design_.results;
        Linkage_Group& k = design_.linkage;
        for (int link = First_Moving_Link; link <= Last_Link(design_); ++link) {
            k.Theta_of_link(link) = r.Link_Theta(link, last_good_);
            k.Omega_of_link(link) = r.Link_Omega(link, last_good_);
            k.Alpha_of_link(link) = r.Link_Alpha(link, last_good_);
        }
    }

    Design_State& design_;
    Integer& answer_;
    double rest_;
    Linkage_Train train_;
    std::size_t count_;
    Linkage_Rows rows_;
    int first_good_ = -1;
    int last_good_ = -1;
};

}  // namespace

bool Calc_Linkage_All(Design_State& design, Integer& answer)
{
    Apply(design, Event::linkage_began);
    bool reached = false;
    Trap("Calc_Linkage_All", [&] {
        if (!Prepare(design))
            return;
        answer = retry_answer;
        design.linkage.Link_Broken = 0;
        design.linkage.Link_Indeterminate = 0;
        Cycle_of_Train cycle(design, answer);
        if (!cycle.Go())
            return;
        if (!cycle.Connects_Somewhere()) {
            Show_Message(
                "The links connect at no point of the cycle.\nCheck their lengths, the pivots and the assembly.",
                Buttons::OK, Symbol::exclamation);
            return;
        }
        Normalize_Ratios(design);
        Reach(design, Mark::linkage);
        reached = true;
    });
    return reached;
}

std::vector<double> Unwrapped(std::span<const Single> angles)
{
    constexpr double turn = 360.0;
    std::vector<double> out;
    out.reserve(angles.size());
    double turns = 0.0;
    for (std::size_t i = 0; i < angles.size(); ++i) {
        if (const double step = i > 0 ? angles[i] - angles[i - 1] : 0.0; std::abs(step) >= turn / 2)
            turns -= turn * std::round(step / turn);
        out.push_back(angles[i] + turns);
    }
    return out;
}

namespace {

/// The position of a link over the cycle: degrees without jumps, of a slider its place.
std::vector<double> Positions_of(const Design_State& design, int link)
{
    const auto points = design.results.Link_Theta.Points(link);
    if (Ends_in_Slider(design) && link == Last_Link(design))
        return {points.begin(), points.end()};
    return Unwrapped(points);
}

std::vector<double> Rates_of(const Table<Single>& table, int link)
{
    const auto points = table.Points(link);
    return {points.begin(), points.end()};
}

/// (value - smallest) / range, or from the other end; zeros for a link that stands.
std::vector<double> From_One_End(std::vector<double> values, bool from_largest)
{
    const auto [least, largest] = std::ranges::minmax(values);
    const double range = largest - least;
    for (double& value : values)
        value = range == 0.0 ? 0.0 : from_largest ? std::abs((largest - value) / range) : (value - least) / range;
    return values;
}

/// The place of the largest value.
std::size_t Place_of_Largest(const std::vector<double>& values)
{
    return static_cast<std::size_t>(std::ranges::max_element(values) - values.begin());
}

/// A row as the ratios take it: as it is stored, or without jumps.
class Motion_Row {
public:
    explicit Motion_Row(std::span<const Single> stored) : stored_(stored)
    {
        const Row_Range range = Kernels_in_Use<Linkage_Kernels>().range(Bits(stored), stored.size());
        least_ = range.least;
        largest_ = range.largest;
    }
    /// The position of a link.
    static Motion_Row Positions(const Design_State& design, int link)
    {
        const auto stored = design.results.Link_Theta.Points(link);
        const bool slides = Ends_in_Slider(design) && link == Last_Link(design);
        if (slides || !Kernels_in_Use<Linkage_Kernels>().jumps(Bits(stored), stored.size()))
            return Motion_Row(stored);
        return Motion_Row(Unwrapped(stored));
    }

    formulas::Motion_Share As_Place(bool from_largest) const
    {
        return {.place = true, .end = from_largest ? largest_ : least_, .whole = largest_ - least_};
    }
    formulas::Motion_Share As_Rate() const
    {
        return {.place = false, .end = 0.0, .whole = std::max(std::abs(least_), std::abs(largest_))};
    }
    std::size_t Size() const { return without_jumps_.empty() ? stored_.size() : without_jumps_.size(); }
    double operator[](std::size_t i) const { return without_jumps_.empty() ? double{stored_[i]} : without_jumps_[i]; }
    /// The first point with its least or its largest value.
    std::size_t Place_of_End(bool largest) const
    {
        const double end = largest ? largest_ : least_;
        std::size_t i = 0;
        while ((*this)[i] != end)
            ++i;
        return i;
    }
    /// Null where it is not as stored.
    const float* Bits_as_Stored() const { return without_jumps_.empty() ? Bits(stored_) : nullptr; }

private:
    explicit Motion_Row(std::vector<double> without_jumps) : without_jumps_(std::move(without_jumps))
    {
        const auto [least, largest] = std::ranges::minmax(without_jumps_);
        least_ = least;
        largest_ = largest;
    }

    std::span<const Single> stored_;
    std::vector<double> without_jumps_;
    double least_ = 0.0;
    double largest_ = 0.0;
};

void Store_Ratio(Row<Single>& ratio, const formulas::Motion_Ratio& formula, const Motion_Row& last,
                 const Motion_Row& arm)
{
    const Linkage_Kernels::Ratios kernel = Kernels_in_Use<Linkage_Kernels>().ratios;
    Checked_Place(static_cast<int>(last.Size()) - 1, 0, ratio.Last());
    const auto stored = ratio.Points();
    const bool as_stored = last.Bits_as_Stored() && arm.Bits_as_Stored();
    Run_Points(
        last.Size(),
        [&](std::size_t first, std::size_t count) {
            return as_stored ? kernel(formula, last.Bits_as_Stored(), arm.Bits_as_Stored(), Bits(stored), first, count)
                             : first;
        },
        [&](std::size_t i) { stored[i] = formula(last[i], arm[i]); });
}

/// Both positions normalised. The arm's starts at its rest. That of a fourth link starts where the arm's direction has
/// it; a sixth link's may turn either way whatever the arm does, so it starts at its end that is nearer to the arm's
/// rest.
void Store_Ratio_of_Positions(Design_State& design)
{
    const Motion_Row last = Motion_Row::Positions(design, Last_Link(design));
    const Motion_Row arm = Motion_Row::Positions(design, First_Moving_Link);
    const bool arm_falls = design.cam.ArmDirect < 1;
    bool last_falls = arm_falls;
    if (Six_Links(design))
        last_falls = last[arm.Place_of_End(!arm_falls)] < last[arm.Place_of_End(arm_falls)];
    Store_Ratio(design.results.Link_Ratio_S, {last.As_Place(last_falls), arm.As_Place(arm_falls)}, last, arm);
}

void Store_Ratio_of_Rates(Row<Single>& ratio, const Table<Single>& table, int link)
{
    const Motion_Row last(table.Points(link));
    const Motion_Row arm(table.Points(First_Moving_Link));
    Store_Ratio(ratio, {last.As_Rate(), arm.As_Rate()}, last, arm);
}

}  // namespace

void Normalize_Ratios(Design_State& design)
{
    // A slider's train has its arm's angles as arcs, angle x ArmRad; divided by their own range they are the same.
    Results_Group& r = design.results;
    Store_Ratio_of_Positions(design);
    Store_Ratio_of_Rates(r.Link_Ratio_V, r.Link_Omega, Last_Link(design));
    Store_Ratio_of_Rates(r.Link_Ratio_A, r.Link_Alpha, Last_Link(design));
}

Effector_Summary Summary_of_Effector(const Design_State& design)
{
    const Results_Group& r = design.results;
    const int last = Last_Link(design);
    const std::array<std::vector<double>, 3> rows{Positions_of(design, last), Rates_of(r.Link_Omega, last),
                                                  Rates_of(r.Link_Alpha, last)};
    Effector_Summary summary;
    for (std::size_t k = 0; k < rows.size(); ++k) {
        const auto place = [&](auto at) {
            return At_Angle{*at, static_cast<double>(at - rows[k].begin()) * design.motion.Deltatheta};
        };
        summary.least[k] = place(std::ranges::min_element(rows[k]));
        summary.largest[k] = place(std::ranges::max_element(rows[k]));
    }
    return summary;
}

std::optional<Effector_Truth> Truth_of_Effector(Design_State& design)
{
    if (design.motion.Time_Base != 2 && design.cam.ArmDirect > 0)
        return {};
    const double rest = Arm_Angle_at_Rest(design);
    const Linkage_Train train(design);
    const auto last = static_cast<std::size_t>(Last_Link(design));
    Effector_Truth truth;
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i) {
        const auto take = [&](const Link_Input& input, double& velocity, double& acceleration) {
            const Train_Pose pose = train.At(input);
            if (!pose.Connects())
                return;
            velocity = std::max(velocity, std::abs(pose.link[last].omega));
            acceleration = std::max(acceleration, std::abs(pose.link[last].alpha));
        };
        take(True_Input(design, rest, i), truth.velocity, truth.acceleration);
        take(Input_at(design, rest, i), truth.stored_velocity, truth.stored_acceleration);
    }
    return truth;
}

double Error_of_Driving(Design_State& design)
{
    const double rest = Arm_Angle_at_Rest(design);
    const Linkage_Train train(design);
    const formulas::Arm_Input input = Arm_Input_of(design, rest);
    const int last = Last_Link(design);
    const auto S = design.results.CalcData.Points(var::S);
    const int points = design.motion.Max_Data_Points_used;
    std::vector<double> reached;
    std::vector<double> wanted;
    double turns = 0.0;
    for (int i = 0; i <= points; ++i) {
        const double s = S[static_cast<std::size_t>(i)];
        const double ratio = design.results.Link_Ratio_S(i);
        const Train_Pose pose = train.At({input.Theta2(s / (ratio == 0.0 ? 1.0 : ratio)), 0.0, 0.0});
        double value = pose.link[static_cast<std::size_t>(last)].theta;
        if (!Ends_in_Slider(design) && !reached.empty()) {
            turns -= PI2 * std::round((value + turns - reached.back()) / PI2);
            value += turns;
        }
        reached.push_back(value);
        wanted.push_back(s);
    }
    // The sense in which the last link moves is that of its ends.
    const double risen = reached[Place_of_Largest(wanted)];
    const bool falls = risen < reached[static_cast<std::size_t>(std::ranges::min_element(wanted) - wanted.begin())];
    const std::vector<double> is = From_One_End(reached, falls);
    const std::vector<double> should = From_One_End(wanted, false);
    double error = 0.0;
    for (std::size_t i = 0; i < is.size(); ++i)
        error = std::max(error, std::abs(is[i] - should[i]));
    return error;
}

}  // namespace lobemax
