// SPDX-License-Identifier: GPL-3.0-or-later
#include "edit/rungs.h"

#include "camgeom/cam_rules.h"
#include "camgeom/sizing.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/units.h"
#include "dynamics/contact_stress.h"
#include "dynamics/kinetostatics.h"
#include "edit/door.h"
#include "motion/continuity.h"
#include "motion/segments.h"

namespace lobemax {

namespace {

constexpr int flat_faced = 2;
constexpr std::string_view positive_and_nonzero = "This value must be positive and nonzero.  Please redo.";

bool Tell(const Verdict& verdict)
{
    if (!verdict)
        Show_Refusal(verdict);
    return static_cast<bool>(verdict);
}

/// Steel's modulus by unit system, as it is typed; centimetres have none.
std::string_view Modulus_of_Steel(int unit_system)
{
    switch (unit_system) {
    case 1:
        return "3E7";
    case 2:
        return "208.4E3";
    case 3:
        return "206.8E9";
    case 5:
        return "206.8E3";
    default:
        return "";
    }
}

/// Whether the stored material is that of steel, in any unit system. Centimetres have no steel: one that is steel's in
/// their own unit of stress was typed there.
bool Is_Steel(const Design_State& design, const Single& modulus, const Single& ratio)
{
    if (modulus == 0.0 && ratio == 0.0)
        return true;
    if (ratio != Single(Ratio_of_Steel))
        return false;
    const int here = design.identity.WhichUnit;
    const std::string_view unit = Words_of_Units(here).stress;
    for (int system = First_Unit_System; system <= Last_Unit_System; ++system) {
        const std::string_view steel = Modulus_of_Steel(system);
        const bool typed = Modulus_of_Steel(here).empty() && Words_of_Units(system).stress == unit;
        if (!steel.empty() && !typed && modulus == Single(Val(steel, Decimal_Symbol::point)))
            return true;
    }
    return false;
}

/// One of the two passes over the fields of the contact.
bool Validate_Contact(Design_State& design, const Single (&E)[2], const Single (&nu)[2], Contact_Field& refused)
{
    Dynamics_Group& d = design.dynamics;
    struct Check {
        Contact_Field field;
        Single value;
        Single& store;
    };
    const Check checks[]{{Contact_Field::Cam_E, E[0], d.Youngs_modulus(1)},
                         {Contact_Field::Cam_V, nu[0], d.Poissons_ratio(1)},
                         {Contact_Field::Fol_E, E[1], d.Youngs_modulus(2)},
                         {Contact_Field::Fol_v, nu[1], d.Poissons_ratio(1)}};
    for (const Check& check : checks) {
        if (!(check.value > 0.0)) {
            refused = check.field;
            return Tell({std::string(positive_and_nonzero)});
        }
        check.store = check.value;
    }
    const bool length_counts = design.cam.Followtype == flat_faced || d.Roller_type != crowned_roller;
    if (!((length_counts ? d.Roller_length : d.Crown_radius) > 0.0)) {
        refused = length_counts ? Contact_Field::Length : Contact_Field::Crownrad;
        return Tell({std::string(positive_and_nonzero)});
    }
    return true;
}

}  // namespace

bool Run_Size_Curves(Design_State& design, bool arm_meets)
{
    if (Refuse_Other_Units(design))
        return false;
    Flags_Group& f = design.flags;
    const int type = design.cam.Followtype;
    f.Calc_Error = !arm_meets;
    f.Math_Error = false;
    if (!f.Calc_Error)
        Calc_Phi(design, type);
    const bool phi_error = f.Calc_Error || f.Math_Error;
    if (!phi_error)
        Calc_Rho(design, type);
    const bool sized = !phi_error && !f.Calc_Error && !f.Math_Error;
    if (sized)
        Reach(design, Mark::size);
    else
        Show_Message("Incompatible dimensions - check your data", Buttons::OK, Symbol::exclamation);
    f.Calc_Error = false;
    Refresh_Screens();
    return sized;
}

bool Run_Size(Design_State& design)
{
    if (Refuse_Other_Units(design))
        return false;
    Cam_Group& c = design.cam;
    Apply(design, Event::sizing_began);
    const bool radial = c.Camtype == "Radial";
    if (!radial) {
        c.Offset = 0.0;
        c.Followtype = 1;  // a flat face rides on a radial cam
        if (!c.Translating)
            c.ArmY = 0.0;  // the pivot stands level with the track
    }
    if (c.Followtype == flat_faced)
        c.Follow_Rad = 0.0;
    Tell(Query(design, "Prime_Rad", c.Prime_Rad));
    if (c.Followtype != flat_faced)
        Tell(Query(design, "Follow_Rad", c.Follow_Rad));
    Tell(Query(design, "Cutter Radius", c.Cutter_Radius));
    std::string proposal;
    const bool meets = Tell(Arm_may_be(design, c.ArmRad, proposal));
    if (meets && radial)
        Tell(Query(design, "Offset", c.Offset));
    return Run_Size_Curves(design, meets);
}

bool Run_Forces(Design_State& design)
{
    if (Refuse_Other_Units(design))
        return false;
    Cam_Group& c = design.cam;
    Dynamics_Group& d = design.dynamics;
    if (c.Followtype == flat_faced)
        c.Closure = "Force";  // a flat face is closed by a spring
    if (c.Closure == "Form")
        d.Return_Spring_Rate = d.Preload = d.Damping = 0.0;
    const bool reached = Calc_Force_Torque(design);
    Apply(design, Event::forces_done);
    Refresh_Screens();
    return reached;
}

std::string Modulus_of_Steel(const Design_State& design)
{
    return std::string(Modulus_of_Steel(design.identity.WhichUnit));
}

Materials Materials_of(const Design_State& design)
{
    const Dynamics_Group& d = design.dynamics;
    const std::string_view modulus = Modulus_of_Steel(design.identity.WhichUnit);
    Materials materials;
    for (const int k : {1, 2}) {
        const auto place = static_cast<std::size_t>(k - 1);
        materials.steel[place] = Is_Steel(design, d.Youngs_modulus(k), d.Poissons_ratio(k));
        materials.E[place] = materials.steel[place] ? Val(modulus, Decimal_Symbol::point) : double{d.Youngs_modulus(k)};
        materials.nu[place] = materials.steel[place] ? Ratio_of_Steel : double{d.Poissons_ratio(k)};
    }
    return materials;
}

void Put_Materials(Design_State& design)
{
    const Materials materials = Materials_of(design);
    const std::string edit = design.run.Last_Edit;
    for (const int k : {1, 2}) {
        Put(design, "Young's modulus", At(k), materials.E[static_cast<std::size_t>(k - 1)]);
        Put(design, "Poissons' ratio", At(k), materials.nu[static_cast<std::size_t>(k - 1)]);
    }
    design.run.Last_Edit = edit;
}

bool Check_Contact(Design_State& design, Contact_Field& refused)
{
    Dynamics_Group& d = design.dynamics;
    if (design.cam.Followtype != flat_faced && d.Roller_type != crowned_roller)
        d.Roller_type = cylindrical_roller;  // a roller of no type has no crown
    const Single E[2]{d.Youngs_modulus(1), d.Youngs_modulus(2)};
    const Single nu[2]{d.Poissons_ratio(1), d.Poissons_ratio(2)};
    return Validate_Contact(design, E, nu, refused) && Validate_Contact(design, E, nu, refused);
}

bool Run_Stress(Design_State& design, Contact_Field& refused)
{
    if (Refuse_Other_Units(design))
        return false;
    Apply(design, Event::stress_began);
    if (!Check_Contact(design, refused))
        return false;
    const Dynamics_Group& d = design.dynamics;
    const bool crowned = design.cam.Followtype != flat_faced && d.Roller_type == crowned_roller;
    const double size = crowned ? d.Crown_radius : d.Roller_length;
    const double youngs[2]{d.Youngs_modulus(1), d.Youngs_modulus(2)};
    const double poissons[2]{d.Poissons_ratio(1), d.Poissons_ratio(2)};
    design.flags.Calc_Error = false;
    Calc_Contact_Stress(design, d.Roller_type, youngs, poissons, size);
    if (!design.flags.Calc_Error)
        Reach(design, Mark::stress);  // also where the routine left early with a message: the points before stand
    design.flags.Calc_Error = false;
    Refresh_Screens();
    return true;
}

Standing Standing_of(const Design_State& design)
{
    const Flags_Group& f = design.flags;
    return {f.Calculated, f.Sized, f.Dynamicflag, f.Stressflag};
}

namespace {

/// The motion from its table, as a motion whatever the next calculation was to be; that choice stays.
bool Recalculate_Motion(Design_State& design)
{
    const Flag motion = design.motion.Motion;
    const bool reached = Calc_All(design, true) && Motion_Done(design) && design.flags.Calculated;
    if (reached)
        ContinuityCheck(design, design.motion.Firstlast, design.motion.Continuous, design.motion.Max_Jump);
    design.motion.Motion = motion;
    return reached;
}

/// Forces of this cam alone: what other cams on the shaft had added to the torque cannot be calculated again.
bool Recalculate_Forces(Design_State& design)
{
    Flag& fresh = design.dynamics.Torque_Start_Fresh;
    if (fresh)
        return Run_Forces(design);
    Show_Message(
        "The torque had been added up over several cams.  It is now that of this cam alone: \n"
        "load the others and add their torques again.",
        Buttons::OK, Symbol::exclamation);
    fresh = true;
    const bool reached = Run_Forces(design);
    fresh = false;
    return reached;
}

/// Steel follows the units; any other modulus stays the number that was typed, and so holds only while the unit of
/// stress is the same.
bool Materials_Known(const Materials& materials, bool same_unit)
{
    for (const std::size_t k : {0U, 1U})
        if (materials.steel[k] ? !(materials.E[k] > 0.0) : !same_unit)
            return false;
    return true;
}

bool Recalculate_Stress(Design_State& design, bool same_unit)
{
    const Materials materials = Materials_of(design);
    if (!Materials_Known(materials, same_unit)) {
        Show_Message(
            "The stresses are not recalculated: Young's modulus is not converted with the units.\n"
            "Please type it in " +
                std::string(Words_of_Units(design.identity.WhichUnit).stress) + " on the stress screen.",
            Buttons::OK, Symbol::exclamation);
        return true;
    }
    Put_Materials(design);
    Contact_Field refused{};
    return Run_Stress(design, refused) && design.flags.Stressflag;
}

bool Climb(Design_State& design, const Standing& standing)
{
    const bool forces = standing.forces || standing.stress;
    const bool size = standing.size || forces;
    const std::string_view unit_before = Words_of_Units(Units_of_Results(design)).stress;
    const bool same_unit = unit_before == Words_of_Units(design.identity.WhichUnit).stress;
    if ((standing.motion || size) && !Recalculate_Motion(design))
        return false;
    if (size && !Run_Size(design))
        return false;
    if (forces && !Recalculate_Forces(design))
        return false;
    return !standing.stress || Recalculate_Stress(design, same_unit);
}

}  // namespace

bool Recalculate(Design_State& design, const Standing& standing)
{
    if (design.flags.Imported_Model) {
        Show_Message("An imported motion has no segments to be recalculated from.", Buttons::OK, Symbol::exclamation);
        return false;
    }
    const Design_State before = design;
    bool reached = false;
    try {
        reached = Climb(design, standing);
    } catch (...) {
        design = before;
        throw;
    }
    if (!reached)
        design = before;
    Refresh_Screens();
    return reached;
}

}  // namespace lobemax
