// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/size_form.h"

#include <array>
#include <cmath>

#include "camgeom/arm.h"
#include "camgeom/sizing.h"
#include "core/design_state.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/units.h"
#include "forms/workflow.h"

namespace lobemax {

namespace {

constexpr double smallest_arm = 0.001;

std::string Shown(const Design_State& design, double value)
{
    return In_Number_Format(design, Shortest(Single(value)));
}

void Exclaim(const std::string& text)
{
    Show_Message(text, Buttons::OK, Symbol::exclamation);
}

bool Linear(const Design_State& design)
{
    return design.cam.Camtype == "Linear";
}

bool Radial(const Design_State& design)
{
    return design.cam.Camtype == "Radial";
}

/// Profile rows by the kind of cam.
struct Row_Words {
    int row;
    const char* name;
    const char* symbol;
};

constexpr std::array radial_words{Row_Words{11, "Radius", "R"},        Row_Words{12, "Theta", "Th"},
                                  Row_Words{36, "X_Surface", "X_Srf"}, Row_Words{37, "Y_Surface", "Y_Srf"},
                                  Row_Words{40, "X_Cutter", "X_Ctr"},  Row_Words{41, "Y_Cutter", "Y_Ctr"}};
constexpr std::array axial_words{Row_Words{11, "Z-coord", "Z"},       Row_Words{12, "Lambda", "Lm"},
                                 Row_Words{36, "Z_Surface", "Z_Srf"}, Row_Words{37, "Lambda_Surf", "Lm_Srf"},
                                 Row_Words{40, "Z_Cutter", "Z_Ctr"},  Row_Words{41, "Lambda_Ctr", "Lm_Ctr"}};

void Name_Profile_Rows(Design_State& design)
{
    for (const Row_Words& words : Radial(design) ? radial_words : axial_words) {
        design.plot.Var_Name(words.row) = words.name;
        design.plot.Var_Symbol(words.row) = words.symbol;
    }
}

/// The option buttons, in their order.
void Read_Options(Design_State& design, Size_Form& form)
{
    Cam_Group& c = design.cam;
    c.Rotflag = form.ccw ? 1 : -1;
    Choose_Track(design, form.inner_track);
    c.ArmDirect = form.arm_ccw ? 1 : -1;
    c.Translating = form.translating;
    const bool radial_only = form.cam == Cam_Choice::Radial;
    if (!radial_only)
        form.roller = true;  // a flat face rides on a radial cam
    c.Followtype = form.roller ? 1 : 2;
    if (!form.roller)
        c.Follow_Rad = 0.0;
    constexpr std::array kinds{"Radial", "Barrel", "Linear", "Barrel"};
    c.Camtype = kinds.at(static_cast<std::size_t>(form.cam));
    c.Barrel_Type = form.cam == Cam_Choice::Axial_Groove   ? "Grooved"
                    : form.cam == Cam_Choice::Axial_Ribbed ? "Ribbed"
                                                           : "";
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
    Cam_Group& c = design.cam;
    const double ArmRad = Val(design, form.txt_ArmRadius);
    std::string proposal;
    if (!autocalc && !Arm_Meets_Cam(design, ArmRad, proposal)) {
        form.txt_ArmRadius = proposal;
        return false;
    }
    c.ArmRad = ArmRad;
    return true;
}

}  // namespace

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

Size_Entry Enter_Prime(Design_State& design, std::string_view text)
{
    Cam_Group& c = design.cam;
    const double value = Single(Val(design, text));  // as it is stored
    if (!(value > 0.0) || (Radial(design) && value <= c.Offset)) {
        Exclaim("Prime radius cannot be zero or negative or less than the offset");
        return {false, "1"};
    }
    // The length of a linear cam as it was shown gives its radius back unchanged.
    if (Linear(design)) {
        if (Single(value) != Single(c.Prime_Rad * PI2))
            c.Prime_Rad = value / PI2;
    } else {
        c.Prime_Rad = value;
    }
    return {true, std::string(text)};
}

Size_Entry Enter_Roller(Design_State& design, std::string_view text)
{
    Cam_Group& c = design.cam;
    const double value = Single(Val(design, text));
    if (!Linear(design) && value >= c.Prime_Rad) {
        Exclaim(
            "Something is wrong\n"
            "\n"
            "The follower radius is greater than the prime circle radius\n"
            "\n"
            "Please check your data.");
        return {false, ""};
    }
    if (value < 0.0) {
        Exclaim("The follower radius must be zero or positive");
        return {false, ""};
    }
    c.Follow_Rad = value;
    return {true, std::string(text)};
}

Size_Entry Enter_Cutter(Design_State& design, std::string_view text)
{
    const double value = Val(design, text);
    if (value < 0.0) {
        Exclaim("This value must be positive.  Please redo.");
        return {false, "", true};
    }
    design.cam.Cutter_Radius = value;
    return {true, std::string(text)};
}

Size_Entry Enter_Offset(Design_State& design, std::string_view text)
{
    Cam_Group& c = design.cam;
    const double value = Single(Val(design, text));
    if (!(std::abs(value) < c.Prime_Rad)) {
        Show_Message("Cannot compute - Eccentricity is >= Prime Radius.  Try a smaller absolute value of eccentricity",
                     Buttons::OK, Symbol::none);
        return {false, "0"};
    }
    c.Offset = value;
    return {true, std::string(text)};
}

Size_Entry Enter_Follower_Angle(Design_State& design, std::string_view text)
{
    design.cam.Follower_Angle = Val(design, text);
    return {true, std::string(text)};
}

Size_Entry Enter_Arm_Radius(Design_State& design, std::string_view text)
{
    Cam_Group& c = design.cam;
    const double value = Val(design, text);
    if (!(value > smallest_arm)) {
        Exclaim("Arm radius cannot be zero. Please reenter.");
        return {false, Shown(design, c.ArmRad)};
    }
    std::string proposal;
    if (!Arm_Meets_Cam(design, value, proposal))
        return {false, proposal};
    c.ArmRad = value;
    return {true, std::string(text)};
}

Size_Entry Enter_Shift_Angle(Design_State& design, std::string_view text)
{
    Cam_Group& c = design.cam;
    const double value = Val(design, text);
    c.Shift_Points = To_Integer(value / 360.0 * design.motion.Max_Data_Points_used);
    c.Shift_Angle = value;
    return {true, std::string(text)};
}

void Enter_ArmX(Design_State& design, std::string_view text)
{
    design.cam.ArmX = Val(design, text);
}

void Enter_ArmY(Design_State& design, std::string_view text)
{
    design.cam.ArmY = Val(design, text);
}

std::string Step_Number(const Design_State& design, std::string_view text, int steps)
{
    const double value = Val(design, text);
    const double size = std::abs(value) < 1e-9 ? 1.0 : std::pow(10.0, std::floor(std::log10(std::abs(value))) - 1.0);
    const double next = std::round(value / size + steps) * size;
    return Shown(design, next);
}

bool Arm_Meets_Cam(const Design_State& design, double ArmRad, std::string& proposal)
{
    const Cam_Group& c = design.cam;
    if (c.Translating || Linear(design))
        return true;
    const double D = Arm_Pivot_Distance(design);
    if (D - c.Prime_Rad < ArmRad && D + c.Prime_Rad > ArmRad)
        return true;
    proposal = FNRoundStr(design, D, 2);
    Exclaim(
        "The roller follower arm misses the cam entirely\n"
        "with your current choice of arm center location. \n"
        "\n"
        "Please adjust the arm radius to be about\n" +
        proposal + " " + Words_of_Units(design.identity.WhichUnit).length + " for this arm center location.");
    return false;
}

void Choose_Cam(Design_State& design, Cam_Choice choice)
{
    Size_Form form = Size_Form_of_Design(design);
    form.cam = choice;
    const bool inner = form.inner_track;
    Read_Options(design, form);
    Choose_Track(design, inner);
    Model_Edited(design);
}

void Choose_Follower_Motion(Design_State& design, bool translating)
{
    design.cam.Translating = translating;
    Set_Units(design);
    Model_Edited(design);
}

void Choose_Follower(Design_State& design, bool roller)
{
    Cam_Group& c = design.cam;
    c.Followtype = roller ? 1 : 2;
    Model_Edited(design);
    if (roller)
        return;
    c.Offset = 0.0;
    c.Follow_Rad = 0.0;
    c.Camtype = "Radial";
    c.Barrel_Type = "";
    design.linkage.Drive_End_Effector = false;
    if (c.Translating)
        Flat_Min_Base_Radius(design);
}

void Choose_Rotation(Design_State& design, bool ccw, bool inner_track)
{
    Cam_Group& c = design.cam;
    c.Rotflag = ccw ? 1 : -1;
    c.Top_Bot = inner_track ? -c.Rotflag : +c.Rotflag;
    Model_Edited(design);
}

void Choose_Arm_Rotation(Design_State& design, bool ccw)
{
    design.cam.ArmDirect = ccw ? 1 : -1;
    Model_Edited(design);
}

void Choose_Track(Design_State& design, bool inner)
{
    Cam_Group& c = design.cam;
    c.Top_Bot = inner ? +c.Rotflag : -c.Rotflag;
}

Size_Panels Set_Cam_Type_Panels(Design_State& design)
{
    Cam_Group& c = design.cam;
    Name_Profile_Rows(design);
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

bool Calc_Size(Design_State& design, Size_Form& form, bool autocalc)
{
    Flags_Group& f = design.flags;
    Size_Changed(design);
    f.Calc_Error = f.Math_Error = false;
    Read_Options(design, form);
    Set_Cam_Type_Panels(design);
    Read_Entries(design, form);
    if (!Read_Arm(design, form, autocalc))
        f.Calc_Error = true;
    else if (Radial(design))
        form.txt_Offset = Enter_Offset(design, form.txt_Offset).text;
    const int type = design.cam.Followtype;
    if (!f.Calc_Error)
        Calc_Phi(design, type);
    const bool phi_error = f.Calc_Error || f.Math_Error;
    if (!phi_error)
        Calc_Rho(design, type);
    f.Sized = !phi_error && !f.Calc_Error && !f.Math_Error;
    if (!f.Sized)
        Exclaim("Incompatible dimensions - check your data");
    f.Calc_Error = false;
    Refresh_Screens();
    return f.Sized;
}

bool Size_Design(Design_State& design)
{
    Size_Form form = Size_Form_of_Design(design);
    return Calc_Size(design, form, false);
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
    return "'Starting Angle' allows you to input the timing-diagram-angle at which \n"
           "you choose to start the displacement diagram (i.e., cam zero) with respect to machine zero.";
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
