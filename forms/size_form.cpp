// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/size_form.h"

#include <array>
#include <cmath>

#include "camgeom/arm.h"
#include "camgeom/cam_rules.h"
#include "camgeom/sizing.h"
#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/units.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "forms/workflow.h"

namespace lobemax {

namespace {

void Tell(const Verdict& verdict)
{
    Show_Refusal(verdict);
}

/// Puts a value through the door; a refused one is told, and its box shows another text.
Form_Entry Enter(Design_State& design, std::string_view field, double value, std::string_view text,
                 const std::string& instead)
{
    const Verdict verdict = Put(design, field, value);
    if (verdict)
        return {true, std::string(text)};
    Tell(verdict);
    return {false, instead};
}

bool Linear(const Design_State& design)
{
    return design.cam.Camtype == "Linear";
}

bool Radial(const Design_State& design)
{
    return design.cam.Camtype == "Radial";
}

/// The option buttons, in their order.
void Read_Options(Design_State& design, Size_Form& form)
{
    Put(design, "Rotflag", form.ccw ? 1 : -1);
    Choose_Track(design, form.inner_track);
    Put(design, "ArmDirect", form.arm_ccw ? 1 : -1);
    Put(design, "Translating", form.translating ? 1 : 0);
    const bool radial_only = form.cam == Cam_Choice::Radial;
    if (!radial_only)
        form.roller = true;  // a flat face rides on a radial cam
    if (!form.roller)
        design.cam.Follow_Rad = 0.0;
    design.cam.Followtype = form.roller ? 1 : 2;
    constexpr std::array kinds{"Radial", "Barrel", "Linear", "Barrel"};
    Put_Cam(design, kinds.at(static_cast<std::size_t>(form.cam)),
            form.cam == Cam_Choice::Axial_Groove   ? "Grooved"
            : form.cam == Cam_Choice::Axial_Ribbed ? "Ribbed"
                                                   : "");
}

/// The checks and readings of the entries, in the order of the button.
void Read_Entries(Design_State& design, Size_Form& form)
{
    form.txt_Prime = Enter_Prime(design, form.txt_Prime).text;
    // A box that a refusal has emptied stands for the value that stayed.
    if (form.txt_follower.empty())
        form.txt_follower = Shown(design, design.cam.Follow_Rad);
    if (form.txt_Cutter.empty())
        form.txt_Cutter = Shown(design, design.cam.Cutter_Radius);
    if (form.roller)
        form.txt_follower = Enter_Roller(design, form.txt_follower).text;
    form.txt_Cutter = Enter_Cutter(design, form.txt_Cutter).text;
    Enter_Follower_Angle(design, form.txt_folwrangle);
    Enter_ArmX(design, form.txt_CLx);
    if (!Radial(design) && !form.translating)
        form.txt_CLy = "0";  // the pivot stands level with the track
    Enter_ArmY(design, form.txt_CLy);
}

/// @return false where the arm misses the cam
bool Read_Arm(Design_State& design, Size_Form& form, bool autocalc)
{
    const Single ArmRad = Val(design, form.txt_ArmRadius);
    std::string proposal;
    if (const Verdict verdict = Arm_may_be(design, ArmRad, proposal); !autocalc && !verdict) {
        Tell(verdict);
        form.txt_ArmRadius = proposal;
        return false;
    }
    design.cam.ArmRad = ArmRad;
    return true;
}

/// Stores a moved pivot.
template <auto store>
Form_Entry Enter_Pivot(Design_State& design, Size_Form& form, std::string_view typed)
{
    store(design, typed);
    Apply(design, Event::edited);
    Form_Entry arm = Enter_Arm_Radius(design, form.txt_ArmRadius);
    form.txt_ArmRadius = arm.text;
    return {arm.accepted, std::string(typed)};
}

constexpr std::array fields{
    Form_Field<Size_Form>{{"txt_Prime", "", "Smallest radius to roller center", Form_Unit::length},
                          &Size_Form::txt_Prime,
                          Alone<Enter_Prime>},
    Form_Field<Size_Form>{{"txt_follower", "Roller Radius", "Roller radius (not diameter)", Form_Unit::length},
                          &Size_Form::txt_follower,
                          Alone<Enter_Roller>},
    Form_Field<Size_Form>{{"txt_Cutter", "Cutter Radius", "Cutter radius for cutter compensation", Form_Unit::length},
                          &Size_Form::txt_Cutter,
                          Alone<Enter_Cutter>},
    Form_Field<Size_Form>{{"txt_Offset", "Offset", "Eccentricity of follower axis from cam center", Form_Unit::length},
                          &Size_Form::txt_Offset,
                          Alone<Enter_Offset>},
    Form_Field<Size_Form>{
        {"txt_folwrangle", "Follower Angle", "Angle of translating follower motion versus x axis", Form_Unit::degrees},
        &Size_Form::txt_folwrangle,
        Alone<Enter_Follower_Angle>},
    Form_Field<Size_Form>{{"txt_CLx", "Pivot x", "x distance from cam center to arm pivot", Form_Unit::length},
                          &Size_Form::txt_CLx,
                          Enter_Pivot<Enter_ArmX>},
    Form_Field<Size_Form>{{"txt_CLy", "Pivot y", "y distance from cam center to arm pivot", Form_Unit::length},
                          &Size_Form::txt_CLy,
                          Enter_Pivot<Enter_ArmY>},
    Form_Field<Size_Form>{{"txt_ArmRadius", "Arm Radius", "Radius from arm pivot to roller center", Form_Unit::length},
                          &Size_Form::txt_ArmRadius,
                          Alone<Enter_Arm_Radius>},
    Form_Field<Size_Form>{{"txt_ShiftAng", "Starting Angle", Start_Angle_Text, Form_Unit::degrees},
                          &Size_Form::txt_ShiftAng,
                          Alone<Enter_Shift_Angle>},
};

constexpr std::string_view track_tip = "Must calculate and export each track surface of cam separately";

constexpr std::array controls{
    Form_Control{"frm_SizeCam", "Size the cam"},
    Form_Control{"fra_CamType", "Cam type"},
    Form_Control{"opt_CamType(0)", "Radial", "Follower moves radially"},
    Form_Control{"opt_CamType(1)", "Axial-Groove", "Follower moves axially"},
    Form_Control{"opt_CamType(2)", "Linear", "Cam moves past follower"},
    Form_Control{"opt_CamType(3)", "Axial-Ribbed", "Follower moves axially"},
    Form_Control{"fra_Folmotion", "Follower motion"},
    Form_Control{"opt_Folmotion(0)", "Translating"},
    Form_Control{"opt_Folmotion(1)", "Oscillating"},
    Form_Control{"fra_Foltype", "Follower type"},
    Form_Control{"opt_Foltype(0)", "Roller"},
    Form_Control{"opt_Foltype(1)", "Flat"},
    Form_Control{"fra_Rotate", "Cam Rotation"},
    Form_Control{"opt_Rotate(0)", "Ccw"},
    Form_Control{"opt_Rotate(1)", "Cw"},
    Form_Control{"pnl_ArmRotate", "Arm Rotation"},
    Form_Control{"opt_ArmRotate(0)", "Ccw"},
    Form_Control{"opt_ArmRotate(1)", "Cw"},
    Form_Control{"fra_topbot", "Cam Surface"},
    Form_Control{"opt_topbot(0)", "Inner", track_tip},
    Form_Control{"opt_topbot(1)", "Outer", track_tip},
    Form_Control{"lbl_CL", "Center Distance", "From cam center to arm pivot", Form_Unit::length},
    Form_Control{"cmb_keyway", "Keyway", "Where the keyway points"},
    Form_Control{"lbl_Pamin", "Min Phi"},
    Form_Control{"lbl_Pamax", "Max Phi"},
    Form_Control{"lbl_Rhomin", "Min Rho +"},
    Form_Control{"lbl_Rhomax", "Min Rho -"},
    Form_Control{"chk_True", "&True curves",
                 "What geometry alone gives, dashed beside the rows; the outline is the true one too"},
    Form_Control{"lbl_Notes", "", "What mechanics has beside these figures"},
    Form_Control{"cmd_Cancel", "< &Back"},
    Form_Control{"chk_Autocalc", "&Autocalc", "Will calculate when any change is made"},
    Form_Control{"cmd_ShowCam", "Show &Cam"},
    Form_Control{"cmd_ShowData", "Show &Data"},
    Form_Control{"cmd_ShowBoth", "Show B&oth", "The cam beside its curves"},
    Form_Control{"cmd_Copy", "Cop&y"},
    Form_Control{"cmd_PrintForm", "&Print"},
    Form_Control{"cmd_Calc", "Ca&lculate"},
    Form_Control{"cmd_Done", "&Next >"},
};

}  // namespace

std::span<const Form_Field<Size_Form>> Fields_of_Size()
{
    return fields;
}

std::span<const Form_Control> Controls_of_Size()
{
    return controls;
}

Cam_Choice Present_Cam_Choice(const Design_State& design)
{
    if (Linear(design))
        return Cam_Choice::Linear;
    if (Radial(design))
        return Cam_Choice::Radial;
    return design.cam.Barrel_Type == "Ribbed" ? Cam_Choice::Axial_Ribbed : Cam_Choice::Axial_Groove;
}

Size_Form Size_Form_of_Design(const Design_State& design)
{
    const Cam_Group& c = design.cam;
    return {Present_Cam_Choice(design),
            c.Translating,
            c.Followtype != 2,
            c.Rotflag > 0,
            c.ArmDirect > 0,
            c.Top_Bot == c.Rotflag,
            Shown(design, Linear(design) ? c.Prime_Rad * PI2 : double{c.Prime_Rad}),
            Shown(design, c.Follow_Rad),
            Shown(design, c.Cutter_Radius),
            Shown(design, c.Offset),
            Shown(design, c.Follower_Angle),
            Shown(design, c.ArmX),
            Shown(design, c.ArmY),
            Shown(design, c.ArmRad),
            Shown(design, c.Shift_Angle),
            c.Keyway_Text};
}

Form_Entry Enter_Prime(Design_State& design, std::string_view text)
{
    const Single typed = Val(design, text);
    // The length of a linear cam as it was shown gives its radius back unchanged.
    if (Linear(design) && typed == Single(design.cam.Prime_Rad * PI2))
        return {true, std::string(text)};
    return Enter(design, "Prime_Rad", Linear(design) ? typed / PI2 : double{typed}, text, "1");
}

Form_Entry Enter_Roller(Design_State& design, std::string_view text)
{
    return Enter(design, "Follow_Rad", Val(design, text), text, "");
}

Form_Entry Enter_Cutter(Design_State& design, std::string_view text)
{
    Form_Entry entry = Enter(design, "Cutter Radius", Val(design, text), text, "");
    entry.takes_focus = !entry.accepted;
    return entry;
}

Form_Entry Enter_Offset(Design_State& design, std::string_view text)
{
    return Enter(design, "Offset", Val(design, text), text, "0");
}

Form_Entry Enter_Follower_Angle(Design_State& design, std::string_view text)
{
    return Enter(design, "Follower_Angle", Val(design, text), text, "0");
}

Form_Entry Enter_Arm_Radius(Design_State& design, std::string_view text)
{
    const Single value = Val(design, text);
    std::string shown = Shown(design, design.cam.ArmRad);
    if (value > Single(Smallest_Arm))
        static_cast<void>(Arm_may_be(design, value, shown));  // an arm that misses becomes the one proposed
    return Enter(design, "ArmRad", value, text, shown);
}

Form_Entry Enter_Shift_Angle(Design_State& design, std::string_view text)
{
    return Enter(design, "Shift_Angle", Val(design, text), text, Shown(design, design.cam.Shift_Angle));
}

void Enter_ArmX(Design_State& design, std::string_view text)
{
    Put(design, "ArmX", Val(design, text));
}

void Enter_ArmY(Design_State& design, std::string_view text)
{
    Put(design, "ArmY", Val(design, text));
}

std::string Step_Number(const Design_State& design, std::string_view text, int steps)
{
    const double value = Val(design, text);
    const double size = std::abs(value) < 1e-9 ? 1.0 : std::pow(10.0, std::floor(std::log10(std::abs(value))) - 1.0);
    const double next = std::round(value / size + steps) * size;
    return Shown(design, next);
}

void Choose_Cam(Design_State& design, Cam_Choice choice)
{
    constexpr std::array kinds{"Radial", "Barrel", "Linear", "Barrel"};
    const bool inner = design.cam.Top_Bot == design.cam.Rotflag;
    Put(design, "Camtype$", kinds.at(static_cast<std::size_t>(choice)));
    if (choice == Cam_Choice::Axial_Groove || choice == Cam_Choice::Axial_Ribbed)
        Put(design, "Barrel_Type$", choice == Cam_Choice::Axial_Groove ? "Grooved" : "Ribbed");
    Choose_Track(design, inner);
}

void Choose_Follower_Motion(Design_State& design, bool translating)
{
    Put(design, "Translating", translating ? 1 : 0);
}

void Choose_Follower(Design_State& design, bool roller)
{
    Put(design, "Followtype", roller ? 1 : 2);
    if (!roller && design.cam.Translating)
        Flat_Min_Base_Radius(design);
}

void Choose_Rotation(Design_State& design, bool ccw, bool inner_track)
{
    Put(design, "Rotflag", ccw ? 1 : -1);
    Put(design, "Top_Bot", inner_track ? -design.cam.Rotflag : +design.cam.Rotflag);
}

void Choose_Arm_Rotation(Design_State& design, bool ccw)
{
    Put(design, "ArmDirect", ccw ? 1 : -1);
}

void Choose_Track(Design_State& design, bool inner)
{
    Put(design, "Top_Bot", inner ? +design.cam.Rotflag : -design.cam.Rotflag);
}

Size_Panels Set_Cam_Type_Panels(Design_State& design)
{
    Cam_Group& c = design.cam;
    const bool linear = Linear(design);
    if (!Radial(design)) {
        c.Offset = 0.0;
        c.Followtype = 1;
        if (!c.Translating)
            c.ArmY = 0.0;
    }
    return {linear ? "Cam Length" : "Prime Radius",
            {linear ? "-->>" : "Ccw", linear ? "<<--" : "Cw"},
            linear ? "Cam Direction" : "Cam Rotation",
            Radial(design) ? "y" : "z",
            Radial(design),
            Radial(design) && c.Translating,
            !c.Translating,
            !linear,
            Radial(design),
            !Radial(design),
            Radial(design) || c.Translating};
}

void Choose_Keyway(Design_State& design, const std::string& words)
{
    Put(design, "Keyway_Text", words);
}

bool Calc_Size(Design_State& design, Size_Form& form, bool autocalc)
{
    Apply(design, Event::sizing_began);
    Read_Options(design, form);
    Set_Cam_Type_Panels(design);
    Read_Entries(design, form);
    const bool meets = Read_Arm(design, form, autocalc);
    if (meets && Radial(design))
        form.txt_Offset = Enter_Offset(design, form.txt_Offset).text;
    return Run_Size_Curves(design, meets);
}

std::string Axial_Cam_Message(const Design_State& design)
{
    const std::string& type = design.cam.Camtype;
    if (Radial(design))
        return "";
    return "The " + type + " cam data for pressure angle, radius of\n" +
           "curvature, and cam profile has been calculated. \n\n" + "The  " + type +
           "-cam profile is not drawn on screen by this program,\n" +
           "but it is stored in memory for the output of cutter coordinates.\n\n" +
           "Note that the roller centerline coordinates of a " + type + " cam are\n" +
           "the same as its displacement diagram's R-theta data.\n\n" +
           "To export the cutter coordinates, use the menu pulldown:\n" +
           "                       File/Export/Profile.\n\n" +
           "To suppress this message on further calculations, hit Cancel.";
}

std::string Linear_Cam_Message()
{
    return Linear_Help() + "\n\nTo suppress this message on further choices, hit Cancel.";
}

Size_Texts Texts_of_Size(const Design_State& design)
{
    const Cam_Group& c = design.cam;
    const Table<Single>& data = design.results.CalcData;
    const auto number = [&](double value) { return Trim(FNRoundStr(design, value, 2)); };
    const double base = c.Followtype == 1 ? c.Prime_Rad - c.Follow_Rad : double{c.Prime_Rad};
    return {number(c.Phi_Min),
            number(c.Phi_Max),
            Trim(c.Rho_Min_Pos_Text),
            Trim(c.Rho_Min_Neg_Text),
            number(Arm_Pivot_Distance(design)),
            "At cam zero  x " + number(data(9, 0)) + "   y " + number(data(10, 0)) + "   base circle " + number(base) +
                " " + Words_of_Units(design.identity.WhichUnit).length};
}

std::string Start_Angle_Help()
{
    return std::string(Start_Angle_Text);
}

std::string Linear_Help()
{
    return "A linear cam is a straight bar that moves past its follower and back.\n"
           "Its length stands for one turn of the camshaft: cam angle is distance along the bar.\n"
           "The follower moves in the z direction, across the bar.\n"
           "Each track surface is calculated and exported on its own.";
}

std::string Barrel_Help()
{
    return "A barrel cam is a cylinder with a groove or a rib around it; its follower moves along the axis.\n"
           "The prime radius is that of the cylinder at the middle of the roller.\n"
           "Each track surface is calculated and exported on its own.";
}

std::string Arm_Help()
{
    return "These data define the location of the cam arm pivot and its rotation.\n"
           "If you change x and y such that the arm radius falls off the cam,\n"
           "It will automatically change the arm radius to find the cam.";
}

std::string Roller_Help()
{
    return "The radius of the roller should be less than the \n"
           "minimum radius of curvature by a comfortable margin.\n"
           "A factor of 2 is sufficient, and 1.5 is minimal.";
}

std::string Cam_Surface_Help()
{
    return "Selects the cam surface that you want to create.\n"
           "If you want a track cam, you will have to select each in turn,\n"
           "calculate the surface, export it from the Home screen, return to this screen\n"
           "and calculate the other surface, then export it as a separate file.";
}

}  // namespace lobemax
