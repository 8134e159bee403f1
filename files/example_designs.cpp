// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/example_designs.h"

#include "camgeom/profile.h"
#include "camgeom/sizing.h"
#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "dynamics/kinetostatics.h"
#include "edit/examples.h"
#include "edit/unsaved.h"

namespace lobemax {

namespace {

/// Pressure angle and curvature first, the profile once at the end.
void Size_Example(Design_State& design)
{
    Flags_Group& f = design.flags;
    f.Math_Error = f.Calc_Error = false;
    f.Skip_Profile = true;
    Calc_Phi(design, design.cam.Followtype);
    if (!f.Calc_Error)
        Calc_Rho(design, design.cam.Followtype);
    f.Skip_Profile = false;
    if (!f.Calc_Error)
        Cam_Profile(design);
    if (!f.Calc_Error && !f.Math_Error)
        Reach(design, Mark::size);
}

}  // namespace

bool Example_Done(Design_State& design)
{
    Flags_Group& f = design.flags;
    if (!Calculate_Example(design))
        return false;
    Size_Example(design);
    if (f.Sized)
        Calc_Force_Torque(design);
    Mark_Saved(design);
    Reach(design, Mark::saved);  // nothing of the user's is in it
    Refresh_Screens();
    return f.Calculated && f.Sized && f.Dynamicflag;
}

bool Open_Example(Design_State& design, std::string_view name)
{
    return Load_Example(design, name) && Example_Done(design);
}

}  // namespace lobemax
