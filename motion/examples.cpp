// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/examples.h"

#include <algorithm>
#include <initializer_list>
#include <span>
#include <string>
#include <vector>

#include "core/design_state.h"
#include "core/ladder.h"
#include "core/startup.h"
#include "core/text.h"
#include "core/units.h"
#include "motion/motion_programs.h"
#include "motion/segments.h"

namespace lobemax {

namespace {

struct Example_Segment {
    char kind;
    std::string_view program;
    double beta;  // degrees
    double start;
    double end;
};

/// What the positions of a table are: inches, through the shop's conversion, or numbers as they stand.
enum class Positions { shop_length, plain };

struct Example {
    std::string_view name;
    std::vector<Example_Segment> segments;
    Positions positions;
    double omega;          // rad/s
    double prime_radius;   // inches
    double offset;         // inches
    double roller_factor;  // times the roller of the unit system; 0 for a flat face
    bool oscillating;
};

const std::vector<Example_Segment>& Single_Dwell_Table()
{
    static const std::vector<Example_Segment> table{
        {'R', "DH", 90, 0, 1}, {'F', "DH", 90, 1, 0}, {'D', "DW", 180, 0, 0}};
    return table;
}

Example Make_Example(std::string_view name)
{
    if (name == "Single Dwell")
        return {name, Single_Dwell_Table(), Positions::shop_length, 15, 3, 0.75, 2, false};
    if (name == "Flat Follower")
        return {name, Single_Dwell_Table(), Positions::shop_length, 15, 4, 0, 0, false};
    if (name == "Double Dwell")
        return {name,
                {{'R', "MT", 90, 0, 1}, {'D', "DW", 90, 1, 1}, {'F', "MS", 90, 1, 0}, {'D', "DW", 90, 0, 0}},
                Positions::shop_length,
                18,
                4,
                0,
                1.5,
                false};
    if (name == "Four Dwell")
        return {name,
                {{'R', "MS", 50, 0, 1},
                 {'D', "DW", 40, 1, 1},
                 {'F', "CF", 50, 1, 0},
                 {'D', "DW", 40, 0, 0},
                 {'R', "45", 50, 0, 1},
                 {'D', "DW", 40, 1, 1},
                 {'F', "67", 50, 1, 0},
                 {'D', "DW", 40, 0, 0}},
                Positions::plain,
                10.471975,
                4,
                0,
                2,
                false};
    // The oscillating cam, positions in degrees; the linkage examples are driven by the same arm.
    return {name,
            {{'R', "67", 90, 0, 5}, {'D', "DW", 90, 5, 5}, {'F', "45", 90, 5, 0}, {'D', "DW", 90, 0, 0}},
            Positions::plain,
            21,
            2.5,
            0,
            1,
            true};
}

/// A number as the user would type it in the number format in force.
std::string Typed(const Design_State& design, double value)
{
    return Shown(design, value);
}

void Fill_Table(Design_State& design, const Example& example)
{
    Motion_Group& m = design.motion;
    m.No_of_segments = static_cast<int>(example.segments.size());
    int i = 0;
    for (const Example_Segment& segment : example.segments) {
        ++i;
        Pick_Motion(design, i, segment.kind);
        Pick_Program(design, i, segment.program);
        m.Beta_Deg(i) = segment.beta;
        m.Beta_Rad(i) = segment.beta / Deg_per_Rad;
        const bool shop = example.positions == Positions::shop_length;
        m.Start_Value(i) = Typed(design, shop ? Shop_Length(design, segment.start) : segment.start);
        m.End_Value(i) = Typed(design, shop ? Shop_Length(design, segment.end) : segment.end);
    }
    Update_Segment_Angles(design);
}

}  // namespace

bool Load_Example(Design_State& design, std::string_view name)
{
    const auto found = std::find_if(Example_Names.begin(), Example_Names.end(),
                                    [&](std::string_view known) { return Same_Text(known, name); });
    if (found == Example_Names.end())
        return false;
    const Example example = Make_Example(*found);
    Reset_All(design);
    Cam_Group& c = design.cam;
    c.Camtype = "Radial";
    c.Barrel_Type = "";
    c.Rotflag = -1;
    Set_Step(design, 1.0);
    c.Translating = !example.oscillating;
    c.Followtype = example.name == "Flat Follower" ? 2 : 1;
    Set_Shaft_Speed(design, example.omega);
    c.Prime_Rad = Shop_Prime_Radius(design, example.prime_radius);
    c.Offset = Shop_Length(design, example.offset);
    Roller_Defaults(design, example.roller_factor);
    if (example.oscillating) {
        c.ArmX = Shop_Length(design, 4.0);
        c.ArmY = Shop_Length(design, 2.5);
        c.ArmRad = Shop_Length(design, 4.0);
        c.ArmDirect = -1;
    }
    Fill_Table(design, example);
    Set_Units(design);
    Reach(design, Mark::example_loaded);
    return true;
}

bool Calculate_Example(Design_State& design)
{
    // The motion alone: sizing and dynamics stay undone, and their flags false, until their rungs calculate them.
    return Calc_All(design, true) && Motion_Done(design) && design.flags.Calculated;
}

bool Build_Example(Design_State& design, std::string_view name)
{
    return Load_Example(design, name) && Calculate_Example(design);
}

}  // namespace lobemax
