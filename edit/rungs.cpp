// SPDX-License-Identifier: GPL-3.0-or-later
#include "edit/rungs.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "camgeom/cam_rules.h"
#include "camgeom/sizing.h"
#include "core/ladder.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/units.h"
#include "dynamics/contact_stress.h"
#include "dynamics/kinetostatics.h"
#include "dynamics/train_rules.h"
#include "dynamics/vibration_rules.h"
#include "edit/door.h"
#include "linkage/linkage_kinematics.h"
#include "linkage/linkage_rules.h"
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
    // The arm moves by the displacement over the ratios of the linkage as it is now.
    if (arm_meets && design.linkage.Drive_End_Effector && !design.cam.Translating && !Run_Linkage(design))
        return false;
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

bool Run_Linkage(Design_State& design)
{
    if (const Verdict verdict = Linkage_may_be(design); !verdict) {
        Show_Refusal(verdict);
        return false;
    }
    if (Refuse_Other_Units(design))
        return false;
    Flags_Group& f = design.flags;
    f.Calc_Abort = false;
    Integer answer;
    const bool reached = Calc_Linkage_All(design, answer);
    f.Calc_Abort = false;
    const Linkage_Group& k = design.linkage;
    if (reached && k.Link_Broken > 0)
        Show_Message("The links do not connect at " + std::to_string(k.Link_Broken) + " of " +
                         std::to_string(design.motion.Max_Data_Points_used + 1) +
                         " points.\nThey keep their last position there, at rest.",
                     Buttons::OK, Symbol::exclamation);
    Refresh_Screens();
    return reached;
}

bool Has_Linkage(const Design_State& design)
{
    return !design.cam.Translating && Missing_Length(design).empty();
}

void Work_Out_Linkage(Design_State& design)
{
    const Flags_Group& f = design.flags;
    if (Has_Linkage(design) && f.Calculated && !f.Linkage_Calc && !Results_in_Other_Units(design))
        Run_Linkage(design);
}

bool Save_Functions(Design_State& design, const Import_Choice& choice, const Import_Units& units,
                    const Profile& profile)
{
    if (!profile.fitted) {
        Show_Message("Fit the functions first.", Buttons::OK, Symbol::exclamation);
        return false;
    }
    const Design_State before = design;
    bool stored = false;
    Trap("Save_Functions", [&] {
        for (const Verdict& verdict : {Put(design, "WhichUnit", units.WhichUnit), Put(design, "Time Base", 1),
                                       Put(design, "Shaft speed", units.rpm * PI / 30.0)})
            if (!verdict) {
                Show_Refusal(verdict);
                return;
            }
        Store_Functions(design, choice, profile);
        stored = true;
    });
    if (!stored) {
        design = before;
        return false;
    }
    Apply(design, Event::imported);
    design.results.WhichUnit = 0;
    Set_Units(design);
    Show_Message(
        "The interpolated functions from your imported profile data \n"
        "have been saved within the program for further calculation.\n"
        "You still need to save the model to disk with the File/Save option.\n"
        "When you select the Next button, you will return to the home page\n"
        "and can plot the interpolated functions, size the cam, calculate\n"
        "dynamic properties, and export the cam profile data for manufacture.\n"
        "If you use the Back button, it will reset and lose the imported data.",
        Buttons::OK, Symbol::information);
    return true;
}

void Keep_Import(Design_State& design)
{
    Apply(design, Event::imported);
    Reach(design, Mark::motion);
    design.flags.Imported_Model = true;
    design.motion.Motion = true;
    design.identity.Design_No = design.identity.Design_No + 1;
    Refresh_Screens();
}

void Give_Up_Import(Design_State& design)
{
    Apply(design, Event::import_given_up);
    design.flags.Imported_Model = false;
    Refresh_Screens();
}

