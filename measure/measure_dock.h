// SPDX-License-Identifier: MIT
#pragma once

#include "display/graph_panel.h"
#include "measure/limits_page.h"
#include "measure/results_page.h"
#include "measure/traces_page.h"

#include <QAction>
#include <QDockWidget>
#include <QTabWidget>
#include <QToolButton>

#include <functional>

namespace calvorn {

// The "dockMeasure" panel, initially closed, docked at an edge of the window or floating. It has pages for traces,
// results and limits, below a button that makes the last sweep the reference. Under Wayland, it cannot be dragged: its
// float button undocks it, and "cmdDock" docks it again.
class MeasureDock : public QDockWidget
{
    Q_OBJECT

public:
    MeasureDock(const Configuration &configuration, const SweepTable &table, GraphPanel &graph, MarkerPanel &markers,
                Desktop &desktop, ErrorBoundary &boundary, QWidget *parent = nullptr);

    // The "mnuMeasure" action, which opens and closes the panel.
    QAction *action() const { return m_action; }

    Measurement &measurement() { return m_measurement; }

    void setVisible(bool visible) override;

    // Adds a page after the panel's own pages. make is called when these are built.
    void setFurtherPage(const QString &title, std::function<QWidget *()> make);

    // Load and save the choices in the settings file at start-up and shutdown. save() returns false if that fails.
    void restore();
    bool save() const;

    // Call this after restore() and after the main window is shown. Under Wayland, a floating panel that is shown
    // before its parent lies below it, so restore() leaves the panel hidden.
    void showRestored();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    // Builds the pages when they are first needed: when the panel is shown, or if it has to work while closed.
    void build();
    QWidget *makeHead();
    void cmdNormalise_Click(bool on);
    void showReference();

    void restorePages();

    const Configuration &m_configuration;
    Measurement m_measurement;
    GraphPanel &m_graph;
    MarkerPanel &m_markers;
    Desktop &m_desktop;
    ErrorBoundary &m_boundary;
    MeasureChoices m_choices; // as loaded; the pages contain the current choices
    QAction *m_action;
    QPushButton *m_normalise = nullptr;
    QToolButton *m_dock = nullptr;
    QLabel *m_reference = nullptr;
    QTabWidget *m_pages = nullptr;
    TracesPage *m_traces = nullptr;
    ResultsPage *m_results = nullptr;
    LimitsPage *m_limits = nullptr;
    QString m_furtherTitle;
    std::function<QWidget *()> m_makeFurther;
};

} // namespace calvorn
