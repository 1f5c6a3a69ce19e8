// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>
#include <QHBoxLayout>
#include <QMainWindow>

namespace calvorn {

// Chooses the place of the control column. The default is the right end of the window's contents. While a panel is
// docked at the right of a window that is high enough, the column is placed above the panel: the panel uses the empty
// space below the buttons, and the graph keeps its width. Must be destroyed before the window, because the panel emits
// signals until it is destroyed.
class ControlPlace : public QObject
{
    Q_OBJECT

public:
    // contents: the layout with the column at its end.
    ControlPlace(QMainWindow &window, QHBoxLayout &contents, QWidget &column, QDockWidget &panel);

    bool isAbovePanel() const { return m_isAbovePanel; }

    // The minimum width that the panel below gives the column, in logical pixels; 0 in the default place.
    int leastWidth() const;

signals:
    // The column has changed its place.
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
    QDockWidget *m_frame = nullptr; // holds the column above the panel
    bool m_isAbovePanel = false;
    bool m_isPending = false;
};

} // namespace calvorn
