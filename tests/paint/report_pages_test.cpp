// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/report_pages.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPdfWriter>
#include <QPrinter>
#include <QTemporaryDir>
#include <QWidget>
#include <algorithm>
#include <fstream>
#include <sstream>

#include "paint/chart.h"
#include "paint/painter_surface.h"
#include "paint/print.h"
#include "paint/save_picture.h"
#include "tests/support/desktop_design.h"
#include "tests/support/faulty_files.h"
#include "tests/support/test_design.h"

namespace lobemax {
namespace {

/// Letters that are painted, in the order of painting.
class Recorder : public QPaintDevice, public QPaintEngine {
public:
    Recorder() : QPaintEngine(QPaintEngine::AllFeatures) {}

    QPaintEngine* paintEngine() const override { return const_cast<Recorder*>(this); }
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    void drawPath(const QPainterPath&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
    void drawTextItem(const QPointF&, const QTextItem& item) override { texts.append(item.text()); }
    Type type() const override { return QPaintEngine::User; }

    QStringList texts;

protected:
    int metric(PaintDeviceMetric which) const override
    {
        constexpr int resolution = 96;
        switch (which) {
        case PdmWidth:
        case PdmHeight:
            return 1000;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        default:
            return resolution;
        }
    }
};

/// What stands on each page of an area of A4 less its margins.
std::vector<QStringList> Texts_of(const paint::Page_Maker& make, const QSizeF& area = {510, 757})
{
    std::vector<QStringList> texts;
    for (const paint::Page& page : make(area)) {
        Recorder recorder;
        QPainter painter(&recorder);
        page(painter);
        painter.end();
        texts.push_back(recorder.texts);
    }
    return texts;
}

const std::string note =
    "You can print this form directly to a printer from here.\n"
    "But a better quality print can be obtained by copying the\n"
    "screen to the clipboard with the key combo Alt-PrintScrn,\n"
    "and pasting it into a word processing or graphics program,";

class Printed_Pages : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Build("Double Dwell");
    }
    void TearDown() override
    {
        paint::Play_Prints({});
        Desktop_Test::TearDown();
    }
    static Table_in_Texts Table(int step)
    {
        Print_Choice choice;
        choice.variables = {var::S, var::V, 0, 0};
        choice.step = step;
        return Print_Table(design, choice);
    }
    std::string Path(const char* name) const { return folder_.filePath(QString::fromUtf8(name)).toStdString(); }
    static std::string Content(const std::string& path)
    {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }
    /// A user who prints into a file.
    static paint::Print_Player Into(const std::string& path)
    {
        return [path](QPrinter& printer) {
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(QString::fromStdString(path));
            return true;
        };
    }

