// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/report_pages.h"

#include <QApplication>
#include <QFont>
#include <QFontMetricsF>
#include <algorithm>
#include <memory>

#include "camgeom/cam_drawing.h"
#include "core/design_state.h"
#include "core/messages.h"
#include "core/text.h"
#include "linkage/linkage_drawing.h"
#include "linkage/linkage_kinematics.h"
#include "paint/chart.h"
#include "paint/link_plot_charts.h"
#include "paint/painter_surface.h"
#include "paint/plot_charts.h"
#include "present/linkage_plots.h"
#include "present/plot_engine.h"

namespace lobemax::paint {

namespace {

// Sizes in points.
constexpr double body_size = 8.5;
constexpr double small_size = 7.5;
constexpr double heading_size = 10.5;
constexpr double title_size = 17.0;
constexpr double leading = 1.32;  // a line over the size of its letters
constexpr double head_height = 24.0;
constexpr double foot_height = 22.0;
constexpr double column_gap = 16.0;
constexpr double part_gap = 11.0;
constexpr int charts_a_page = 4;

const QColor ink(Qt::black);
const QColor pale(0x70, 0x70, 0x70);

QString To_Qt(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QFont Letters(double size, bool bold = false)
{
    QFont font = QApplication::font();
    constexpr double fine = 100.0;  // a font has whole pixels: they are painted at a hundredth
    font.setPixelSize(static_cast<int>(size * fine));
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setBold(bold);
    return font;
}

constexpr double per_unit = 0.01;  // points of a unit of Letters

double Width_of(const QString& text, double size, bool bold = false)
{
    return QFontMetricsF(Letters(size, bold)).horizontalAdvance(text) * per_unit;
}

/// Text within a box on the page.
void Write(QPainter& painter, const QRectF& box, const QString& text, Qt::Alignment where, double size,
           bool bold = false, const QColor& colour = ink)
{
    painter.save();
    painter.setPen(colour);
    painter.setFont(Letters(size, bold));
    painter.translate(box.topLeft());
    painter.scale(per_unit, per_unit);
    painter.drawText(QRectF(0, 0, box.width() / per_unit, box.height() / per_unit),
                     int(where | Qt::AlignVCenter) | Qt::TextDontClip | Qt::TextSingleLine, text);
    painter.restore();
}

void Rule(QPainter& painter, double left, double right, double y, const QColor& colour)
{
    painter.setPen(QPen(colour, 0.5));
    painter.drawLine(QPointF(left, y), QPointF(right, y));
}

/// A table that goes over pages: heads, units below them, rows, and last rows under a line of their own.
struct Paged_Table {
    QStringList heads;
    QStringList units;
    std::vector<QStringList> rows;
    std::vector<QStringList> last;
    std::vector<bool> left;  // by column
    double least = 0.0;      // width of a column
};

/// Fills pages from above to below.
class Page_Writer {
public:
    Page_Writer(const QSizeF& area, QString head, QString date)
        : area_(area), head_(std::move(head)), date_(std::move(date))
    {
        Turn();
    }

    double Width() const { return area_.width(); }
    double Height() const { return Bottom() - head_height; }
    /// Begins a page unless one has just begun.
    void New_Page()
    {
        if (!pages_.back().empty())
            Turn();
    }
    void Skip(double height) { y_ = pages_.back().empty() ? y_ : y_ + height; }
    bool Fits(double height) const { return y_ + height <= Bottom(); }

    void Line(const QString& text, double size = body_size, bool bold = false)
    {
        const double height = size * leading;
        Room(height);
        Put([=, y = y_, width = area_.width()](QPainter& painter) {
            Write(painter, QRectF(0, y, width, height), text, Qt::AlignLeft, size, bold);
        });
        y_ += height;
    }
    /// A line broken where the page ends.
    void Paragraph(const QString& text)
    {
        QString line;
        for (const QString& word : text.split(QLatin1Char(' '))) {
            const QString longer = line.isNull() ? word : line + QLatin1Char(' ') + word;
            if (!line.isEmpty() && Width_of(longer, body_size) > area_.width()) {
                Line(line);
                line = word;
            } else {
                line = longer;
            }
        }
        Line(line);
    }
    /// A heading, on the page of what follows it.
    void Heading(const QString& text, double with)
    {
        Skip(part_gap);
        const double height = heading_size * leading + 4.0;
        if (!Fits(height + with))
            New_Page();
        Put([=, y = y_, width = area_.width()](QPainter& painter) {
            Write(painter, QRectF(0, y, width, heading_size * leading), text, Qt::AlignLeft, heading_size, true);
            Rule(painter, 0, width, y + heading_size * leading + 1.0, pale);
        });
        y_ += height;
    }
    void Table(const Paged_Table& table);
    /// Something painted into a box of its own across the page.
    void Box(double height, std::function<void(QPainter&, const QRectF&)> paint)
    {
        Room(height);
        Put([paint = std::move(paint), box = QRectF(0, y_, area_.width(), height)](QPainter& painter) {
            paint(painter, box);
        });
        y_ += height;
    }

    /// The pages with head and foot.
    std::vector<Page> Finish() const
    {
        std::vector<Page> pages;
        const QString count = QString::number(pages_.size());
        for (std::size_t k = 0; k < pages_.size(); ++k)
            pages.emplace_back([items = pages_[k], area = area_, head = head_, date = date_,
                                foot = QStringLiteral("Page %1 of %2").arg(k + 1).arg(count)](QPainter& painter) {
                painter.setRenderHint(QPainter::Antialiasing);
                const double line = small_size * leading;
                Write(painter, QRectF(0, 0, area.width(), line), head, Qt::AlignLeft, small_size, false, pale);
                Write(painter, QRectF(0, 0, area.width(), line), date, Qt::AlignRight, small_size, false, pale);
                Rule(painter, 0, area.width(), line + 2.0, pale);
                Rule(painter, 0, area.width(), area.height() - line - 2.0, pale);
                Write(painter, QRectF(0, area.height() - line, area.width(), line), foot, Qt::AlignRight, small_size,
                      false, pale);
                for (const Page& item : items)
                    item(painter);
            });
        return pages;
    }

private:
    double Bottom() const { return area_.height() - foot_height; }
    void Turn()
    {
        pages_.emplace_back();
        y_ = head_height;
    }
    void Room(double height)
    {
        if (!Fits(height))
            New_Page();
    }
    void Put(Page item) { pages_.back().push_back(std::move(item)); }

    QSizeF area_;
    QString head_;
    QString date_;
    std::vector<std::vector<Page>> pages_;
    double y_ = 0.0;
};

/// Where the columns of a table stand, and the size of letters that lets them all stand side by side.
struct Table_Layout {
    std::vector<double> widths;
    double size = body_size;
};

Table_Layout Lay_Out(const Paged_Table& table, double width)
{
    Table_Layout layout;
    const std::size_t columns = table.left.size();
    for (std::size_t k = 0; k < columns; ++k) {
        const auto cell = static_cast<qsizetype>(k);
        QString longest;
        for (const auto* const rows : {&table.rows, &table.last})
            for (const QStringList& row : *rows)
                if (row[cell].size() > longest.size())
                    longest = row[cell];
        double widest = Width_of(longest, body_size, false) * 1.04;  // another text of as many letters may be wider
        for (const QStringList* const heads : {&table.heads, &table.units})
            if (!heads->isEmpty())
                widest = std::max(widest, Width_of((*heads)[cell], body_size, true));
        layout.widths.push_back(std::max(widest, table.least));
    }
    double whole = column_gap * (static_cast<double>(columns) - 1.0);
    for (const double w : layout.widths)
        whole += w;
    if (whole > width) {
        const double share = width / whole;
        layout.size *= share;
        for (double& w : layout.widths)
            w *= share;
    }
    return layout;
}

void Page_Writer::Table(const Paged_Table& table)
{
    const auto layout = std::make_shared<const Table_Layout>(Lay_Out(table, area_.width()));
    const auto content = std::make_shared<const Paged_Table>(table);
    const double size = layout->size;
    const double height = size * leading;
    const double gap = column_gap * size / body_size;
    double whole = -gap;
    for (const double w : layout->widths)
        whole += w + gap;
    const auto row_at = [=](QPainter& painter, const QStringList& cells, double y, bool bold, const QColor& colour) {
        double x = 0.0;
        for (std::size_t k = 0; k < layout->widths.size(); ++k) {
            Write(painter, QRectF(x, y, layout->widths[k], height), cells[static_cast<qsizetype>(k)],
                  content->left[k] ? Qt::AlignLeft : Qt::AlignRight, size, bold, colour);
            x += layout->widths[k] + gap;
        }
    };
    const bool headed = std::ranges::any_of(table.heads, [](const QString& head) { return !head.isEmpty(); });
    const auto heads = [&] {
        if (!headed)
            return;
        Put([=, y = y_](QPainter& painter) {
            row_at(painter, content->heads, y, true, ink);
            double below = y + height;
            if (!content->units.isEmpty()) {
                row_at(painter, content->units, below, false, pale);
                below += height;
            }
            Rule(painter, 0, whole, below + 1.0, ink);
        });
        y_ += height * (table.units.isEmpty() ? 1.0 : 2.0) + 3.0;
    };
    constexpr double least_rows = 3.0;
    if (!Fits((least_rows + (headed ? 2.0 : 0.0)) * height))
        New_Page();
    heads();
    std::size_t next = 0;
    bool turn = false;
    while (next < table.rows.size()) {
        if (turn || !Fits(height)) {
            New_Page();
            heads();
        }
        const auto room = static_cast<std::size_t>(std::max(1.0, (Bottom() - y_) / height + 1e-6));
        std::size_t end = std::min(table.rows.size(), next + room);
        constexpr std::size_t kept = 4;  // so many rows stay with the last ones
        turn = end == table.rows.size() && end - next > kept && !table.last.empty() &&
               !Fits(static_cast<double>(end - next + table.last.size()) * height + 3.0);
        if (turn)
            end -= kept;
        Put([=, y = y_](QPainter& painter) {
            for (std::size_t k = next; k < end; ++k)
                row_at(painter, content->rows[k], y + static_cast<double>(k - next) * height, false, ink);
        });
        y_ += static_cast<double>(end - next) * height;
        next = end;
    }
    if (table.last.empty())
        return;
    if (!Fits(static_cast<double>(table.last.size()) * height + 3.0)) {
        New_Page();
        heads();
    }
    Put([=, y = y_](QPainter& painter) {
        Rule(painter, 0, whole, y + 1.0, ink);
        for (std::size_t k = 0; k < content->last.size(); ++k)
            row_at(painter, content->last[k], y + 3.0 + static_cast<double>(k) * height, true, ink);
    });
    y_ += static_cast<double>(table.last.size()) * height + 3.0;
}

QStringList In_Qt(const std::vector<std::string>& texts)
{
    QStringList list;
    for (const std::string& text : texts)
        list.append(To_Qt(text));
    return list;
}

Paged_Table In_Pages(const Report_Table& table)
{
    Paged_Table paged;
    for (const Report_Table::Column& column : table.columns) {
        paged.heads.append(To_Qt(Trim(column.head)));
        paged.left.push_back(column.left);
    }
    for (const std::vector<std::string>& row : table.rows)
        paged.rows.push_back(In_Qt(row));
    return paged;
}

QString Head_of(const Design_State& design)
{
    const Identity_Group& id = design.identity;
    return To_Qt(id.Program_Name) + QStringLiteral("    Design No. %1    File: %2")
                                        .arg(int{id.Design_No})
                                        .arg(To_Qt(On_One_Line(id.Model_Name)));
}

QString Date_Text()
{
    return To_Qt(Today_Text() + "  " + Now_Text());
}

/// Black on white, whatever the desktop's colours are.
QPalette Paper()
{
    QPalette palette(Qt::white);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::WindowText, Qt::black);
    palette.setColor(QPalette::Mid, QColor(0xA0, 0xA0, 0xA0));
    palette.setColor(QPalette::Highlight, QColor(0x1F, 0x5F, 0xA8));
    return palette;
}

using Kept_Design = std::shared_ptr<Design_State>;

std::unique_ptr<Chart> Paper_Chart(const Design_State& design)
{
    auto chart = std::make_unique<Chart>(design, QStringLiteral("grf_Report"));
    QFont font = chart->font();
    constexpr double chart_size = 6.5;
    font.setPointSizeF(chart_size);
    chart->setPalette(Paper());
    chart->setFont(font);
    chart->Set_Ground(Qt::white);
    return chart;
}

/// The rows that the report plots, as far as they are calculated.
std::vector<int> Plotted_Rows(const Design_State& design)
{
    const Flags_Group& f = design.flags;
    std::vector<int> rows;
    const auto add = [&rows](bool calculated, std::initializer_list<int> more) {
        if (calculated)
            rows.insert(rows.end(), more);
    };
    add(f.Calculated, {var::S, var::V, var::A, var::J});
    add(f.Sized, {var::Phi, var::Rho});
    add(f.Dynamicflag, {var::Force, var::Torque});
    add(f.Stressflag, {var::Sigma_Max, var::Tau_Max});
    add(f.Modelflag, {var::Response_X, var::Response_Xddot, var::Response_Error, var::Dynamic_Force});
    add(f.CompCam_Calc, {var::Comp_Torque, var::Net_Torque});
    return rows;
}

using Chart_List = std::vector<std::shared_ptr<Chart>>;

Chart_List Charts_of(const Design_State& design)
{
    Chart_List charts;
    for (const int row : Plotted_Rows(design)) {
        charts.push_back(Paper_Chart(design));
        Show_Cycle(design, *charts.back(), row);
    }
    if (!design.flags.Linkage_Calc)
        return charts;
    const int last = Last_Link(design);
    for (const Link_Function& function : Link_Functions(design))
        if (function.link == last) {
            charts.push_back(Paper_Chart(design));
            Fill_Link_Plot(design, {charts.back().get()}, {function});
            charts.back()->Set_Title({});
        }
    return charts;
}

bool Draws_Cam(Design_State& design)
{
    const Cam_Group& c = design.cam;
    if (!design.flags.Sized || c.Camtype == "Barrel")
        return false;
    return c.Camtype == "Linear" ? c.Followtype == 1 : Find_Base_Circle(design);
}

/// What a drawing would tell of a design stays unsaid: the report tells it.
class Silent {
public:
    Silent()
    {
        Host host = Installed_Host();
        host.messenger = nullptr;
        before_ = Install_Host(std::move(host));
    }
    ~Silent() { Install_Host(std::move(before_)); }
    Silent(const Silent&) = delete;
    Silent& operator=(const Silent&) = delete;

private:
    Host before_;
};

void Add_Drawing(Page_Writer& writer, const QString& title, const QString& caption,
                 const std::function<void(Surface&)>& draw)
{
    writer.New_Page();
    writer.Heading(title, writer.Width());
    const double side = std::min(writer.Width(), writer.Height() - 60.0);
    writer.Box(side, [draw](QPainter& painter, const QRectF& box) {
        const Silent silent;
        painter.save();
        painter.setClipRect(box);
        Painter_Surface surface(painter, box, Paper());
        draw(surface);
        painter.restore();
    });
    writer.Skip(6.0);
    writer.Paragraph(caption);
}

void Add_Drawings(Page_Writer& writer, const Kept_Design& design)
{
    if (Draws_Cam(*design)) {
        const std::string& direction = design->cam.Keyway_Text;
        Add_Drawing(writer, QStringLiteral("Cam and follower"),
                    QStringLiteral("The cam at cam angle 0, its prime circle dashed; keyway at %1.")
                        .arg(To_Qt(On_One_Line(direction))),
                    [design](Surface& surface) {
                        Cam_Group& c = design->cam;
                        c.Show_Surface = true;
                        c.Show_Follower_Path = c.Show_Cutter_Path = c.Show_Cam_Key = false;
                        c.Zoom_Factor = 1.0;
                        Draw_Cam(*design, surface);
                    });
    }
    if (design->flags.Linkage_Calc)
        Add_Drawing(writer, QStringLiteral("Linkage"), QStringLiteral("The train at cam angle 0."),
                    [design](Surface& surface) { Draw_Linkage_at(*design, surface, 0); });
}

void Add_Part(Page_Writer& writer, const Report_Part& part)
{
    constexpr double least_lines = 4.0;
    writer.Heading(To_Qt(part.title), least_lines * body_size * leading);
    for (const std::string& line : part.lines)
        writer.Paragraph(To_Qt(line));
    if (!part.table.rows.empty())
        writer.Table(In_Pages(part.table));
    if (!part.notes.empty())
        writer.Skip(3.0);
    for (const std::string& note : part.notes)
        writer.Paragraph(To_Qt(note));
}

void Add_Header(Page_Writer& writer, const std::string& title, const Report_Lines& header)
{
    if (!title.empty())
        writer.Line(To_Qt(title), title_size, true);
    for (const std::string& line : header)
        writer.Line(To_Qt(line));
}

}  // namespace

bool Prints_on_Letter(const Design_State& design)
{
    constexpr int last_inch_system = 2;
    return design.identity.WhichUnit <= last_inch_system;
}

Page_Maker Table_Pages(const Design_State& design, const Table_in_Texts& table)
{
    Paged_Table paged{In_Qt(table.heads), In_Qt(table.units), {}, {In_Qt(table.smallest), In_Qt(table.largest)}, {}};
    for (const std::vector<std::string>& row : table.rows)
        paged.rows.push_back(In_Qt(row));
    paged.left.assign(table.heads.size(), false);
    constexpr double column_width = 76.0;
    paged.least = column_width;
    return [paged = std::move(paged), head = Head_of(design), date = Date_Text(),
            lines = Namedate_Print(design)](const QSizeF& area) {
        Page_Writer writer(area, head, date);
        Add_Header(writer, {}, lines);
        writer.Table(paged);
        return writer.Finish();
    };
}

Page_Maker Report_Pages(const Design_State& design, const Design_Report& report)
{
    return [kept = std::make_shared<Design_State>(design), report, head = Head_of(design),
            date = Date_Text()](const QSizeF& area) {
        Page_Writer writer(area, head, date);
        Add_Header(writer, report.title, report.header);
        for (const Report_Part& part : report.parts)
            Add_Part(writer, part);
        const Chart_List charts = Charts_of(*kept);
        for (std::size_t k = 0; k < charts.size(); ++k) {
            if (k % charts_a_page == 0) {
                writer.New_Page();
                writer.Heading(QStringLiteral("Plots over the cam angle"), writer.Height() / 2);
            }
            const double height = (writer.Height() - heading_size * leading - 6.0) / charts_a_page;
            writer.Box(height,
                       [kept, chart = charts[k]](QPainter& painter, const QRectF& box) { chart->Paint(painter, box); });
        }
        Add_Drawings(writer, kept);
        return writer.Finish();
    };
}

bool Save_Report(const Design_State& design, const Design_Report& report, const std::string& path, std::string* why)
{
    return Save_Pages(Report_Pages(design, report), Prints_on_Letter(design), path, why);
}

}  // namespace lobemax::paint
