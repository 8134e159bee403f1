// SPDX-License-Identifier: GPL-3.0-or-later
/// The bytes of a solid's files. The same solid, name, date and time give the same bytes.
#pragma once

#include <TopoDS_Solid.hxx>
#include <string>

namespace lobemax {

/// What a file tells of itself.
struct Solid_Names {
    std::string product;
    std::string file;  // its name without folders
    std::string date;  // 2026-11-22
    std::string time;  // 10:30:00
    bool inches = false;
};

/// STEP, AP214. @param solid  in millimetres. @return why there is none; empty where there is
std::string Step_Bytes(const TopoDS_Solid& solid, const Solid_Names& names, std::string& bytes);

struct Stl_Triangles {
    int count = 0;
    double largest_deviation = 0.0;  // from the faces, mm: at middles of triangles and their sides
};

/// Binary STL in millimetres or inches. @param deflection  largest distance of a triangle from its face, mm
/// @return why there is none; empty where there is
std::string Stl_Bytes(const TopoDS_Solid& solid, const Solid_Names& names, double deflection, std::string& bytes,
                      Stl_Triangles& triangles);

}  // namespace lobemax