    const QTemporaryDir folder_;
};

TEST_F(Printed_Pages, of_a_table_repeat_its_heads_and_count_themselves)
{
    const std::vector<QStringList> pages = Texts_of(paint::Table_Pages(design, Table(1)));
    ASSERT_GT(pages.size(), 3U);
    qsizetype rows = 0;
    for (std::size_t k = 0; k < pages.size(); ++k) {
        EXPECT_EQ(pages[k].count(QStringLiteral("Angle")), 1) << k;
        EXPECT_EQ(pages[k].count(QStringLiteral("mm/sec")), 1) << k;
        EXPECT_TRUE(pages[k].contains(QStringLiteral("Page %1 of %2").arg(k + 1).arg(pages.size()))) << k;
        EXPECT_TRUE(pages[k].front().contains(QStringLiteral("Design No."))) << k;
        for (int angle = 0; angle <= 360; ++angle)
            rows += pages[k].count(QString::number(angle));
    }
    EXPECT_EQ(rows, 361) << "each row stands on one page";
    EXPECT_EQ(pages.front().count(QStringLiteral("Min")), 0);
    EXPECT_EQ(pages.back().count(QStringLiteral("Min")), 1);
    EXPECT_EQ(pages.back().count(QStringLiteral("Max")), 1);
}

TEST_F(Printed_Pages, leave_Min_and_Max_never_alone)
{
    for (int points = 300; points <= 360; ++points) {  // a last page of every fill
        design.motion.Max_Data_Points_used = points;
        const QStringList last = Texts_of(paint::Table_Pages(design, Table(1))).back();
        EXPECT_TRUE(last.contains(QString::number(points))) << points;
        EXPECT_TRUE(last.contains(QStringLiteral("Max"))) << points;
    }
}

TEST_F(Printed_Pages, identify_the_print_on_the_first)
{
    design.identity.User = "Jane";
    design.identity.File_Name = "press.cam";
    const std::vector<QStringList> pages = Texts_of(paint::Table_Pages(design, Table(1)));
    EXPECT_TRUE(pages[0].contains(QStringLiteral("File: press.cam  by Jane")));
    EXPECT_FALSE(pages[1].contains(QStringLiteral("File: press.cam  by Jane")));
}

TEST_F(Printed_Pages, hold_more_rows_on_higher_paper)
{
    const auto pages = [](double height) { return paint::Table_Pages(design, Table(1))(QSizeF(510, height)).size(); };
    EXPECT_GT(pages(500), pages(757));
    EXPECT_EQ(paint::Table_Pages(design, Table(90))(QSizeF(510, 757)).size(), 1U);
}

TEST_F(Printed_Pages, of_a_report_have_its_parts_then_plots_then_the_drawing)
{
    const Design_Report report = Make_Design_Report(design);
    const std::vector<QStringList> pages = Texts_of(paint::Report_Pages(design, report));
    ASSERT_EQ(pages.size(), 6U);
    for (const Report_Part& part : report.parts) {
        const QString title = QString::fromStdString(part.title);
        EXPECT_TRUE(pages[0].contains(title) || pages[1].contains(title) || pages[2].contains(title)) << part.title;
    }
    for (const std::size_t plots : {std::size_t{3}, std::size_t{4}})
        EXPECT_TRUE(pages[plots].contains(QStringLiteral("Plots over the cam angle")));
    EXPECT_TRUE(pages[3].contains(QStringLiteral("Velocity  mm/sec")));
    EXPECT_TRUE(pages[4].contains(QStringLiteral("Force-kin  N")));
    EXPECT_TRUE(pages[5].contains(QStringLiteral("Cam and follower")));
    EXPECT_TRUE(pages[5].contains(QStringLiteral("Page 6 of 6")));
}

TEST_F(Printed_Pages, go_through_the_printers_dialog)
{
    const paint::Page_Maker pages = paint::Table_Pages(design, Table(10));
    paint::Play_Prints([](QPrinter&) { return false; });
    EXPECT_FALSE(paint::Print_Pages(nullptr, pages, false, "Print_to_Printer"));
    QPageSize paper;
    paint::Play_Prints([&, into = Into(Path("p.pdf"))](QPrinter& printer) {
        paper = printer.pageLayout().pageSize();
        return into(printer);
    });
    EXPECT_TRUE(paint::Print_Pages(nullptr, pages, false, "Print_to_Printer"));
    EXPECT_EQ(paper.id(), QPageSize::A4);
    EXPECT_EQ(Content(Path("p.pdf")).substr(0, 5), "%PDF-");
    paint::Preview_Pages(nullptr, pages, true, "Print_to_Printer");
    EXPECT_EQ(paper.id(), QPageSize::Letter);
}

TEST_F(Printed_Pages, of_a_range_are_those_of_the_range)
{
    const paint::Page_Maker pages = paint::Table_Pages(design, Table(1));
    const auto size = [&](int from, int to) {
        paint::Play_Prints([&, into = Into(Path("r.pdf"))](QPrinter& printer) {
            into(printer);
            if (from > 0) {
                printer.setPrintRange(QPrinter::PageRange);
                printer.setFromTo(from, to);
            }
            return true;
        });
        EXPECT_TRUE(paint::Print_Pages(nullptr, pages, false, "Print_to_Printer"));
        const std::string pdf = Content(Path("r.pdf"));
        int count = 0;
        for (std::size_t at = 0; (at = pdf.find("/Type /Page\n", at)) != std::string::npos; ++at)
            ++count;
        return count;
    };
    const int all = size(0, 0);
    EXPECT_EQ(size(2, 3), 2);
    EXPECT_EQ(size(2, 99), all - 1);
}

TEST_F(Printed_Pages, a_printer_that_fails_is_reported)
{
    const paint::Page_Maker pages = paint::Table_Pages(design, Table(10));
    paint::Play_Prints(Into("/no/such/folder/p.pdf"));
    script_.Expect(testing::Error_Box(482, "Printer error", "Print_to_Printer"));
    EXPECT_FALSE(paint::Print_Pages(nullptr, pages, false, "Print_to_Printer"));
    script_.Expect(testing::Error_Box(482, "Printer error", "Print_to_Printer"));
    paint::Preview_Pages(nullptr, pages, false, "Print_to_Printer");
}

TEST_F(Printed_Pages, a_form_is_printed_after_its_note)
{
    QWidget form;
    form.setObjectName(QStringLiteral("frm_Thing"));
    form.resize(300, 200);
    int dialogs = 0;
    paint::Play_Prints([&, into = Into(Path("f.pdf"))](QPrinter& printer) {
        ++dialogs;
        EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Landscape);
        return into(printer);
    });
    script_.Expect({note});
    paint::Print_Form(form);
    EXPECT_EQ(dialogs, 1);
    EXPECT_EQ(Content(Path("f.pdf")).substr(0, 5), "%PDF-");
    script_.Expect({"Another note"});
    paint::Print_Form(form, "Another note");
    EXPECT_EQ(dialogs, 2);
    paint::Play_Prints(Into("/no/such/folder/f.pdf"));
    script_.Expect({note});
    script_.Expect(testing::Error_Box(482, "Printer error", "Print_Form in frm_Thing"));
    paint::Print_Form(form);
}

