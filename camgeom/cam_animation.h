// SPDX-License-Identifier: GPL-3.0-or-later
/// A cam in motion: its frames, the step through the cycle, the run of a whole turn, and how fast that goes. The window
/// of all these pictures is one, so that nothing but the cam and its follower moves.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <vector>

#include "camgeom/cam_drawing.h"
#include "core/basic_types.h"
#include "core/surface.h"

namespace lobemax {

struct Design_State;

/// Degrees of cam from frame to frame of a run.
inline constexpr double Run_Steps = 5.0;

/// The cam turned until point i lies under the follower (Draw_Cam_at).
///
/// A translating follower stays on its axis, an arm turns about its pivot. @return false where there is nothing to draw
/// or no such point
bool Anim_Frame(Design_State& design, Surface& surface, int i, std::span<const Cam_Stretch> warned = {});

/// The cam at rest, in its first position, with the paths that its flags ask for: all around, one outline each
/// Path_Step degrees. In the window of the frames.
bool Anim_Rest(Design_State& design, Surface& surface, std::span<const Cam_Stretch> warned = {});

/// Points from frame to frame: so many degrees, whatever the step of the table. @throws Fault{6}, Fault{11}
Integer Anim_Stride(const Design_State& design, double degrees = Run_Steps);

/// One step: the point whose frame is drawn; Anim_Step then stands at the one behind it. One beyond the cycle's last
/// point is its first.
int Take_Anim_Step(Design_State& design);

/// A run through one cycle, point by point: from 0 on by a stride, as long as there are points.
class Anim_Run {
public:
    explicit Anim_Run(const Design_State& design, double degrees = Run_Steps);
    /// The point of the next frame; none after the last one.
    std::optional<int> Next();

private:
    int next_ = 0;
    int stride_;
    int last_;
};

/// The points of a series of pictures that is shown over and over: those of a run, without the end of the turn where it
/// is its beginning.
std::vector<int> Loop_Points(const Design_State& design, int stride);

/// The choice of speeds (Anim_Wait), larger is slower, and the one of a design that has none of them.
inline constexpr std::array<Long, 6> Anim_Waits{1, 10, 100, 1000, 10000, 100000};
inline constexpr int Usual_Anim_Wait = 2;  // place in the list
/// Place of the design's speed in the list.
int Anim_Wait_Place(const Design_State& design);
/// Milliseconds from frame to frame: 10, 25, 63, 158, 398, 1000 for the speeds of the list.
int Anim_Interval(Long Anim_Wait);

}  // namespace lobemax
