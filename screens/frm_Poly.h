// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/screen.h"

namespace lobemax::screens {

/// A solved polynomial: its conditions and the coefficients of its displacement in theta / beta.
class frm_Poly : public Screen {
public:
    frm_Poly(int segment, QWidget* parent = nullptr);
};

}  // namespace lobemax::screens
