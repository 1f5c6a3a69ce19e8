// SPDX-License-Identifier: MIT
#pragma once

#include "display/graph_panel.h"
#include "measure/limits_page.h"
#include "measure/results_page.h"
#include "measure/traces_page.h"

#include <QAction>
#include <QDockWidget>
#include <QTabWidget>

#include <functional>

namespace calvorn {

// The Measure panel, "dockMeasure": closed at first, at the right edge of the window or floating. Its pages are traces,
// results and limits; above them stands the button that makes the last sweep the reference.
class MeasureDock : public QDockWidget
{
    Q_OBJECT

public:
    MeasureDock(const Configuration &configuration, const SweepTable &table, GraphPanel &graph, MarkerPanel &markers,
                Desktop &desktop, ErrorBoundary &boundary, QWidget *parent = nullptr);

    // "mnuMeasure", which opens and closes the panel.
    QAction *action() const { return m_action; }

    Measurement &measurement() { return m_measurement; }

    void setVisible(bool visible) override;

    // A page behind those of its own; it is made when they are.
    void setFurtherPage(const QString &title, std::function<QWidget *()> make);

    // Start-up and shutdown: the choices in the settings file. False when they cannot be written.
    void restore();
    bool save() const;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    // The pages come when they are needed first: the panel is shown, or it has to do something while it is closed.
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
    MeasureChoices m_choices; // until there are pages
    QAction *m_action;
    QPushButton *m_normalise = nullptr;
    QLabel *m_reference = nullptr;
    QTabWidget *m_pages = nullptr;
    TracesPage *m_traces = nullptr;
    ResultsPage *m_results = nullptr;
    LimitsPage *m_limits = nullptr;
    QString m_furtherTitle;
    std::function<QWidget *()> m_makeFurther;
};

} // namespace calvorn
