// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/chart.h"

#include <qcustomplot.h>

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QPdfWriter>
#include <QPicture>
#include <QSvgGenerator>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>

#include "core/text.h"

namespace lobemax::paint {

namespace {

/// Curve colours that keep apart on light and on dark ground and for colour-blind eyes.
/// Source: Okabe and Ito, Color Universal Design (2008).
constexpr std::array curve_colours{0x0072B2, 0xD55E00, 0x009E73, 0xCC79A7, 0xE69F00, 0x56B4E9};

QColor Own_Colour(int place)
{
    return QColor::fromRgb(static_cast<QRgb>(curve_colours[static_cast<std::size_t>(place) % curve_colours.size()]));
}

QString Number(double value)
{
    return QString::fromStdString(In_Number_Format(Shortest(Single(value))));
}

QString Named_Unit(const Curve& curve)
{
    return curve.unit.isEmpty() ? curve.name : curve.name + QStringLiteral(", ") + curve.unit;
}

}  // namespace

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

Chart::Chart(const QString& name, QWidget* parent)
    : QWidget(parent), plot_(new QCustomPlot), read_out_(new QLabel), title_(new QLabel)
{
    setObjectName(name);
    plot_->setObjectName(name + QStringLiteral("_plot"));
    read_out_->setObjectName(name + QStringLiteral("_read_out"));
    title_->setObjectName(name + QStringLiteral("_title"));
    title_->setAlignment(Qt::AlignCenter);
    title_->hide();
    read_out_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont small = read_out_->font();
    small.setPointSizeF(small.pointSizeF() * 0.9);
    read_out_->setFont(small);
    read_out_->setMinimumHeight(read_out_->sizeHint().height());
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(title_);
    column->addWidget(plot_, 1);
    column->addWidget(read_out_);
    plot_->setMinimumSize(140, 90);
    plot_->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
    plot_->setNoAntialiasingOnDrag(true);
    plot_->setPlottingHints(QCP::phCacheLabels | QCP::phFastPolylines);
    plot_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(plot_, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) { Open_Menu(at); });
    connect(plot_, &QCustomPlot::mouseMove, this, [this](QMouseEvent* event) { Point_at(event->pos()); });
    connect(plot_, &QCustomPlot::mouseDoubleClick, this, [this] { Reset_View(); });
    connect(plot_, &QCustomPlot::mousePress, this, [this](QMouseEvent* event) {
        if (clicked && event->button() == Qt::LeftButton)
            clicked(plot_->xAxis->pixelToCoord(event->position().x()), event->modifiers().testFlag(Qt::ShiftModifier));
    });
    connect(plot_, &QCustomPlot::afterLayout, this, [this] {
        if (equal_)
            Fit_Equal_Scales();
    });
    Apply_Palette();
}

void Chart::Show(std::vector<Curve> curves)
{
    curves_ = std::move(curves);
    Make_Graphs();
    Place_Extremes();
    Reset_View();
}

void Chart::Update(std::vector<Curve> curves)
{
    if (curves.size() != static_cast<std::size_t>(plot_->graphCount()) || equal_) {
        Show(std::move(curves));
        return;
    }
    curves_ = std::move(curves);
    for (int k = 0; k < plot_->graphCount(); ++k)
        Fill_Graph(*plot_->graph(k), curves_[static_cast<std::size_t>(k)]);
    Place_Extremes();
    Reset_View();
}

void Chart::Clear()
{
    Show({});
}

void Chart::Set_Title(const QString& title)
{
    title_->setText(title);
    title_->setVisible(!title.isEmpty());
}

void Chart::Set_Axis_Titles(const QString& bottom, const QString& left, const QString& right)
{
    plot_->xAxis->setLabel(bottom);
    plot_->yAxis->setLabel(left);
    plot_->yAxis2->setLabel(right);
}

