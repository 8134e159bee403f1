// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/chart.h"

#include <qcustomplot.h>

#include <QApplication>
#include <QClipboard>
#include <QFontMetricsF>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPicture>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "core/design_state.h"
#include "core/text.h"
#include "forms/preference_choice.h"
#include "paint/picture_file.h"
#include "paint/save_picture.h"

namespace lobemax::paint {

namespace {

/// Curve colours that keep apart on light and on dark ground and for colour-blind eyes.
/// Source: Okabe and Ito, Color Universal Design (2008).
constexpr std::array curve_colours{0x0072B2, 0xD55E00, 0x009E73, 0xCC79A7, 0xE69F00, 0x56B4E9};

QColor Own_Colour(int place)
{
    return QColor::fromRgb(static_cast<QRgb>(curve_colours[static_cast<std::size_t>(place) % curve_colours.size()]));
}

QString Number(const Design_State& design, double value)
{
    return QString::fromStdString(Shown(design, value));
}

/// A number to be read at a glance.
QString Rounded(const Design_State& design, double value)
{
    constexpr int figures = 5;
    const QString text = QString::number(value, 'g', figures);
    return QString::fromStdString(In_Number_Format(
        design, text.contains(QLatin1Char('e')) ? text.toStdString() : Shortest(Single(text.toDouble()))));
}

QString Named_Unit(const Curve& curve)
{
    return curve.unit.isEmpty() ? curve.name : curve.name + QStringLiteral(", ") + curve.unit;
}

bool Has_Sticks(const Curve& curve)
{
    return curve.style == Curve_Style::sticks || curve.style == Curve_Style::sticks_and_line;
}

bool Has_Line(const Curve& curve)
{
    return curve.style != Curve_Style::sticks && curve.style != Curve_Style::points;
}

/// Heads of sticks are shown where there are few enough to be told apart.
bool Has_Dots(const Curve& curve)
{
    constexpr std::size_t few = 100;
    return curve.style == Curve_Style::points || curve.style == Curve_Style::line_and_points ||
           (Has_Sticks(curve) && curve.x.size() <= few);
}

QCPScatterStyle Dots(const Curve& curve)
{
    return Has_Dots(curve) ? QCPScatterStyle(QCPScatterStyle::ssDisc, 4) : QCPScatterStyle::ssNone;
}

/// Sticks beside a line step back behind it.
QPen Stick_Pen(const Curve& curve, QColor colour)
{
    if (curve.style == Curve_Style::sticks_and_line)
        colour.setAlphaF(0.45F);
    return QPen(colour, Has_Dots(curve) ? 1.6 : 1.0);
}

/// Ticks at points of a curve while all of it is in view. A part in view has the ticks that it would have anyway.
class Point_Ticker : public QCPAxisTicker {
public:
    Point_Ticker(const Design_State& design, const Point_Ticks& ticks) : design_(design), ticks_(ticks) {}

