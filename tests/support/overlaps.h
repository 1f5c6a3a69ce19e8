// SPDX-License-Identifier: MIT
#pragma once

#include <QLayout>
#include <QStringList>
#include <QWidget>

namespace calvorn::test {

// Returns the pairs of overlapping visible siblings in a window, one pair of names per line; empty if there are none.
// Checks only parents with a layout, because other parents position their children themselves.
inline QString overlaps(const QWidget &window)
{
    QStringList pairs;
    QList<const QWidget *> parents{&window};
    parents.append(window.findChildren<const QWidget *>());
    for (const QWidget *parent : parents) {
        QList<const QWidget *> placed;
        for (const QWidget *child : parent->findChildren<const QWidget *>(Qt::FindDirectChildrenOnly))
            if (parent->layout() && child->isVisible() && !child->isWindow())
                placed.append(child);
        for (qsizetype i = 0; i < placed.size(); ++i)
            for (qsizetype k = i + 1; k < placed.size(); ++k)
                if (placed[i]->geometry().intersects(placed[k]->geometry()))
                    pairs.append(placed[i]->objectName() + QStringLiteral(" / ") + placed[k]->objectName());
    }
    return pairs.join(u'\n');
}

} // namespace calvorn::test
