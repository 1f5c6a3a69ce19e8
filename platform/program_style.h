// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

namespace calvorn {

// The style of the program on every desktop: Fusion, whose frames of boxes, groups and buttons are drawn over once more
// where the desktop is dark, since they are darker than the window and nobody would see them.
class ProgramStyle : public QProxyStyle
{
    Q_OBJECT

public:
    ProgramStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
};

} // namespace calvorn
