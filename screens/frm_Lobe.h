// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/screen.h"

namespace lobemax::screens {

/// How long the motion is open at a lift, where its middle is, and how much it opens.
class frm_Lobe : public Screen {
public:
    explicit frm_Lobe(QWidget* parent = nullptr);

private:
    void Show_Figures();
};

}  // namespace lobemax::screens
