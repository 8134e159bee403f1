// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>
#include <vector>

#include "camgeom/cam_drawing.h"
#include "forms/size_form.h"
#include "screens/screen.h"

class QGridLayout;

namespace lobemax::paint {
class Chart;
class Drawing_View;
}  // namespace lobemax::paint

namespace lobemax::screens {

class Check_Mark;
class Status_Panel;

/// Cam and follower: their kind and dimensions, the cam drawn, pressure angle and curvature over the cycle.
///
/// Pending: a value was changed with Autocalc off, and cmd_Calc is open. Calculated: cmd_Done and the views are.
class frm_SizeCam : public Screen {
public:
    explicit frm_SizeCam(QWidget* parent = nullptr);

protected:
    void Close_Box() override;
    void Follow_Design() override;

private:
    QWidget* Make_Choices();
    QWidget* Make_Fields();
    QGridLayout& Make_Panel(const char* name, QWidget* panel);
    void Add_Row(QGridLayout& panel, const Form_Control& row, QWidget* field);
    void Add_Entry(QGridLayout& panel, std::string_view name);
    QWidget* Make_Views();
    QWidget* Make_Foot();
    void Make_Menu();
    void Fill();
    /// Texts, panels and what is enabled, by the kind of cam and the follower.
    void Refresh();
    /// Shows again the entries that a choice may have changed.
    void Show_Stored();
    Size_Form Form() const;
    /// After a changed value: calculates with Autocalc on, waits otherwise.
    void Changed(bool calculate_anyway = false);
    void Calculate();
    void Set_Pending(bool pending);
    void Draw_Views();
    void Show_Curve(paint::Chart& chart, const char* name, const QString& unit, int row);
    /// Limits and true curves of the charts.
    void Show_Truth();
    void Show_Findings();
    void Draw_Cam_View();
    void Show_Views();
    void Done();

    paint::Drawing_View* cam_ = nullptr;
    paint::Chart* phi_ = nullptr;
    paint::Chart* rho_ = nullptr;
    Status_Panel* status_ = nullptr;
    Check_Mark* mark_ = nullptr;
    enum class View { cam, data, both };
    View view_ = View::both;
    QWidget* cam_view_ = nullptr;
    QWidget* data_view_ = nullptr;
    std::vector<Cam_Stretch> warned_;  // of the last calculation
    bool calculated_ = false;
    bool has_results_ = false;  // the rows hold the last calculation, be a change pending or not
};

}  // namespace lobemax::screens