void Chart::Set_Grid(bool horizontal, bool vertical)
{
    horizontal_grid_ = horizontal;
    vertical_grid_ = vertical;
    plot_->yAxis->grid()->setVisible(horizontal);
    plot_->xAxis->grid()->setVisible(vertical);
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void Chart::Set_Style(Curve_Style style)
{
    for (Curve& curve : curves_)
        if (!curve.faint)
            curve.style = style;
    for (int k = 0; k < plot_->graphCount(); ++k)
        Style_Graph(*plot_->graph(k), curves_[static_cast<std::size_t>(k)], k);
    plot_->replot(QCustomPlot::rpQueuedReplot);
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

void Chart::Set_Range(double first, double last)
{
    plot_->xAxis->setRange(first, last);
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void Chart::Set_Marks(const std::vector<double>& x, const QColor& colour)
{
    marks_ = x;
    mark_colour_ = colour;
    Make_Graphs();
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void Chart::Mark_Extremes(bool marked)
{
    extremes_ = marked;
    Place_Extremes();
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void Chart::Reset_View()
{
    plot_->rescaleAxes();
    constexpr double margin = 1.08;
    if (plot_->graphCount() > 0 || plot_->plottableCount() > 0) {
        for (QCPAxis* const axis : {plot_->yAxis, plot_->yAxis2}) {
            if (axis->range().size() < 1e-9 * std::max(1.0, std::abs(axis->range().center())))
                axis->setRange(axis->range().center(), 2.0, Qt::AlignCenter);  // a flat line shows as one
            axis->scaleRange(margin, axis->range().center());
        }
    } else {
        plot_->xAxis->setRange(0, 360);
        plot_->yAxis->setRange(-1, 1);
    }
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void Chart::Make_Graphs()
{
    plot_->clearPlottables();
    plot_->clearItems();
    bool right = false;
    int place = 0;
    for (const Curve& curve : curves_) {
        right = right || curve.right_axis;
        QCPAxis* const values = curve.right_axis ? plot_->yAxis2 : plot_->yAxis;
        if (equal_) {  // a closed curve goes back and forth over its abscissa
            auto* const closed = new QCPCurve(plot_->xAxis, values);
            QVector<double> x(curve.x.begin(), curve.x.end());
            QVector<double> y(curve.y.begin(), curve.y.end());
            closed->setData(x, y);
            closed->setName(Named_Unit(curve));
            closed->setPen(QPen(curve.colour.isValid() ? curve.colour : Own_Colour(place), 1.6));
        } else {
            QCPGraph* const graph = plot_->addGraph(plot_->xAxis, values);
            graph->setAdaptiveSampling(true);
            Fill_Graph(*graph, curve);
            Style_Graph(*graph, curve, place);
        }
        place += curve.faint ? 0 : 1;
    }
    plot_->yAxis2->setVisible(right);
    const QColor colour = mark_colour_.isValid() ? mark_colour_ : palette().color(QPalette::Mid);
    for (const double x : marks_) {
        auto* const line = new QCPItemStraightLine(plot_);
        line->point1->setCoords(x, 0);
        line->point2->setTypeX(QCPItemPosition::ptPlotCoords);
        line->point2->setCoords(x, 1);
        line->setPen(QPen(colour, 1, mark_colour_.isValid() ? Qt::SolidLine : Qt::DotLine));
    }
}

void Chart::Fill_Graph(QCPGraph& graph, const Curve& curve) const
{
    QVector<QCPGraphData> points(static_cast<qsizetype>(std::min(curve.x.size(), curve.y.size())));
    for (qsizetype i = 0; i < points.size(); ++i)
        points[i] = {curve.x[static_cast<std::size_t>(i)], curve.y[static_cast<std::size_t>(i)]};
    graph.data()->set(points, true);
    graph.setName(Named_Unit(curve));
}

void Chart::Style_Graph(QCPGraph& graph, const Curve& curve, int place) const
{
    QColor colour = curve.colour.isValid() ? curve.colour : Own_Colour(place);
    if (curve.faint) {
        colour = palette().color(QPalette::Mid);
        graph.setLayer(QStringLiteral("grid"));
        graph.removeFromLegend();
    }
    graph.setPen(QPen(colour, curve.faint ? 1.0 : 1.6, curve.faint ? Qt::DashLine : Qt::SolidLine));
    const bool sticks = curve.style == Curve_Style::sticks || curve.style == Curve_Style::sticks_and_line;
    graph.setLineStyle(curve.style == Curve_Style::points   ? QCPGraph::lsNone
                       : curve.style == Curve_Style::sticks ? QCPGraph::lsImpulse
                                                            : QCPGraph::lsLine);
    const bool dots = curve.style == Curve_Style::points || curve.style == Curve_Style::line_and_points || sticks;
    graph.setScatterStyle(dots ? QCPScatterStyle(QCPScatterStyle::ssDisc, 4) : QCPScatterStyle::ssNone);
}

/// Makes a unit as long up as across, around the middle of the view.
void Chart::Fit_Equal_Scales()
{
    const QRect area = plot_->axisRect()->rect();
    if (area.width() < 1 || area.height() < 1)
        return;
    const double per_pixel =
        std::max(plot_->xAxis->range().size() / area.width(), plot_->yAxis->range().size() / area.height());
    plot_->xAxis->setRange(plot_->xAxis->range().center(), per_pixel * area.width(), Qt::AlignCenter);
    plot_->yAxis->setRange(plot_->yAxis->range().center(), per_pixel * area.height(), Qt::AlignCenter);
}

void Chart::Point_at(const QPoint& position)
{
    if (!plot_->axisRect()->rect().contains(position) || plot_->graphCount() == 0) {
        read_out_->clear();
        return;
    }
    const double x = plot_->xAxis->pixelToCoord(position.x());
    QString text;
    for (const Curve& curve : curves_) {
        if (curve.faint || curve.x.empty())
            continue;
        const auto after = std::lower_bound(curve.x.begin(), curve.x.end(), x);
        auto i = static_cast<std::size_t>(after - curve.x.begin());
        if (i == curve.x.size() || (i > 0 && x - curve.x[i - 1] < curve.x[i] - x))
            --i;
        if (text.isEmpty())
            text = Number(curve.x[i]);
        text += QStringLiteral("    %1 %2").arg(curve.name.trimmed(), Number(curve.y[i]));
    }
    read_out_->setText(text);
}

void Chart::Place_Extremes()
{
    for (int k = plot_->itemCount() - 1; k >= 0; --k)
        if (qobject_cast<QCPItemTracer*>(plot_->item(k)) != nullptr ||
            qobject_cast<QCPItemText*>(plot_->item(k)) != nullptr)
            plot_->removeItem(k);
    if (!extremes_)
        return;
    for (const Curve& curve : curves_) {
        if (curve.faint || curve.y.empty())
            continue;
        const auto [least, most] = std::minmax_element(curve.y.begin(), curve.y.end());
        for (const auto& at : {least, most}) {
            const double x = curve.x[static_cast<std::size_t>(at - curve.y.begin())];
            auto* const tracer = new QCPItemTracer(plot_);
            tracer->setStyle(QCPItemTracer::tsCircle);
            tracer->setSize(7);
            tracer->position->setCoords(x, *at);
            tracer->setPen(QPen(palette().color(QPalette::Text)));
            auto* const text = new QCPItemText(plot_);
            text->setText(Number(*at) + QStringLiteral(" @ ") + Number(x));
            text->setColor(palette().color(QPalette::Text));
            text->setPositionAlignment((at == most ? Qt::AlignTop : Qt::AlignBottom) | Qt::AlignHCenter);
            text->position->setCoords(x, *at);
        }
    }
}

QPixmap Chart::Picture(const QSize& size, double scale)
{
    const QSize wanted = size.isEmpty() ? plot_->size() : size;
    return plot_->toPixmap(wanted.width(), wanted.height(), scale);
}

std::string Chart::Data_Text() const
{
    std::string text = "X";
    std::size_t rows = 0;
    for (const Curve& curve : curves_) {
        if (curve.faint)
            continue;
        text += '\t' + Named_Unit(curve).trimmed().toStdString();
        rows = std::max(rows, curve.x.size());
    }
    text += '\n';
    for (std::size_t i = 0; i < rows; ++i) {
        bool first = true;
        for (const Curve& curve : curves_) {
            if (curve.faint)
                continue;
            if (first)
                text += i < curve.x.size() ? Shortest(Single(curve.x[i])) : "";
            first = false;
            text += '\t' + (i < curve.y.size() ? Shortest(Single(curve.y[i])) : std::string());
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

bool Chart::Save(const QString& path)
{
    const QSize size = plot_->size();
    if (path.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive))
        return plot_->savePdf(path, size.width(), size.height(), QCP::epNoCosmetic);
    if (path.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive)) {
        QSvgGenerator svg;
        svg.setFileName(path);
        svg.setSize(size);
        svg.setViewBox(QRect(QPoint(), size));
        QCPPainter painter;
        if (!painter.begin(&svg))
            return false;
        painter.setMode(QCPPainter::pmVectorized);
        plot_->toPainter(&painter, size.width(), size.height());
        return painter.end();
    }
    return plot_->savePng(path, size.width(), size.height(), 2.0);
}

void Chart::Paint(QPainter& painter, const QRectF& area)
{
    QPicture picture;
    QCPPainter recorder(&picture);
    recorder.setMode(QCPPainter::pmVectorized);
    recorder.setMode(QCPPainter::pmNoCaching);
    plot_->toPainter(&recorder, static_cast<int>(area.width()), static_cast<int>(area.height()));
    recorder.end();
    painter.drawPicture(area.topLeft(), picture);
}

void Chart::Open_Menu(const QPoint& position)
{
    QMenu menu;
    menu.addAction(QStringLiteral("&Copy as picture"), this, [this] { Copy_Picture(); });
    menu.addAction(QStringLiteral("Copy &data"), this, [this] { Copy_Data(); });
    menu.addAction(QStringLiteral("&Save as..."), this, [this] {
        const QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Save the chart"), QString(),
                                                          QStringLiteral("PNG (*.png);;SVG (*.svg);;PDF (*.pdf)"));
        if (!path.isEmpty())
            Save(path);
    });
    menu.addSeparator();
    QAction* const extremes =
        menu.addAction(QStringLiteral("&Mark extremes"), this, [this](bool on) { Mark_Extremes(on); });
    extremes->setCheckable(true);
    extremes->setChecked(extremes_);
    menu.addAction(QStringLiteral("Show &all"), this, [this] { Reset_View(); });
    if (add_entries)
        add_entries(menu);
    menu.exec(plot_->mapToGlobal(position));
}

void Chart::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        Apply_Palette();
}

void Chart::Apply_Palette()
{
    const QColor ink = ground_.isValid() ? QColor(Qt::black) : palette().color(QPalette::Text);
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
    plot_->legend->setTextColor(ink);
    plot_->legend->setFont(small);
    plot_->legend->setBrush(QBrush(ground));
    plot_->legend->setBorderPen(QPen(lines));
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

bool Save_Charts(const std::vector<Chart*>& charts, int columns, const QSize& size, const QString& path)
{
    const int rows = (static_cast<int>(charts.size()) + columns - 1) / columns;
    const auto paint_all = [&](QPaintDevice& device, double scale) {
        QPainter painter;
        if (!painter.begin(&device))
            return false;
        painter.scale(scale, scale);
        const double width = double(size.width()) / columns;
        const double height = double(size.height()) / rows;
        for (int k = 0; k < static_cast<int>(charts.size()); ++k)
            charts[static_cast<std::size_t>(k)]->Paint(
                painter, QRectF(k % columns * width, k / columns * height, width, height));
        return painter.end();
    };
    if (path.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive)) {
        QSvgGenerator svg;
        svg.setFileName(path);
        svg.setSize(size);
        svg.setViewBox(QRect(QPoint(), size));
        return paint_all(svg, 1.0);
    }
    if (path.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive)) {
        QPdfWriter pdf(path);
        pdf.setPageSize(QPageSize(QSizeF(size), QPageSize::Point));
        pdf.setPageMargins(QMarginsF());
        return paint_all(pdf, double(pdf.width()) / size.width());
    }
    constexpr int fine = 2;
    QImage picture(size * fine, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter(&picture).setRenderHint(QPainter::Antialiasing);
    return paint_all(picture, fine) && picture.save(path);
}

}  // namespace lobemax::paint
