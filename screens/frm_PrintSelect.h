// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "forms/print_form.h"
#include "screens/screen.h"

namespace lobemax::screens {

/// What to print, and where to. It stays open under the tables that it shows, so that the choice is kept.
class frm_PrintSelect : public Screen {
public:
    explicit frm_PrintSelect(QWidget* parent = nullptr);

    const Print_Choice& Choice() const { return choice_; }

private:
    QLayout* Make_Head();
    QWidget* Make_Presets();
    QWidget* Make_Columns();
    QLayout* Make_Foot();
    void Refresh();
    void Print_cam_data();

    Print_Choice choice_;
    std::vector<int> variables_;
    std::vector<int> presets_;
    std::vector<int> steps_;
};

}  // namespace lobemax::screens
