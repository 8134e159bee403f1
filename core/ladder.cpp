// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ladder.h"

#include <algorithm>
#include <array>

#include "core/design_state.h"
#include "core/units.h"

namespace lobemax {

namespace {

using enum Mark;

constexpr std::array marks{
    Mark_Entry{motion, &Flags_Group::Calculated, "Calculated"},
    Mark_Entry{size, &Flags_Group::Sized, "Sized"},
    Mark_Entry{forces, &Flags_Group::Dynamicflag, "Dynamics"},
    Mark_Entry{vibration, &Flags_Group::Modelflag, "Vibration"},
    Mark_Entry{stress, &Flags_Group::Stressflag, "Stress"},
    Mark_Entry{polydyne, &Flags_Group::Polydyne_Calc, "Polydyne"},
    Mark_Entry{external_force, &Flags_Group::Ext_Force_Calc, "Ext Force"},
    Mark_Entry{compensating_cam, &Flags_Group::CompCam_Calc, "Torq Comp"},
    Mark_Entry{linkage, &Flags_Group::Linkage_Calc, "Linkage"},
    Mark_Entry{transform, &Flags_Group::FFT_Done, "FFT Done"},
    Mark_Entry{from_disk, &Flags_Group::From_Disk, ""},
    Mark_Entry{saved, &Flags_Group::Model_Saved, ""},
    Mark_Entry{example_loaded, &Flags_Group::Example_Loaded, ""},
    Mark_Entry{file_loaded, &Flags_Group::File_Loaded, ""},
    Mark_Entry{units_changed, &Flags_Group::Units_Changed, ""},
};
static_assert(marks.size() == Mark_Count);

constexpr Marks all_results =
    Of(motion, size, forces, vibration, stress, polydyne, compensating_cam, linkage, transform);

bool Polydyne(const Design_State& design)
{
    return design.flags.Polydyne_Calc;
}

bool Linkage_Drives(const Design_State& design)
{
    return design.linkage.Drive_End_Effector;
}

bool Arm_Drives(const Design_State& design)
{
    return !Linkage_Drives(design);
}

bool Arm_Drives_or_Polydyne(const Design_State& design)
{
    return Arm_Drives(design) || Polydyne(design);
}

bool Keeps_Rows(const Design_State& design)
{
    return design.flags.Example_Loaded || !design.motion.Motion;
}

bool Example_in_Table(const Design_State& design)
{
    return design.flags.Example_Loaded;
}

constexpr std::array falls{
    Fall{Event::edited, Of(saved), nullptr, "the file does not hold it"},
    Fall{Event::row_edited, all_results | Of(saved), nullptr, "the stored points are those of the table before"},
    Fall{Event::cam_edited, Of(size, forces, stress, saved), nullptr, "forces and stresses rest on the size"},
    Fall{Event::cam_edited, Of(vibration), Polydyne, "a polydyne cam is sized from what the vibration has found"},
    Fall{Event::cam_edited, Of(linkage), Linkage_Drives,
         "the ratios of a linkage that drives are what this size rests on"},
    Fall{Event::forces_edited, Of(forces, stress, saved), nullptr, "they were calculated with the value before"},
    Fall{Event::stress_edited, Of(stress, saved), nullptr, "they were calculated with the value before"},
    Fall{Event::vibration_edited, Of(vibration, saved), nullptr, "it was calculated with the model before"},
    Fall{Event::compensation_edited, Of(saved), nullptr, "the file does not hold it"},
    Fall{Event::linkage_edited, Of(linkage, saved), nullptr, "its motion is that of the links before"},
    Fall{Event::linkage_edited, Of(size, forces, stress), Arm_Drives,
         "the ratios of a linkage that drives are what the size rests on"},
    Fall{Event::linkage_edited, Of(vibration), Arm_Drives_or_Polydyne, "the forces it starts from rest on the size"},
    Fall{Event::effector_changed, Of(size, forces, stress, saved), nullptr,
         "the cam's motion is that of the arm or that of the end effector"},
    Fall{Event::effector_changed, Of(vibration), Polydyne, "the forces it starts from rest on the size"},
    Fall{Event::linkage_began, Of(linkage), nullptr, "it is being calculated"},

    Fall{Event::status_reset,
         Of(motion, size, forces, vibration, stress, polydyne, compensating_cam, external_force, linkage, file_loaded),
         nullptr, "all of them rest on the motion, which is whole again only when every segment is"},
    Fall{Event::segment_calculated, Of(example_loaded, units_changed), nullptr,
         "the table's points are the user's own from here on"},

    Fall{Event::motion_done, Of(size, forces), Example_in_Table, "they rest on the motion; an example brings its own"},
    Fall{Event::motion_done, Of(transform), Keeps_Rows, "its rows are cleared with the later results"},
    Fall{Event::motion_done, Of(compensating_cam, polydyne, vibration), nullptr, "they rest on the motion"},
    Fall{Event::motion_done, Of(example_loaded, file_loaded), nullptr, "the table is the design's from here on"},

    Fall{Event::external_force_dropped, Of(external_force), nullptr, "its table is empty"},

    // Stresses and the rest outlive the emptied table: meant. Their screens open over forces and motion alone.
    Fall{Event::rows_cleared, Of(motion, size, forces, vibration, polydyne), nullptr, "no segment is left"},
    Fall{Event::table_cleared, Of(example_loaded, file_loaded, from_disk, saved), nullptr,
         "neither an example nor a file stands behind an empty table"},

    Fall{Event::step_changed, all_results | Of(external_force, saved), nullptr, "the rows are counted in steps"},
    Fall{Event::speed_changed, all_results | Of(saved), nullptr, "derivatives per second go with powers of the speed"},
    Fall{Event::follower_motion_changed, Of(motion, saved), nullptr, "positions change from lengths to degrees"},
    Fall{Event::time_base_changed, static_cast<Marks>((all_results & ~Of(compensating_cam)) | Of(saved)), nullptr,
         "the stored rows keep the base they were calculated in"},

    Fall{Event::units_changed_in_table, Of(motion, size, forces, vibration, stress, saved), nullptr,
         "the results are in the units before"},
    Fall{Event::units_changed_open, Of(motion), nullptr, "the motion is in the units before"},

    Fall{Event::sizing_began, Of(size, forces, stress, saved), nullptr, "forces and stresses rest on the size"},
    Fall{Event::sizing_began, Of(vibration), Polydyne, "a polydyne cam is sized from what the vibration has found"},
    Fall{Event::sizing_began, Of(linkage), Linkage_Drives,
         "the ratios of a linkage that drives are what this size rests on"},
    Fall{Event::cam_changed, Of(size, forces, vibration, stress, polydyne, linkage), nullptr,
         "they belong to the cam and the follower before"},

    Fall{Event::forces_began, Of(forces), nullptr, "they are being calculated"},
    Fall{Event::forces_done, Of(stress), nullptr, "the stresses rest on the forces before"},
    Fall{Event::closing_spring_edited, Of(forces, stress, vibration, saved), nullptr,
         "forces and dynamic force were calculated with the spring before"},
    Fall{Event::vibration_began, Of(vibration), nullptr, "it is being calculated"},
    Fall{Event::vibration_done, Of(stress), nullptr, "the stresses rest on the dynamic force before"},
    Fall{Event::polydyne_given_up, Of(polydyne), nullptr, "the cam is that of the motion itself again"},
    Fall{Event::stress_began, Of(stress), nullptr, "they are being calculated"},
    Fall{Event::transform_began, Of(transform), nullptr, "its rows are being filled"},
    Fall{Event::compensation_done,
         Of(size, forces, vibration, stress, polydyne, linkage, transform, saved, example_loaded, file_loaded), nullptr,
         "they rest on the motion of the primary cam"},
    Fall{Event::compensation_given_up, Of(compensating_cam), nullptr, "the user goes on without saving it"},

    Fall{Event::imported,
         Of(size, forces, vibration, stress, polydyne, compensating_cam, external_force, linkage, transform, saved,
            example_loaded, file_loaded, units_changed),
         nullptr, "they rest on the motion before"},
    Fall{Event::import_given_up, all_results | Of(external_force, saved, example_loaded, file_loaded), nullptr,
         "the rows are those of a profile that was thrown away"},
    Fall{Event::load_without_table, Of(motion, size, forces, vibration, stress), nullptr,
         "the file holds no calculated data"},
    Fall{Event::load_partial, Of(motion, vibration, polydyne), nullptr, "the calculated data are not whole"},
    Fall{Event::load_succeeded, Of(compensating_cam), nullptr, "no file keeps a compensating cam's data"},
    Fall{Event::save_failed, Of(saved), nullptr, "no file holds the design"},
    Fall{Event::results_let_go, all_results | Of(external_force), nullptr, "their rows are not kept any more"},
    Fall{Event::started, Of(linkage), nullptr, "no file keeps a linkage's results"},
};

}  // namespace

std::span<const Mark_Entry> Mark_Table()
{
    return marks;
}

bool Holds(const Design_State& design, Mark mark)
{
    return design.flags.*marks.at(static_cast<std::size_t>(mark)).flag;
}

std::span<const Fall> Falls()
{
    return falls;
}

Marks Falling(const Design_State& design, Event event)
{
    Marks found = 0;
    for (const Fall& fall : falls)
        if (fall.event == event && (fall.unless == nullptr || !fall.unless(design)))
            found |= fall.falls;
    return found;
}

bool Any_Result(const Design_State& design)
{
    return std::ranges::any_of(marks, [&](const Mark_Entry& entry) {
        return (all_results & Only(entry.mark)) != 0 && design.flags.*entry.flag;
    });
}

void Apply(Design_State& design, Event event)
{
    const Marks falling = Falling(design, event);
    for (const Mark_Entry& entry : marks)
        if ((falling & Only(entry.mark)) != 0)
            design.flags.*entry.flag = false;
    if (Results_in_Other_Units(design) && (!Any_Result(design) || !Holds(design, Mark::units_changed))) {
        design.results.WhichUnit = 0;
        Set_Units(design);
    }
}

void Reach(Design_State& design, Mark mark)
{
    design.flags.*marks.at(static_cast<std::size_t>(mark)).flag = true;
}

}  // namespace lobemax
