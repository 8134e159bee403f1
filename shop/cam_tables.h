// SPDX-License-Identifier: GPL-3.0-or-later
/// The motion as tables for controllers, and lift tables for grinders and engines. docs/theory.md, 21.6.
#pragma once

#include <optional>
#include <vector>

#include "core/text.h"
#include "shop/machine_file.h"

namespace lobemax {

enum class Table_Form {
    csv,              // lines of text
    structured_text,  // IEC 61131-3: constants in a VAR_GLOBAL
};

/// What a table's numbers are in structured text.
enum class Plc_Number { REAL, LREAL, INT, DINT };

/// Points of a motion at even steps of the cam angle.
struct Motion_Table_Options {
    Table_Form form = Table_Form::csv;
    int points = 1024;          // of the turn: a power of two, 256 to 8192
    bool closing_point = true;  // the first point again, at 360 degrees
    char separator = ';';       // csv
    Decimal_Symbol decimal = Decimal_Symbol::point;
    bool derivatives = false;  // csv: velocity and acceleration per degree of cam beside the position
    std::string name = "Cam";  // structured text: of the constants
    Plc_Number number = Plc_Number::LREAL;
    double scale = 0.0;  // counts of a unit of position, of integers; 0: the largest power of ten that fits
};
/// Position of the follower, in length or degrees, from the motion itself and not from the stored rows.
Machine_File Motion_Table(const Design_State& design, const Motion_Table_Options& options);

/// A motion as polynomials s = c0 + c1 x + c2 x^2 ..., x = (cam angle - start) / beta. (316)
struct Motion_Piece {
    double start = 0.0;  // degrees
    double beta = 0.0;
    std::vector<double> coefficients;  // in the unit of position
    double error = 0.0;                // largest departure from the motion
};
/// Dwells, the laws that are polynomials, polynomials and splines through conditions.
/// @param why  the sentence about what is none @return none then
std::optional<std::vector<Motion_Piece>> Pieces_of(const Design_State& design, std::string& why);

struct Piece_Table_Options {
    Table_Form form = Table_Form::csv;
    char separator = ';';
    Decimal_Symbol decimal = Decimal_Symbol::point;
    std::string name = "Cam";
};
Machine_File Piece_Table(const Design_State& design, const Piece_Table_Options& options);

/// Lift over the cam angle from the nose, which is at 0: what grinders and engine builders read.
struct Lift_Table_Options {
    double step = 1.0;     // degrees, a part of 180, 1 or less
    double at_lift = 0.0;  // of the duration; 0: a tenth of the lift
    char separator = ';';
    Decimal_Symbol decimal = Decimal_Symbol::point;
};
Machine_File Lift_Table(const Design_State& design, const Lift_Table_Options& options);

}  // namespace lobemax
