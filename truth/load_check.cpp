// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>

#include "core/ladder.h"
#include "core/units.h"
#include "truth/check_parts.h"

namespace lobemax {

namespace {

class Load_Check {
public:
    Load_Check(Check_Work& work, const True_Design& truth) : work_(work), truth_(truth), design_(work.design) {}

    void Run()
    {
        if (Holds(design_, Mark::forces)) {
            Check_Contact();
            Check_Torque();
            Check_Row_of_Force();
            Tell_Units_of_Torque();
        }
        if (Holds(design_, Mark::stress) && !truth_.contact.sigma.empty())
            Check_Stress();
    }

private:
    const True_Motion* Motion() const { return &truth_.cam.Motion(); }

    Finding& Add(std::string_view code, std::string name, Severity severity, Finding_Place place, int at)
    {
        Finding& f = work_.Add(code, std::move(name), severity, place);
        if (at >= 0)
            Check_Work::Put_Angle(f, work_.Angle(at), Motion());
        return f;
    }

    void Check_Contact()
    {
        const std::vector<double>& force = truth_.contact.force;
        if (force.empty() || design_.cam.Closure != "Force")
            return;
        const int least = static_cast<int>(std::ranges::min_element(force) - force.begin());
        const double smallest = force[static_cast<std::size_t>(least)];
        const std::string unit = Words_of_Units(design_.identity.WhichUnit).force;
        if (smallest <= 0.0) {
            Finding& f = Add("separation", "Follower leaves the cam", Severity::warning, Finding_Place::forces, least);
            f.truth = smallest;
            f.unit = unit;
            f.stretch = work_.Stretches([&](int i) { return force[static_cast<std::size_t>(i)] <= 0.0; });
            f.sentence = "The contact force falls to " + work_.In(smallest, unit) + " " + work_.At(work_.Angle(least)) +
                         ": the follower leaves the cam.";
            f.advice = "Take a stiffer spring, more preload, less mass or less speed.";
        }
        if (Finding* const f =
                work_.Hold_Against(Limit::Contact_Force, smallest, least, Finding_Place::forces, Motion()))
            f->advice = "Take a stiffer spring, more preload, less mass or less speed.";
    }

    void Check_Torque()
    {
        int largest = 0;
        for (int i = 0; i <= work_.Last(); ++i)
            if (std::abs(work_.Row(var::Torque, i)) > std::abs(work_.Row(var::Torque, largest)))
                largest = i;
        if (Finding* const f = work_.Hold_Against(Limit::Torque, std::abs(work_.Row(var::Torque, largest)), largest,
                                                  Finding_Place::forces, Motion()))
            f->advice = "Look at the peak's cause on the plot of force and torque: spring, mass or speed.";
    }

    /// The rows of force beside what spring, damper and mass in the fields make of the motion: docs/theory.md, (108).
    void Check_Row_of_Force()
    {
        constexpr double same = 0.002;  // of the range
        if (design_.flags.Polydyne_Calc || design_.flags.CompCam_Calc || !truth_.cam.Motion().Odd_Segments().empty())
            return;
        const Dynamics_Group& d = design_.dynamics;
        const double length = (design_.cam.Translating ? 1.0 : double{design_.cam.ArmRad}) / Length_Divisor(design_);
        const double omega = design_.motion.Shaft_speed;
        const auto least = std::ranges::min(truth_.motion, {}, &Follower_Point::s).s;
        double low = 1e300;
        double high = -1e300;
        double off = 0.0;
        int at = 0;
        for (int i = 0; i < work_.Last(); ++i) {  // the last point is the first again
            const Follower_Point& p = truth_.motion[static_cast<std::size_t>(i)];
            const double force = d.Return_Spring_Rate * (p.s - least) * length + d.Preload +
                                 d.Damping * omega * p.v * length + d.Mass * omega * omega * p.a * length;
            low = std::min(low, force);
            high = std::max(high, force);
            const double difference = std::abs(work_.Row(var::Force, i) - force);
            if (difference > off) {
                off = difference;
                at = i;
                force_ = force;
            }
        }
        if (off <= same * std::max(high - low, std::abs(high)))
            return;
        Finding& f =
            Add("stale_forces", "Forces are not those of the fields", Severity::warning, Finding_Place::forces, at);
        f.row = work_.Row(var::Force, at);
        f.truth = force_;
        f.unit = Words_of_Units(design_.identity.WhichUnit).force;
        f.sentence = "The row of force has " + work_.Number(*f.row) + " " + work_.At(work_.Angle(at)) +
                     " where mass, spring, preload and damping as they stand give " + work_.In(force_, f.unit) + ".";
        f.advice = "Calculate the forces anew; those of a file may belong to another spring than the one it shows.";
    }

