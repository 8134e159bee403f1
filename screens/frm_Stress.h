// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "dynamics/stress_fields.h"
#include "screens/screen.h"

namespace lobemax::paint {
class Chart;
}

namespace lobemax::screens {

class Status_Panel;

/// Contact stress: materials and geometry of the contact, with force, curvature and both stresses over the cycle.
class frm_Stress : public Screen {
public:
    explicit frm_Stress(QWidget* parent = nullptr);

protected:
    void Close_Box() override;

private:
    void Fill(const Stress_Form& form);
    void Refresh();
    Stress_Form Form() const;
    void Calculate();
    void Set_Material(bool cam, bool steel);

    bool type_chosen_ = false;
    QList<paint::Chart*> charts_;
    Status_Panel* status_ = nullptr;
};

}  // namespace lobemax::screens
