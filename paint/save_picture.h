// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

#include "paint/picture_file.h"

namespace lobemax::paint {

/// Writes a picture to a path. @param why  out: what went wrong @return whether the file was written
using Picture_Writer = std::function<bool(const std::string& path, std::string& why)>;

/// Asks for the name of a picture, PNG, SVG or PDF, and writes it; what goes wrong is told.
void Save_Picture_As(const std::string& title, const Picture_Writer& write);

/// Asks for the name of a PDF file and writes pages to it; what goes wrong is told.
/// @param suggestion  the name to begin with
/// @param letter      the paper: letter, else A4
void Save_Pages_As(const std::string& title, const std::string& suggestion, const Page_Maker& make, bool letter);

}  // namespace lobemax::paint
