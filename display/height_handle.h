// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace calvorn {

// A bar between a widget and the one below it in the same layout, in the space that the layout leaves there. Dragging
// it asks for another height of the lower one; a double click asks for the usual height. It is seen under the mouse
// only.
class HeightHandle : public QWidget
{
    Q_OBJECT

public:
    // Both must be in the layout of the same parent, which becomes that of the handle.
    HeightHandle(QWidget &upper, QWidget &lower);

signals:
    // Logical pixels, within what the upper widget can give away; 0 is the usual height.
    void heightWanted(int height);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void follow();

    QWidget &m_upper;
    QWidget &m_lower;
    int m_grip = 0; // from the mouse to the upper edge of the lower widget
};

} // namespace calvorn
