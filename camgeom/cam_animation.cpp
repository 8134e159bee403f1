// SPDX-License-Identifier: GPL-3.0-or-later
#include "camgeom/cam_animation.h"

#include <algorithm>
#include <cmath>

#include "camgeom/cam_drawing.h"
#include "core/design_state.h"
#include "core/points.h"

namespace lobemax {

bool Anim_Frame(Design_State& design, Surface& surface, int i, std::span<const Cam_Stretch> warned)
{
    return Draw_Cam_at(design, surface, i, warned);
}

bool Anim_Rest(Design_State& design, Surface& surface, std::span<const Cam_Stretch> warned)
{
    return Draw_Cam(design, surface, {.turning_window = true, .whole_paths = true, .warned = warned});
}

Integer Anim_Stride(const Design_State& design, double degrees)
{
    return Point_at(design, degrees);
}

int Take_Anim_Step(Design_State& design)
{
    Integer& step = design.cam.Anim_Step;
    if (step > design.motion.Max_Data_Points_used || step < 0)
        step = 0;
    const int frame = step;
    step = frame + 1;
    return frame;
}

Anim_Run::Anim_Run(const Design_State& design, double degrees)
    : stride_(std::max<int>(Anim_Stride(design, degrees), 1)), last_(design.motion.Max_Data_Points_used)
{
}

std::optional<int> Anim_Run::Next()
{
    if (next_ > last_)
        return {};
    const int point = next_;
    next_ += stride_;
    return point;
}

std::vector<int> Loop_Points(const Design_State& design, int stride)
{
    std::vector<int> points;
    for (int i = 0; i < design.motion.Max_Data_Points_used; i += std::max(stride, 1))
        points.push_back(i);
    return points;
}

int Anim_Wait_Place(const Design_State& design)
{
    const auto found = std::ranges::find(Anim_Waits, design.cam.Anim_Wait);
    return found == Anim_Waits.end() ? Usual_Anim_Wait : static_cast<int>(found - Anim_Waits.begin());
}

int Anim_Interval(Long Anim_Wait)
{
    // The speeds go over five powers of ten, what the eye tells apart over two.
    constexpr double least = 10.0;
    constexpr double power = 0.4;
    return static_cast<int>(std::lround(least * std::pow(std::max(1.0, double(Anim_Wait)), power)));
}

}  // namespace lobemax
