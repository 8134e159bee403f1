// SPDX-License-Identifier: GPL-3.0-or-later
/// The true geometry of a cam: from the follower's motion and its mechanism alone, in double, at any cam angle. Beside
/// it stand the rows of sizing and profile, which depart from it in some configurations on purpose (docs/theory.md, 6
/// to 8).
///
/// Coordinates are those of the profile rows versus cam zero. A disk cam has x, y about its centre. A barrel or linear
/// cam has along = prime radius times Lambda in radians, and Z: the drum unrolled. Lengths in the design's unit.
/// docs/theory.md, 17.
#pragma once

#include <limits>

#include "truth/true_motion.h"
#include "truth/vector.h"

namespace lobemax {

struct Design_State;

enum class Cam_Body { disk, barrel, linear };

/// The mechanism that moves over the cam.
struct Mechanism {
    explicit Mechanism(const Design_State& design);

    Cam_Body body = Cam_Body::disk;
    bool roller = true;
    bool arm = false;
    int rot = -1;     // sense of the cam, +1 counterclockwise
    int swing = 1;    // sense of the arm in a rise; a conjugate's is the opposite
    int z_sense = 1;  // of an axial cam: that of its rows, which an arm with a clockwise rise counts downwards
    int side = 1;     // +1: the material lies on the inner side of the centre path, or below it; -1: on the other
    double prime = 0.0;
    double roller_radius = 0.0;  // 0 of a flat face
    double cutter = 0.0;
    double offset = 0.0;   // of the axis, or of the face from the pivot towards the cam
    double pivot_x = 0.0;  // of the arm
    double pivot_y = 0.0;
    double arm_length = 0.0;
    double pivot_distance = 0.0;  // from the cam centre
    double pivot_angle = 0.0;     // radians
    double rest = 0.0;            // at displacement 0: height of the roller centre or face, or the arm's angle, radians
    bool reaches = true;          // false: an arm that cannot stand on the prime circle

    /// The sense in which the surface, followed with the cam angle, turns where it is hollow: +1 counterclockwise.
    int Hollow_Sense() const { return body == Cam_Body::disk ? rot * side : side; }

    /// Where the roller centre stands at a displacement, in the machine: about the cam centre, or lateral and Z.
    Vector Center(double s) const;
};

/// The cam and its follower at one angle.
struct True_Point {
    double theta = 0.0;  // degrees
    double s = 0.0;      // displacement: length, or radians of an arm
    Vector center;       // roller centre; of a flat face its foot below the cam centre
    Vector surface;      // contact
    Vector normal;       // of the cam's centre path, unit: away from the cam centre, or upwards
    double Phi = 0.0;    // degrees, between the normal and the way of the roller, signed as the row
    double Rho = 0.0;    // radius of curvature of the centre path, of a flat face's surface; infinite where straight
    double Rho_Surface = 0.0;  // of the surface, positive where the material is convex
    double along = 0.0;        // flat face: contact from the stem's axis, or from the arm's pivot, along the face
};

/// A point of the wall that a roller leaves at a depth.
struct Wall_Point {
    double radius = 0.0;  // from the cam's axis
    double Lambda = 0.0;  // degrees
    double Z = 0.0;
    Vector tangent;  // unit, unrolled: of the wall's section with the cylinder of this radius, the way Lambda runs
};

class True_Cam {
public:
    /// @throws Fault as True_Motion's; Fault{5} for an arm that cannot stand on the prime circle, an offset above the
    ///         prime radius
    explicit True_Cam(const Design_State& design);

    const Mechanism& Follower() const { return follower_; }
    const True_Motion& Motion() const { return motion_; }

    /// @param theta  degrees
    True_Point At(double theta) const;
    /// The same with the motion of that angle at hand.
    True_Point At(double theta, const Follower_Point& motion) const;
    /// The same without the pressure angle, and on a drum without the surface: what else there is costs half as much.
    True_Point Path_At(double theta, const Follower_Point& motion) const;

    /// Centre of a cutter or wheel of a radius that touches the surface at the point.
    Vector Cutter(const True_Point& point, double radius) const;

    /// The wall of a barrel cam at a point, right at every depth: the place along the roller's axis is told as its
    /// distance from the cam's axis. @param side  +1 the wall below the roller, -1 the one above
    Wall_Point Wall(double theta, int side, double depth) const;

    /// The same where the wall meets the cylinder of a radius.
    Wall_Point Wall_at_Radius(double theta, int side, double radius) const;
    /// The same with the motion of that angle at hand.
    Wall_Point Wall_at_Radius(double theta, const Follower_Point& motion, int side, double radius) const;

private:
    True_Point Of_Center(double theta, const Follower_Point& motion, bool whole) const;
    True_Point Of_Face(double theta, const Follower_Point& motion) const;

    True_Motion motion_;
    Mechanism follower_;
};

}  // namespace lobemax
