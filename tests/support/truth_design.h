// SPDX-License-Identifier: GPL-3.0-or-later
/// Sized cams of every configuration, for the tests of the true geometry.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "edit/rungs.h"
#include "tests/support/cam_design.h"

namespace lobemax::testing {

/// A rise-dwell-fall-dwell by the 4-5-6-7 polynomial over a cam of some 60 mm, in one of the configurations.
struct Truth_Maker {
    const char* Camtype = "Radial";
    bool arm = false;
    bool flat = false;
    int rot = -1;
    int dir = 1;
    int In_Out = -1;
    int Top_Bot = 1;
    double offset = 0.0;
    double ArmX = 90.0;
    double ArmY = 30.0;
    double ArmRad = 80.0;
    double lift = 20.0;  // mm or degrees
    double step = 0.5;
    int time_base = 1;

    /// Makes the design and sizes it.
    void Make() const
    {
        ASSERT_NO_FATAL_FAILURE(
            (Cam_Maker{.lift = lift, .time_base = time_base, .step = step, .translating = !arm}.Make()));
        Cam_Group& c = design.cam;
        c.Camtype = Camtype;
        c.Barrel_Type = std::string(Camtype) == "Barrel" ? "Grooved" : "";
        c.Followtype = flat ? 2 : 1;
        c.Rotflag = rot;
        c.ArmDirect = dir;
        c.In_Out = In_Out;
        c.Top_Bot = Top_Bot;
        c.Offset = offset;
        if (arm) {
            c.ArmX = ArmX;
            c.ArmY = ArmY;
            c.ArmRad = ArmRad;
        }
        Set_Units(design);
        ASSERT_TRUE(Run_Size(design));
    }
    std::string Name() const
    {
        return std::string(Camtype) + (arm ? " arm" : "") + (flat ? " flat" : "") + " rot " + std::to_string(rot) +
               " dir " + std::to_string(dir) + " In_Out " + std::to_string(In_Out) + " Top_Bot " +
               std::to_string(Top_Bot) + " offset " + std::to_string(offset) + " ArmX " + std::to_string(ArmX);
    }
};

/// A motion of segments in place of the maker's.
struct Typed_Row {
    char kind;
    const char* program;
    double beta;
    double from;
    double to;
};

inline void Put_Segments(const std::vector<Typed_Row>& rows)
{
    int i = 0;
    for (const Typed_Row& row : rows) {
        design.motion.No_of_segments = ++i;
        Pick_Motion(design, i, row.kind);
        Pick_Program(design, i, row.program);
        design.motion.Beta_Deg(i) = row.beta;
        design.motion.Beta_Rad(i) = row.beta / Deg_per_Rad;
        design.motion.Start_Value(i) = std::to_string(row.from);
        design.motion.End_Value(i) = std::to_string(row.to);
    }
    Update_Segment_Angles(design);
    ASSERT_TRUE(Calc_All(design, true));
    ASSERT_TRUE(Motion_Done(design));
}

/// Every configuration: both senses of cam and arm, both surfaces, offsets.
inline std::vector<Truth_Maker> Every_Configuration()
{
    std::vector<Truth_Maker> all;
    for (const int rot : {-1, 1}) {
        for (const int In_Out : {-1, 1})
            for (const double offset : {0.0, 7.0, -7.0})
                all.push_back({.rot = rot, .In_Out = In_Out, .offset = offset});
        all.push_back({.flat = true, .rot = rot});
        for (const int dir : {-1, 1}) {
            for (const int In_Out : {-1, 1})
                all.push_back({.arm = true, .rot = rot, .dir = dir, .In_Out = In_Out});
            for (const double offset : {0.0, 5.0})
                all.push_back(
                    {.arm = true, .flat = true, .rot = rot, .dir = dir, .offset = offset, .ArmX = 110.0, .lift = 6.0});
        }
        for (const char* const body : {"Barrel", "Linear"}) {
            for (const int Top_Bot : {-1, 1}) {
                all.push_back({.Camtype = body, .rot = rot, .Top_Bot = Top_Bot});
                for (const int dir : {-1, 1})
                    for (const double ArmX : {-100.0, 100.0})
                        all.push_back({.Camtype = body,
                                       .arm = true,
                                       .rot = rot,
                                       .dir = dir,
                                       .Top_Bot = Top_Bot,
                                       .ArmX = ArmX,
                                       .ArmY = 0.0,
                                       .ArmRad = 100.0});
            }
        }
    }
    return all;
}

}  // namespace lobemax::testing
