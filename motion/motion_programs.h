// SPDX-License-Identifier: GPL-3.0-or-later
/// The motion programs: the list that the user picks a segment's law from, and what a pick changes.
#pragma once

#include <span>
#include <string_view>

#include "core/design_state.h"

namespace lobemax {

/// The values of Seg_Program.
namespace selector {
inline constexpr int shm = 1;
inline constexpr int cycloid = 2;
inline constexpr int mod_sine = 3;
inline constexpr int mod_trap = 4;
inline constexpr int double_harmonic = 5;
inline constexpr int polynomial = 6;
inline constexpr int dwell = 7;
inline constexpr int poly_345 = 8;
inline constexpr int poly_3456 = 9;
inline constexpr int poly_4567 = 10;
inline constexpr int spline = 11;
inline constexpr int poly_11 = 12;
inline constexpr int berzak_d = 13;
inline constexpr int berzak_e = 14;
inline constexpr int dudley = 15;
inline constexpr int stoddard = 16;
inline constexpr int thoren = 17;
inline constexpr int freudenstein = 18;
inline constexpr int gutman = 19;
}  // namespace selector

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

/// A segment of the table, 1..20. @throws Fault{9} otherwise, before anything is changed
void Check_Segment(int Seg);

/// Whether a segment is given by conditions, which are asked for before its calculation: a polynomial or a spline.
bool Asks_Conditions(const Design_State& design, int Seg);

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

}  // namespace lobemax
