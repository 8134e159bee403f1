// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lobemax::screens {

/// Makes the program's pictures and help pages available; called once, before the first window.
void Load_Resources();

}  // namespace lobemax::screens
