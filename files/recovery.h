// SPDX-License-Identifier: GPL-3.0-or-later
/// The recovery file: unsaved work kept beside the run record, and offered once after a run that did not end properly.
#pragma once

#include <string>

namespace lobemax {

struct Design_State;

/// Names of the two files of a recovery in their folder: the model, and a note of what no model file holds.
inline constexpr const char* Recovery_Model_Name = "Recovery.cam";
inline constexpr const char* Recovery_Note_Name = "Recovery.txt";

/// Whether the design holds work that is on no disk: something was calculated or typed and not saved since.
bool Worth_Recovering(const Design_State& design);

/// Writes the design to the folder's recovery file, whole or not at all, and nothing else: neither Model_Saved nor
/// File_Name changes, and no message comes. With nothing worth keeping an older recovery goes.
///
/// @param folder  an existing folder, ending with its separator
/// @return        false when it could not be written: the older recovery stays
bool Write_Recovery(Design_State& design, const std::string& folder);

/// Drops the recovery, as every proper end and every save does.
void Drop_Recovery(const std::string& folder);

/// After an abnormal exit: asks whether the design found shall be recovered and reads it, unsaved, under the name it
/// had. Either answer drops the recovery file, except where its read failed: then it stays as NAME.bad, and the user is
/// told so.
/// @return true when a design was recovered
bool Offer_Recovery(Design_State& design, const std::string& folder);

}  // namespace lobemax
