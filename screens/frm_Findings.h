// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "screens/screen.h"
#include "truth/check.h"

class QPlainTextEdit;
class QTableWidget;

namespace lobemax::screens {

/// All findings of the design on the desk, the worst first, each at length and leading to its screen.
///
/// Accepted: the user chose a finding; where its screen is not the one below the panel it stands in Chosen_Place.
class frm_Findings : public Screen {
public:
    /// @param here  the place of the screen below; none: the Home screen
    explicit frm_Findings(std::optional<Finding_Place> here, QWidget* parent = nullptr);

private:
    void Fill();
    void Show_Finding();
    const Finding* Chosen() const;
    void Go();
    void Open_Limits();

    std::optional<Finding_Place> here_;
    QTableWidget* table_ = nullptr;
    QPlainTextEdit* text_ = nullptr;
};

}  // namespace lobemax::screens
