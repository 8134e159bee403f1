// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/contact_stress.h"

#include <algorithm>
#include <span>
#include <string>

#include "core/design_state.h"
#include "core/lanes.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/traps.h"
#include "dynamics/stress_rows.h"

namespace lobemax {

namespace {

void Warn(const std::string& text)
{
    Show_Message(text, Buttons::OK, Symbol::exclamation);
}

/// A run over the points. Local values of the calculation are 32-bit numbers and live on from point to point: where one
/// cannot be found anew, that of the point before counts. A point that the kernels store has all of its own.
class Stress_Run {
public:
    Stress_Run(Design_State& design, int roller_type, const double (&youngs)[2], const double (&poissons)[2],
               double size)
        : design_(design), size_(size)
    {
        const auto compliance = [](double nu, double E) { return Single((1.0 - nu * nu) / E); };
        const Single cam = compliance(poissons[0], youngs[0]);
        const Single follower = compliance(poissons[1], youngs[1]);
        const Single m = follower + cam;
        const double R2 = design.cam.Follow_Rad;
        const bool flat = design.cam.Followtype == 2;
        const bool roller = design.cam.Followtype == 1;
        force_ = {.form_closed = design.cam.Closure == "Form",
                  .tells_of_none = design.cam.Closure == "Force" && design.dynamics.Model_Type != 1,
                  .weight = design.dynamics.Follower_Weight};
        line_ = {.m = m, .length = size_, .flat = flat, .R2 = R2};
        crowned_ = {
            .m = m, .R2 = R2, .R3 = size_, .D = R2 == 0.0 || size_ == 0.0 ? 0.0 : Rounded(1.0 / R2 - 1.0 / size_)};
        kind_ = flat                                          ? Kind::line
                : roller && roller_type == cylindrical_roller ? Kind::line
                : roller && roller_type == crowned_roller     ? Kind::crowned
                                                              : Kind::none;
    }

    /// @return whether no point ended the run
    bool All_Points()
    {
        const int last = design_.motion.Max_Data_Points_used;
        bool goes_on = true;
        if (!design_.flags.Dynamicflag || kind_ == Kind::none) {  // each point rests on the one before
            for (int i = 0; i <= last && goes_on; ++i)
                goes_on = Point(i);
            return goes_on;
        }
        Run_Points(
            static_cast<std::size_t>(std::max(last + 1, 0)),
            [&](std::size_t first, std::size_t count) { return goes_on ? By_Lanes(first, count) : count; },
            [&](std::size_t i) {
                Remember(static_cast<int>(i) - 1);
                goes_on = Point(static_cast<int>(i));
            });
        return goes_on;
    }

private:
    enum class Kind { none, line, crowned };

    /// Points first to count - 1 as the kernels do; those beyond the tables are left, to be refused.
    std::size_t By_Lanes(std::size_t first, std::size_t count) const
    {
        const Stress_Rows rows{.force = Bits(follower_force_),
                               .Phi = Bits(Phi_),
                               .Rho = Bits(Rho_),
                               .external = adds_external_ ? Bits(external_) : nullptr,
                               .sigma = Bits(data_.Points(var::Sigma_Max)),
                               .tau = Bits(data_.Points(var::Tau_Max))};
        const std::size_t within = std::min(adds_external_ ? external_.size() : count, std::min(count, Rho_.size()));
        if (first >= within)
            return first;
        const Stress_Kernels& kernels = Kernels_in_Use<Stress_Kernels>();
        return kind_ == Kind::line ? kernels.line(force_, line_, rows, first, within)
                                   : kernels.crowned(force_, crowned_, rows, first, within);
    }

    /// Makes the local values those of a point that a kernel has stored.
    void Remember(int i)
    {
        if (i >= 0 && i != worked_out_)
            Work_Out(i);
    }

    /// @return false when the run ends here
    bool Point(int i)
    {
        if (!Work_Out(i))
            return false;
        data_(var::Sigma_Max, i) = sigma_;
        data_(var::Tau_Max, i) = tau_;
        return true;
    }

    bool Work_Out(int i)
    {
        worked_out_ = i;
        theta_ = data_(var::Angle, i);
        if (!Find_Force(i))
            return false;
        const int followtype = design_.cam.Followtype;
        if (followtype == 2)
            return Flat_Face(i);
        return followtype != 1 || Roller(i);
    }

    std::string Angle() const { return In_Number_Format(design_, Shortest(theta_)); }

