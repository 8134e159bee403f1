// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/design_report.h"
#include "screens/screen.h"

namespace lobemax::screens {

/// The whole design as a report, to be read, printed with plots and drawing, or saved.
class frm_Report : public Screen {
public:
    explicit frm_Report(QWidget* parent = nullptr);

private:
    Design_Report report_;
};

}  // namespace lobemax::screens
