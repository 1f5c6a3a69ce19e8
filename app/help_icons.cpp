// SPDX-License-Identifier: MIT
#include "app/help_icons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace calvorn {

namespace {

constexpr double kGrid = 16.0; // size of the square that the shapes are drawn on
constexpr double kLine = 2.0;

QPainterPath shapeOf(HelpIcon icon)
{
    QPainterPath shape;
    switch (icon) {
    case HelpIcon::Back:
        shape.moveTo(8, 3);
        shape.lineTo(3, 8);
        shape.lineTo(8, 13);
        shape.moveTo(3, 8);
        shape.lineTo(13, 8);
        break;
    case HelpIcon::Forward:
        shape.moveTo(8, 3);
        shape.lineTo(13, 8);
        shape.lineTo(8, 13);
        shape.moveTo(13, 8);
        shape.lineTo(3, 8);
        break;
    case HelpIcon::FirstPage: // a house
        shape.moveTo(2, 8);
        shape.lineTo(8, 2);
        shape.lineTo(14, 8);
        shape.moveTo(4, 7);
        shape.lineTo(4, 14);
        shape.lineTo(12, 14);
        shape.lineTo(12, 7);
        shape.moveTo(8, 14);
        shape.lineTo(8, 10);
        break;
    case HelpIcon::Close:
        shape.moveTo(4, 4);
        shape.lineTo(12, 12);
        shape.moveTo(12, 4);
        shape.lineTo(4, 12);
        break;
    }
    return shape;
}

class HelpIconEngine : public QIconEngine
{
public:
    explicit HelpIconEngine(HelpIcon icon)
        : m_icon(icon)
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const QPalette::ColorGroup group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const double scale = std::min(rect.width(), rect.height()) / kGrid;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(QRectF(rect).center() - QPointF(kGrid, kGrid) * scale / 2.0);
        painter->scale(scale, scale);
        painter->setPen(QPen(QGuiApplication::palette().color(group, QPalette::ButtonText), kLine, Qt::SolidLine,
                             Qt::RoundCap, Qt::RoundJoin));
        painter->drawPath(shapeOf(m_icon));
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixels(size);
        pixels.fill(Qt::transparent);
        QPainter painter(&pixels);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixels;
    }

    QIconEngine *clone() const override { return new HelpIconEngine(m_icon); }

private:
    HelpIcon m_icon;
};

} // namespace

QIcon helpIcon(HelpIcon icon)
{
    return QIcon(new HelpIconEngine(icon));
}

} // namespace calvorn
