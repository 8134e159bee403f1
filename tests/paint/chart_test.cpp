// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/chart.h"

#include <gtest/gtest.h>
#include <qcustomplot.h>

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <cmath>

#include "paint/print.h"

namespace lobemax::paint {
namespace {

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

class Charts : public ::testing::Test {
protected:
    Charts() : chart_("grf_Test") { chart_.resize(400, 300); }
    Chart chart_;
    QTemporaryDir folder_;
};

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
    Curve circle;
    for (int i = 0; i <= 360; ++i) {
        circle.x.push_back(30 * std::cos(i * 3.14159265358979 / 180));
        circle.y.push_back(30 * std::sin(i * 3.14159265358979 / 180));
    }
    chart_.resize(600, 200);
    chart_.Set_Equal_Scales(true);
    chart_.show();
    chart_.Show({circle});
    chart_.Plot().replot();
    const auto pixels = [&](QCPAxis* axis) { return axis->coordToPixel(30) - axis->coordToPixel(-30); };
    EXPECT_NEAR(std::abs(pixels(chart_.Plot().xAxis)), std::abs(pixels(chart_.Plot().yAxis)), 1.0);
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
        EXPECT_TRUE(chart_.Save(path)) << name;
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

}  // namespace
}  // namespace lobemax::paint