    void generate(const QCPRange& range, const QLocale& locale, QChar format, int precision, QVector<double>& ticks,
                  QVector<double>* sub_ticks, QVector<QString>* labels) override
    {
        if (!Shows_All(range)) {
            QCPAxisTicker::generate(range, locale, format, precision, ticks, sub_ticks, labels);
            return;
        }
        ticks.clear();
        if (sub_ticks != nullptr)
            sub_ticks->clear();
        if (labels != nullptr)
            labels->clear();
        for (int i = 0; i < ticks_.points; i += ticks_.tick_every) {
            const double x = ticks_.first + i * ticks_.per_point;
            ticks.append(x);
            if (labels != nullptr)
                labels->append(i % ticks_.label_every == 0 ? Number(design_, x) : QString());
        }
    }

private:
    bool Shows_All(const QCPRange& range) const
    {
        constexpr double most = 1.3;  // of the points' span; farther away the labels would crowd
        const double span = ticks_.Last() - ticks_.first;
        const double slack = 1e-6 * span;
        return range.lower <= ticks_.first + slack && range.upper >= ticks_.Last() - slack &&
               range.size() <= most * span + ticks_.margin;
    }
    const Design_State& design_;
    Point_Ticks ticks_;
};

}  // namespace

Curve_Style Look_of_Boxes(bool lines, bool sticks)
{
    if (sticks)
        return lines ? Curve_Style::sticks_and_line : Curve_Style::sticks;
    return lines ? Curve_Style::line : Curve_Style::points;
}

Curve Row_Curve(const QString& name, const QString& unit, std::span<const Single> angle, std::span<const Single> row,
                int first, int last)
{
    Curve curve;
    curve.name = name;
    curve.unit = unit;
    const auto from = static_cast<std::size_t>(std::max(first, 0));
    const std::size_t to =
        std::min(static_cast<std::size_t>(std::max(last, first) + 1), std::min(angle.size(), row.size()));
    for (std::size_t i = from; i < to; ++i) {
        curve.x.push_back(angle[i]);
        curve.y.push_back(row[i]);
    }
    return curve;
}

Chart::Chart(const Design_State& design, const QString& name, QWidget* parent)
    : QWidget(parent), design_(design), plot_(new QCustomPlot), read_out_(new QLabel)
{
    setObjectName(name);
    plot_->setObjectName(name + QStringLiteral("_plot"));
    read_out_->setObjectName(name + QStringLiteral("_read_out"));
    read_out_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont small = read_out_->font();
    small.setPointSizeF(small.pointSizeF() * 0.9);
    read_out_->setFont(small);
    read_out_->setMinimumHeight(read_out_->sizeHint().height());
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(plot_, 1);
    column->addWidget(read_out_);
    plot_->setMinimumSize(140, 90);
    plot_->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
    const QList<QCPAxis*> values{plot_->yAxis, plot_->yAxis2};
    plot_->axisRect()->setRangeDragAxes({plot_->xAxis}, values);
    plot_->axisRect()->setRangeZoomAxes({plot_->xAxis}, values);
    for (const QCPAxis* const axis : {plot_->xAxis, plot_->yAxis, plot_->yAxis2})
        connect(axis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this,
                [this] { zoomed_ = zoomed_ || own_view_ == 0; });
    plot_->setNoAntialiasingOnDrag(true);
    plot_->setPlottingHints(QCP::phCacheLabels | QCP::phFastPolylines);
    plot_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(plot_, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) { Open_Menu(at); });
    connect(plot_, &QCustomPlot::mouseMove, this, [this](QMouseEvent* event) {
        pointer_ = event->pos();
        Read_Out();
    });
    connect(plot_, &QCustomPlot::afterReplot, this, [this] { Read_Out(); });  // what is under the pointer has changed
    plot_->installEventFilter(this);
    connect(plot_, &QCustomPlot::mouseDoubleClick, this, [this] { Reset_View(); });
    connect(plot_, &QCustomPlot::mousePress, this, [this](QMouseEvent* event) {
        if (clicked && event->button() == Qt::LeftButton)
            clicked(plot_->xAxis->pixelToCoord(event->position().x()), event->modifiers().testFlag(Qt::ShiftModifier));
    });
    connect(plot_, &QCustomPlot::afterLayout, this, [this] {
        if (equal_)
            Fit_Equal_Scales();
        Place_Legend();
        Arrange_Levels();
        Arrange_Extremes();
    });
    Apply_Palette();
}

void Chart::Show(std::vector<Curve> curves)
{
    curves_ = std::move(curves);
    Make_Graphs();
    Reset_View();
    Read_Out();
}

void Chart::Update(std::vector<Curve> curves)
{
    bool alike = curves.size() == curves_.size() && drawn_.size() == curves_.size();
    for (std::size_t k = 0; k < curves.size() && k < curves_.size(); ++k) {
        curves[k].style = curves_[k].style;
        alike = alike && curves[k].faint == curves_[k].faint && curves[k].beside == curves_[k].beside &&
                curves[k].right_axis == curves_[k].right_axis;
    }
    curves_ = std::move(curves);
    if (alike) {
        for (std::size_t k = 0; k < curves_.size(); ++k)
            Fill_Graph(drawn_[k], curves_[k]);
        Place_Extremes();
    } else {
        Make_Graphs();
    }
    if (zoomed_)
        plot_->replot(QCustomPlot::rpQueuedReplot);
    else
        Reset_View();
    Read_Out();
}

