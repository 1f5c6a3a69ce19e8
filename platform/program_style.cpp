// SPDX-License-Identifier: MIT
#include "platform/program_style.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace calvorn {

namespace {

constexpr int kDark = 128;        // lightness of a window, of 255
constexpr float kFrameAlpha = 0.35F;

bool hasFrame(QStyle::PrimitiveElement element)
{
    switch (element) {
    case QStyle::PE_FrameLineEdit:
    case QStyle::PE_FrameGroupBox:
    case QStyle::PE_PanelButtonCommand:
    case QStyle::PE_IndicatorCheckBox:
    case QStyle::PE_IndicatorRadioButton:
        return true;
    default:
        return false;
    }
}

} // namespace

ProgramStyle::ProgramStyle()
    : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
{
}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                 const QWidget *widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (!hasFrame(element) || option->palette.color(QPalette::Window).lightness() >= kDark)
        return;
    QColor frame = option->palette.color(QPalette::WindowText);
    frame.setAlphaF(kFrameAlpha);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(frame);
    const QRectF edge = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (element == PE_IndicatorRadioButton)
        painter->drawEllipse(edge);
    else
        painter->drawRoundedRect(edge, 2.0, 2.0);
    painter->restore();
}

} // namespace calvorn
