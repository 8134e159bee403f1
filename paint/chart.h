// SPDX-License-Identifier: GPL-3.0-or-later
/// The chart of the screens: curves over the cam angle or any other abscissa, on the chart control.
///
/// The user reads values under the pointer, drags, zooms with the wheel, double-clicks to see all again, and finds copy
/// and save in the context menu. Colours follow the palette of the desktop, light or dark.
#pragma once

#include <QColor>
#include <QWidget>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "core/basic_types.h"

class QCPGraph;
class QCPItemText;
class QCPItemTracer;
class QCustomPlot;
class QLabel;
class QMenu;
class QPainter;

namespace lobemax::paint {

enum class Curve_Style { line, points, line_and_points, sticks, sticks_and_line };

/// One curve: values over an abscissa, both of the same count.
struct Curve {
    QString name;
    QString unit;
    std::vector<double> x;
    std::vector<double> y;
    Curve_Style style = Curve_Style::line;
    QColor colour;       // invalid: the next of the chart's own
    bool faint = false;  // for comparison, behind the others
    bool right_axis = false;
};

/// A curve from a row of results: points first..last over their cam angles.
Curve Row_Curve(const QString& name, const QString& unit, std::span<const Single> angle, std::span<const Single> row,
                int first, int last);

class Chart : public QWidget {
public:
    explicit Chart(const QString& name, QWidget* parent = nullptr);

    /// Replaces all curves; the view shows them whole.
    void Show(std::vector<Curve> curves);
    /// Replaces the values of the curves and keeps view and looks: for redraws while a value is being changed.
    void Update(std::vector<Curve> curves);
    void Clear();
    const std::vector<Curve>& Curves() const { return curves_; }

    void Set_Title(const QString& title);
    void Set_Axis_Titles(const QString& bottom, const QString& left, const QString& right = {});
    void Set_Grid(bool horizontal, bool vertical);
    void Set_Style(Curve_Style style);  // of every curve that is not faint
    void Set_Equal_Scales(bool equal);  // a circle of coordinates is round
    void Set_Legend(bool visible);
    /// A ground of its own with dark ink; an invalid colour gives the palette's back.
    void Set_Ground(const QColor& ground);
    void Set_Range(double first, double last);  // of the abscissa
    /// Vertical lines, at segment boundaries or knots.
    void Set_Marks(const std::vector<double>& x, const QColor& colour = {});
    void Mark_Extremes(bool marked);
    /// Told of a click at an abscissa, with whether Shift was held.
    std::function<void(double x, bool shift)> clicked;

    /// All curves whole in view.
    void Reset_View();
    QPixmap Picture(const QSize& size = {}, double scale = 1.0);
    /// The curves as tab-delimited columns under their names.
    std::string Data_Text() const;
    void Copy_Picture();
    void Copy_Data();
    /// Saves as PNG, SVG or PDF by the ending of the path. @return whether the file was written
    bool Save(const QString& path);

    /// Paints the chart into a rectangle of a painter that draws on paper, SVG or a picture.
    void Paint(QPainter& painter, const QRectF& area);

    /// Entries that a screen adds to the context menu.
    std::function<void(QMenu&)> add_entries;

    QCustomPlot& Plot() { return *plot_; }

protected:
    void changeEvent(QEvent* event) override;

private:
    void Apply_Palette();
    void Make_Graphs();
    void Fill_Graph(QCPGraph& graph, const Curve& curve) const;
    void Style_Graph(QCPGraph& graph, const Curve& curve, int place) const;
    void Fit_Equal_Scales();
    void Point_at(const QPoint& position);
    void Open_Menu(const QPoint& position);
    void Place_Extremes();

    QCustomPlot* plot_;
    QLabel* read_out_;
    QLabel* title_;
    std::vector<Curve> curves_;
    std::vector<double> marks_;
    QColor mark_colour_;
    QColor ground_;
    bool equal_ = false;
    bool extremes_ = false;
    bool horizontal_grid_ = true;
    bool vertical_grid_ = true;
};

/// Writes charts side by side, so many in a row, to a PNG, SVG or PDF file by the ending of its path.
/// @return whether the file was written
bool Save_Charts(const std::vector<Chart*>& charts, int columns, const QSize& size, const QString& path);

}  // namespace lobemax::paint
