// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace_set.h"
#include "core/settings.h"
#include "instrument/instrument.h"
#include "tools/exit_code.h"

#include <QCoreApplication>

#include <functional>
#include <optional>

namespace calvorn {

struct SweepRequest
{
    QString settingsFile;              // empty: the one beside the program
    std::optional<std::int32_t> start; // Hz; without it that of the settings
    std::optional<std::int32_t> stop;
    std::optional<std::int16_t> scale; // core/scale_type.h; without it that of the settings
    QString input;                     // a sweep file, in place of the hardware; empty: none
    int sweeps = 1;                    // taken one after the other; the last is kept
    bool isAveraged = false;           // their mean is shown
};

// Sweeps without a window, with settings that it only reads.
class SingleSweep
{
    Q_DECLARE_TR_FUNCTIONS(SingleSweep)

public:
    // programFolder: holds the server, and the settings unless the request names others.
    SingleSweep(const QString &programFolder, const SweepRequest &request, Clock &clock);

    // Both: kDone, or what went wrong, with sentence() for the user.
    ExitCode prepare(); // reads the settings
    ExitCode run();     // fills the table
    QString sentence() const { return m_sentence; }
    QString settingsFile() const { return m_settingsFile; }

    const Configuration &configuration() const { return m_configuration; }
    // For whoever sweeps by himself, after prepare().
    Configuration &record() { return m_configuration; }
    Instrument &instrument() { return m_instrument; }
    TraceSet &traces() { return m_traces; }
    Log &log() { return m_log; }
    const WindowSettings &window() const { return m_window; }
    const SweepTable &table() const { return m_instrument.table(); }
    // In volts: the sweep of the table, or the mean of all of them.
    const Trace &trace() const;
    int averaged() const { return m_request.isAveraged ? m_request.sweeps : 1; }

private:
    ExitCode guarded(const std::function<void()> &act);
    void loadSettings();
    void applyScale();
    void applyRange();
    void checkLimit(const char *option, const std::optional<std::int32_t> &hertz);
    void takeSweeps();
    QString sentenceOf(const SweepOutcome &outcome) const;

    SweepRequest m_request;
    Configuration m_configuration;
    WindowSettings m_window;
    Log m_log;
    QString m_settingsFile;
    Instrument m_instrument;
    TraceSet m_traces;
    QString m_sentence;
};

} // namespace calvorn
