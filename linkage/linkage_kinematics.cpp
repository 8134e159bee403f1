// SPDX-License-Identifier: GPL-3.0-or-later
#include "linkage/linkage_kinematics.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <vector>

#include "camgeom/arm.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/variables.h"

namespace lobemax {

namespace {

using Vector = std::complex<double>;

constexpr Vector quarter_turn{0.0, 1.0};

Vector Unit(double angle)
{
    return {std::cos(angle), std::sin(angle)};
}

Vector As_Vector(const World_Point& p)
{
    return {p.x, p.y};
}

World_Point As_Point(const Vector& v)
{
    return {v.real(), v.imag()};
}

double Dot(const Vector& a, const Vector& b)
{
    return a.real() * b.real() + a.imag() * b.imag();
}

/// An end that moves: place, velocity, acceleration.
struct Moving_Point {
    Vector at, velocity, acceleration;
};

/// The far end of a link that hangs on a point.
Moving_Point End_of(const Moving_Point& from, double length, double angle, const Link_Motion& link)
{
    const Vector arm = length * Unit(angle);
    return {from.at + arm, from.velocity + quarter_turn * link.omega * arm,
            from.acceleration + (quarter_turn * link.alpha - link.omega * link.omega) * arm};
}

/// Two links in a line have no limit to their speed; rounding leaves the sine of their angle a little beside zero.
bool In_Line(double sine)
{
    constexpr double rounding = 1E-12;
    return std::abs(sine) < rounding;
}

}  // namespace

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

Linkage_Train::Linkage_Train(const Design_State& design)
    : six_(Six_Links(design)), slider_(Ends_in_Slider(design)), stephenson_(Is_Stephenson(design))
{
    const Linkage_Group& k = design.linkage;
    L2_ = k.Link_2;
    L3_ = k.Link_3;
    L4_ = k.Link_4;
    L4a_ = k.Link_4a;
    L5_ = k.Link_5;
    L6_ = k.Link_6;
    pivot_ = {design.cam.ArmX, design.cam.ArmY};
    O4_ = {k.O4x, k.O4y};
    O6_ = {k.O6x, k.O6y};
    const Vector ground = As_Vector(O4_) - As_Vector(pivot_);
    L1_ = std::abs(ground);
    theta1_ = Atan2(ground.real(), ground.imag());
    const Vector second = As_Vector(O6_) - As_Vector(O4_);
    L1b_ = std::abs(second);
    theta1b_ = Atan2(second.real(), second.imag());
    delta4_degrees_ = k.Delta4;
    delta4_ = delta4_degrees_ * Rad_per_Deg;
    O4D_ = L4a_;
    slider_angle_ = k.Global_Slider_angle_deg * Rad_per_Deg;
    const Vector axis = Vector{k.S3x, k.S3y} - As_Vector(pivot_);
    offset_ = six_ ? double{k.Offset6} : Dot(axis, quarter_turn * Unit(slider_angle_));
    sign1_ = k.Assemflag1 < 0 ? -1.0 : 1.0;
    sign2_ = k.Assemflag2 < 0 ? -1.0 : 1.0;
}

/// A fourbar stage: position (180) to (184), velocity (186), acceleration (187). Angles count from its ground.
///
/// A stage whose A or Ac is zero counts as indeterminate: meant. Mechanics has an angle of 180 degrees there, which the
/// half-angle formula cannot give; it is one position between two points of the cycle.
/// @return false where the stage does not connect
bool Linkage_Train::Solve_Stage(const Stage& stage, const Link_Motion& in, Link_Motion& coupler, Link_Motion& out,
                                bool& dead_centre) const
{
    const double L1 = stage.ground;
    const double L2 = stage.input;
    const double L3 = stage.coupler;
    const double L4 = stage.output;
    const double K1 = L1 / L2;
    const double K2 = L1 / L4;
    const double K4 = L1 / L3;
    const double K3 = (L2 * L2 - L3 * L3 + L4 * L4 + L1 * L1) / (2 * L2 * L4);
    const double K5 = (L4 * L4 - L1 * L1 - L2 * L2 - L3 * L3) / (2 * L2 * L3);
    const double c = std::cos(in.theta);
    const double s = std::sin(in.theta);
    const double B = -2.0 * s;
    const auto half_angle = [&](double a, double c0, double& angle) {
        const double D = B * B - 4 * a * c0;
        if (D < 0.0 || a == 0.0)
            return false;
        // Of the two equal forms of the root the one that adds: the other loses all its digits where a is small.
        const double root = stage.sign * Sqr(D);
        angle = 2 * std::atan(-B * root >= 0.0 ? (-B + root) / (a + a) : (c0 + c0) / (-B - root));
        return true;
    };
    if (!half_angle(K3 + c - K1 - K2 * c, K3 + K1 - (K2 + 1) * c, out.theta) ||
        !half_angle((K4 + 1) * c + K5 - K1, (K4 - 1) * c + K5 + K1, coupler.theta))
        return false;

    const double theta2 = in.theta;
    const double theta3 = coupler.theta;
    const double theta4 = out.theta;
    const double sine = std::sin(theta3 - theta4);
    if (In_Line(sine)) {
        dead_centre = true;
        return true;
    }
    coupler.omega = in.omega * L2 / L3 * std::sin(theta4 - theta2) / sine;
    out.omega = in.omega * L2 / L4 * std::sin(theta2 - theta3) / -sine;

    const double x3 = L3 * std::cos(theta3);
    const double y3 = L3 * std::sin(theta3);
    const double x4 = L4 * std::cos(theta4);
    const double y4 = L4 * std::sin(theta4);
    const double w2 = in.omega * in.omega;
    const double w3 = coupler.omega * coupler.omega;
    const double w4 = out.omega * out.omega;
    const double P = w2 * L2 * c + in.alpha * L2 * s + w3 * x3 - w4 * x4;
    const double Q = in.alpha * L2 * c - w2 * L2 * s - w3 * y3 + w4 * y4;
    const double Den = x3 * y4 - x4 * y3;
    coupler.alpha = (x4 * P - Q * y4) / Den;
    out.alpha = (x3 * P - Q * y3) / Den;
    return true;
}

/// The second stage of a Stephenson train: links 5 and 6 between D, which rides on the coupler, and O6. The sign of the
/// root is that of a fourbar whose input ends in D. (188) to (190).
bool Linkage_Train::Solve_Dyad(Train_Pose& pose) const
{
    const Link_Motion& two = pose.link[2];
    const Link_Motion& three = pose.link[3];
    const Moving_Point A = End_of({As_Vector(pivot_), {}, {}}, L2_, two.theta + theta1_, two);
    const Moving_Point D = End_of(A, L4a_, three.theta + theta1_ + delta4_, three);
    pose.point[link_point::D] = As_Point(D.at);

    const Vector line = D.at - As_Vector(O6_);
    const double R = std::abs(line);
    if (R == 0.0)
        return false;
    const double cosine = (R * R + L6_ * L6_ - L5_ * L5_) / (2 * R * L6_);
    const double square = 1.0 - cosine * cosine;
    if (square < 0.0)
        return false;
    const double theta6 = std::arg(line) + sign2_ * std::atan2(Sqr(square), cosine);
    const Vector e6 = Unit(theta6);
    const Vector coupler = As_Vector(O6_) + L6_ * e6 - D.at;
    const double theta5 = std::arg(coupler);
    const Vector e5 = Unit(theta5);
    Link_Motion& five = pose.link[5];
    Link_Motion& six = pose.link[6];
    five.theta = theta5 - theta1b_;
    six.theta = theta6 - theta1b_;
    pose.point[link_point::C] = As_Point(D.at + coupler);

    const double sine = std::sin(theta5 - theta6);
    const double cosine56 = std::cos(theta5 - theta6);
    if (In_Line(sine)) {
        pose.dead_centre = true;
        return true;
    }
    six.omega = Dot(D.velocity, e5) / (L6_ * sine);
    five.omega = Dot(D.velocity, e6) / (L5_ * sine);
    const double w5 = five.omega * five.omega * L5_;
    const double w6 = six.omega * six.omega * L6_;
    six.alpha = (Dot(D.acceleration, e5) - w5 + w6 * cosine56) / (L6_ * sine);
    five.alpha = (Dot(D.acceleration, e6) + w6 - w5 * cosine56) / (L5_ * sine);
    return true;
}

/// A stage that ends in a slider: coupler (191), slider (192) to (194). The coupler's angle is that of the line from
/// the slider to the end of the link that drives it; the other assembly takes ArcSin(-r) and half a turn, so that it
/// closes as well.
///
/// Where r is 1 or -1 to the last bit ArcSin gives 0: meant, as everywhere. Mechanics has a coupler square to the axis,
/// and its slider a coupler's length off; no other position is touched.
/// @return false where the coupler is too short, where mechanics has no place for the slider
bool Linkage_Train::Slider_Stage(double a, double b, double c, double sign, const Link_Motion& in, Link_Motion& coupler,
                                 Link_Motion& slider, bool& dead_centre) const
{
    const double y = a * std::sin(in.theta);
    const double x = a * std::cos(in.theta);
    const double r = (y - c) / b;
    const std::optional<double> angle = Arc_Sine(r);
    if (!angle)
        return false;
    coupler.theta = sign < 0.0 ? *angle : PI - *angle;
    const double bx = b * std::cos(coupler.theta);
    const double by = b * std::sin(coupler.theta);
    slider.theta = x - bx;
    if (std::abs(r) == 1.0) {
        dead_centre = true;
        return true;
    }
    const double w = in.omega * in.omega;
    coupler.omega = x / bx * in.omega;
    const double wc = coupler.omega * coupler.omega;
    coupler.alpha = (in.alpha * x - w * y + wc * by) / bx;
    slider.omega = -y * in.omega + by * coupler.omega;
    slider.alpha = -y * in.alpha - x * w + by * coupler.alpha + bx * wc;
    return true;
}

World_Point Linkage_Train::Of_Ground(double x, double y) const
{
    return As_Point(As_Vector(pivot_) + Vector{x, y} * Unit(theta1_));
}

World_Point Linkage_Train::On_Axis(const World_Point& from, double along, double across) const
{
    return As_Point(As_Vector(from) + Vector{along, across} * Unit(slider_angle_));
}

/// Points of the fourbar, (185).
///
/// D_Linked adds the typed degrees of Delta4 to the radians of Theta4, turns the sum to radians once more, and starts
/// at B: meant. Mechanics starts at O4 and has 57.3 times the angle: D then rides on link 4, as link_point::D does,
/// which drives the second stage and is what is drawn. D_Linked stays beside B, at Delta4 = 0 within 6.3 degrees of
/// straight along the ground, however link 4 turns.
void Linkage_Train::Place_First_Stage(Train_Pose& pose) const
{
    using namespace link_point;
    const double theta2 = pose.link[2].theta;
    const double theta4 = pose.link[4].theta;
    pose.point[ground] = O4_;
    pose.point[A] = Of_Ground(L2_ * std::cos(theta2), L2_ * std::sin(theta2));
    const double Bx = L4_ * std::cos(theta4) + L1_;
    const double By = L4_ * std::sin(theta4);
    pose.point[B] = Of_Ground(Bx, By);
    const double g = (delta4_degrees_ + theta4) * Rad_per_Deg;
    pose.point[D_Linked] = Of_Ground(Bx + O4D_ * std::cos(g), By + O4D_ * std::sin(g));
    pose.point[D] = As_Point(As_Vector(O4_) + L4a_ * Unit(theta4 + theta1_ + delta4_));
    pose.point[C] = pose.point[D];
    pose.point[end] = pose.point[D];
}

void Linkage_Train::Second_Stage(Train_Pose& pose) const
{
    using namespace link_point;
    if (stephenson_) {
        if (!Solve_Dyad(pose))
            pose.fails_at = 2;
        pose.point[end] = O6_;
        return;
    }
    const Link_Motion& four = pose.link[4];
    if (slider_) {
        const Link_Motion in{four.theta + theta1_ + delta4_ - slider_angle_, four.omega, four.alpha};
        pose.slider_fails = !Slider_Stage(L4a_, L5_, offset_, sign2_, in, pose.link[5], pose.link[6], pose.dead_centre);
        pose.fails_at = pose.slider_fails ? 2 : 0;
        pose.point[C] = On_Axis(O4_, pose.link[6].theta, offset_);
        pose.point[end] = On_Axis(O4_, 0.0, offset_);
        return;
    }
    const Link_Motion in{four.theta + delta4_ - (theta1b_ - theta1_), four.omega, four.alpha};
    if (!Solve_Stage({L4a_, L5_, L6_, L1b_, sign2_}, in, pose.link[5], pose.link[6], pose.dead_centre))
        pose.fails_at = 2;
    pose.point[C] = As_Point(As_Vector(O6_) + L6_ * Unit(pose.link[6].theta + theta1b_));
    pose.point[end] = O6_;
}

Train_Pose Linkage_Train::At(const Link_Input& input) const
{
    using namespace link_point;
    Train_Pose pose;
    pose.link[2] = {input.theta2, input.omega2, input.alpha2};
    if (slider_ && !six_) {
        const Link_Motion in{input.theta2 + theta1_ - slider_angle_, input.omega2, input.alpha2};
        pose.slider_fails = !Slider_Stage(L2_, L3_, offset_, sign1_, in, pose.link[3], pose.link[4], pose.dead_centre);
        pose.fails_at = pose.slider_fails ? 1 : 0;
        pose.point[A] = As_Point(As_Vector(pivot_) + L2_ * Unit(input.theta2 + theta1_));
        pose.point[B] = On_Axis(pivot_, pose.link[4].theta, offset_);
        pose.point[ground] = On_Axis(pivot_, 0.0, offset_);
        for (const int other : {D, D_Linked, C, end})
            pose.point[static_cast<std::size_t>(other)] = pose.point[B];
        return pose;
    }
    if (!Solve_Stage({L2_, L3_, L4_, L1_, sign1_}, pose.link[2], pose.link[3], pose.link[4], pose.dead_centre)) {
        pose.fails_at = 1;
        return pose;
    }
    Place_First_Stage(pose);
    if (six_)
        Second_Stage(pose);
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

namespace {

double Theta2_at(const Design_State& design, double rest, double displacement)
{
    const Linkage_Group& k = design.linkage;
    const Cam_Group& c = design.cam;
    const double theta1 = Atan2(k.O4x - c.ArmX, k.O4y - c.ArmY) * Deg_per_Rad;
    return (c.ArmDirect * displacement + (rest - k.Delta2 - theta1)) * Rad_per_Deg;
}

}  // namespace

Link_Input Input_at(const Design_State& design, double rest, int i)
{
    const Table<Single>& data = design.results.CalcData;
    const Motion_Group& m = design.motion;
    const double speed = m.Time_Base == 1 ? 1.0 : double{m.Shaft_speed};
    return {Theta2_at(design, rest, data(var::S, i)), data(var::V, i) * Rad_per_Deg * speed,
            data(var::A, i) * Rad_per_Deg * speed * speed};
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

bool Calc_Linkage_All(Design_State& design, Integer& answer)
{
    Apply(design, Event::linkage_began);
    bool reached = false;
    Trap("Calc_Linkage_All", [&] {
        if (!Prepare(design))
            return;
        answer = retry_answer;
        Linkage_Group& k = design.linkage;
        k.Link_Broken = 0;
        k.Link_Indeterminate = 0;
        const int points = design.motion.Max_Data_Points_used;
        const double rest = Arm_Angle_at_Rest(design);
        const Linkage_Train train(design);
        int first_good = -1;
        for (int i = 0; i <= points; ++i) {
            const Outcome outcome = Calculate_Point(design, train, rest, i, answer);
            if (outcome == Outcome::ended)
                return;
            const bool connects = outcome != Outcome::kept;
            if (connects && first_good < 0) {
                first_good = i;
                for (int before = 0; before < i; ++before)
                    Keep_Pose(design, before, i);
            } else if (!connects && first_good >= 0) {
                Keep_Pose(design, i, i - 1);
            }
            k.Link_Broken += connects ? 0 : 1;
            k.Link_Indeterminate += outcome == Outcome::dead_centre ? 1 : 0;
        }
        if (first_good < 0) {
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
        if (i > 0)
            turns -= turn * std::round((angles[i] - angles[i - 1]) / turn);
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

/// Divided by the peak; zeros for a link that stands.
std::vector<double> By_Peak(std::vector<double> values)
{
    const auto [least, largest] = std::ranges::minmax(values);
    const double peak = std::max(std::abs(least), std::abs(largest));
    for (double& value : values)
        value = peak == 0.0 ? 0.0 : value / peak;
    return values;
}

/// The place of the largest value.
std::size_t Place_of_Largest(const std::vector<double>& values)
{
    return static_cast<std::size_t>(std::ranges::max_element(values) - values.begin());
}

void Store_Ratio(Row<Single>& ratio, const std::vector<double>& last, const std::vector<double>& arm)
{
    for (std::size_t i = 0; i < last.size(); ++i)
        ratio(static_cast<int>(i)) = arm[i] == 0.0 ? 0.0 : last[i] / arm[i];
}

/// Both positions normalised. The arm's starts at its rest. That of a fourth link starts where the arm's direction has
/// it; a sixth link's may turn either way whatever the arm does, so it starts at its end that is nearer to the arm's
/// rest.
std::vector<double> Normalised_Last(const Design_State& design, const std::vector<double>& arm)
{
    const std::vector<double> last = Positions_of(design, Last_Link(design));
    bool from_largest = design.cam.ArmDirect < 1;
    if (Six_Links(design)) {
        const double risen = last[Place_of_Largest(arm)];
        const auto rest = static_cast<std::size_t>(std::ranges::min_element(arm) - arm.begin());
        from_largest = risen < last[rest];
    }
    return From_One_End(last, from_largest);
}

std::vector<double> Normalised_Arm(const Design_State& design)
{
    return From_One_End(Positions_of(design, First_Moving_Link), design.cam.ArmDirect < 1);
}

}  // namespace

void Normalize_Ratios(Design_State& design)
{
    // A slider's train has its arm's angles as arcs, angle x ArmRad; divided by their own range they are the same.
    Results_Group& r = design.results;
    const int last = Last_Link(design);
    const std::vector<double> arm = Normalised_Arm(design);
    Store_Ratio(r.Link_Ratio_S, Normalised_Last(design, arm), arm);
    Store_Ratio(r.Link_Ratio_V, By_Peak(Rates_of(r.Link_Omega, last)),
                By_Peak(Rates_of(r.Link_Omega, First_Moving_Link)));
    Store_Ratio(r.Link_Ratio_A, By_Peak(Rates_of(r.Link_Alpha, last)),
                By_Peak(Rates_of(r.Link_Alpha, First_Moving_Link)));
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
    const int last = Last_Link(design);
    const auto S = design.results.CalcData.Points(var::S);
    const int points = design.motion.Max_Data_Points_used;
    std::vector<double> reached;
    std::vector<double> wanted;
    double turns = 0.0;
    for (int i = 0; i <= points; ++i) {
        const double s = S[static_cast<std::size_t>(i)];
        const double ratio = design.results.Link_Ratio_S(i);
        const Train_Pose pose = train.At({Theta2_at(design, rest, s / (ratio == 0.0 ? 1.0 : ratio)), 0.0, 0.0});
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