    void Tell_Units_of_Torque()
    {
        const int code = design_.identity.WhichUnit;
        if (code < 4)
            return;
        const std::string label = Unit_Text(design_, code, Unit_Kind::torque);
        Finding& f = Add("torque_unit", "Unit of torque", Severity::note, Finding_Place::forces, -1);
        f.unit = "N-m";
        f.sentence = "Torques are in N-m, though their label says " + label + ".";
        f.advice = "Read every figure and plot of torque in N-m.";
    }

    void Check_Stress()
    {
        constexpr double same = 0.02;
        const std::vector<double>& sigma = truth_.contact.sigma;
        const int peak = static_cast<int>(std::ranges::min_element(sigma) - sigma.begin());
        const double largest = std::abs(sigma[static_cast<std::size_t>(peak)]);
        const std::string unit = Unit_of_True_Stress(design_);
        int row_peak = 0;
        for (int i = 0; i <= work_.Last(); ++i)
            if (std::abs(work_.Row(var::Sigma_Max, i)) > std::abs(work_.Row(var::Sigma_Max, row_peak)))
                row_peak = i;
        const double row = std::abs(work_.Row(var::Sigma_Max, row_peak)) * Stress_Row_Factor(design_);
        const double off = largest > 0.0 ? (row - largest) / largest : 0.0;
        if (std::abs(off) > same) {
            Finding& f = Add("stress_row", "Contact stress", off < 0.0 ? Severity::warning : Severity::note,
                             Finding_Place::stress, peak);
            f.row = row;
            f.truth = largest;
            f.unit = unit;
            f.sentence = "The largest contact stress is " + work_.In(largest, unit) + " " +
                         work_.At(work_.Angle(peak)) + " by the true curvature; the row's largest is " +
                         work_.In(row, unit) + " " + work_.At(work_.Angle(row_peak)) + ".";
            f.advice = "Take the larger of the two for the choice of material.";
        }
        const int code = design_.identity.WhichUnit;
        if (code == 4 || code == 2) {
            Finding& f = Add("stress_unit", "Unit of stress", code == 4 ? Severity::warning : Severity::note,
                             Finding_Place::stress, -1);
            f.unit = unit;
            f.sentence = code == 4
                             ? "In centimetres the row of stress is in no usual unit: with a modulus in MPa it is "
                               "a tenth of an MPa, with one in N/cm^2 it is N/cm^2."
                             : "Stresses are in psi, though their label says psf: the modulus of steel stands for "
                               "square inches.";
            f.advice = "Read the true stress beside it, which is in " + unit + ".";
        }
        if (Finding* const f = work_.Hold_Against(Limit::Sigma, largest, peak, Finding_Place::stress, Motion())) {
            const double bound = *f->limit;
            f->row = row;
            f->stretch = work_.Stretches([&](int i) { return std::abs(sigma[static_cast<std::size_t>(i)]) > bound; });
            f->advice = "Take a longer or larger roller, a larger prime radius, or less spring.";
        }
    }

    Check_Work& work_;
    const True_Design& truth_;
    const Design_State& design_;
    double force_ = 0.0;
};

}  // namespace

void Check_Loads(Check_Work& work, const True_Design& truth)
{
    Load_Check(work, truth).Run();
}

}  // namespace lobemax
