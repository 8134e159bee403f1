// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/screen.h"

namespace lobemax::paint {
class Chart;
}

namespace lobemax::screens {

/// The report after a calculated motion: the jumps at the joints, and S, V, A, J over the cycle.
///
/// Accepted by cmd_Done: the motion stands. Rejected by cmd_Back, or by the Cancel of its box: back to the table.
class frm_Continuity : public Screen {
public:
    explicit frm_Continuity(QWidget* parent = nullptr);

protected:
    /// Accepts the motion as it is, as the segment table does on closing.
    void Close_Box() override { Done(); }

private:
    void Draw();
    void Done();

    QList<paint::Chart*> charts_;
};

}  // namespace lobemax::screens
