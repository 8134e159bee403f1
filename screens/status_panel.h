// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFrame>

class QLabel;

namespace lobemax::screens {

/// Pnl_Status: the lamps that show how far the design has got. A lamp that is not lit is hidden; one that is says in
/// words what it stands for, so that no colour is needed to read it.
class Status_Panel : public QFrame {
public:
    explicit Status_Panel(QWidget* parent = nullptr);
    /// Follows the state of the design.
    void Refresh();

private:
    QList<QLabel*> lamps_;
};

}  // namespace lobemax::screens
