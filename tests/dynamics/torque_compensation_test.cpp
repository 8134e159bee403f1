// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/torque_compensation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>
#include <vector>

#include "core/startup.h"
#include "core/units.h"
#include "dynamics/kinetostatics.h"
#include "edit/door.h"
#include "files/example_designs.h"
#include "tests/support/train_design.h"

namespace lobemax {
namespace {

using namespace train_design;

constexpr double degree = pi / 180;

double Peak(const Comp_Row& row)
{
    double peak = 0.0;
    for (const double value : row)
        peak = std::max(peak, std::abs(value));
    return peak;
}

double Spread(const Comp_Row& row)
{
    const auto [least, most] = std::minmax_element(row.begin(), row.end());
    return *most - *least;
}

Expected_Box Warning(const std::string& text)
{
    return {text, Buttons::OK, Symbol::exclamation};
}

class Torque_Compensation : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Sub_Main(design, "", {})); }
    void TearDown() override { design = {}; }

    static void Open(const char* example, int units, int base = 1)
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        design.identity.WhichUnit = units;
        Initialize(design);
        Set_Units(design);
        Set_Time_Base(design, base);
        ASSERT_TRUE(Open_Example(design, example));
    }

    /// A harmonic motion over the cycle, S = h (1 - cos(theta - shift)) / 2, 4 kg on 1000 N/m and 100 N, 20 rad/s, in
    /// metres; the balancing train has 2 kg on 2000 N/m and 100 N.
    static void Make_Harmonic(double shift, int base = 1)
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        design.identity.WhichUnit = 3;
        Initialize(design);
        Set_Units(design);
        Set_Time_Base(design, base);
        design.motion.Shaft_speed = omega;
        Set_Omega_Powers(design);
        for (int i = 0; i <= 360; ++i) {
            const double t = (i - shift) * degree;
            Table<Single>& data = design.results.CalcData;
            const double first = base == 1 ? omega : base == 2 ? degree : 1.0;
            const double second = base == 1 ? omega * omega : first;
            data(var::Angle, i) = i;
            data(var::S, i) = h * (1 - std::cos(t)) / 2;
            data(var::V, i) = h * std::sin(t) / 2 * first;
            data(var::A, i) = h * std::cos(t) / 2 * second;
        }
        design.cam.Prime_Rad = 0.1;
    }
    static constexpr double omega = 20.0;
    static constexpr double h = 0.025;

    static Compensation Compensated(const Compensation_Run& run = {})
    {
        Compensation result;
        EXPECT_TRUE(Calc_Compensation(design, run, result));
        return result;
    }

    Script script_;
};

/// The same balance by another method: implicit steps of first order, each the root of a quadratic in the velocity,
/// taken twice and extrapolated to a step of zero. Stable for any step, so it needs none of the integrator's care.
/// From a rest at a point without torque, over points of negative torque.
class Implicit_Rise {
public:
    Implicit_Rise(const Comp_Balance& balance, int from, int to) : b_(balance), from_(from), to_(to)
    {
        Run(200, coarse_);
        Run(400, fine_);
    }
    double S(int i) const { return 2 * fine_.at(Place(i)).s - coarse_.at(Place(i)).s; }
    double V(int i) const { return 2 * fine_.at(Place(i)).v - coarse_.at(Place(i)).v; }

private:
    struct Point {
        double s, v;
    };
    std::size_t Place(int i) const { return static_cast<std::size_t>(i - from_); }
    void Run(int steps, std::vector<Point>& points) const
    {
        double s = 0.0;
        double v = 0.0;
        const double step = b_.Deltatheta * degree / b_.omega / steps;
        points.push_back({s, v});
        for (int i = from_; i < to_; ++i) {
            for (int k = 1; k <= steps; ++k) {
                const double share = static_cast<double>(k) / steps;
                const auto at = static_cast<std::size_t>(i);
                const double power = -b_.omega * ((1 - share) * b_.torque[at] + share * b_.torque[at + 1]);
                // (m (v' - v) / step + k (s + v' step) + p) v' = power
                const double A = b_.mass / step + b_.spring * step;
                const double B = b_.spring * s + b_.preload - b_.mass * v / step;
                v = B > 0 ? 2 * power / (B + std::sqrt(B * B + 4 * A * power))
                          : (-B + std::sqrt(B * B + 4 * A * power)) / (2 * A);
                s += v * step;
            }
            points.push_back({s, v});
        }
    }
    const Comp_Balance& b_;
    int from_;
    int to_;
    std::vector<Point> coarse_;
    std::vector<Point> fine_;
};

