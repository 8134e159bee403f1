// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "forms/input_form.h"
#include "screens/screen.h"

class QComboBox;
class QGridLayout;
class QPushButton;
class QScrollArea;

namespace lobemax::screens {

class Status_Panel;

/// What the input screen needs of the screens beside it.
struct Input_Services {
    std::function<bool(int row)> ask_boundaries;  // conditions of a P or S row, and its calculation
    std::function<void(int segment)> plot_segment;
    std::function<void(int segment)> print_segment;
    std::function<bool(const std::string&)> build_example;
    std::function<void(int code)> change_units;
};

/// The segment table: one row for each segment, calculated row by row or whole.
///
/// Accepted by cmd_Done: the motion stands, and its continuity report follows. Rejected by cmd_Cancel.
class frm_InputData : public Screen {
public:
    explicit frm_InputData(Input_Services services, QWidget* parent = nullptr);

    /// The screen comes back from the continuity report, with the focus where it was. Until something changes Escape is
    /// Back and not a way to the same report again.
    void Return_to(const QString& focus);

protected:
    void Close_Box() override;
    void Follow_Design() override;

private:
    struct Row {
        QLabel* number;
        QComboBox* kind;
        QComboBox* program;
        Entry* beta;
        QLabel* start;
        QLabel* end;
        Entry* low;
        Entry* high;
        QPushButton* calculate;
        QPushButton* plot;
        QPushButton* print;
        QList<QWidget*> all;
    };

    QWidget* Make_Head();
    QWidget* Make_Field(const Form_Field<Input_Head>& field);
    QComboBox* Make_Step(const Form_Field<Input_Head>& field);
    /// Takes an entry of the head through its rule; the whole screen follows.
    void Enter(const Form_Field<Input_Head>& field, const std::string& typed);
    QWidget* Make_Table();
    QWidget* Make_Foot();
    void Make_Menu();
    void Make_Row(QGridLayout& grid, int row);
    /// Fills every control from the design.
    void Fill();
    void Fill_Row(int row);
    void Fill_Rows_From(int row);
    /// Follows the design in what is enabled, shown, coloured.
    void Refresh();
    void Refresh_Row(int row);
    bool Calculate_Row(int row);
    void Calculate_All();
    void Done();
    void Cancel();

    Input_Services services_;
    QList<Row> rows_;
    Status_Panel* status_ = nullptr;
    bool returned_ = false;  // from the report, and nothing has changed since
};

}  // namespace lobemax::screens
