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

// The four views under the graph with their buttons, and the actions of the menu "View".
class ViewSwitch : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kViews = 4;

    // table, aux1 and aux2 are the contents of frameView_1 to frameView_3, markers that of frameView_0; the switch
    // takes them over. markerIndex of the settings holds the view shown.
    ViewSwitch(WindowSettings &settings, MarkerPanel &markers, QWidget *table, QWidget *aux1, QWidget *aux2,
               ErrorBoundary &boundary, QWidget *parent = nullptr);

    // For the menu.
    QList<QAction *> actions() const { return {m_actions.begin(), m_actions.end()}; }

    // Shows a view, greys its button, and refreshes the read-outs of the markers. A view that does not exist (a
    // damaged settings file, or one of another hardware interface) gives way to view 0.
    void selectView(int index);

    // Whether the two views of the parallel-port interface exist; they do at first.
    void setOutputViews(bool available);

    // Puts a widget to the right of the buttons.
    void addBesideButtons(QWidget *widget) { m_buttonRow->addWidget(widget); }

    // Puts a widget into the room that the buttons and what stands beside them leave.
    void setBetween(QWidget *widget);

    // The height that the user gave the views, in logical pixels; 0 is what they need. Never more than half of the
    // parent. While they are higher than they need, and wide enough, the markers stand beside the table.
    void setGivenHeight(int height);
    int givenHeight() const { return m_givenHeight; }

    // Start-up and shutdown: the key "Height" of the section [View]. A file without it gets it only with a height that
    // was given. False when it cannot be written.
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
