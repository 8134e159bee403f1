// SPDX-License-Identifier: GPL-3.0-or-later
/// The recovery file: unsaved work kept beside the run record, and offered once after a run that did not end properly.
#pragma once

#include <string>

namespace lobemax {

struct Design_State;

/// Where a running program keeps its unsaved work in a folder: a model, and a note of what no model file holds. Each
/// program has files of its own, so that two beside each other neither offer nor drop each other's.
///
/// @param folder  an existing folder, ending with its separator
std::string Recovery_Model_Path(const std::string& folder);
std::string Recovery_Note_Path(const std::string& folder);

/// Whether the design holds work that is on no disk (Unsaved).
bool Worth_Recovering(const Design_State& design);

/// Writes the design to this program's recovery file, whole or not at all, and nothing else: neither Model_Saved nor
/// File_Name changes, and no message comes. With nothing worth keeping an older recovery goes.
/// @return  false when it could not be written: the older recovery stays
bool Write_Recovery(Design_State& design, const std::string& folder);

/// Drops this program's recovery, as every proper end and every save does.
void Drop_Recovery(const std::string& folder);

/// Looks for recoveries whose program runs no more, the newest first: asks whether the design found shall be recovered
/// and reads it, unsaved, under the name it had. A No drops its files; a Yes does so once the design stands in this
/// program's own recovery. One that was not read, or in part only, stays as NAME.bad, and the user is told so. After a
/// Yes the others wait for the next start.
/// @return true when a design was recovered
bool Offer_Recovery(Design_State& design, const std::string& folder);

}  // namespace lobemax
