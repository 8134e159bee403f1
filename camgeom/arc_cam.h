// SPDX-License-Identifier: GPL-3.0-or-later
/// Cams made of circular arcs: base circle, two flanks that bulge, a nose. Symmetric about the nose; a flat face or a
/// roller rides on them radially. docs/theory.md, 16.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace lobemax {

/// All lengths in one unit.
struct Arc_Cam {
    double base = 0.0;    // radius of the base circle
    double flank = 0.0;   // radius of the flanks, larger than base and nose
    double nose = 0.0;    // radius of the nose
    double lift = 0.0;    // of a flat face, and of a roller too
    double roller = 0.0;  // radius of the follower's roller; 0: a flat face
};

/// Why such arcs make no cam, in one sentence; empty: they do.
std::string Arcs_may_be(const Arc_Cam& cam);

/// Angles from the nose, degrees: where the nose's arc ends and where the flank's does, the half of the lobe's
/// duration. For a roller the angles of its centre.
struct Arc_Angles {
    double nose_end = 0.0;
    double flank_end = 0.0;
};
Arc_Angles Angles_of(const Arc_Cam& cam);

/// Displacement, and its first two derivatives per radian, at an angle from the nose in radians. (223), (224)
/// Second derivatives jump where arcs meet: the value is that of the arc nearer to the nose.
std::array<double, 3> Lift_of(const Arc_Cam& cam, double angle);

/// Pairs of cam angle and displacement, as a measured profile has them: the nose at a half turn, closed, the last
/// degree being the first again. @param step  degrees, a part of 360
std::string Pairs_of(const Arc_Cam& cam, double step);

}  // namespace lobemax
