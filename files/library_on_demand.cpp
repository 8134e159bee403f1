// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/library_on_demand.h"

#include <dlfcn.h>

namespace lobemax {

void* Entry_of_Library(const char* library, const char* entry, std::string& why)
{
    void* const loaded = ::dlopen(library, RTLD_NOW | RTLD_LOCAL);
    void* const found = loaded != nullptr ? ::dlsym(loaded, entry) : nullptr;
    if (found == nullptr) {
        const char* const reason = ::dlerror();
        why = std::string("a part of the program cannot be loaded: ") + (reason != nullptr ? reason : library);
    }
    return found;
}

}  // namespace lobemax
