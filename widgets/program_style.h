// SPDX-License-Identifier: MIT
#pragma once

#include <QPalette>
#include <QProxyStyle>

namespace calvorn {

// Returns the frame colour for styles and widgets that draw their own frames. On a dark palette, it is translucent, and
// fainter for a disabled widget.
QColor frameColour(const QPalette &palette);

// The program's style on every desktop, based on Fusion. On dark desktops, it brightens the frames, because Fusion
// draws them darker than the window and almost invisible. Under Wayland, every tool tip appears after the usual delay.
class ProgramStyle : public QProxyStyle
{
    Q_OBJECT

public:
    ProgramStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr, const QWidget *widget = nullptr,
                  QStyleHintReturn *data = nullptr) const override;

private:
    void drawGroup(const QStyleOption *option, QPainter *painter, const QWidget *widget) const;
};

} // namespace calvorn
