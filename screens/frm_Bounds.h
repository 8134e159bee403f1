// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/screen.h"

namespace lobemax::screens {

/// The table of boundary conditions of a polynomial or a spline segment.
///
/// Accepted by cmd_Done once the conditions are accepted and the polynomial, or the spline behind its knot screen, is
/// solved. Rejected otherwise: Poly_OK is false then.
class frm_Bounds : public Screen {
public:
    frm_Bounds(int segment, QWidget* parent = nullptr);

protected:
    void Close_Box() override;
    void Follow_Design() override;
    void Escape() override { reject(); }

private:
    void Fill();
    /// A box of the table stores what is typed at once, and on leaving it the number that was read.
    void Stores(Entry& entry, int row, int order);
    /// Gives the focus to a field of the table, where there is one: column 0 is the angle.
    void Move_to(int row, int column);
    void Show_Count();
    void Done();

    int segment_;
};

}  // namespace lobemax::screens
