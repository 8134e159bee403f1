// SPDX-License-Identifier: GPL-3.0-or-later
#include "present/linkage_plots.h"

#include <array>

#include "core/design_state.h"
#include "core/text.h"
#include "core/units.h"
#include "linkage/linkage_kinematics.h"

namespace lobemax {

namespace {

bool Slides(const Design_State& design, int link)
{
    return Ends_in_Slider(design) && link == Last_Link(design);
}

bool Is_Ratio(const Link_Function& function)
{
    return function.quantity == Link_Quantity::position_ratio || function.quantity == Link_Quantity::velocity_ratio;
}

std::vector<double> In_Double(std::span<const Single> values)
{
    return {values.begin(), values.end()};
}

/// The ways to write a function: its title, then its short names.
std::vector<std::string> Words_of(const Design_State& design, const Link_Function& function)
{
    std::vector<std::string> words{Title_of(design, function)};
    if (Is_Ratio(function)) {
        words.emplace_back(function.quantity == Link_Quantity::position_ratio ? "Ratio S" : "Ratio V");
        return words;
    }
    constexpr std::array rotary{"Theta ", "Omega ", "Alpha "};
    constexpr std::array sliding{"S ", "V ", "A "};
    const auto k = static_cast<std::size_t>(function.quantity);
    words.push_back(rotary[k] + std::to_string(function.link));
    if (Slides(design, function.link))
        words.push_back(sliding[k] + std::to_string(function.link));
    return words;
}

std::string Without_Blanks(std::string_view text)
{
    std::string out;
    for (const char c : text)
        if (c != ' ')
            out += c;
    return out;
}

}  // namespace

std::vector<Link_Function> Link_Functions(const Design_State& design)
{
    using enum Link_Quantity;
    std::vector<Link_Function> functions;
    for (int link = First_Moving_Link; link <= Last_Link(design); ++link)
        for (const Link_Quantity quantity : {position, velocity, acceleration})
            functions.push_back({link, quantity});
    functions.push_back({0, position_ratio});
    functions.push_back({0, velocity_ratio});
    return functions;
}

std::string Title_of(const Design_State& design, const Link_Function& function)
{
    const bool slides = Slides(design, function.link);
    const std::string link = "of Link " + std::to_string(function.link);
    switch (function.quantity) {
    case Link_Quantity::position:
        return (slides ? "Dsplcmt " : "Angle ") + link;
    case Link_Quantity::velocity:
        return (slides ? "Veloc " : "Omega ") + link;
    case Link_Quantity::acceleration:
        return (slides ? "Accel " : "Alpha ") + link;
    case Link_Quantity::position_ratio:
        return Ends_in_Slider(design) ? "Dsplcmt Out / Dsplcmt In" : "Theta Out / Theta In";
    case Link_Quantity::velocity_ratio:
        return Ends_in_Slider(design) ? "Velocity Out / Velocity In" : "Omega Out / Omega In";
    }
    throw Fault{internal_error};
}

std::string Unit_of(const Design_State& design, const Link_Function& function)
{
    if (Is_Ratio(function))
        return {};
    const bool slides = Slides(design, function.link);
    // A linkage stands on the motion in memory, whose lengths it shares.
    const std::string length = Words_of_Units(Units_of_Results(design)).length;
    switch (function.quantity) {
    case Link_Quantity::position:
        return slides ? length : "deg";
    case Link_Quantity::velocity:
        return slides ? length + "/sec" : "rad/sec";
    default:
        return slides ? length + "/sec^2" : "rad/sec^2";
    }
}

std::vector<double> Values_of(const Design_State& design, const Link_Function& function)
{
    if (!design.flags.Linkage_Calc)
        throw Fault{out_of_bounds};
    const Results_Group& r = design.results;
    switch (function.quantity) {
    case Link_Quantity::position:
        return Slides(design, function.link) ? In_Double(r.Link_Theta.Points(function.link))
                                             : Unwrapped(r.Link_Theta.Points(function.link));
    case Link_Quantity::velocity:
        return In_Double(r.Link_Omega.Points(function.link));
    case Link_Quantity::acceleration:
        return In_Double(r.Link_Alpha.Points(function.link));
    case Link_Quantity::position_ratio:
    case Link_Quantity::velocity_ratio:
        break;
    }
    const Row<Single>& ratio = function.quantity == Link_Quantity::position_ratio ? r.Link_Ratio_S : r.Link_Ratio_V;
    std::vector<double> values;
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i)
        values.push_back(ratio(i));
    return values;
}

std::optional<Link_Function> Link_Function_Named(const Design_State& design, std::string_view word)
{
    const std::string wanted = Without_Blanks(word);
    for (const Link_Function& function : Link_Functions(design))
        for (const std::string& name : Words_of(design, function))
            if (Same_Text(Without_Blanks(name), wanted))
                return function;
    return {};
}

std::string Link_Plot_Title(const Design_State& design)
{
    return "Selected Linkage Parameters    " + design.identity.Model_Name + "  ";
}

}  // namespace lobemax
