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

// The object under remote control: the window or calvorn-sweep. Each command has the same effect as the corresponding
// control in the window but shows no message box: errorReported() reports the message instead.
//
// A command that cannot be executed throws a ScpiError.
class RemoteTarget : public QObject
{
    Q_OBJECT

public:
    // All references must outlive this object.
    RemoteTarget(const Configuration &configuration, Instrument &instrument, TraceSet &traces, const Markers &markers,
                 SignalGenerator &generator, QObject *parent = nullptr);

    const Configuration &configuration() const { return m_configuration; }
    Instrument &instrument() { return m_instrument; }
    const Instrument &instrument() const { return m_instrument; }
    SignalGenerator &generator() { return m_generator; }
    const Markers &markers() const { return m_markers; }
    const TraceSet &traces() const { return m_traces; }

    // Returns an error message while an open message box or dialog prevents changes; otherwise an empty string.
    virtual QString busyReason() const { return {}; }

    // --- range and sweep ---

    // start, stop: in Hz, clamped to the generator's limits. If the range is too narrow, widens it and reports the
    // change.
    virtual void setRange(double start, double stop) = 0;
    virtual void setSpeed(std::int16_t speed) = 0; // the numeric value of a SweepSpeed
    // Starts a sweep. No sweep may be running.
    virtual void start(SweepRun run) = 0;
    virtual void stop() = 0;

    // Returns true if there is nothing to wait for: the single sweep is stored, no sweep is running, or sweeps repeat
    // until stopped.
    bool isSweepDone() const;
    // Returns true while a sweep is running and its samples are still needed.
    bool isMeasuring() const;
    // The number of sweeps since the last start.
    int sweepCount() const { return m_sweepCount; }
    // Seconds between the last two sweeps; NaN until the second sweep after a start.
    double sweepTime() const { return m_sweepTime; }

    // --- display ---

    virtual void setScale(std::int16_t scale) = 0;                // core/scale_type.h
    virtual void setTopOfLinearScale(double volts) = 0;           // above 0
    virtual void setBottomOfDbScales(int decibels) = 0;           // 0 or below
    virtual void placeMarker(GraphItem marker, double hertz) = 0; // M1 or M2

    // --- traces ---

    // Calls "edit" to change the traces, then updates the display.
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
    virtual void storePicture(const QString &path) = 0; // PNG or SVG, depending on the file extension
    virtual QByteArray picture() const = 0;             // PNG

signals:
    // A sweep was stored, or the hardware became idle.
    void sweepDone();
    // Emitted instead of showing an error box.
    void errorReported(const calvorn::ScpiError &error);

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
