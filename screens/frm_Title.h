// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/screen.h"

namespace lobemax::screens {

/// The title: cmd_Start accepts and goes on to the Home screen, cmd_Abort rejects and goes to the quit screen.
class frm_Title : public Screen {
public:
    explicit frm_Title(QWidget* parent = nullptr);
};

}  // namespace lobemax::screens
