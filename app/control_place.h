// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>
#include <QHBoxLayout>
#include <QMainWindow>

namespace calvorn {

// Places the control column. By default, the column is at the right end of the window's contents. While a panel is
// docked on the right and the window is high enough, the column is above the panel, so that the panel uses the empty
// space below the buttons and the graph keeps its width. Must be destroyed before the window, because the panel emits
// signals until it is destroyed.
class ControlPlace : public QObject
{
    Q_OBJECT

public:
    // contents: the layout whose last item is the column.
    ControlPlace(QMainWindow &window, QHBoxLayout &contents, QWidget &column, QDockWidget &panel);

    bool isAbovePanel() const { return m_isAbovePanel; }

    // The minimum column width imposed by the panel below it, in logical pixels; 0 in the default place.
    int leastWidth() const;

signals:
    // The column has been moved to another place.
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
    QDockWidget *m_frame = nullptr; // contains the column above the panel
    bool m_isAbovePanel = false;
    bool m_isPending = false;
};

} // namespace calvorn