std::optional<Link_Effect> Run_Link_Masses(Design_State& design, Speed_Choice choice)
{
    if (!design.flags.Linkage_Calc) {
        Show_Message("Calculate the linkage first.", Buttons::OK, Symbol::exclamation);
        return {};
    }
    std::optional<Link_Effect> effect;
    Trap("Link_Mass", [&] {
        const std::optional<Effective_Mass> mass = Link_Mass(design, choice);
        if (!mass)
            return;
        const int model = design.dynamics.Model_Type;
        const bool two_masses = model == 4 || model == 5;
        const double first = two_masses ? mass->at_follower : mass->Total();
        const std::optional<double> stiffness = Link_Stiffness(design, choice);
        // Links without a mass leave the train's as it is: a follower without one cannot be.
        std::vector<Verdict> verdicts;
        if (first > 0.0)
            verdicts = {Put(design, "Mass_m", At(1), first), Put(design, "Mass_m", At(2), mass->at_effector),
                        Put(design, "Mass", first)};
        if (stiffness)
            verdicts.push_back(Put(design, "Kspring", At(model == 3 || model == 4 ? 2 : 1), *stiffness));
        for (const Verdict& verdict : verdicts)
            if (!verdict) {
                Show_Refusal(verdict);
                return;
            }
        effect = Link_Effect{*mass, stiffness};
    });
    Refresh_Screens();
    return effect;
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

namespace {

/// Forces that a vibration or another profile needs. Torques that were added up hold this cam's already.
bool Forces_Anew(Design_State& design)
{
    if (design.dynamics.Torque_Start_Fresh)
        return Run_Forces(design);
    const auto torque = design.results.CalcData.Points(var::Torque);
    const std::vector<Single> before(torque.begin(), torque.end());
    const bool reached = Run_Forces(design);
    std::ranges::copy(before, torque.begin());
    Show_Torque_Areas(design);  // the flywheel's row goes with the torque
    return reached;
}

/// Integration and response. @return false after a fault, which was told, or an abort, which was not
bool Integrate_Model(Design_State& design, const Vibration_Run& run)
{
    Step_Counts steps;
    if (!Solve_Model(design, run, steps))
        return false;
    if (Model_Results(design))
        return true;
    Apply(design, Event::vibration_began);  // the response is not whole
    return false;
}

/// The work of a run up to what it tells at its end.
bool Vibrate(Design_State& design, const Vibration_Run& run)
{
    Flags_Group& f = design.flags;
    Dynamics_Group& d = design.dynamics;
    if (design.cam.Closure == "Form")
        d.Model_Type = Form_Closed_Model;  // a track closes; no spring does
    f.Calc_Abort = false;
    Apply(design, Event::vibration_began);
    if (!Model_Setup(design))
        return false;
    d.Mass = d.Mass_m(1);
    const bool reached = Forces_Anew(design) && Integrate_Model(design, run);
    if (!reached && f.Calc_Abort) {
        f.Calc_Abort = false;
        Show_Message("The calculation has been cancelled at your request.", Buttons::OK, Symbol::information);
    }
    if (!reached)
        return false;
    Apply(design, Event::vibration_done);
    if (f.Separated)
        Show_Message("The follower is jumping off the cam.  This design should not be used.", Buttons::OK,
                     Symbol::stop);
    return true;
}

bool Refuse_Run(const Design_State& design, const Vibration_Run& run)
{
    bool fits = false;
    return Refuse_Other_Units(design) || !Trap("Run_Vibration", [&] { fits = Tell(Run_may_be(design, run)); }) || !fits;
}

}  // namespace

bool Run_Vibration(Design_State& design, const Vibration_Run& run)
{
    if (Refuse_Run(design, run))
        return false;
    const bool reached = Vibrate(design, run);
    if (reached)
        Trap("Find_Transient", [&] { Tell_Transient(design, Find_Transient(design)); });
    Refresh_Screens();
    return reached;
}

bool Has_Spline(const Design_State& design)
{
    constexpr int spline = 11;
    const Motion_Group& m = design.motion;
    for (int i = 1; i <= m.No_of_segments; ++i)
        if (m.Seg_Program(i) == spline)
            return true;
    return false;
}

namespace {

bool Confirm_Polydyne(const Design_State& design)
{
    const std::string kind = Has_Spline(design) ? "splinedyne" : "polydyne";
    return Show_Message("Note: A " + kind +
                            " cam requires a follower displacement function\n"
                            "that is continuous through the 4th derivative of displacement (ping).\n"
                            "For a double-dwell cam, the 11-deg Poly function is suitable.\n"
                            "For a single-dwell cam, the Thoren and Stoddart functions are suitable.\n"
                            "Also, any spline or polynomial function with suitable continuity will work.\n"
                            "If you have chosen such suitable functions for all motions, select OK.\n"
                            "Otherwise, select Cancel.",
                        Buttons::OK_Cancel, Symbol::none) == Answer::OK;
}

/// Polydyne rows and the vibration of the cam that has them.
bool Make_Polydyne(Design_State& design, const Vibration_Run& run)
{
    if (!Calc_Polydyne(design))
        return false;
    Reach(design, Mark::polydyne);
    if (!Vibrate(design, run) || !Run_Vibration(design, run))
        return false;
    Table<Single>& data = design.results.CalcData;
    for (int i = 0; i <= design.motion.Max_Data_Points_used; ++i)
        data(var::Response_Error, i) = data(var::Polydyne_S, i) - data(var::Response_X, i);
    return true;
}

}  // namespace

bool Run_Polydyne(Design_State& design, const Vibration_Run& run)
{
    return !Refuse_Run(design, run) && Confirm_Polydyne(design) && Make_Polydyne(design, run);
}

bool Size_Polydyne(Design_State& design)
{
    Keep_Kinematic_Profile(design);
    return Run_Size(design) && Forces_Anew(design);
}

bool Give_Up_Polydyne(Design_State& design)
{
    if (!Holds(design, Mark::polydyne))
        return true;
    Apply(design, Event::polydyne_given_up);
    return !Holds(design, Mark::size) || (Run_Size(design) && Forces_Anew(design));
}

bool Run_Compensation(Design_State& design, const Compensation_Run& run, Compensation& result)
{
    if (Refuse_Other_Units(design))
        return false;
    const Dynamics_Group& d = design.dynamics;
    for (const auto& [field, value] :
         {std::pair{"Comp_Mass", d.Comp_Mass}, std::pair{"Comp_Spring_Rate", d.Comp_Spring_Rate},
          std::pair{"Comp_Preload", d.Comp_Preload}})
        if (!Tell(Query(design, field, value)))
            return false;
    if (!Tell(Accuracy_may_be(run)))
        return false;
    const bool reached = Calc_Compensation(design, run, result);
    Refresh_Screens();
    return reached;
}

bool Take_Compensation(Design_State& design, const Compensation& result)
{
    const bool taken = Trap("Take_Compensation", [&] {
        Design_State with = design;
        Overwrite_Motion(with, result);
        Apply(with, Event::compensation_done);
        Reach(with, Mark::compensating_cam);
        design = std::move(with);
    });
    Refresh_Screens();
    return taken;
}

Standing Standing_of(const Design_State& design)
{
    const Flags_Group& f = design.flags;
    return {f.Calculated, f.Sized, f.Dynamicflag, f.Stressflag, f.Modelflag, f.Polydyne_Calc, f.Linkage_Calc};
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
    const bool vibration = standing.vibration || standing.polydyne;
    const bool forces = standing.forces || standing.stress || vibration;
    const bool size = standing.size || forces;
    const std::string_view unit_before = Words_of_Units(Units_of_Results(design)).stress;
    const bool same_unit = unit_before == Words_of_Units(design.identity.WhichUnit).stress;
    const bool drives = design.linkage.Drive_End_Effector;
    if ((standing.motion || size) && !Recalculate_Motion(design))
        return false;
    if (drives)
        Put(design, "Drive_End_Effector", 1);  // a new motion is the arm's; this one is that which was
    if (size && !Run_Size(design))
        return false;
    if (forces && !Recalculate_Forces(design))
        return false;
    if (vibration && !Run_Vibration(design, {}))
        return false;
    if (standing.polydyne && !(Make_Polydyne(design, {}) && Size_Polydyne(design)))
        return false;
    if (standing.stress && !Recalculate_Stress(design, same_unit))
        return false;
    return !standing.linkage || Run_Linkage(design);
}

/// Why the motion cannot be calculated from the table; empty where it can.
std::string_view Has_No_Segments(const Design_State& design)
{
    if (design.flags.Imported_Model)
        return "An imported motion has no segments to be recalculated from.";
    if (design.flags.CompCam_Calc)
        return "The motion of a compensating cam has no segments to be recalculated from.";
    return {};
}

}  // namespace

