// SPDX-License-Identifier: GPL-3.0-or-later
/// One segment by boundary conditions on a fresh cycle, for the tests of conditions, polynomials and splines.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "core/startup.h"
#include "core/text.h"
#include "edit/door.h"
#include "motion/motion_programs.h"
#include "motion/polynomial.h"
#include "motion/segment_store.h"
#include "motion/segments.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax::bounds_design {

inline const std::string knot_limit =
    "This program can only handle cases with 17 or fewer interior knots.\n"
    "Increase the order of your spline to reduce the number of interior knots required.\n"
    "Alternatively, you may go back to the boundary condition form and add more boundary conditions which will reduce "
    "the number of interior knots for a given spline order.";

inline testing::Expected_Box Box(const std::string& text)
{
    return {text, Buttons::OK, Symbol::exclamation, Answer::OK};
}

inline Motion_Group& m()
{
    return design.motion;
}

inline double Data(int variable, int point)
{
    return design.results.CalcData(variable, point);
}

/// A cycle with arrays for the step, orders of 6 and even knots.
inline void Fresh_Cycle(double step, int time_base = 3, double omega = 1.0)
{
    design = {};
    Set_Max_Variables(design);
    m().Deltatheta = step;
    m().Max_Data_Points_used = To_Integer(360.0 / step);
    Dimension_Arrays(design, 53, m().Max_Data_Points_used);
    m().Time_Base = time_base;
    m().Shaft_speed = omega;
    Set_Omega_Powers(design);
    m().Orders.Fill(6);
    m().EvenKnots.Fill(true);
}

/// Segment 1, 'S' or 'P', with a beta in degrees and end positions as typed.
inline void Segment(char kind, double beta, const std::string& start, const std::string& end, int conditions)
{
    ASSERT_TRUE(Pick_Motion(design, 1, kind));
    ASSERT_TRUE(Put(design, "Beta_Deg", At(1), beta));
    ASSERT_TRUE(Put(design, "Start Value", At(1), start));
    ASSERT_TRUE(Put(design, "End Value", At(1), end));
    ASSERT_TRUE(Put(design, "No of conditions", At(1), std::to_string(conditions)));
}

inline void Inner_Condition(int row, double theta, int order, double value)
{
    m().T_boundary_cond(1, row) = Shortest(theta);
    Bound_Text(design, 1, row, order) = Shortest(value);
}

inline void Rest_at_Both_Ends(int orders)
{
    for (int order = 1; order <= orders; ++order)
        Bound_Text(design, 1, 0, order) = Bound_Text(design, 1, 9, order) = "0";
}

/// A rise of 100 degrees at rest at both ends, with four positions between: ten conditions.
inline void Ten_Conditions(char kind)
{
    Segment(kind, 100.0, "0", "1", 10);
    Rest_at_Both_Ends(2);
    Inner_Condition(1, 20, 0, 0.1);
    Inner_Condition(2, 40, 0, 0.3);
    Inner_Condition(3, 60, 0, 0.75);
    Inner_Condition(4, 80, 1, 0.5);
}

}  // namespace lobemax::bounds_design
