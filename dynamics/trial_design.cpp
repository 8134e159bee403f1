// SPDX-License-Identifier: GPL-3.0-or-later
#include "dynamics/trial_design.h"

namespace lobemax {

Design_State Trial_Design(const Design_State& design)
{
    Design_State trial;
    trial.identity = design.identity;
    trial.motion = design.motion;
    trial.cam = design.cam;
    trial.dynamics = design.dynamics;
    trial.linkage = design.linkage;
    trial.plot = design.plot;
    trial.flags = design.flags;
    trial.run = design.run;
    const Results_Group& from = design.results;
    Results_Group& to = trial.results;
    to.WhichUnit = from.WhichUnit;
    to.CalcData = from.CalcData;
    to.Profile_X = from.Profile_X;
    to.Profile_Y = from.Profile_Y;
    to.Ext_Force_Table = from.Ext_Force_Table;
    to.Arm_Pivot_X = from.Arm_Pivot_X;
    to.Arm_Pivot_Y = from.Arm_Pivot_Y;
    to.Link_Ratio_S = from.Link_Ratio_S;
    to.Link_Ratio_V = from.Link_Ratio_V;
    to.Link_Ratio_A = from.Link_Ratio_A;
    return trial;
}

}  // namespace lobemax
