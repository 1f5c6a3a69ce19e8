// SPDX-License-Identifier: MIT
#include "display/redraw_timer.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace calvorn {

RedrawTimer::RedrawTimer(QWidget &painted)
    : QObject(&painted)
    , m_painted(painted)
    , m_timer(this)
{
    m_timer.setObjectName(QStringLiteral("timerGrafico"));
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &RedrawTimer::fire);
}

void RedrawTimer::arm()
{
    if (m_isWanted)
        return;
    m_isWanted = true;
    const qint64 sinceLast = m_last.isValid() ? m_last.elapsed() : kPeriodMs;
    if (sinceLast < kPeriodMs)
        m_timer.start(kPeriodMs - static_cast<int>(sinceLast));
    else // queued, so that it precedes the next paint event, which then paints read-outs and curve together
        fireSoon();
}

// Also requests the repaint, so that it follows in the same event-loop iteration.
void RedrawTimer::fireSoon()
{
    QMetaObject::invokeMethod(this, &RedrawTimer::fire, Qt::QueuedConnection);
    QCoreApplication::postEvent(m_painted.window(), new QEvent(QEvent::UpdateRequest), Qt::LowEventPriority);
}

void RedrawTimer::fire()
{
    m_isWanted = false;
    m_last.start();
    emit fired();
}

} // namespace calvorn
