// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/acquisition_driver.h"
#include "acquisition/sample_conversion.h"
#include "data/sweep_table.h"

#include <QTemporaryDir>

namespace calvorn {

// One sweep with the settings of a program folder, which it only reads.
class SingleSweep
{
public:
    SingleSweep(const QString &programFolder, Configuration &configuration, Desktop &desktop);

    // Takes one sweep into the table. False, after a sentence through the desktop, when it could not.
    bool run();

    SweepTable &table() { return m_table; }

private:
    bool loadSettings();
    bool sweepOnce();

    Configuration &m_configuration;
    WindowSettings m_window;
    Messages m_messages;
    Log m_log;
    ServerProcess m_server;
    SweepTable m_table;
    SampleConversion m_conversion;
    QTemporaryDir m_settingsCopy;
    QString m_settingsFile;
};

} // namespace calvorn
