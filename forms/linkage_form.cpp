// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/linkage_form.h"

#include <algorithm>
#include <cmath>

#include "core/messages.h"
#include "core/numeric.h"
#include "core/surface.h"
#include "core/text.h"
#include "core/traps.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "forms/linkage_notes.h"
#include "linkage/linkage_kinematics.h"
#include "present/linkage_plots.h"
#include "present/plot_engine.h"

namespace lobemax {

namespace {

constexpr std::array choices{
    Linkage_Choice{0, "Fourbar linkage"},
    Linkage_Choice{1, "Sixbar linkage"},
    Linkage_Choice{2, "Fourbar linkage with slider"},
    Linkage_Choice{3, "Sixbar linkage with slider"},
};

const Linkage_Choice& Choice_at(int choice)
{
    return choices[Checked_Place(choice, 0, static_cast<int>(choices.size()) - 1)];
}

constexpr std::string_view help_tip = "What moves what, and which dimensions it takes";

constexpr std::array controls{
    Form_Control{"frm_LinkageType", "Linkage driven by the follower arm"},
    Form_Control{"opt_Select(0)", "Select", choices[0].title},
    Form_Control{"opt_Select(1)", "Select", choices[1].title},
    Form_Control{"opt_Select(2)", "Select", choices[2].title},
    Form_Control{"opt_Select(3)", "Select", choices[3].title},
    Form_Control{"cmd_Help(0)", "&1  Help", help_tip},
    Form_Control{"cmd_Help(1)", "&2  Help", help_tip},
    Form_Control{"cmd_Help(2)", "&3  Help", help_tip},
    Form_Control{"cmd_Help(3)", "&4  Help", help_tip},
    Form_Control{"cmd_Cancel", "< &Back"},
    Form_Control{"cmd_Done", "&Next >"},
    Form_Control{"fra_Links", "Linkage"},
    Form_Control{"cmd_Suggest", "Su&ggest", "A train in proportion to the arm: all dimensions are put"},
    Form_Control{"fra_Assemflag1", "Assembly of stage 1"},
    Form_Control{"opt_Assemflag1(0)", "Open", "The coupler does not cross the line of the pivots"},
    Form_Control{"opt_Assemflag1(1)", "Crossed", "The other way of putting the same links together"},
    Form_Control{"fra_Assemflag2", "Assembly of stage 2"},
    Form_Control{"opt_Assemflag2(0)", "Open", "The coupler does not cross the line of the pivots"},
    Form_Control{"opt_Assemflag2(1)", "Crossed", "The other way of putting the same links together"},
    Form_Control{"fra_SteveWatt", "Second stage hangs on"},
    Form_Control{"opt_SteveWatt(0)", "Watt", "Link 5 hangs on link 4"},
    Form_Control{"opt_SteveWatt(1)", "Stephenson", "Link 5 hangs on the coupler, link 3"},
    Form_Control{"fra_Effector", "Apply SVAJ to:"},
    Form_Control{"Opt_SVAJ(0)", "Cam Arm", "The motion is that of the follower arm"},
    Form_Control{"Opt_SVAJ(1)", "End Effector",
                 "The motion is that of the last link: the cam is sized again for what the arm then has to do"},
    Form_Control{"fra_Drag", "Shift-Click-drag to move"},
    Form_Control{"opt_Shift_Drag(0)", "O4", "The pivot of link 4"},
    Form_Control{"opt_Shift_Drag(1)", "O6", "The pivot of link 6"},
    Form_Control{"opt_Shift_Drag(2)", "Slider axis", "Shifts the line that the slider runs on"},
    Form_Control{"fra_Summary", "End effector"},
    Form_Control{"pct_Cam", "", "With Shift held a drag moves the point that is picked; without, the view"},
    Form_Control{"hsc_step", "", "Point of the cycle: hold an arrow to run, or drag"},
    Form_Control{"lbl_theta", "Cam angle", "Of the picture"},
    Form_Control{"hsc_speed", "<< Slow    Fast >>", "Speed of the animation"},
    Form_Control{"cmb_wait", "Range", "Changes the range of speed control slider"},
    Form_Control{"cmb_Steps", "Steps", "Points of the cycle from frame to frame"},
    Form_Control{"txt_Cycles", "&Turns", "Number of revolutions in animation"},
    Form_Control{"cmd_Play", "Pla&y", "Runs the animation by itself"},
    Form_Control{"cmd_Run", "&Run", "How to run the linkage by hand"},
    Form_Control{"cmd_Step", "&Step", "One step further"},
    Form_Control{"cmd_Redraw", "Re&draw", "Sets the scale anew"},
    Form_Control{"cmd_Plot", "Plot &Funct", "Position, velocity and acceleration of the links"},
    Form_Control{"cmd_MassProp", "&Mass Prop", "Effective mass and stiffness at the follower"},
    Form_Control{"cmd_Copy", "C&opy"},
    Form_Control{"cmd_Print", "&Print"},
    Form_Control{"cmd_Calc", "&Calculate"},
};

/// The places of txt_Linkout.
namespace linkout {
enum Place {
    Link_1,
    Theta1,
    Link_2,
    Link_3,
    Link_4,
    Delta2,
    Delta4,
    Link_4a,
    O4x,
    O4y,
    O6x,
    O6y,
    Link_5,
    Link_6,
    S3x,
    S3y,
    slider_angle,
    Offset6,
};
}  // namespace linkout

constexpr std::array fields{
    Linkout_Row{{"txt_Linkout(0)", "Link 1", "Ground, from the arm's pivot to O4", Form_Unit::length}, "Link 1"},
    Linkout_Row{{"txt_Linkout(1)", "Theta1", "Angle of the ground link, from the arm's pivot to O4, against the x axis",
                 Form_Unit::degrees},
                "Theta1"},
    Linkout_Row{{"txt_Linkout(2)", "Link 2", "Input, on the follower arm", Form_Unit::length}, "Link 2"},
    Linkout_Row{{"txt_Linkout(3)", "Link 3", "Coupler, hangs on link 2", Form_Unit::length}, "Link 3"},
    Linkout_Row{{"txt_Linkout(4)", "Link 4", "Rocker, turns about O4", Form_Unit::length}, "Link 4"},
    Linkout_Row{{"txt_Linkout(5)", "Angle to Roller", "Delta2: from link 2 to the line from the pivot to the roller",
                 Form_Unit::degrees},
                "Delta2"},
    Linkout_Row{{"txt_Linkout(6)", "Delta4 or Delta3",
                 "From the link to the line to its point D, which is on link 4, of a Stephenson train on link 3",
                 Form_Unit::degrees},
                "Delta4"},
    Linkout_Row{
        {"txt_Linkout(7)", "O4D or cp3 dist",
         "Distance of the point D from O4, of a Stephenson train from the near end of link 3", Form_Unit::length},
        "Link 4a"},
    Linkout_Row{{"txt_Linkout(8)", "O4x", "Pivot of link 4, from the cam centre", Form_Unit::length}, "O4x"},
    Linkout_Row{{"txt_Linkout(9)", "O4y", "Pivot of link 4, from the cam centre", Form_Unit::length}, "O4y"},
    Linkout_Row{{"txt_Linkout(10)", "O6x", "Pivot of link 6, from the cam centre", Form_Unit::length}, "O6x"},
    Linkout_Row{{"txt_Linkout(11)", "O6y", "Pivot of link 6, from the cam centre", Form_Unit::length}, "O6y"},
    Linkout_Row{{"txt_Linkout(12)", "Link 5", "Second coupler, hangs on D", Form_Unit::length}, "Link 5"},
    Linkout_Row{{"txt_Linkout(13)", "Link 6", "Second rocker, turns about O6", Form_Unit::length}, "Link 6"},
    Linkout_Row{{"txt_Linkout(14)", "S3x", "A point of the slider's axis, from the cam centre", Form_Unit::length},
                "S3x"},
    Linkout_Row{{"txt_Linkout(15)", "S3y", "A point of the slider's axis, from the cam centre", Form_Unit::length},
                "S3y"},
    Linkout_Row{{"txt_Linkout(16)", "Slider angle", "Of the slider's axis, against the x axis", Form_Unit::degrees},
                "Global_Slider_angle_deg"},
    Linkout_Row{
        {"txt_Linkout(17)", "Offset6", "Of the slider's axis from O4, to the left of its direction", Form_Unit::length},
        "Offset6"},
};

/// The stored field of a place.
const Single& Stored(const Design_State& design, int index)
{
    using namespace linkout;
    const Linkage_Group& k = design.linkage;
    switch (index) {
    case Link_1:
        return k.Link_1;
    case Theta1:
        return k.Theta1;
    case Link_2:
        return k.Link_2;
    case Link_3:
        return k.Link_3;
    case Link_4:
        return k.Link_4;
    case Delta2:
        return k.Delta2;
    case Delta4:
        return k.Delta4;
    case Link_4a:
        return k.Link_4a;
    case O4x:
        return k.O4x;
    case O4y:
        return k.O4y;
    case O6x:
        return k.O6x;
    case O6y:
        return k.O6y;
    case Link_5:
        return k.Link_5;
    case Link_6:
        return k.Link_6;
    case S3x:
        return k.S3x;
    case S3y:
        return k.S3y;
    case slider_angle:
        return k.Global_Slider_angle_deg;
    case Offset6:
        return k.Offset6;
    default:
        break;
    }
    throw Fault{out_of_bounds};
}

/// Whether the line of pivots has a direction.
bool Pivots_Apart(const Design_State& design)
{
    return design.linkage.O4x != design.cam.ArmX || design.linkage.O4y != design.cam.ArmY;
}

/// Whether a field shows what follows from the pivots.
bool Of_Ground(int index)
{
    return index == linkout::Link_1 || index == linkout::Theta1;
}

}  // namespace

std::span<const Linkage_Choice> Linkage_Choices()
{
    return choices;
}

int Choice_of_Linkage(const Design_State& design)
{
    return std::clamp(int{design.linkage.Linkage_Type}, 0, static_cast<int>(choices.size()) - 1);
}

void Choose_Linkage_Type(Design_State& design, int choice)
{
    Put(design, "Linkage_Type", Choice_at(choice).type);
}

std::string Linkage_Help(int choice)
{
    const int type = Choice_at(choice).type;
    const bool slider = type > 1;
    const bool six = type % 2 == 1;
    std::string text =
        "Link 2 is fixed to the cam follower arm and turns with it about the arm's pivot,\n"
        "at the angle 'Angle to Roller' from the line to the roller.\n";
    if (!six && slider)
        return text +
               "Link 3 couples it to a slider, which is the end effector.  The slider runs on the line\n"
               "through the point S3 at the slider angle.";
    text += six ? "Link 3 couples it to link 4, which turns about its own pivot O4.\n"
                : "Link 3 couples it to link 4, which turns about its own pivot O4 and is the end effector.\n";
    if (!six)
        return text + "The point D on link 4, at 'O4D' from its pivot, shows where a tool may be.";
    if (slider)
        return text +
               "Link 5 hangs on the point D of link 4 and drives a slider, which is the end effector.\n"
               "The slider's line runs at the slider angle, at a distance 'Offset6' from O4.";
    return text +
           "Link 5 hangs on the point D and drives link 6, which turns about the pivot O6 and is the end effector.\n"
           "In a Watt train D is on link 4, in a Stephenson train on the coupler, link 3.";
}

std::string_view Screen_of_Linkage(const Design_State& design)
{
    const std::string& kind = design.linkage.Linkage_Kind;
    return kind == "Fourslide" ? "frm_CamSlider4" : kind == "Sixslide" ? "frm_CamSlider6" : "frm_Linkage";
}

std::string_view Title_of_Linkage(const Design_State& design)
{
    return choices[static_cast<std::size_t>(Choice_of_Linkage(design))].title;
}

std::span<const Linkout_Row> Fields_of_Linkage()
{
    return fields;
}

std::span<const Form_Control> Controls_of_Linkage()
{
    return controls;
}

bool Linkout_Shown(const Design_State& design, int index)
{
    using namespace linkout;
    const bool slider = Ends_in_Slider(design);
    const bool six = Six_Links(design);
    const bool fourbar = six || !slider;
    switch (Checked_Place(index, 0, static_cast<int>(fields.size()) - 1)) {
    case Link_2:
    case Link_3:
    case Delta2:
        return true;
    case Link_1:
    case Theta1:
    case Link_4:
    case Delta4:
    case Link_4a:
    case O4x:
    case O4y:
        return fourbar;
    case Link_5:
        return six;
    case O6x:
    case O6y:
    case Link_6:
        return six && !slider;
    case S3x:
    case S3y:
        return slider && !six;
    case slider_angle:
        return slider;
    default:
        return slider && six;
    }
}

std::string Linkout_Text(const Design_State& design, int index)
{
    if (Of_Ground(index) && Pivots_Apart(design)) {
        const Ground_Line ground = Ground_of(design);
        return Shown(design, index == linkout::Link_1 ? ground.length : ground.direction);
    }
    return Shown(design, Stored(design, index));
}

Form_Entry Edit_Linkout(Design_State& design, int index, std::string_view typed)
{
    const Single value = Val(design, typed);
    if (Of_Ground(index) && Pivots_Apart(design))
        Set_Ground(design);  // what was shown is what a typed value is compared with
    const Verdict verdict =
        Put(design, fields[Checked_Place(index, 0, static_cast<int>(fields.size()) - 1)].field, value);
    if (verdict)
        return {true, std::string(typed)};
    Show_Refusal(verdict);
    return {false, Linkout_Text(design, index)};
}

Linkage_Choices_Shown Choices_of_Linkage(const Design_State& design)
{
    const bool six = Six_Links(design);
    return {six, six && !Ends_in_Slider(design),
            six ? Control_of(controls, "fra_Assemflag1").caption : std::string_view("Assembly")};
}

namespace {

std::string_view Flag_of_Stage(int stage)
{
    return stage == 1 ? "Assemflag1" : "Assemflag2";
}

}  // namespace

void Choose_Assembly(Design_State& design, int stage, bool crossed)
{
    Put(design, Flag_of_Stage(stage), crossed ? 1 : -1);
}

bool Is_Crossed(const Design_State& design, int stage)
{
    return (stage == 1 ? design.linkage.Assemflag1 : design.linkage.Assemflag2) > 0;
}

void Choose_Stage_Mode(Design_State& design, bool stephenson)
{
    Put(design, "Stage_Mode", stephenson ? "S" : "W");
}

void Choose_Effector(Design_State& design, bool end_effector)
{
    const Verdict verdict = Put(design, "Drive_End_Effector", end_effector ? 1 : 0);
    if (!verdict)
        Show_Refusal(verdict);
}

std::string What_to_Type(const Design_State& design)
{
    const std::string missing = Missing_Length(design);
    if (missing.empty())
        return {};
    return missing +
           "\n\nType the dimensions of the train at the left,\n"
           "or press Suggest for a train in proportion to the arm.";
}

bool May_Suggest(const Design_State& design)
{
    return !Missing_Length(design).empty();
}

bool Suggest_Linkage(Design_State& design)
{
    const double arm = design.cam.ArmRad;
    if (!(arm > 0.0)) {
        Show_Message("The follower arm has no length.  Size the cam first.", Buttons::OK, Symbol::exclamation);
        return false;
    }
    const bool slider = Ends_in_Slider(design);
    const bool six = Six_Links(design);
    // Away from the cam: a train to the left is the mirror image of one to the right.
    const double side = design.cam.ArmX < 0.0 ? -1.0 : 1.0;
    struct Dimension {
        std::string_view field;
        double value;
    };
    std::vector<Dimension> train{{"Link 2", arm},
                                 {"Link 3", (slider && !six ? 2.0 : 1.875) * arm},
                                 {"Delta2", side * 90.0},
                                 // The mirror image of a slider stage has its assembly, that of a fourbar the other.
                                 {"Assemflag1", slider && !six ? -1.0 : -side},
                                 {"Assemflag2", slider ? -1.0 : -side}};
    const auto add = [&train](std::initializer_list<Dimension> more) { train.insert(train.end(), more); };
    if (six || !slider)
        add({{"O4x", design.cam.ArmX + side * 1.75 * arm},
             {"O4y", design.cam.ArmY},
             {"Link 4", 1.25 * arm},
             {"Link 4a", 1.25 * arm},
             {"Delta4", 0.0}});
    if (six && !slider)
        add({{"O6x", design.cam.ArmX + side * 3.5 * arm},
             {"O6y", design.cam.ArmY},
             {"Link 5", 1.875 * arm},
             {"Link 6", arm}});
    if (slider)
        add({{"Global_Slider_angle_deg", side > 0.0 ? 180.0 : 0.0}});
    if (slider && six)
        add({{"Link 5", 2.0 * arm}, {"Offset6", -side * 1.125 * arm}});
    if (slider && !six)
        add({{"S3x", design.cam.ArmX + side * 2.5 * arm}, {"S3y", design.cam.ArmY + arm}});
    for (const Dimension& dimension : train)
        if (const Verdict verdict = Put(design, dimension.field, dimension.value); !verdict) {
            Show_Refusal(verdict);
            return false;
        }
    return true;
}

namespace {

/// The host without a messenger, while it lives: every box has its usual answer.
class Quiet {
public:
    Quiet()
    {
        Host host = Installed_Host();
        host.messenger = nullptr;
        before_ = Install_Host(std::move(host));
    }
    ~Quiet() { Install_Host(std::move(before_)); }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

private:
    Host before_;
};

}  // namespace

bool Calc_Linkage_Quietly(Design_State& design)
{
    const Quiet quiet;
    return Run_Linkage(design);
}

std::array<Effector_Line, 3> Effector_Lines(const Design_State& design)
{
    using enum Link_Quantity;
    constexpr std::array quantities{position, velocity, acceleration};
    std::array<Effector_Line, 3> lines;
    lines[0].name = "Position";
    lines[1].name = "Velocity";
    lines[2].name = "Acceleration";
    if (!design.flags.Linkage_Calc)
        return lines;
    const Effector_Summary summary = Summary_of_Effector(design);
    for (std::size_t k = 0; k < lines.size(); ++k) {
        const At_Angle& least = summary.least[k];
        const At_Angle& largest = summary.largest[k];
        const int decimals = Plot_Decimals(std::max(std::abs(least.value), std::abs(largest.value)));
        const auto value = [&](double number) { return Trim(FNRoundStr(design, number, decimals)); };
        const auto angle = [&](double number) {
            return In_Number_Format(design, Shortest(FNRound(number, 3)));  // the finest step is 0.125
        };
        lines[k].least = value(least.value);
        lines[k].least_at = angle(least.angle);
        lines[k].largest = value(largest.value);
        lines[k].largest_at = angle(largest.angle);
        lines[k].unit = Unit_of(design, {Last_Link(design), quantities[k]});
    }
    return lines;
}

std::vector<std::string> Notes_of_Linkage(Design_State& design)
{
    std::vector<std::string> notes;
    if (!design.flags.Sized && !May_Suggest(design))
        notes.emplace_back("The cam in gray is that of the size before.  Size it again.");
    if (!design.flags.Linkage_Calc)
        return notes;
    if (const int broken = design.linkage.Link_Broken; broken > 0)
        notes.push_back("The links do not connect at " + std::to_string(broken) + " of " +
                        std::to_string(design.motion.Max_Data_Points_used + 1) +
                        " points: no results stand there.  Change the dimensions.");
    for (std::string& caution : Linkage_Cautions(design, Current_Decimal_Symbol(design)))
        notes.push_back(std::move(caution));
    return notes;
}

namespace {

/// Keeps the world window that a drawing sets, and draws nothing.
class Window_Finder : public Surface {
public:
    void Scale(double left, double top, double right, double bottom) override { window = {left, top, right, bottom}; }
    void Window(double left, double top, double right, double bottom) override { window = {left, top, right, bottom}; }
    void Clear() override {}
    void PSet(double, double, Ink) override {}
    void Line(double, double, double, double, Ink) override {}
    void Line_to(double, double, Ink) override {}
    void Circle(double, double, double, Ink) override {}
    void Outline(std::span<const World_Point>, Ink) override {}
    void Label(double, double, std::string_view, Ink) override {}

