// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "forms/linkage_form.h"
#include "screens/screen.h"

class QScrollBar;
class QTimer;

namespace lobemax::screens {

class Linkage_View;
class Status_Panel;

/// The linkage that the follower arm drives: its dimensions, the train in motion with the cam, and the end effector's
/// figures. One screen under three names, by the kind of linkage: frm_Linkage, frm_CamSlider4, frm_CamSlider6.
class frm_Linkage : public Screen {
public:
    explicit frm_Linkage(QWidget* parent = nullptr);

    /// Milliseconds from frame to frame.
    int Delay() const;
    bool Is_Playing() const;

protected:
    void Close_Box() override;
    void Follow_Design() override;
    void showEvent(QShowEvent* event) override;

private:
    QWidget* Make_Links();
    QLayout* Make_Picture();
    QLayout* Make_Animation();
    QLayout* Make_Choices();
    QWidget* Make_Frame_of_Options(const char* frame, const char* option, int count,
                                   const std::function<void(int)>& chosen, bool changes = true);
    QWidget* Make_Summary();
    QLayout* Make_Buttons();
    void Fill();
    /// What is shown, open and checked, by the train at hand, and the figures.
    void Refresh();
    void Show_Figures();
    /// After a change of the train: another scene, its results not yet calculated.
    void Changed();
    void Enter(int index, const std::string& text);
    void Calculate();
    /// The scale step and the picture of the point at hand.
    void New_Scene();
    void Draw(int frame);
    void Set_Bar(int value);
    void Step();
    void Move_Bar(int value);
    void Play(bool play);
    void Next_Frame();
    void Pick_Steps(const std::string& text);
    void Grip(const QPointF& at);
    void Drag(const QPointF& to);
    void Let_Go();
    Drag_Point Picked_Point() const;
    void Open_Plots();
    void Open_Masses();

    Linkage_View* view_ = nullptr;
    QScrollBar* bar_ = nullptr;
    QTimer* timer_ = nullptr;
    Status_Panel* status_ = nullptr;
    std::optional<World_Window> window_;
    World_Point grip_at_;  // of the pointer from the point that it drags
    bool gripped_ = false;
    bool updating_ = false;  // the program moves the bar
    bool opened_ = false;
    int frame_ = 0;  // that is shown
    int stride_ = 1;
    int wait_range_ = Usual_Anim_Wait;
    int cycles_ = 1;
    int turns_left_ = 0;
};

}  // namespace lobemax::screens
