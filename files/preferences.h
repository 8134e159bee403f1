// SPDX-License-Identifier: GPL-3.0-or-later
/// Preferences.txt: the user's defaults for a new design, and who opens a double-clicked model file.
///
/// Nine records in a fixed order, each a quoted label, a comma and a value: texts in double quotes, flags as #TRUE# or
/// #FALSE#, integers as they are. The folder is the program's own in the user's documents.
#pragma once

#include <string>
#include <string_view>

namespace lobemax {

struct Design_State;

/// The program's folder in a documents folder (without its closing separator): the first seven characters of
/// Program_Name; ends with a separator.
std::string Program_Folder(const Design_State& design, const std::string& documents);

/// Reads the nine records over the fields; where the file is not there makes the folder and writes it. A failure is
/// reported with its stage, and the fields not yet read keep what they had.
/// @return whether the fields are those of the file
bool Read_Preferences(Design_State& design, const std::string& folder);

/// Writes the nine records from the present fields; a failure is reported with its stage.
bool Write_Preferences(Design_State& design, const std::string& folder);

/// The user's list of default applications with the program as the one that opens its model files, or, for any other
/// application than "Lobemax", with none for them: what stands for the file association on this platform.
/// Source: freedesktop.org, Association between MIME types and applications 1.0.1.
std::string Register_Cam_File(std::string_view application, std::string_view extension, const std::string& mimeapps);

/// Brings the user's list of default applications, mimeapps.list in a folder that ends with its separator, up to date.
/// A list that cannot be read whole is left alone; a failure is reported.
void Write_Default_Application(std::string_view application, const std::string& folder);

}  // namespace lobemax
