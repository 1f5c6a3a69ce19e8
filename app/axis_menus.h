// SPDX-License-Identifier: MIT
#pragma once

#include "controls/span_commands.h"
#include "display/graph_panel.h"
#include "display/marker_panel.h"
#include "display/scale_control.h"

#include <QMenu>
#include <QObject>

namespace calvorn {

// The components that the axis menus act on.
struct AxisMenuComponents
{
    GraphPanel &graph;
    QWidget &frequencies; // the strip below the plot
    const ScaleControl &scales;
    const SpanCommands &spans;
    MarkerPanel &markers;
};

// The context menus of the two axes: scales on the amplitude axis, spans on the frequency axis.
class AxisMenus : public QObject
{
    Q_OBJECT

public:
    AxisMenus(const AxisMenuComponents &components, ErrorBoundary &boundary, QWidget *window);

private:
    static void open(QMenu *menu, QWidget &axis);
    QAction *makeAction(const char *name, const QString &caption, const QString &toolTip);
};

} // namespace calvorn
