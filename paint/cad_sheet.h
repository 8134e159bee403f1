// SPDX-License-Identifier: GPL-3.0-or-later
/// The drawing sheet of a cam as a PDF file: frame, title block, the cam at a standard scale, its radii as a table and
/// what a shop asks for.
#pragma once

#include <QPainter>
#include <QRectF>
#include <string>

#include "forms/cad_form.h"

namespace lobemax::paint {

/// Where everything of a sheet stands: millimetres from its upper left corner.
struct Sheet_Layout {
    double width = 0.0;
    double height = 0.0;
    QRectF frame;
    QRectF field;  // of the drawing
    QRectF radii;
    QRectF data;
    QRectF title;
    int blocks = 1;           // of the table of radii, side by side
    int lines = 0;            // of a block
    double scale = 1.0;       // millimetres on paper of one on the cam
    std::string scale_words;  // "1:2"
    QPointF origin;           // where the cam centre stands
    std::string refusal;      // why it does not fit; a sentence
};

/// Paper by its name, landscape but for A4; the scale that is wanted or the first that fits: 1:1, a small cam enlarged
/// to 2:1 or 5:1, a large one at 1:2, 1:5, 1:10.
Sheet_Layout Lay_Out(const Cad_Sheet& sheet);

/// Paints a sheet; a unit of the painter is a millimetre.
void Paint_Sheet(const Cad_Sheet& sheet, const Sheet_Layout& layout, QPainter& painter);

/// The bytes of a sheet as a PDF file; paper and scale go into the facts. @return why it does not fit, else empty
std::string Make_Sheet(const Cad_Sheet& sheet, std::string& bytes, Cad_Facts& facts);

}  // namespace lobemax::paint
