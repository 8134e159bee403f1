// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/massprop_form.h"
#include "screens/screen.h"

class QGridLayout;

namespace lobemax::screens {

class Status_Panel;

/// Masses, inertias, centres of gravity and springs of the moving links, and what they are worth at the follower. One
/// screen under two names, by the number of links: frm_MassProp4, frm_MassProp6.
class frm_MassProp : public Screen {
public:
    explicit frm_MassProp(QWidget* parent = nullptr);

protected:
    void Close_Box() override;
    void Follow_Design() override;

private:
    QLayout* Make_Table();
    QWidget* Make_Speeds();
    QWidget* Make_Results();
    QLayout* Make_Buttons();
    void Fill();
    void Refresh();
    void Show_Results(const Massprop_Result& result);
    void Calculate();
    Speed_Choice Choice_of_Speeds() const;

    Status_Panel* status_ = nullptr;
};

}  // namespace lobemax::screens
