// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/sizing.h"

#include <cmath>

#include "core/design_state.h"
#include "core/text.h"

namespace lobemax {

namespace {

constexpr double practically_infinite = 99999.0;

}  // namespace

void Phi_Extremes()
{
    Cam_Group& c = design.cam;
    const Table<Single>& data = design.results.CalcData;
    c.Phi_Max = 0.0;
    c.Phi_Max_Angle = 0.0;
    c.Phi_Min = 10000.0;
    c.Phi_Min_Angle = 0.0;
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i) {
        const Single phi = data(var::Phi, i);
        if (phi > c.Phi_Max) {
            c.Phi_Max = phi;
            c.Phi_Max_Angle = data(var::Angle, i);
        }
        if (phi < c.Phi_Min) {
            c.Phi_Min = phi;
            c.Phi_Min_Angle = data(var::Angle, i);
        }
    }
}

void Rho_Extremes()
{
    Cam_Group& c = design.cam;
    const Table<Single>& data = design.results.CalcData;
    const auto take = [](Single rho, Single theta, int decimals, Single& extreme, Single& angle, std::string& text) {
        extreme = rho;
        angle = theta;
        text = FNRoundStr(rho, decimals);
    };
    c.Rho_Max_Pos = c.Rho_Max_Neg = 0.0;
    c.Rho_Min_Pos = c.Rho_Min_Neg = 100000.0;
    c.Rho_Max_Pos_Angle = c.Rho_Min_Pos_Angle = c.Rho_Max_Neg_Angle = c.Rho_Min_Neg_Angle = 0.0;
    c.Rho_Max_Pos_Text = c.Rho_Min_Pos_Text = c.Rho_Max_Neg_Text = c.Rho_Min_Neg_Text = "None";
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i) {
        const Single rho = data(var::Rho, i);
        const Single theta = data(var::Angle, i);
        if (rho > 0.0) {
            if (rho > c.Rho_Max_Pos)
                take(rho, theta, 1, c.Rho_Max_Pos, c.Rho_Max_Pos_Angle, c.Rho_Max_Pos_Text);
            if (rho < c.Rho_Min_Pos)
                take(rho, theta, 2, c.Rho_Min_Pos, c.Rho_Min_Pos_Angle, c.Rho_Min_Pos_Text);
        } else {
            if (std::abs(rho) > std::abs(c.Rho_Max_Neg))
                take(rho, theta, 1, c.Rho_Max_Neg, c.Rho_Max_Neg_Angle, c.Rho_Max_Neg_Text);
            if (std::abs(rho) < std::abs(c.Rho_Min_Neg))
                take(rho, theta, 2, c.Rho_Min_Neg, c.Rho_Min_Neg_Angle, c.Rho_Min_Neg_Text);
        }
    }
    c.Rho_Smallest = std::abs(c.Rho_Min_Neg) < c.Rho_Min_Pos ? c.Rho_Min_Neg : c.Rho_Min_Pos;
    if (c.Rho_Max_Pos >= practically_infinite)
        c.Rho_Max_Pos_Text = "+ Infinity";
    if (std::abs(c.Rho_Max_Neg) >= practically_infinite)
        c.Rho_Max_Neg_Text = "- Infinity";
}

}  // namespace lobemax
