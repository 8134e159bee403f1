// SPDX-License-Identifier: GPL-3.0-or-later
/// Four charts, two by two, each with its extremes below it.
#pragma once

#include <QLayout>
#include <QList>
#include <string>

#include "screens/screen.h"

namespace lobemax::paint {
class Chart;
}

namespace lobemax::screens {

/// The charts are pct_Plot(0) to (3), their figures lbl_Min, lbl_Max and lbl_Peak of the same element.
class Plot_Windows {
public:
    /// Makes the charts and labels of a screen.
    QLayout* Make();

    int Count() const { return static_cast<int>(charts_.size()); }
    paint::Chart& At(int window) const { return *charts_[window]; }

    void Clear(const Screen& screen) const;
    void Show_Figures(const Screen& screen, int window, const std::string& least, const std::string& largest,
                      const std::string& peak_to_peak) const;
    /// Curves and figures of what stands no more are gray.
    void Set_Stale(const Screen& screen, bool stale) const;

private:
    QList<paint::Chart*> charts_;
};

}  // namespace lobemax::screens
