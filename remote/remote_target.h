// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/limit_check.h"
#include "analysis/trace_set.h"
#include "core/configuration.h"
#include "data/limit_lines.h"
#include "display/plot/markers.h"
#include "instrument/instrument.h"
#include "instrument/signal_generator.h"
#include "remote/scpi_error.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QString>

namespace calvorn {

// What is controlled from afar: the window, or calvorn-sweep without one. Each command does what the control of the
// window does, and shows no box: what would be told in one goes to errorTold(), from wherever it comes.
//
// A command that cannot be carried out throws a ScpiError.
class RemoteTarget : public QObject
{
    Q_OBJECT

public:
    // All of them must outlive it.
    RemoteTarget(const Configuration &configuration, Instrument &instrument, TraceSet &traces, const Markers &markers,
                 SignalGenerator &generator, QObject *parent = nullptr);

    const Configuration &configuration() const { return m_configuration; }
    Instrument &instrument() { return m_instrument; }
    const Instrument &instrument() const { return m_instrument; }
    SignalGenerator &generator() { return m_generator; }
    const Markers &markers() const { return m_markers; }
    const TraceSet &traces() const { return m_traces; }

    // Why nothing can be changed at the moment, in words: a box or a dialog is open. Empty: it can.
    virtual QString busyReason() const { return {}; }

    // --- range and sweep ---

    // Hz; what lies beyond the limits of the generator is moved there. A range that is too small is corrected and told.
    virtual void setRange(double start, double stop) = 0;
    virtual void setSpeed(std::int16_t speed) = 0; // the number of a SweepSpeed
    // Starts a sweep. It must be idle.
    virtual void start(SweepRun run) = 0;
    virtual void stop() = 0;

    // Nothing is to be waited for: the one sweep is stored, or none runs, or they go on until they are stopped.
    bool isSweepDone() const;
    // A sweep runs whose samples are wanted.
    bool isMeasuring() const;
    // Since the last start.
    int sweepCount() const { return m_sweepCount; }
    // Seconds from the last sweep but one to the last; not a number before the second one since the start.
    double sweepTime() const { return m_sweepTime; }

    // --- what is shown ---

    virtual void setScale(std::int16_t scale) = 0;                // core/scale_type.h
    virtual void setTopOfLinearScale(double volts) = 0;           // above 0
    virtual void setBottomOfDbScales(int decibels) = 0;           // 0 or below
    virtual void placeMarker(GraphItem marker, double hertz) = 0; // M1 or M2

    // --- traces ---

    // For a change; whoever shows them follows.
    void editTraces(const std::function<void(TraceSet &)> &edit);

    // --- limits ---

    virtual const LimitLines &limits() const = 0;
    virtual bool areLimitsOn() const = 0;
    virtual void setLimits(const LimitLines &limits) = 0;
    virtual void setLimitsOn(bool on) = 0;

    // --- outputs ---

    virtual void setOutput(int number, std::uint8_t value) = 0; // 1 or 2
    virtual void setPotentiometer(std::uint8_t position) = 0;

    // --- files ---

    virtual void storeSweep(const QString &path) = 0;
    virtual void loadSweep(const QString &path) = 0;
    virtual void storePicture(const QString &path) = 0; // PNG or SVG, by its name
    virtual QByteArray picture() const = 0;             // PNG

signals:
    // A sweep was stored, or the hardware has become idle.
    void sweepDone();
    // What would have been told in a box.
    void errorTold(const calvorn::ScpiError &error);

protected:
    virtual void tracesEdited() {}

private:
    const Configuration &m_configuration;
    Instrument &m_instrument;
    TraceSet &m_traces;
    const Markers &m_markers;
    SignalGenerator &m_generator;
    QElapsedTimer m_sinceSweep;
    double m_sweepTime;
    int m_sweepCount = 0;
};

} // namespace calvorn
