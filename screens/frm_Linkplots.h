// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/linkplots_form.h"
#include "screens/plot_windows.h"
#include "screens/screen.h"

namespace lobemax::screens {

class Status_Panel;

/// Functions of the links over the cam angle: up to four, each in a chart of its own with its extremes.
class frm_Linkplots : public Screen {
public:
    explicit frm_Linkplots(QWidget* parent = nullptr);

private:
    QLayout* Make_Choices();
    QLayout* Make_Buttons();
    void Draw(int window);

    Link_Picks picks_;
    Plot_Windows plots_;
    Status_Panel* status_ = nullptr;
};

}  // namespace lobemax::screens
