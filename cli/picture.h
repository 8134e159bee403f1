// SPDX-License-Identifier: GPL-3.0-or-later
/// What the commands that draw share: Qt without a display, the size of a picture, the ending of its file.
#pragma once

#include <QSize>
#include <functional>
#include <optional>
#include <string>

namespace lobemax::cli {

/// "WxH" as a size in points, 50 to 10000 each way; none for any other text.
std::optional<QSize> Picture_Size(const std::string& text);

/// Whether a path ends in .png, .svg or .pdf.
bool Is_Picture(const std::string& path);

/// Runs work with Qt at hand, without a display. The picture goes to a temporary file of the same ending first, and
/// takes its place when work returns true: a failed command leaves an older file as it was.
/// @return the command's status
int Draw_to_File(const std::string& path, const std::function<bool(const std::string& temporary)>& work);

}  // namespace lobemax::cli
