// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/screen.h"

namespace lobemax::screens {

/// The last question: accepted (cmd_YesQuit) ends the program, anything else returns to it.
class frm_Quit : public Screen {
public:
    explicit frm_Quit(QWidget* parent = nullptr);
};

}  // namespace lobemax::screens
