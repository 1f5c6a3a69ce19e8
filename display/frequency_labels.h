// SPDX-License-Identifier: MIT
#pragma once

#include "display/plot/frequency_ticks.h"
#include "display/sweep_graph.h"

#include <QWidget>

#include <vector>

namespace calvorn {

// Shows the frequencies of the major grid lines in the strip below the plot, between start, centre and stop, where
// there is room.
class FrequencyLabels : public QWidget
{
    Q_OBJECT

public:
    // readouts: the widget that shares the strip; its labels are not painted over.
    FrequencyLabels(SweepGraph &graph, const SweepTable &table, QWidget &readouts, QWidget *parent = nullptr);

    // The frequencies that are painted.
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
