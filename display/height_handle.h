// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace calvorn {

// A bar between two widgets, one above the other, in the spacing of their layout. Dragging the bar requests a new
// height for the lower widget; a double click requests the default height. The bar is visible only under the mouse.
class HeightHandle : public QWidget
{
    Q_OBJECT

public:
    // Both widgets must be in the same parent's layout. The parent also becomes the parent of the handle.
    HeightHandle(QWidget &upper, QWidget &lower);

signals:
    // height: logical pixels, limited to what the upper widget can give up; 0 requests the default height.
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
    int m_grip = 0; // distance from the mouse to the upper edge of the lower widget
};

} // namespace calvorn
