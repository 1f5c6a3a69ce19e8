// SPDX-License-Identifier: MIT
#include "remote/remote_target.h"

#include <limits>

namespace calvorn {

RemoteTarget::RemoteTarget(const Configuration &configuration, Instrument &instrument, TraceSet &traces,
                           const Markers &markers, SignalGenerator &generator, QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
    , m_instrument(instrument)
    , m_traces(traces)
    , m_markers(markers)
    , m_generator(generator)
    , m_sweepTime(std::numeric_limits<double>::quiet_NaN())
{
    connect(&instrument, &Instrument::sweepStarts, this, [this] {
        m_sweepCount = 0;
        m_sweepTime = std::numeric_limits<double>::quiet_NaN();
        m_sinceSweep.invalidate();
    });
    connect(&instrument.conversion(), &SampleConversion::vectorStored, this, [this] {
        ++m_sweepCount;
        if (m_sinceSweep.isValid())
            m_sweepTime = 1e-9 * static_cast<double>(m_sinceSweep.nsecsElapsed());
        m_sinceSweep.start();
        // Queued, so that all other receivers of vectorStored() handle the sweep first.
        QMetaObject::invokeMethod(this, &RemoteTarget::sweepDone, Qt::QueuedConnection);
    });
    connect(&instrument, &Instrument::becameIdle, this, &RemoteTarget::sweepDone, Qt::QueuedConnection);
}

bool RemoteTarget::isSweepDone() const
{
    return !isMeasuring() || m_instrument.run() == SweepRun::UntilStopped;
}

bool RemoteTarget::isMeasuring() const
{
    return m_instrument.isSweeping() && !m_instrument.isEnding();
}

void RemoteTarget::editTraces(const std::function<void(TraceSet &)> &edit)
{
    edit(m_traces);
    tracesEdited();
}

} // namespace calvorn
