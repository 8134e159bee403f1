// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/chart.h"

#include <gtest/gtest.h>
#include <qcustomplot.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <limits>

#include "core/messages.h"
#include "paint/print.h"
#include "tests/support/test_design.h"

namespace lobemax::paint {
namespace {

Curve Circle()
{
    Curve circle;
    for (int i = 0; i <= 360; ++i) {
        circle.x.push_back(30 * std::cos(i * 3.14159265358979 / 180));
        circle.y.push_back(30 * std::sin(i * 3.14159265358979 / 180));
    }
    return circle;
}

Curve Sine(const char* name = "S")
{
    Curve curve;
    curve.name = name;
    curve.unit = "mm";
    for (int i = 0; i <= 360; ++i) {
        curve.x.push_back(i);
        curve.y.push_back(10 * std::sin(i * 3.14159265358979 / 180));
    }
    return curve;
}

/// The ticks that an axis drew last.
class Drawn_Axis : public QCPAxis {
public:
    static QVector<double> Ticks(const QCPAxis& axis) { return axis.*(&Drawn_Axis::mTickVector); }

private:
    Drawn_Axis() = delete;
};

class Charts : public ::testing::Test {
protected:
    Charts() : chart_(design, "grf_Test") { chart_.resize(400, 300); }
    Chart chart_;
    QTemporaryDir folder_;
};

/// The horizontal lines and the words of the levels of a chart.
struct Shown_Levels {
    std::vector<double> values;
    std::vector<std::string> words;
};

Shown_Levels Levels_on(const Chart& chart)
{
    Shown_Levels shown;
    for (int k = 0; k < chart.Plot().itemCount(); ++k) {
        const QCPAbstractItem* const item = const_cast<Chart&>(chart).Plot().item(k);
        if (const auto* line = qobject_cast<const QCPItemStraightLine*>(item);
            line != nullptr && line->point1->value() == line->point2->value()) {
            shown.values.push_back(line->point1->value());
            EXPECT_EQ(line->pen().style(), Qt::DotLine);
        }
        if (const auto* text = qobject_cast<const QCPItemText*>(item))
            shown.words.push_back(text->text().toStdString());
    }
    return shown;
}

TEST_F(Charts, a_near_level_is_in_view_and_a_far_one_does_not_press_the_curve_flat)
{
    chart_.Show({Sine()});
    const double before = chart_.Plot().yAxis->range().upper;
    chart_.Set_Levels({{14.0, "limit 14"}, {-40.0, "limit 40"}});
    const QCPRange range = chart_.Plot().yAxis->range();
    EXPECT_GT(range.upper, 14.0);
    EXPECT_LT(range.upper, 16.0);
    EXPECT_GT(range.lower, -13.0);
    EXPECT_EQ(Levels_on(chart_).values, (std::vector<double>{14.0, -40.0}));
    EXPECT_EQ(Levels_on(chart_).words, (std::vector<std::string>{"limit 14", "limit 40"}));
    chart_.Set_Marks({90});  // marks and levels leave one another alone
    chart_.Set_Marks({});
    EXPECT_EQ(Levels_on(chart_).values.size(), 2U);
    chart_.Set_Stale(true);
    EXPECT_EQ(Levels_on(chart_).values.size(), 2U);
    chart_.Set_Levels({});
    EXPECT_EQ(Levels_on(chart_).values.size(), 0U);
    EXPECT_EQ(chart_.Plot().yAxis->range().upper, before);
}

TEST_F(Charts, the_words_of_a_level_stand_inside_the_chart)
{
    chart_.Show({Sine()});
    chart_.Set_Levels({{10.0, "above"}, {0.0, "middle"}, {-10.0, "below"}});
    chart_.Picture();
    const QRect room = chart_.Plot().axisRect()->rect();
    for (int k = 0; k < chart_.Plot().itemCount(); ++k)
        if (auto* const text = qobject_cast<QCPItemText*>(chart_.Plot().item(k))) {
            const bool below = text->positionAlignment().testFlag(Qt::AlignTop);
            const double height = QFontMetricsF(text->font()).height();
            const double top = text->position->pixelPosition().y() - (below ? 0.0 : height);
            EXPECT_GE(top, room.top() - 1) << text->text().toStdString();
            EXPECT_LE(top + height, room.bottom() + 1 + height) << text->text().toStdString();
            EXPECT_EQ(text->position->pixelPosition().x(), room.right());
        }
}

TEST_F(Charts, a_curve_beside_is_thin_and_dashed_and_does_not_rule_the_view)
{
    Curve beside = Sine("S, true");
    beside.beside = true;
    beside.pattern = Qt::DashLine;
    beside.y[90] = 1e6;
    beside.y[91] = std::numeric_limits<double>::quiet_NaN();
    beside.y[270] = -12.0;
    chart_.Mark_Extremes(true);
    chart_.Show({Sine(), beside});
    EXPECT_LT(chart_.Plot().yAxis->range().upper, 12.0);
    EXPECT_LT(chart_.Plot().yAxis->range().lower, -12.0);  // near enough
    EXPECT_GT(chart_.Plot().yAxis->range().lower, -14.0);
    const QPen row = chart_.Plot().graph(0)->pen();
    const QPen truth = chart_.Plot().graph(1)->pen();
    EXPECT_LT(truth.widthF(), row.widthF());
    EXPECT_EQ(truth.style(), Qt::DashLine);
    const std::string data = chart_.Data_Text();  // a gap is an empty cell
    EXPECT_NE(data.find("\n91\t9.998477\t\n"), std::string::npos) << data;
    chart_.Set_Stale(true);  // in gray the pattern tells them apart
    EXPECT_EQ(chart_.Plot().graph(0)->pen().color(), chart_.Plot().graph(1)->pen().color());
    EXPECT_EQ(chart_.Plot().graph(1)->pen().style(), Qt::DashLine);
}

TEST_F(Charts, a_curve_is_shown_whole)
{
    chart_.Show({Sine()});
    ASSERT_EQ(chart_.Plot().graphCount(), 1);
    EXPECT_EQ(chart_.Plot().graph(0)->dataCount(), 361);
    EXPECT_EQ(chart_.Plot().xAxis->range().lower, 0.0);
    EXPECT_EQ(chart_.Plot().xAxis->range().upper, 360.0);
    EXPECT_GT(chart_.Plot().yAxis->range().upper, 10.0);
    EXPECT_LT(chart_.Plot().yAxis->range().lower, -10.0);
}

TEST_F(Charts, a_curve_of_zeros_is_a_flat_line)
{
    Curve flat = Sine();
    std::fill(flat.y.begin(), flat.y.end(), 0.0);
    chart_.Show({flat});
    EXPECT_GT(chart_.Plot().yAxis->range().size(), 1.0);
    chart_.Clear();
    EXPECT_EQ(chart_.Plot().graphCount(), 0);
}

TEST_F(Charts, rows_of_results_become_curves_over_their_angles)
{
    std::vector<Single> angle;
    std::vector<Single> row;
    for (int i = 0; i <= 100; ++i) {
        angle.emplace_back(i * 0.5);
        row.emplace_back(i * i);
    }
    const Curve curve = Row_Curve("A", "mm", angle, row, 10, 20);
    ASSERT_EQ(curve.x.size(), 11U);
    EXPECT_EQ(curve.x.front(), 5.0);
    EXPECT_EQ(curve.y.back(), 400.0);
    EXPECT_EQ(Row_Curve("A", "mm", angle, row, 90, 500).x.size(), 11U);  // no further than there is
}

TEST_F(Charts, coordinates_with_equal_scales_stay_round)
{
    const Curve circle = Circle();
    chart_.resize(600, 200);
    chart_.Set_Equal_Scales(true);
    chart_.show();
    chart_.Show({circle});
    chart_.Plot().replot();
    const auto pixels = [&](QCPAxis* axis) { return axis->coordToPixel(30) - axis->coordToPixel(-30); };
    EXPECT_NEAR(std::abs(pixels(chart_.Plot().xAxis)), std::abs(pixels(chart_.Plot().yAxis)), 1.0);
}

TEST_F(Charts, coordinates_with_equal_scales_have_ticks_all_over_the_view_at_once)
{
    const Curve circle = Circle();
    chart_.resize(600, 200);
    chart_.Set_Equal_Scales(true);
    chart_.Show({circle});
    chart_.Picture({600, 200});
    const QCPRange view = chart_.Plot().xAxis->range();
    const QVector<double> ticks = Drawn_Axis::Ticks(*chart_.Plot().xAxis);
    ASSERT_GE(ticks.size(), 3);
    EXPECT_LT(ticks.front(), view.lower + 0.25 * view.size());
    EXPECT_GT(ticks.back(), view.upper - 0.25 * view.size());
}

TEST_F(Charts, data_are_copied_as_columns_and_pictures_as_pictures)
{
    Curve faint = Sine("before");
    faint.faint = true;
    chart_.Show({Sine("S"), Sine("V"), faint});
    chart_.Copy_Data();
    const QStringList lines = QApplication::clipboard()->text().split('\n');
    EXPECT_EQ(lines[0], "X\tS, mm\tV, mm");
    EXPECT_EQ(lines[1], "0\t0\t0");
    EXPECT_EQ(lines.size(), 363);
    chart_.Copy_Picture();
    EXPECT_FALSE(QApplication::clipboard()->pixmap().isNull());
}

TEST_F(Charts, pictures_are_saved_by_the_ending_of_their_name)
{
    chart_.Show({Sine()});
    const auto head = [&](const char* name, qint64 count) {
        const QString path = folder_.filePath(name);
        EXPECT_TRUE(chart_.Save(path.toStdString())) << name;
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.read(count);
    };
    EXPECT_EQ(head("a.png", 4), QByteArray("\x89PNG"));
    EXPECT_EQ(head("a.pdf", 5), "%PDF-");
    EXPECT_TRUE(head("a.svg", 400).contains("<svg"));
    EXPECT_FALSE(chart_.Save("/no/such/folder/a.png"));
}

TEST_F(Charts, styles_marks_and_extremes_change_what_is_drawn)
{
    chart_.Show({Sine()});
    chart_.Set_Style(Curve_Style::sticks);
    EXPECT_EQ(chart_.Plot().graph(0)->lineStyle(), QCPGraph::lsImpulse);
    chart_.Set_Style(Curve_Style::line);
    EXPECT_EQ(chart_.Plot().graph(0)->lineStyle(), QCPGraph::lsLine);
    chart_.Set_Marks({90, 180});
    EXPECT_EQ(chart_.Plot().itemCount(), 2);
    chart_.Mark_Extremes(true);
    EXPECT_EQ(chart_.Plot().itemCount(), 2 + 4);  // a ring and a text at both extremes
    chart_.Mark_Extremes(false);
    EXPECT_EQ(chart_.Plot().itemCount(), 2);
    chart_.Set_Grid(false, true);
    EXPECT_FALSE(chart_.Plot().yAxis->grid()->visible());
    EXPECT_TRUE(chart_.Plot().xAxis->grid()->visible());
}

TEST_F(Charts, sticks_beside_a_line_are_drawn_both)
{
    chart_.Show({Sine()});
    chart_.Set_Style(Curve_Style::sticks_and_line);
    ASSERT_EQ(chart_.Plot().graphCount(), 2);
    EXPECT_EQ(chart_.Plot().graph(0)->lineStyle(), QCPGraph::lsImpulse);
    EXPECT_EQ(chart_.Plot().graph(1)->lineStyle(), QCPGraph::lsLine);
    EXPECT_EQ(chart_.Plot().graph(0)->dataCount(), 361);
    EXPECT_EQ(chart_.Plot().legend->itemCount(), 1);
    chart_.Set_Style(Curve_Style::points);
    ASSERT_EQ(chart_.Plot().graphCount(), 1);
    EXPECT_EQ(chart_.Plot().graph(0)->lineStyle(), QCPGraph::lsNone);
    EXPECT_EQ(chart_.Plot().graph(0)->scatterStyle().shape(), QCPScatterStyle::ssDisc);
}

TEST_F(Charts, sticks_stand_on_an_axis_that_is_in_view)
{
    Curve high = Sine();
    for (double& y : high.y)
        y += 100;
    high.style = Curve_Style::sticks;
    chart_.Show({high});
    EXPECT_LE(chart_.Plot().yAxis->range().lower, 0.0);
    high.style = Curve_Style::line;
    chart_.Show({high});
    EXPECT_GT(chart_.Plot().yAxis->range().lower, 80.0);
    chart_.Set_Style(Curve_Style::sticks_and_line);
    EXPECT_LE(chart_.Plot().yAxis->range().lower, 0.0);
}

/// Texts and abscissas of the ticks that the chart shows.
std::pair<QVector<double>, QVector<QString>> Ticks_of(Chart& chart)
{
    QCPAxis& axis = *chart.Plot().xAxis;
    QVector<double> ticks;
    QVector<QString> labels;
    axis.ticker()->generate(axis.range(), chart.Plot().locale(), 'g', 6, ticks, nullptr, &labels);
    return {ticks, labels};
}

TEST_F(Charts, ticks_stand_at_every_so_many_points_and_labels_at_every_so_many)
{
    chart_.Set_Ticks({.first = 0, .per_point = 1, .points = 361, .tick_every = 30, .label_every = 60});
    chart_.Show({Sine()});
    const auto [ticks, labels] = Ticks_of(chart_);
    ASSERT_EQ(ticks.size(), 13);
    EXPECT_EQ(ticks[1], 30.0);
    EXPECT_EQ(ticks[12], 360.0);
    EXPECT_EQ(labels, (QVector<QString>{"0", "", "60", "", "120", "", "180", "", "240", "", "300", "", "360"}));
}

TEST_F(Charts, ticks_below_a_degree_count_from_the_first_point)
{
    Curve part = Sine();
    part.x.clear();
    for (int i = 0; i <= 360; ++i)
        part.x.push_back(90.0 + i * 0.125);
    chart_.Set_Ticks({.first = 90, .per_point = 0.125, .points = 361, .tick_every = 30, .label_every = 60});
    chart_.Show({part});
    const auto [ticks, labels] = Ticks_of(chart_);
    EXPECT_EQ(chart_.Plot().xAxis->range().lower, 90.0);
    EXPECT_EQ(chart_.Plot().xAxis->range().upper, 135.0);
    EXPECT_EQ(ticks[1], 93.75);
    EXPECT_EQ(labels[2], "97.5");
}

TEST_F(Charts, a_zoomed_view_has_labels_of_its_own)
{
    chart_.Set_Ticks({.first = 0, .per_point = 1, .points = 361, .tick_every = 30, .label_every = 60});
    chart_.Show({Sine()});
    chart_.Plot().xAxis->setRange(61, 89);
    const auto [ticks, labels] = Ticks_of(chart_);
    const auto in_view = [](double x) { return x >= 61 && x <= 89; };
    EXPECT_GE(std::count_if(ticks.begin(), ticks.end(), in_view), 3);
    EXPECT_FALSE(labels.contains(QString()));
    chart_.Reset_View();
    EXPECT_EQ(Ticks_of(chart_).first.size(), 13);
    chart_.Clear_Ticks();
    EXPECT_NE(Ticks_of(chart_).first.size(), 13);
}

TEST_F(Charts, the_title_stands_in_the_chart_and_its_pictures)
{
    chart_.Show({Sine()});
    chart_.Plot().replot();
    const int before = chart_.Plot().axisRect()->rect().top();
    chart_.Set_Title("Selected    e  ");
    chart_.Plot().replot();
    EXPECT_EQ(chart_.Title(), "Selected    e  ");
    EXPECT_GT(chart_.Plot().axisRect()->rect().top(), before);
    const QString path = folder_.filePath("t.svg");
    ASSERT_TRUE(chart_.Save(path.toStdString()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("Selected"));
    chart_.Set_Title({});
    chart_.Plot().replot();
    EXPECT_EQ(chart_.Plot().axisRect()->rect().top(), before);
}

TEST_F(Charts, an_update_keeps_what_the_user_has_zoomed_into_view)
{
    chart_.Show({Sine()});
    Curve twice = Sine();
    for (double& y : twice.y)
        y *= 2;
    chart_.Update({twice});
    EXPECT_GT(chart_.Plot().yAxis->range().upper, 20.0);  // nothing was zoomed: all is shown
    chart_.Plot().xAxis->setRange(40, 80);
    chart_.Update({Sine()});
    EXPECT_EQ(chart_.Plot().xAxis->range().upper, 80.0);
    chart_.Update({Sine(), twice});  // also with another count of curves
    EXPECT_EQ(chart_.Plot().xAxis->range().upper, 80.0);
    chart_.Reset_View();
    chart_.Update({twice});
    EXPECT_EQ(chart_.Plot().xAxis->range().upper, 360.0);
}

TEST_F(Charts, an_update_keeps_the_style)
{
    chart_.Show({Sine()});
    chart_.Set_Style(Curve_Style::sticks_and_line);
    Curve twice = Sine();
    for (double& y : twice.y)
        y *= 2;
    chart_.Update({twice});
    ASSERT_EQ(chart_.Plot().graphCount(), 2);
    for (int k = 0; k < 2; ++k)
        EXPECT_NEAR(chart_.Plot().graph(k)->data()->at(90)->value, 20.0, 1e-9);
}

/// A user with a mouse over the chart.
class Charts_at_Hand : public Charts {
protected:
    void SetUp() override
    {
        chart_.resize(600, 400);
        chart_.show();
        QApplication::processEvents();
    }
    void Open(std::vector<Curve> curves)
    {
        chart_.Show(std::move(curves));
        chart_.Plot().replot(QCustomPlot::rpImmediateRefresh);
    }
    QPoint At(double x, double y) { return {Pixel(*chart_.Plot().xAxis, x), Pixel(*chart_.Plot().yAxis, y)}; }
    static int Pixel(const QCPAxis& axis, double value) { return qRound(axis.coordToPixel(value)); }
    void Point_at(double x, double y)
    {
        const QPoint at = At(x, y);
        QMouseEvent move(QEvent::MouseMove, at, chart_.Plot().mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QApplication::sendEvent(&chart_.Plot(), &move);
    }
    void Wheel(double x, double y)
    {
        const QPoint at = At(x, y);
        QWheelEvent turn(at, chart_.Plot().mapToGlobal(at), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                         Qt::NoScrollPhase, false);
        QApplication::sendEvent(&chart_.Plot(), &turn);
    }
    QString Read_Out() const { return chart_.findChild<QLabel*>("grf_Test_read_out")->text(); }
};

TEST_F(Charts_at_Hand, the_pointer_reads_all_curves_at_its_abscissa)
{
    Curve twice = Sine("V");
    for (double& y : twice.y)
        y *= 2;
    Open({Sine("S"), twice});
    Point_at(90, 3);
    EXPECT_EQ(Read_Out(), "90    S 10    V 20");
    const QPoint corner(1, 1);
    QMouseEvent out(QEvent::MouseMove, corner, chart_.Plot().mapToGlobal(corner), Qt::NoButton, Qt::NoButton,
                    Qt::NoModifier);
    QApplication::sendEvent(&chart_.Plot(), &out);
    EXPECT_EQ(Read_Out(), "");
}

TEST_F(Charts_at_Hand, what_is_read_is_of_the_curves_that_are_shown)
{
    Open({Sine()});
    Point_at(90, 3);
    EXPECT_EQ(Read_Out(), "90    S 10");
    Curve twice = Sine();
    for (double& y : twice.y)
        y *= 2;
    chart_.Update({twice});  // the pointer stays where it is
    chart_.Plot().replot();
    EXPECT_EQ(Read_Out(), "90    S 20");
    chart_.Clear();
    EXPECT_EQ(Read_Out(), "");
    Open({Sine()});
    Point_at(90, 3);
    QEvent away(QEvent::Leave);
    QApplication::sendEvent(&chart_.Plot(), &away);
    EXPECT_EQ(Read_Out(), "");
    Open({twice});
    EXPECT_EQ(Read_Out(), "");
}

TEST_F(Charts_at_Hand, the_pointer_reads_the_nearest_point_of_closed_curves)
{
    Curve outline;
    outline.name = "Profile";
    Curve value;
    value.name = "Radius";
    value.value_as_radius = true;
    for (int i = 0; i <= 360; ++i) {
        const double turn = i * 3.14159265358979 / 180;
        for (Curve* const curve : {&outline, &value}) {
            const double radius = curve == &outline ? 64 : 30;
            curve->angle.push_back(i);
            curve->x.push_back(i % 90 == 0 ? std::round(radius * std::cos(turn)) : radius * std::cos(turn));
            curve->y.push_back(i % 90 == 0 ? std::round(radius * std::sin(turn)) : radius * std::sin(turn));
        }
    }
    chart_.Set_Equal_Scales(true);
    Open({outline, value});
    Point_at(0, 60);
    EXPECT_EQ(Read_Out(), "90    Profile X 0  Y 64");
    Point_at(-28, 0);
    EXPECT_EQ(Read_Out(), "180    Radius 30");
}

TEST_F(Charts_at_Hand, the_wheel_zooms_both_axes_of_values_and_a_double_click_shows_all)
{
    Curve right = Sine("V");
    right.right_axis = true;
    for (double& y : right.y)
        y *= 50;
    Open({Sine(), right});
    const QCPRange left_before = chart_.Plot().yAxis->range();
    const QCPRange right_before = chart_.Plot().yAxis2->range();
    Wheel(180, 0);
    EXPECT_LT(chart_.Plot().xAxis->range().size(), 360.0);
    EXPECT_LT(chart_.Plot().yAxis->range().size(), left_before.size());
    EXPECT_LT(chart_.Plot().yAxis2->range().size(), right_before.size());
    QTest::mouseDClick(&chart_.Plot(), Qt::LeftButton, {}, At(180, 0));
    EXPECT_EQ(chart_.Plot().xAxis->range().size(), 360.0);
    EXPECT_EQ(chart_.Plot().yAxis2->range().size(), right_before.size());
}

TEST_F(Charts_at_Hand, dragging_moves_the_right_axis_too)
{
    Curve right = Sine("V");
    right.right_axis = true;
    Open({Sine(), right});
    const double before = chart_.Plot().yAxis2->range().center();
    const QPoint from = At(180, 0);
    const QPoint to = from + QPoint(0, 40);
    QTest::mousePress(&chart_.Plot(), Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, to, chart_.Plot().mapToGlobal(to), Qt::LeftButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&chart_.Plot(), &move);
    QTest::mouseRelease(&chart_.Plot(), Qt::LeftButton, {}, to);
    EXPECT_GT(chart_.Plot().yAxis2->range().center(), before);
}

TEST_F(Charts_at_Hand, the_legend_goes_where_it_covers_least)
{
    const auto corner_over = [&](auto height) {
        Curve curve = Sine();
        for (int i = 0; i <= 360; ++i)
            curve.y[static_cast<std::size_t>(i)] = height(i);
        chart_.Set_Legend(true);
        Open({curve, curve});
        return chart_.Plot().axisRect()->insetLayout()->insetAlignment(0);
    };
    EXPECT_EQ(corner_over([](int i) { return i < 180 ? 1.0 : 0.0; }), Qt::AlignTop | Qt::AlignRight);
    EXPECT_EQ(corner_over([](int i) { return i < 180 ? 0.0 : 1.0; }), Qt::AlignTop | Qt::AlignLeft);
    EXPECT_EQ(corner_over([](int) { return 5.0; }), Qt::AlignTop | Qt::AlignRight);
    // above left and on the right the whole height is inked
    EXPECT_EQ(corner_over([](int i) { return i > 180 ? i % 20 : 19.0; }), Qt::AlignBottom | Qt::AlignLeft);
}

TEST_F(Charts, extremes_stand_on_the_axis_of_their_curve_in_the_ink_of_the_ground)
{
    Curve right = Sine("V");
    right.right_axis = true;
    chart_.Show({right});
    chart_.Mark_Extremes(true);
    chart_.Set_Marks({90});  // the extremes stay
    chart_.Set_Ground(QColor(0xDC, 0xE8, 0xF8));
    int rings = 0;
    int texts = 0;
    for (int k = 0; k < chart_.Plot().itemCount(); ++k) {
        if (const auto* const ring = qobject_cast<const QCPItemTracer*>(chart_.Plot().item(k))) {
            ++rings;
            EXPECT_EQ(ring->position->valueAxis(), chart_.Plot().yAxis2);
        }
        if (const auto* const text = qobject_cast<const QCPItemText*>(chart_.Plot().item(k))) {
            ++texts;
            EXPECT_EQ(text->color(), QColor(Qt::black));
        }
    }
    EXPECT_EQ(rings, 2);
    EXPECT_EQ(texts, 2);
    EXPECT_EQ(chart_.Plot().itemCount(), 5);
}

/// The labels of the extremes that are seen, with the pixels that they cover.
std::vector<std::pair<QString, QRectF>> Labels_of(Chart& chart)
{
    chart.Plot().replot();
    std::vector<std::pair<QString, QRectF>> labels;
    for (int k = 0; k < chart.Plot().itemCount(); ++k)
        if (const auto* const text = qobject_cast<const QCPItemText*>(chart.Plot().item(k)); text && text->visible())
            labels.emplace_back(text->text(),
                                QRectF(text->topLeft->pixelPosition(), text->bottomRight->pixelPosition()));
    return labels;
}

TEST_F(Charts, labels_of_extremes_have_few_figures_stand_inside_and_apart)
{
    Curve rise = Sine("S");
    for (std::size_t i = 0; i < rise.y.size(); ++i)
        rise.y[i] = 12345.678 * static_cast<double>(i) / 360.0 / 3.0;  // least and greatest in the corners
    Curve close = rise;
    for (double& y : close.y)
        y *= 1.001;
    Curve other = Sine("A");
    for (double& y : other.y)
        y *= 411.0;
    for (const QSize& size : {QSize(500, 400), QSize(220, 160)}) {
        chart_.resize(size);
        chart_.show();
        chart_.Show({rise, close, other});
        chart_.Mark_Extremes(true);
        const auto labels = Labels_of(chart_);
        ASSERT_EQ(labels.size(), 6U);
        EXPECT_EQ(labels[0].first, "4115.2 @ 360");
        EXPECT_EQ(labels[1].first, "0 @ 0");
        const QRectF room = QRectF(chart_.Plot().axisRect()->rect()).adjusted(-1, -1, 1, 1);
        for (std::size_t k = 0; k < labels.size(); ++k) {
            EXPECT_TRUE(room.contains(labels[k].second)) << labels[k].first.toStdString();
            for (std::size_t j = 0; j < k && size.width() > 300; ++j)
                EXPECT_FALSE(labels[j].second.adjusted(1, 1, -1, -1).intersects(labels[k].second))
                    << labels[j].first.toStdString() << " / " << labels[k].first.toStdString();
        }
    }
}

TEST_F(Charts, an_extreme_out_of_view_has_no_label)
{
    chart_.Show({Sine()});
    chart_.Mark_Extremes(true);
    chart_.Plot().xAxis->setRange(60, 120);
    const auto labels = Labels_of(chart_);
    ASSERT_EQ(labels.size(), 1U);
    EXPECT_EQ(labels[0].first, "10 @ 90");
    Curve flat = Sine();
    std::fill(flat.y.begin(), flat.y.end(), 7.0);
    chart_.Show({flat});
    EXPECT_EQ(Labels_of(chart_).size(), 1U);  // its least is its greatest
}

TEST_F(Charts, a_curve_of_zeros_leaves_the_scale_of_the_one_before)
{
    Curve high = Sine();
    for (double& y : high.y)
        y = 1e6;
    Curve zeros = high;
    std::fill(zeros.y.begin(), zeros.y.end(), 0.0);
    chart_.Show({Sine()});
    chart_.Show({zeros});
    EXPECT_LT(chart_.Plot().yAxis->range().size(), 3.0);
    EXPECT_TRUE(chart_.Plot().yAxis->range().contains(0.0));
    chart_.Show({high});
    chart_.Update({zeros});
    EXPECT_LT(chart_.Plot().yAxis->range().size(), 3.0);
}

TEST_F(Charts, curves_of_a_calculation_left_behind_are_gray)
{
    chart_.Show({Sine()});
    const QColor colour = chart_.Plot().graph(0)->pen().color();
    chart_.Set_Stale(true);
    EXPECT_EQ(chart_.Plot().graph(0)->pen().color(), chart_.palette().color(QPalette::Mid));
    chart_.Update({Sine()});
    EXPECT_EQ(chart_.Plot().graph(0)->pen().color(), chart_.palette().color(QPalette::Mid));
    chart_.Set_Stale(false);
    EXPECT_EQ(chart_.Plot().graph(0)->pen().color(), colour);
}

TEST_F(Charts, circles_are_widened_for_the_screen_and_not_in_pictures)
{
    design.run.Aspect_Flag = true;
    design.run.Aspect_Correction = 1.25;
    chart_.resize(500, 500);
    chart_.Set_Equal_Scales(true);
    chart_.show();
    chart_.Show({Circle()});
    const auto across = [&] {
        const auto pixels = [&](QCPAxis* axis) { return std::abs(axis->coordToPixel(30) - axis->coordToPixel(-30)); };
        return pixels(chart_.Plot().xAxis) / pixels(chart_.Plot().yAxis);
    };
    chart_.Plot().replot();
    EXPECT_NEAR(across(), 1.25, 0.01);
    const QImage picture = chart_.Picture({500, 500}).toImage();
    QRect ink;  // of the curve, the one thing that has a colour
    for (int py = 0; py < picture.height(); ++py)
        for (int px = 0; px < picture.width(); ++px)
            if (picture.pixelColor(px, py).saturation() > 100)
                ink = ink.united(QRect(px, py, 1, 1));
    EXPECT_GT(ink.width(), 100);
    EXPECT_NEAR(ink.width(), ink.height(), 2);
    chart_.Plot().replot();
    EXPECT_NEAR(across(), 1.25, 0.01);
    design.run.Aspect_Flag = false;
    chart_.Plot().replot();
    EXPECT_NEAR(across(), 1.0, 0.01);
    design = {};
}

/// A user who saves by the context menu, with a name for the dialog.
class Saved_Charts : public Charts {
protected:
    void SetUp() override
    {
        Host host;
        host.save_dialog = [this](const File_Dialog& dialog) -> std::optional<std::string> {
            asked_ = dialog;
            return path_;
        };
        host.messenger = [this](const Message& box) {
            told_ += box.text;
            return Answer::OK;
        };
        before_ = Install_Host(std::move(host));
        chart_.Show({Sine()});
    }
    void TearDown() override { Install_Host(std::move(before_)); }
    void Save_as(const QString& path)
    {
        path_ = path.toStdString();
        told_.clear();
        QMenu menu;
        chart_.Fill_Menu(menu);
        for (QAction* const entry : menu.actions())
            if (entry->text() == "&Save as...")
                entry->trigger();
    }
    File_Dialog asked_;
    std::optional<std::string> path_;
    std::string told_;
    Host before_;
};

TEST_F(Saved_Charts, a_picture_is_written_and_an_older_one_stays_until_it_is_whole)
{
    const QString path = folder_.filePath("a.png");
    Save_as(path);
    EXPECT_EQ(told_, "");
    EXPECT_TRUE(asked_.overwrite_prompt);
    EXPECT_FALSE(QImage(path).isNull());
    const QString text = folder_.filePath("b.xyz");
    QFile older(text);
    ASSERT_TRUE(older.open(QIODevice::WriteOnly));
    older.write("older");
    older.close();
    Save_as(text);
    EXPECT_EQ(told_, "The picture could not be saved as\n" + text.toStdString() + "\nUnsupported image format");
    ASSERT_TRUE(older.open(QIODevice::ReadOnly));
    EXPECT_EQ(older.readAll(), "older");
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files).size(), 2);  // nothing half written is left
}

TEST_F(Saved_Charts, a_missing_folder_is_told)
{
    for (const char* const name : {"a.png", "a.svg", "a.pdf"}) {
        const QString path = folder_.filePath("nowhere/") + name;
        Save_as(path);
        EXPECT_EQ(told_, "The picture could not be saved as\n" + path.toStdString() + "\nFile not found");
    }
    path_.reset();
    told_.clear();
    EXPECT_EQ(told_, "");
}

TEST_F(Charts, curves_over_different_abscissas_are_copied_with_a_column_each)
{
    Curve other = Sine("V");
    for (double& x : other.x)
        x *= 2;
    chart_.Show({Sine("S"), other});
    const QStringList lines = QString::fromStdString(chart_.Data_Text()).split('\n');
    EXPECT_EQ(lines[0], "X\tS, mm\tX\tV, mm");
    EXPECT_EQ(lines[1], "0\t0\t0\t0");
    EXPECT_TRUE(lines[91].startsWith("90\t10\t180\t10"));
}

TEST_F(Charts, fills_of_a_closed_curve_are_rays_to_the_origin)
{
    Curve circle;
    for (int i = 0; i <= 4; ++i) {
        circle.x.push_back(30 * std::cos(i * 1.5));
        circle.y.push_back(30 * std::sin(i * 1.5));
    }
    chart_.Set_Equal_Scales(true);
    chart_.Show({circle});
    EXPECT_EQ(chart_.Plot().plottableCount(), 1);
    chart_.Set_Style(Curve_Style::sticks_and_line);
    ASSERT_EQ(chart_.Plot().plottableCount(), 2);
    const auto* const rays = qobject_cast<QCPCurve*>(chart_.Plot().plottable(0));
    ASSERT_NE(rays, nullptr);
    ASSERT_EQ(rays->data()->size(), 15);
    EXPECT_EQ(rays->data()->at(3)->key, 0.0);
    EXPECT_EQ(rays->data()->at(4)->key, circle.x[1]);
    EXPECT_EQ(rays->data()->at(5)->value, 0.0);
    chart_.Set_Style(Curve_Style::points);
    ASSERT_EQ(chart_.Plot().plottableCount(), 1);
    EXPECT_EQ(qobject_cast<QCPCurve*>(chart_.Plot().plottable(0))->lineStyle(), QCPCurve::lsNone);
}

TEST_F(Charts, a_picture_of_several_charts_has_its_title_once)
{
    Chart other(design, "grf_Other");
    chart_.Show({Sine()});
    other.Show({Sine()});
    const QString path = folder_.filePath("two.svg");
    ASSERT_TRUE(Save_Charts({&chart_, &other}, 2, {600, 300}, path.toStdString(), "Both of them"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(file.readAll()).count("Both of them"), 1);
    for (const char* const name : {"two.png", "two.pdf"})
        EXPECT_TRUE(Save_Charts({&chart_, &other}, 2, {600, 300}, folder_.filePath(name).toStdString(), "Both of them"))
            << name;
}

TEST_F(Charts, a_form_is_painted_onto_a_page)
{
    chart_.Show({Sine()});
    const QString path = folder_.filePath("form.pdf");
    {
        QPdfWriter page(path);
        Paint_Form(chart_, page);
    }
    EXPECT_GT(QFile(path).size(), 1000);
}

/// Pages of a PDF file, by its own count.
int Pages_of(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return static_cast<int>(file.readAll().count("/Type /Page\n"));
}

TEST_F(Charts, lists_are_painted_whole_behind_their_form)
{
    chart_.Show({Sine()});
    Printed_List points{"Points", {"Theta (deg)", "S (mm)", "F (N)"}, {}};
    const QString path = folder_.filePath("lists.pdf");
    const auto paint = [&](const std::vector<Printed_List>& lists) {
        QPdfWriter page(path);
        page.setPageSize(QPageSize(QPageSize::A4));
        return Paint_Form(chart_, lists, page);
    };
    EXPECT_EQ(paint({}), 1);
    for (int i = 0; i < 3; ++i)
        points.rows.push_back({QString::number(i), "1.5", "200"});
    EXPECT_EQ(paint({points, points}), 2) << "short ones stand on one page";
    EXPECT_EQ(Pages_of(path), 2);
    points.rows.clear();
    for (int i = 0; i <= 360; ++i)
        points.rows.push_back({QString::number(i), "1.5", "200"});
    // 8 points and 15 % of room: some 60 to 90 rows a page of A4.
    const int pages = paint({points});
    EXPECT_GE(pages, 1 + 5);
    EXPECT_LE(pages, 1 + 7);
    EXPECT_EQ(Pages_of(path), pages);
}

}  // namespace
}  // namespace lobemax::paint
