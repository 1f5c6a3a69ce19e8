// SPDX-License-Identifier: MIT
#include "app/axis_menus.h"

namespace calvorn {

AxisMenus::AxisMenus(const AxisMenuComponents &components, ErrorBoundary &boundary, QWidget *window)
    : QObject(window)
{
    auto *amplitudes = new QMenu(window);
    amplitudes->setObjectName(QStringLiteral("menuAmplitudes"));
    amplitudes->addActions(components.scales.actions());
    open(amplitudes, components.graph.axis());

    QAction *start = makeAction("mnuCopyM1", tr("M1 -> &Start"), tr("Set the start frequency to M1"));
    QAction *stop = makeAction("mnuCopyM2", tr("M2 -> S&top"), tr("Set the stop frequency to M2"));
    MarkerPanel &markers = components.markers;
    boundary.connect(start, &QAction::triggered, this, "mnuCopyM1", [&markers] { markers.cmdCopyM1_Click(); });
    boundary.connect(stop, &QAction::triggered, this, "mnuCopyM2", [&markers] { markers.cmdCopyM2_Click(); });
    auto *frequencies = new QMenu(window);
    frequencies->setObjectName(QStringLiteral("menuFrequencies"));
    frequencies->addActions(components.spans.actions());
    frequencies->addSeparator();
    frequencies->addActions({start, stop});
    open(frequencies, components.frequencies);
}

QAction *AxisMenus::makeAction(const char *name, const QString &caption, const QString &toolTip)
{
    auto *action = new QAction(caption, this);
    action->setObjectName(QString::fromLatin1(name));
    action->setToolTip(toolTip);
    return action;
}

void AxisMenus::open(QMenu *menu, QWidget &axis)
{
    menu->setToolTipsVisible(true);
    axis.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&axis, &QWidget::customContextMenuRequested, menu,
            [menu, &axis](const QPoint &place) { menu->popup(axis.mapToGlobal(place)); });
}

} // namespace calvorn
