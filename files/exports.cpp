// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/exports.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/units.h"
#include "files/whole_file.h"
#include "linkage/linkage_kinematics.h"
#include "truth/check.h"

namespace lobemax {

namespace {

constexpr const char* line_end = "\r\n";

constexpr int cutter_code = 3;
/// The curve that a profile file of code 1 to 5 holds.
constexpr std::array profile_curves{var::Profile_Curve, var::Surface_Curve, var::Cutter_Curve, var::Profile_Key_Curve,
                                    var::Surface_Key_Curve};

struct Profile_Code {
    std::string_view entry;
    int code;
};

constexpr std::array profile_codes{
    Profile_Code{"mnu_profile", 1},          Profile_Code{"mnu_Surface", 2},      Profile_Code{"mnu_Cutter", 3},
    Profile_Code{"mnu_Profile_mach", 4},     Profile_Code{"mnu_Surface_mach", 5}, Profile_Code{"mnu_Barrel", 1},
    Profile_Code{"mnu_Barrel_Surf", 2},      Profile_Code{"mnu_Barrel_Ctr", 3},   Profile_Code{"mnu_Barrel_mach", 4},
    Profile_Code{"mnu_Barrel_Surf_mach", 5}, Profile_Code{"mnu_Linear", 1},       Profile_Code{"mnu_Linear_surf", 2},
};

std::string Cell(double value)
{
    return Shortest(Single(value)) + '\t';
}

std::string Opening_Lines(const Design_State& design)
{
    const Identity_Group& id = design.identity;
    return "File: \t" + On_One_Line(id.File_Name) + "\tDesign #\t" + std::to_string(id.Design_No) + line_end +
           On_One_Line(id.User) + '\t' + Today_Text() + '\t' + Now_Text() + line_end + line_end;
}

int Point_Step(const Design_State& design)
{
    return std::max<int>(design.cam.Printstep, 1);
}

/// Lambda of an axial cam turned to machine zero, within one turn: degrees, or the same share of a linear cam's length.
double Turned_Lambda(const Design_State& design, double Lambda)
{
    const Cam_Group& c = design.cam;
    const bool linear = c.Camtype == "Linear";
    const double turn = linear ? c.Prime_Rad * PI2 : 360.0;
    double turned = Lambda + (linear ? c.Shift_Angle / 360.0 * turn : double{c.Shift_Angle});
    turned = std::fmod(turned, turn);
    if (turned < 0.0)
        turned += turn;
    return Single(turned) < Single(turn) ? turned : 0.0;  // a hair below the turn is written as the turn itself
}

/// The rows of the columns of a profile file.
Coordinate_Rows Rows_of_Profile(const Design_State& design, int code)
{
    const int curve = profile_curves[Checked_Place(code, 1, static_cast<int>(profile_curves.size()))];
    return design.cam.Camtype == "Radial" ? Radial_Coordinates(curve) : Axial_Coordinates(curve);
}

std::string Profile_Text(const Design_State& design, int code)
{
    const Cam_Group& c = design.cam;
    const Plot_Group& p = design.plot;
    const Table<Single>& data = design.results.CalcData;
    const bool radial = c.Camtype == "Radial";
    const bool barrel = c.Camtype == "Barrel";
    const auto [first, second] = Rows_of_Profile(design, code);
    const bool turned = !radial && code > cutter_code && c.Prime_Rad > 0.0;
    std::string text = Opening_Lines(design);
    if (barrel)
        text += "Radius\t";
    text += p.Var_Name(first) + '\t' + p.Var_Name(second) + '\t' + line_end;
    if (barrel)
        text += p.Var_Unit(second) + '\t';
    text += p.Var_Unit(first) + '\t' + p.Var_Unit(second) + '\t' + line_end;
    text += line_end;
    text += line_end;
    for (int i = 0; i < design.motion.Max_Data_Points_used; i += Point_Step(design)) {
        if (barrel)
            text += Cell(c.Prime_Rad);
        text += Cell(turned ? Turned_Lambda(design, data(first, i)) : double{data(first, i)});
        text += Cell(data(second, i)) + line_end;
    }
    return text;
}

std::string All_Text(const Design_State& design)
{
    const Plot_Group& p = design.plot;
    const Table<Single>& data = design.results.CalcData;
    const std::vector<int> columns = Rows_Offered(offer::spreadsheet);
    std::string text = Opening_Lines(design);
    for (const int v : columns)
        text += p.Var_Long(v) + '\t';
    text += line_end;
    for (const int v : columns)
        text += p.Var_Unit(v) + '\t';
    text += line_end;
    text += line_end;
    text += line_end;
    for (int i = 0; i <= design.motion.Max_Data_Points_used; i += Point_Step(design)) {
        for (const int v : columns)
            text += Cell(data(v, i));
        text += line_end;
    }
    return text;
}

/// Factor from a stored derivative of an order to its value per second.
double Per_Second(const Design_State& design, int order)
{
    const Motion_Group& m = design.motion;
    const double omega = order == 1 ? double{m.Shaft_speed} : double{m.Shaft_Speed_Sq};
    switch (m.Time_Base) {
    case 2:  // stored with one factor of pi / 180 whatever the order
        return omega * 180.0 / PI;
    case 3:
        return omega;
    default:
        return 1.0;
    }
}

std::string Named(const std::vector<std::pair<const char*, double>>& values)
{
    std::string line;
    for (const auto& [name, value] : values)
        line += std::string(name) + '\t' + Cell(value);
    return line + line_end;
}

std::string Motion_Text(const Design_State& design, Motion_Columns columns)
{
    const Cam_Group& c = design.cam;
    const Linkage_Group& l = design.linkage;
    const Motion_Group& m = design.motion;
    const Results_Group& r = design.results;
    const Table<Single>& data = r.CalcData;
    std::string text = Opening_Lines(design);
    text += Named({{"Points", m.Max_Data_Points_used + 1},
                   {"Step deg", m.Deltatheta},
                   {"Links", l.Links},
                   {"Cam speed rad/s", m.Shaft_speed}});
    text += Named({{"ArmX", c.ArmX},
                   {"ArmY", c.ArmY},
                   {"ArmRad", c.ArmRad},
                   {"Prime radius", c.Prime_Rad},
                   {"Roller radius", c.Follow_Rad}});
    text += Named({{"Link 1", l.Link_1},
                   {"Link 2", l.Link_2},
                   {"Link 3", l.Link_3},
                   {"Link 4", l.Link_4},
                   {"Link 4a", l.Link_4a},
                   {"Link 5", l.Link_5},
                   {"Link 6", l.Link_6},
                   {"O4x", l.O4x},
                   {"O4y", l.O4y},
                   {"O6x", l.O6x},
                   {"O6y", l.O6y},
                   {"Linkage type", int{l.Linkage_Type}},
                   {"Theta1 deg", l.Theta1},
                   {"Delta2 deg", l.Delta2},
                   {"Delta4 deg", l.Delta4},
                   {"O4D", l.O4D},
                   {"S3x", l.S3x},
                   {"S3y", l.S3y},
                   {"Slider angle deg", l.Global_Slider_angle_deg},
                   {"Offset6", l.Offset6}});
    text += line_end;
    const bool per_second = columns == Motion_Columns::xdot;
    const bool response = per_second && design.flags.Modelflag;
    constexpr std::array motion_rows{var::S, var::V, var::A};
    constexpr std::array response_rows{var::Response_X, var::Response_Xdot, var::Response_Xddot};
    const auto& rows = response ? response_rows : motion_rows;
    const std::array<double, 3> factors{1.0, per_second ? Per_Second(design, 1) : 1.0,
                                        per_second ? Per_Second(design, 2) : 1.0};
    const std::string unit = design.plot.Var_Unit(var::S);
    std::string heads = std::string(Angle_Head) + '\t';
    for (const int row : per_second ? response_rows : motion_rows)
        heads += design.plot.Var_Symbol(row) + '\t';
    std::string units = "deg\t";
    if (per_second) {
        units += unit + '\t' + unit + "/sec\t" + unit + "/sec^2\t";
    } else {
        for (const int row : rows)
            units += design.plot.Var_Unit(row) + '\t';
    }
    const int last_link = design.flags.Linkage_Calc ? Last_Link(design) : 0;
    for (int link = First_Moving_Link; link <= last_link; ++link) {
        const std::string number = std::to_string(link);
        if (Ends_in_Slider(design) && link == last_link) {
            const std::string length = Words_of_Units(Units_of_Results(design)).length;
            heads += "S" + number + "\tV" + number + "\tA" + number + '\t';
            units += length + '\t' + length + "/sec\t" + length + "/sec^2\t";
        } else {
            heads += "Theta" + number + "\tOmega" + number + "\tAlpha" + number + '\t';
            units += "deg\trad/sec\trad/sec^2\t";
        }
    }
    text += heads + line_end + units + line_end;
    for (int i = 0; i <= m.Max_Data_Points_used; i += Point_Step(design)) {
        text += Cell(data(var::Angle, i));
        for (std::size_t k = 0; k < rows.size(); ++k)
            text += Cell(data(rows[k], i) * factors[k]);
        for (int link = First_Moving_Link; link <= last_link; ++link)
            for (const Table<Single>* table : {&r.Link_Theta, &r.Link_Omega, &r.Link_Alpha})
                text += Cell((*table)(link, i));
        text += line_end;
    }
    return text;
}

bool Refused_Blank(const Design_State& design)
{
    if (design.flags.Calculated)
        return false;
    Show_Message(
        "The current model is blank.  There is nothing to export.  Use S-V-A-J and Sizecam buttons to calculate the "
        "model, then export",
        Buttons::OK, Symbol::exclamation);
    return true;
}

bool Write_Profile(const Design_State& design, const std::string& path, int code)
{
    return Trap("Export_Profile_to_File", [&] { Write_Whole_File(path, Profile_Text(design, code)); });
}

std::optional<std::string> Asked_Path(const char* title, const char* filter, const std::string& suggestion)
{
    const Host& host = Installed_Host();
    File_Dialog dialog;
    dialog.title = title;
    dialog.filter = filter;
    dialog.suggestion = suggestion;
    dialog.overwrite_prompt = true;
    return host.save_dialog ? host.save_dialog(dialog) : std::nullopt;
}

void Tell_Written(const char* what, const std::string& path, const std::string& more = {})
{
    Show_Message(what + path + "\nThis tab-delimited file can be opened in any spreadsheet program" + more, Buttons::OK,
                 Symbol::information);
}

bool Export_Spreadsheet(const Design_State& design)
{
    const auto path =
        Asked_Path("Export All Data to a Text File", "(*.txt)|*.txt", design.identity.Model_Name + ".txt");
    if (!path || !Export_All_to_File(design, *path))
        return false;
    Tell_Written("All calculated data for this cam has been written to ", *path);
    return true;
}

bool Refused_Axial_Cutter(const Design_State& design, int code)
{
    if (code != cutter_code || design.cam.Camtype == "Radial")
        return false;
    Show_Message(
        "The cutter center coordinates of this cam are not calculated; use the roller center with a cutter of the "
        "roller's size.",
        Buttons::OK, Symbol::exclamation);
    return true;
}

/// Takes the true rows where they are wanted. @return false: what is wanted is not calculated, and the user was told
bool Take_Rows(const Design_State& design, int code, Profile_Rows rows, std::optional<Design_State>& truth)
{
    if (rows == Profile_Rows::program)
        return !Refused_Axial_Cutter(design, code);
    truth = With_True_Profile(design);
    if (!truth)
        Show_Message(Why_No_True_Profile(design), Buttons::OK, Symbol::exclamation);
    return truth.has_value();
}

/// What is told of true points that were written.
std::string Distance_Sentence(const Design_State& design, const Design_State& truth, int code)
{
    constexpr int figures = 3;
    const bool cutter_of_axial = code == cutter_code && design.cam.Camtype != "Radial";
    if (cutter_of_axial)
        return "\nIts points are true ones.";
    return "\nIts points are true ones, up to " + In_Figures(design, Profile_Distance(design, truth, code), figures) +
           " " + Words_of_Units(design.identity.WhichUnit).length + " from those that the program calculates.";
}

bool Make_Profile(Design_State& design, int code, Profile_Rows rows)
{
    std::optional<Design_State> truth;
    if (!Take_Rows(design, code, rows, truth))
        return false;
    const auto path =
        Asked_Path("Export Profile Data to a Text File", "(*.pts)|*.pts", design.identity.Model_Name + ".pts");
    if (!path || !Write_Profile(truth ? *truth : design, *path, code))
        return false;
    design.identity.Model_Name = StripFilename(*path);
    Tell_Written("The profile data for this cam has been written to ", *path,
                 truth ? Distance_Sentence(design, *truth, code) : std::string());
    return true;
}

bool Export_Motion(const Design_State& design, Motion_Columns columns)
{
    if (design.cam.Translating) {
        Show_Message("This feature is intended for oscillating follower systems only.", Buttons::OK,
                     Symbol::exclamation);
        return false;
    }
    const std::string suggestion = design.identity.Model_Name + "_" + std::to_string(design.linkage.Links) + "bar.sva";
    const auto path = Asked_Path("Export SVA Data to a Text File", "(*.sva)|*.sva", suggestion);
    if (!path || !Export_SVA_to_File(design, *path, columns))
        return false;
    Tell_Written("All calculated data for this cam has been written to ", *path);
    return true;
}

}  // namespace

bool Export_All_to_File(const Design_State& design, const std::string& path)
{
    return Trap("Export_All_to_File", [&] { Write_Whole_File(path, All_Text(design)); });
}

bool Export_Profile_to_File(const Design_State& design, const std::string& path, int code, Profile_Rows rows)
{
    std::optional<Design_State> truth;
    return Take_Rows(design, code, rows, truth) && Write_Profile(truth ? *truth : design, path, code);
}

std::string Why_No_True_Profile(const Design_State& design)
{
    if (Find_Truth(design))
        return {};
    if (!Holds(design, Mark::size))
        return "The cam is not sized: it has no true surface.";
    if (Results_in_Other_Units(design))
        return Other_Units_Sentence(design);
    return "There is no true surface: arm, offset and prime radius do not go together.";
}

double Profile_Distance(const Design_State& design, const Design_State& other, int code)
{
    const Cam_Group& c = design.cam;
    const auto [first, second] = Rows_of_Profile(design, code);
    const Table<Single>& rows = design.results.CalcData;
    const Table<Single>& others = other.results.CalcData;
    double largest = 0.0;
    for (int i = 0; i < design.motion.Max_Data_Points_used; ++i) {
        double across = double{rows(first, i)} - others(first, i);
        if (c.Camtype == "Barrel")
            across = std::remainder(across, 360.0) * PI / 180.0 * c.Prime_Rad;
        else if (c.Camtype == "Linear" && c.Prime_Rad > 0.0)
            across = std::remainder(across, c.Prime_Rad * PI2);
        largest = std::max(largest, std::hypot(across, double{rows(second, i)} - others(second, i)));
    }
    return largest;
}

bool Export_SVA_to_File(const Design_State& design, const std::string& path, Motion_Columns columns)
{
    return Trap("Export_SVA_to_File", [&] { Write_Whole_File(path, Motion_Text(design, columns)); });
}

bool Run_Export(Design_State& design, std::string_view entry, Profile_Rows rows)
{
    if (entry == "mnu_Cutter_mach") {
        Refuse_Cutter_at_Machine_Zero();
        return false;
    }
    if (entry == "mnu_Barrel_Ctr_mach") {
        Refuse_Barrel_Cutter_at_Machine_Zero();
        return false;
    }
    if (entry == "mnu_Cadkey") {
        Show_Message("Presently this program can only export the roller-center coordinates of conjugate radial cams.",
                     Buttons::OK, Symbol::information);
        return false;
    }
    if (Refused_Blank(design) || Refuse_Other_Units(design))
        return false;
    const auto code = std::ranges::find(profile_codes, entry, &Profile_Code::entry);
    bool written = false;
    Trap(code == profile_codes.end() ? "frm_Homescreen.Export" : "frm_Homescreen.Make_Profile", [&] {
        if (entry == "mnu_Spread")
            written = Export_Spreadsheet(design);
        else if (entry == "mnu_sva")
            written = Export_Motion(design, Motion_Columns::sva);
        else if (entry == "mnu_xdot")
            written = Export_Motion(design, Motion_Columns::xdot);
        else if (code != profile_codes.end())
            written = Make_Profile(design, code->code, rows);
    });
    return written;
}

void Refuse_Cutter_at_Machine_Zero()
{
    Show_Message(
        "This feature is not implemented because you should not start cutting within a motion event. \n"
        "Use the cutter centerline data referenced to the cam zero instead.",
        Buttons::OK, Symbol::exclamation);
}

void Refuse_Barrel_Cutter_at_Machine_Zero()
{
    Show_Message(
        "You should not start cutting a cam within a motion event at machine zero. \n"
        "Use the cutter center xy data referenced to the cam zero instead.",
        Buttons::OK, Symbol::exclamation);
}

}  // namespace lobemax
