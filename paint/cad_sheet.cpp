// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/cad_sheet.h"

#include <QApplication>
#include <QFont>
#include <QFontMetricsF>
#include <QPainterPath>
#include <QPen>
#include <algorithm>
#include <array>
#include <cmath>

#include "paint/picture_file.h"

namespace lobemax::paint {

namespace {

// Millimetres.
constexpr double binding = 20.0;  // from the left edge to the frame
constexpr double edge = 10.0;     // from the others
constexpr double side = 180.0;    // width of title, data and table
constexpr double title_height = 34.0;
constexpr double data_line = 4.6;
constexpr double table_line = 4.0;
constexpr double letters = 2.5;
constexpr double small_letters = 1.8;
constexpr double large_letters = 4.0;
constexpr double block_width = 58.0;
constexpr double air = 5.0;  // around the drawing
constexpr double thick = 0.5;
constexpr double thin = 0.18;

struct Paper {
    const char* name;
    double width;
    double height;
};
constexpr std::array papers{Paper{"A4", 210, 297}, Paper{"A3", 420, 297}, Paper{"A2", 594, 420}, Paper{"A1", 841, 594}};

struct Standard_Scale {
    double scale;
    const char* words;
};
constexpr std::array scales{Standard_Scale{5.0, "5:1"}, Standard_Scale{2.0, "2:1"}, Standard_Scale{1.0, "1:1"},
                            Standard_Scale{0.5, "1:2"}, Standard_Scale{0.2, "1:5"}, Standard_Scale{0.1, "1:10"}};

QString To_Qt(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

constexpr double fine = 100.0;  // a font has whole pixels: letters are painted at a hundredth

QFont Letters(double size, bool bold = false)
{
    QFont font = QApplication::font();
    font.setPixelSize(static_cast<int>(size * 1.35 * fine));  // the height of a capital is some three quarters of it
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setBold(bold);
    return font;
}

double Width_of(const QString& text, double size)
{
    return QFontMetricsF(Letters(size)).horizontalAdvance(text) / fine;
}

/// Letters of a height in a box, narrower where they would not fit.
void Write(QPainter& painter, const QRectF& box, const QString& text, Qt::Alignment where, double size,
           bool bold = false)
{
    const double width = Width_of(text, size) * (bold ? 1.1 : 1.0);
    const double squeeze = width > box.width() ? box.width() / width : 1.0;
    painter.save();
    painter.setFont(Letters(size, bold));
    painter.translate(box.topLeft());
    painter.scale(squeeze / fine, 1.0 / fine);
    painter.drawText(QRectF(0, 0, box.width() * fine / squeeze, box.height() * fine),
                     int(where | Qt::AlignVCenter) | Qt::TextDontClip | Qt::TextSingleLine, text);
    painter.restore();
}

/// The cam on the sheet.
class Placed {
public:
    Placed(const Curve_Set& set, const Sheet_Layout& layout)
        : origin_(layout.origin), scale_(layout.scale * Millimetres_per_Unit(set.units))
    {
    }
    QPointF operator()(Vector p) const { return origin_ + QPointF(p.x, -p.y) * scale_; }
    double Length(double length) const { return length * scale_; }

    QPainterPath Path(const std::vector<Surface_Element>& elements) const
    {
        QPainterPath path((*this)(elements.front().from));
        for (const Surface_Element& e : elements)
            Add(path, e);
        return path;
    }
    QPainterPath Path(const Cubic_Spline& spline) const
    {
        QPainterPath path((*this)(spline.At(spline.knots.front())));
        constexpr int parts = 16;
        for (std::size_t i = 0; i + 1 < spline.knots.size(); ++i)
            for (int k = 1; spline.knots[i + 1] > spline.knots[i] && k <= parts; ++k)
                path.lineTo((*this)(spline.At(spline.knots[i] + (spline.knots[i + 1] - spline.knots[i]) * k / parts)));
        return path;
    }
    /// By parts of an eighth of a turn at the most, each within 1e-5 of its radius.
    QPainterPath Circle(double radius) const
    {
        std::vector<Surface_Element> halves{{{radius, 0.0}, {-radius, 0.0}, 1.0}, {{-radius, 0.0}, {radius, 0.0}, 1.0}};
        return Path(halves);
    }

private:
    void Add(QPainterPath& path, const Surface_Element& e) const
    {
        const double angle = 4.0 * std::atan(e.bulge);
        const Vector chord = e.to - e.from;
        constexpr double straight = 1e-7;
        if (std::abs(angle) < straight) {
            path.lineTo((*this)(e.to));
            return;
        }
        constexpr double most = 0.8;  // radians
        const int parts = static_cast<int>(std::ceil(std::abs(angle) / most));
        const double part = angle / parts;
        const double radius = lobemax::Length(chord) / (2.0 * std::sin(0.5 * angle));  // negative clockwise
        const Vector along = Direction(std::atan2(chord.y, chord.x) - 0.5 * angle);    // tangent at the start
        const Vector center = e.from + radius * Vector{-along.y, along.x};
        const double reach = 4.0 / 3.0 * std::tan(0.25 * part) * radius;
        const Vector arm = e.from - center;
        Vector from = e.from;
        Vector tangent = along;
        for (int k = 1; k <= parts; ++k) {
            const Vector turn = Direction(part * k);
            const Vector to = k == parts ? e.to : center + Turned(arm, turn);
            const Vector next = Turned(along, turn);
            path.cubicTo((*this)(from + reach * tangent), (*this)(to - reach * next), (*this)(to));
            from = to;
            tangent = next;
        }
    }

    QPointF origin_;
    double scale_;
};

QPen Pen(double width, Qt::PenStyle style = Qt::SolidLine)
{
    QPen pen(Qt::black, width, style, Qt::RoundCap, Qt::RoundJoin);
    return pen;
}

QPen Pen_of(Curve_Layer layer)
{
    switch (layer) {
    case Curve_Layer::surface:
    case Curve_Layer::shaft:
    case Curve_Layer::keyway:
        return Pen(thick);
    case Curve_Layer::pitch:
    case Curve_Layer::prime:
        return Pen(thin, Qt::DashDotLine);
    case Curve_Layer::cutter:
        return Pen(thin, Qt::DashLine);
    default:
        return Pen(thin);
    }
}

void Draw_Cam(QPainter& painter, const Curve_Set& set, const Sheet_Layout& layout)
{
    const Placed place(set, layout);
    painter.setBrush(Qt::NoBrush);
    if (set.low.x < 0.0 && set.low.y < 0.0) {  // centre lines
        painter.setPen(Pen(thin, Qt::DashDotLine));
        painter.drawLine(place({set.low.x, 0.0}), place({set.high.x, 0.0}));
        painter.drawLine(place({0.0, set.low.y}), place({0.0, set.high.y}));
    }
    for (const Fitted_Curve& curve : set.curves) {
        painter.setPen(Pen_of(curve.layer));
        painter.drawPath(curve.spline ? place.Path(*curve.spline) : place.Path(curve.path.elements));
    }
    for (const Set_Circle& circle : set.circles)
        if (circle.layer != Curve_Layer::shaft || set.keyway.empty()) {
            painter.setPen(Pen_of(circle.layer));
            painter.drawPath(place.Circle(circle.radius));
        }
    if (!set.keyway.empty()) {
        painter.setPen(Pen_of(Curve_Layer::keyway));
        painter.drawPath(place.Path(set.keyway));
    }
    painter.setPen(Pen(thin));
    for (const Mark_Note& note : set.notes) {
        painter.drawLine(place(note.from), place(note.to));
        const QPointF at = place(note.text_at);
        const QString text = To_Qt(note.text);
        const double width = Width_of(text, small_letters);
        const bool left = note.to.x < note.from.x;
        const QRectF box(left ? at.x() - width : at.x(), at.y() - 0.5 * letters, width, letters);
        painter.fillRect(box, Qt::white);
        Write(painter, box, text, Qt::AlignLeft, small_letters);
    }
}

void Draw_Title(QPainter& painter, const Cad_Sheet& sheet, const Sheet_Layout& layout)
{
    const QRectF& box = layout.title;
    Cad_Facts cells = sheet.title;
    cells.emplace_back("Scale", layout.scale_words);
    cells.emplace_back("Paper", sheet.paper);
    painter.setPen(Pen(thick));
    painter.drawRect(box);
    // The model over the whole width, the others four a line.
    constexpr double first = 12.0;
    constexpr int columns = 4;
    const double rest = (box.height() - first) / 2.0;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        QRectF cell(box.left(), box.top(), box.width(), first);
        if (i > 0) {
            const auto k = static_cast<int>(i) - 1;
            cell = QRectF(box.left() + k % columns * box.width() / columns, box.top() + first + k / columns * rest,
                          box.width() / columns, rest);
        }
        painter.setPen(Pen(thin));
        painter.drawRect(cell);
        const QRectF inner = cell.adjusted(1.5, 0.5, -1.5, -0.5);
        Write(painter, QRectF(inner.left(), inner.top(), inner.width(), small_letters * 1.6), To_Qt(cells[i].first),
              Qt::AlignLeft, small_letters);
        const double size = i == 0 ? large_letters : letters;
        Write(painter, inner.adjusted(0, small_letters * 1.6, 0, 0), To_Qt(cells[i].second), Qt::AlignLeft, size,
              i == 0);
    }
}

void Draw_Data(QPainter& painter, const Cad_Sheet& sheet, const QRectF& box)
{
    const double half = box.width() / 2.0;
    const auto lines = (sheet.data.size() + 1) / 2;
    painter.setPen(Pen(thin));
    for (std::size_t i = 0; i < sheet.data.size(); ++i) {
        const double left = box.left() + (i < lines ? 0.0 : half);
        const double top = box.top() + static_cast<double>(i % lines) * data_line;
        constexpr double name = 34.0;
        Write(painter, QRectF(left + 1.0, top, name - 2.0, data_line), To_Qt(sheet.data[i].first), Qt::AlignLeft,
              small_letters);
        Write(painter, QRectF(left + name, top, half - name - 1.0, data_line), To_Qt(sheet.data[i].second),
              Qt::AlignLeft, small_letters);
    }
}

void Draw_Radii(QPainter& painter, const Cad_Sheet& sheet, const Sheet_Layout& layout)
{
    const QRectF& box = layout.radii;
    painter.setPen(Pen(thin));
    Write(painter, QRectF(box.left() + 1.0, box.top() + 0.8, box.width(), table_line), To_Qt(sheet.radii),
          Qt::AlignLeft, letters, true);
    const double top = box.top() + 1.5 * table_line;
    const auto lines = static_cast<std::size_t>(layout.lines);
    const double column = block_width / static_cast<double>(sheet.heads.size());
    for (std::size_t i = 0; i < sheet.rows.size(); ++i) {
        const double left = box.left() + static_cast<double>(i / lines) * (block_width + 3.0);
        const auto cell = [&](std::size_t c, double y, const std::string& text) {
            Write(painter, QRectF(left + static_cast<double>(c) * column, y, column - 1.0, table_line), To_Qt(text),
                  Qt::AlignRight, small_letters);
        };
        if (i % lines == 0) {
            for (std::size_t c = 0; c < sheet.heads.size(); ++c)
                cell(c, top, sheet.heads[c]);
            painter.drawLine(QPointF(left, top + table_line), QPointF(left + block_width, top + table_line));
        }
        for (std::size_t c = 0; c < sheet.rows[i].size(); ++c)
            cell(c, top + static_cast<double>(1 + i % lines) * table_line, sheet.rows[i][c]);
    }
    Write(painter, QRectF(box.left() + 1.0, box.bottom() - table_line, box.width() - 2.0, table_line),
          To_Qt(sheet.note), Qt::AlignLeft, small_letters);
}

/// The scale that is wanted, or the first that fits.
void Find_Scale(const Cad_Sheet& sheet, Sheet_Layout& layout)
{
    const Curve_Set& set = sheet.curves;
    const double mm = Millimetres_per_Unit(set.units);
    const double width = (set.high.x - set.low.x) * mm;
    const double height = (set.high.y - set.low.y) * mm;
    const double room_x = layout.field.width() - 2.0 * air;
    const double room_y = layout.field.height() - 2.0 * air;
    const auto fits = [&](double scale) { return width * scale <= room_x && height * scale <= room_y; };
    const Standard_Scale* chosen = nullptr;
    for (const Standard_Scale& s : scales) {
        // One that is smaller than this is hard to see at its own size.
        constexpr double small = 40.0;
        const bool too_large = sheet.scale == 0.0 && s.scale > 1.0 && std::max(width, height) * s.scale > 2.5 * small;
        if (sheet.scale != 0.0 ? s.scale == sheet.scale : fits(s.scale) && !too_large) {
            chosen = &s;
            break;
        }
    }
    const auto words = [](double a, double b) {
        return Plain_Number(a, 0, false) + " x " + Plain_Number(b, 0, false) + " mm";
    };
    if (chosen == nullptr || !fits(chosen->scale)) {
        const double scale = chosen == nullptr ? scales.back().scale : chosen->scale;
        layout.refusal = "The drawing needs " + words(width * scale, height * scale) + " at " +
                         (chosen == nullptr ? scales.back().words : chosen->words) + ", the sheet " + sheet.paper +
                         " has room for " + words(room_x, room_y) + ": take a larger sheet or another scale.";
        return;
    }
    layout.scale = chosen->scale;
    layout.scale_words = chosen->words;
    const double per = mm * layout.scale;
    layout.origin =
        layout.field.center() - QPointF(0.5 * (set.low.x + set.high.x) * per, -0.5 * (set.low.y + set.high.y) * per);
}

}  // namespace

Sheet_Layout Lay_Out(const Cad_Sheet& sheet)
{
    Sheet_Layout layout;
    const auto* paper = std::ranges::find(papers, sheet.paper, &Paper::name);
    if (paper == papers.end()) {
        layout.refusal = "There is no paper '" + sheet.paper + "'.";
        return layout;
    }
    layout.width = paper->width;
    layout.height = paper->height;
    layout.frame = QRectF(binding, edge, layout.width - binding - edge, layout.height - 2.0 * edge);
    const QRectF& f = layout.frame;
    const bool narrow = f.width() < 2.0 * side;
    const double left = f.right() - side;
    layout.title = QRectF(left, f.bottom() - title_height, side, title_height);
    const double data = static_cast<double>((sheet.data.size() + 1) / 2) * data_line + 2.0;
    layout.data = QRectF(left, layout.title.top() - data, side, data);
    layout.blocks = 3;
    const auto rows = static_cast<int>(sheet.rows.size());
    layout.lines = (rows + layout.blocks - 1) / layout.blocks;
    const double table = (layout.lines + 4.0) * table_line;
    layout.radii = QRectF(left, layout.data.top() - table, side, table);
    layout.field = narrow ? QRectF(f.left(), f.top(), f.width(), layout.radii.top() - f.top())
                          : QRectF(f.left(), f.top(), f.width() - side, f.height());
    constexpr double least_field = 60.0;
    if (layout.radii.top() < f.top() + (narrow ? least_field : 0.0)) {
        const double room = layout.data.top() - f.top() - (narrow ? least_field : 0.0);
        const int most = std::max(1, static_cast<int>(room / table_line - 4.0)) * layout.blocks;
        layout.refusal = "A table of " + std::to_string(rows) + " lines has no room on " + sheet.paper +
                         ", which holds " + std::to_string(most) + ": take a larger step or a larger sheet.";
        return layout;
    }
    Find_Scale(sheet, layout);
    return layout;
}

void Paint_Sheet(const Cad_Sheet& sheet, const Sheet_Layout& layout, QPainter& painter)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(Pen(thick));
    painter.drawRect(layout.frame);
    painter.setPen(Pen(thin));
    for (const QRectF& box : {layout.data, layout.radii})
        painter.drawRect(box);
    Draw_Cam(painter, sheet.curves, layout);
    Draw_Radii(painter, sheet, layout);
    Draw_Data(painter, sheet, layout.data.adjusted(0, 1.0, 0, -1.0));
    Draw_Title(painter, sheet, layout);
}

std::string Make_Sheet(const Cad_Sheet& sheet, std::string& bytes, Cad_Facts& facts)
{
    const Sheet_Layout layout = Lay_Out(sheet);
    if (!layout.refusal.empty())
        return layout.refusal;
    facts.emplace_back("Sheet", sheet.paper + ", scale " + layout.scale_words);
    bytes = Page_Bytes(QSizeF(layout.width, layout.height),
                       [&](QPainter& painter) { Paint_Sheet(sheet, layout, painter); });
    return {};
}

}  // namespace lobemax::paint