TEST_F(Printed_Pages, are_saved_whole_or_not_at_all)
{
    const paint::Page_Maker pages = paint::Table_Pages(design, Table(10));
    script_.path = Path("t.pdf");
    paint::Save_Pages_As("Save the table", "t.pdf", pages, false);
    const std::string whole = Content(Path("t.pdf"));
    EXPECT_EQ(whole.substr(0, 5), "%PDF-");
    EXPECT_EQ(whole.substr(whole.size() - 6), "%%EOF\n");
    EXPECT_EQ(script_.dialogs.back().filter, "PDF (*.pdf)|*.pdf");
    script_.path = "/no/such/folder/t.pdf";
    script_.Expect(
        {"The pages could not be saved as\n/no/such/folder/t.pdf\nFile not found", Buttons::OK, Symbol::exclamation});
    paint::Save_Pages_As("Save the table", "t.pdf", pages, false);
    script_.path = std::nullopt;
    paint::Save_Pages_As("Save the table", "t.pdf", pages, false);
}

TEST_F(Printed_Pages, are_letter_for_the_inch_systems)
{
    for (int code = 1; code <= 5; ++code) {
        design.identity.WhichUnit = code;
        EXPECT_EQ(paint::Prints_on_Letter(design), code <= 2) << code;
    }
}

TEST_F(Printed_Pages, a_chart_has_the_scale_of_its_page_at_any_resolution)
{
    // The same chart in the same part of the page, painted at 96 and at 300 dots an inch of the same page.
    const auto share_of_ink = [](int resolution) {
        const double per_point = resolution / 72.0;
        QImage image(QSize(300, 200) * per_point, QImage::Format_RGB32);
        image.setDotsPerMeterX(static_cast<int>(resolution / 0.0254));
        image.setDotsPerMeterY(static_cast<int>(resolution / 0.0254));
        image.fill(Qt::white);
        paint::Chart chart(design, QStringLiteral("grf"));
        chart.Set_Ground(QColor(0xC0, 0xC0, 0xC0));
        chart.Show(
            {paint::Row_Curve(QStringLiteral("S"), QStringLiteral("mm"), design.results.CalcData.Points(var::Angle),
                              design.results.CalcData.Points(var::S), 0, 360)});
        QPainter painter(&image);
        painter.scale(per_point, per_point);
        chart.Paint(painter, QRectF(50, 50, 150, 100));
        painter.end();
        int inked = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                inked += image.pixelColor(x, y) != QColor(Qt::white) ? 1 : 0;
        return double(inked) / (image.width() * image.height());
    };
    EXPECT_NEAR(share_of_ink(96), 0.25, 0.01);  // 150 x 100 of 300 x 200
    EXPECT_NEAR(share_of_ink(300), 0.25, 0.01);
}

TEST_F(Printed_Pages, a_label_has_the_size_of_its_page_at_any_resolution)
{
    const auto height = [](int resolution) {  // of a letter, points
        const double per_point = resolution / 72.0;
        QImage image(QSize(200, 200) * per_point, QImage::Format_RGB32);
        image.setDotsPerMeterX(static_cast<int>(resolution / 0.0254));
        image.setDotsPerMeterY(static_cast<int>(resolution / 0.0254));
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.scale(per_point, per_point);
        paint::Painter_Surface surface(painter, QRectF(0, 0, 200, 200), QPalette(Qt::white));
        surface.Window(0, 0, 200, 200);
        surface.Label(100, 100, "H", Ink::ground);
        painter.end();
        int first = image.height();
        int last = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (qGray(image.pixel(x, y)) < 128) {
                    first = std::min(first, y);
                    last = std::max(last, y);
                }
        return (last - first + 1) / per_point;
    };
    const double usual = height(96);
    EXPECT_GT(usual, 5.0);
    EXPECT_NEAR(height(300), usual, 1.0);
    EXPECT_NEAR(height(600), usual, 1.0);
}

}  // namespace
}  // namespace lobemax
