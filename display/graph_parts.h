// SPDX-License-Identifier: MIT
#pragma once

#include "display/plot/graph_line.h"

#include <QObject>
#include <QRect>

namespace calvorn {

class SweepGraph;

// A line or a caption of the graph, which paints them itself: an object that is found by its name ("lineM1", "lblM1",
// "LineCV") and an accessible child of the graph, for scripts and assistive programs.
class GraphPart : public QObject
{
    Q_OBJECT

public:
    enum class Kind { Line, Caption };

    GraphPart(SweepGraph &graph, GraphItem item, Kind kind, const QString &name);

    const SweepGraph &graph() const { return m_graph; }
    GraphItem item() const { return m_item; }
    Kind kind() const { return m_kind; }
    bool isShown() const;
    QRect place() const; // on the screen; empty when it is not shown

private:
    SweepGraph &m_graph;
    GraphItem m_item;
    Kind m_kind;
};

// Makes the parts of a graph, which owns them. Once.
void addParts(SweepGraph &graph);

} // namespace calvorn
