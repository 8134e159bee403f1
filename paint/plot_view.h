// SPDX-License-Identifier: GPL-3.0-or-later
/// The plot of one variable that a calculation screen paints at once, with its figures beside it.
#pragma once

#include <QWidget>

class QLabel;

namespace lobemax::paint {

class Drawing_View;

/// A window of a calculation screen: the plot, its title and unit, its scale and the extremes. The labels bear the
/// window's number: "pnl_Ymax(0)".
class Plot_View : public QWidget {
public:
    /// @param window   number of the window, from 0
    /// @param windows  how many windows the screen has, 2 or 4
    Plot_View(int window, int windows, QWidget* parent = nullptr);

    /// Paints a variable over points first..last as it is now; later changes of the design wait for the next call. A
    /// fault is reported and leaves an empty window.
    /// @return whether the plot was painted
    bool Show(int variable, int first, int last, bool vertical_lines);

private:
    QLabel* Panel(const char* name);
    void Clear();

    int window_;
    int windows_;
    Drawing_View* surface_;
    QLabel* left_title_;
    QLabel* units_;
    QLabel* ymax_;
    QLabel* ymin_;
    QLabel* min_;
    QLabel* max_;
    QLabel* peak_;
};

}  // namespace lobemax::paint
