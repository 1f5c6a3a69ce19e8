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

// The four views under the graph with their buttons, and the actions of the "View" menu.
class ViewSwitch : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kViews = 4;

    // table, aux1 and aux2 become the contents of frameView_1 to frameView_3, markers that of frameView_0; the switch
    // takes ownership. settings.markerIndex holds the current view.
    ViewSwitch(WindowSettings &settings, MarkerPanel &markers, QWidget *table, QWidget *aux1, QWidget *aux2,
               ErrorBoundary &boundary, QWidget *parent = nullptr);

    // For the menu.
    QList<QAction *> actions() const { return {m_actions.begin(), m_actions.end()}; }

    // Shows a view, disables its button, and refreshes the marker read-outs. A view that does not exist (a damaged
    // settings file, or one of another hardware interface) is replaced by view 0.
    void selectView(int index);

    // Sets whether the two views of the parallel-port interface exist; initially they do.
    void setOutputViews(bool available);

    // Adds a widget to the right of the buttons.
    void addBesideButtons(QWidget *widget) { m_buttonRow->addWidget(widget); }

    // Puts a widget into the space between the buttons and the widgets beside them.
    void setBetween(QWidget *widget);

    // Sets the height that the user chose for the views, in logical pixels, at most half of the parent; 0 is the height
    // that they need. While the views are higher than needed and wide enough, the markers are shown beside the table.
    void setGivenHeight(int height);
    int givenHeight() const { return m_givenHeight; }

    // Load and store the key "Height" in section [View] at start-up and shutdown. The key is written only if the height
    // differs from the file's. saveHeight() returns false if it cannot be written.
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
