// SPDX-License-Identifier: GPL-3.0-or-later
/// What the commands that draw share: Qt without a display, the size of a picture, the ending of its file.
#pragma once

#include <CLI/CLI.hpp>
#include <QSize>
#include <QString>
#include <functional>
#include <optional>
#include <string>

namespace lobemax::cli {

class Session;

/// Where a picture goes and how large it is.
struct Picture_Options {
    std::string output;
    std::string size;    // "WxH" in points, 50 to 10000 each way
    double scale = 1.0;  // pixels a point of a PNG
};

/// The options -o, --size and --scale.
/// @param size  where none is given
void Add_Picture_Options(CLI::App& command, Picture_Options& options, const std::string& size);

/// Why the options make no picture, or empty: its name does not end in .png, .svg or .pdf, or the size is none.
std::string Refused_Picture(const Picture_Options& options);

/// The size of options that are not refused.
QSize Picture_Size(const Picture_Options& options);

/// Runs work, which writes a picture to a path whole or not at all, with Qt at hand: with the application object that
/// there is, else with one that needs no display. Pictures have black letters on white paper, and what Qt says
/// meanwhile is left out.
///
/// @param work  whether the file was written; none: there is no picture, and the user was told why. why: out, what went
///              wrong where it was not written
/// @return      the command's status
int Draw_to_File(const Session& session, const std::string& path,
                 const std::function<std::optional<bool>(const std::string& path, std::string& why)>& work);

}  // namespace lobemax::cli
