// SPDX-License-Identifier: MIT
#include "widgets/program_style.h"

#include "widgets/window_system.h"

#include <QGroupBox>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

#include <algorithm>

namespace calvorn {

namespace {

constexpr int kDark = 128; // window lightness below which a palette is dark, of 255
constexpr float kFrameAlpha = 0.35F;
constexpr double kRadius = 2.0;    // logical pixels; corner radius of Fusion's frames
constexpr int kGroupTopMargin = 3; // logical pixels between group title and frame, as in Fusion

enum class Shape { None, Square, Rounded, Round };

// Returns the shape in which Fusion draws the frame.
Shape shapeOf(QStyle::PrimitiveElement element)
{
    switch (element) {
    case QStyle::PE_FrameLineEdit:
    case QStyle::PE_PanelButtonCommand:
        return Shape::Rounded;
    case QStyle::PE_Frame:
    case QStyle::PE_IndicatorCheckBox:
        return Shape::Square;
    case QStyle::PE_IndicatorRadioButton:
        return Shape::Round;
    default:
        return Shape::None;
    }
}

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() < kDark;
}

// Whether Fusion draws the frame in the selection colour, which is easy to see.
bool showsFocus(QStyle::PrimitiveElement element, QStyle::State state)
{
    if (!(state & QStyle::State_HasFocus))
        return false;
    return element == QStyle::PE_FrameLineEdit || (state & QStyle::State_KeyboardFocusChange);
}

void drawFrame(Shape shape, const QRect &place, const QPalette &palette, QPainter *painter)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(frameColour(palette));
    const QRectF edge = QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5);
    if (shape == Shape::Round)
        painter->drawEllipse(edge);
    else if (shape == Shape::Rounded)
        painter->drawRoundedRect(edge, kRadius, kRadius);
    else
        painter->drawRect(edge);
    painter->restore();
}

} // namespace

QColor frameColour(const QPalette &palette)
{
    if (!isDark(palette))
        return palette.color(QPalette::Mid);
    QColor frame = palette.color(QPalette::WindowText);
    frame.setAlphaF(kFrameAlpha);
    return frame;
}

ProgramStyle::ProgramStyle()
    : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
{
}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                 const QWidget *widget) const
{
    const bool dark = isDark(option->palette);
    if (dark && element == PE_FrameGroupBox) {
        drawGroup(option, painter, widget);
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const Shape shape = dark && !showsFocus(element, option->state) ? shapeOf(element) : Shape::None;
    if (shape != Shape::None)
        drawFrame(shape, option->rect, option->palette, painter);
}

// While a tool tip is visible, Qt shows the next one immediately in the same window. Under Wayland, this window would
// stay at its old position, beside a different control.
int ProgramStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                            QStyleHintReturn *data) const
{
    if (hint == SH_ToolTip_FallAsleepDelay && isWayland())
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
}

// Draws the frame below the title, like Fusion. Fusion's frame image is not drawn, because it would be visible beside
// this frame.
void ProgramStyle::drawGroup(const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    const auto *group = qobject_cast<const QGroupBox *>(widget);
    int top = kGroupTopMargin;
    if (!group || group->isCheckable() || !group->title().isEmpty())
        top += std::max(pixelMetric(PM_ExclusiveIndicatorHeight, option, widget), option->fontMetrics.height());
    drawFrame(Shape::Rounded, option->rect.adjusted(0, top, 0, 0), option->palette, painter);
}

} // namespace calvorn
