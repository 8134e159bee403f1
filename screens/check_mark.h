// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPushButton>
#include <functional>
#include <optional>

#include "truth/check.h"

namespace lobemax::screens {

/// cmd_Mark: a tick where the check of the design has nothing to tell, else the worst finding: its sign, which needs no
/// colour to be told apart, and its sentence as far as there is room for it. Pressed, it opens the panel of findings.
class Check_Mark : public QPushButton {
public:
    /// @param place    of the screen that it stands on; none: the whole design
    /// @param pressed  opens the panel
    Check_Mark(std::optional<Finding_Place> place, std::function<void()> pressed);

    /// Follows the design, after a calculation.
    void Refresh();
    /// What it says is of a calculation that what the screen now holds has left behind.
    void Set_Pending(bool pending);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    int Frame() const;
    void Show_Words();
    void Colour();

    std::optional<Finding_Place> place_;
    QString words_;
    bool grave_ = false;
    bool colouring_ = false;
};

/// The panel over the screen of a place, or over the Home screen.
/// @return whether the user chose a finding of another screen, which then stands in Chosen_Place
bool Open_Findings(QWidget& over, std::optional<Finding_Place> place);

}  // namespace lobemax::screens
