// SPDX-License-Identifier: GPL-3.0-or-later
/// The rungs of the ladder from the fields as they are stored: what the buttons of the screens and the levels of the
/// command line do after the fields have come through the door. None rests on results of other units: size, forces and
/// stresses refuse that with a message.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "camgeom/profile_import.h"
#include "core/design_state.h"
#include "dynamics/torque_compensation.h"
#include "dynamics/vibration.h"
#include "linkage/linkage_masses.h"

namespace lobemax {

/// Sizes the cam by its stored fields: each is checked by its rule and a refusal told; then pressure angle, profile and
/// curvature. @return whether the cam is sized
bool Run_Size(Design_State& design);

/// The same from the point where the fields have been checked: what the kind of cam asks for, then the curves. Tells
/// where the dimensions do not fit. @param arm_meets  false where the arm misses the cam: nothing is calculated
bool Run_Size_Curves(Design_State& design, bool arm_meets);

/// Forces and torques by the stored fields. A flat face is closed by a spring; a form closure has neither spring nor
/// preload nor damping. Stresses rest on the forces before.
/// @return whether Dynamicflag was reached
bool Run_Forces(Design_State& design);

/// Steel's modulus in the unit system in force, as it is typed; empty where the system has none.
std::string Modulus_of_Steel(const Design_State& design);

/// Young's moduli and Poisson's ratios of cam and follower (1, 2): the stored ones, and steel where a material has none
/// or has that of steel in any unit system; a modulus of 0 where the unit system has no steel.
struct Materials {
    std::array<double, 2> E{};
    std::array<double, 2> nu{};
    std::array<bool, 2> steel{};
};
Materials Materials_of(const Design_State& design);

/// Puts Materials_of into the design before a stress calculation. Nobody typed them: the step at work keeps its name.
void Put_Materials(Design_State& design);

/// Poisson's ratio of steel.
inline constexpr double Ratio_of_Steel = 0.28;

/// The fields of the contact that a stress calculation can be refused for.
enum class Contact_Field { Cam_E, Cam_V, Fol_E, Fol_v, Length, Crownrad };

/// Checks the stored fields of the contact, twice over, storing each as it is checked, the follower's ratio where the
/// cam's stands.
///
/// The last store puts the follower's Poisson's ratio into the cam's place, and meant: after a calculation both carry
/// the follower's. Mechanics would keep them apart; for two metals the stress differs by less than 2 %.
/// @param refused  out: the field that was refused, after a message
/// @return         false after a message
bool Check_Contact(Design_State& design, Contact_Field& refused);

/// Stresses by the stored fields, once they are checked.
/// @return false when a field was refused and nothing was calculated
bool Run_Stress(Design_State& design, Contact_Field& refused);

/// The vibration of the follower train by the stored fields: forces, integration, response and dynamic force. A
/// form-closed cam has the first model. Mass becomes the model's first; stresses rest on the force before. Torques that
/// were added up over several cams stay as they are: this cam's is among them.
///
/// A run that was cancelled, aborted or did not converge is told of so; so are a follower that jumps off the cam and a
/// transient that has not died out.
/// @return whether Modelflag was reached
bool Run_Vibration(Design_State& design, const Vibration_Run& run);

/// Whether a segment is a spline: a cam made polydyne from splines is called splinedyne.
bool Has_Spline(const Design_State& design);

/// The polydyne cam of the model picked, after its note was confirmed: displacement, then the vibration of the changed
/// cam, twice, as a fresh one and as the change of it.
/// @return whether Polydyne_Calc and Modelflag were reached; Cancel leaves the design as it was
bool Run_Polydyne(Design_State& design, const Vibration_Run& run);

/// The profile of the polydyne cam: the one that stands is kept in rows 25 to 28, then the cam is sized by the polydyne
/// displacement, and the forces, which rest on the size, are calculated again.
/// @return whether size and forces were reached
bool Size_Polydyne(Design_State& design);

/// Gives the polydyne cam up; one that was sized is sized by its motion again, and its forces calculated.
/// @return false when they were not reached
bool Give_Up_Polydyne(Design_State& design);

/// The balancing cam of the motion in memory by the stored fields and the run's figures; each is checked by its rule
/// and a refusal told. The design's motion stays the primary's: rows 48 and 49 take the torques.
/// @return whether there is one, in result
bool Run_Compensation(Design_State& design, const Compensation_Run& run, Compensation& result);

/// The balancing cam takes the primary's place in memory, under its trap, and CompCam_Calc is set: the motion is its
/// own, what rests on a motion falls. The segment table stays that of the primary.
/// @return false after a fault; the design is then as it was
bool Take_Compensation(Design_State& design, const Compensation& result);

/// The linkage by the stored fields: every link over the cycle, and the ratios of the driven end effector. Tells where
/// the links do not connect.
/// @return whether Linkage_Calc was reached
bool Run_Linkage(Design_State& design);

/// Whether the design has a linkage: an oscillating follower, and links of positive length.
bool Has_Linkage(const Design_State& design);

/// No file holds a linkage's results: where a design has a linkage, a motion and no results yet, they are worked out.
/// Points that do not connect are told of; what is missing is not.
void Work_Out_Linkage(Design_State& design);

/// The figures of an import that the design keeps.
struct Import_Units {
    int WhichUnit = 5;
    double rpm = 0.0;
};

/// The functions of a fitted profile into the rows, in the units of the file and by the speed typed, per second, under
/// its trap; a message tells of it.
/// @return false after a message; the design is then as it was
bool Save_Functions(Design_State& design, const Import_Choice& choice, const Import_Units& units,
                    const Profile& profile);

/// The imported functions are the design's motion: Calculated and Imported, Design No. counts on.
void Keep_Import(Design_State& design);

/// They are not: no motion is left.
void Give_Up_Import(Design_State& design);

/// What a linkage is worth at the follower.
struct Link_Effect {
    Effective_Mass mass;
    std::optional<double> stiffness;  // none, after a message, where a link has none
};

/// Effective mass and stiffness of the linkage into the model of the follower train and the follower's mass. A one-mass
/// model has the whole mass as its first, a two-mass model what moves with the follower and what does not; the
/// stiffness is that of the train's spring of the model picked. Links without any mass leave the masses as they are.
/// @return none after a message: no linkage was calculated, or its links do not move
std::optional<Link_Effect> Run_Link_Masses(Design_State& design, Speed_Choice choice);

/// How far a design has got: the rungs that stand, in the ladder's order.
struct Standing {
    bool motion = false;
    bool size = false;
    bool forces = false;
    bool stress = false;
    bool vibration = false;
    bool polydyne = false;
    bool linkage = false;
    friend bool operator==(const Standing&, const Standing&) = default;
};
Standing Standing_of(const Design_State& design);

/// Calculates the rungs anew from the table on, in the ladder's order, up to those that stood; a vibration as its
/// screen opens, over two turns of the cam. A stored external force, the choice between motion and force and a driven
/// end effector stay.
/// Stresses of a material that is not steel's are told of and left out where the unit of stress has changed: no modulus
/// is converted.
/// @return false, after a message, when a rung was not reached or the motion is not the table's, as an imported one or
///         a balancing cam's; the design is then as it was
/// @throws Fault outside of the rungs' own traps; the design is then as it was
bool Recalculate(Design_State& design, const Standing& standing);

/// The ladder for sweeps over many designs: calculates the rungs up to those asked for, as Recalculate does, but shows
/// nothing, asks nobody (every question has its usual answer) and keeps no copy. A design whose tables have their size
/// and whose rungs are all reached costs no memory. Threads may run their own designs at once.
struct Ladder_Outcome {
    bool reached = false;  // else the design's marks tell what stands
    std::string told;      // the first message that a user would have met, empty where there was none
};
Ladder_Outcome Ladder(Design_State& design, const Standing& levels);

}  // namespace lobemax
