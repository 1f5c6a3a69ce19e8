// SPDX-License-Identifier: MIT
#pragma once

#include <QEvent>
#include <QObject>

namespace calvorn::test {

// Counts a widget's repaints while installed as its event filter.
class PaintCount : public QObject
{
public:
    int count = 0;

    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

} // namespace calvorn::test
