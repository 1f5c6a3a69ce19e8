// SPDX-License-Identifier: MIT
#pragma once

#include "core/settings.h"
#include "display/marker_panel.h"

#include <QAction>
#include <QFrame>
#include <QHBoxLayout>
#include <QList>
#include <QPushButton>
#include <QStackedLayout>

#include <array>

namespace calvorn {

// The four views below the graph with their buttons, and the actions of the "View" menu.
class ViewSwitch : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kViews = 4;

    // markers becomes the content of frameView_0; table, aux1 and aux2 become that of frameView_1 to frameView_3. The
    // switch takes ownership of all four. settings.markerIndex stores the current view.
    ViewSwitch(WindowSettings &settings, MarkerPanel &markers, QWidget *table, QWidget *aux1, QWidget *aux2,
               ErrorBoundary &boundary, QWidget *parent = nullptr);

    // For the menu.
    QList<QAction *> actions() const { return {m_actions.begin(), m_actions.end()}; }

    // Shows a view, disables its button, and updates the marker read-outs. An invalid view, or one for another hardware
    // interface, is replaced with view 0.
    void selectView(int index);

    // Shows or hides the two views for the parallel-port interface; initially, they are shown.
    void setOutputViews(bool available);

    // Adds a widget to the right of the buttons.
    void addBesideButtons(QWidget *widget) { m_buttonRow->addWidget(widget); }

    // Places a widget in the space between the buttons and the widgets beside them.
    void setBetween(QWidget *widget);

    // Sets the height chosen by the user for the views, in logical pixels, at most half of the parent's; 0 selects the
    // height that they need. While the views are higher than needed and wide enough, the markers are shown beside the
    // table.
    void setGivenHeight(int height);
    int givenHeight() const { return m_givenHeight; }

    // Load and store the "Height" key in section [View] at start-up and shutdown. The key is written only if the height
    // differs from the one in the file. saveHeight() returns false if writing fails.
    void restoreHeight(const QString &settingsFile);
    bool saveHeight(const QString &settingsFile) const;

    QSize sizeHint() const override;

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void cmdView_Click(int index) { selectView(index); }
    void mnuView_Click(int index) { selectView(index); }
    void makeButton(int index, const QString &caption, ErrorBoundary &boundary);
    void makeFrame(int index, QWidget *content);
    bool isHigherThanNeeded() const;
    void placeMarkers();

    WindowSettings &m_settings;
    MarkerPanel &m_markers;
    std::array<QPushButton *, kViews> m_buttons{};
    std::array<QFrame *, kViews> m_frames{};
    std::array<QAction *, kViews> m_actions{};
    QHBoxLayout *m_buttonRow = nullptr;
    QStackedLayout *m_stack = nullptr;
    QFrame *m_beside = nullptr; // the markers beside the table
    int m_givenHeight = 0;
    bool m_parallelPortViews = true;
};

} // namespace calvorn
