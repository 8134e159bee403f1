// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/stress_form.h"
#include "screens/plot_windows.h"
#include "screens/screen.h"

class QGridLayout;

namespace lobemax::screens {

class Check_Mark;
class Status_Panel;

/// Contact stress: materials and geometry of the contact, with force, curvature and both stresses over the cycle.
class frm_Stress : public Screen {
public:
    explicit frm_Stress(QWidget* parent = nullptr);

protected:
    void Close_Box() override;
    void Follow_Design() override;
    void showEvent(QShowEvent* event) override;

private:
    QLayout* Inputs();
    QWidget* Material(int member);
    QWidget* Configuration();
    QLayout* Buttons_Row();
    void Add_Field(QGridLayout& grid, Stress_Field field);
    void Fill(const Stress_Form& form);
    void Refresh();
    Stress_Form Form() const;
    void Calculate();
    /// Figures and plots of an earlier run, or of values that do not stand any more, are gray, and Next is closed.
    void Show_Stale(bool stale);
    /// Limits and true curves of the plots.
    void Show_Truth();
    void Show_Findings();
    void Choose_Material(int member, bool steel);
    void Choose_Roller(bool crowned);

    bool opened_ = false;
    bool type_chosen_ = false;
    Plot_Windows plots_;
    Status_Panel* status_ = nullptr;
    Check_Mark* mark_ = nullptr;
};

}  // namespace lobemax::screens
