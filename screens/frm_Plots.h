// SPDX-License-Identifier: GPL-3.0-or-later
/// The plot screens: choice of the style, choice of the functions, and the plot, one family for each of the four
/// styles.
#pragma once

#include <vector>

#include "paint/chart.h"
#include "screens/screen.h"

namespace lobemax::screens {

/// The four styles; accepted with the one picked in Plot_Style.
class frm_PlotType : public Screen {
public:
    explicit frm_PlotType(QWidget* parent = nullptr);
};

/// The functions of a style, by presets or mixed and matched: "frm_PlotSelect1" to "frm_PlotSelect4". Accepted with
/// Plot_Vars filled.
class frm_PlotSelect : public Screen {
public:
    frm_PlotSelect(int plot_style, QWidget* parent = nullptr);

private:
    void Use_Presets(bool presets);
    void Open_Function(int k, bool open);
    void Close_Function(int k);
    void Picked();
    std::vector<int> Picks() const;

    int style_;
    std::vector<int> variables_;
    std::vector<int> presets_;
};

/// The plot of the picked functions: "frm_Plot1" to "frm_Plot4". Accepted by cmd_PlotDone, rejected by cmd_Back, which
/// returns to the choice.
class frm_Plot : public Screen {
public:
    frm_Plot(int plot_style, QWidget* parent = nullptr);

private:
    paint::Curve_Style Look() const;
    void Show_Looks();
    void Replot();

    int style_;
    std::vector<paint::Chart*> charts_;
};

/// S, V, A and J of one segment on the plot screen, under its number; what is picked for other plots stays.
void Run_Segment_Plot(int segment, QWidget* parent);

/// The way through the three screens until the user is done.
void Run_Plots(QWidget* parent);

}  // namespace lobemax::screens
