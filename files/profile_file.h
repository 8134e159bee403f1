// SPDX-License-Identifier: GPL-3.0-or-later
/// The text file of a measured profile.
#pragma once

#include <optional>
#include <string>

#include "camgeom/profile_import.h"

namespace lobemax {

/// What is larger is no list of a few thousand pairs.
inline constexpr std::size_t Largest_Profile_File = 16U << 20U;  // bytes

/// The text of a file, under the trap "Read_File". @return none after a message
std::optional<std::string> Read_Profile_Text(const std::string& path);

/// The name of a file without its folders, as the messages tell it.
std::string Name_in_Path(const std::string& path);

/// Take_Profile of a file.
bool Take_Profile_File(Design_State& design, const std::string& path, const Import_Choice& choice, Profile& profile);

}  // namespace lobemax