    bool Find_Force(int i)
    {
        const auto at = static_cast<std::size_t>(i);
        if (design_.flags.Dynamicflag)
            W_ = force_.Along_Normal(double{follower_force_[at]}, double{Phi_[at]}).value;
        W_ = force_.By_Closure(double{W_});
        if (adds_external_)
            W_ = W_ + design_.results.Ext_Force_Table(i);
        if (!force_.Presses(double{W_})) {
            Warn("Something is wrong. - The follower force is zero at cam angle " + Angle() +
                 " deg.  Stresses will be larger than theoretical due to impact.");
            return false;
        }
        W_ = force_.With_Weight(double{W_});
        return true;
    }

    bool Flat_Face(int i)
    {
        const Single R = line_.Radius(double{data_(var::Rho, i)});
        if (line_.No_Contact(double{R})) {
            Warn("Something is wrong. - The cam's radius of curvature is zero or negative at cam angle " + Angle() +
                 " deg.");
            return false;
        }
        Find_Half_Width(R, "flat follower");
        Find_Line_Stress(line_.Pressure(double{W_}, double{a_}));
        return true;
    }

    bool Roller(int i)
    {
        const Single R1 = line_.Radius(double{data_(var::Rho, i)});
        if (R1 == 0.0) {
            Warn("Something is wrong. - The radius of curvature of the cam is zero at cam angle " + Angle() +
                 " deg.  Stresses will be infinite there.");
            return false;
        }
        if (line_.R2 == 0.0) {
            Warn("Something is wrong. - The radius of the roller follower is zero");
            return false;
        }
        if (kind_ == Kind::line) {
            Find_Half_Width(R1, "cylindrical follower");
            Find_Line_Stress(a_ == 0.0 ? 0.0 : line_.Pressure(double{W_}, double{a_}));
            return true;
        }
        return kind_ != Kind::crowned || Crowned(R1);
    }

    bool Crowned(Single R1)
    {
        if (size_ == 0.0) {
            Warn("Something is wrong. - The crown radius of the roller follower is zero");
            return false;
        }
        const Single Sum = crowned_.Sum(double{R1});
        const Single q = crowned_.Diff_Squared(double{R1});
        if (q < 0.0)
            Warn("Attempting to take square root of negative number in Sub Stress for crowned follower");
        else
            Diff_ = crowned_.Diff(double{q});
        const Single theta = Arc_Cos(design_, Diff_ / Sum) * Deg_per_Rad;
        const Single c = Power(crowned_.Cube(double{W_}, double{Sum}), 1.0 / 3.0);
        const Single a = c * Ellipse_Ka(theta);
        const Single b = c * Ellipse_Kb(theta);
        const double area = a * PI * b;
        sigma_ = area == 0.0 ? 0.0 : -crowned_.Pressure(double{W_}, area);
        tau_ = sigma_ * formulas::ellipse_shear;
        return true;
    }

    /// Half-width of the contact strip; a negative radicand is told of and leaves that of the point before.
    void Find_Half_Width(Single R1, const char* follower)
    {
        const Single B = line_.B(double{R1});
        const Single q = line_.Width_Squared(double{B}, double{W_});
        if (q < 0.0)
            Warn(std::string("Attempting to take square root of negative number in Sub Stress for ") + follower);
        else
            a_ = line_.Half_Width(double{q});
    }

    void Find_Line_Stress(Single p_max)
    {
        sigma_ = -p_max;
        tau_ = sigma_ * formulas::line_shear;
    }

    Design_State& design_;
    Table<Single>& data_ = design_.results.CalcData;
    std::span<const Single> Phi_ = data_.Points(var::Phi);
    std::span<const Single> Rho_ = data_.Points(var::Rho);
    std::span<const Single> follower_force_ = data_.Points(design_.flags.Modelflag ? var::Dynamic_Force : var::Force);
    std::span<const Single> external_ = design_.results.Ext_Force_Table.Points();
    bool adds_external_ = design_.dynamics.Ext_Force_Add && design_.flags.Ext_Force_Calc;
    Single size_;
    formulas::Contact_Force force_;
    formulas::Line_Contact line_;
    formulas::Crowned_Contact crowned_;
    Kind kind_ = Kind::none;
    int worked_out_ = -1;
    Single theta_;
    Single W_;
    Single a_;
    Single Diff_;
    Single sigma_;
    Single tau_;
};

}  // namespace

double Ellipse_Ka(double theta)
{
    return formulas::ka_factor * Power(theta, formulas::ka_exponent);
}

double Ellipse_Kb(double theta)
{
    return formulas::Kb(theta);
}

bool Calc_Contact_Stress(Design_State& design, int roller_type, const double (&youngs)[2], const double (&poissons)[2],
                         double size)
{
    bool whole = true;
    const bool no_fault = Trap("Calc_Contact_Stress",
                               [&] { whole = Stress_Run(design, roller_type, youngs, poissons, size).All_Points(); });
    if (!no_fault)
        design.flags.Calc_Error = true;
    return no_fault && whole;
}

}  // namespace lobemax