TEST_F(Torque_Compensation, the_double_dwell_cam_is_balanced_in_all_unit_systems)
{
    for (int units = 1; units <= 5; ++units) {
        Open("Double Dwell", units);
        const Compensation c = Compensated();
        EXPECT_GT(c.percent, 99.5) << units;
        EXPECT_LT(Peak(c.net), 0.005 * Peak(c.Tp)) << units;
        EXPECT_NEAR(c.percent, 100 * (1 - Peak(c.net) / Peak(c.Tp)), 1e-9) << units;
        EXPECT_LT(c.energy_error, 1e-6) << units;
        EXPECT_GT(c.smallest_force, 0.0) << units;
        // What the two cams take from the shaft over a turn, and each alone, is nothing beside what goes to and fro.
        const auto turn = [](const Comp_Row& torque) {
            return std::abs(std::accumulate(torque.begin(), torque.end() - 1, 0.0)) * degree;
        };
        const auto to_and_fro = [](const Comp_Row& torque) {
            double sum = 0.0;
            for (const double value : torque)
                sum += std::abs(value);
            return sum * degree;
        };
        EXPECT_LT(turn(c.net), 1e-4 * to_and_fro(c.Tp)) << units;
        EXPECT_LT(turn(c.Tc), 1e-4 * to_and_fro(c.Tp)) << units;
        for (int i = 0; i <= 360; ++i) {
            const auto k = static_cast<std::size_t>(i);
            EXPECT_EQ(Data(var::Comp_Torque, i), double{Single(c.Tc[k])});
            EXPECT_EQ(Data(var::Net_Torque, i), double{Single(c.net[k])});
        }
    }
}

TEST_F(Torque_Compensation, both_trains_together_keep_their_energy)
{
    // Kinetic and spring energy of the primary from the stored motion itself: no torque, no sum over the points.
    for (const char* example : {"Double Dwell", "Single Dwell", "Four Dwell", "Oscillating"}) {
        Open(example, 5);
        d().Comp_Spring_Rate = 3000.0;
        d().Comp_Preload = 300.0;
        const Compensation c = Compensated();
        const double length = (design.cam.Translating ? 1.0 : degree * double{design.cam.ArmRad}) / 1000.0;
        Comp_Row own{};
        Comp_Row sum{};
        for (int i = 0; i <= 360; ++i) {
            const auto k = static_cast<std::size_t>(i);
            const double s = Data(var::S, i) * length;
            const double v = Data(var::V, i) * length;
            own[k] = d().Mass * v * v / 2 + d().Return_Spring_Rate * s * s / 2 + d().Preload * s;
            sum[k] = own[k] + d().Comp_Mass * c.V[k] * c.V[k] / 2 + d().Comp_Spring_Rate * c.S[k] * c.S[k] / 2 +
                     d().Comp_Preload * c.S[k];
        }
        EXPECT_LT(Spread(sum), 2e-3 * Spread(own)) << example;
    }
}

