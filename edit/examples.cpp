// SPDX-License-Identifier: GPL-3.0-or-later
#include "edit/examples.h"

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
#include "edit/door.h"
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

/// What hangs on the arm of a linkage example. Its pivots, in inches, stand in the machine of the oscillating example.
struct Linkage_of_Example {
    std::string_view name;
    int type;
    double link_3;
};

constexpr std::array linkages{Linkage_of_Example{"4-bar Linkage", 0, 7.5}, Linkage_of_Example{"6-bar Linkage", 1, 7.5},
                              Linkage_of_Example{"4-bar Slider", 2, 8}, Linkage_of_Example{"6-bar Slider", 3, 7.5}};

const Linkage_of_Example* Linkage_of(std::string_view name)
{
    const auto* const found = std::ranges::find(linkages, name, &Linkage_of_Example::name);
    return found == linkages.end() ? nullptr : &*found;
}

void Put_Linkage(Design_State& design, const Linkage_of_Example& linkage)
{
    Put(design, "Linkage_Type", linkage.type);
    const auto length = [&](std::string_view field, double inches) { Put(design, field, Shop_Length(design, inches)); };
    const bool slider = linkage.type > 1;
    const bool six = linkage.type % 2 == 1;
    length("O4x", 11);
    length("O4y", 2.5);
    length("Link 2", 4);
    length("Link 3", linkage.link_3);
    length("Link 4", 5);
    length("Link 4a", 5);
    Put(design, "Delta2", 90);
    Put(design, "Delta4", 0);
    Put(design, "Assemflag1", -1);
    Put(design, "Assemflag2", -1);
    if (six && !slider) {
        length("O6x", 18);
        length("O6y", 2.5);
        length("Link 5", 7.5);
        length("Link 6", 4);
    }
    if (six && slider) {
        length("Link 5", 8);
        length("Offset6", -4.5);
    }
    if (!six && slider) {
        length("S3x", 14);
        length("S3y", 6.5);
    }
    if (slider)
        Put(design, "Global_Slider_angle_deg", 180);
}

/// A number as the user would type it in the number format in force.
std::string Typed(const Design_State& design, double value)
{
    return Shown(design, value);
}

void Fill_Table(Design_State& design, const Example& example)
{
    Put(design, "No of segments", static_cast<double>(example.segments.size()));
    int i = 0;
    for (const Example_Segment& segment : example.segments) {
        ++i;
        const auto position = [&](double value) {
            return Typed(design, example.positions == Positions::shop_length ? Shop_Length(design, value) : value);
        };
        Put(design, "Rise_Fall_Dwell", At(i), std::string(1, segment.kind));
        Put(design, "Program", At(i), std::string(segment.program));
        Put(design, "Beta_Deg", At(i), segment.beta);
        Put(design, "Start Value", At(i), position(segment.start));
        Put(design, "End Value", At(i), position(segment.end));
    }
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
    Put(design, "Deltatheta", 1.0);
    Put(design, "Shaft speed", example.omega);
    Put(design, "Camtype$", "Radial");
    Put(design, "Rotflag", -1);
    Put(design, "Translating", example.oscillating ? 0 : 1);
    Put(design, "Prime_Rad", Shop_Prime_Radius(design, example.prime_radius));
    Put(design, "Followtype", example.name == "Flat Follower" ? 2 : 1);
    Put(design, "Offset", Shop_Length(design, example.offset));
    const Roller_Sizes usual = Usual_Roller(design);
    Put(design, "Follow_Rad", usual.roller * example.roller_factor);
    Put(design, "Cutter Radius", usual.cutter);
    if (example.oscillating) {
        Put(design, "ArmX", Shop_Length(design, 4.0));
        Put(design, "ArmY", Shop_Length(design, 2.5));
        Put(design, "ArmRad", Shop_Length(design, 4.0));
        Put(design, "ArmDirect", -1);
    }
    if (const Linkage_of_Example* const linkage = Linkage_of(example.name))
        Put_Linkage(design, *linkage);
    Fill_Table(design, example);
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
