// SPDX-License-Identifier: MIT
#pragma once

#include "display/plot/frequency_ticks.h"
#include "display/sweep_graph.h"

#include <QWidget>

#include <vector>

namespace calvorn {

// The frequencies of the major lines of the grid, in the strip below the plot that start, centre and stop stand in:
// between these, and only where there is room.
class FrequencyLabels : public QWidget
{
    Q_OBJECT

public:
    // readouts: what stands in the same place; its labels are left free.
    FrequencyLabels(SweepGraph &graph, const SweepTable &table, QWidget &readouts, QWidget *parent = nullptr);

    // What is painted.
    const std::vector<FrequencyTick> &ticks() const { return m_ticks; }

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool event(QEvent *event) override;

private:
    void followAxis();
    void placeTicks();
    double placeOf(double x) const;

    const SweepGraph &m_graph;
    const QWidget &m_readouts;
    PlotAxis m_axis;
    std::vector<FrequencyTick> m_ticks;
};

} // namespace calvorn
