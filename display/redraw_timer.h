// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class QWidget;

namespace calvorn {

// The "timerGrafico" timer, which throttles all redraws. A burst of vectors causes one redraw at its start, then at
// most one per period.
class RedrawTimer : public QObject
{
    Q_OBJECT

public:
    static constexpr int kPeriodMs = 15; // shorter than one frame of a 60 Hz screen

    // painted: the widget to redraw, which becomes the parent.
    explicit RedrawTimer(QWidget &painted);

    // Schedules fired() for when the caller has returned to the event loop, but at most once per kPeriodMs.
    void arm();

signals:
    void fired();

private:
    void fireSoon();
    void fire();

    QWidget &m_painted;
    QTimer m_timer;
    QElapsedTimer m_last;
    bool m_isWanted = false;
};

} // namespace calvorn
