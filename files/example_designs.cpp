// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/example_designs.h"

#include "camgeom/profile.h"
#include "camgeom/sizing.h"
#include "core/design_state.h"
#include "core/messages.h"
#include "dynamics/kinetostatics.h"
#include "motion/examples.h"

namespace lobemax {

namespace {

/// Pressure angle and curvature first, the profile once at the end.
void Size_Example()
{
    Flags_Group& f = design.flags;
    f.Math_Error = f.Calc_Error = false;
    f.Skip_Profile = true;
    Calc_Phi(design.cam.Followtype);
    if (!f.Calc_Error)
        Calc_Rho(design.cam.Followtype);
    f.Skip_Profile = false;
    if (!f.Calc_Error)
        Cam_Profile();
    f.Sized = !f.Calc_Error && !f.Math_Error;
}

}  // namespace

bool Example_Done()
{
    Flags_Group& f = design.flags;
    if (!Calculate_Example())
        return false;
    Size_Example();
    if (f.Sized)
        Calc_Force_Torque();
    f.Model_Saved = true;  // nothing of the user's is in it
    Refresh_Screens();
    return f.Calculated && f.Sized && f.Dynamicflag;
}

bool Open_Example(std::string_view name)
{
    return Load_Example(name) && Example_Done();
}

}  // namespace lobemax
