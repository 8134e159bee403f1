// SPDX-License-Identifier: GPL-3.0-or-later
/// The ladder of a design: lamps that show how far it has got, buttons that open with it, and what a change of one rung
/// takes away from those above.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace lobemax {

struct Design_State;

/// Tool tip of the panel of lamps.
inline constexpr std::string_view Status_Tip = "Shows what has been calculated so far";

/// What cmd_Copy of every screen says, and all it does.
inline constexpr std::string_view Copy_Advice = "Use the Alt-PrintScrn key combo to copy the screen to the clipboard";

/// A lamp of Pnl_Status; one that is not lit is hidden.
struct Lamp {
    std::string_view caption;
    bool lit = false;
    std::string text;  // as it shows when lit
};

/// The eleven lamps, in their order.
std::array<Lamp, 11> Status_Lamps(const Design_State& design);

/// The buttons of the Home screen, in the order of their table.
enum class Home_Button { Input, Size, Draw, Force, Model, Stress, Linkage, Plot, Print, Quit };
inline constexpr int Home_Button_Count = 10;

struct Home_Button_Entry {
    std::string_view name;     // of the control
    std::string_view caption;  // with its access key
    std::string_view tip;
};
const Home_Button_Entry& Home_Button_at(Home_Button button);

/// Which of the buttons are enabled, by button.
using Home_Buttons = std::array<bool, Home_Button_Count>;

/// Enabling of the Home screen's buttons from the flags, in this order: motion, size, force, imported model.
Home_Buttons Set_Homeform_Buttons(const Design_State& design);

// ---- what a click meets first. Each shows its message, if any, and tells whether the way is open.

/// Every button that rests on results: none opens over results of other units but cmd_Plot, which names them.
bool May_Open_Rung(const Design_State& design, Home_Button button);

/// cmd_Linkage: a linkage hangs on an oscillating follower.
bool May_Open_Linkage(const Design_State& design);

/// cmd_Model: a vibration must not begin in a dwell.
bool May_Open_Vibration(const Design_State& design);

/// cmd_Input: closed for an imported model; warns of an unsaved compensating cam, and going on gives it up.
bool May_Open_Input(Design_State& design);

/// The examples menu and mnu_Import: warns of an unsaved compensating cam, and going on gives it up.
bool May_Build_Example(Design_State& design);

/// Whether pnl_compcam is visible, and its text.
bool Compcam_Panel_Visible(const Design_State& design);
inline constexpr std::string_view Compcam_Panel_Text =
    "You have calculated a torque compensating cam.  Its data are in memory.  You must save this model and export the "
    "compensating cam profile data before doing any other cam designs";

}  // namespace lobemax
