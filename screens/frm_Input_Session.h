// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace lobemax::screens {

/// The input screen with the screens it leads to: conditions, knots, and the continuity report after cmd_Done, whose
/// way back opens the table again.
void Run_Input_Session(QWidget* parent);

}  // namespace lobemax::screens
