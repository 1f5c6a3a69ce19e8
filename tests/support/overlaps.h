// SPDX-License-Identifier: MIT
#pragma once

#include <QLayout>
#include <QStringList>
#include <QWidget>

namespace calvorn::test {

// Collects the visible widgets of a layout and of the layouts inside it.
inline void collectPlaced(const QLayout &layout, QList<const QWidget *> &placed)
{
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem *item = layout.itemAt(i);
        if (item->layout())
            collectPlaced(*item->layout(), placed);
        else if (item->widget() && item->widget()->isVisible())
            placed.append(item->widget());
    }
}

// Returns the visible widgets that lie on another one of the same layout, a pair of names per line; empty if none does.
inline QString overlaps(const QWidget &window)
{
    QStringList pairs;
    QList<const QWidget *> parents{&window};
    for (const QWidget *child : window.findChildren<QWidget *>())
        if (child->isVisible() && child->window() == window.window())
            parents.append(child);
    for (const QWidget *parent : parents) {
        QList<const QWidget *> placed;
        if (parent->layout())
            collectPlaced(*parent->layout(), placed);
        for (qsizetype i = 0; i < placed.size(); ++i)
            for (qsizetype k = i + 1; k < placed.size(); ++k)
                if (placed[i]->geometry().intersects(placed[k]->geometry()))
                    pairs.append(placed[i]->objectName() + QStringLiteral(" / ") + placed[k]->objectName());
    }
    return pairs.join(u'\n');
}

} // namespace calvorn::test
