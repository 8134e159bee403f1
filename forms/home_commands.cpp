// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/home_commands.h"

#include <algorithm>
#include <array>

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/startup.h"
#include "core/traps.h"
#include "core/unit_change.h"
#include "core/units.h"
#include "edit/door.h"
#include "edit/rungs.h"
#include "edit/unsaved.h"
#include "files/model_file.h"

namespace lobemax {

namespace {

bool Always(const Design_State&)
{
    return true;
}

bool Calculated(const Design_State& design)
{
    return design.flags.Calculated;
}

bool May_Be_Recalculated(const Design_State& design)
{
    return design.flags.Calculated && !design.flags.Imported_Model;
}

constexpr std::string_view file_menu = "&File";
constexpr std::string_view save_as_menu = "Save &as";
constexpr std::string_view units_menu = "&Units";
constexpr std::string_view examples_menu = "E&xamples";
constexpr std::string_view fft_menu = "FFT";  // its letters are the keys of File and Stress
constexpr std::string_view screen_menu = "S&creen";

constexpr std::array menus{
    Menu_Entry{file_menu, "", "mnu_New", "&New", Always},
    Menu_Entry{file_menu, "", "mnu_Open", "&Open...", Always},
    Menu_Entry{file_menu, "", "mnu_OpenExample", "Open &Example", Always},
    Menu_Entry{file_menu, "", "mnu_Save", "&Save", Always},
    Menu_Entry{file_menu, save_as_menu, "mnu_Plus", "Lobemax 9.x", Always},
    Menu_Entry{file_menu, save_as_menu, "mnu_V8", "Lobemax 8.x", Always},
    Menu_Entry{file_menu, save_as_menu, "mnu_V7", "Lobemax 7.2 - 7.5", Always},
    Menu_Entry{file_menu, "", "mnu_Import", "&Import Profile...", Always},
    Menu_Entry{file_menu, "", "mnu_Recalculate", "Re&calculate", May_Be_Recalculated},
    Menu_Entry{file_menu, "", "mnu_Lobe", "Lobe &Figures...", Calculated},
    Menu_Entry{file_menu, "", "mnu_Findings", "Fin&dings...", Calculated},
    Menu_Entry{file_menu, "", "mnu_Limits", "Limi&ts...", Always},
    Menu_Entry{file_menu, "", "mnu_Cad", "For CAD and &Machines...", Calculated},
    Menu_Entry{units_menu, "", "mnu_pick(1)", "&in-lb", Always},
    Menu_Entry{units_menu, "", "mnu_pick(2)", "&ft-lb", Always},
    Menu_Entry{units_menu, "", "mnu_pick(3)", "&m-N", Always},
    Menu_Entry{units_menu, "", "mnu_pick(4)", "&cm-N", Always},
    Menu_Entry{units_menu, "", "mnu_pick(5)", "mm-&N", Always},
    Menu_Entry{units_menu, "Number format", "mnu_USA", "&USA  1,234.5", Always},
    Menu_Entry{units_menu, "Number format", "mnu_Europe", "&Europe  1.234,5", Always},
    Menu_Entry{units_menu, "Time base", "mnu_Sec_Deg(1)", "&seconds", Always},
    Menu_Entry{units_menu, "Time base", "mnu_Sec_Deg(2)", "&degrees", Always},
    Menu_Entry{units_menu, "Time base", "mnu_Sec_Deg(3)", "&radians", Always},
    Menu_Entry{examples_menu, "", "mnu_SingleDwell", "Single Dwell", Always},
    Menu_Entry{examples_menu, "", "mnu_DoubleDwell", "Double Dwell", Always},
    Menu_Entry{examples_menu, "", "mnu_Flat", "Flat Follower", Always},
    Menu_Entry{examples_menu, "", "mnu_FourDwell", "Four Dwell", Always},
    Menu_Entry{examples_menu, "", "mnu_Oscillate", "Oscillating", Always},
    Menu_Entry{examples_menu, "", "mnu_Fourbar", "4-bar Linkage", Always},
    Menu_Entry{examples_menu, "", "mnu_Sixbar", "6-bar Linkage", Always},
    Menu_Entry{examples_menu, "", "mnu_Fourslide", "4-bar Slider", Always},
    Menu_Entry{examples_menu, "", "mnu_Sixslide", "6-bar Slider", Always},
    Menu_Entry{fft_menu, "", "mnu_CalcFFT", "&Calculate FFT...", Calculated},
    Menu_Entry{screen_menu, "", "mnu_FullScreen", "&Full Screen", Always},
    Menu_Entry{screen_menu, "", "mnu_StandardSize", "&Standard Size", Always},
    Menu_Entry{screen_menu, "", "mnu_Aspect", "&Aspect Ratio Correction", Always},
    Menu_Entry{screen_menu, "", "mnu_Circles", "Show &Circles", Always},
    Menu_Entry{screen_menu, "", "mnu_Preferences", "&Preferences...", Always},
};

constexpr std::array exports{
    Export_Entry{"mnu_Spread", "&Spreadsheet", Export_Need::any_cam, false},
    Export_Entry{"mnu_profile", "Roller center x-y coordinates versus Cam Zero", Export_Need::radial, true},
    Export_Entry{"mnu_Cutter", "Cutter center x-y coordinates versus Cam Zero", Export_Need::radial, false},
    Export_Entry{"mnu_Surface", "Cam surface x-y coordinates versus Cam Zero", Export_Need::radial, false},
    Export_Entry{"mnu_Profile_mach", "Roller center x-y coordinates versus Machine Zero", Export_Need::radial, true},
    Export_Entry{"mnu_Cutter_mach", "Cutter center x-y coordinates versus Machine Zero", Export_Need::radial, false},
    Export_Entry{"mnu_Surface_mach", "Cam surface x-y coordinates versus Machine Zero", Export_Need::radial, false},
    Export_Entry{"mnu_Barrel", "Barrel cam roller center R-Lambda-Z versus Cam Zero", Export_Need::barrel, true},
    Export_Entry{"mnu_Barrel_Ctr", "Barrel cam cutter center R-Lambda-Z versus Cam Zero", Export_Need::barrel, false},
    Export_Entry{"mnu_Barrel_Surf", "Barrel cam surface  R-Lambda-Z versus Cam Zero", Export_Need::barrel, false},
    Export_Entry{"mnu_Barrel_mach", "Barrel cam roller center  R-Lambda-Z versus Machine Zero", Export_Need::barrel,
                 true},
    Export_Entry{"mnu_Barrel_Ctr_mach", "Barrel cam cutter center R-Lambda-Z versus Machine Zero", Export_Need::barrel,
                 false},
    Export_Entry{"mnu_Barrel_Surf_mach", "Barrel cam surface R-Lambda-Z versus Machine Zero", Export_Need::barrel,
                 false},
    Export_Entry{"mnu_Linear", "Linear cam roller center R-Lambda-Z versus Cam Zero", Export_Need::linear, true},
    Export_Entry{"mnu_Linear_surf", "Linear cam surface  R-Lambda-Z versus Cam Zero", Export_Need::linear, false},
    Export_Entry{"mnu_sva", "S - V - A data", Export_Need::linkage, false},
    Export_Entry{"mnu_xdot", "X - Xdot - Xddot data", Export_Need::linkage, false},
    Export_Entry{"mnu_Cadkey", "&DXF", Export_Need::any_cam, false},
};

bool Fits_Cam(const Design_State& design, Export_Need need)
{
    const std::string& type = design.cam.Camtype;
    switch (need) {
    case Export_Need::radial:
        return type == "Radial";
    case Export_Need::barrel:
        return type == "Barrel";
    case Export_Need::linear:
        return type == "Linear";
    case Export_Need::any_cam:
    case Export_Need::linkage:
        break;
    }
    return true;
}

bool Needs_Size(Export_Need need)
{
    return need != Export_Need::any_cam && need != Export_Need::linkage;
}

}  // namespace

std::span<const Menu_Entry> Home_Menus()
{
    return menus;
}

std::string_view Submenu_Name(std::string_view caption)
{
    return caption == save_as_menu ? "mnu_Saveas" : "";
}

std::span<const Export_Entry> Export_Menu()
{
    return exports;
}

std::vector<bool> Menu_Update(const Design_State& design)
{
    const bool flat = design.cam.Followtype == 2;
    std::vector<bool> open;
    for (const Export_Entry& entry : exports)
        open.push_back(Fits_Cam(design, entry.need) && (!Needs_Size(entry.need) || design.flags.Sized) &&
                       !(flat && entry.roller_only));
    return open;
}

bool File_New(Design_State& design)
{
    if (!May_Reset(design))
        return false;
    const Answer answer = Show_Message("Please confirm your order to reset all variables to initial values",
                                       Buttons::OK_Cancel, Symbol::exclamation);
    if (answer != Answer::OK)
        return false;
    return Trap("frm_Homescreen.New", [&] {
        Reset_All(design);
        Mark_Saved(design);
        Refresh_Screens();
    });
}

bool Quit_Requested(Design_State& design, const std::function<bool()>& quit_screen)
{
    if (Unsaved(design)) {
        const Answer answer =
            Show_Message("The current data has not been saved.  Do you want to save it before quitting?",
                         Buttons::Yes_No_Cancel, Symbol::none);
        if (answer == Answer::Cancel || (answer == Answer::Yes && !SaveAs(design, design.identity.Version_Str)))
            return false;
    }
    return quit_screen();
}

bool Convert_Units(Design_State& design, int code)
{
    return Trap("frm_Homescreen.Units", [&] {
        Change_Units(design, code);
        Refresh_Screens();
    });
}

void Tell_Other_Units(const Design_State& design)
{
    if (Results_in_Other_Units(design))
        Show_Message(
            Other_Units_Sentence(design) +
                "\nUntil they are recalculated (File menu, Recalculate) plots and figures carry the names of \n"
                "those units, and the results can neither be exported nor printed.",
            Buttons::OK, Symbol::information);
}

bool Change_Units_from_Home(Design_State& design, int code)
{
    const int before = design.identity.WhichUnit;
    const bool converted = Convert_Units(design, code);
    if (design.identity.WhichUnit != before)
        Tell_Other_Units(design);
    return converted;
}

bool Recalculate_from_Home(Design_State& design)
{
    bool reached = false;
    Trap("frm_Homescreen.Recalculate", [&] {
        reached = Recalculate(design, Standing_of(design));
        if (reached)
            Apply(design, Event::edited);
        Refresh_Screens();
    });
    return reached;
}

bool Change_Time_Base_from_Home(Design_State& design, int code)
{
    if (code == design.motion.Time_Base)
        return true;
    if (Any_Result(design) &&
        Show_Message("The calculated results keep the time base that they were calculated in.\n"
                     "Another time base throws them away, and the motion must be calculated again.\n"
                     "Do you want to change the time base?",
                     Buttons::Yes_No, Symbol::exclamation) != Answer::Yes)
        return false;
    return Trap("frm_Homescreen.Time_Base", [&] {
        if (!Put(design, "Time Base", code))
            throw Fault{invalid_argument};
        Refresh_Screens();
    });
}

bool Change_Number_Format(Design_State& design, std::string_view format)
{
    if (format == "USA") {
        Choose_USA_Format(design);
        return true;
    }
    if (!May_Reset(design))
        return false;
    Choose_European_Format(design);
    Mark_Saved(design);
    return true;
}

Home_View Home_Activate(Design_State& design)
{
    design.run.Keep_Step = false;
    Home_View view{};
    Trap("frm_Homescreen.activate", [&] {
        view.buttons = Set_Homeform_Buttons(design);
        view.export_entries = Menu_Update(design);
        view.unit_system = design.identity.WhichUnit;
        view.compcam_panel = Compcam_Panel_Visible(design);
        view.linkage_data_entry = design.flags.Linkage_Calc;
        view.lamps = Status_Lamps(design);  // last: it alone can fail, on a unit system that does not exist
    });
    return view;
}

}  // namespace lobemax
