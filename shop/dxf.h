// SPDX-License-Identifier: GPL-3.0-or-later
/// Curves as a drawing exchange file of release AC1024 (2010): text in UTF-8, lines end with CR LF.
#pragma once

#include <string>
#include <string_view>

#include "shop/curve_set.h"

namespace lobemax {

/// The whole file: sections HEADER, CLASSES, TABLES, BLOCKS, ENTITIES, OBJECTS, with all that a strict reader asks for;
/// the facts in front of them as comments (999). $INSUNITS is the unit of the design. Layers are those of Curve_Layer,
/// in their order and all of them. Arcs are LWPOLYLINEs with bulges, lines such without, splines SPLINEs; circles
/// CIRCLEs, the marks LINEs and TEXTs. The same set gives the same bytes.
std::string Dxf_Text(const Curve_Set& set, std::string_view file_name);

}  // namespace lobemax
