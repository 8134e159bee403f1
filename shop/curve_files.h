// SPDX-License-Identifier: GPL-3.0-or-later
/// Files of curves: drawing exchange, points for CAD, tables, pictures in true size; each with the text beside it that
/// tells what was written. All numbers with a point, none with an exponent. The same design, choice, date and time give
/// the same bytes.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "shop/curve_set.h"

namespace lobemax {

struct Design_State;

/// The facts of a set with its file's name before them.
std::vector<std::pair<std::string, std::string>> Facts_of(const Curve_Set& set, std::string_view file_name);
/// A line each, "Name: words", with CR LF.
std::string Text_of_Facts(const std::vector<std::pair<std::string, std::string>>& facts);

/// A picture in true size: width, height and coordinates in millimetres, a margin of 5; each layer a group of its name;
/// arcs are arcs. A set of splines is drawn by lines between 16 points from knot to knot.
std::string Svg_Text(const Curve_Set& set, std::string_view file_name);

/// Points of one curve at even cam angles.
struct Point_Choice {
    Curve_Layer layer = Curve_Layer::surface;  // surface, pitch or cutter
    int flank = 0;        // of a barrel or linear cam +1 below, -1 above the roller; 0: the one in use
    double cutter = 0.0;  // radius of that layer
    double step = 0.0;    // degrees; 0: that of the design
    int units = 0;        // unit system whose length unit is written; 0: the design's
    bool though_do_not_cut = false;
};

/// Places of a file of points.
struct Curve_Points {
    struct Row {
        double theta;  // degrees
        Vector plane;
        double tangent;   // direction of the curve, degrees from x
        double space[3];  // of a drum round its axis Z; else x, y, 0
    };
    std::vector<Row> rows;  // the last closes the curve: of a disk cam and of a drum it is the first again
    Cam_Body body = Cam_Body::disk;
    int units = 5;
    std::vector<std::pair<std::string, std::string>> facts;
};
struct Made_Points {
    std::optional<Curve_Points> points;
    std::string refusal;
};

/// Refused as Make_Curve_Set, and for a step that is none.
Made_Points Make_Curve_Points(const Design_State& design, const Point_Choice& choice);

/// Three columns x, y, z with blanks between, no head: of a disk cam z is 0; a drum's curve lies on the cylinder of the
/// prime radius about Z, turned with Lambda against the cam's rotation; a linear cam's x runs along, y is 0.
std::string Xyz_Text(const Curve_Points& points);

/// Heads and units in the first line: angle, coordinates in the plane, direction of the curve.
std::string Csv_Text(const Curve_Points& points);

/// Where the text beside a file goes: the file's name with .txt in place of its extension; where a file stands there
/// that is not the text of this file, .txt is put behind the whole name.
std::string Path_of_Text(const std::string& path);

/// Writes a file and the text beside it, the text first; each whole or not at all. @return the text's path
/// @throws Fault as Write_Whole_File
std::string Write_with_Text(const std::string& path, std::string_view bytes,
                            const std::vector<std::pair<std::string, std::string>>& facts);

}  // namespace lobemax
