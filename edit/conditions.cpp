// SPDX-License-Identifier: GPL-3.0-or-later
#include "edit/conditions.h"

#include <algorithm>
#include <string>

#include "core/text.h"
#include "core/traps.h"
#include "edit/door.h"
#include "motion/motion_programs.h"
#include "motion/polynomial.h"
#include "motion/spline.h"

namespace lobemax {

namespace {

constexpr double least_integer = -32768.0;
constexpr double largest_integer = 32767.0;

void Warn(std::string_view text)
{
    Show_Message(std::string(text), Buttons::OK, Symbol::exclamation);
}

}  // namespace

bool Set_No_of_Conditions(Design_State& design, int Seg, std::string_view text)
{
    bool accepted = false;
    Trap("txt_NoConds", [&] {
        Check_Segment(Seg);
        if (text.empty()) {
            accepted = true;
            return;
        }
        const double count = Val(design, text);
        if (const Verdict verdict = No_of_Conditions_may_be(count); !verdict) {
            Show_Refusal(verdict);
            return;
        }
        Put(design, "No of conditions", At(Seg), std::to_string(int{To_Integer(count)}));
        accepted = true;
        if (Count_Filled_Boxes(design, Seg) > design.motion.No_Conditions(Seg))
            Warn("You have input more boundary conditions than specified");
    });
    return accepted;
}

bool Set_Order(Design_State& design, int Seg, std::string_view text)
{
    bool taken = false;
    Trap("txt_Order", [&] {
        Check_Segment(Seg);
        int order = To_Integer(std::clamp(Val(design, text), least_integer, largest_integer));
        if (order < Min_Spline_Order) {  // typed, also where the conditions are too few for an order of four
            Warn(Order_Too_Low);
            return;
        }
        const Verdict verdict = Order_may_be(design, Seg, order);
        if (!verdict) {
            Show_Refusal(verdict);
            order = Requested_Conditions(design, Seg);
        }
        Put(design, "Orders", At(Seg), order);
        Put(design, "EvenKnots", At(Seg), 1);
        Lay_Even_Knots(design, Seg);  // the count of conditions may be another one since
        taken = Knot_Count_Allowed(design, Seg) && verdict;
    });
    return taken;
}

bool Set_Knot(Design_State& design, int Seg, int interior, std::string_view text)
{
    bool taken = false;
    Trap("txt_Knot", [&] {
        Check_Segment(Seg);
        Lay_Knots(design, Seg);
        if (!Knots_Fit_Table(design, Seg)) {
            Knot_Count_Allowed(design, Seg);
            return;
        }
        Checked_Place(interior, 1, design.motion.Interior_Knots(Seg));
        const int knot = design.motion.Orders(Seg) + interior;
        if (const Verdict verdict = Put(design, "Knots", At(knot, Seg), Single(Val(design, text))); !verdict) {
            Show_Refusal(verdict);
            return;
        }
        Put(design, "EvenKnots", At(Seg), 0);  // also one that was typed where it stood
        taken = true;
    });
    return taken;
}

}  // namespace lobemax
