// SPDX-License-Identifier: GPL-3.0-or-later
/// The commands of the Home screen that need no window: its menus and when their entries are open, New, Quit, the
/// number format, and what the screen shows when it comes up. Open, Save and Save as stand in model_file.
#pragma once

#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "forms/workflow.h"

namespace lobemax {

struct Design_State;

/// An entry of the Home screen's menus.
struct Menu_Entry {
    std::string_view menu;                        // as the menu bar shows it
    std::string_view submenu;                     // empty, or the entry of the menu that opens it
    std::string_view name;                        // of the control
    std::string_view caption;                     // with its access key
    bool (*enabled)(const Design_State& design);  // by the state; an entry that is always open answers true
};

/// The control name of the submenu of a caption; empty where it needs none.
std::string_view Submenu_Name(std::string_view caption);

/// All entries but those of the Help menu and of the Export list, in their order.
std::span<const Menu_Entry> Home_Menus();

/// What an export entry needs of the design.
enum class Export_Need { any_cam, radial, barrel, linear, linkage };

/// An entry of the Export list.
struct Export_Entry {
    std::string_view name;
    std::string_view caption;
    Export_Need need;
    bool roller_only;  // a flat face has no roller centre
};

/// The Export list, in its order.
std::span<const Export_Entry> Export_Menu();

/// Whether each entry of the Export list is open: the entries of a cam type for that type alone and with the cam sized,
/// those of a roller not for a flat face. The spreadsheet, the two linkage entries and the drawing's are open always:
/// what they lack they say.
std::vector<bool> Menu_Update(const Design_State& design);

/// File/New: asks about unsaved work and for confirmation, then resets.
/// @return true when the design was reset
bool File_New(Design_State& design);

/// cmd_Quit: saves unsaved work first, without a question, then asks the quit screen.
///
/// @param quit_screen  shows frm_Quit and tells whether cmd_YesQuit was pressed
/// @return             true when the program shall end
bool Quit_Requested(Design_State& design, const std::function<bool()>& quit_screen);

/// Another unit system, under the trap of the Home screen; the flags are kept. The input screen's way, whose table
/// waits for its calculation anyway.
bool Convert_Units(Design_State& design, int code);

/// Tells of results that are not in the design's units, if so.
void Tell_Other_Units(const Design_State& design);

/// Units menu: another unit system; the flags are kept, and results that now are of other units are told of.
bool Change_Units_from_Home(Design_State& design, int code);

/// File/Recalculate: the whole ladder as far as it had got, under its trap.
/// @return false when a rung was not reached: the design is as it was
bool Recalculate_from_Home(Design_State& design);

/// Units menu: the time base, 1 to 3. Stored results keep the base they were calculated in, so a change throws them
/// away, which is asked first.
/// @return false when the user kept the old one
bool Change_Time_Base_from_Home(Design_State& design, int code);

/// Units menu: a number format, "USA" or "Europe". The European one resets the design, so unsaved work is asked about
/// first. @return false when the user kept the old one
bool Change_Number_Format(Design_State& design, std::string_view format);

/// What the Home screen shows each time it comes up.
struct Home_View {
    std::array<Lamp, 11> lamps;
    Home_Buttons buttons;
    std::vector<bool> export_entries;
    int unit_system;          // the entry of mnu_pick that is marked
    bool compcam_panel;       // pnl_compcam is visible
    bool linkage_data_entry;  // mnu_linkagedata is enabled
};

/// The refresh of the Home screen: clears the keep-step flag and gathers what is shown, under the trap of the screen's
/// coming up. After a fault the lamps are all out.
Home_View Home_Activate(Design_State& design);

}  // namespace lobemax
