// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/painter_surface.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontInfo>
#include <QMenu>
#include <QMouseEvent>
#include <QPolygonF>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "paint/picture_file.h"
#include "paint/save_picture.h"

namespace lobemax::paint {

Painter_Surface::Painter_Surface(QPainter& painter, const QRectF& area, const QPalette& palette)
    : painter_(painter), area_(area), palette_(palette)
{
    painter_.setRenderHint(QPainter::Antialiasing);
}

void Painter_Surface::Scale(double left, double top, double right, double bottom)
{
    const double width = std::max(right - left, 1e-12);
    const double height = std::max(bottom - top, 1e-12);
    per_y_ = std::min(area_.width() / (width * across_), area_.height() / height);
    per_x_ = per_y_ * across_;
    origin_ = area_.center() - QPointF((left + right) / 2 * per_x_, (top + bottom) / 2 * per_y_);
}

void Painter_Surface::Window(double left, double top, double right, double bottom)
{
    constexpr double least = 1e-12;
    per_x_ = area_.width() / std::max(right - left, least);
    per_y_ = std::abs(bottom - top) < least ? 1.0 : area_.height() / (bottom - top);
    origin_ = area_.topLeft() - QPointF(left * per_x_, top * per_y_);
}

void Painter_Surface::Clear()
{
    painter_.fillRect(area_, palette_.color(QPalette::Base));
    ink_.reset();
}

QPointF Painter_Surface::To_Page(double x, double y) const
{
    return origin_ + QPointF(x * per_x_, y * per_y_);
}

World_Point Painter_Surface::To_World(const QPointF& page) const
{
    return {(page.x() - origin_.x()) / per_x_, (page.y() - origin_.y()) / per_y_};
}

QColor Painter_Surface::Colour_of(Ink ink) const
{
    if (std::ranges::find(gray_, ink) != gray_.end())
        return palette_.color(QPalette::Mid);
    switch (ink) {
    case Ink::cam:
        return {0xD5, 0x8A, 0x1C};
    case Ink::follower:
        return {0x00, 0x72, 0xB2};
    case Ink::path:
        return {0x56, 0x9F, 0xD6};
    case Ink::cutter:
        return {0x00, 0x9E, 0x73};
    case Ink::surface:
        return {0xD5, 0x5E, 0x00};
    case Ink::key:
        return {0xB3, 0x4D, 0x85};
    case Ink::prime:
        return palette_.color(QPalette::Mid);
    case Ink::curve:
        return palette_.color(QPalette::Highlight);
    case Ink::link:
        return {0x3E, 0x7C, 0xB8};
    case Ink::slider:
        return {0x00, 0x8F, 0x6B};
    case Ink::effector:
        return {0xC8, 0x3E, 0x8E};
    case Ink::broken:
    case Ink::warned:
        return {0xD6, 0x2F, 0x2F};
    case Ink::ground:
    case Ink::shaft:
    case Ink::axis:
        break;
    }
    return palette_.color(QPalette::Text);
}

void Painter_Surface::Use(Ink ink)
{
    if (ink_ == ink)
        return;
    ink_ = ink;
    const bool strong = ink == Ink::cam || ink == Ink::follower || ink == Ink::surface;
    const bool fine = ink == Ink::shaft || ink == Ink::axis || ink == Ink::prime || ink == Ink::ground;
    const bool dashed = ink == Ink::prime || ink == Ink::broken;
    QPen pen(Colour_of(ink),
             ink == Ink::warned ? 4.0
             : strong           ? 1.8
             : fine             ? 1.0
                                : 1.4,
             dashed ? Qt::DashLine : Qt::SolidLine, ink == Ink::warned ? Qt::RoundCap : Qt::FlatCap, Qt::BevelJoin);
    painter_.setPen(pen);
    painter_.setBrush(Qt::NoBrush);
}

void Painter_Surface::PSet(double x, double y, Ink ink)
{
    Use(ink);
    pen_ = To_Page(x, y);
    painter_.drawPoint(pen_);
}

void Painter_Surface::Line(double x1, double y1, double x2, double y2, Ink ink)
{
    pen_ = To_Page(x1, y1);
    Line_to(x2, y2, ink);
}

void Painter_Surface::Line_to(double x, double y, Ink ink)
{
    Use(ink);
    const QPointF to = To_Page(x, y);
    painter_.drawLine(pen_, to);
    pen_ = to;
}

void Painter_Surface::Circle(double x, double y, double radius, Ink ink)
{
    Use(ink);
    painter_.drawEllipse(To_Page(x, y), radius * per_x_, radius * std::abs(per_y_));
}

void Painter_Surface::Outline(std::span<const World_Point> points, Ink ink)
{
    QPolygonF polygon;
    polygon.reserve(static_cast<qsizetype>(points.size()));
    // Points that fall together on the page add work and no shape.
    constexpr double together = 0.3;
    for (const World_Point& p : points) {
        const QPointF at = To_Page(p.x, p.y);
        if (polygon.isEmpty() || (at - polygon.back()).manhattanLength() > together)
            polygon.append(at);
    }
    Use(ink);
    QColor inside = Colour_of(ink);
    inside.setAlphaF(0.22F);
    painter_.setBrush(inside);
    painter_.drawPolygon(polygon);
    painter_.setBrush(Qt::NoBrush);
}

void Painter_Surface::Label(double x, double y, std::string_view text, Ink ink)
{
    Use(ink);
    QFont font = painter_.font();
    font.setPixelSize(QFontInfo(QApplication::font()).pixelSize());  // the same on paper as on the screen
    painter_.setFont(font);
    constexpr double room = 200.0;  // more than any word is wide
    const QRectF about(To_Page(x, y) - QPointF(room, room), QSizeF(2.0 * room, 2.0 * room));
    painter_.drawText(about, Qt::AlignCenter, QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

bool Save_Drawing(const std::function<bool(Surface&)>& drawing, const QSize& size, const std::string& path,
                  const QPalette& palette, double scale, std::string* why)
{
    const auto paint = [&](QPainter& painter) {
        Painter_Surface surface(painter, QRectF(QPointF(), QSizeF(size)), palette);
        surface.Clear();
        return drawing(surface);
    };
    return Save_Picture(size, path, scale, paint, why);
}

Drawing_View::Drawing_View(const QString& name, QWidget* parent) : QWidget(parent)
{
    setObjectName(name);
    setMinimumSize(160, 160);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void Drawing_View::Show(Drawing drawing, std::vector<Ink> gray)
{
    drawing_ = std::move(drawing);
    gray_ = std::move(gray);
    update();
}

void Drawing_View::Widen(double across)
{
    across_ = across;
    update();
}

void Drawing_View::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    Painter_Surface surface(painter, Area(), palette());
    surface.Gray(gray_);
    surface.Widen(across_);
    if (drawing_)
        drawing_(surface);
}

QRectF Drawing_View::Area() const
{
    return {pan_, QSizeF(size()) * zoom_};
}

void Drawing_View::wheelEvent(QWheelEvent* event)
{
    constexpr double most = 50.0;
    const double factor = std::pow(1.2, event->angleDelta().y() / 120.0);
    const double zoom = std::clamp(zoom_ * factor, 1.0 / most, most);
    pan_ = event->position() - (event->position() - pan_) * (zoom / zoom_);
    zoom_ = zoom;
    update();
    event->accept();
}

void Drawing_View::mousePressEvent(QMouseEvent* event)
{
    grip_ = event->position();
}

void Drawing_View::mouseMoveEvent(QMouseEvent* event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        return;
    pan_ += event->position() - grip_;
    grip_ = event->position();
    update();
}

void Drawing_View::mouseDoubleClickEvent(QMouseEvent*)
{
    zoom_ = 1.0;
    pan_ = {};
    update();
}

void Drawing_View::Fill_Menu(QMenu& menu)
{
    menu.addAction(QStringLiteral("&Copy as picture"), this, [this] { QApplication::clipboard()->setPixmap(grab()); });
    QAction* const save = menu.addAction(QStringLiteral("&Save as..."), this, [this] {
        Save_Picture_As("Save the drawing", [this](const std::string& path, std::string& why) {
            const auto draw = [this](Surface& surface) {
                drawing_(surface);
                return true;
            };
            return Save_Drawing(draw, size(), path, palette(), Screen_Picture_Scale, &why);
        });
    });
    save->setEnabled(static_cast<bool>(drawing_));
}

void Drawing_View::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu;
    Fill_Menu(menu);
    menu.exec(event->globalPos());
}

}  // namespace lobemax::paint
