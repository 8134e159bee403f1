// SPDX-License-Identifier: GPL-3.0-or-later
/// Model files (.cam): the design with its whole calculated table, as text records.
///
/// Written: the current format "9" and, for users of earlier releases, "8" and "7.2". Read: every format
/// back to "6".
#pragma once

#include <string>
#include <string_view>

#include "files/byte_stream.h"

namespace lobemax {

struct Design_State;

/// Reads a model from an opened source into the design: header, version questions, choice of reader. The
/// flags Read_Abort, Read_Partial and Read_Complete tell the outcome:
///
///   Read_Abort                        nothing usable was read
///   neither                           read in full
///   Read_Partial                      an error after part of the labelled items
///   Read_Partial and Read_Complete    an error after their end, in the calculated table
///
/// @return true when the model was read in full
bool ReadFile(Design_State& design, Byte_Source& source);

/// Opens the file and calls ReadFile; a file that cannot be opened is reported and sets Read_Abort.
bool Load_Model(Design_State& design, const std::string& path);

/// Writes the design in the format of a tag, "9", "8" or "7.2", with Version_Str taken as that tag.
/// @throws Fault, with what came before it written. Fault{9} at the constraints of a design of 20 segments.
void Write_Model(Design_State& design, Byte_Sink& sink, std::string_view tag);

/// Who saves: a failure to open the file is the Home screen's own, or the writer's.
enum class Save_From { home_screen, command_line };

/// Writes the design to a file in the format of Version_Str, whole or not at all, reports a failure under the name of
/// that format's writer, WriteFile_8 or WriteFile_72, and sets Model_Saved and tells the user when it went well. The
/// file's name becomes File_Name, unless nothing was written. After a failure the design counts as unsaved, whatever it
/// was before, and the Home screen tells where its last whole copy lies.
///
/// A design of 20 segments cannot be held by the format: its cut file is left, and meant, so that what was typed can be
/// read again. A whole file that it takes the place of is kept beside it as NAME.bak (Whole_File).
bool Write_Model_File(Design_State& design, const std::string& path, Save_From from);

/// Asks for a name and writes. format: "7.2", or any other for the format of Version_Str.
/// A cancelled dialog changes nothing. @return true when the file was written
bool SaveAs(Design_State& design, std::string_view format);

/// The entries of the Save as menu: "Lobemax 9.x", "Lobemax 8.x" and "Lobemax 7.2 - 7.5". The last two ask
/// first, since they lose what only the present format holds.
bool Save_As_Plus(Design_State& design);
bool Save_As_V8(Design_State& design);
bool Save_As_V7(Design_State& design);

/// The question of the older formats; true: go on.
bool Confirm_Older_Format();

/// Whether the design in memory may be given up: asks about a calculated design that was not saved and, if
/// the user wants so, saves it. false: it was to be saved and was not, so it must not be lost.
bool May_Reset(Design_State& design);

/// File/Open: the question about unsaved work, the reset, the open dialog, the read, and what the user is
/// told of it. true: a model was read in full.
bool Open_Model(Design_State& design);

/// The part of File/Open behind the dialog, for a path that is already known.
bool Open_Model(Design_State& design, const std::string& path);

/// Home screen Save: overwrites File_Name when the design was saved or else acts as Save as.
bool Save_Model(Design_State& design);

}  // namespace lobemax
