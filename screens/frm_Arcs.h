// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/arc_form.h"
#include "screens/screen.h"

namespace lobemax::screens {

/// The radii of a cam of arcs, for the import to take its motion as data.
class frm_Arcs : public Screen {
public:
    explicit frm_Arcs(Arc_Form form = {}, QWidget* parent = nullptr);

    const Arc_Form& Form() const { return form_; }

private:
    void Refresh();

    Arc_Form form_;
};

}  // namespace lobemax::screens
