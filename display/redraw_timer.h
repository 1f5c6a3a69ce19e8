// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class QWidget;

namespace calvorn {

// "timerGrafico": the one throttle of redraws. A burst of vectors leads to one redraw at its start and one at its end.
class RedrawTimer : public QObject
{
    Q_OBJECT

public:
    static constexpr int kPeriodMs = 15; // no screen shows more than one picture in that time

    // painted: the widget that is drawn; the timer is its child.
    explicit RedrawTimer(QWidget &painted);

    // Asks for one fired(), as soon as the calling procedure is done and at most once in kPeriodMs.
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
