// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace_set.h"
#include "core/program_folders.h"
#include "core/settings.h"
#include "instrument/instrument.h"
#include "tools/exit_code.h"

#include <QCoreApplication>

#include <functional>
#include <optional>

namespace calvorn {

struct SweepRequest
{
    QString settingsFile;              // if empty, the default file, see settingsToRead()
    std::optional<std::int32_t> start; // Hz; if empty, taken from the settings
    std::optional<std::int32_t> stop;
    std::optional<std::int16_t> scale; // core/scale_type.h; if empty, taken from the settings
    QString input;                     // a sweep file to read instead of measuring; may be empty
    int sweeps = 1;                    // number of sweeps to take; only the last is kept
    bool isAveraged = false;           // show the mean of the sweeps
};

// Sweeps without a window. Never writes the settings.
class SingleSweep
{
    Q_DECLARE_TR_FUNCTIONS(SingleSweep)

public:
    // folders: contain the server and, unless the request names another file, the settings.
    SingleSweep(const ProgramFolders &folders, const SweepRequest &request, Clock &clock);

    // Both return kDone or an error code; after an error, sentence() returns the message for the user.
    ExitCode prepare(); // reads the settings
    ExitCode run();     // fills the table
    QString sentence() const { return m_sentence; }
    QString settingsFile() const { return m_settingsFile; }

    const Configuration &configuration() const { return m_configuration; }
    // For callers that sweep without run(); they must call prepare() first.
    Configuration &record() { return m_configuration; }
    Instrument &instrument() { return m_instrument; }
    TraceSet &traces() { return m_traces; }
    Log &log() { return m_log; }
    const WindowSettings &window() const { return m_window; }
    const SweepTable &table() const { return m_instrument.table(); }
    // Returns the sweep in the table, or the mean of all sweeps, in volts.
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