TEST_F(Torque_Compensation, the_motion_is_that_of_an_implicit_integration)
{
    Open("Double Dwell", 3);
    const Compensation c = Compensated();
    Comp_Balance balance{.omega = design.motion.Shaft_speed,
                         .mass = d().Comp_Mass,
                         .spring = d().Comp_Spring_Rate,
                         .preload = d().Comp_Preload,
                         .torque = c.Tp};
    const Implicit_Rise rise(balance, 180, 270);
    for (int i = 181; i < 270; ++i) {
        EXPECT_NEAR(c.S[static_cast<std::size_t>(i)], rise.S(i), 2e-5 * Peak(c.S)) << i;
        EXPECT_NEAR(c.V[static_cast<std::size_t>(i)], rise.V(i), 2e-4 * Peak(c.V)) << i;
    }
    // The fall is the rise of the cam that turns backwards: its torque is the opposite, its velocity too.
    for (std::size_t i = 0; i <= 360; ++i)
        balance.torque[i] = -c.Tp[360 - i];
    const Implicit_Rise back(balance, 270, 360);
    for (int i = 1; i < 90; ++i) {
        EXPECT_NEAR(c.S[static_cast<std::size_t>(i)], back.S(360 - i), 2e-5 * Peak(c.S)) << i;
        EXPECT_NEAR(c.V[static_cast<std::size_t>(i)], -back.V(360 - i), 2e-4 * Peak(c.V)) << i;
    }
}

TEST_F(Torque_Compensation, the_same_train_upside_down_is_its_own_answer)
{
    // A balancing train like the primary, without dwells: when the one is high the other is low, K s^2 / 2 + P s being
    // as much above as below. With no stiffness both are mirror images: s = h - S, v = -V.
    Make_Harmonic(0.0);
    d().Mass = d().Comp_Mass = 4.0;
    d().Preload = d().Comp_Preload = 100.0;
    d().Return_Spring_Rate = d().Comp_Spring_Rate = 1E-6;
    const Compensation c = Compensated();
    for (int i = 0; i <= 360; ++i) {
        const auto k = static_cast<std::size_t>(i);
        EXPECT_NEAR(c.S[k] * 2 * 100 + 4 * c.V[k] * c.V[k],
                    2 * 100 * (h - Data(var::S, i)) - 4 * Data(var::V, i) * Data(var::V, i), 1e-3)
            << i;
    }
}

TEST_F(Torque_Compensation, a_finer_accuracy_changes_the_motion_by_less_than_it)
{
    Open("Double Dwell", 5);
    const Compensation usual = Compensated();
    Compensation_Run run;
    run.eps = 1e-7;
    const Compensation fine = Compensated(run);
    EXPECT_GT(fine.steps, usual.steps);
    EXPECT_LT(fine.energy_error, 1e-8);
    for (std::size_t i = 0; i <= 360; ++i) {
        EXPECT_NEAR(usual.S[i], fine.S[i], 1e-4 * Peak(fine.S));
        EXPECT_NEAR(usual.V[i], fine.V[i], 1e-3 * Peak(fine.V));
    }
}

TEST_F(Torque_Compensation, motions_are_the_runs_of_one_sign)
{
    Open("Double Dwell", 5);
    const Compensation c = Compensated();
    struct Row {
        Comp_Motion_Kind kind;
        double from, to;
    };
    const std::vector<Row> rows{{Comp_Motion_Kind::fall, 0, 90},
                                {Comp_Motion_Kind::dwell, 90, 180},
                                {Comp_Motion_Kind::rise, 180, 270},
                                {Comp_Motion_Kind::dwell, 270, 360}};
    ASSERT_EQ(c.motions.size(), rows.size());
    for (std::size_t k = 0; k < rows.size(); ++k) {
        EXPECT_EQ(c.motions[k].kind, rows[k].kind);
        EXPECT_EQ(c.motions[k].from, rows[k].from);
        EXPECT_EQ(c.motions[k].to, rows[k].to);
    }
    // High where the primary is low, at zero where it is high; a dwell does not move.
    for (std::size_t i = 90; i <= 180; ++i) {
        EXPECT_EQ(c.S[i], 0.0);
        EXPECT_EQ(c.V[i], 0.0);
    }
    for (std::size_t i = 270; i <= 360; ++i)
        EXPECT_EQ(c.S[i], c.S[270]);
    EXPECT_EQ(Name_of(Comp_Motion_Kind::rise), "rise");
    EXPECT_EQ(Name_of(Comp_Motion_Kind::fall), "fall");
    EXPECT_EQ(Name_of(Comp_Motion_Kind::dwell), "dwell");
}

