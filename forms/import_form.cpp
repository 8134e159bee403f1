// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/import_form.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/design_state.h"
#include "core/numeric.h"
#include "core/text.h"
#include "core/units.h"
#include "dynamics/train_rules.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "files/profile_file.h"
#include "forms/import_notes.h"
#include "forms/input_form.h"

namespace lobemax {

namespace {

constexpr std::array<std::string_view, 5> units_items{"ips", "fps", "SI", "cm-Kg-s", "mm-Kg-s"};

std::optional<double> Number_in(const Design_State& design, const std::string& text)
{
    if (text.empty())
        return {};
    return double{Single(Val(design, text))};
}

Import_Choice Choice_of(const Design_State& design, const Import_Form& form)
{
    Import_Choice choice;
    choice.coord = form.coord;
    choice.method = form.method;
    choice.normalize = form.normalize;
    choice.raw = form.raw;
    choice.close = form.close;
    choice.prime = Number_in(design, form.txt_Base);
    choice.shift = Number_in(design, form.txt_ShiftAng).value_or(0.0);
    choice.harmonics = static_cast<int>(Number_in(design, form.txt_Harmonics).value_or(0.0));
    choice.bound = Number_in(design, form.txt_Bound).value_or(0.0);
    return choice;
}

void Take_Fit_Away(Import_Form& form)
{
    form.profile.fitted = false;
    form.stored = false;
}

/// The profile anew from the text at hand, by the choices as they stand now.
void Read_Again(Design_State& design, Import_Form& form)
{
    form.stored = false;
    if (!form.text.empty())
        Take_Profile(design, form.text, "", Choice_of(design, form), form.profile);
}

Form_Entry Refused(const Verdict& verdict, const std::string& before)
{
    Show_Refusal(verdict);
    return {false, before};
}

Form_Entry Edit_Omega(Design_State& design, Import_Form& form, std::string_view typed)
{
    if (!typed.empty())
        if (const Verdict verdict = Query(design, "Shaft speed", Single(Val(design, typed) * PI / 30.0)); !verdict)
            return Refused(verdict, form.txt_Omega);
    form.stored = false;
    return {true, std::string(typed)};
}

Form_Entry Edit_Base(Design_State& design, Import_Form& form, std::string_view typed)
{
    if (!typed.empty())
        if (const Verdict verdict = Query(design, "Prime_Rad", Single(Val(design, typed))); !verdict)
            return Refused(verdict, form.txt_Base);
    form.txt_Base = typed;
    if (form.coord == Import_Coord::XY)
        Read_Again(design, form);  // displacements are radii less this one
    form.stored = false;
    return {true, std::string(typed)};
}

Form_Entry Edit_Follower(Design_State& design, Import_Form& form, std::string_view typed)
{
    // Against the prime radius it is held when both are stored.
    if (const Single radius = Val(design, typed); radius < 0.0)
        return Refused(Query(design, "Follow_Rad", radius), form.txt_follower);
    form.stored = false;
    return {true, std::string(typed)};
}

Form_Entry Edit_Shift(Design_State& design, Import_Form& form, std::string_view typed)
{
    form.txt_ShiftAng = typed;
    Read_Again(design, form);
    return {true, std::string(typed)};
}

Form_Entry Edit_Harmonics(Design_State& design, Import_Form& form, std::string_view typed)
{
    const double typed_count = FNRound(Val(design, typed), 0);
    const int count = static_cast<int>(std::clamp(typed_count, 0.0, double{Most_Harmonics}));
    Take_Fit_Away(form);
    return {true, typed.empty() || count == 0 ? std::string() : std::to_string(count)};
}

Form_Entry Edit_Bound(Design_State& design, Import_Form& form, std::string_view typed)
{
    if (!typed.empty())
        if (const Verdict verdict = Figure_may_be(Single(Val(design, typed))); !verdict)
            return Refused(verdict, form.txt_Bound);
    Take_Fit_Away(form);
    return {true, std::string(typed)};
}

constexpr std::array fields{
    Form_Field<Import_Form>{{"txt_Omega", "Cam &Omega (rpm)", "Speed of the camshaft, revolutions per minute"},
                            &Import_Form::txt_Omega,
                            Edit_Omega},
    Form_Field<Import_Form>{{"txt_Base", "Prime &Radius",
                             "Smallest radius of the path of the roller center, or of a "
                             "flat-faced follower's cam",
                             Form_Unit::length},
                            &Import_Form::txt_Base,
                            Edit_Base},
    Form_Field<Import_Form>{
        {"txt_follower", "&Follower Radius",
         "Radius of the roller that the cam was measured with; empty: that of the design", Form_Unit::length},
        &Import_Form::txt_follower,
        Edit_Follower},
    Form_Field<Import_Form>{{"txt_ShiftAng", "Shift An&gle", "Degrees by which the motion comes later than in the file",
                             Form_Unit::degrees},
                            &Import_Form::txt_ShiftAng,
                            Edit_Shift},
    Form_Field<Import_Form>{{"txt_Harmonics", "&Harmonics", "So many of the series, lowest first; empty: all"},
                            &Import_Form::txt_Harmonics,
                            Edit_Harmonics},
    Form_Field<Import_Form>{{"txt_Bound", "No point mo&ves by more than",
                             "The smoothest curve that comes as near as this to each point; about four times the "
                             "scatter of the data is a good start"},
                            &Import_Form::txt_Bound,
                            Edit_Bound},
};

constexpr std::array controls{
    Form_Control{"frm_Import_data", "Import cam profile data"},
    Form_Control{"fra_Data", "Data"},
    Form_Control{"opt_Coord(0)", "RT", "A line holds the cam angle in degrees and the follower's displacement"},
    Form_Control{"opt_Coord(1)", "XY", "A line holds x and y of the roller center's path"},
    Form_Control{"fra_Folmotion", "Follower Motion"},
    Form_Control{"opt_Folmotion(0)", "Translating", "The follower moves along a line"},
    Form_Control{"opt_Folmotion(1)", "Oscillating", "The follower turns about a pivot"},
    Form_Control{"fra_Interpolate", "Fit"},
    Form_Control{"opt_Interpolate(0)", "Cubic Spline", "A closed spline through every point"},
    Form_Control{"opt_Interpolate(1)", "Fourier Series", "A series of the cycle's harmonics"},
    Form_Control{"opt_Interpolate(2)", "Lanzcos C.S.", "The spline, smoothed over five points at each derivative"},
    Form_Control{"opt_Interpolate(3)", "Smoothing Spline",
                 "The least bent spline that comes near enough to each point"},
    Form_Control{"cmb_Units", "&Units", "Units of the file and of the design"},
    Form_Control{"txt_Units", "", "Units of the file and of the design"},
    Form_Control{"cmb_Delta", "Delta &Theta", "Step of the interpolation, degrees: to be selected before the import"},
    Form_Control{"txt_Delta", "", "Step of the interpolation, degrees: to be selected before the import"},
    Form_Control{"chk_Normalize", "Normali&ze Data", "Check to remove any DC component from the imported data."},
    Form_Control{"chk_Rawdata", "Save Ra&w Displacement",
                 "Check to save the raw displacement data instead of the interpolated"},
    Form_Control{"chk_Close", "C&lose the cycle", "Check to add the first point once more, a turn further on"},
    Form_Control{"txt_Data", "Data points", "Number of data sets read"},
    Form_Control{"lbl_Advice", "", "What the file must hold"},
    Form_Control{"lbl_Notes", "", "How near the fit comes to the data"},
    Form_Control{"cmd_Import", "&Import Data", "Reads a text file of pairs"},
    Form_Control{"cmd_Arcs", "&Arcs...", "Takes the motion of a cam of circular arcs in place of a file"},
    Form_Control{"cmd_Calc", "Fit Fun&ctions", "Fits a closed function to the data"},
    Form_Control{"cmd_Functions", "Functions", "Shows the data and the function fitted"},
    Form_Control{"cmd_Derivs", "&Derivatives", "Shows velocity, acceleration and jerk per degree"},
    Form_Control{"cmd_Save_Functions", "&Save Functions", "Makes the functions the motion of the design"},
    Form_Control{"cmd_Copy", "Cop&y"},
    Form_Control{"cmd_PlotPrint", "&Print", "Prints the screen"},
    Form_Control{"cmd_Cancel", "< &Back"},
    Form_Control{"cmd_Done", "&Next >"},
};

}  // namespace

Import_Form Opening_Import_Form(const Design_State& design)
{
    Import_Form form;
    if (!design.flags.Imported_Model)
        return form;
    form.txt_Omega = Shown(design, FNRound(design.motion.Shaft_speed * 30.0 / PI, 4));
    form.txt_Base = Shown(design, design.cam.Prime_Rad);
    form.txt_follower = Shown(design, design.cam.Follow_Rad);
    return form;
}

std::span<const Form_Field<Import_Form>> Fields_of_Import()
{
    return fields;
}

std::span<const Form_Control> Controls_of_Import()
{
    return controls;
}

std::span<const std::string_view> Import_Units_Items()
{
    return units_items;
}

std::string_view Import_Units_Item(const Design_State& design)
{
    return units_items.at(static_cast<std::size_t>(design.identity.WhichUnit - First_Unit_System));
}

std::string Step_Item(const Design_State& design)
{
    return Input_Head_of_Design(design).cmb_Delta;
}

bool Choose_Import_Units(Design_State& design, Import_Form& form, std::string_view item)
{
    const auto found = std::ranges::find(units_items, item);
    if (found == units_items.end()) {
        Show_Message("Please select one of the drop-down menu items for units", Buttons::OK, Symbol::information);
        return false;
    }
    const auto code = static_cast<int>(found - units_items.begin()) + First_Unit_System;
    if (code == design.identity.WhichUnit)
        return true;
    Put(design, "WhichUnit", code);
    form.stored = false;
    return true;
}

bool Choose_Import_Step(Design_State& design, Import_Form& form, std::string_view item)
{
    const std::optional<double> step = Listed_Step(design, item);
    if (!step)
        return false;
    if (*step == design.motion.Deltatheta)
        return true;
    Put(design, "Deltatheta", *step);
    if (!form.text.empty())
        Show_Message("Must reimport the data after changing delta theta", Buttons::OK, Symbol::information);
    form.text.clear();
    form.profile = {};
    form.stored = false;
    return true;
}

void Choose_Import_Motion(Design_State& design, Import_Form& form, bool translating)
{
    if (bool{design.cam.Translating} == translating)
        return;
    Put(design, "Translating", translating ? 1 : 0);
    form.stored = false;
    if (!translating)
        Show_Message("For an oscillating follower, your displacement data must be in degrees.", Buttons::OK,
                     Symbol::information);
}

void Choose_Import_Coord(Design_State& design, Import_Form& form, Import_Coord coord)
{
    form.coord = coord;
    Read_Again(design, form);
}

void Choose_Normalize(Design_State& design, Import_Form& form, bool normalize)
{
    form.normalize = normalize;
    Read_Again(design, form);
}

void Choose_Close(Design_State& design, Import_Form& form, bool close)
{
    form.close = close;
    Read_Again(design, form);
}

void Choose_Import_Method(Import_Form& form, Fit_Method method)
{
    form.method = method;
    Take_Fit_Away(form);
}

void Choose_Raw(Import_Form& form, bool raw)
{
    form.raw = raw;
    form.stored = false;
}

File_Dialog Import_Dialog()
{
    return {.title = "Open a Cam Profile data file",
            .filter = "Profile Import (*.txt)|*.txt|(*.*)|*.*|",
            .suggestion = "*.txt"};
}

bool Import_Data(Design_State& design, Import_Form& form)
{
    const Host& host = Installed_Host();
    const std::optional<std::string> path = host.open_dialog ? host.open_dialog(Import_Dialog()) : std::nullopt;
    if (!path)
        return false;
    form.stored = false;
    form.text.clear();
    form.profile = {};
    form.Followtype.reset();
    std::optional<std::string> text = Read_Profile_Text(*path);
    if (!text || !Take_Profile(design, *text, Name_in_Path(*path), Choice_of(design, form), form.profile))
        return false;
    form.text = std::move(*text);
    return true;
}

bool Import_Arcs(Design_State& design, Import_Form& form, const Arc_Form& arcs)
{
    const Arcs_Read read = Read_Arcs(design, arcs);
    if (!read.cam) {
        Show_Message(read.line, Buttons::OK, Symbol::exclamation);
        return false;
    }
    std::string text = Pairs_of(*read.cam, design.motion.Deltatheta);
    const Measured_Cam cam = Measured_Cam_of(*read.cam);
    form.arcs = arcs;
    form.Followtype = cam.Followtype;
    form.txt_Base = Shown(design, Single(cam.Prime_Rad));
    form.txt_follower = cam.Follow_Rad ? Shown(design, Single(*cam.Follow_Rad)) : std::string();
    form.text.clear();
    form.stored = false;
    Choose_Import_Motion(design, form, true);
    Import_Choice choice = Choice_of(design, form);
    Choose_as_Arcs(choice);
    form.close = choice.close;
    form.coord = choice.coord;
    if (!Take_Profile(design, text, "of arcs", choice, form.profile))
        return false;
    form.text = std::move(text);
    return true;
}

bool Fit_Functions(Design_State& design, Import_Form& form)
{
    Take_Fit_Away(form);
    if (form.method == Fit_Method::smooth && form.txt_Bound.empty()) {
        Show_Message("Please type by how much a point may be moved in its box", Buttons::OK, Symbol::exclamation);
        return false;
    }
    return Fit_Profile(design, Choice_of(design, form), form.profile);
}

std::string Advice_of_Import()
{
    return "The data must represent motion of the follower at roller center or flat follower surface vs. cam angle.\n"
           "If measuring a cam you must use its actual roller or flat follower to generate data.\n"
           "BEFORE importing data, you must select the delta theta for interpolation and the cam rpm.\n"
           "For an oscillating follower, your displacement data must be in degrees.";
}

std::string Derivatives_Text()
{
    return "These derivatives have units of length/degree and length/degree^2 \n"
           "and do not have the camshaft angular velocity yet applied to them.\n"
           "When the functions are saved, the angular velocity will be applied.\n"
           "Please be sure that the correct angular velocity is typed in its box.";
}

Save_Outcome Save_Imported(Design_State& design, Import_Form& form)
{
    const auto wanted = [](const char* text) {
        return Show_Message(text, Buttons::OK_Cancel, Symbol::exclamation) != Answer::Cancel;
    };
    if (form.txt_Omega.empty())
        return wanted("Please type the Cam Omega in its box") ? Save_Outcome::no_omega : Save_Outcome::refused;
    if (form.txt_Base.empty())
        return wanted("Please type the Prime Radius in its box") ? Save_Outcome::no_base : Save_Outcome::refused;
    const Design_State before = design;
    const Import_Choice choice = Choice_of(design, form);
    const Measured_Cam cam{form.Followtype, *choice.prime, Number_in(design, form.txt_follower)};
    if (const Verdict verdict = Put_Measured_Cam(design, cam); !verdict) {
        Show_Refusal(verdict);
        design = before;
        return Save_Outcome::refused;
    }
    if (!Save_Functions(design, choice, {design.identity.WhichUnit, *Number_in(design, form.txt_Omega)},
                        form.profile)) {
        design = before;
        return Save_Outcome::refused;
    }
    form.stored = true;
    form.overwritten = true;
    return Save_Outcome::stored;
}

Import_Buttons Buttons_of_Import(const Import_Form& form)
{
    return {!form.profile.x.empty(), form.profile.fitted, form.stored};
}

bool Harmonics_Open(const Import_Form& form)
{
    return form.method == Fit_Method::fourier;
}

bool Bound_Open(const Import_Form& form)
{
    return form.method == Fit_Method::smooth;
}

std::string Data_Text(const Import_Form& form)
{
    return form.profile.x.empty() ? std::string() : std::to_string(form.profile.Data_Count());
}

std::vector<Import_Chart> Charts_of_Import(const Design_State& design, const Import_Form& form)
{
    const Profile& profile = form.profile;
    const std::string unit =
        design.cam.Translating ? Words_of_Units(design.identity.WhichUnit).length : std::string("deg");
    std::vector<Import_Chart> charts{
        {"S  " + unit, {}}, {"V  " + unit + "/deg", {}}, {"A  " + unit + "/deg^2", {}}, {"J  " + unit + "/deg^3", {}}};
    if (profile.x.empty())
        return charts;
    // By their place in the turn: data may begin anywhere in it.
    std::vector<std::pair<double, double>> points;
    for (std::size_t i = 0; i < profile.x.size(); ++i) {
        constexpr double rounding = 0.001;
        const double degrees = profile.x[i] * Deg_per_Rad;
        const bool within = degrees >= 0.0 && degrees <= 360.0 + rounding;
        points.emplace_back(within ? degrees : double{FN_Modulo(degrees, 360.0)}, profile.y[i]);
    }
    std::ranges::sort(points);
    Import_Series raw{"RawData", {}, {}};
    for (const auto& [degrees, displacement] : points) {
        raw.x.push_back(degrees);
        raw.y.push_back(displacement);
    }
    charts[0].series.push_back(std::move(raw));
    if (!profile.fitted)
        return charts;
    constexpr std::array<std::string_view, Import_Chart_Count> names{"Splined", "Veloc", "Accel", "Jerk"};
    for (std::size_t k = 0; k < names.size(); ++k) {
        Import_Series fit{names[k], {}, {}};
        for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i) {
            fit.x.push_back(i * design.motion.Deltatheta);
            fit.y.push_back(profile.result(static_cast<int>(k) + 1, i));
        }
        charts[k].series.push_back(std::move(fit));
    }
    return charts;
}

std::string Notes_of_Import(const Design_State& design, const Import_Form& form)
{
    std::string text;
    for (const std::string& note :
         Import_Notes(design, Choice_of(design, form), form.profile, Current_Decimal_Symbol(design)))
        text += (text.empty() ? "" : "\n") + note;
    return text;
}

}  // namespace lobemax
