// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/drawing.h"

#include "files/library_on_demand.h"

namespace lobemax::cli {

std::unique_ptr<Drawing> Open_Drawing(std::string& why)
{
    void* const entry = Entry_of_Library(Drawing_Library, Drawing_Entry, why);
    return std::unique_ptr<Drawing>(entry != nullptr ? reinterpret_cast<Open_Drawing_Entry>(entry)() : nullptr);
}

}  // namespace lobemax::cli
