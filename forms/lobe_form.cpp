// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/lobe_form.h"

#include <algorithm>
#include <array>

#include "core/design_state.h"
#include "core/text.h"
#include "core/variables.h"

namespace lobemax {

namespace {

constexpr int figures_shown = 6;

constexpr std::array rows{
    Lobe_Row{{{"lbl_Opens", "Lobe opens", "Cam angle at which the motion rises through the lift", Form_Unit::degrees},
              &Lobe_Texts::lbl_Opens},
             &Lobe_Figures::opens},
    Lobe_Row{{{"lbl_Closes", "Lobe closes",
               "Cam angle at which it falls through it; beyond 360 where the lobe crosses the start of the cycle",
               Form_Unit::degrees},
              &Lobe_Texts::lbl_Closes},
             &Lobe_Figures::closes},
    Lobe_Row{{{"lbl_Duration", "Lobe duration", "Cam degrees from the one to the other", Form_Unit::degrees},
              &Lobe_Texts::lbl_Duration},
             &Lobe_Figures::duration},
    Lobe_Row{{{"lbl_Centre", "Lobe centre", "Cam angle in the middle between both", Form_Unit::degrees},
              &Lobe_Texts::lbl_Centre},
             &Lobe_Figures::centre},
    Lobe_Row{{{"lbl_Peak", "Lobe peak", "Cam angle of the largest displacement, the middle of where it rests",
               Form_Unit::degrees},
              &Lobe_Texts::lbl_Peak},
             &Lobe_Figures::peak},
    Lobe_Row{{{"lbl_Area", "Lobe area", "Area of the whole curve above its lowest position, at any lift"},
              &Lobe_Texts::lbl_Area},
             &Lobe_Figures::area},
};

constexpr std::array controls{
    Form_Control{"frm_Lobe", "Lobe figures"},
    Form_Control{"txt_Lift", "&Lift", "Displacement above the lowest position at which the lobe counts as open"},
    Form_Control{"lbl_Note", "", "Why there are no figures at this lift"},
    Form_Control{"cmd_Copy", "&Copy"},
    Form_Control{"cmd_Close", "Cl&ose"},
};

}  // namespace

std::span<const Lobe_Row> Rows_of_Lobe()
{
    return rows;
}

std::string Unit_of_Lobe(const Design_State& design, const Lobe_Row& row)
{
    return row.unit == Form_Unit::none ? Trim(design.plot.Var_Unit(var::S)) + "-deg" : Unit_Word(design, row.unit);
}

std::span<const Form_Control> Controls_of_Lobe()
{
    return controls;
}

std::string Opening_Lift(const Design_State& design)
{
    const auto S = design.results.CalcData.Points(var::S);
    const auto [least, largest] =
        std::ranges::minmax(S.first(static_cast<std::size_t>(design.motion.Max_Data_Points_used)));
    return largest > least ? In_Figures(design, (largest - least) / 2, figures_shown) : std::string();
}

Lobe_Result Lobe_at(const Design_State& design, std::string_view typed)
{
    std::optional<Lobe_Figures> figures;
    try {
        figures = Figures_of_Lobe(design, Val(design, typed));
    } catch (const Fault&) {
        // A lift beyond every number is beyond the motion's, too.
    }
    if (!figures)
        return {{}, "No figures: " + std::string(No_Lobe) + "."};
    Lobe_Result result;
    for (const Lobe_Row& row : rows)
        result.texts.*row.text = In_Figures(design, *figures.*row.figure, figures_shown);
    return result;
}

}  // namespace lobemax
