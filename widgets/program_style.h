// SPDX-License-Identifier: MIT
#pragma once

#include <QPalette>
#include <QProxyStyle>

namespace calvorn {

// The colour of a line around something, for a style or widget that draws its own. Translucent, and fainter for a
// disabled widget.
QColor frameColour(const QPalette &palette);

// The style of the program on every desktop: Fusion. On a dark desktop it brightens the frames, which Fusion draws
// darker than the window, so that they would hardly be visible.
class ProgramStyle : public QProxyStyle
{
    Q_OBJECT

public:
    ProgramStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;

private:
    void drawGroup(const QStyleOption *option, QPainter *painter, const QWidget *widget) const;
};

} // namespace calvorn
