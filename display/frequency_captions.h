// SPDX-License-Identifier: MIT
#pragma once

#include "display/sweep_graph.h"

#include <QWidget>

namespace calvorn {

// The strip above the graph with the captions of M1 and M2, exactly as wide as the graph. Inside the plot, the captions
// would cover the passband between the markers.
class FrequencyCaptions : public QWidget
{
    Q_OBJECT

public:
    explicit FrequencyCaptions(const SweepGraph &graph, QWidget *parent = nullptr);

    QSize sizeHint() const override { return {0, m_graph.heightOfCaptions()}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const SweepGraph &m_graph;
};

} // namespace calvorn
