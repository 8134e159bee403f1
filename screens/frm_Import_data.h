// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/import_form.h"
#include "screens/screen.h"

class QGridLayout;

namespace lobemax::paint {
class Chart;
}

namespace lobemax::screens {

class Status_Panel;

/// A measured profile becomes the motion of a design: its file, the fit, and the functions.
class frm_Import_data : public Screen {
public:
    explicit frm_Import_data(QWidget* parent = nullptr);

    /// Whether functions were stored over the motion that was there.
    bool Overwritten() const { return form_.overwritten; }

private:
    enum class View { all, functions, derivatives };

    QLayout* Make_Inputs();
    QComboBox* Make_List(const char* name, const char* line, const QStringList& items,
                         bool (*choose)(Design_State& design, Import_Form& form, std::string_view item));
    QLayout* Make_Results();
    QLayout* Make_Buttons();
    void Change(const std::function<void()>& work);
    void Take_Arcs();
    void Save();
    void Refresh();
    void Draw();

    Import_Form form_;
    View view_ = View::all;
    QList<paint::Chart*> charts_;
    QGridLayout* plots_ = nullptr;  // of the charts
    Status_Panel* status_ = nullptr;
};

/// The screen as a transaction of the desk's history: Back gives back what was before, but no motion where functions
/// had been stored over it.
void Run_Import(QWidget* parent);

}  // namespace lobemax::screens
