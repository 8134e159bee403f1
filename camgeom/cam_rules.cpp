// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/cam_rules.h"

#include <cmath>
#include <vector>

#include "camgeom/arm.h"
#include "camgeom/profile.h"
#include "camgeom/sizing.h"
#include "core/text.h"
#include "core/units.h"
#include "motion/motion_rules.h"

namespace lobemax {

namespace {

using enum Field_Role;

constexpr std::string_view barrel_types = "|Grooved|Ribbed";
constexpr std::string_view closures = "Force|Form";
constexpr std::string_view keyways = "12 O'clock|3 O'clock|6 O'clock|9 O'clock";
constexpr int flat_faced = 2;

bool Radial(const Design_State& design)
{
    return design.cam.Camtype == "Radial";
}

Verdict Prime_may_be(const Design_State& design, const Field_Index&, const Typed_Value& value)
{
    if (value.number > 0.0 && !(Radial(design) && value.number <= design.cam.Offset))
        return {};
    return {"Prime radius cannot be zero or negative or less than the offset"};
}

Verdict Roller_may_be(const Design_State& design, const Field_Index&, const Typed_Value& value)
{
    if (design.cam.Camtype != "Linear" && value.number >= design.cam.Prime_Rad)
        return {
            "Something is wrong\n"
            "\n"
            "The follower radius is greater than the prime circle radius\n"
            "\n"
            "Please check your data."};
    return value.number < 0.0 ? Verdict{"The follower radius must be zero or positive"} : Verdict{};
}

Verdict Not_Negative(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return value.number < 0.0 ? Verdict{"This value must be positive.  Please redo."} : Verdict{};
}

Verdict Offset_may_be(const Design_State& design, const Field_Index&, const Typed_Value& value)
{
    if (std::abs(value.number) < design.cam.Prime_Rad)
        return {};
    return {"Cannot compute - Eccentricity is >= Prime Radius.  Try a smaller absolute value of eccentricity",
            Symbol::none, "LOBEMAX"};
}

Verdict Arm_Radius_may_be(const Design_State& design, const Field_Index&, const Typed_Value& value)
{
    if (!(value.number > Single(Smallest_Arm)))
        return {"Arm radius cannot be zero. Please reenter."};
    std::string proposal;
    return Arm_may_be(design, value.number, proposal);
}

void Pivot_Follows(Design_State& design, const Field_Index&)
{
    design.cam.Arm_Pivot_Dist = Arm_Pivot_Distance(design);
}

Verdict Start_Angle_may_be(const Design_State& design, const Field_Index&, const Typed_Value& value)
{
    const double points = value.number / 360.0 * design.motion.Max_Data_Points_used;
    return std::abs(points) < 32767.5 ? Verdict{} : Verdict{"'" + value.text + "' is too large for 'Shift_Angle'"};
}

void Store_Start_Angle(Design_State& design, const Field_Index&, const Typed_Value& value)
{
    Place_Start_Angle(design, value.number);
}

Verdict Cam_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return One_of(Cam_Types, value.text);
}

void Store_Cam(Design_State& design, const Field_Index&, const Typed_Value& value)
{
    const std::string type = *Listed_Word(Cam_Types, value.text);
    std::string barrel;
    if (type == "Barrel")
        barrel = design.cam.Barrel_Type.empty() ? "Grooved" : design.cam.Barrel_Type;
    Put_Cam(design, type, barrel);
}

Verdict Barrel_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return One_of(barrel_types, value.text);
}

void Store_Barrel(Design_State& design, const Field_Index&, const Typed_Value& value)
{
    design.cam.Barrel_Type = *Listed_Word(barrel_types, value.text);
}

Verdict Follower_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Whole_from(1, flat_faced, value);
}

void Store_Follower(Design_State& design, const Field_Index&, const Typed_Value& value)
{
    Put_Follower(design, value.number != flat_faced);
}

void Units_Follow(Design_State& design, const Field_Index&)
{
    Set_Units(design);
}

Verdict Closure_may_be(const Design_State& design, const Field_Index&, const Typed_Value& value)
{
    const auto word = Listed_Word(closures, value.text);
    if (!word)
        return One_of(closures, value.text);
    if (*word == "Form" && design.cam.Followtype == flat_faced)
        return {"a flat face is closed by a spring"};
    return {};
}

void Store_Closure(Design_State& design, const Field_Index&, const Typed_Value& value)
{
    design.cam.Closure = *Listed_Word(closures, value.text);
}

Verdict Keyway_may_be(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return One_of(keyways, value.text);
}

void Store_Keyway(Design_State& design, const Field_Index&, const Typed_Value& value)
{
    design.cam.Keyway_Text = *Listed_Word(keyways, value.text);
    Set_Keyway_Angle(design);
}

void Rotation_Follows(Design_State& design, const Field_Index&)
{
    Set_Keyway_Angle(design);
}

Verdict Plus_or_Minus(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Sign(value);
}

Verdict Above_Zero(const Design_State&, const Field_Index&, const Typed_Value& value)
{
    return Positive(value, "'" + value.text + "' is not above 0");
}

