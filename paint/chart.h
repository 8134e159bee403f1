// SPDX-License-Identifier: GPL-3.0-or-later
/// The chart of the screens: curves over the cam angle or any other abscissa, on the chart control.
///
/// The user reads values under the pointer, drags, zooms with the wheel, double-clicks to see all again, and finds copy
/// and save in the context menu. Colours follow the palette of the desktop, light or dark.
#pragma once

#include <QColor>
#include <QWidget>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/basic_types.h"
#include "core/design_state.h"
#include "paint/picture_file.h"

class QCPAxis;
class QCPGraph;
class QCPItemStraightLine;
class QCPItemText;
class QCPItemTracer;
class QCPTextElement;
class QCustomPlot;
class QLabel;
class QMenu;
class QPainter;

namespace lobemax::paint {

/// How a curve is drawn. Sticks stand on the axis of a chart, and are rays from the origin to a closed curve.
enum class Curve_Style { line, points, line_and_points, sticks, sticks_and_line };

/// The style of a box for lines and one for sticks; without either the points themselves are seen.
Curve_Style Look_of_Boxes(bool lines, bool sticks);

/// One curve: values over an abscissa, both of the same count.
struct Curve {
    QString name;
    QString unit;
    std::vector<double> x;
    std::vector<double> y;
    Curve_Style style = Curve_Style::line;
    QColor colour;                         // invalid: the next of the chart's own
    Qt::PenStyle pattern = Qt::SolidLine;  // tells curves of one colour apart
    bool faint = false;                    // for comparison, behind the others
    bool beside = false;                   // thin beside what is shown: the view is that of the others
    bool right_axis = false;
    std::vector<double> angle;     // of a closed curve: the cam angle of each point, degrees
    bool value_as_radius = false;  // a closed curve made of values at their cam angles
};

/// Ticks counted in points of a curve: a mark every so many from the first on, and a label every so many.
struct Point_Ticks {
    double first = 0.0;      // abscissa of the first point
    double per_point = 1.0;  // from point to point
    int points = 1;
    int tick_every = 1;
    int label_every = 1;
    double margin = 0.0;  // shown beyond the last point

    double Last() const { return first + per_point * (points - 1); }
};

/// A value that the curves shall keep within: a thin dotted line across the chart with its words.
struct Level {
    double value = 0.0;
    QString words;
};

/// A curve from a row of results: points first..last over their cam angles.
Curve Row_Curve(const QString& name, const QString& unit, std::span<const Single> angle, std::span<const Single> row,
                int first, int last);

class Chart : public QWidget {
public:
    /// Numbers are read out in the number format of the design.
    explicit Chart(const Design_State& design, const QString& name, QWidget* parent = nullptr);

    /// Replaces all curves; the view shows them whole.
    void Show(std::vector<Curve> curves);
    /// Replaces the values of the curves, and keeps their looks and the part of them that the user has zoomed or
    /// dragged into view: for redraws while a value is being changed.
    void Update(std::vector<Curve> curves);
    void Clear();
    const std::vector<Curve>& Curves() const { return curves_; }

    /// A line above the chart and in its pictures; an empty one takes it away.
    void Set_Title(const QString& title);
    QString Title() const;
    void Set_Axis_Titles(const QString& bottom, const QString& left, const QString& right = {});
    void Set_Grid(bool horizontal, bool vertical);
    void Set_Style(Curve_Style style);  // of every curve that is not faint
    void Set_Equal_Scales(bool equal);  // a circle of coordinates is round
    void Set_Legend(bool visible);
    /// A ground of its own with dark ink; an invalid colour gives the palette's back.
    void Set_Ground(const QColor& ground);
    /// The whole view then goes over all the points and has these ticks; a zoomed one finds its own.
    void Set_Ticks(const Point_Ticks& ticks);
    void Clear_Ticks();
    /// Vertical lines, at segment boundaries or knots.
    void Set_Marks(const std::vector<double>& x, const QColor& colour = {});
    /// Horizontal lines on the left axis. The view grows for one, and for a curve beside the others, where it lies
    /// near.
    void Set_Levels(std::vector<Level> levels);
    const std::vector<Level>& Levels() const { return levels_; }
    /// A ring and a label at the extremes of every curve; labels stand inside the chart and clear of one another.
    void Mark_Extremes(bool marked);
    /// The curves are of a calculation that what the screen now holds has left behind: they are shown in gray.
    void Set_Stale(bool stale);
    /// Told of a click at an abscissa, with whether Shift was held.
    std::function<void(double x, bool shift)> clicked;

