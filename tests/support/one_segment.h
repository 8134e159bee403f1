// SPDX-License-Identifier: GPL-3.0-or-later
/// One segment of a fresh cycle, run by its law, for the tests of the motion programs, the laws and the store.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/messages.h"
#include "core/traps.h"
#include "motion/motion_programs.h"
#include "motion/segment_store.h"
#include "tests/support/test_design.h"

namespace lobemax::one_segment {

inline constexpr double true_pi = 3.14159265358979323846;  // what the derivations below use, never the laws

inline Motion_Group& m()
{
    return design.motion;
}

inline double Data(int variable, int point)
{
    return design.results.CalcData(variable, point);
}

/// A fresh cycle with the arrays for the step, time base per radian.
inline void Fresh_Cycle(double step)
{
    design = {};
    Set_Max_Variables(design);
    m().Deltatheta = step;
    m().Max_Data_Points_used = To_Integer(360.0 / step);
    Dimension_Arrays(design, 53, m().Max_Data_Points_used);
    m().Time_Base = 3;
}

/// Segment 1 of the cycle, starting at 0 degrees and at position 0.
inline void One_Segment(char kind, std::string_view code, double L, double beta, double step = 0.125)
{
    Fresh_Cycle(step);
    Pick_Motion(design, 1, kind);
    ASSERT_TRUE(Pick_Program(design, 1, code));
    m().Beta_Deg(1) = beta;
    m().Beta_Rad(1) = beta / Deg_per_Rad;
    m().Gamma(1) = beta;
    m().Total_Displacement(1) = L;
    m().Lift = L;
}

/// As One_Segment, with lift 1 and one radian of duration for the derivatives: a law's own numbers remain.
inline void Unit_Segment(char kind, std::string_view code, double beta, double step = 0.125)
{
    One_Segment(kind, code, 1.0, beta, step);
    m().Beta_Rad(1) = 1.0;
}

/// Runs segment 1 under the trap of the caller that the laws without a name of their own report to.
inline bool Calculate()
{
    bool all_well = false;
    Trap("cmd_CalcSeg_Click", [&] { all_well = Run_Motion_Program(design, 1); });
    return all_well;
}

inline int Last_Point()
{
    return To_Integer(m().Beta_Deg(1) / m().Deltatheta);
}

/// The largest absolute value of a variable over points 0..Last_Point.
inline double Largest(int variable)
{
    double largest = 0.0;
    for (int i = 0; i <= Last_Point(); ++i)
        largest = std::max(largest, std::abs(Data(variable, i)));
    return largest;
}

/// Collects the message boxes; a box that a test did not ask for fails it.
class Motion_Programs_Fixture {
public:
    Motion_Programs_Fixture()
    {
        Host host;
        host.messenger = [this](const Message& box) {
            boxes.push_back(box.text);
            return Answer::OK;
        };
        previous_ = Install_Host(std::move(host));
        Fresh_Cycle(1.0);
    }
    ~Motion_Programs_Fixture()
    {
        for (const std::string& text : boxes)
            ADD_FAILURE() << "unexpected box: " << text;
        Install_Host(std::move(previous_));
        design = {};
    }
    Motion_Programs_Fixture(const Motion_Programs_Fixture&) = delete;
    Motion_Programs_Fixture& operator=(const Motion_Programs_Fixture&) = delete;

    std::vector<std::string> Taken_Boxes() { return std::exchange(boxes, {}); }

private:
    std::vector<std::string> boxes;
    Host previous_;
};

}  // namespace lobemax::one_segment