std::vector<Field_Rule> Make_Rules()
{
    const auto cam = [](std::string_view field, std::string_view words, decltype(Field_Rule::may_be) may_be = nullptr,
                        decltype(Field_Rule::store) store = nullptr,
                        decltype(Field_Rule::follow) follow = nullptr) -> Field_Rule {
        return {.field = field,
                .role = input,
                .words = words,
                .event = Event::cam_edited,
                .may_be = may_be,
                .store = store,
                .follow = follow};
    };
    std::vector<Field_Rule> rules{
        cam("Camtype$", "Cam type", Cam_may_be, Store_Cam),
        cam("Barrel_Type$", "Groove or rib", Barrel_may_be, Store_Barrel),
        cam("Followtype", "Follower type", Follower_may_be, Store_Follower),
        cam("Translating", "Follower motion", nullptr, nullptr, Units_Follow),
        cam("Rotflag", "Cam rotation", Plus_or_Minus, nullptr, Rotation_Follows),
        cam("ArmDirect", "Arm rotation", Plus_or_Minus),
        cam("ArmX", "Pivot x", nullptr, nullptr, Pivot_Follows),
        cam("ArmY", "Pivot y", nullptr, nullptr, Pivot_Follows),
        cam("ArmRad", "Arm radius", Arm_Radius_may_be),
        cam("Prime_Rad", "Prime radius", Prime_may_be),
        cam("Offset", "Offset", Offset_may_be),
        cam("Follow_Rad", "Roller radius", Roller_may_be),
        cam("Face_Width", "Face width", Not_Negative),
        cam("Cutter Radius", "Cutter radius", Not_Negative),
        cam("Follower_Angle", "Follower angle"),
        cam("Keyway_Text", "Keyway", Keyway_may_be, Store_Keyway),
        cam("Shift_Angle", "Starting angle", Start_Angle_may_be, Store_Start_Angle),
        cam("In_Out", "Side of the roller", Plus_or_Minus),
        cam("Top_Bot", "Track surface", Plus_or_Minus),
        cam("Conjugate", "Conjugate cam"),
        cam("Side_Sign", "Side", Plus_or_Minus),
        {.field = "Closure$",
         .role = input,
         .words = "Joint closure",
         .event = Event::forces_edited,
         .may_be = Closure_may_be,
         .store = Store_Closure},
        {.field = "Path_Step", .role = setting, .words = "Path step", .event = {}, .may_be = Above_Zero},
        {.field = "Anim_Step", .role = setting, .words = "Animation step", .event = {}},
        {.field = "Anim_Wait", .role = setting, .words = "Animation speed", .event = {}},
        {.field = "Shaft_Radius", .role = setting, .words = "Shaft radius", .event = {}, .may_be = Not_Negative},
    };
    for (const std::string_view field :
         {"Versus_Keyway", "Show_Follower_Path", "Show_Cutter_Path", "Show_Cam_Key", "Show_Surface", "Show_Prime"})
        rules.push_back({.field = field, .role = setting, .words = "Drawing", .event = {}});
    const auto derived_from = [&rules](std::string_view from, std::initializer_list<std::string_view> fields) {
        for (const std::string_view field : fields)
            rules.push_back({.field = field, .role = derived, .words = from, .event = {}});
    };
    derived_from("Keyway_Text and Rotflag", {"Keyway_Clockangle"});
    derived_from("Shift_Angle and Deltatheta", {"Shift_Points"});
    derived_from("ArmX and ArmY", {"Arm_Pivot_Dist"});
    derived_from("pivot, arm and prime radius",
                 {"Arm_Start_Angle", "Arm_Cam_Angle", "Arm_Pivot_Angle", "Arm_Start_Radius", "Arm_Start_Theta",
                  "Arm_Start_X", "Arm_Start_Y", "Arm_Work_Angle"});
    derived_from("the sizing of the cam", {"Phi_Max", "Phi_Max_Angle", "Phi_Min", "Phi_Min_Angle", "Rho_Max_Pos",
                                           "Rho_Max_Pos_Angle", "Rho_Max_Pos_Text", "Rho_Min_Pos", "Rho_Min_Pos_Angle",
                                           "Rho_Min_Pos_Text", "Rho_Max_Neg", "Rho_Max_Neg_Angle", "Rho_Max_Neg_Text",
                                           "Rho_Min_Neg", "Rho_Min_Neg_Angle", "Rho_Min_Neg_Text", "Rho_Smallest"});
    derived_from("Shift_Angle, Keyway_Text and Rotflag", {"Cam_Shift_Angle", "Cam_Draw_Angle", "Cam_Shift_Sign_Angle"});
    derived_from("the drawing of the cam", {"View_Left", "View_Right", "Base_Circle"});
    return rules;
}

}  // namespace

std::span<const Field_Rule> Cam_Rules()
{
    static const std::vector<Field_Rule> rules = Make_Rules();
    return rules;
}

Verdict Arm_may_be(const Design_State& design, double ArmRad, std::string& proposal)
{
    const Cam_Group& c = design.cam;
    if (c.Translating || c.Camtype == "Linear")
        return {};
    const double D = Arm_Pivot_Distance(design);
    if (D - c.Prime_Rad < ArmRad && D + c.Prime_Rad > ArmRad)
        return {};
    proposal = Trim(FNRoundStr(design, D, 2));
    return {
        "The roller follower arm misses the cam entirely\n"
        "with your current choice of arm center location. \n"
        "\n"
        "Please adjust the arm radius to be about\n" +
        proposal + " " + Words_of_Units(design.identity.WhichUnit).length + " for this arm center location."};
}

void Put_Cam(Design_State& design, const std::string& Camtype, const std::string& Barrel_Type)
{
    Cam_Group& c = design.cam;
    c.Camtype = Camtype;
    c.Barrel_Type = Barrel_Type;
    if (Camtype != "Radial")
        c.Followtype = 1;
    Set_Units(design);
}

void Put_Follower(Design_State& design, bool roller)
{
    Cam_Group& c = design.cam;
    c.Followtype = roller ? 1 : flat_faced;
    if (roller)
        return;
    c.Offset = 0.0;
    c.Follow_Rad = 0.0;
    Put_Cam(design, "Radial", "");
    c.Followtype = flat_faced;
    design.linkage.Drive_End_Effector = false;
}

}  // namespace lobemax