    World_Window window;
};

}  // namespace

std::optional<World_Window> Window_of_Linkage(Design_State& design)
{
    Window_Finder finder;
    bool drawn = false;
    Trap("Link_Anim_Setup", [&] { drawn = Link_Anim_Setup(design, finder, Drawn_Cam::of_before); });
    if (!drawn)
        return {};
    return finder.window;
}

int Usual_Stride(const Design_State& design)
{
    const double points = 1.0 / design.motion.Deltatheta;
    int usual = Step_Strides.front();
    for (const int stride : Step_Strides)
        if (stride <= points)
            usual = stride;
    return usual;
}

std::optional<int> Stride_of(std::string_view text)
{
    for (const int stride : Step_Strides)
        if (Trim(text) == std::to_string(stride))
            return stride;
    Show_Message("Please select one of the drop-down menu items for Steps", Buttons::OK, Symbol::exclamation);
    return {};
}

Long Wait_of(int range, int speed)
{
    const Long longest = Anim_Waits[Checked_Place(range, 0, static_cast<int>(Anim_Waits.size()) - 1)];
    const double share = static_cast<double>(Fastest_Speed - std::clamp(speed, 0, Fastest_Speed)) / Fastest_Speed;
    return static_cast<Long>(longest * share);
}

int Take_Step(Design_State& design, int stride)
{
    Integer& step = design.linkage.Link_Anim_Step;
    if (step > design.motion.Max_Data_Points_used || step < 0)
        step = 0;
    const int frame = step;
    step = frame + stride;
    return frame;
}

void Begin_Anew_at_End(Design_State& design)
{
    if (design.linkage.Link_Anim_Step > design.motion.Max_Data_Points_used)
        design.linkage.Link_Anim_Step = 0;
}

bool Play_On(const Design_State& design, int& turns_left)
{
    if (design.linkage.Link_Anim_Step > design.motion.Max_Data_Points_used)
        --turns_left;
    return turns_left > 0;
}

bool Move_Step(Design_State& design, int value, bool updating)
{
    if (updating)
        return false;
    design.linkage.Link_Anim_Step = value;
    return value > 0;
}

Form_Entry Edit_Cycles(const Design_State& design, int& cycles, std::string_view typed)
{
    constexpr double most = 32767.0;
    const double value = FNRound(Val(design, typed), 0);
    if (value >= 1.0 && value <= most) {
        cycles = static_cast<int>(value);
        return {true, std::to_string(cycles)};
    }
    Show_Message(value < 1.0 ? "This value must be positive.  Please redo." : "That is too many.  Please redo.",
                 Buttons::OK, Symbol::exclamation);
    return {false, std::to_string(cycles)};
}

bool Move_Point(Design_State& design, Drag_Point point, const World_Point& to, double grain)
{
    const int decimals = grain > 0.0 ? std::clamp(static_cast<int>(std::ceil(-std::log10(grain))), 0, 6) : 6;
    const auto put = [&](std::string_view field, double value) {
        return static_cast<bool>(Put(design, field, FNRound(value, decimals)));
    };
    switch (point) {
    case Drag_Point::O4:
        return put("O4x", to.x) && put("O4y", to.y);
    case Drag_Point::O6:
        return put("O6x", to.x) && put("O6y", to.y);
    case Drag_Point::slider:
        break;
    }
    if (!Six_Links(design))
        return put("S3x", to.x) && put("S3y", to.y);
    const double angle = design.linkage.Global_Slider_angle_deg * Rad_per_Deg;
    const double x = to.x - design.linkage.O4x;
    const double y = to.y - design.linkage.O4y;
    return put("Offset6", y * std::cos(angle) - x * std::sin(angle));
}

std::string Run_Advice()
{
    return "To run the linkage in either forward or reverse direction,\n"
           "click and hold the arrows at either end of the scroll bar.\n"
           "at the bottom of the white graphic window, or drag its scroll button.";
}

bool Linkage_Done(const Design_State& design, bool drove, bool sized)
{
    const bool drives = design.linkage.Drive_End_Effector;
    if (drives == drove) {
        if (!sized || design.flags.Sized)
            return false;
        Show_Message(
            "The cam's size rested on what you have changed.\n"
            "You will now be taken to the Sizecam Screen to calculate its profile again.",
            Buttons::OK, Symbol::information);
        return true;
    }
    const std::string change = drives ? "You have chosen to apply the SVAJ functions to the end effector \n"
                                        "of the linkage rather than to the cam follower arm directly.\n"
                                      : "You have changed the point of application of the SVAJ functions.\n";
    Show_Message(change +
                     "This requires that you recalculate the cam profile. The cam\n"
                     "pressure angles and radii of curvature will also change.\n"
                     "You will now be taken back to the Sizecam Screen to regenerate these data.",
                 Buttons::OK, Symbol::information);
    return true;
}

}  // namespace lobemax
