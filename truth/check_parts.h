// SPDX-License-Identifier: GPL-3.0-or-later
/// The parts of a check, each of which looks at one rung of the ladder, and what they share. For check.cpp alone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/design_state.h"
#include "core/variables.h"
#include "truth/check.h"

namespace lobemax {

/// The cam angle of a stored point, degrees.
double Angle_of_Point(const Design_State& design, int i);

/// A design while it is being checked.
class Check_Work {
public:
    Check_Work(const Design_State& checked, const Limits& within, std::vector<Finding>& found)
        : design(checked), limits(within), findings(found)
    {
    }

    const Design_State& design;
    const Limits& limits;
    std::vector<Finding>& findings;

    int Last() const { return design.motion.Max_Data_Points_used; }
    double Row(int variable, int i) const { return design.results.CalcData(variable, i); }
    /// Of a stored point, degrees: by the step, since a file's own row of angles may hold anything.
    double Angle(int i) const { return Angle_of_Point(design, i); }

    Finding& Add(std::string_view code, std::string name, Severity severity, Finding_Place place);
    /// A limit that is broken: value and limit in the limit's unit. @return none where it is kept or off
    Finding* Hold_Against(Limit limit, double value, int point, Finding_Place place, const True_Motion* motion);

    /// A number in so many figures, and its unit.
    std::string Number(double value, int figures = 4) const;
    std::string In(double value, const std::string& unit, int figures = 4) const;
    std::string Length(double value, int figures = 4) const;
    std::string Position(double value, int figures = 4) const;  // of the follower
    std::string At(double angle) const;                         // "at 221.25 deg"
    std::string Length_Unit() const;
    std::string Position_Unit() const;

    /// The place of a finding: within the turn, whatever a file says.
    static void Put_Angle(Finding& finding, double angle, const True_Motion* motion);
    /// The stretches of the cycle where a condition holds at the stored points.
    template <class Holds>
    std::vector<Stretch> Stretches(Holds holds) const
    {
        std::vector<Stretch> found;
        const int last = Last();
        bool open = false;
        for (int i = 0; i <= last; ++i) {
            if (holds(i)) {
                if (!open)
                    found.push_back({Angle(i), Angle(i)});
                found.back().to = Angle(i);
                open = true;
            } else {
                open = false;
            }
        }
        return Joined_at_Turn(std::move(found));
    }

private:
    std::vector<Stretch> Joined_at_Turn(std::vector<Stretch> found) const;
};

/// Continuity, closure, laws whose derivatives are not their displacement's, rows that are not the table's, limits of
/// motion.
void Check_Motion(Check_Work& work, const True_Motion& motion, const std::vector<Follower_Point>& points);

/// Geometry: undercut and its kin, rows of pressure angle, curvature and profile, chords, sizes.
void Check_Geometry(Check_Work& work, const True_Design& truth);

/// Forces, torque and stress: their limits, their units, rows that are not the fields'.
void Check_Loads(Check_Work& work, const True_Design& truth);

}  // namespace lobemax
