// SPDX-License-Identifier: GPL-3.0-or-later
/// The curves of a cam as a file has them: fitted, with circles, bore, keyway and marks, and what is to be told of
/// them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "shop/biarcs.h"
#include "shop/bspline_fit.h"
#include "shop/cam_curves.h"

namespace lobemax {

struct Design_State;

/// What a curve is made of.
enum class Curve_Form { arcs, lines, spline };

/// What is wanted. Lengths of the design.
struct Curve_Choice {
    double tolerance = 0.0;  // 0: Usual_Tolerance
    Curve_Form form = Curve_Form::arcs;
    bool pitch = true;               // the roller centre's path, where there is a roller
    std::optional<double> cutter{};  // radius of the cutter whose centre's path is wanted
    bool circles = true;             // base and prime circle
    Bore bore{};                     // of a disk cam
    bool notes = true;               // marks where the segments start
    bool though_do_not_cut = false;  // make it in spite of the check
};

/// A micrometre, 0.00005 in, in the lengths of a unit system.
double Usual_Tolerance(int units);

struct Fitted_Curve {
    Curve_Layer layer = Curve_Layer::surface;
    std::string name;  // "surface", "flank above the roller"
    bool closed = true;
    Arc_Path path;                       // arcs or lines; of a spline empty
    std::optional<Cubic_Spline> spline;  // its form is a spline
    double deviation = 0.0;              // the largest
    double deviation_at = 0.0;           // degrees of cam angle
};

/// About the cam's centre.
struct Set_Circle {
    Curve_Layer layer;
    std::string name;
    double radius;
};

/// A mark at the surface with a text beside it.
struct Mark_Note {
    Vector from;
    Vector to;
    Vector text_at;
    std::string text;
};

struct Curve_Set {
    std::vector<Fitted_Curve> curves;  // in the order of the layers
    std::vector<Set_Circle> circles;
    std::vector<Surface_Element> keyway;  // closed outline of bore and keyway; empty: none
    std::vector<Mark_Note> notes;
    double text_height = 0.0;
    Vector low;  // of the box around all
    Vector high;
    int units = 5;
    std::vector<std::pair<std::string, std::string>> facts;  // name and words, the file's name left out
};

/// The set, or the sentence why there is none.
struct Made_Curves {
    std::optional<Curve_Set> set;
    std::string refusal;
};

/// Refused are a design that is not sized or waits for a recalculation in its units; one whose check says "do not cut",
/// unless told otherwise: findings of the program's own rows do not count, since the curves are not made from them; a
/// tolerance outside Least_Tolerance to Most_Tolerance of the size; a cutter larger than the hollow, or other than the
/// roller on a drum; a bore that leaves no material.
///
/// A disk cam has the flank in use; a barrel or linear cam both flanks of its groove, unrolled, a rib that in use.
Made_Curves Make_Curve_Set(const Design_State& design, const Curve_Choice& choice);

/// Why a design gives no curves, whatever is wanted; empty where it does.
std::string Why_No_Cam(const Design_State& design, bool though_do_not_cut);

/// Why a cutter has no path on a cam; empty where it has.
std::string Why_No_Cutter(const True_Cam& cam, double radius, int units, bool though_do_not_cut);

/// Why a tolerance does not suit a cam of a size; empty where it does.
std::string Why_No_Tolerance(double tolerance, double size, int units);

/// Why a bore has no place; empty where it has. @param least  from the axis to the nearest place of the cam's surface
std::string Why_No_Bore(const Bore& bore, double least, int units);

/// The keyway's sizes that are given, the usual ones of the bore for the others.
Keyway_Size Size_of_Keyway(const Bore& bore, int units);

/// The first place where the way along a curve is turned about, degrees: an undercut.
std::optional<double> Runs_Back(const Curve_Samples& samples);

/// A length with its unit in six figures.
std::string Length_Words(double value, int units);

/// "mm"; what one is in millimetres.
std::string Length_Unit_of(int units);
double Millimetres_per_Unit(int units);

/// The facts that each file opens with: model, design number, date, time, unit.
std::vector<std::pair<std::string, std::string>> Opening_Facts(const Design_State& design);

/// A number without exponent, locale or sign of zero: up to so many decimals, one at least where wanted.
std::string Plain_Number(double value, int decimals = 12, bool one_decimal = true);
/// The same in so many figures.
std::string Plain_Figures(double value, int figures);

}  // namespace lobemax
