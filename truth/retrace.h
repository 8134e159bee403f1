// SPDX-License-Identifier: GPL-3.0-or-later
/// The lift that a surface gives back: the follower is laid on it by collision, at any cam angle, whatever the surface
/// was made from. docs/theory.md, 17.4.
#pragma once

#include <cstddef>
#include <limits>
#include <span>
#include <vector>

#include "truth/true_cam.h"

namespace lobemax {

/// From one point to the next, straight or by an arc.
struct Surface_Element {
    Vector from;
    Vector to;
    double bulge = 0.0;  // tangent of a quarter of the arc's angle, positive counterclockwise; 0 straight
};

/// A surface as a shop cuts it: lines and arcs in the coordinates of True_Cam. One of an axial cam goes round the drum.
class Surface_Path {
public:
    explicit Surface_Path(std::vector<Surface_Element> elements);

    /// Straight from point to point, and from the last to the first. @param around  of an axial cam the length of its
    /// turn, which the first point is moved on by; 0 of a disk
    /// @param hollow  the sense, +1 or -1, in which the surface turns where it is hollow: arcs span it there, since
    /// lines
    ///                would stand out of it; 0: lines everywhere
    static Surface_Path Through(std::span<const Vector> points, double around = 0.0, int hollow = 0);

    std::span<const Surface_Element> Elements() const { return elements_; }

    /// Consecutive elements: all of them lie within a circle, and within a depth of the straight line from the start of
    /// the first to the end of the last.
    struct Block {
        Vector center;
        double radius = 0.0;
        Vector from;
        Vector to;
        double depth = 0.0;
    };
    static constexpr std::size_t Block_Size = 8;  // elements
    static constexpr std::size_t Group_Size = 8;  // blocks
    std::span<const Block> Blocks() const { return blocks_; }
    std::span<const Block> Groups() const { return groups_; }

    /// No point of it is further from the origin.
    double Extent() const { return extent_; }

private:
    std::vector<Surface_Element> elements_;
    std::vector<Block> blocks_;
    std::vector<Block> groups_;
    double extent_ = 0.0;
};

/// What the follower does on a surface.
struct Retraced {
    std::vector<double> s;  // length, or radians of an arm, at each angle; no number where the follower meets nothing
    std::vector<std::size_t> contact;  // the element that is touched
    double largest_error = 0.0;        // of these against the motion, in their unit; infinite where it meets nothing
    double at = 0.0;                   // degrees
};

/// Where a re-tracing looks: it leaves out what cannot touch, by bounds that hold whatever the surface is. Everywhere
/// is slow and finds the same.
enum class Looking { where_it_may_touch, everywhere };

/// @param angles  degrees, in rising order
Retraced Retrace(const True_Cam& cam, const Surface_Path& surface, std::span<const double> angles,
                 Looking looking = Looking::where_it_may_touch);
/// The same by any mechanism, as the drum unrolled.
/// @param wanted  the motion's displacement at each angle
Retraced Retrace(const Mechanism& follower, const Surface_Path& surface, std::span<const double> angles,
                 std::span<const double> wanted, Looking looking = Looking::where_it_may_touch);

/// What is left of the points of a surface when the follower's places at the given angles have cut it: those that none
/// of them covers. Depths below the bound count as touching. (238)
std::vector<Vector> Points_left(const True_Cam& cam, std::span<const True_Point> points, double bound);

}  // namespace lobemax
