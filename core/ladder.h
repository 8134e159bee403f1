// SPDX-License-Identifier: GPL-3.0-or-later
/// The ladder of results: what has been calculated, which event takes which result away, and why.
///
/// One table holds every fall; Apply is the one operation that clears a result's flag, Reach the one that sets it.
/// Lamps, buttons and lists read the same marks.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "core/basic_types.h"

namespace lobemax {

struct Design_State;
struct Flags_Group;

/// The flags that tell how far the results in memory are valid, and where they come from.
enum class Mark : std::uint8_t {
    motion,            // Calculated
    size,              // Sized
    forces,            // Dynamicflag
    vibration,         // Modelflag
    stress,            // Stressflag
    polydyne,          // Polydyne_Calc
    external_force,    // Ext_Force_Calc
    compensating_cam,  // CompCam_Calc
    linkage,           // Linkage_Calc
    transform,         // FFT_Done
    from_disk,         // From_Disk: what is in memory was read from a file
    saved,             // Model_Saved
    example_loaded,    // Example_Loaded: an example stands in the table, sized and with its forces
    file_loaded,       // File_Loaded: a file stands in the table
    units_changed,     // Units_Changed: the results are those of the units before
};
inline constexpr int Mark_Count = 15;

/// A set of marks, a bit each.
using Marks = std::uint16_t;
constexpr Marks Only(Mark mark)
{
    return static_cast<Marks>(1U << static_cast<unsigned>(mark));
}
template <class... More>
constexpr Marks Of(Mark first, More... more)
{
    return static_cast<Marks>((Only(first) | ... | Only(more)));
}

/// A mark's flag, and the lamp that shows it on the Home screen; no caption: none does.
struct Mark_Entry {
    Mark mark;
    Flag Flags_Group::*flag;
    std::string_view lamp;
};
/// All marks, in the order of the enumeration.
std::span<const Mark_Entry> Mark_Table();

bool Holds(const Design_State& design, Mark mark);

/// What happens to a design.
enum class Event : std::uint8_t {
    edited,            // an input changed that no result rests on
    row_edited,        // the segment table, its conditions or knots
    cam_edited,        // cam or follower
    forces_edited,     // what the forces are calculated with
    stress_edited,     // materials and sizes of the contact
    linkage_edited,    // the links
    effector_changed,  // the motion is wanted at the other end of the linkage
    linkage_began,
    vibration_edited,         // the model of the follower train
    compensation_edited,      // the train of the balancing cam
    status_reset,             // the motion is being calculated: no later result holds
    segment_calculated,       // a segment of the table was calculated
    motion_done,              // the motion was accepted
    external_force_dropped,   // the force function is given up
    rows_cleared,             // the segment table was emptied
    table_cleared,            // the same, by the user
    step_changed,             // another number of points
    speed_changed,            // another shaft speed
    follower_motion_changed,  // translating or oscillating, on the input screen
    time_base_changed,        // derivatives per second, degree or radian
    units_changed_in_table,   // the same, on the input screen
    units_changed_open,       // the input screen opens after a conversion
    sizing_began,
    cam_changed,  // cam or follower chosen anew by the preferences
    forces_began,
    forces_done,
    closing_spring_edited,  // the spring or the preload that holds the follower
    vibration_began,
    vibration_done,
    polydyne_given_up,  // the cam is to be that of the motion itself again
    stress_began,
    transform_began,
    compensation_done,  // the rows of the motion are those of the balancing cam
    compensation_given_up,
    imported,            // a measured profile became the motion
    import_given_up,     // and was thrown away
    load_without_table,  // the file holds no calculated data
    load_partial,
    load_succeeded,
    save_failed,
    results_let_go,  // Undo has gone back further than calculated rows are kept
    started,         // the program has come up
};
inline constexpr int Event_Count = 42;

/// One row of the table of falls.
struct Fall {
    Event event;
    Marks falls;
    bool (*unless)(const Design_State& design);  // the row does not count then; null: it always does
    std::string_view why;
};
std::span<const Fall> Falls();

/// Whether any calculated result holds.
bool Any_Result(const Design_State& design);

/// Clears what the event takes away. Where no result of other units is left, the rows carry the design's units again.
void Apply(Design_State& design, Event event);

/// A calculation has reached its end.
void Reach(Design_State& design, Mark mark);

/// Marks that fall with an event in this design.
Marks Falling(const Design_State& design, Event event);

}  // namespace lobemax
