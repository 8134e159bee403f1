// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/linkplots_form.h"

#include <algorithm>
#include <cmath>

#include "core/design_state.h"
#include "core/text.h"
#include "linkage/linkage_kinematics.h"
#include "present/plot_engine.h"

namespace lobemax {

namespace {

constexpr std::array controls{
    Form_Control{"frm_Linkplots", "Plots of the linkage"},
    Form_Control{"cmb_Function(0)", "Plot &1", "Link and function of the plot"},
    Form_Control{"cmb_Function(1)", "Plot &2", "Link and function of the plot"},
    Form_Control{"cmb_Function(2)", "Plot &3", "Link and function of the plot"},
    Form_Control{"cmb_Function(3)", "Plot &4", "Link and function of the plot"},
    Form_Control{"cmd_Cancel", "< &Back"},
    Form_Control{"cmd_Copy", "C&opy"},
    Form_Control{"cmd_Print", "&Print"},
};

}  // namespace

std::vector<std::string> Link_Function_Texts(const Design_State& design)
{
    std::vector<std::string> texts{"None"};
    for (const Link_Function& function : Link_Functions(design))
        texts.push_back(Title_of(design, function));
    return texts;
}

Link_Picks Usual_Link_Picks(const Design_State& design)
{
    using enum Link_Quantity;
    const std::vector<Link_Function> all = Link_Functions(design);
    const int last = Last_Link(design);
    const std::array<Link_Function, Link_Plots> wanted{Link_Function{last, position}, Link_Function{last, velocity},
                                                       Link_Function{last, acceleration},
                                                       Link_Function{0, position_ratio}};
    Link_Picks picks{};
    std::ranges::transform(wanted, picks.begin(), [&](const Link_Function& function) {
        const auto found = std::ranges::find(all, function);
        return found == all.end() ? No_Link_Function : static_cast<int>(found - all.begin());
    });
    return picks;
}

Link_Plot_Figures Figures_of_Link_Plot(const Design_State& design, const Link_Function& function)
{
    const std::vector<double> values = Values_of(design, function);
    const auto [least, largest] = std::ranges::minmax(values);
    const int decimals = Plot_Decimals(std::max(std::abs(least), std::abs(largest)));
    const auto shown = [&](double value) { return Trim(FNRoundStr(design, value, decimals)); };
    return {shown(least), shown(largest), shown(largest - least)};
}

std::span<const Form_Control> Controls_of_Linkplots()
{
    return controls;
}

}  // namespace lobemax
