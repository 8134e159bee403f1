// SPDX-License-Identifier: GPL-3.0-or-later
/// Calculated designs for the tests of cam geometry, forces and exports.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "core/startup.h"
#include "core/units.h"
#include "motion/motion_programs.h"
#include "motion/segments.h"
#include "tests/support/test_design.h"

namespace lobemax::testing {

/// A started design in mm: rise, dwell, fall, dwell by the 4-5-6-7 polynomial, calculated.
struct Cam_Maker {
    double lift = 20.0;  // mm, or degrees of an arm
    int time_base = 1;
    double step = 1.0;
    double omega = 12.0;  // rad/s
    bool translating = true;

    void Make() const
    {
        ASSERT_TRUE(Sub_Main(design, "", {}));
        Set_Time_Base(design, time_base);
        if (step != 1.0) {
            ASSERT_TRUE(Set_Step(design, step));
        }
        design.cam.Translating = translating;
        Set_Shaft_Speed(design, omega);
        Segment(1, 'R', "67", 110, 0, lift);
        Segment(2, 'D', "DW", 60, lift, lift);
        Segment(3, 'F', "67", 120, lift, 0);
        Segment(4, 'D', "DW", 70, 0, 0);
        Update_Segment_Angles(design);
        ASSERT_TRUE(Calc_All(design, true));
        ASSERT_TRUE(Motion_Done(design));
        Cam_Group& c = design.cam;
        c.Camtype = "Radial";
        c.Followtype = 1;
        c.Prime_Rad = 60.0;
        c.Follow_Rad = 12.0;
        c.Cutter_Radius = 8.0;
        if (!translating) {
            c.ArmX = 90.0;
            c.ArmY = 30.0;
            c.ArmRad = 80.0;
            c.ArmDirect = 1;
        }
        Set_Units(design);
    }

private:
    static void Segment(int i, char kind, const char* program, double beta, double from, double to)
    {
        Motion_Group& m = design.motion;
        m.No_of_segments = i;
        Pick_Motion(design, i, kind);
        Pick_Program(design, i, program);
        m.Beta_Deg(i) = beta;
        m.Beta_Rad(i) = beta / Deg_per_Rad;
        m.Start_Value(i) = std::to_string(from);
        m.End_Value(i) = std::to_string(to);
    }
};

/// Elements of the calculated table, in double.
inline double Data(int variable, int i)
{
    return design.results.CalcData(variable, i);
}

}  // namespace lobemax::testing
