// SPDX-License-Identifier: MIT
#pragma once

#include "display/amplitude_axis.h"
#include "display/sweep_graph.h"

#include <QGridLayout>

namespace calvorn {

// The graph with its amplitude axis, pixel-aligned at every size, and the strip below the plot.
class GraphPanel : public QWidget
{
    Q_OBJECT

public:
    GraphPanel(Configuration &configuration, const SweepTable &table, Markers &markers, Desktop &desktop,
               ErrorBoundary &boundary, QWidget *parent = nullptr);

    SweepGraph &graph() { return *m_graph; }
    AmplitudeAxis &axis() { return *m_axis; }

    // Redraws the grid, the axis labels and the full-scale boxes for the configured scale and range, without reading
    // the curve again.
    void drawScreen();

    // Places a widget below the plot, exactly as wide as the plot, and takes ownership of it. The grid frequencies
    // appear between the widget's labels. Call once.
    void setFooter(QWidget *footer);

    // Adds space above the graph, in logical pixels. The space shrinks again if the window becomes lower.
    void widenTop(int by);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    AmplitudeAxis *m_axis;
    SweepGraph *m_graph;
    const SweepTable &m_table;
    QGridLayout *m_grid;
};

} // namespace calvorn
