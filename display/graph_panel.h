// SPDX-License-Identifier: MIT
#pragma once

#include "display/amplitude_axis.h"
#include "display/sweep_graph.h"

#include <QGridLayout>

namespace calvorn {

// The graph with its axis, aligned to the pixel at every size, and what stands under the plot.
class GraphPanel : public QWidget
{
    Q_OBJECT

public:
    GraphPanel(Configuration &configuration, const SweepTable &table, Markers &markers, Desktop &desktop,
               ErrorBoundary &boundary, QWidget *parent = nullptr);

    SweepGraph &graph() { return *m_graph; }
    AmplitudeAxis &axis() { return *m_axis; }

    // Grid, axis labels and full-scale boxes for the scale and range of the record. The curve is not read again.
    void drawScreen();

    // Lays the widget under the plot, exactly as wide; the panel takes it over. Once. The frequencies of the grid stand
    // beside its labels.
    void setFooter(QWidget *footer);

    // Adds logical pixels to the space above the graph; a lower window takes them back.
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
