// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/linkage_setup.h"

#include "core/design_state.h"

namespace lobemax {

void Set_Up_Linkage(Design_State& design, int links)
{
    Linkage_Group& k = design.linkage;
    const bool slider = k.Linkage_Type > 1;
    const bool six = links > 4;
    k.Linkage_Kind = !slider ? "Linkage" : six ? "Sixslide" : "Fourslide";
    if (slider || !six)
        k.Stage_Mode = "";
    else if (k.Stage_Mode != "S")
        k.Stage_Mode = "W";
}

}  // namespace lobemax
