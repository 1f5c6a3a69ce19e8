// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>
#include <QHBoxLayout>
#include <QMainWindow>

namespace calvorn {

// Where the column of the controls stands. Its place is the right end of the window's contents. While a panel is docked
// at the right of a window that is high enough, the column stands above it: the panel takes the empty space below the
// buttons, and the graph keeps its width. It dies before the window: the panel tells of its hiding to the end.
class ControlPlace : public QObject
{
    Q_OBJECT

public:
    // contents: the layout at whose end the column is.
    ControlPlace(QMainWindow &window, QHBoxLayout &contents, QWidget &column, QDockWidget &panel);

    bool isAbovePanel() const { return m_isAbovePanel; }

    // What the panel below leaves to the column, in logical pixels; 0 in its usual place.
    int leastWidth() const;

signals:
    // The column has another place.
    void moved();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool hasRoomAbove() const;
    void makeFrame();
    void place();
    void placeSoon();

    QMainWindow &m_window;
    QHBoxLayout &m_contents;
    QWidget &m_column;
    QDockWidget &m_panel;
    QDockWidget *m_frame = nullptr; // of the column above the panel
    bool m_isAbovePanel = false;
    bool m_isPending = false;
};

} // namespace calvorn
