// SPDX-License-Identifier: GPL-3.0-or-later
/// What the commands that draw share: the size of a picture, the ending of its file, what is told of it.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <optional>
#include <string>

#include "cli/drawing.h"

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

/// The picture of options that are not refused.
Picture Picture_of(const Picture_Options& options);

/// Tells that a file cannot be written, and returns the status for it. @param why  what went wrong, or empty
int Not_Written(const Session& session, const std::string& path, const std::string& why);

/// Lets work write a picture to a path, whole or not at all, and tells where it could not.
///
/// @param work  whether the file was written; none: there is no picture, and the user was told why. why: out, what went
///              wrong where it was not written
/// @return      the command's status
int Draw_to_File(const Session& session, const std::string& path,
                 const std::function<std::optional<bool>(Drawing& drawing, std::string& why)>& work);

}  // namespace lobemax::cli