bool Recalculate(Design_State& design, const Standing& standing)
{
    if (const std::string_view refusal = Has_No_Segments(design); !refusal.empty()) {
        Show_Message(std::string(refusal), Buttons::OK, Symbol::exclamation);
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

Ladder_Outcome Ladder(Design_State& design, const Standing& levels)
{
    Ladder_Outcome outcome;
    if (const std::string_view refusal = Has_No_Segments(design); !refusal.empty()) {
        outcome.told = refusal;
        return outcome;
    }
    Host quiet;
    quiet.messenger = [&outcome](const Message& box) {
        if (outcome.told.empty())
            outcome.told = box.text;
        return Usual_Answer(box.buttons);
    };
    // A design of a sweep keeps its stamp: nobody finished it by hand.
    quiet.date = [&design] { return design.identity.Date; };
    quiet.time = [&design] { return design.identity.Time; };
    const Thread_Host silent(quiet);
    // Nor does it count on: a sweep is longer than 16 bits.
    const Integer number = std::exchange(design.identity.Design_No, 0);
    try {
        outcome.reached = Climb(design, levels);
    } catch (const Fault& fault) {
        if (outcome.told.empty())
            outcome.told = Error_Text(fault.Number(), "Ladder");
    }
    design.identity.Design_No = number;
    return outcome;
}

}  // namespace lobemax
