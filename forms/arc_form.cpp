// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/arc_form.h"

#include <array>
#include <utility>
#include <vector>

#include "core/design_state.h"
#include "core/text.h"
#include "edit/door.h"

namespace lobemax {

namespace {

constexpr std::array fields{
    Form_Field<Arc_Form>{{"txt_Base", "&Base radius", "Radius of the base circle", Form_Unit::length},
                         &Arc_Form::txt_Base},
    Form_Field<Arc_Form>{
        {"txt_Flank", "&Flank radius", "Radius of the flanks, larger than those of base and nose", Form_Unit::length},
        &Arc_Form::txt_Flank},
    Form_Field<Arc_Form>{{"txt_Nose", "&Nose radius", "Radius of the nose", Form_Unit::length}, &Arc_Form::txt_Nose},
    Form_Field<Arc_Form>{{"txt_Lift", "&Lift", "How far the nose stands out from the base circle", Form_Unit::length},
                         &Arc_Form::txt_Lift},
    Form_Field<Arc_Form>{{"txt_Roller", "&Roller radius (0: flat face)",
                          "Radius of the follower's roller; 0 or empty: a flat face", Form_Unit::length},
                         &Arc_Form::txt_Roller},
};

constexpr std::array controls{
    Form_Control{"frm_Arcs", "Cam of arcs"},
    Form_Control{"lbl_Arcs", "", "How long the lobe lasts, or why these arcs make no cam"},
    Form_Control{"cmd_Cancel", "&Cancel", "Leaves the import as it was"},
    Form_Control{"cmd_OK", "&OK", "Takes the motion of this cam as the data, its nose at 180 degrees"},
};

}  // namespace

std::span<const Form_Field<Arc_Form>> Fields_of_Arcs()
{
    return fields;
}

std::span<const Form_Control> Controls_of_Arcs()
{
    return controls;
}

Arcs_Read Read_Arcs(const Design_State& design, const Arc_Form& form)
{
    Arc_Cam cam;
    try {
        const auto length = [&](const std::string& text) { return double{Single(Val(design, text))}; };
        cam = {length(form.txt_Base), length(form.txt_Flank), length(form.txt_Nose), length(form.txt_Lift),
               length(form.txt_Roller)};
        static_cast<void>(Single(Measured_Cam_of(cam).Prime_Rad));
    } catch (const Fault&) {
        return {{}, "These lengths are too large."};
    }
    if (std::string refusal = Arcs_may_be(cam); !refusal.empty())
        return {{}, std::move(refusal)};
    constexpr int figures_of_degrees = 5;
    return {cam, "The lobe lasts " + In_Figures(design, 2 * Angles_of(cam).flank_end, figures_of_degrees) +
                     " degrees of cam angle."};
}

void Choose_as_Arcs(Import_Choice& choice)
{
    choice.close = choice.method != Fit_Method::fourier;
    choice.coord = Import_Coord::RT;
}

Measured_Cam Measured_Cam_of(const Arc_Cam& cam)
{
    if (cam.roller > 0.0)
        return {1, cam.base + cam.roller, cam.roller};
    return {2, cam.base, {}};
}

Verdict Put_Measured_Cam(Design_State& design, const Measured_Cam& cam)
{
    std::vector<Verdict> verdicts;
    if (cam.Followtype) {
        verdicts.push_back(Put(design, "Followtype", *cam.Followtype));
        verdicts.push_back(Put(design, "Camtype$", "Radial"));
        if (design.cam.Offset != 0.0)
            verdicts.push_back(Put(design, "Offset", 0.0));
    }
    verdicts.push_back(Put(design, "Prime_Rad", cam.Prime_Rad));
    if (cam.Follow_Rad)
        verdicts.push_back(Put(design, "Follow_Rad", *cam.Follow_Rad));
    for (const Verdict& verdict : verdicts)
        if (!verdict)
            return verdict;
    return {};
}

}  // namespace lobemax