TEST_F(Torque_Compensation, the_rest_positions_are_those_of_the_energy)
{
    Open("Double Dwell", 3);
    d().Comp_Spring_Rate = 5000.0;
    const Compensation c = Compensated();
    const double lift = Data(var::S, 90);
    const double energy = d().Return_Spring_Rate * lift * lift / 2 + d().Preload * lift;
    const double rest = (-100.0 + std::sqrt(100.0 * 100.0 + 2 * 5000.0 * energy)) / 5000.0;
    EXPECT_NEAR(c.S[0], rest, 1e-6 * rest);
    EXPECT_NEAR(c.S[300], rest, 1e-6 * rest);
}

TEST_F(Torque_Compensation, a_cycle_without_dwells_and_a_motion_across_its_start)
{
    Make_Harmonic(0.0);
    const Compensation c = Compensated();
    ASSERT_EQ(c.motions.size(), 2U);
    EXPECT_GT(c.percent, 98.0);
    // Turned by a whole number of degrees it is the same motion, turned.
    Make_Harmonic(40.0);
    const Compensation turned = Compensated();
    EXPECT_NEAR(turned.percent, c.percent, 0.01);
    for (std::size_t i = 0; i < 360; ++i) {
        EXPECT_NEAR(turned.S[(i + 40) % 360], c.S[i], 1e-5 * Peak(c.S)) << i;
        EXPECT_NEAR(turned.V[(i + 40) % 360], c.V[i], 1e-4 * Peak(c.V)) << i;
    }
    EXPECT_GT(turned.motions.back().to, 360.0);
    // Where the torque changes its sign between two points.
    for (const double shift : {0.3, 100.7, 359.5}) {
        Make_Harmonic(shift);
        const Compensation between = Compensated();
        EXPECT_NEAR(between.percent, c.percent, 1.0) << shift;
        EXPECT_LT(between.energy_error, 1e-6) << shift;
        EXPECT_EQ(between.S[360], between.S[0]);
        EXPECT_EQ(between.net[360], between.net[0]);
    }
}

TEST_F(Torque_Compensation, the_time_bases_agree_in_metres_inches_and_feet)
{
    for (const int units : {1, 2, 3}) {
        Open("Double Dwell", units);
        const Compensation seconds = Compensated();
        for (const int base : {2, 3}) {
            Open("Double Dwell", units, base);
            const Compensation c = Compensated();
            EXPECT_NEAR(c.percent, seconds.percent, 0.01) << units << base;
            for (std::size_t i = 0; i <= 360; ++i) {
                EXPECT_NEAR(c.Tp[i], seconds.Tp[i], 1e-5 * Peak(seconds.Tp)) << units << base;
                EXPECT_NEAR(c.S[i], seconds.S[i], 1e-4 * Peak(seconds.S)) << units << base;
            }
        }
    }
}

TEST_F(Torque_Compensation, the_primary_torque_is_that_of_the_forces_without_damper)
{
    for (const int units : {1, 3, 4, 5}) {
        Open("Double Dwell", units);
        d().Zeta_Initial = 1e-9;
        ASSERT_TRUE(Calc_Force_Torque(design));
        const Compensation c = Compensated();
        for (int i = 0; i <= 360; ++i)
            EXPECT_NEAR(c.Tp[static_cast<std::size_t>(i)], Data(var::Torque, i), 1e-5 * Peak(c.Tp)) << units;
    }
}

