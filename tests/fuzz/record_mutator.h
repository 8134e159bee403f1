// SPDX-License-Identifier: GPL-3.0-or-later
/// Mutations of texts whose lines are records: valid records with wild values.
#pragma once

#include <string>
#include <string_view>

namespace lobemax::fuzz {

/// A few changes of lines: a value becomes a wild one or that of another line, a line goes, comes twice, or changes
/// places. The value of a line stands behind its last comma or its "=", or is one of its words.
std::string Mutate_Records(std::string_view text, unsigned seed);

}  // namespace lobemax::fuzz
