// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPainter>
#include <QPalette>
#include <QString>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "core/surface.h"
#include "paint/picture_file.h"

class QMenu;

namespace lobemax::paint {

/// The drawing surface on a QPainter: screen, picture, SVG, PDF, printer. Lines keep their width at any scale.
class Painter_Surface : public Surface {
public:
    /// Draws into a rectangle of the painter, in the colours of a palette.
    Painter_Surface(QPainter& painter, const QRectF& area, const QPalette& palette);

    void Scale(double left, double top, double right, double bottom) override;
    void Window(double left, double top, double right, double bottom) override;
    void Clear() override;
    void PSet(double x, double y, Ink ink) override;
    void Line(double x1, double y1, double x2, double y2, Ink ink) override;
    void Line_to(double x, double y, Ink ink) override;
    void Circle(double x, double y, double radius, Ink ink) override;
    void Outline(std::span<const World_Point> points, Ink ink) override;
    void Label(double x, double y, std::string_view text, Ink ink) override;

    /// The place in the world of a place on the page.
    World_Point To_World(const QPointF& page) const;
    QColor Colour_of(Ink ink) const;
    /// Draws these inks in gray: what they stand for is out of date.
    void Gray(std::vector<Ink> inks) { gray_ = std::move(inks); }
    /// Widens what is drawn, for a screen whose points are not square: a circle is then round to the eye.
    void Widen(double across) { across_ = across; }

private:
    QPointF To_Page(double x, double y) const;
    void Use(Ink ink);

    QPainter& painter_;
    QRectF area_;
    QPalette palette_;
    std::vector<Ink> gray_;
    double across_ = 1.0;
    double per_x_ = 1.0;  // page units of a world unit
    double per_y_ = 1.0;
    QPointF origin_;  // of the world, on the page
    QPointF pen_;
    std::optional<Ink> ink_;  // that the painter's pen has
};

/// What draws onto a surface.
using Drawing = std::function<void(Surface&)>;

/// Writes a drawing to a PNG, SVG or PDF file, by the ending of its path (Save_Picture).
/// @param drawing  false: it could not be drawn, and an older file stays as it was
/// @param why      out: what went wrong
/// @return         whether it was written
bool Save_Drawing(const std::function<bool(Surface&)>& drawing, const QSize& size, const std::string& path,
                  const QPalette& palette, double scale = Screen_Picture_Scale, std::string* why = nullptr);

/// A widget that shows a drawing, whole at any size, with copy and save in its context menu.
///
/// The wheel zooms about the pointer, a drag pans, a double-click shows the whole again.
class Drawing_View : public QWidget {
public:
    explicit Drawing_View(const QString& name, QWidget* parent = nullptr);
    /// @param gray  inks of what is out of date
    void Show(Drawing drawing, std::vector<Ink> gray = {});
    /// How much wider than high a circle is drawn on the screen, so that it looks round; pictures are not widened.
    void Widen(double across);
    /// What the context menu holds.
    void Fill_Menu(QMenu& menu);
    /// Where the whole drawing stands on the widget: the widget itself until the user zooms or pans.
    QRectF Area() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    Drawing drawing_;
    std::vector<Ink> gray_;
    double across_ = 1.0;
    double zoom_ = 1.0;
    QPointF pan_;
    QPointF grip_;  // where the drag was last
};

}  // namespace lobemax::paint