TEST_F(Torque_Compensation, a_position_that_never_is_zero_counts_from_zero)
{
    // The forces count the spring from the lowest position; the compensation takes the position as it stands. Meant.
    Make_Harmonic(0.0);
    const Compensation low = Compensated();
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::S, i) += 0.01;
    const Compensation high = Compensated();
    const double more = 1000.0 * 0.01 * Data(var::V, 90) / omega;
    EXPECT_NEAR(high.Tp[90] - low.Tp[90], more, 1e-6);
}

TEST_F(Torque_Compensation, centimetres_and_millimetres_count_as_metres_per_second_alone)
{
    for (const int units : {4, 5}) {
        Open("Double Dwell", units);
        const Compensation seconds = Compensated();
        const double per_metre = units == 4 ? 100.0 : 1000.0;
        EXPECT_NEAR(seconds.S[0], Data(var::S, 0) + 0.025, 0.005);
        Open("Double Dwell", units, 3);
        script_.Expect(Warning(std::string("In this time base the compensation counts lengths in ") +
                               (units == 4 ? "cm" : "mm") +
                               " beside a spring rate per metre.\n"
                               "Choose derivatives per second for a cam that is to be made, and recalculate."));
        d().Comp_Spring_Rate = 2 * d().Return_Spring_Rate;
        d().Comp_Preload = 50000.0;
        const Compensation radians = Compensated();
        // F = K S + P + M A with S in the design's unit.
        const double v = Data(var::V, 45) * design.motion.Shaft_speed;
        const double a = Data(var::A, 45) * design.motion.Shaft_speed * design.motion.Shaft_speed;
        EXPECT_NEAR(radians.Tp[45], (1000.0 * Data(var::S, 45) + 100.0 + 4.0 * a) * v / design.motion.Shaft_speed,
                    1e-5 * std::abs(radians.Tp[45]));
        EXPECT_GT(std::abs(radians.Tp[45]), 0.5 * per_metre * std::abs(seconds.Tp[45]));
        EXPECT_GT(radians.percent, 90.0);
    }
}

TEST_F(Torque_Compensation, an_oscillating_cam_is_balanced_along_its_arc)
{
    Open("Oscillating", 5);
    d().Comp_Preload = 300.0;
    const Compensation c = Compensated();
    EXPECT_GT(c.percent, 99.0);
    Overwrite_Motion(design, c);
    const double per_degree = degree * design.cam.ArmRad / 1000.0;
    for (int i = 0; i <= 360; ++i) {
        const auto k = static_cast<std::size_t>(i);
        EXPECT_NEAR(Data(var::S, i) * per_degree, c.S[k], 1e-6 * Peak(c.S));
        EXPECT_NEAR(Data(var::V, i) * per_degree, c.V[k], 1e-6 * Peak(c.V));
        EXPECT_NEAR(Data(var::A, i) * per_degree, c.A[k], 1e-6 * Peak(c.A));
    }
}

TEST_F(Torque_Compensation, the_rows_take_the_units_and_the_base_of_the_design)
{
    for (const int base : {1, 2, 3}) {
        Open("Double Dwell", 1, base);
        const Compensation c = Compensated();
        Overwrite_Motion(design, c);
        const double w = design.motion.Shaft_speed;
        const double first = base == 1 ? 1.0 : base == 2 ? degree / w : 1 / w;
        const double second = base == 1 ? 1.0 : first / w;
        const double step = base == 1 ? degree / w : degree;
        for (int i = 0; i <= 360; ++i) {
            const auto k = static_cast<std::size_t>(i);
            EXPECT_EQ(Data(var::S, i), double{Single(c.S[k])});
            EXPECT_NEAR(Data(var::V, i), c.V[k] * first, 1e-6 * Peak(c.V) * first);
            EXPECT_NEAR(Data(var::A, i), c.A[k] * second, 1e-6 * Peak(c.A) * second);
            const int before = (i + 359) % 360;
            const int after = (i + 1) % 360;
            const double jerk = (Data(var::A, after) - Data(var::A, before)) / (2 * step) / (base == 1 ? 1000 : 1);
            EXPECT_NEAR(Data(var::J, i), jerk, 1e-5 * (std::abs(jerk) + 1e-3)) << base << " " << i;
            const double ping = (Data(var::J, after) - Data(var::J, before)) / (2 * step);
            EXPECT_NEAR(Data(var::Ping, i), ping, 1e-5 * (std::abs(ping) + 1e-3)) << base << " " << i;
        }
        EXPECT_NEAR(design.motion.Liftmax, Peak(c.S), 1e-6);
        EXPECT_EQ(design.motion.Max_Neg_Disp, 0.0);
    }
}

