// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/workflow.h"

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/units.h"
#include "linkage/linkage_rules.h"

namespace lobemax {

namespace {

constexpr std::array<Home_Button_Entry, Home_Button_Count> home_buttons{{
    {"cmd_Input", "I&nput", "Create a cam"},
    {"cmd_Size", "Si&ze Cam", "Choose cam and follower, pressure angle and curvature"},
    {"cmd_Draw", "&Draw Cam", "Draw and animate the cam"},
    {"cmd_Force", "D&ynamics", "Follower force and camshaft torque"},
    {"cmd_Model", "V&ibration", "Vibration of the follower train"},
    {"cmd_Stress", "S&tress", "Contact stress in cam and follower"},
    {"cmd_Linkage", "&Linkage", "Linkage driven by the follower arm"},
    {"cmd_Plot", "&Plot", "Plot any calculated variable"},
    {"cmd_Print", "P&rint", "Tables of any calculated variable"},
    {"cmd_Quit", "&Quit", "End the program"},
}};

/// The lamps of results, as the panel shows them.
constexpr std::array lamp_order{
    Mark::motion, Mark::size,     Mark::forces,    Mark::linkage,        Mark::vibration,
    Mark::stress, Mark::polydyne, Mark::transform, Mark::external_force, Mark::compensating_cam};

/// What stands in memory, the last true one counting.
std::string Origin_Text(const Design_State& design)
{
    const Flags_Group& f = design.flags;
    if (f.Imported_Model)
        return "Imported";
    if (f.From_Disk)
        return "DiskFile";
    return f.Calculated ? "S-V-A-J" : "";
}

Lamp Plain_Lamp(std::string_view caption, bool lit)
{
    return {caption, lit, std::string(caption)};
}

/// Warns of a compensating cam that was not saved: OK goes on and gives it up, Cancel keeps it.
void Give_Up_Compensating_Cam(Design_State& design)
{
    if (!design.flags.CompCam_Calc)
        return;
    const Answer answer = Show_Message(
        "You currently have a compensating cam calculated and\n"
        "have not yet saved that data.  If you continue without\n"
        "first saving the model, you will lose the data.",
        Buttons::OK_Cancel, Symbol::exclamation);
    if (answer == Answer::OK)
        Apply(design, Event::compensation_given_up);
}

}  // namespace

std::array<Lamp, 11> Status_Lamps(const Design_State& design)
{
    const Flags_Group& f = design.flags;
    std::array<Lamp, 11> lamps;
    std::size_t place = 0;
    for (const Mark mark : lamp_order)
        lamps[place++] = Plain_Lamp(Mark_Table()[static_cast<std::size_t>(mark)].lamp, Holds(design, mark));
    lamps[0].lit = f.Calculated || f.From_Disk || f.Imported_Model;
    lamps[0].text = Origin_Text(design);
    lamps[place] = {"Units", true, Words_of_Units(design.identity.WhichUnit).status};
    return lamps;
}

const Home_Button_Entry& Home_Button_at(Home_Button button)
{
    return home_buttons[static_cast<std::size_t>(button)];
}

Home_Buttons Set_Homeform_Buttons(const Design_State& design)
{
    const Flags_Group& f = design.flags;
    Home_Buttons enabled{};
    const auto set = [&enabled](std::initializer_list<Home_Button> buttons, bool on) {
        for (const Home_Button button : buttons)
            enabled[static_cast<std::size_t>(button)] = on;
    };
    using enum Home_Button;
    set({Quit}, true);
    set({Size, Draw, Force, Model, Stress, Linkage, Plot, Print}, false);
    if (f.Calculated)
        set({Plot, Print, Size}, true);
    if (f.Sized) {
        set({Force, Linkage}, true);
        if (design.cam.Camtype == "Radial")
            set({Draw}, true);
    } else {
        set({Force, Draw, Model, Stress, Linkage}, false);
    }
    if (f.Dynamicflag)
        set({Model, Stress}, true);
    set({Input}, !f.Imported_Model);
    return enabled;
}

bool May_Open_Rung(const Design_State& design, Home_Button button)
{
    using enum Home_Button;
    return button == Input || button == Plot || button == Quit || !Refuse_Other_Units(design);
}

bool May_Open_Linkage(const Design_State& design)
{
    const Verdict verdict = Linkage_may_be(design);
    if (!verdict)
        Show_Refusal(verdict);
    return static_cast<bool>(verdict);
}

bool May_Open_Vibration(const Design_State& design)
{
    if (design.motion.Rise_Fall_Dwell(1) != "D")
        return true;
    Show_Message(
        "Your current SVAJ program starts with a dwell segment.\n"
        "This arrangement does not allow a vibration analysis, because the \n"
        "Runge-Kutta algorithm used requires that follower motion begin at time zero.\n"
        "You must start your cam program cycle with a rise or a fall:\n"
        "i.e., phase shift the cam program to do this dynamic analysis.",
        Buttons::OK, Symbol::exclamation);
    return false;
}

bool May_Open_Input(Design_State& design)
{
    if (design.flags.Imported_Model) {
        Show_Message(
            "You currently have imported cam data stored.\n"
            "The SVAJ button has been disabled to prevent\n"
            "overwriting the imported data.\n"
            "Use File/New to re-enable the SVAJ button,\n"
            "but save your imported model first.",
            Buttons::OK, Symbol::exclamation);
        return false;
    }
    Give_Up_Compensating_Cam(design);
    return !design.flags.CompCam_Calc;
}

bool May_Build_Example(Design_State& design)
{
    Give_Up_Compensating_Cam(design);
    return !design.flags.CompCam_Calc;
}

bool Compcam_Panel_Visible(const Design_State& design)
{
    return design.flags.CompCam_Calc;
}

}  // namespace lobemax
