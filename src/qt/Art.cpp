#include "qt/Art.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QPainterPath>

#include "qt/Look.h"

namespace quillon {

namespace {

/// The size that the picture at rest is drawn in.
constexpr QSizeF kScene(640, 300);

/// A square in the middle of the place.
QRectF middle(const QRectF& place, double edge) {
    return {place.center().x() - edge / 2, place.center().y() - edge / 2, edge, edge};
}

void paintArrow(QPainter& painter, const QRectF& place, const QColor& ink, bool up) {
    const double edge = std::min({place.width(), place.height(), 64.0}) * 0.5;
    const QRectF box = middle(place, edge);
    const double inset = edge * 0.12;
    const double base = up ? box.bottom() - inset : box.top() + inset;
    const double tip = up ? box.top() + inset : box.bottom() - inset;
    QPainterPath arrow(QPointF(box.left(), base));
    arrow.lineTo(box.right(), base);
    arrow.lineTo(box.center().x(), tip);
    arrow.closeSubpath();
    painter.setBrush(ink);
    painter.setPen(QPen(ink, edge * 0.1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(arrow);
}

/// Back to where one came from: an arrow to the left.
void paintBack(QPainter& painter, const QRectF& place, const QColor& ink) {
    const QRectF box = middle(place, std::min(place.width(), place.height()));
    const double unit = box.width() / 20;
    const auto at = [&](double x, double y) { return box.topLeft() + QPointF(x, y) * unit; };
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawPolygon(
        QPolygonF({at(1, 10), at(10, 2), at(10, 7.4), at(19, 7.4), at(19, 12.6), at(10, 12.6), at(10, 18)}));
}

/// What was typed last goes: a label that points to it, with a cross.
void paintErase(QPainter& painter, const QRectF& place, const QColor& ink) {
    const QRectF box = middle(place, std::min(place.width(), place.height()));
    const double unit = box.width() / 20;
    const auto at = [&](double x, double y) { return box.topLeft() + QPointF(x, y) * unit; };
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ink, 1.8 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolygon(QPolygonF({at(1, 10), at(7, 3.5), at(19, 3.5), at(19, 16.5), at(7, 16.5)}));
    painter.drawLine(at(10, 7), at(16, 13));
    painter.drawLine(at(10, 13), at(16, 7));
}

/// The rotor comes up to speed: a disc and an arrow that runs round it.
void paintPreparation(QPainter& painter, const QRectF& place, const QColor& ink) {
    const double edge = std::min(place.width(), place.height());
    const double line = edge * 0.1;
    const QRectF ring = middle(place, edge * 0.76);
    const double radius = ring.width() / 2;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ink, line, Qt::SolidLine, Qt::FlatCap));
    painter.drawArc(ring, 60 * 16, 285 * 16);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawEllipse(middle(place, edge * 0.3));
    const double angle = 60 * std::acos(-1.0) / 180;
    const QPointF end = place.center() + QPointF(radius * std::cos(angle), -radius * std::sin(angle));
    const QPointF along(std::sin(angle), std::cos(angle));
    const QPointF across(std::cos(angle), -std::sin(angle));
    const double head = edge * 0.17;
    painter.drawPolygon(QPolygonF({end + across * head, end - across * head, end + along * head * 1.7}));
}

/// Radiation: a focal spot and the beam that leaves it.
void paintExposure(QPainter& painter, const QRectF& place, const QColor& ink) {
    const QRectF box = middle(place, std::min(place.width(), place.height()));
    const double unit = box.width() / 20;
    const QPointF focus(box.center().x(), box.top() + 4 * unit);
    painter.setPen(QPen(ink, 1.8 * unit, Qt::SolidLine, Qt::RoundCap));
    for (const double spread : {-7.5, -2.6, 2.6, 7.5}) {
        const QPointF to(box.center().x() + spread * unit, box.bottom() - 1.6 * unit);
        painter.drawLine(focus + (to - focus) * 0.36, to);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawEllipse(focus, 2.9 * unit, 2.9 * unit);
}

/// An exclamation mark in a shape that is told without its colour as well.
void paintMark(QPainter& painter, const QRectF& place, const QPolygonF& shape, double middle, double high) {
    const double edge = place.width();
    QPainterPath path;
    path.addPolygon(shape);
    path.closeSubpath();
    QPainterPath mark;
    const double x = place.center().x();
    const double wide = edge * 0.15;
    mark.addRoundedRect(QRectF(x - wide / 2, middle - high / 2, wide, high * 0.62), wide / 3, wide / 3);
    mark.addEllipse(QPointF(x, middle + high / 2 - wide * 0.55), wide * 0.55, wide * 0.55);
    painter.drawPath(path.subtracted(mark));
}

void paintAlarm(QPainter& painter, const QRectF& place, const QColor& ink) {
    const QRectF box = middle(place, std::min(place.width(), place.height()));
    const double cut = box.width() * 0.29;
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    const QPolygonF octagon({{box.left() + cut, box.top()},
                             {box.right() - cut, box.top()},
                             {box.right(), box.top() + cut},
                             {box.right(), box.bottom() - cut},
                             {box.right() - cut, box.bottom()},
                             {box.left() + cut, box.bottom()},
                             {box.left(), box.bottom() - cut},
                             {box.left(), box.top() + cut}});
    paintMark(painter, box, octagon, box.center().y(), box.height() * 0.66);
}

void paintWarning(QPainter& painter, const QRectF& place, const QColor& ink) {
    const QRectF box = middle(place, std::min(place.width(), place.height()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    const QPolygonF triangle({{box.center().x(), box.top()},
                              {box.right(), box.bottom() - box.height() * 0.06},
                              {box.left(), box.bottom() - box.height() * 0.06}});
    paintMark(painter, box, triangle, box.top() + box.height() * 0.6, box.height() * 0.5);
}

void paintGood(QPainter& painter, const QRectF& place) {
    const QRectF box = middle(place, std::min(place.width(), place.height()));
    const double unit = box.width() / 20;
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgb(kGoodMark));
    painter.drawEllipse(box);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor::fromRgb(kField), 2.6 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(
        QPolygonF({box.topLeft() + QPointF(5.2, 10.4) * unit, box.topLeft() + QPointF(8.8, 14) * unit,
                   box.topLeft() + QPointF(14.8, 6.6) * unit}));
}

/// The trefoil: three blades round a centre, one of them down.
void paintRadiation(QPainter& painter, const QRectF& place) {
    const QRectF box = middle(place, std::min(place.width(), place.height()));
    const double radius = box.width() / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgb(kInk));
    painter.drawEllipse(box);
    painter.setBrush(QColor::fromRgb(kRadiation));
    painter.drawEllipse(box.center(), radius * 0.91, radius * 0.91);
    painter.setBrush(QColor::fromRgb(kInk));
    const QRectF outer = middle(box, radius * 1.54);
    for (const int start : {0, 120, 240}) {
        painter.drawPie(outer, start * 16, 60 * 16);
    }
    painter.setBrush(QColor::fromRgb(kRadiation));
    painter.drawEllipse(box.center(), radius * 0.25, radius * 0.25);
    painter.setBrush(QColor::fromRgb(kInk));
    painter.drawEllipse(box.center(), radius * 0.16, radius * 0.16);
}

void paintLock(QPainter& painter, const QRectF& place, const QColor& ink) {
    const QRectF box = middle(place, std::min(place.width(), place.height()));
    const double unit = box.width() / 20;
    painter.setPen(QPen(ink, 2.2 * unit, Qt::SolidLine, Qt::FlatCap));
    painter.setBrush(Qt::NoBrush);
    QPainterPath shackle(box.topLeft() + QPointF(5.6, 10) * unit);
    shackle.lineTo(box.topLeft() + QPointF(5.6, 6.4) * unit);
    shackle.arcTo(QRectF(box.topLeft() + QPointF(5.6, 2) * unit, QSizeF(8.8, 8.8) * unit), 180, -180);
    shackle.lineTo(box.topLeft() + QPointF(14.4, 10) * unit);
    painter.drawPath(shackle);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawRoundedRect(QRectF(box.topLeft() + QPointF(3, 9) * unit, QSizeF(14, 9.6) * unit), unit, unit);
}

/// A quiet view of the room: wall stand, tube, beam, table, and the generator's cabinet.
void paintRest(QPainter& painter, const QRectF& place, bool radiates) {
    painter.save();
    const QColor wall = QColor::fromRgb(kQuietFace);
    paintPlate(painter, place, wall, Qt::transparent, 0, 8);
    QRectF whole(QPointF(), kScene.scaled(place.size(), Qt::KeepAspectRatio));
    whole.moveCenter(place.center());
    painter.translate(whole.topLeft());
    const double scale = whole.width() / kScene.width();
    painter.scale(scale, scale);

    const QColor metal(0x3D5870);
    const QColor light(0x9FB2C2);
    const QColor pale(0xC3D0DA);
    const auto box = [&painter](const QColor& fill, double x, double y, double width, double height,
                                double radius = 0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(fill);
        painter.drawRoundedRect(QRectF(x, y, width, height), radius, radius);
    };
    // the floor, from edge to edge of the place
    box(pale, (place.left() - whole.left()) / scale, 248, place.width() / scale, 4);

    // wall stand with its detector
    box(light, 74, 44, 14, 204);
    box(metal, 88, 84, 16, 96, 4);

    // ceiling rail and the column that carries the tube
    box(light, 150, 22, 300, 8);
    box(light, 286, 30, 18, 48);
    if (radiates) {
        QPainterPath beam(QPointF(295, 118));
        beam.lineTo(359, 196);
        beam.lineTo(231, 196);
        beam.closeSubpath();
        painter.setBrush(QColor::fromRgb(kRadiation));
        painter.drawPath(beam);
    }
    box(metal, 242, 70, 106, 36, 16);
    box(metal, 276, 102, 38, 17, 2);
    painter.setBrush(pale);
    painter.drawEllipse(QPointF(295, 88), 8, 8);

    // table with its detector
    box(metal, 178, 196, 234, 12, 4);
    box(light, 236, 208, 118, 9);
    box(light, 272, 217, 46, 31);

    // the generator's cabinet
    box(metal, 488, 104, 92, 144, 5);
    box(wall, 500, 117, 68, 38, 3);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(metal, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const std::array wave{QPointF(506, 140), QPointF(518, 140), QPointF(526, 125),
                          QPointF(538, 148), QPointF(546, 135), QPointF(562, 135)};
    painter.drawPolyline(wave.data(), static_cast<int>(wave.size()));
    painter.setPen(QPen(light, 3, Qt::SolidLine, Qt::RoundCap));
    for (int slot = 0; slot < 4; ++slot) {
        painter.drawLine(QPointF(504, 180 + slot * 15), QPointF(564, 180 + slot * 15));
    }
    painter.restore();
}

} // namespace

void paintArt(QPainter& painter, std::string_view name, const QRectF& place, const QColor& ink) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (name == "up" || name == "down") {
        paintArrow(painter, place, ink, name == "up");
    } else if (name == "back") {
        paintBack(painter, place, ink);
    } else if (name == "erase") {
        paintErase(painter, place, ink);
    } else if (name == "preparation") {
        paintPreparation(painter, place, ink);
    } else if (name == "exposure") {
        paintExposure(painter, place, ink);
    } else if (name == "rest" || name == "rest-radiation") {
        paintRest(painter, place, name != "rest");
    } else if (name == "alarm") {
        paintAlarm(painter, place, ink);
    } else if (name == "warning") {
        paintWarning(painter, place, ink);
    } else if (name == "good") {
        paintGood(painter, place);
    } else if (name == "radiation") {
        paintRadiation(painter, place);
    } else if (name == "lock") {
        paintLock(painter, place, ink);
    } else if (name == "frame") {
        paintPlate(painter, place, Qt::transparent, QColor::fromRgb(kStrongEdge), 2, 6);
    }
    painter.restore();
}

int artPixels(int size) {
    static constexpr std::array kPixels{0, 28, 36, 48};
    return size > 0 && size < static_cast<int>(kPixels.size()) ? kPixels[static_cast<std::size_t>(size)] : 0;
}

} // namespace quillon