TEST_F(Torque_Compensation, pressure_angle_and_curvature_are_those_of_a_cam_of_the_same_size)
{
    Open("Double Dwell", 5);
    const Compensation c = Compensated();
    const double phi = Data(var::Phi, 45);
    EXPECT_NE(c.phi[45], phi);
    // s' / (s + Rp) of a follower without offset.
    const double s = c.S[45] * 1000;
    const double v = c.V[45] * 1000 / design.motion.Shaft_speed;
    EXPECT_NEAR(c.phi[45], std::atan(v / (s + design.cam.Prime_Rad)) / degree, 1e-3);
    EXPECT_NEAR(c.rho[120], design.cam.Prime_Rad, 1e-3);
    EXPECT_EQ(Data(var::Phi, 45), phi);  // the design keeps its own
    EXPECT_TRUE(design.flags.Sized && design.flags.Dynamicflag);
}

TEST_F(Torque_Compensation, a_mass_too_large_for_its_spring_is_told_of)
{
    Open("Double Dwell", 3);
    Set_Omega_Powers(design);
    d().Comp_Mass = 40.0;
    std::vector<std::string> boxes;
    Host host = Installed_Host();
    host.messenger = [&](const Message& box) {
        boxes.push_back(box.text);
        return Usual_Answer(box.buttons);
    };
    const Host before = Install_Host(host);
    const Compensation c = Compensated();
    Install_Host(before);
    EXPECT_LE(c.smallest_force, 0.0);
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].find("The compensating follower would leave its cam at Theta =  "), 0U);
    EXPECT_NE(boxes[0].find(" deg: its smallest contact force is "), std::string::npos);
    EXPECT_NE(boxes[0].find(" N.\nTry increasing its spring rate, its preload, or both, or a smaller mass, and "
                            "recalculate."),
              std::string::npos);
    EXPECT_LT(c.percent, 50.0);  // and the percentage does not hide it
}

TEST_F(Torque_Compensation, the_contact_force_is_mass_spring_and_preload)
{
    Open("Double Dwell", 3);
    const Compensation c = Compensated();
    for (std::size_t i = 1; i < 360; ++i) {
        const double a = (c.V[i + 1] - c.V[i - 1]) / (2 * degree / design.motion.Shaft_speed);
        EXPECT_NEAR(c.A[i], a, 1e-6 * Peak(c.A));
        const double force = d().Comp_Mass * a + d().Comp_Spring_Rate * c.S[i] + d().Comp_Preload;
        EXPECT_NEAR(c.F[i], force, 1e-6 * Peak(c.F));
        EXPECT_NEAR(c.Tc[i], force * c.V[i] / design.motion.Shaft_speed, 1e-6 * Peak(c.Tc));
    }
    EXPECT_EQ(c.smallest_force, *std::min_element(c.F.begin(), c.F.end()));
    EXPECT_EQ(c.F[static_cast<std::size_t>(c.smallest_angle)], c.smallest_force);
}

TEST_F(Torque_Compensation, the_velocity_limit_is_a_millionth_of_the_primary_velocity)
{
    Open("Double Dwell", 5);
    Compensated();
    double peak = 0.0;
    for (int i = 0; i <= 360; ++i)
        peak = std::max(peak, std::abs(Data(var::V, i)));
    EXPECT_NEAR(d().Torque_Velocity_Limit, 1e-6 * peak / 1000, 1e-15);
}

