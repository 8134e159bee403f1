// SPDX-License-Identifier: GPL-3.0-or-later
/// Designs with a linkage, for its tests.
#pragma once

#include <gtest/gtest.h>

#include <complex>
#include <string>

#include "edit/door.h"
#include "linkage/linkage_kinematics.h"
#include "tests/support/cam_design.h"
#include "tests/support/test_design.h"

namespace lobemax::testing {

using Vector = std::complex<double>;

/// A kind of train, as a test's parameter.
struct Kind_of_Train {
    int type = 0;
    const char* stage = "";  // "W", "S"
    int assembly1 = -1;
    int assembly2 = -1;

    std::string Name() const
    {
        const char* const names[]{"Fourbar", "Sixbar", "Fourslide", "Sixslide"};
        return std::string(names[type]) + stage + (assembly1 < 0 ? "_open" : "_crossed") +
               (assembly2 < 0 ? "_open" : "_crossed");
    }
};

inline const std::vector<Kind_of_Train>& All_Trains()
{
    static const std::vector<Kind_of_Train> all = [] {
        std::vector<Kind_of_Train> kinds;
        for (const int one : {-1, 1})
            for (const int two : {-1, 1})
                for (const auto& [type, stage] :
                     {std::pair{0, ""}, std::pair{1, "W"}, std::pair{1, "S"}, std::pair{2, ""}, std::pair{3, ""}})
                    if (two == -1 || type % 2 == 1)
                        kinds.push_back({type, stage, one, two});
        return kinds;
    }();
    return all;
}

inline std::vector<Kind_of_Train> Six_Link_Trains()
{
    std::vector<Kind_of_Train> six;
    for (const Kind_of_Train& kind : All_Trains())
        if (kind.type % 2 == 1)
            six.push_back(kind);
    return six;
}

/// Links of the fixture's arm, mm: every train of All_Trains connects at each point of 20 degrees of swing, none in a
/// dead centre.
inline void Put_Train(const Kind_of_Train& kind)
{
    const auto put = [](const char* field, double value) {
        const Verdict verdict = Put(design, field, value);
        ASSERT_TRUE(verdict) << field << ": " << verdict.sentence;
    };
    put("Linkage_Type", kind.type);
    if (*kind.stage != '\0') {
        ASSERT_TRUE(Put(design, "Stage_Mode", std::string(kind.stage)));
    }
    put("Assemflag1", kind.assembly1);
    put("Assemflag2", kind.assembly2);
    put("O4x", 230);
    put("O4y", 55);
    put("Link 2", 80);
    put("Link 3", 150);
    put("Link 4", 100);
    put("Link 4a", kind.stage[0] == 'S' ? 90 : 95);
    put("Delta2", 70);
    put("Delta4", 25);
    if (kind.type == 1) {
        put("O6x", 360);
        put("O6y", 60);
        put("Link 5", 170);
        put("Link 6", 150);
    }
    if (kind.type == 2) {
        put("S3x", 250);
        put("S3y", 60);
        put("Global_Slider_angle_deg", 12);
    }
    if (kind.type == 3) {
        put("Link 5", 190);
        put("Offset6", -30);
        put("Global_Slider_angle_deg", 170);
    }
}

/// A calculated motion of an arm in mm, with a train that hangs on it.
inline void Make_Train(const Kind_of_Train& kind, int time_base = 1, int direction = 1)
{
    Cam_Maker maker;
    maker.translating = false;
    maker.time_base = time_base;
    maker.Make();
    design.cam.ArmDirect = direction;
    Put_Train(kind);
}

inline Vector Turned(double length, double degrees)
{
    return std::polar(length, degrees * 3.14159265358979323846 / 180.0);
}

}  // namespace lobemax::testing
