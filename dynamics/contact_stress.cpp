// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/contact_stress.h"

#include <cmath>
#include <string>

#include "core/design_state.h"
#include "core/messages.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/traps.h"

namespace lobemax {

namespace {

constexpr double line_shear = -0.304;
constexpr double ellipse_shear = -0.34;

void Warn(const std::string& text)
{
    Show_Message(text, Buttons::OK, Symbol::exclamation);
}

/// A run over the points. Local values of the calculation are 32-bit numbers and live on from point to point: where one
/// cannot be found anew, that of the point before counts.
class Stress_Run {
public:
    Stress_Run(Design_State& design, int roller_type, const double (&youngs)[2], const double (&poissons)[2],
               double size)
        : design_(design), roller_type_(roller_type), size_(size)
    {
        const auto compliance = [](double nu, double E) { return Single((1.0 - nu * nu) / E); };
        const Single cam = compliance(poissons[0], youngs[0]);
        const Single follower = compliance(poissons[1], youngs[1]);
        m_ = follower + cam;
    }

    /// @return false when the run ends here
    bool Point(int i)
    {
        theta_ = data_(var::Angle, i);
        if (!Find_Force(i))
            return false;
        const int followtype = design_.cam.Followtype;
        if (followtype == 2 && !Flat_Face(i))
            return false;
        if (followtype == 1 && !Roller(i))
            return false;
        data_(var::Sigma_Max, i) = sigma_;
        data_(var::Tau_Max, i) = tau_;
        return true;
    }

private:
    std::string Angle() const { return In_Number_Format(design_, Shortest(theta_)); }

    bool Find_Force(int i)
    {
        const Flags_Group& f = design_.flags;
        const Dynamics_Group& d = design_.dynamics;
        if (f.Dynamicflag) {
            const Single phi = data_(var::Phi, i) * Rad_per_Deg;
            W_ = data_(f.Modelflag ? var::Dynamic_Force : var::Force, i) / std::cos(phi);
        }
        if (design_.cam.Closure == "Form")
            W_ = std::abs(W_);
        if (d.Ext_Force_Add && f.Ext_Force_Calc)
            W_ = W_ + design_.results.Ext_Force_Table(i);
        if (design_.cam.Closure == "Force" && d.Model_Type != 1 && W_ <= 0.0) {
            Warn("Something is wrong. - The follower force is zero at cam angle " + Angle() +
                 " deg.  Stresses will be larger than theoretical due to impact.");
            return false;
        }
        W_ = d.Follower_Weight + W_;
        return true;
    }

    bool Flat_Face(int i)
    {
        const Single R = data_(var::Rho, i);
        if (R <= 0.0) {
            Warn("Something is wrong. - The cam's radius of curvature is zero or negative at cam angle " + Angle() +
                 " deg.");
            return false;
        }
        const Single B = 1.0 / R * 0.5;
        Find_Half_Width(B, "flat follower");
        p_max_ = (W_ + W_) / (a_ * PI * size_);
        Line_Contact();
        return true;
    }

    bool Roller(int i)
    {
        const Single R1 =
            data_(var::Rho, i) - design_.cam.Follow_Rad;  // of the surface, not of the roller centre's path
        const Single R2 = design_.cam.Follow_Rad;
        if (R1 == 0.0) {
            Warn("Something is wrong. - The radius of curvature of the cam is zero at cam angle " + Angle() +
                 " deg.  Stresses will be infinite there.");
            return false;
        }
        if (R2 == 0.0) {
            Warn("Something is wrong. - The radius of the roller follower is zero");
            return false;
        }
        if (roller_type_ == cylindrical_roller) {
            const Single B = (1.0 / R2 + 1.0 / R1) * 0.5;
            Find_Half_Width(B, "cylindrical follower");
            p_max_ = a_ == 0.0 ? 0.0 : (W_ + W_) / (a_ * PI * size_);
            Line_Contact();
            return true;
        }
        return roller_type_ != crowned_roller || Crowned(R1, R2);
    }

    bool Crowned(Single R1, Single R2)
    {
        const Single R3 = size_;
        if (R3 == 0.0) {
            Warn("Something is wrong. - The crown radius of the roller follower is zero");
            return false;
        }
        const Single Sum = (1.0 / R2 + 1.0 / R1 + 1.0 / R3) * 0.5;
        const Single D = 1.0 / R2 - 1.0 / R3;
        const Single q = 1.0 / (R1 * R1) + D * D + D * (1.0 / R1) + D * (1.0 / R1);
        if (q < 0.0)
            Warn("Attempting to take square root of negative number in Sub Stress for crowned follower");
        else
            Diff_ = std::sqrt(q) * 0.5;
        const Single theta = Arc_Cos(design_, Diff_ / Sum) * Deg_per_Rad;
        const Single c = Power(std::abs(W_) * 3.0 * m_ / (Sum * 4.0), 1.0 / 3.0);
        const Single a = c * Ellipse_Ka(theta);
        const Single b = c * Ellipse_Kb(theta);
        const double area = a * PI * b;
        if (area == 0.0) {
            sigma_ = 0.0;
        } else {
            p_max_ = W_ * 1.5 / area;
            sigma_ = -p_max_;
        }
        tau_ = sigma_ * ellipse_shear;
        return true;
    }

    /// Half-width of the contact strip; a negative radicand is told of and leaves that of the point before.
    void Find_Half_Width(double B, const char* follower)
    {
        const Single q = m_ * (2.0 / PI) / B * W_ / size_;
        if (q < 0.0)
            Warn(std::string("Attempting to take square root of negative number in Sub Stress for ") + follower);
        else
            a_ = std::sqrt(q);
    }

    void Line_Contact()
    {
        sigma_ = -p_max_;
        tau_ = sigma_ * line_shear;
    }

    Design_State& design_;
    Table<Single>& data_ = design_.results.CalcData;
    int roller_type_;
    Single size_;
    Single m_;
    Single theta_;
    Single W_;
    Single a_;
    Single Diff_;
    Single p_max_;
    Single sigma_;
    Single tau_;
};

}  // namespace

double Ellipse_Ka(double theta)
{
    return 50.192 * Power(theta, -0.86215);
}

double Ellipse_Kb(double theta)
{
    const double t2 = theta * theta;
    const double t3 = t2 * theta;
    return 1.1469e-8 * t3 * t2 - 3.6649e-11 * t3 * t3 - 1.4119e-6 * t2 * t2 + 8.7039e-5 * t3 - 0.0028054 * t2 +
           0.051792 * theta + 0.0012181;
}

bool Calc_Contact_Stress(Design_State& design, int roller_type, const double (&youngs)[2], const double (&poissons)[2],
                         double size)
{
    bool whole = true;
    const bool no_fault = Trap("Calc_Contact_Stress", [&] {
        Stress_Run run(design, roller_type, youngs, poissons, size);
        for (int i = 0; i <= design.motion.Max_Data_Points_used && whole; ++i)
            whole = run.Point(i);
    });
    if (!no_fault)
        design.flags.Calc_Error = true;
    return no_fault && whole;
}

}  // namespace lobemax