TEST_F(Torque_Compensation, the_torque_is_linear_between_the_points)
{
    Comp_Balance balance{.omega = 2.0};
    for (std::size_t i = 0; i <= 360; ++i)
        balance.torque[i] = i == 360 ? 0.0 : static_cast<double>(i * i);
    const auto at = [&](double theta) { return Comp_Torque_At(balance, theta * degree / 2.0); };
    EXPECT_NEAR(at(0.0), 0.0, 1e-9);
    EXPECT_NEAR(at(10.5), (100.0 + 121.0) / 2, 1e-6);
    EXPECT_NEAR(at(200.25), 40000 + 0.25 * 401, 1e-4);
    EXPECT_NEAR(at(359.75), 0.25 * 359 * 359, 1e-2);
    EXPECT_NEAR(at(360.25), 0.25, 1e-6);  // 360 less
    EXPECT_NEAR(at(400.5), (1600.0 + 1681.0) / 2, 1e-4);
}

TEST_F(Torque_Compensation, the_right_hand_side_is_the_power_balance)
{
    Comp_Balance balance{.omega = 10.0, .mass = 2.0, .spring = 500.0, .preload = 30.0, .velocity_limit = 0.001};
    balance.torque.fill(-4.0);
    Balance_State dy{};
    Comp_Derivs(balance, 0.0, {0.02, 0.5}, dy);
    EXPECT_EQ(dy[0], 0.5);
    EXPECT_NEAR((2.0 * dy[1] + 500.0 * 0.02 + 30.0) * 0.5, 10.0 * 4.0, 1e-12);
    Comp_Derivs(balance, 0.0, {0.02, 0.001}, dy);  // at the limit still
    EXPECT_NEAR((2.0 * dy[1] + 40.0) * 0.001, 40.0, 1e-9);
    Comp_Derivs(balance, 0.0, {0.02, -0.5}, dy);
    EXPECT_NEAR((2.0 * dy[1] + 40.0) * -0.5, 40.0, 1e-12);
}

TEST_F(Torque_Compensation, below_the_velocity_limit_it_is_a_quadratic_of_the_torque)
{
    // M a^2 + f a + omega T = 0: with the rate of T in place of T it were the acceleration out of rest. Meant.
    Comp_Balance balance{.omega = 10.0, .mass = 2.0, .spring = 500.0, .preload = 30.0, .velocity_limit = 0.001};
    balance.torque.fill(-4.0);
    Balance_State dy{};
    Comp_Derivs(balance, 0.0, {0.02, 0.0009}, dy);
    EXPECT_NEAR(2.0 * dy[1] * dy[1] + 40.0 * dy[1], 40.0, 1e-12);
    EXPECT_GT(dy[1], 0.0);
    EXPECT_NEAR(dy[1], (-40.0 + std::sqrt(1600.0 + 320.0)) / 4.0, 1e-12);
    balance.torque.fill(0.0);
    Comp_Derivs(balance, 0.0, {0.02, 0.0}, dy);
    EXPECT_EQ(dy[1], 0.0);
    balance.torque.fill(50.0);  // a fall that is not mirrored
    try {
        Comp_Derivs(balance, 0.0, {0.02, 0.0}, dy);
        FAIL();
    } catch (const Fault& fault) {
        EXPECT_EQ(fault.Number(), invalid_argument);
    }
}

