// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/cad_sheet.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <cmath>
#include <fstream>
#include <numbers>
#include <sstream>

#include "tests/support/script.h"
#include "tests/support/truth_design.h"

namespace lobemax {
namespace {

using testing::Truth_Maker;

constexpr double dots = 300.0;  // an inch
constexpr double per_mm = dots / 25.4;

class Cad_Sheets : public ::testing::Test {
protected:
    void TearDown() override { design = {}; }

    static Cad_Sheet Sheet_of(const std::vector<std::pair<std::string, std::string>>& options)
    {
        Cad_Wish wish{.kind = Cad_Kind::pdf, .even_if_wrong = true};
        for (const auto& [name, text] : options)
            EXPECT_EQ(Put_Option(design, wish, name, text), "");
        Made_Cad made = Make_Cad(design, wish, "cam.pdf");
        EXPECT_EQ(made.refusal, "");
        return made.sheet.value_or(Cad_Sheet{});
    }
    /// The outline alone: what lies beside it would be measured with it.
    static Cad_Sheet Outline(std::vector<std::pair<std::string, std::string>> options)
    {
        for (const char* const part : {"pitch", "circles", "notes"})
            options.emplace_back(part, "no");
        return Sheet_of(options);
    }
    static Made_Cad Made(const Cad_Sheet& sheet)
    {
        Made_Cad made;
        made.sheet = sheet;
        made.facts = {{"File", "cam.pdf"}};
        return made;
    }

    /// Where a line crosses a ray from a place of the page, millimetres from it: the middle of its darkness.
    static double Line_at(const QImage& page, const QPointF& from, double degrees, double near, double far)
    {
        const Vector ray = Direction(degrees * std::numbers::pi / 180.0);
        constexpr double step = 0.005;
        double dark = 0.0;
        double moment = 0.0;
        for (double r = near; r < far; r += step) {
            const double x = (from.x() + r * ray.x) * per_mm - 0.5;
            const double y = (from.y() - r * ray.y) * per_mm - 0.5;
            const int i = static_cast<int>(std::floor(x));
            const int j = static_cast<int>(std::floor(y));
            const double u = x - i;
            const double v = y - j;
            const auto shade = [&](int a, int b) { return 255 - qGray(page.pixel(a, b)); };
            const double d = (1 - u) * (1 - v) * shade(i, j) + u * (1 - v) * shade(i + 1, j) +
                             (1 - u) * v * shade(i, j + 1) + u * v * shade(i + 1, j + 1);
            dark += d;
            moment += d * r;
        }
        return dark > 0.0 ? moment / dark : -1.0;
    }

    /// The radii of the table, on the page. Two of them are known without it: 68 mm in the dwell at 110 to 170 degrees,
    /// 48 mm in that from 290 on.
    static void Expect_Radii(const QImage& page, const Cad_Sheet& sheet, const paint::Sheet_Layout& layout)
    {
        constexpr double bound = 0.1;
        for (const double dwell : {115.0, 140.0, 165.0})
            EXPECT_NEAR(Line_at(page, layout.origin, dwell, 55 * layout.scale, 80 * layout.scale), 68.0 * layout.scale,
                        bound)
                << dwell;
        for (const double dwell : {295.0, 320.0, 355.0})
            EXPECT_NEAR(Line_at(page, layout.origin, dwell, 35 * layout.scale, 60 * layout.scale), 48.0 * layout.scale,
                        bound)
                << dwell;
        int measured = 0;
        for (const std::vector<std::string>& row : sheet.rows) {
            const double angle = std::stod(row[0]);
            if (std::fmod(angle, 90.0) == 0.0)
                continue;  // the centre lines
            const double radius = std::stod(row[2]) * layout.scale;
            EXPECT_NEAR(Line_at(page, layout.origin, angle, radius - 3.0, radius + 3.0), radius, bound) << angle;
            ++measured;
        }
        EXPECT_GE(measured, 30);
    }

