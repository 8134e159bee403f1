// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/preference_choice.h"

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/units.h"

namespace lobemax {

Preference_Choice Present_Preferences(const Design_State& design)
{
    return {design.identity.WhichUnit,    design.identity.Number_Format, design.cam.Camtype,
            design.cam.Followtype,        design.cam.Translating,        design.run.Full_Screen,
            design.run.Open_Clicked_File, design.run.Aspect_Flag};
}

void Apply_Preferences(Design_State& design, const Preference_Choice& choice)
{
    if (choice.WhichUnit != design.identity.WhichUnit) {
        Change_Units(design, choice.WhichUnit);
        Set_Units(design);
    }
    Cam_Group& c = design.cam;
    const std::string Camtype = choice.Followtype == 2 ? "Radial" : choice.Camtype;
    if (c.Camtype != Camtype || c.Followtype != choice.Followtype || c.Translating != choice.Translating) {
        c.Camtype = Camtype;
        c.Barrel_Type = Camtype == "Barrel" ? "Grooved" : "";
        c.Followtype = choice.Followtype;
        c.Translating = choice.Translating;
        Apply(design, Event::cam_changed);
        Set_Units(design);  // a follower on an arm has its positions in degrees
    }
    design.run.Full_Screen = choice.Full_Screen;
    design.run.Open_Clicked_File = choice.Open_Clicked_File;
    design.run.Aspect_Flag = choice.Aspect_Flag;
    Refresh_Screens();
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
