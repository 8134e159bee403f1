// SPDX-License-Identifier: GPL-3.0-or-later
/// Pictures for the commands, without a word of Qt: it stands in a library that is loaded at the first picture.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/surface.h"
#include "forms/cad_form.h"
#include "forms/design_report.h"
#include "present/linkage_plots.h"

namespace lobemax::cli {

/// Where a picture goes and how large it is.
struct Picture {
    std::string path;    // its ending tells PNG, SVG or PDF
    int width = 0;       // points
    int height = 0;      // points
    double scale = 1.0;  // pixels a point of a PNG
};

/// What draws. While one stands, Qt is at hand: the application object that there is, or else one that needs no
/// display. Pictures have black letters on white paper, and what Qt says meanwhile is left out. Files are written whole
/// or not at all; each returns whether it was. why: out, what went wrong where it was not.
class Drawing {
public:
    Drawing() = default;
    virtual ~Drawing() = default;
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    /// The picked functions in a style 1..4.
    virtual bool Plot(const Design_State& design, int plot_style, const Picture& picture, std::string& why) = 0;
    /// Functions of the linkage in a style 1..3.
    virtual bool Plot_Links(const Design_State& design, int plot_style, const std::vector<Link_Function>& functions,
                            const Picture& picture, std::string& why) = 0;
    /// @param draw  false: there is no picture, and nothing is written
    virtual bool Draw(const std::function<bool(Surface&)>& draw, const Picture& picture, std::string& why) = 0;
    /// The pages of a report, a PDF file.
    virtual bool Report(const Design_State& design, const Design_Report& report, const std::string& path,
                        std::string& why) = 0;
    /// A Sheet_Maker.
    virtual std::string Sheet(const Cad_Sheet& sheet, std::string& bytes, Cad_Facts& facts) = 0;
};

/// The entry of the library.
using Open_Drawing_Entry = Drawing* (*)();

/// Loads the library and makes its drawing. @param why  out: a sentence where it cannot be had; none is returned then
std::unique_ptr<Drawing> Open_Drawing(std::string& why);

}  // namespace lobemax::cli
