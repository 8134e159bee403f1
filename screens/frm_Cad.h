// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>

#include "forms/cad_form.h"
#include "screens/screen.h"

class QStackedWidget;

namespace lobemax::screens {

class Check_Mark;

/// Files for CAD, machines and controllers: the kind, its options, and what was written last.
class frm_Cad : public Screen {
public:
    explicit frm_Cad(QWidget* parent = nullptr);

private:
    QWidget* Page_of(Cad_Kind kind);
    QWidget* Field_of(Cad_Kind kind, const Cad_Option& option);
    void Pick_Kind(int index);
    void Show_Option_Values(Cad_Kind kind);
    void Write_File();
    Cad_Wish& Wish() { return wishes_[kind_]; }

    Cad_Kind kind_ = Cad_Kind::dxf;
    std::map<Cad_Kind, Cad_Wish> wishes_;
    QStackedWidget* pages_ = nullptr;
    Check_Mark* mark_ = nullptr;
};

}  // namespace lobemax::screens
