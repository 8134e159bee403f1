// SPDX-License-Identifier: GPL-3.0-or-later
/// The motion programs: closed-form laws that give S, V, A, J and Ping over one segment of the cam cycle.
///
/// A law works in local terms: local angle 0..beta, derivatives per radian. It knows neither the time base
/// nor the shaft speed nor where its segment stands in the cycle; storing the point takes care of those.
#pragma once

#include <span>
#include <string_view>

#include "core/design_state.h"

namespace lobemax {

/// One entry of the list that the user picks a segment's program from.
struct Motion_Program {
    int position;                  // place in the list, counted from 0
    std::string_view code;         // two letters
    std::string_view list_text;    // as the list shows it
    std::string_view stored_text;  // as Function holds it after the pick
    int Seg_Program;
    int Full_Half;
    int Which_half;          // 0: the segment keeps what it had
    std::string_view kinds;  // the motion kinds it serves, of "RFPDS"
};

/// The whole list, in its order.
std::span<const Motion_Program> Motion_Programs();

/// The program of a two-letter code in upper or lower case; none for any other text.
const Motion_Program* Find_Program(std::string_view code);

/// Gives segment 1..20 a program by its two-letter code. PO, DW and BS bring their motion kind with them.
///
/// @return false for an unknown code, with nothing changed
/// @throws Fault{9} when there is no such segment
bool Pick_Program(Design_State& design, int Seg, std::string_view code);

/// Gives segment 1..20 a motion kind by its letter R, F, P, D or S, in upper or lower case. The kinds P, D
/// and S have one program each and pick it; a rise or a fall waits for its program, Program is empty.
///
/// @return false for an unknown letter, with nothing changed
/// @throws Fault{9} when there is no such segment
bool Pick_Motion(Design_State& design, int Seg, char kind);

/// Beta_Sq and Beta_Cu of the segment at work, from its Beta_Rad, radians squared and cubed.
void Load_Beta(Design_State& design);

/// Runs the law of a segment over all its points, then fills Firstlast of the segment and Liftmax.
///
/// The segment becomes the one at work. L is Lift, the duration stands in Beta_Deg and Beta_Rad. Polynomial
/// and spline segments, and selectors without a law, store no point here.
///
/// @return false when the law reported a fault under its own name: the segment is not calculated
/// @throws Fault{9} when there is no such segment 1..20
/// @throws Fault of the laws that leave the report to the caller, and of the store; 6 for a beta of zero
bool Run_Motion_Program(Design_State& design, int Seg);

/// Polydyne polynomial 2-p-q-r over the segment at work, q = p + 2, r = p + 4; p is at least 4.
/// Function becomes the text of r. Returns false after a fault that it reported.
bool Dudley(Design_State& design, Single p);

/// Polynomial 2-p-q-r-s over the segment at work. Function becomes the text of r. Returns false after a
/// fault that it reported.
bool Thoren(Design_State& design, Single p, Single q, Single r, Single s);

/// Holds the segment at work at one position, which becomes its Total_Displacement.
void Dwell(Design_State& design, Single value);

}  // namespace lobemax
