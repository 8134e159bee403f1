// SPDX-License-Identifier: GPL-3.0-or-later
/// The services of the desktop behind the logic: message boxes, file dialogs, clock, wait pointer.
#pragma once

#include "core/messages.h"

class QWidget;

namespace lobemax::screens {

/// A host whose boxes and dialogs stand over the window that is active when they come. Refresh, error notice and
/// show_home stay empty: the program that owns the Home screen fills them.
Host Desktop_Host();

/// A dialog filter "Name (*.ext)|*.ext|..." as Qt writes it: "Name (*.ext);;...".
std::string Qt_Filter(const std::string& filter);

}  // namespace lobemax::screens
