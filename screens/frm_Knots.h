// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/screen.h"

namespace lobemax::paint {
class Chart;
}

namespace lobemax::screens {

/// Order and interior knots of a spline segment, with its curves.
///
/// Accepted by cmd_Done once the spline is calculated; cmd_Back rejects.
class frm_Knots : public Screen {
public:
    frm_Knots(int segment, QWidget* parent = nullptr);

protected:
    void Follow_Design() override;

private:
    void Fill();
    void Calculate();
    void Changed();
    /// Curves and knots; gray where they are not of the knots that stand on the screen.
    void Draw();
    void Plot_Clicked(double angle, bool shift);
    int Selected_Knot() const;  // 0 for none

    int segment_;
    QList<paint::Chart*> charts_;
};

}  // namespace lobemax::screens
