// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string_view>

#include "camgeom/cam_animation.h"
#include "core/design_state.h"
#include "forms/animate_form.h"
#include "screens/screen.h"

class QMenuBar;
class QSlider;
class QTimer;

namespace lobemax::paint {
class Chart;
class Drawing_View;
}  // namespace lobemax::paint

namespace lobemax::screens {

class Status_Panel;

/// The finished cam drawn, stepped and run through its cycle, its conjugate, and a summary of pressure angle and
/// curvature; a few sizes can be changed in place.
///
/// It draws a copy of the design, so that what is only looked at changes nothing.
class frm_Animate : public Screen {
public:
    explicit frm_Animate(QWidget* parent = nullptr);

    bool Is_Running() const;

protected:
    void Close_Box() override;
    void Escape() override;
    void Follow_Design() override;

private:
    void Make_Menus();
    QLayout* Make_Choices();
    QWidget* Make_Options(const char* frame, const char* option, int count, const std::function<void(int)>& chosen);
    QWidget* Make_Paths();
    QWidget* Make_Sizes();
    QWidget* Make_Motion();
    QLayout* Make_Views();
    QLayout* Make_Buttons();
    void Enter(const Form_Field<Animate_Form>& row, const std::string& text);
    void Choose_Picture(int choice);
    /// After a change of sizes, surface or direction.
    void Changed();
    /// Makes the view anew and draws it. A conjugate that there is not gives the primary cam back.
    void Show_View();
    /// Everything that follows the design and the form.
    void Refresh();
    void Show_Figures();
    /// The picture at rest, no run going on.
    void Draw_Rest();
    void Draw_Frame(int point);
    bool Picture_Possible();
    void Set_Slider(int point);
    void Step();
    void Move_Slider(int point);
    void Run(bool run);
    void Next_Frame();
    void Show_Zoom(int steps);
    void Save_Series();
    void Done();

    Design_State view_design_;         // that is drawn
    std::vector<Cam_Stretch> warned_;  // of the cam that is shown
    Animate_Form form_;
    std::optional<Anim_Run> run_;
    paint::Drawing_View* cam_ = nullptr;
    paint::Chart* phi_ = nullptr;
    paint::Chart* rho_ = nullptr;
    QWidget* charts_ = nullptr;
    QSlider* slider_ = nullptr;
    QTimer* timer_ = nullptr;
    Status_Panel* status_ = nullptr;
    std::optional<int> frame_;  // point that is shown; none: at rest
    bool updating_ = false;     // the program moves the slider
    bool saving_ = false;
    bool stop_ = false;  // of the saving
    int stride_ = 0;     // place in Picture_Strides
};

}  // namespace lobemax::screens
