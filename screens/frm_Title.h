// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/screen.h"

namespace lobemax::screens {

/// The title: cmd_Start accepts and goes on to the Home screen, cmd_Abort rejects and goes to the quit screen.
class frm_Title : public Screen {
public:
    explicit frm_Title(QWidget* parent = nullptr);

protected:
    /// Goes on: the question of the quit screen, answered by Escape, would come back here.
    void Escape() override { accept(); }
};

}  // namespace lobemax::screens
