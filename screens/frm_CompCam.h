// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "forms/compcam_form.h"
#include "screens/screen.h"

class QTableWidget;

namespace lobemax::paint {
class Chart;
struct Printed_List;
}  // namespace lobemax::paint

namespace lobemax::screens {

class Status_Panel;

/// The torque compensation cam: the train that is to balance the primary cam's torque, its motion, and what is left of
/// the torque.
class frm_CompCam : public Screen {
public:
    explicit frm_CompCam(QWidget* parent = nullptr);

protected:
    void Close_Box() override;
    void Follow_Design() override;

private:
    QLayout* Make_Inputs();
    QWidget* Make_Results();
    QLayout* Make_Buttons();
    std::vector<paint::Printed_List> Printed_Lists() const;
    void Fill();
    void Refresh();
    void Enter(const Form_Field<Compcam_Form>& row, const std::string& text);
    void Calculate();
    void Integrate();
    void Clear_Results();
    void Show_Results();
    void Draw();

    Compcam_Form form_;
    QList<paint::Chart*> charts_;
    Status_Panel* status_ = nullptr;
    bool running_ = false;
    bool stop_ = false;
};

}  // namespace lobemax::screens
