// SPDX-License-Identifier: GPL-3.0-or-later
/// What a program does before it opens its first file.
#pragma once

namespace lobemax {

/// Sees to it that a write that fails returns to its writer: a reader that went away and a file size limit are errors
/// of the call and end no process; and a program that was started with its standard files closed opens no file of its
/// own under their numbers, where what is printed would go into it.
void Guard_Standard_Files();

}  // namespace lobemax