TEST_F(Torque_Compensation, refuses_what_cannot_be_compensated)
{
    Open("Double Dwell", 5);
    Compensation result;
    design.motion.Deltatheta = 0.5;
    script_.Expect(
        Warning("This routine requires that delta theta be no smaller than 1 degree.\n"
                "Please return to the SVAJ screen and recalculate the cam with delta theta = 1."));
    EXPECT_FALSE(Calc_Compensation(design, {}, result));
    design.motion.Deltatheta = 2.0;
    script_.Expect(Warning("The stored motion must have a point each degree of the cycle."));
    EXPECT_FALSE(Calc_Compensation(design, {}, result));
    design.motion.Deltatheta = 1.0;
    design.motion.Shaft_speed = -18.0;
    script_.Expect(Warning("A compensating cam needs a positive shaft speed: time runs forward."));
    EXPECT_FALSE(Calc_Compensation(design, {}, result));
    design.motion.Shaft_speed = 18.0;
    const Expected_Box nothing =
        Warning("The inertia torque of this cam is zero or never changes its sign: there is nothing to compensate.");
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::V, i) = std::abs(Data(var::V, i));
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::A, i) = 0.0;
    script_.Expect(nothing);
    EXPECT_FALSE(Calc_Compensation(design, {}, result));
    for (int i = 0; i <= 360; ++i)
        design.results.CalcData(var::V, i) = 0.0;
    script_.Expect(nothing);
    EXPECT_FALSE(Calc_Compensation(design, {}, result));
    EXPECT_FALSE(design.flags.Calc_Abort);
}

TEST_F(Torque_Compensation, a_run_that_is_given_up_or_stopped_leaves_the_torques)
{
    Open("Double Dwell", 5);
    Compensation result;
    Compensation_Run run;
    run.max_steps = 50;
    script_.Expect({"\n\nDid not converge.  Took too many steps in the integration routine and has given up."});
    EXPECT_FALSE(Calc_Compensation(design, run, result));
    EXPECT_TRUE(design.flags.Calc_Abort);
    EXPECT_EQ(Data(var::Comp_Torque, 45), 0.0);
    run.max_steps = 20000;
    double share = 0.0;
    Long steps = 0;
    run.progress = [&](const Comp_Progress& progress) {
        EXPECT_GE(progress.share, share);
        EXPECT_GE(progress.steps, steps);
        EXPECT_EQ(progress.kind, Comp_Motion_Kind::fall);
        share = progress.share;
        steps = progress.steps;
        return share > 0.1;
    };
    EXPECT_FALSE(Calc_Compensation(design, run, result));
    EXPECT_TRUE(design.flags.Calc_Abort);
    EXPECT_NEAR(share, 0.1, 0.01);
    EXPECT_EQ(Data(var::Comp_Torque, 45), 0.0);
    run.progress = nullptr;
    EXPECT_TRUE(Calc_Compensation(design, run, result));
    EXPECT_FALSE(design.flags.Calc_Abort);
    EXPECT_NE(Data(var::Comp_Torque, 45), 0.0);
}

TEST_F(Torque_Compensation, a_train_without_mass_is_a_division_by_zero)
{
    Open("Double Dwell", 5);
    d().Comp_Mass = 0.0;
    Compensation result;
    script_.Expect(testing::Error_Box(division_by_zero, "Division by zero", "Calc_Compensation"));
    EXPECT_FALSE(Calc_Compensation(design, {}, result));
}

TEST_F(Torque_Compensation, an_accuracy_too_rough_is_told_where_it_misses_the_energy)
{
    Open("Double Dwell", 5);
    Compensation_Run run;
    run.eps = 100.0;
    run.start_step = 0.01;
    Host host = Installed_Host();
    std::vector<std::string> boxes;
    host.messenger = [&](const Message& box) {
        boxes.push_back(box.text);
        return Usual_Answer(box.buttons);
    };
    const Host before = Install_Host(host);
    Compensation c;
    EXPECT_TRUE(Calc_Compensation(design, run, c));
    Install_Host(before);
    EXPECT_GT(c.energy_error, 0.01);
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_NE(boxes[0].find("\nThe accuracy value is rough: try a smaller one first, and recalculate."),
              std::string::npos);
    EXPECT_EQ(boxes[1].find("The compensating motion misses its energy by "), 0U);
    EXPECT_NE(boxes[1].find(" %.\nTry a smaller accuracy value, and recalculate."), std::string::npos);
}

}  // namespace
}  // namespace lobemax
