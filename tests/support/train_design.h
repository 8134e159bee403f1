// SPDX-License-Identifier: GPL-3.0-or-later
/// Follower trains and motions in closed form, for the tests of forces and vibrations.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "core/design_state.h"
#include "core/variables.h"
#include "tests/support/cam_design.h"
#include "tests/support/script.h"
#include "tests/support/test_design.h"

namespace lobemax::train_design {

using testing::Cam_Maker;
using testing::Data;
using testing::Expected_Box;
using testing::Script;

inline constexpr double pi = 3.14159265358979323846;  // what the closed forms use, never the program

inline Dynamics_Group& d()
{
    return design.dynamics;
}

inline Flags_Group& f()
{
    return design.flags;
}

inline std::vector<double> Row_of(int row)
{
    std::vector<double> values;
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i)
        values.push_back(Data(row, i));
    return values;
}

inline double Highest(const std::vector<double>& row)
{
    return *std::ranges::max_element(row);
}

inline double Lowest(const std::vector<double>& row)
{
    return *std::ranges::min_element(row);
}

inline double Range(const std::vector<double>& row)
{
    return Highest(row) - Lowest(row);
}

/// Rows 0 to 4 and 17 of the harmonic motion S = h (1 - cos theta) / 2 over the whole turn, as a time base stores them.
inline void Lay_Harmonic(int base, double h, double omega)
{
    Table<Single>& data = design.results.CalcData;
    constexpr double degree = pi / 180;
    for (int i = 0; i <= 360; ++i) {
        const double t = i * degree;
        const double rows[]{h * (1 - std::cos(t)) / 2, h * std::sin(t) / 2, h * std::cos(t) / 2, -h * std::sin(t) / 2,
                            -h * std::cos(t) / 2};
        const int at[]{var::S, var::V, var::A, var::J, var::Ping};
        data(var::Angle, i) = i;
        for (std::size_t n = 0; n < 5; ++n) {
            const double per_second = std::pow(omega, static_cast<double>(n)) / (n >= 3 ? 1000.0 : 1.0);
            const double scale = n == 0 ? 1.0 : base == 1 ? per_second : base == 2 ? degree : 1.0;
            data(at[n], i) = rows[n] * scale;
        }
    }
}

/// Springs in N/m and masses in kg of the models, as the tests set them.
struct Values {
    double m1 = 1.5, m2 = 2.5, k1 = 300000.0, k2 = 500000.0, z1 = 0.04, z2 = 0.07, preload = 1e6;
};

inline void Use(const Values& v)
{
    d().Mass_m(1) = v.m1;
    d().Mass_m(2) = v.m2;
    d().Kspring(1) = v.k1;
    d().Kspring(2) = v.k2;
    d().Zeta(1) = v.z1;
    d().Zeta(2) = v.z2;
    d().Preload = v.preload;
    d().Mass = v.m1;
}

inline Expected_Box Separation_Box(const std::string& angle, Answer answer)
{
    return {"The cam and follower have separated at Theta =  " + angle +
                " deg\n"
                "\n"
                "Choose ABORT to terminate further calculations beyond the current position\n"
                "\n"
                "Choose RETRY to continue calculating and pause at any other problem positions, redisplaying this "
                "message.\n"
                "\n"
                "Choose IGNORE to continue calculating and skip over other problem positions, suppressing further "
                "messages\n"
                "\n"
                "To fix the problem, try increasing the cam-closure spring rate, the preload, or both, and "
                "recalculate.",
            Buttons::Abort_Retry_Ignore, Symbol::exclamation, answer};
}

}  // namespace lobemax::train_design
