// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/continuity.h"

#include <algorithm>
#include <cmath>

#include "core/messages.h"
#include "core/numeric.h"
#include "core/text.h"

namespace lobemax {

namespace {

constexpr std::array derivative_names{"S", "V", "A"};

/// Jump at the end of a segment; the last one meets the first.
double Jump_at_End(const Design_State& design, const Segment_Ends& Firstlast, int segment, int derivative)
{
    const int next = segment == design.motion.No_of_segments ? 1 : segment + 1;
    return std::abs(Firstlast(segment, 2, derivative) - Firstlast(next, 1, derivative));
}

}  // namespace

void ContinuityCheck(const Design_State& design, const Segment_Ends& Firstlast, Flag& Continuous,
                     Bounded<Single, 0, 2>& Max_Jump)
{
    const Motion_Group& m = design.motion;
    Continuous = true;
    for (int d = 0; d <= 2; ++d) {
        Max_Jump(d) = 0.0;
        for (int i = 1; i <= m.No_of_segments; ++i) {
            const double jump = Jump_at_End(design, Firstlast, i, d);
            if (jump > m.Jump_Limit)
                Continuous = false;
            Max_Jump(d) = std::max<double>(Max_Jump(d), jump);
        }
    }
}

int Worst_Joint(const Design_State& design, int derivative)
{
    const Motion_Group& m = design.motion;
    int worst = 0;
    double largest = 0.0;
    for (int i = 1; i <= m.No_of_segments; ++i)
        if (const double jump = Jump_at_End(design, m.Firstlast, i, derivative); jump > largest) {
            largest = jump;
            worst = i;
        }
    return worst;
}

double Largest_Absolute(const Design_State& design, int variable)
{
    Single largest;
    Single smallest;
    MaxMin1(design.results.CalcData.Points(variable), 0, design.motion.Max_Data_Points_used, largest, smallest);
    return std::max(std::abs(double{largest}), std::abs(double{smallest}));
}

double Jump_Percent(const Design_State& design, int derivative)
{
    const double peak = Largest_Absolute(design, var::S + derivative);
    return peak == 0.0 ? 0.0 : design.motion.Max_Jump(derivative) / peak * 100.0;
}

std::string Continuity_Text(const Design_State& design)
{
    const Motion_Group& m = design.motion;
    if (m.Continuous)
        return "The small discontinuities seen in S, V, and A\n"
               "are due to computational roundoff error\n"
               "and can be safely ignored.  Jerk discontinuities\n"
               "are not critical to proper function.";
    std::string text =
        "There may be a problem with your cam design.\n"
        "One or more of your segment boundaries is discontinuous.";
    for (int d = 0; d <= 2; ++d)
        if (m.Max_Jump(d) > m.Jump_Limit)
            text += std::string("\nThe largest discontinuity between adjacent ") +
                    derivative_names.at(static_cast<std::size_t>(d)) +
                    " values is: " + Trim(FNRoundStr(design, m.Max_Jump(d), 6)) + ",   or  " +
                    Trim(FNRoundStr(design, Jump_Percent(design, d), 4)) + " % of maximum value.";
    return text +
           "\nIf the percent errors are very small it is due to computational roundoff error."
           "\nClick OK to ignore these discontinuities."
           "\nClick Cancel to return to the SVAJ screen for redesign of the cam program.";
}

bool Continuity_Report(Design_State& design)
{
    Motion_Group& m = design.motion;
    ContinuityCheck(design, m.Firstlast, m.Continuous, m.Max_Jump);
    if (m.Continuous) {
        Show_Message(Continuity_Text(design), Buttons::OK, Symbol::information);
        return true;
    }
    return Show_Message(Continuity_Text(design), Buttons::OK_Cancel, Symbol::exclamation) == Answer::OK;
}

}  // namespace lobemax
