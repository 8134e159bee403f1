// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/dynamics_form.h"
#include "screens/screen.h"

class QPlainTextEdit;

namespace lobemax::paint {
class Chart;
}

namespace lobemax::screens {

class Status_Panel;

/// Follower force and camshaft torque, with their charts, figures, the table of torque pulses and what the
/// drive has to give.
class frm_Dynamics : public Screen {
public:
    explicit frm_Dynamics(QWidget* parent = nullptr);

protected:
    void Close_Box() override;
    void Follow_Design() override;

private:
    QLayout* Inputs();
    QLayout* Entries();
    QLayout* Figures_Grid();
    QLayout* Charts();
    QLayout* Panels();
    /// A panel of lines in a fixed width.
    QPlainTextEdit* Panel(const char* name);
    QLayout* Buttons_Row();
    void Compensate(bool ticked);
    void Fill();
    void Refresh();
    Dynamics_Form Form() const;
    void Calculate();
    /// Shows what a run has filled, if there was one.
    void Show_Run(bool run);
    void Show_Results();
    void Hide_Charts();
    /// Figures and charts of an earlier run, or of values that do not stand any more, are gray.
    void Show_Stale(bool stale);

    paint::Chart* torque_ = nullptr;
    paint::Chart* force_ = nullptr;
    QPlainTextEdit* pulses_ = nullptr;
    QPlainTextEdit* drive_ = nullptr;
    Status_Panel* status_ = nullptr;
};

}  // namespace lobemax::screens