void Chart::Set_Stale(bool stale)
{
    if (stale_ == stale)
        return;
    stale_ = stale;
    Make_Graphs();
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void Chart::Clear()
{
    Show({});
}

void Chart::Set_Title(const QString& title)
{
    QCPLayoutGrid& rows = *plot_->plotLayout();
    if (title_ == nullptr && !title.isEmpty()) {
        rows.insertRow(0);
        title_ = new QCPTextElement(plot_);
        rows.addElement(0, 0, title_);
        title_->setMargins(QMargins(4, 6, 4, 0));
    } else if (title_ != nullptr && title.isEmpty()) {
        rows.remove(title_);
        rows.simplify();
        title_ = nullptr;
    }
    if (title_ != nullptr)
        title_->setText(title);
    Apply_Palette();
}

QString Chart::Title() const
{
    return title_ == nullptr ? QString() : title_->text();
}

void Chart::Set_Axis_Titles(const QString& bottom, const QString& left, const QString& right)
{
    plot_->xAxis->setLabel(bottom);
    plot_->yAxis->setLabel(left);
    plot_->yAxis2->setLabel(right);
}

void Chart::Set_Grid(bool horizontal, bool vertical)
{
    plot_->yAxis->grid()->setVisible(horizontal);
    plot_->xAxis->grid()->setVisible(vertical);
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void Chart::Set_Style(Curve_Style style)
{
    for (Curve& curve : curves_)
        if (!curve.faint)
            curve.style = style;
    Make_Graphs();
    if (zoomed_)
        plot_->replot(QCustomPlot::rpQueuedReplot);
    else
        Reset_View();  // sticks want the axis in view
}

void Chart::Set_Equal_Scales(bool equal)
{
    equal_ = equal;
}

void Chart::Set_Legend(bool visible)
{
    plot_->legend->setVisible(visible);
}

void Chart::Set_Ground(const QColor& ground)
{
    ground_ = ground;
    Apply_Palette();
}

void Chart::Set_Ticks(const Point_Ticks& ticks)
{
    ticks_ = ticks;
    ticks_->tick_every = std::max(ticks.tick_every, 1);
    ticks_->label_every = std::max(ticks.label_every, 1);
    plot_->xAxis->setTicker(QSharedPointer<Point_Ticker>::create(design_, *ticks_));
}

void Chart::Clear_Ticks()
{
    ticks_.reset();
    plot_->xAxis->setTicker(QSharedPointer<QCPAxisTicker>::create());
}

void Chart::Set_Marks(const std::vector<double>& x, const QColor& colour)
{
    marks_ = x;
    mark_colour_ = colour;
    Place_Marks();
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void Chart::Set_Levels(std::vector<Level> levels)
{
    levels_ = std::move(levels);
    Place_Levels();
    if (zoomed_)
        plot_->replot(QCustomPlot::rpQueuedReplot);
    else
        Reset_View();
}

void Chart::Mark_Extremes(bool marked)
{
    extremes_ = marked;
    Place_Extremes();
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void Chart::Reset_View()
{
    const Own_View own(*this);
    zoomed_ = false;
    if (plot_->plottableCount() > 0) {
        for (QCPAxis* const axis : {plot_->xAxis, plot_->yAxis, plot_->yAxis2})
            Set_to_Curves(*axis);
        if (!equal_) {
            Widen_to_Near(*plot_->yAxis);
            Widen_to_Near(*plot_->yAxis2);
        }
        Show_Range(*plot_->yAxis);
        Show_Range(*plot_->yAxis2);
        if (ticks_ && ticks_->points > 1)
            plot_->xAxis->setRange(ticks_->first, ticks_->Last() + ticks_->margin);
    } else {
        plot_->xAxis->setRange(0, 360);
        plot_->yAxis->setRange(-1, 1);
    }
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

/// Sets an axis to the least and the greatest of what its curves have on it, and to nothing else: a curve of one value
/// leaves no range of the curves before behind.
void Chart::Set_to_Curves(QCPAxis& axis) const
{
    double least = std::numeric_limits<double>::max();
    double most = std::numeric_limits<double>::lowest();
    for (const Curve& curve : curves_) {
        const bool abscissa = &axis == plot_->xAxis;
        if (curve.beside || (!abscissa && curve.right_axis != (&axis == plot_->yAxis2)))
            continue;
        for (const double value : abscissa ? curve.x : curve.y) {
            least = std::min(least, value);
            most = std::max(most, value);
        }
        if (equal_ && Has_Sticks(curve)) {  // rays go to the origin
            least = std::min(least, 0.0);
            most = std::max(most, 0.0);
        }
    }
    if (least < most)
        axis.setRange(least, most);
    else if (least == most)
        axis.setRange(least, 2.0, Qt::AlignCenter);  // a flat line shows as one
}

/// Widens an axis of values to the levels on it and the values beside its curves, as far as it need not grow by more
/// than half on a side: one that is far away would press the curves flat.
void Chart::Widen_to_Near(QCPAxis& axis) const
{
    constexpr double most = 0.5;
    const QCPRange range = axis.range();
    const double reach = most * range.size();
    QCPRange wide = range;
    const auto hold = [&](double value) {
        if (value >= range.lower - reach && value <= range.upper + reach)
            wide.expand(QCPRange(value, value));
    };
    if (&axis == plot_->yAxis)
        for (const Level& level : levels_)
            hold(level.value);
    for (const Curve& curve : curves_)
        if (curve.beside && curve.right_axis == (&axis == plot_->yAxis2))
            std::ranges::for_each(curve.y, hold);
    axis.setRange(wide);
}

/// Widens an axis of values to a view that is fit to look at.
void Chart::Show_Range(QCPAxis& axis)
{
    const bool right = &axis == plot_->yAxis2;
    for (const Curve& curve : curves_)
        if (curve.right_axis == right && !curve.beside && Has_Sticks(curve) && !equal_)
            axis.setRange(std::min(axis.range().lower, 0.0), std::max(axis.range().upper, 0.0));
    if (axis.range().size() < 1e-9 * std::max(1.0, std::abs(axis.range().center())))
        axis.setRange(axis.range().center(), 2.0, Qt::AlignCenter);
    constexpr double margin = 1.08;
    axis.scaleRange(margin, axis.range().center());
}

QColor Chart::Colour_of(const Curve& curve, int place) const
{
    if (curve.faint || stale_)
        return palette().color(QPalette::Mid);
    return curve.colour.isValid() ? curve.colour : Own_Colour(place);
}

void Chart::Make_Graphs()
{
    const Own_View own(*this);
    plot_->clearPlottables();
    drawn_.clear();
    QLocale numbers(Current_Decimal_Symbol(design_) == Decimal_Symbol::comma ? QLocale::German : QLocale::C);
    numbers.setNumberOptions(QLocale::OmitGroupSeparator);
    plot_->setLocale(numbers);
    bool right = false;
    int place = 0;
    for (const Curve& curve : curves_) {
        right = right || curve.right_axis;
        if (equal_)  // a closed curve goes back and forth over its abscissa
            Make_Closed_Curve(curve, place);
        else
            Make_Graph(curve, place);
        place += curve.faint ? 0 : 1;
    }
    plot_->yAxis2->setVisible(right);
    Place_Levels();
    Place_Marks();
    Place_Extremes();
}

void Chart::Make_Graph(const Curve& curve, int place)
{
    QCPAxis* const values = curve.right_axis ? plot_->yAxis2 : plot_->yAxis;
    const QColor colour = Colour_of(curve, place);
    Drawn drawn;
    if (curve.style == Curve_Style::sticks_and_line) {
        drawn.sticks = plot_->addGraph(plot_->xAxis, values);
        drawn.sticks->setLineStyle(QCPGraph::lsImpulse);
        drawn.sticks->setPen(Stick_Pen(curve, colour));
        drawn.sticks->removeFromLegend();
    }
    QCPGraph& graph = *plot_->addGraph(plot_->xAxis, values);
    drawn.graph = &graph;
    graph.setAdaptiveSampling(true);
    graph.setScatterStyle(Dots(curve));
    if (Has_Line(curve)) {
        graph.setPen(QPen(colour,
                          curve.faint    ? 1.0
                          : curve.beside ? 1.2
                                         : 1.6,
                          curve.faint ? Qt::DashLine : curve.pattern));
    } else {
        graph.setLineStyle(Has_Sticks(curve) ? QCPGraph::lsImpulse : QCPGraph::lsNone);
        graph.setPen(Has_Sticks(curve) ? Stick_Pen(curve, colour) : QPen(colour, 1.6));
    }
    if (curve.faint) {
        graph.setLayer(QStringLiteral("grid"));
        graph.removeFromLegend();
    }
    Fill_Graph(drawn, curve);
    drawn_.push_back(drawn);
}

void Chart::Make_Closed_Curve(const Curve& curve, int place)
{
    const QColor colour = Colour_of(curve, place);
    const std::size_t count = std::min(curve.x.size(), curve.y.size());
    if (Has_Sticks(curve)) {
        QVector<double> x;
        QVector<double> y;
        for (std::size_t i = 0; i < count; ++i) {  // out to the point and back to the origin
            x << 0.0 << curve.x[i] << 0.0;
            y << 0.0 << curve.y[i] << 0.0;
        }
        auto* const rays = new QCPCurve(plot_->xAxis, plot_->yAxis);
        rays->setData(x, y);
        rays->setPen(Stick_Pen(curve, colour));
        rays->setName(Named_Unit(curve));
        if (Has_Line(curve))
            rays->removeFromLegend();
    }
    if (!Has_Line(curve) && !Has_Dots(curve))
        return;
    auto* const closed = new QCPCurve(plot_->xAxis, plot_->yAxis);
    closed->setData(QVector<double>(curve.x.begin(), curve.x.end()), QVector<double>(curve.y.begin(), curve.y.end()));
    closed->setName(Named_Unit(curve));
    closed->setPen(QPen(colour, 1.6, curve.pattern));
    closed->setScatterStyle(Dots(curve));
    if (!Has_Line(curve)) {
        closed->setLineStyle(QCPCurve::lsNone);
        if (Has_Sticks(curve))
            closed->removeFromLegend();
    }
}

void Chart::Place_Marks()
{
    for (QCPItemStraightLine* const line : mark_lines_)
        plot_->removeItem(line);
    mark_lines_.clear();
    const QColor colour = mark_colour_.isValid() ? mark_colour_ : palette().color(QPalette::Mid);
    for (const double x : marks_) {
        auto* const line = new QCPItemStraightLine(plot_);
        line->point1->setCoords(x, 0);
        line->point2->setTypeX(QCPItemPosition::ptPlotCoords);
        line->point2->setCoords(x, 1);
        line->setPen(QPen(colour, 1, mark_colour_.isValid() ? Qt::SolidLine : Qt::DotLine));
        mark_lines_.push_back(line);
    }
}

void Chart::Place_Levels()
{
    for (const Drawn_Level& drawn : drawn_levels_) {
        plot_->removeItem(drawn.line);
        plot_->removeItem(drawn.label);
    }
    drawn_levels_.clear();
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    const QColor ink = stale_ ? palette().color(QPalette::Mid) : Ink();
    for (const Level& level : levels_) {
        auto* const line = new QCPItemStraightLine(plot_);
        line->point1->setCoords(0, level.value);
        line->point2->setCoords(1, level.value);
        line->setPen(QPen(ink, 1, Qt::DotLine));
        auto* const label = new QCPItemText(plot_);
        label->setText(level.words);
        label->setFont(small);
        label->setColor(ink);
        label->setPadding(QMargins(2, 0, 2, 0));
        label->position->setType(QCPItemPosition::ptAbsolute);
        drawn_levels_.push_back({line, label});
    }
}

/// Puts the words of a level at its right end: on the line, or below it where there is no room above.
void Chart::Arrange_Levels()
{
    const QRect room = plot_->axisRect()->rect();
    for (std::size_t k = 0; k < drawn_levels_.size(); ++k) {
        QCPItemText& label = *drawn_levels_[k].label;
        const double y = plot_->yAxis->coordToPixel(levels_[k].value);
        label.setVisible(y >= room.top() - 1 && y <= room.bottom() + 1);
        const bool below = y - QFontMetricsF(label.font()).height() < room.top();
        label.setPositionAlignment(Qt::AlignRight | (below ? Qt::AlignTop : Qt::AlignBottom));
        label.position->setCoords(room.right(), y);
    }
}

void Chart::Fill_Graph(const Drawn& drawn, const Curve& curve) const
{
    const QSharedPointer<QCPGraphDataContainer> values = drawn.graph->data();
    QVector<QCPGraphData> points(static_cast<qsizetype>(std::min(curve.x.size(), curve.y.size())));
    for (qsizetype i = 0; i < points.size(); ++i)
        points[i] = {curve.x[static_cast<std::size_t>(i)], curve.y[static_cast<std::size_t>(i)]};
    values->set(points, true);
    drawn.graph->setName(Named_Unit(curve));
    if (drawn.sticks != nullptr)
        drawn.sticks->setData(values);
}

/// Makes a unit as long up as across, around the middle of the view. The ticks of the wider view have other labels,
/// which may need more room: so the layout is done again, and the scales after it.
void Chart::Fit_Equal_Scales()
{
    const Own_View own(*this);
    QCPAxis& x = *plot_->xAxis;
    QCPAxis& y = *plot_->yAxis;
    const double across = on_paper_ ? 1.0 : Circle_Width(design_);
    for (int pass = 0; pass < 2; ++pass) {
        const QRect area = plot_->axisRect()->rect();
        if (area.width() < 1 || area.height() < 1)
            return;
        const double per_pixel = std::max(x.range().size() * across / area.width(), y.range().size() / area.height());
        x.setRange(x.range().center(), per_pixel * area.width() / across, Qt::AlignCenter);
        y.setRange(y.range().center(), per_pixel * area.height(), Qt::AlignCenter);
        for (const auto phase :
             {QCPLayoutElement::upPreparation, QCPLayoutElement::upMargins, QCPLayoutElement::upLayout})
            plot_->plotLayout()->update(phase);
    }
}

/// Puts the legend into the corner where it covers least of the curves.
void Chart::Place_Legend()
{
    if (!plot_->legend->visible() || curves_.empty())
        return;
    QCPLayoutInset& inset = *plot_->axisRect()->insetLayout();
    const QRect room = inset.rect();
    const QSize size = plot_->legend->outerRect().size();
    constexpr std::array corners{Qt::AlignTop | Qt::AlignRight, Qt::AlignTop | Qt::AlignLeft,
                                 Qt::AlignBottom | Qt::AlignRight, Qt::AlignBottom | Qt::AlignLeft};
    std::array<QRectF, corners.size()> places;
    for (std::size_t c = 0; c < corners.size(); ++c)
        places[c] = QRectF(corners[c].testFlag(Qt::AlignRight) ? room.right() - size.width() : room.left(),
                           corners[c].testFlag(Qt::AlignBottom) ? room.bottom() - size.height() : room.top(),
                           size.width(), size.height());
    std::array<int, corners.size()> covered{};
    constexpr std::size_t enough = 500;  // points of a curve, to tell where it runs
    for (const Curve& curve : curves_) {
        const QCPAxis& values = curve.right_axis ? *plot_->yAxis2 : *plot_->yAxis;
        const double foot = values.coordToPixel(0.0);
        const std::size_t count = std::min(curve.x.size(), curve.y.size());
        const bool standing = Has_Sticks(curve) && !equal_;
        for (std::size_t i = 0; i < count; i += 1 + count / enough) {
            const QPointF at(plot_->xAxis->coordToPixel(curve.x[i]), values.coordToPixel(curve.y[i]));
            const QRectF ink = standing ? QRectF(at, QPointF(at.x() + 1, foot)).normalized() : QRectF(at, QSizeF(1, 1));
            for (std::size_t c = 0; c < corners.size(); ++c)
                covered[c] += places[c].intersects(ink) ? 1 : 0;
        }
    }
    const auto best = static_cast<std::size_t>(std::min_element(covered.begin(), covered.end()) - covered.begin());
    inset.setInsetAlignment(0, corners[best]);
    inset.update(QCPLayoutElement::upLayout);
}

/// Reads what stands under the pointer now; nothing where it is away.
void Chart::Read_Out()
{
    if (pointer_ && plot_->axisRect()->rect().contains(*pointer_))
        read_out_->setText(equal_ ? Nearest_Point(*pointer_) : Values_at(plot_->xAxis->pixelToCoord(pointer_->x())));
    else
        read_out_->clear();
}

bool Chart::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == plot_ && (event->type() == QEvent::Leave || event->type() == QEvent::Hide)) {
        pointer_.reset();
        Read_Out();
    }
    return QWidget::eventFilter(watched, event);
}

/// The values of all curves at their points nearest to an abscissa.
QString Chart::Values_at(double x) const
{
    QString text;
    for (const Curve& curve : curves_) {
        if (curve.faint || curve.x.empty())
            continue;
        const auto after = std::lower_bound(curve.x.begin(), curve.x.end(), x);
        auto i = static_cast<std::size_t>(after - curve.x.begin());
        if (i == curve.x.size() || (i > 0 && x - curve.x[i - 1] < curve.x[i] - x))
            --i;
        if (text.isEmpty())
            text = Number(design_, curve.x[i]);
        if (std::isfinite(curve.y[i]))
            text += QStringLiteral("    %1 %2").arg(curve.name.trimmed(), Number(design_, curve.y[i]));
    }
    return text;
}

/// The point of the closed curves that is nearest on the screen: its cam angle, and its value or coordinates.
QString Chart::Nearest_Point(const QPoint& position) const
{
    QString text;
    double nearest = std::numeric_limits<double>::max();
    const double x = plot_->xAxis->pixelToCoord(position.x());
    const double y = plot_->yAxis->pixelToCoord(position.y());
    for (const Curve& curve : curves_)
        for (std::size_t i = 0; i < std::min(curve.x.size(), curve.y.size()); ++i) {
            const double distance = std::hypot(curve.x[i] - x, curve.y[i] - y);
            if (curve.faint || distance >= nearest)
                continue;
            nearest = distance;
            const bool told = i < curve.angle.size();
            text = told ? Number(design_, curve.angle[i]) + QStringLiteral("    ") : QString();
            text += curve.name.trimmed() + QLatin1Char(' ');
            const double turn = told ? curve.angle[i] * Rad_per_Deg : 0.0;
            if (curve.value_as_radius && told)
                text += Number(design_, curve.x[i] * std::cos(turn) + curve.y[i] * std::sin(turn));
            else
                text += QStringLiteral("X %1  Y %2").arg(Number(design_, curve.x[i]), Number(design_, curve.y[i]));
        }
    return text;
}

void Chart::Place_Extremes()
{
    for (const Extreme& extreme : marked_) {
        plot_->removeItem(extreme.ring);
        plot_->removeItem(extreme.label);
    }
    marked_.clear();
    if (!extremes_)
        return;
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    for (const Curve& curve : curves_) {
        if (curve.faint || curve.beside || curve.y.empty())
            continue;
        QCPAxis* const values = curve.right_axis ? plot_->yAxis2 : plot_->yAxis;
        const auto [least, most] = std::minmax_element(curve.y.begin(), curve.y.end());
        std::vector<std::vector<double>::const_iterator> found{most};
        if (*least < *most)
            found.push_back(least);
        for (const auto& at : found) {
            const double x = curve.x[static_cast<std::size_t>(at - curve.y.begin())];
            auto* const ring = new QCPItemTracer(plot_);
            ring->setStyle(QCPItemTracer::tsCircle);
            ring->setSize(7);
            ring->position->setAxes(plot_->xAxis, values);
            ring->position->setCoords(x, *at);
            ring->setPen(QPen(Ink()));
            auto* const label = new QCPItemText(plot_);
            label->setText(Rounded(design_, *at) + QStringLiteral(" @ ") + Rounded(design_, x));
            label->setFont(small);
            label->setColor(Ink());
            label->setPositionAlignment(Qt::AlignTop | Qt::AlignLeft);
            label->position->setType(QCPItemPosition::ptAbsolute);
            marked_.push_back({ring, label, values, x, *at});
        }
    }
}

/// Puts every label beside its ring: inside the chart, and off the labels that stand already where there is room.
void Chart::Arrange_Extremes()
{
    constexpr double gap = 6.0;
    const QRectF room = plot_->axisRect()->rect();
    QList<QRectF> taken;
    for (const Extreme& extreme : marked_) {
        const QPointF at(plot_->xAxis->coordToPixel(extreme.x), extreme.values->coordToPixel(extreme.y));
        const bool in_view = room.adjusted(-1, -1, 1, 1).contains(at);
        extreme.ring->setVisible(in_view);
        extreme.label->setVisible(in_view);
        if (!in_view)
            continue;
        const QSizeF size =
            QFontMetricsF(extreme.label->font()).boundingRect(extreme.label->text()).size() + QSizeF(2, 2);
        const auto inside = [&](double left, double top) {
            return QRectF(QPointF(std::clamp(left, room.left(), std::max(room.left(), room.right() - size.width())),
                                  std::clamp(top, room.top(), std::max(room.top(), room.bottom() - size.height()))),
                          size);
        };
        // Above, below, and beside the ring; then line by line away from it.
        QList<QRectF> places{inside(at.x() - size.width() / 2, at.y() - gap - size.height()),
                             inside(at.x() - size.width() / 2, at.y() + gap),
                             inside(at.x() + gap, at.y() - size.height() / 2),
                             inside(at.x() - gap - size.width(), at.y() - size.height() / 2)};
        for (int line = 1; line * size.height() < room.height(); ++line)
            for (const int side : {1, -1})
                places.append(inside(at.x() - size.width() / 2, at.y() + side * line * (size.height() + 1) + gap));
        const QRectF ring(at - QPointF(gap, gap) / 2, QSizeF(gap, gap));
        const auto is_free = [&](const QRectF& place) {
            return !place.intersects(ring) &&
                   std::ranges::none_of(taken, [&](const QRectF& other) { return other.intersects(place); });
        };
        const auto best = std::ranges::find_if(places, is_free);
        const QRectF place = best == places.end() ? places.front() : *best;
        taken.append(place);
        extreme.label->position->setCoords(place.topLeft());
    }
}

QPixmap Chart::Picture(const QSize& size, double scale)
{
    const QSize wanted = size.isEmpty() ? plot_->size() : size;
    on_paper_ = true;
    QPixmap picture = plot_->toPixmap(wanted.width(), wanted.height(), scale);
    on_paper_ = false;
    return picture;
}

std::string Chart::Data_Text() const
{
    std::vector<const Curve*> shown;
    std::size_t rows = 0;
    bool shared = true;  // one abscissa serves all curves
    for (const Curve& curve : curves_) {
        if (curve.faint)
            continue;
        shown.push_back(&curve);
        shared = shared && curve.x == shown.front()->x;
        rows = std::max(rows, curve.x.size());
    }
    const auto cell = [](const std::vector<double>& values, std::size_t i) {
        return i < values.size() && std::isfinite(values[i]) ? Shortest(Single(values[i])) : std::string();
    };
    std::string text = "X";
    for (std::size_t k = 0; k < shown.size(); ++k)
        text += (k > 0 && !shared ? "\tX\t" : "\t") + Named_Unit(*shown[k]).trimmed().toStdString();
    text += '\n';
    for (std::size_t i = 0; i < rows; ++i) {
        for (std::size_t k = 0; k < shown.size(); ++k) {
            if (k == 0 || !shared)
                text += (k == 0 ? "" : "\t") + cell(shown[k]->x, i);
            text += '\t' + cell(shown[k]->y, i);
        }
        text += '\n';
    }
    return text;
}

void Chart::Copy_Picture()
{
    QApplication::clipboard()->setPixmap(Picture({}, 2.0));
}

void Chart::Copy_Data()
{
    QApplication::clipboard()->setText(QString::fromStdString(Data_Text()));
}

bool Chart::Save(const std::string& path, std::string* why)
{
    return Save_Charts({this}, 1, plot_->size(), path, {}, Screen_Picture_Scale, why);
}

void Chart::Paint(QPainter& painter, const QRectF& area)
{
    QPicture picture;
    QCPPainter recorder(&picture);
    recorder.setMode(QCPPainter::pmVectorized);
    recorder.setMode(QCPPainter::pmNoCaching);
    on_paper_ = true;
    plot_->toPainter(&recorder, static_cast<int>(area.width()), static_cast<int>(area.height()));
    on_paper_ = false;
    recorder.end();
    // A picture plays in the resolution of its device: here its units are those of the painter, whatever that is.
    const QPaintDevice& device = *painter.device();
    painter.save();
    painter.translate(area.topLeft());
    painter.scale(double(picture.logicalDpiX()) / device.logicalDpiX(),
                  double(picture.logicalDpiY()) / device.logicalDpiY());
    painter.drawPicture(QPointF(), picture);
    painter.restore();
}

void Chart::Fill_Menu(QMenu& menu)
{
    menu.addAction(QStringLiteral("&Copy as picture"), this, [this] { Copy_Picture(); });
    menu.addAction(QStringLiteral("Copy &data"), this, [this] { Copy_Data(); });
    menu.addAction(QStringLiteral("&Save as..."), this, [this] {
        Save_Picture_As("Save the chart",
                        [this](const std::string& path, std::string& why) { return Save(path, &why); });
    });
    menu.addSeparator();
    QAction* const extremes =
        menu.addAction(QStringLiteral("&Mark extremes"), this, [this](bool on) { Mark_Extremes(on); });
    extremes->setCheckable(true);
    extremes->setChecked(extremes_);
    menu.addAction(QStringLiteral("Show &all"), this, [this] { Reset_View(); });
    if (add_entries)
        add_entries(menu);
}

void Chart::Open_Menu(const QPoint& position)
{
    QMenu menu;
    Fill_Menu(menu);
    menu.exec(plot_->mapToGlobal(position));
}

void Chart::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        Apply_Palette();
}

QColor Chart::Ink() const
{
    return ground_.isValid() ? QColor(Qt::black) : palette().color(QPalette::Text);
}

void Chart::Apply_Palette()
{
    const QColor ink = Ink();
    const QColor ground = ground_.isValid() ? ground_ : palette().color(QPalette::Base);
    QColor lines = ink;
    lines.setAlphaF(0.16F);
    plot_->setBackground(QBrush(ground));
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    for (QCPAxis* const axis : {plot_->xAxis, plot_->yAxis, plot_->xAxis2, plot_->yAxis2}) {
        axis->setBasePen(QPen(ink));
        axis->setTickPen(QPen(ink));
        axis->setSubTickPen(QPen(ink));
        axis->setTickLabelColor(ink);
        axis->setLabelColor(ink);
        axis->setTickLabelFont(small);
        axis->setLabelFont(small);
        axis->grid()->setPen(QPen(lines));
        axis->grid()->setZeroLinePen(QPen(ink, 0.8));
    }
    if (title_ != nullptr) {
        QFont large = font();
        large.setWeight(QFont::DemiBold);
        title_->setFont(large);
        title_->setTextColor(ink);
    }
    plot_->legend->setTextColor(ink);
    plot_->legend->setFont(small);
    plot_->legend->setBrush(QBrush(ground));
    plot_->legend->setBorderPen(QPen(lines));
    Place_Levels();
    Place_Extremes();
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

bool Save_Charts(const std::vector<Chart*>& charts, int columns, const QSize& size, const std::string& path,
                 const QString& title, double scale, std::string* why)
{
    const int rows = (static_cast<int>(charts.size()) + columns - 1) / columns;
    QFont large = charts.front()->font();
    large.setPixelSize(QFontInfo(large).pixelSize());  // the same on paper as on the screen
    large.setWeight(QFont::DemiBold);
    const double head = title.isEmpty() ? 0.0 : 2.0 * large.pixelSize();
    const auto paint = [&](QPainter& painter) {
        if (!title.isEmpty()) {
            painter.setFont(large);
            painter.drawText(QRectF(0, 0, size.width(), head), Qt::AlignCenter, title);
        }
        const double width = double(size.width()) / columns;
        const double height = (size.height() - head) / rows;
        for (int k = 0; k < static_cast<int>(charts.size()); ++k)
            charts[static_cast<std::size_t>(k)]->Paint(
                painter, QRectF(k % columns * width, head + k / columns * height, width, height));
        return true;
    };
    return Save_Picture(size, path, scale, paint, why);
}

}  // namespace lobemax::paint
