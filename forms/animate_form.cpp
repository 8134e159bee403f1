// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/animate_form.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>

#include "camgeom/cam_animation.h"
#include "camgeom/cam_drawing.h"
#include "camgeom/sizing.h"
#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/text.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "forms/size_form.h"

namespace lobemax {

namespace {

constexpr double zoom_step = 0.8;  // of the world window, a step nearer
constexpr double nearest = 0.02;
constexpr double farthest = 50.0;
constexpr std::array stride_degrees{1.0, 2.0, 5.0, 10.0, 15.0, 30.0};

constexpr std::array fields{
    Form_Field<Animate_Form>{{"txt_Prime", "Prime Radi&us", "Smallest radius to roller center", Form_Unit::length},
                             &Animate_Form::txt_Prime,
                             Alone<Enter_Prime>},
    Form_Field<Animate_Form>{{"txt_Follower", "Ro&ller Radius", "Roller radius (not diameter)", Form_Unit::length},
                             &Animate_Form::txt_Follower,
                             Alone<Enter_Roller>},
    Form_Field<Animate_Form>{
        {"txt_Offset", "Offse&t", "Eccentricity of follower axis from cam center", Form_Unit::length},
        &Animate_Form::txt_Offset,
        Alone<Enter_Offset>},
};

constexpr std::array controls{
    Form_Control{"frm_Animate", "Draw and animate the cam"},
    Form_Control{"fra_Show", "Show"},
    Form_Control{"opt_Show(0)", "Show Cam ", "Draws the primary cam profile"},
    Form_Control{"opt_Show(1)", "Show Summary", "Shows pressure angles and radii of curvature"},
    Form_Control{"opt_Show(2)", "Show Conjugate", "Draws the conjugate cam profile"},
    Form_Control{"fra_Paths", "Paths"},
    Form_Control{"Chk_Follower", "Follower Path", "Show the roller or flat follower in all positions"},
    Form_Control{"chk_Cutter", "Cutter Path", "Show the cutter in all positions"},
    Form_Control{"chk_Camkey", "Cam vs Machine Zero", "Show cam referenced to machine zero instead of cam zero"},
    Form_Control{"fra_Surface", "Cam Surface"},
    Form_Control{"Opt_Surface(0)", "Inner Surface", "The surface on the cam's side of the roller"},
    Form_Control{"Opt_Surface(1)", "Outer Surface", "The surface beyond the roller, as of a ring or a groove"},
    Form_Control{"lbl_Surface", "", "The surface that exports have"},
    Form_Control{"fra_Rotate", "Cam Rotation"},
    Form_Control{"opt_Rotate(0)", "Ccw"},
    Form_Control{"opt_Rotate(1)", "Cw"},
    Form_Control{"fra_Sizes", "Sizes"},
    Form_Control{"fra_Run", "Motion"},
    Form_Control{"hsc_step", "", "Point of the cycle under the follower"},
    Form_Control{"lbl_theta", "", "Cam angle of the point under the follower"},
    Form_Control{"cmd_Step", "&Step", "One point further"},
    Form_Control{"cmd_Run", "&Run", "One whole cycle, a frame every 5 degrees"},
    Form_Control{"cmb_wait", "&Wait", "Speed of the run: larger is slower"},
    Form_Control{"pnl_Profile", "", "The profile that is drawn"},
    Form_Control{"pnl_initial", "Note:  Initial follower position is shown at cam zero, not at machine zero"},
    Form_Control{"lbl_Pamin", "Min Phi"},
    Form_Control{"lbl_Pamax", "Max Phi"},
    Form_Control{"lbl_Rhomin", "Min Rho +"},
    Form_Control{"lbl_Rhomax", "Min Rho -"},
    Form_Control{"lbl_Rholargest_pos", "Max Rho +"},
    Form_Control{"lbl_Rholargest_neg", "Max Rho -"},
    Form_Control{"mnu_zoom", "&Zoom"},
    Form_Control{"mnu_plus", "&Plus"},
    Form_Control{"mnu_minus", "&Minus"},
    Form_Control{"mnu_Normal", "&Normal"},
    Form_Control{"mnu_File", "&File"},
    Form_Control{"mnu_SavePictures", "&Save Animation..."},
    Form_Control{"mnu_Stride", "&Picture Every"},
    Form_Control{"mnu_Export", "E&xport"},
    Form_Control{"cmd_Stop", "St&op", "Ends the saving of pictures"},
    Form_Control{"cmd_Back", "< &Back"},
    Form_Control{"cmd_Redraw", "R&edraw"},
    Form_Control{"cmd_Copy", "&Copy"},
    Form_Control{"cmd_AnimatePrint", "&Print"},
    Form_Control{"cmd_Done", "&Next >"},
};

void Show_Incompatible()
{
    Show_Message("Incompatible dimensions - check your data", Buttons::OK, Symbol::exclamation);
}

/// Phi, profile and Rho of a view. @return whether there are any
bool Calculate_View(Design_State& view)
{
    Flags_Group& f = view.flags;
    const int type = view.cam.Followtype;
    f.Calc_Error = f.Math_Error = false;
    return Calc_Phi(view, type) && !f.Calc_Error && Calc_Rho(view, type) && !f.Calc_Error && !f.Math_Error;
}

}  // namespace

Animate_Form Open_Animation(Design_State& design)
{
    Choose_Path(design, Anim_Path::none, true);
    const double zoom = design.cam.Zoom_Factor;
    if (!(zoom >= nearest && zoom <= farthest))
        Zoom_Animation(design, 0);
    design.cam.Anim_Step = 0;
    Animate_Form form;
    Show_Sizes(design, form);
    return form;
}

void Show_Sizes(const Design_State& design, Animate_Form& form)
{
    form.txt_Prime = Shown(design, design.cam.Prime_Rad);
    form.txt_Follower = Shown(design, design.cam.Follow_Rad);
    form.txt_Offset = Shown(design, design.cam.Offset);
}

std::span<const Form_Field<Animate_Form>> Fields_of_Animate()
{
    return fields;
}

std::span<const Form_Control> Controls_of_Animate()
{
    return controls;
}

Anim_Path Present_Path(const Design_State& design)
{
    const Cam_Group& c = design.cam;
    return c.Show_Follower_Path ? Anim_Path::follower
           : c.Show_Cutter_Path ? Anim_Path::cutter
           : c.Show_Cam_Key     ? Anim_Path::machine_zero
                                : Anim_Path::none;
}

void Choose_Path(Design_State& design, Anim_Path path, bool ticked)
{
    const Anim_Path shown = ticked ? path : Anim_Path::none;
    Put(design, "Show_Follower_Path", shown == Anim_Path::follower ? 1 : 0);
    Put(design, "Show_Cutter_Path", shown == Anim_Path::cutter ? 1 : 0);
    Put(design, "Show_Cam_Key", shown == Anim_Path::machine_zero ? 1 : 0);
    Put(design, "Show_Surface", shown == Anim_Path::machine_zero ? 0 : 1);
}

void Choose_Show(Animate_Form& form, int choice)
{
    form.summary = choice == 1;
    if (!form.summary)
        form.conjugate = choice == 2;
}

void Choose_Surface(Design_State& design, Animate_Form& form, bool outer)
{
    form.outer = outer;
    Put(design, "In_Out", outer ? 1 : -1);
    Choose_Path(design, Anim_Path::none, true);
}

void Choose_Turning(Design_State& design, bool ccw)
{
    Put(design, "Rotflag", ccw ? 1 : -1);
}

bool Size_Animated(Design_State& design)
{
    return design.flags.Sized || (Set_Base_Circle(design) && Run_Size(design));
}

bool Make_View(const Design_State& design, const Animate_Form& form, Design_State& view)
{
    view = design;
    if (!design.flags.Sized)
        return false;
    Cam_Group& c = view.cam;
    const Integer side = form.outer ? 1 : -1;
    const bool stands = c.In_Out == side && !c.Conjugate && c.Side_Sign == 1;
    c.In_Out = side;
    c.Conjugate = false;
    c.Side_Sign = 1;
    const bool made = form.conjugate ? Use_Conjugate(view) : stands || Calculate_View(view);
    view.flags.Calc_Error = view.flags.Math_Error = false;
    if (!made) {
        Apply(view, Event::sizing_began);
        Show_Incompatible();
    }
    return made;
}

void Follow_Settings(const Design_State& from_design, Design_State& to_design)
{
    const Cam_Group& from = from_design.cam;
    Cam_Group& to = to_design.cam;
    to.Show_Follower_Path = from.Show_Follower_Path;
    to.Show_Cutter_Path = from.Show_Cutter_Path;
    to.Show_Cam_Key = from.Show_Cam_Key;
    to.Show_Surface = from.Show_Surface;
    to.Zoom_Factor = from.Zoom_Factor;
    to.Anim_Step = from.Anim_Step;
    to.Anim_Wait = from.Anim_Wait;
}

Animate_Panels Panels_of_Animate(const Design_State& design, const Animate_Form& form)
{
    const Cam_Group& c = design.cam;
    const bool sized = design.flags.Sized;
    const bool flat = c.Followtype == 2;
    return {.picture = !form.summary,
            .charts = form.summary,
            .motion = sized && !form.summary,
            .follower_entry = !flat,
            .offset_entry = c.Translating || flat,
            .done = sized};
}

Animate_Figures Figures_of_Animate(const Design_State& view)
{
    if (!view.flags.Sized)
        return {};
    const Cam_Group& c = view.cam;
    const auto at = [&](const std::string& value, const Single& angle) {
        return Trim(value) + " at " + Shown(view, angle) + " deg";
    };
    const auto phi = [&](const Single& value, const Single& angle) { return at(FNRoundStr(view, value, 2), angle); };
    const auto rho = [&](const std::string& text, const Single& angle) {
        return text == "None" ? text : at(text, angle);
    };
    const auto& radii = view.results.CalcData.Points(var::Rho);
    const double limit = c.Prime_Rad * 10.0;
    const bool clipped = std::ranges::any_of(radii, [&](const Single& r) { return std::abs(r) >= Single(limit); });
    return {phi(c.Phi_Min, c.Phi_Min_Angle),
            phi(c.Phi_Max, c.Phi_Max_Angle),
            rho(c.Rho_Min_Pos_Text, c.Rho_Min_Pos_Angle),
            rho(c.Rho_Min_Neg_Text, c.Rho_Min_Neg_Angle),
            rho(c.Rho_Max_Pos_Text, c.Rho_Max_Pos_Angle),
            rho(c.Rho_Max_Neg_Text, c.Rho_Max_Neg_Angle),
            clipped};
}

std::string Profile_Name(const Design_State& view)
{
    const Cam_Group& c = view.cam;
    std::string name = c.Conjugate ? "Conjugate cam" : "Primary cam";
    if (c.Followtype != 2)  // a flat face has no other side
        name += c.In_Out > 0 ? ", outer surface" : ", inner surface";
    return c.Show_Cam_Key ? name + ", at machine zero" : name;
}

std::string Surface_Note(const Design_State& design, const Animate_Form& form)
{
    const bool outer = design.cam.In_Out > 0;
    if (outer == form.outer)
        return "";
    return outer ? "The design keeps its outer surface until you choose one here."
                 : "The design keeps its inner surface until you choose one here.";
}

void Zoom_Animation(Design_State& design, int steps)
{
    double zoom = steps == 0 ? 1.0 : double{design.cam.Zoom_Factor};
    for (; steps > 0; --steps)
        zoom *= zoom_step;
    for (; steps < 0; ++steps)
        zoom /= zoom_step;
    if (zoom >= nearest && zoom <= farthest)
        Put(design, "Zoom Factor", zoom);
}

void Choose_Wait(Design_State& design, int place)
{
    Put(design, "Anim_Wait", static_cast<double>(Anim_Waits.at(static_cast<std::size_t>(place))));
}

std::string Theta_Text(const Design_State& design, int i)
{
    return Shown(design, design.results.CalcData(var::Angle, i));
}

std::string Animate_Done_Message()
{
    return "To export the follower coordinates, \n"
           "use the menu pulldown File/Export/Profile,\n"
           "or print desired data to disk with the Print button.\n"
           "\n"
           "To suppress this message on further calculations, hit Cancel.";
}

std::vector<Picture_Stride> Picture_Strides(const Design_State& design)
{
    std::vector<Picture_Stride> strides{{"Every point", 1}};
    for (const double degrees : stride_degrees)
        if (const int points = Anim_Stride(design, degrees); points > 1)
            strides.push_back({Shown(design, degrees) + " deg", points});
    return strides;
}

int Usual_Picture_Stride(const Design_State& design)
{
    const auto strides = Picture_Strides(design);
    const auto usual = std::ranges::find(strides, int{Anim_Stride(design)}, &Picture_Stride::points);
    return usual == strides.end() ? 0 : static_cast<int>(usual - strides.begin());
}

std::string Picture_Path(std::string_view name, int number, int count)
{
    constexpr std::size_t least_digits = 3;
    const std::filesystem::path path(name);
    const std::size_t digits = std::max(least_digits, std::to_string(count - 1).size());
    std::string figures = std::to_string(number);
    figures.insert(0, digits - std::min(digits, figures.size()), '0');
    const bool png = Same_Text(path.extension().string(), ".png");
    const std::string stem = png ? path.stem().string() : path.filename().string();
    return (path.parent_path() / (stem + "_" + figures + ".png")).string();
}

int Save_Pictures(const Design_State& design, std::string_view name, int stride, const Write_Picture& write,
                  const std::function<bool(int done, int count)>& stop)
{
    const std::vector<int> points = Loop_Points(design, stride);
    const int count = static_cast<int>(points.size());
    std::vector<std::string> paths;
    for (int k = 0; k < count; ++k)
        paths.push_back(Picture_Path(name, k, count));
    const auto there = std::ranges::count_if(paths, [](const std::string& path) {
        std::error_code ignored;
        return std::filesystem::exists(path, ignored);
    });
    if (there > 0 && Show_Message(std::to_string(there) + " of the pictures\n" + paths.front() + " to\n" +
                                      paths.back() + "\nare there already.  Do you want to replace them?",
                                  Buttons::OK_Cancel, Symbol::exclamation) == Answer::Cancel)
        return 0;
    int done = 0;
    for (const std::string& path : paths) {
        std::string why;
        if (!write(points[static_cast<std::size_t>(done)], path, why)) {
            Show_Message("The picture could not be saved as\n" + path + "\n" + why, Buttons::OK, Symbol::exclamation);
            return done;
        }
        ++done;
        if (done < count && stop(done, count))
            break;
    }
    const std::string last = paths[static_cast<std::size_t>(done - 1)];
    Show_Message(
        (done < count ? "Stopped: " + std::to_string(done) + " of " + std::to_string(count) : std::to_string(count)) +
            " pictures of one turn were saved, from\n" + paths.front() + " to\n" + last,
        Buttons::OK, Symbol::information);
    return done;
}

}  // namespace lobemax
