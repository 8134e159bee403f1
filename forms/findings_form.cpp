// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/findings_form.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/text.h"
#include "core/variables.h"
#include "files/exports.h"
#include "forms/finding_words.h"
#include "forms/home_commands.h"

namespace lobemax {

namespace {

constexpr int figures = 5;

constexpr std::array controls{
    Form_Control{"frm_Findings", "Findings"},
    Form_Control{"lbl_Count", "", "How many findings there are"},
    Form_Control{"tbl_Findings", "", "The worst first; Enter or a double click leads to the screen where it is mended"},
    Form_Control{"txt_Finding", "", "The chosen finding at length, and what to do"},
    Form_Control{"cmd_Close", "&Close"},
    Form_Control{"cmd_CopyText", "Copy &Text", "All findings at length, into the clipboard"},
    Form_Control{"cmd_Limits", "&Limits...", "What a design shall keep within"},
    Form_Control{"cmd_Help", "&Help"},
    Form_Control{"cmd_Go", "&Go There", "The screen where the chosen finding is mended"},
};

constexpr std::array question{
    Form_Control{"frm_Export_Question", "Export"},
    Form_Control{"txt_Question", "", "Why this surface must not be cut"},
    Form_Control{"chk_True", "Write the &true surface",
                 "The coordinates by geometry alone in place of the rows of the table"},
    Form_Control{"lbl_True", "", "Whether the true surface can be cut"},
    Form_Control{"cmd_OK", "&Export"},
    Form_Control{"cmd_Cancel", "&Cancel"},
};

const Finding* Worst_at(const Check& check, std::optional<Finding_Place> place)
{
    return place ? check.Worst_of(*place) : check.Worst();
}

std::string Figure(const Design_State& design, const std::optional<double>& value, const std::string& unit)
{
    return value ? Figure_Text(design, *value, unit) : std::string();
}

/// A limit on a row, in the row's unit. @param factor  what a value of the row is multiplied with to be in the unit of
/// the limit
void Add_Level(const Design_State& design, const Limits& limits, Limit limit, double factor, bool above, bool below,
               std::vector<Limit_Level>& levels)
{
    const std::optional<double> value = In_Design_Units(design, limits, limit);
    if (!value || !std::isfinite(*value / factor))
        return;
    const std::string unit = Unit_of_Limit(design, limit);
    const std::string words = "limit " + In_Figures(design, *value, figures) + (unit.empty() ? "" : " " + unit);
    if (above)
        levels.push_back({*value / factor, words});
    if (below)
        levels.push_back({-*value / factor, words});
}

}  // namespace

std::span<const Form_Control> Controls_of_Findings()
{
    return controls;
}

std::span<const Form_Control> Controls_of_Export_Question()
{
    return question;
}

std::array<std::string_view, Finding_Columns> Heads_of_Findings()
{
    return {"Severity", "Finding", "Where", "Row", "True", "Limit", "Screen"};
}

std::array<std::string, Finding_Columns> Cells_of(const Design_State& design, const Finding& finding)
{
    return {std::string(Sign_of(finding)) + " " + Severity_Caption(finding),
            finding.name,
            Where_of(design, finding),
            Figure(design, finding.row, finding.unit),
            Figure(design, finding.truth, finding.unit),
            Figure(design, finding.limit, finding.unit),
            std::string(Screen_of(finding.place))};
}

std::string_view Sign_of(const Finding& finding)
{
    if (finding.severity == Severity::do_not_cut)
        return "\u2716";                                                                         // a cross
    return finding.severity == Severity::warning || finding.beyond_limit ? "\u26A0" : "\u2139";  // a triangle, an i
}

bool Is_Grave(const Finding& finding)
{
    return finding.severity == Severity::do_not_cut || finding.beyond_limit;
}

std::string Sign_and_Words(const Check& check, std::optional<Finding_Place> place)
{
    const Finding* const worst = Worst_at(check, place);
    if (worst == nullptr)
        return "\u2714 " + std::string(No_Findings);  // a tick
    return std::string(Sign_of(*worst)) + " " + Severity_Caption(*worst) + ": " + worst->sentence;
}

std::string Mark_Tip(const Design_State& design, const Check& check, std::optional<Finding_Place> place)
{
    const Finding* const worst = Worst_at(check, place);
    std::string tip;
    if (worst != nullptr)
        for (const std::string& line : Lines_of(design, *worst))
            tip += line + "\n";
    return tip + "All findings: " + Count_of_Findings(check) + ". Press to see them.";
}

Home_Button Button_of(Finding_Place place)
{
    switch (place) {
    case Finding_Place::motion:
        return Home_Button::Input;
    case Finding_Place::size:
        return Home_Button::Size;
    case Finding_Place::forces:
        return Home_Button::Force;
    case Finding_Place::stress:
        break;
    }
    return Home_Button::Stress;
}

bool May_Go(const Design_State& design, Finding_Place place)
{
    return Set_Homeform_Buttons(design)[static_cast<std::size_t>(Button_of(place))];
}

std::vector<Limit_Level> Levels_of(const Design_State& design, const Limits& limits, int row)
{
    std::vector<Limit_Level> levels;
    const Cam_Group& c = design.cam;
    const bool roller = c.Followtype == 1 && c.Follow_Rad > 0.0;
    switch (row) {
    case var::Phi:
        Add_Level(design, limits, c.Translating ? Limit::Phi : Limit::Phi_Arm, 1.0, true, true, levels);
        break;
    case var::Rho:
        // On the side of the material alone can the path of the roller be too sharp.
        if (roller && limits[Limit::Rho_Ratio]) {
            const double least = *limits[Limit::Rho_Ratio] * c.Follow_Rad;
            const std::string words = "limit " + In_Figures(design, *limits[Limit::Rho_Ratio], figures) + " x roller";
            levels.push_back({Mechanism(design).side * least, words});
        }
        break;
    case var::Force:
    case var::Dynamic_Force:
        Add_Level(design, limits, Limit::Contact_Force, 1.0, true, false, levels);
        break;
    case var::Torque:
        Add_Level(design, limits, Limit::Torque, 1.0, true, true, levels);
        break;
    case var::Sigma_Max:  // compression is negative
        Add_Level(design, limits, Limit::Sigma, Stress_Row_Factor(design), false, true, levels);
        break;
    default:
        break;
    }
    return levels;
}

std::vector<double> True_Values(const Design_State& design, const Check& check, int row)
{
    std::vector<double> values;
    if (!check.truth)
        return values;
    const True_Design& truth = *check.truth;
    const auto stress = [&](const std::vector<double>& found) {
        const double factor = Stress_Row_Factor(design);
        for (const double value : found)
            values.push_back(value / factor);
    };
    switch (row) {
    case var::Phi:
        for (const True_Point& point : truth.points)
            values.push_back(point.Phi);
        break;
    case var::Rho:
        // The row, too, ends at ten times the prime radius: beyond it the path is as good as straight.
        for (const True_Point& point : truth.points)
            values.push_back(std::abs(point.Rho) <= 10.0 * design.cam.Prime_Rad
                                 ? point.Rho
                                 : std::numeric_limits<double>::infinity());
        break;
    case var::Force:
    case var::Dynamic_Force:  // after a vibration the contact bears the dynamic one
        if (Holds(design, Mark::vibration) == (row == var::Dynamic_Force))
            values = truth.contact.force;
        break;
    case var::Sigma_Max:
        stress(truth.contact.sigma);
        break;
    case var::Tau_Max:
        stress(truth.contact.tau);
        break;
    default:
        break;
    }
    return values;
}

std::vector<Cam_Stretch> Warned_Stretches(const Check& check, Warned warned)
{
    std::vector<Cam_Stretch> stretches;
    for (const Finding& finding : check.findings)
        if (finding.place == Finding_Place::size &&
            (warned == Warned::faults ? finding.severity == Severity::do_not_cut : Is_Grave(finding)))
            for (const Stretch& stretch : finding.stretch)
                stretches.push_back({stretch.from, stretch.to});
    return stretches;
}

bool Is_Profile_Export(std::string_view entry)
{
    if (entry == "mnu_Cutter_mach" || entry == "mnu_Barrel_Ctr_mach")
        return false;  // it tells why it writes nothing
    const auto found = std::ranges::find(Export_Menu(), entry, &Export_Entry::name);
    return found != Export_Menu().end() && (found->need == Export_Need::radial || found->need == Export_Need::barrel ||
                                            found->need == Export_Need::linear);
}

True_Offer Offer_of_True_Surface(const Design_State& design, const Limits& limits)
{
    const std::optional<Design_State> truth = With_True_Profile(design);
    if (!truth)
        return {false, false, Why_No_True_Profile(design)};
    if (Check_Design(*truth, limits).Do_Not_Cut())
        return {true, false, "The true surface must not be cut either: the fault is in the design, not in the rows."};
    return {true, true, "The true surface gives the lift of the motion."};
}

}  // namespace lobemax
