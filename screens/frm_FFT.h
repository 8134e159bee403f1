// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "screens/screen.h"

class QComboBox;

namespace lobemax::paint {
class Chart;
}

namespace lobemax::screens {

/// The Fourier transform of one variable, over the cycle or one segment, with its harmonics in a chart.
class frm_FFT : public Screen {
public:
    explicit frm_FFT(QWidget* parent = nullptr);

protected:
    void Close_Box() override { reject(); }

private:
    QLayout* Make_Choices();
    QWidget* Make_Charts();
    QLayout* Make_Totals();
    QLayout* Make_Buttons();
    void Transform();
    void Clear();
    void Blank();
    void Draw();
    int Variable() const;  // 0 for none

    std::vector<int> variables_;
    QList<paint::Chart*> charts_;
};

}  // namespace lobemax::screens
