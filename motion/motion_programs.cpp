// SPDX-License-Identifier: GPL-3.0-or-later
#include "motion/motion_programs.h"

#include <algorithm>
#include <array>
#include <string>

#include "core/text.h"

namespace lobemax {

namespace {

constexpr std::array<Motion_Program, 23> programs{{
    {0, "MS", "MS - Mod Sine", "MS - Mod Sine", selector::mod_sine, 1, 0, "RF"},
    {1, "MT", "MT - Mod Trap", "MT - Mod Trap", selector::mod_trap, 1, 0, "RF"},
    {2, "CF", "CF - Cycloid Full", "CF - Cycloid Full", selector::cycloid, 1, 0, "RF"},
    // The blank at the end of this list entry is meant; what is stored goes without it.
    {3, "C1", "C1 - Cycloid 1st Half ", "C1 - Cycloid 1st Half", selector::cycloid, 2, 1, "RF"},
    {4, "C2", "C2 - Cycloid 2nd Half", "C2 - Cycloid 2nd Half", selector::cycloid, 2, 2, "RF"},
    {5, "SF", "SF - SHM Full", "SF - SHM Full", selector::shm, 1, 0, "RF"},
    {6, "S1", "S1 - SHM 1st Half", "S1 - SHM 1st Half", selector::shm, 2, 1, "RF"},
    {7, "S2", "S2 - SHM 2nd Half", "S2 - SHM 2nd Half", selector::shm, 2, 2, "RF"},
    {8, "DH", "DH - Double Harmonic", "DH - Double Harmonic", selector::double_harmonic, 1, 0, "RF"},
    {9, "PO", "PO - Polynomial", "PO - Polynomial", selector::polynomial, 1, 0, "P"},
    {10, "DW", "DW - Dwell", "DW - Dwell", selector::dwell, 1, 0, "D"},
    {11, "45", "45 - 345 Poly", "45 - 345 Poly", selector::poly_345, 1, 0, "RF"},
    {12, "56", "56 - 3456 Poly", "56 - 3456 Poly", selector::poly_3456, 1, 0, "RF"},
    {13, "67", "67 - 4567 Poly", "67 - 4567 Poly", selector::poly_4567, 1, 0, "RF"},
    {14, "BS", "BS - B-Spline", "BS - B-Spline", selector::spline, 1, 0, "S"},
    {15, "11", "11 - 5-11 Poly", "11 - 5-11 Poly", selector::poly_11, 1, 0, "RF"},
    {16, "BD", "BD - Berzak_D", "BD - Berzak_D", selector::berzak_d, 1, 0, "RF"},
    {17, "BE", "BE - Berzak_E", "BE - Berzak_E", selector::berzak_e, 1, 0, "RF"},
    {18, "DU", "DU - Dudley", "DU - Dudley", selector::dudley, 1, 0, "RF"},
    {19, "ST", "ST - Stoddard", "ST - Stoddard", selector::stoddard, 1, 0, "RF"},
    {20, "TH", "TH - Thoren", "TH - Thoren", selector::thoren, 1, 0, "RF"},
    {21, "FR", "FR - Freudenstein 1-3", "FR - Freudenstein 1-3", selector::freudenstein, 1, 0, "RF"},
    {22, "GU", "GU - Gutman F3", "GU - Gutman F3", selector::gutman, 1, 0, "RF"},
}};

void Set_Program(Design_State& design, int Seg, const Motion_Program& program)
{
    Motion_Group& m = design.motion;
    m.Program(Seg) = program.code;
    m.Function(Seg) = program.stored_text;
    m.Seg_Program(Seg) = program.Seg_Program;
    m.Full_Half(Seg) = program.Full_Half;
    if (program.Which_half != 0)
        m.Which_half(Seg) = program.Which_half;
}

}  // namespace

std::span<const Motion_Program> Motion_Programs()
{
    return programs;
}

const Motion_Program* Find_Program(std::string_view code)
{
    const auto found = std::find_if(programs.begin(), programs.end(),
                                    [&](const Motion_Program& program) { return Same_Text(program.code, code); });
    return found == programs.end() ? nullptr : &*found;
}

void Check_Segment(int Seg)
{
    Checked_Place(Seg, 1, Max_Segments);
}

bool Asks_Conditions(const Design_State& design, int Seg)
{
    const std::string& kind = design.motion.Rise_Fall_Dwell(Seg);
    return kind == "P" || kind == "S";
}

bool Pick_Program(Design_State& design, int Seg, std::string_view code)
{
    Check_Segment(Seg);
    const Motion_Program* const program = Find_Program(code);
    if (program == nullptr)
        return false;
    Set_Program(design, Seg, *program);
    if (program->kinds.size() == 1)
        design.motion.Rise_Fall_Dwell(Seg) = program->kinds;
    return true;
}

bool Pick_Motion(Design_State& design, int Seg, char kind)
{
    Check_Segment(Seg);
    Motion_Group& m = design.motion;
    const std::string letter = To_Upper({&kind, 1});
    switch (letter[0]) {
    case 'R':
    case 'F':
        m.Rise_Fall_Dwell(Seg) = letter;
        m.Function(Seg) = letter;
        m.Program(Seg).clear();
        return true;
    case 'P':
        return Pick_Program(design, Seg, "PO");
    case 'D':
        return Pick_Program(design, Seg, "DW");
    case 'S':
        return Pick_Program(design, Seg, "BS");
    default:
        return false;
    }
}

}  // namespace lobemax