    /// The PDF page as another program paints it; empty where there is none.
    QImage Rendered(const std::string& pdf) const
    {
        QProcess program;
        const QString out = folder_.filePath("page");
        program.start("pdftoppm",
                      {"-r", QString::number(dots), "-gray", "-png", "-singlefile", QString::fromStdString(pdf), out});
        if (!program.waitForFinished(60000) || program.exitCode() != 0)
            return {};
        return QImage(out + ".png");
    }
    static std::string Content(const std::string& path)
    {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }
    std::string Place(const char* name) const { return folder_.filePath(name).toStdString(); }

    testing::Script script_;
    QTemporaryDir folder_;
};

TEST_F(Cad_Sheets, the_cam_stands_on_the_page_in_true_size)
{
    Truth_Maker().Make();
    const Cad_Sheet sheet = Outline({});
    const paint::Sheet_Layout layout = paint::Lay_Out(sheet);
    ASSERT_EQ(layout.refusal, "");
    EXPECT_EQ(layout.scale_words, "1:1");
    QImage page(static_cast<int>(layout.width * per_mm), static_cast<int>(layout.height * per_mm),
                QImage::Format_Grayscale8);
    page.fill(Qt::white);
    {
        QPainter painter(&page);
        painter.scale(per_mm, per_mm);
        paint::Paint_Sheet(sheet, layout, painter);
    }
    Expect_Radii(page, sheet, layout);
}

TEST_F(Cad_Sheets, a_page_of_the_file_measures_what_it_says)
{
    if (QStandardPaths::findExecutable("pdftoppm").isEmpty())
        GTEST_SKIP() << "NOT TESTED: pdftoppm (package poppler-utils) is missing, no other program measures the sheet";
    Truth_Maker().Make();
    for (const char* const scale : {"1:1", "1:2"}) {
        const Cad_Sheet sheet = Outline({{"scale", scale}});
        const paint::Sheet_Layout layout = paint::Lay_Out(sheet);
        ASSERT_EQ(Write_Cad(Made(sheet), Place("cam.pdf"), paint::Make_Sheet).refusal, "");
        const QImage page = Rendered(Place("cam.pdf"));
        ASSERT_FALSE(page.isNull());
        EXPECT_NEAR(page.width() / per_mm, 420.0, 0.3);  // a page has whole points
        EXPECT_NEAR(page.height() / per_mm, 297.0, 0.3);
        Expect_Radii(page, sheet, layout);
    }
}

TEST_F(Cad_Sheets, the_bore_and_its_keyway_are_drawn)
{
    Truth_Maker().Make();
    const Cad_Sheet sheet = Outline({{"bore", "25"}, {"keyway", "yes"}});
    const paint::Sheet_Layout layout = paint::Lay_Out(sheet);
    QImage page(static_cast<int>(layout.width * per_mm), static_cast<int>(layout.height * per_mm),
                QImage::Format_Grayscale8);
    page.fill(Qt::white);
    {
        QPainter painter(&page);
        painter.scale(per_mm, per_mm);
        paint::Paint_Sheet(sheet, layout, painter);
    }
    // DIN 6885: 8 mm wide and 3.3 deep beyond a bore of 25; its direction is that of the clock time at machine zero.
    const double angle = Keyway_Angle(design);
    EXPECT_NEAR(Line_at(page, layout.origin, angle + 180.0 - 10.0, 5.0, 20.0), 12.5, 0.1);
    EXPECT_NEAR(Line_at(page, layout.origin, angle + 60.0, 5.0, 20.0), 12.5, 0.1);
    const double aside = 10.0;  // degrees: on the floor of the keyway, 15.8 mm from the centre
    EXPECT_NEAR(Line_at(page, layout.origin, angle + aside, 8.0, 20.0), 15.8 / std::cos(aside * std::numbers::pi / 180),
                0.1);
}

TEST_F(Cad_Sheets, nothing_stands_outside_of_its_place)
{
    Truth_Maker().Make();
    for (const char* const paper : {"A4", "A3", "A2", "A1"}) {
        const Cad_Sheet sheet = Sheet_of({{"paper", paper}});
        const paint::Sheet_Layout layout = paint::Lay_Out(sheet);
        ASSERT_EQ(layout.refusal, "") << paper;
        EXPECT_TRUE(QRectF(0, 0, layout.width, layout.height).contains(layout.frame));
        const QRectF parts[] = {layout.field, layout.radii, layout.data, layout.title};
        for (const QRectF& part : parts) {
            EXPECT_TRUE(layout.frame.adjusted(-1e-9, -1e-9, 1e-9, 1e-9).contains(part)) << paper;
            for (const QRectF& other : parts)
                if (&other != &part) {
                    EXPECT_FALSE(part.adjusted(1e-6, 1e-6, -1e-6, -1e-6).intersects(other)) << paper;
                }
        }
        // The cam's box within the field.
        const Curve_Set& set = sheet.curves;
        const QRectF cam(layout.origin + QPointF(set.low.x, -set.high.y) * layout.scale,
                         layout.origin + QPointF(set.high.x, -set.low.y) * layout.scale);
        EXPECT_TRUE(layout.field.contains(cam)) << paper;
    }
}

TEST_F(Cad_Sheets, the_scale_is_the_first_standard_one_that_fits)
{
    Truth_Maker().Make();
    Cad_Sheet sheet = Sheet_of({});
    const auto scaled = [&](double times) {
        Cad_Sheet other = sheet;
        other.curves.low = times * other.curves.low;
        other.curves.high = times * other.curves.high;
        return paint::Lay_Out(other).scale_words;
    };
    EXPECT_EQ(scaled(1.0), "1:1");
    EXPECT_EQ(scaled(2.0), "1:2");
    EXPECT_EQ(scaled(5.0), "1:5");
    EXPECT_EQ(scaled(10.0), "1:10");
    EXPECT_EQ(scaled(0.25), "2:1");
    EXPECT_EQ(scaled(0.1), "5:1");
    EXPECT_EQ(scaled(30.0), "");
    sheet.scale = 5.0;
    EXPECT_NE(paint::Lay_Out(sheet).refusal.find("at 5:1, the sheet A3 has room for"), std::string::npos);
    sheet.scale = 0.5;
    EXPECT_EQ(paint::Lay_Out(sheet).scale_words, "1:2");
    sheet.paper = "B5";
    EXPECT_EQ(paint::Lay_Out(sheet).refusal, "There is no paper 'B5'.");
}

TEST_F(Cad_Sheets, a_table_too_long_for_the_paper_is_refused_with_what_it_holds)
{
    Truth_Maker().Make();
    const paint::Sheet_Layout a4 = paint::Lay_Out(Sheet_of({{"paper", "A4"}, {"every", "2"}}));
    EXPECT_NE(a4.refusal.find("A table of 180 lines has no room on A4, which holds "), std::string::npos) << a4.refusal;
    EXPECT_EQ(paint::Lay_Out(Sheet_of({{"paper", "A1"}, {"every", "1"}})).refusal, "");
    // A refused sheet leaves no file.
    const Made_Cad made = Made(Sheet_of({{"paper", "A4"}, {"every", "2"}}));
    EXPECT_EQ(Write_Cad(made, Place("no.pdf"), paint::Make_Sheet).refusal, a4.refusal);
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(Place("no.pdf"))));
}

TEST_F(Cad_Sheets, the_same_sheet_gives_the_same_bytes_and_the_text_tells_paper_and_scale)
{
    Truth_Maker().Make();
    const Made_Cad made = Made(Sheet_of({{"bore", "20"}}));
    const Written_Cad written = Write_Cad(made, Place("a.pdf"), paint::Make_Sheet);
    EXPECT_EQ(written.text_path, Place("a.txt"));
    const std::string first = Content(Place("a.pdf"));
    Write_Cad(made, Place("b.pdf"), paint::Make_Sheet);
    EXPECT_FALSE(first.empty());
    EXPECT_EQ(Content(Place("b.pdf")), first);
    EXPECT_NE(Content(Place("a.txt")).find("Sheet: A3, scale 1:1"), std::string::npos);
}

}  // namespace
}  // namespace lobemax
