// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/model_form.h"
#include "screens/plot_windows.h"
#include "screens/screen.h"

class QGridLayout;

namespace lobemax::screens {

class Status_Panel;

/// The elastic follower train: masses, springs and damping of the model picked, its response over time, and the
/// polydyne cam.
class frm_Model : public Screen {
public:
    explicit frm_Model(QWidget* parent = nullptr);

protected:
    void Close_Box() override;
    void Follow_Design() override;
    void showEvent(QShowEvent* event) override;

private:
    QLayout* Make_Inputs();
    QWidget* Make_Model();
    QWidget* Make_Solver();
    QWidget* Make_Figures();
    QLayout* Make_Plots();
    QLayout* Make_Buttons();
    void Add_Field(QGridLayout& grid, const Model_Row& row);
    void Fill();
    void Refresh();
    void Enter(const Model_Row& row, const std::string& text);
    void Calculate();
    void Tick(bool ticked);
    void Back();
    /// Runs work that integrates, with its progress shown and the rest of the screen closed; Stop and the close box end
    /// it.
    void Run_Stoppable(const std::function<void()>& work);
    void Draw();

    Model_Form form_;
    Plot_Windows plots_;
    Status_Panel* status_ = nullptr;
    bool opened_ = false;
    bool running_ = false;
    bool stop_ = false;
};

}  // namespace lobemax::screens