    /// All curves whole in view.
    void Reset_View();
    QPixmap Picture(const QSize& size = {}, double scale = 1.0);
    /// The curves as tab-delimited columns under their names.
    std::string Data_Text() const;
    void Copy_Picture();
    void Copy_Data();
    /// Saves as PNG, SVG or PDF by the ending of the path.
    /// @param why  out: what went wrong
    /// @return     whether the file was written
    bool Save(const std::string& path, std::string* why = nullptr);

    /// Paints the chart into a rectangle of a painter that draws on paper, SVG or a picture.
    void Paint(QPainter& painter, const QRectF& area);

    /// Entries that a screen adds to the context menu.
    std::function<void(QMenu&)> add_entries;

    /// What the context menu holds.
    void Fill_Menu(QMenu& menu);

    QCustomPlot& Plot() { return *plot_; }
    const QCustomPlot& Plot() const { return *plot_; }

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// What a curve is drawn with: its line or dots, and the sticks below them.
    struct Drawn {
        QCPGraph* graph = nullptr;
        QCPGraph* sticks = nullptr;
    };
    /// An extreme of a curve: the ring at it and its label.
    struct Extreme {
        QCPItemTracer* ring;
        QCPItemText* label;
        QCPAxis* values;
        double x;
        double y;
    };
    /// What stands for a level.
    struct Drawn_Level {
        QCPItemStraightLine* line;
        QCPItemText* label;
    };
    /// While it lives, changes of the axes are the chart's own and no zoom of the user's.
    class Own_View {
    public:
        explicit Own_View(Chart& chart) : chart_(chart) { ++chart_.own_view_; }
        ~Own_View() { --chart_.own_view_; }
        Own_View(const Own_View&) = delete;
        Own_View& operator=(const Own_View&) = delete;

    private:
        Chart& chart_;
    };

    QColor Ink() const;
    QColor Colour_of(const Curve& curve, int place) const;
    void Apply_Palette();
    void Make_Graphs();
    void Make_Graph(const Curve& curve, int place);
    void Make_Closed_Curve(const Curve& curve, int place);
    void Fill_Graph(const Drawn& drawn, const Curve& curve) const;
    void Show_Range(QCPAxis& axis);
    void Fit_Equal_Scales();
    void Place_Legend();
    void Set_to_Curves(QCPAxis& axis) const;
    void Read_Out();
    QString Values_at(double x) const;
    QString Nearest_Point(const QPoint& position) const;
    void Open_Menu(const QPoint& position);
    void Widen_to_Near(QCPAxis& axis) const;
    void Place_Marks();
    void Place_Levels();
    void Arrange_Levels();
    void Place_Extremes();
    void Arrange_Extremes();

    const Design_State& design_;
    QCustomPlot* plot_;
    QLabel* read_out_;
    QCPTextElement* title_ = nullptr;
    std::vector<Curve> curves_;
    std::vector<Drawn> drawn_;
    std::vector<double> marks_;
    std::vector<QCPItemStraightLine*> mark_lines_;
    std::vector<Level> levels_;
    std::vector<Drawn_Level> drawn_levels_;
    std::vector<Extreme> marked_;
    std::optional<Point_Ticks> ticks_;
    std::optional<QPoint> pointer_;  // while it is over the chart
    QColor mark_colour_;
    QColor ground_;
    int own_view_ = 0;
    bool zoomed_ = false;  // by the user
    bool equal_ = false;
    bool extremes_ = false;
    bool stale_ = false;
    bool on_paper_ = false;  // pictures have square points, whatever the screen's are
};

/// Writes charts side by side, so many in a row, under a title to a PNG, SVG or PDF file by the ending of its path,
/// with so many pixels a point (Save_Picture). @return whether the file was written
bool Save_Charts(const std::vector<Chart*>& charts, int columns, const QSize& size, const std::string& path,
                 const QString& title = {}, double scale = Screen_Picture_Scale, std::string* why = nullptr);

}  // namespace lobemax::paint
