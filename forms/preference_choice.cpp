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

}  // namespace lobemax
