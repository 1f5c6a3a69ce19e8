// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/acquisition_driver.h"
#include "acquisition/sample_conversion.h"
#include "data/sweep_table.h"
#include "tools/console_desktop.h"
#include "tools/exit_code.h"

#include <QEventLoop>

#include <optional>

namespace calvorn {

struct SweepRequest
{
    QString settingsFile;              // empty: the one beside the program
    std::optional<std::int32_t> start; // Hz; without it that of the settings
    std::optional<std::int32_t> stop;
    std::optional<std::int16_t> scale; // core/scale_type.h; without it that of the settings
    int sweeps = 1;                    // taken one after the other; the last is kept
};

// Sweeps without a window, with settings that it only reads.
class SingleSweep
{
    Q_DECLARE_TR_FUNCTIONS(SingleSweep)

public:
    // programFolder: holds the server, and the settings unless the request names others.
    SingleSweep(const QString &programFolder, const SweepRequest &request, ConsoleDesktop &desktop);

    // Fills the table. kDone, or what went wrong, with sentence() for the user.
    ExitCode run();
    QString sentence() const { return m_sentence; }
    QString settingsFile() const { return m_settingsFile; }

    Configuration &configuration() { return m_configuration; }
    const WindowSettings &window() const { return m_window; }
    SweepTable &table() { return m_table; }
    Messages &messages() { return m_messages; }
    Log &log() { return m_log; }

private:
    void loadSettings();
    void applyScale();
    void applyRange();
    void checkLimit(const char *option, const std::optional<std::int32_t> &hertz);
    void takeSweeps();
    void listen(AcquisitionDriver &driver, QEventLoop &wait);
    void hardwareFailed(std::int16_t code, const QString &text, QEventLoop &wait);
    void waitForSweeps(QEventLoop &wait);
    void store(const QVector<int> &counts, QEventLoop &wait);
    QString portName() const;

    SweepRequest m_request;
    ConsoleDesktop &m_desktop;
    Configuration m_configuration;
    WindowSettings m_window;
    Messages m_messages;
    Log m_log;
    QString m_settingsFile;
    ServerProcess m_server;
    SweepTable m_table;
    SampleConversion m_conversion;
    QString m_lastLogLine;
    QString m_sentence;
    ExitCode m_failure = kDone; // what an event of the hardware said
    bool m_portOpen = false;
    bool m_ready = false;
    int m_taken = 0;
};

} // namespace calvorn
