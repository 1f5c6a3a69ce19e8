// SPDX-License-Identifier: MIT
#pragma once

#include "display/plot/graph_line.h"

#include <QObject>
#include <QRect>

namespace calvorn {

class SweepGraph;

// A line or caption painted by the graph itself, exposed to scripts and assistive programs as a named object ("lineM1",
// "lblM1", "LineCV") and as an accessible child of the graph.
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
    QRect place() const; // in screen coordinates; empty while hidden

private:
    SweepGraph &m_graph;
    GraphItem m_item;
    Kind m_kind;
};

// Creates a graph's parts as its children. Call once per graph.
void addParts(SweepGraph &graph);

} // namespace calvorn
