// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/painter_surface.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace lobemax::paint {
namespace {

class Painted : public ::testing::Test {
protected:
    /// First and last column and row that carry ink.
    static QRect Inked(const QImage& picture)
    {
        QRect found;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (picture.pixelColor(x, y) != QColor(Qt::white))
                    found = found.united(QRect(x, y, 1, 1));
        return found;
    }
    static QImage Picture(int width, int height, const Drawing& drawing)
    {
        QImage picture(width, height, QImage::Format_RGB32);
        QPainter painter(&picture);
        Painter_Surface surface(painter, picture.rect(), QPalette(Qt::white, Qt::white));
        picture.fill(Qt::white);
        drawing(surface);
        return picture;
    }
    QTemporaryDir folder_;
};

TEST_F(Painted, a_circle_is_round_in_any_window_and_stands_in_the_middle)
{
    for (const QSize size : {QSize(400, 400), QSize(600, 300), QSize(200, 500)}) {
        const QRect ink = Inked(Picture(size.width(), size.height(), [](Surface& s) {
            s.Scale(-50, -50, 50, 50);
            s.Circle(0, 0, 40, Ink::cam);
        }));
        EXPECT_NEAR(ink.width(), ink.height(), 1);
        EXPECT_NEAR(ink.width(), 0.8 * std::min(size.width(), size.height()), 4);
        EXPECT_NEAR(ink.center().x(), size.width() / 2, 1);
    }
}

TEST_F(Painted, the_pen_goes_on_from_where_it_was)
{
    const QRect ink = Inked(Picture(200, 200, [](Surface& s) {
        s.Scale(0, 0, 100, 100);
        s.PSet(10, 10, Ink::path);
        s.Line_to(90, 10, Ink::path);
        s.Line_to(90, 50, Ink::path);
    }));
    EXPECT_NEAR(ink.left(), 20, 2);
    EXPECT_NEAR(ink.right(), 180, 2);
    EXPECT_NEAR(ink.bottom(), 100, 2);
}

TEST_F(Painted, drawings_are_saved_as_png_svg_and_pdf_with_true_proportions)
{
    const auto circle = [](Surface& s) {
        s.Scale(-50, -50, 50, 50);
        s.Circle(0, 0, 40, Ink::cam);
        return true;
    };
    const QPalette palette;
    EXPECT_TRUE(Save_Drawing(circle, {600, 300}, folder_.filePath("c.png").toStdString(), palette));
    EXPECT_EQ(QImage(folder_.filePath("c.png")).size(), QSize(1200, 600));
    EXPECT_TRUE(Save_Drawing(circle, {600, 300}, folder_.filePath("c.pdf").toStdString(), palette));
    EXPECT_TRUE(Save_Drawing(circle, {600, 300}, folder_.filePath("c.svg").toStdString(), palette));
    QFile svg(folder_.filePath("c.svg"));
    ASSERT_TRUE(svg.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(svg.readAll());
    EXPECT_TRUE(text.contains(QRegularExpression("<circle[^>]*r=\"120\"")) ||
                text.contains(QRegularExpression("<ellipse[^>]*rx=\"120\"[^>]*ry=\"120\"")));
    EXPECT_FALSE(Save_Drawing(circle, {600, 300}, "/no/such/folder/c.png", palette));
    ASSERT_TRUE(Save_Drawing(circle, {600, 300}, folder_.filePath("half.png").toStdString(), palette, 0.5));
    EXPECT_EQ(QImage(folder_.filePath("half.png")).size(), QSize(300, 150));
}

TEST_F(Painted, a_picture_that_cannot_be_drawn_leaves_the_older_file)
{
    for (const char* name : {"c.png", "c.pdf", "c.svg"}) {
        const QString path = folder_.filePath(name);
        QFile older(path);
        ASSERT_TRUE(older.open(QIODevice::WriteOnly));
        older.write("as it was");
        older.close();
        EXPECT_FALSE(Save_Drawing([](Surface&) { return false; }, {600, 300}, path.toStdString(), QPalette())) << name;
        ASSERT_TRUE(older.open(QIODevice::ReadOnly));
        EXPECT_EQ(older.readAll(), "as it was") << name;
    }
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files).size(), 3) << "no temporary file is left";
}

TEST_F(Painted, what_is_out_of_date_is_gray_and_a_widened_circle_wider)
{
    QImage picture(200, 200, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    const QPalette palette;
    Painter_Surface surface(painter, picture.rect(), palette);
    surface.Gray({Ink::cam});
    EXPECT_EQ(surface.Colour_of(Ink::cam), palette.color(QPalette::Mid));
    EXPECT_NE(surface.Colour_of(Ink::follower), palette.color(QPalette::Mid));
    surface.Widen(1.25);
    surface.Scale(-50, -50, 50, 50);
    surface.Circle(0, 0, 40, Ink::follower);
    painter.end();
    const QRect ink = Inked(picture);
    EXPECT_NEAR(double(ink.width()) / ink.height(), 1.25, 0.03);
    EXPECT_NEAR(ink.width(), 160, 3);
}

TEST_F(Painted, a_line_has_its_width_in_points_whatever_the_picture_s_fineness)
{
    const auto line = [](Surface& s) {
        s.Scale(-50, -50, 50, 50);
        s.Line(-40, 0, 40, 0, Ink::cam);
        return true;
    };
    ASSERT_TRUE(Save_Drawing(line, {200, 200}, folder_.filePath("l.png").toStdString(), QPalette()));
    const QImage picture(folder_.filePath("l.png"));
    double inked = 0.0;  // pixels across the line, the half inked ones by their share
    const double ground = picture.pixelColor(200, 10).blueF();
    double darkest = ground;
    for (int y = 190; y < 210; ++y)
        darkest = std::min<double>(darkest, picture.pixelColor(200, y).blueF());
    for (int y = 190; y < 210; ++y)
        inked += (ground - picture.pixelColor(200, y).blueF()) / (ground - darkest);
    EXPECT_NEAR(inked, 2 * 1.8, 0.2);  // two pixels a point
    ASSERT_TRUE(Save_Drawing(line, {200, 200}, folder_.filePath("l.svg").toStdString(), QPalette()));
    QFile svg(folder_.filePath("l.svg"));
    ASSERT_TRUE(svg.open(QIODevice::ReadOnly));
    EXPECT_TRUE(QString::fromUtf8(svg.readAll()).contains("stroke-width=\"1.8\""));
}

}  // namespace
}  // namespace lobemax::paint
