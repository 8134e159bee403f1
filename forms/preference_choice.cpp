// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/preference_choice.h"

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "edit/door.h"
#include "forms/home_commands.h"

namespace lobemax {

Preference_Choice Present_Preferences(const Design_State& design)
{
    return {design.identity.WhichUnit,    design.identity.Number_Format, design.cam.Camtype,
            design.cam.Followtype,        design.cam.Translating,        design.run.Full_Screen,
            design.run.Open_Clicked_File, design.run.Aspect_Flag};
}

void Apply_Preferences(Design_State& design, const Preference_Choice& choice)
{
    const int units_before = design.identity.WhichUnit;
    if (!Put(design, "WhichUnit", choice.WhichUnit))
        throw Fault{out_of_bounds};
    const Cam_Group before = design.cam;
    Put(design, "Followtype", choice.Followtype);
    if (choice.Followtype == 1)  // a flat face has made the cam radial
        Put(design, "Camtype$", choice.Camtype);
    Put(design, "Translating", choice.Translating ? 1 : 0);
    const Cam_Group& c = design.cam;
    if (c.Camtype != before.Camtype || c.Followtype != before.Followtype || c.Translating != before.Translating)
        Apply(design, Event::cam_changed);
    design.run.Full_Screen = choice.Full_Screen;
    design.run.Open_Clicked_File = choice.Open_Clicked_File;
    design.run.Aspect_Flag = choice.Aspect_Flag;
    Refresh_Screens();
    if (design.identity.WhichUnit != units_before)
        Tell_Other_Units(design);
}

void Set_Screen_Scale(Design_State& design, int width, int height, double points_per_inch_across,
                      double points_per_inch_up)
{
    constexpr double widest = 2.0;  // of a point against its height, on screens that were ever built
    design.run.Screen_Width = width;
    design.run.Screen_Height = height;
    const bool known = points_per_inch_across > 0.0 && points_per_inch_up > 0.0;
    const double ratio = known ? points_per_inch_across / points_per_inch_up : 1.0;
    design.run.Aspect_Correction = ratio <= widest && ratio >= 1.0 / widest ? ratio : 1.0;
}

double Circle_Width(const Design_State& design)
{
    return design.run.Aspect_Flag ? double{design.run.Aspect_Correction} : 1.0;
}

}  // namespace lobemax
