// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/limits_form.h"
#include "screens/screen.h"

namespace lobemax::screens {

/// The user's limits, each on or off, in the units of the design on the desk.
class frm_Limits : public Screen {
public:
    explicit frm_Limits(QWidget* parent = nullptr);

private:
    void Fill();
    void Tick(Limit limit, bool on);
    void Use();

    Limits limits_;
};

}  // namespace lobemax::screens
