// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lobemax::screens {

/// A dark palette for desktops whose own does not reach Qt.
void Use_Dark_Palette();

}  // namespace lobemax::screens
