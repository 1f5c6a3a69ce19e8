// SPDX-License-Identifier: MIT
#pragma once

#include "display/amplitude_axis.h"
#include "display/sweep_graph.h"

#include <QGridLayout>

namespace calvorn {

// The graph with its amplitude axis, aligned to the pixel at every size, and the strip below the plot.
class GraphPanel : public QWidget
{
    Q_OBJECT

public:
    GraphPanel(Configuration &configuration, const SweepTable &table, Markers &markers, Desktop &desktop,
               ErrorBoundary &boundary, QWidget *parent = nullptr);

    SweepGraph &graph() { return *m_graph; }
    AmplitudeAxis &axis() { return *m_axis; }

    // Redraws grid, axis labels and full-scale boxes for the configured scale and range. Does not read the curve again.
    void drawScreen();

    // Places a widget below the plot, exactly as wide as the plot, and takes ownership of it. The grid's frequencies
    // appear between the labels of the widget. Call once.
    void setFooter(QWidget *footer);

    // Adds logical pixels to the space above the graph; a lower window gives them up again.
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
