// SPDX-License-Identifier: GPL-3.0-or-later
/// The curves of a cam that a shop works from: surface, roller centre, cutter, by the true geometry; circles, bore and
/// keyway. Coordinates and lengths are those of True_Cam.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "shop/biarcs.h"
#include "truth/true_cam.h"

namespace lobemax {

struct Design_State;

/// What a curve is, in the order in which files have them.
enum class Curve_Layer { surface, pitch, cutter, base, prime, shaft, keyway, notes };
inline constexpr int Curve_Layers = 8;
/// "SURFACE", "PITCH", ...
std::string_view Name_of(Curve_Layer layer);

/// Each of these asks the cam, which has to live as long. Dwells are exact stretches, the segments' joints breaks. Of a
/// disk cam they are closed; a barrel or linear cam is unrolled, from cam angle 0 to a turn of Turn_of.

/// The flank in use. Of a barrel where it meets the cylinder of the prime radius.
Shop_Curve Surface_of(const True_Cam& cam);
/// A flank of a groove. @param side  +1 below the roller, -1 above. @throws Fault{5} of a disk cam
Shop_Curve Flank_of(const True_Cam& cam, int side);
/// The roller's centre. @throws Fault{5} of a flat face, which has none
Shop_Curve Pitch_of(const True_Cam& cam);
/// The centre of a cutter or wheel of a radius on the flank in use. A drum is cut by a cutter of the roller's size
/// alone: its walls have another shape at every depth.
/// @throws Fault{5} for a radius below 0, or another than the roller's on a drum
Shop_Curve Cutter_of(const True_Cam& cam, double radius);

/// The way round a drum at its prime radius, the length of a linear cam; 0 of a disk cam.
double Turn_of(const True_Cam& cam);
/// The radius that the surface of a disk cam has at rest: prime radius less or, of an outer surface, plus that of the
/// roller.
double Base_Radius(const True_Cam& cam);

/// Where the cam's surface is hollower than a cutter: degrees of cam angle, and the radius of the hollow there.
struct Narrow_Hollow {
    double theta = 0.0;
    double radius = 0.0;
};
/// The narrowest hollow of the flank in use that a cutter does not reach into, at even quarters of a degree.
std::optional<Narrow_Hollow> Hollow_below(const True_Cam& cam, double radius);

/// Where the segments begin: degrees; a motion that was made from the rows has none.
std::vector<double> Segment_Starts(const True_Motion& motion);

/// The hole for the shaft. Lengths of the design.
struct Bore {
    double diameter = 0.0;  // 0: none
    bool keyway = false;
    double width = 0.0;  // of the keyway; 0: the usual one of the diameter
    double depth = 0.0;  // beyond the bore, on the middle line; 0: the usual one
};
struct Keyway_Size {
    double width = 0.0;
    double depth = 0.0;
};
/// The usual keyway of a bore in the hub: parallel keys of DIN 6885-1 for bores above 6 mm, in inches and feet square
/// keys of ANSI B17.1 for bores above 5/16 in with a clearance of 0.005 in; none beyond their ranges.
std::optional<Keyway_Size> Usual_Keyway(double diameter, int units);

/// Where the middle of the keyway lies in the coordinates of the cam, degrees: its clock time at machine zero.
double Keyway_Angle(const Design_State& design);

/// Bore and keyway in one outline: counterclockwise from the keyway's right corner on the bore; sizes above 0.
/// @throws Fault{5} for a keyway as wide as the bore
std::vector<Surface_Element> Keyway_Outline(double diameter, Keyway_Size size, double angle);

}  // namespace lobemax
