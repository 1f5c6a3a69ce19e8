// SPDX-License-Identifier: MIT
#include "tools/single_sweep.h"

#include "acquisition/driver_factory.h"
#include "acquisition/frequency_plan.h"
#include "core/number_text.h"
#include "core/runtime_error.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <memory>

namespace calvorn {

namespace {

// The slowest speed needs a few seconds for a sweep.
constexpr int kSweepTimeoutMs = 30000;

} // namespace

SingleSweep::SingleSweep(const QString &programFolder, Configuration &configuration, Desktop &desktop)
    : m_configuration(configuration)
    , m_messages(configuration, desktop)
    , m_log(configuration)
    , m_server(programFolder + QStringLiteral("/CalvornAsync"))
    , m_table(configuration)
    , m_conversion(configuration, m_window, m_table)
    , m_settingsFile(programFolder + u'/' + QString::fromLatin1(kSettingsFileName))
{
    // Loading writes missing defaults back; they go into a copy.
    m_configuration.iniPath = m_settingsCopy.filePath(QString::fromLatin1(kSettingsFileName));
    QFile::copy(m_settingsFile, m_configuration.iniPath);
    QFile::setPermissions(m_configuration.iniPath, QFile::ReadOwner | QFile::WriteOwner);
}

bool SingleSweep::run()
{
    if (!loadSettings())
        return false;
    try {
        correctRange(m_configuration);
        m_configuration.stepFreq = stepOfRange(m_configuration.startFreq, m_configuration.stopFreq);
        m_table.inizializzaGrid();
        return sweepOnce();
    } catch (const RuntimeError &error) {
        m_messages.warn(error.message());
        return false;
    }
}

bool SingleSweep::loadSettings()
{
    SettingsLoader loader(m_configuration, m_window);
    const LoadOutcome outcome = loader.load();
    for (const QString &fault : loader.faults())
        m_messages.warn(fault);
    if (outcome != LoadOutcome::Loaded)
        m_messages.warn(
            QCoreApplication::translate("SingleSweep", "%1 names a device that is not supported.").arg(m_settingsFile));
    return outcome == LoadOutcome::Loaded;
}

bool SingleSweep::sweepOnce()
{
    const std::unique_ptr<AcquisitionDriver> driver(
        makeDriver({m_configuration, m_window, m_messages, m_log, m_server}, nullptr));
    if (!driver)
        throw RuntimeError(RuntimeError::Kind::NoDriver, NumberText::fromInteger(m_configuration.interfaceType));
    bool ready = false;
    bool stored = false;
    QEventLoop wait;
    QObject::connect(driver.get(), &AcquisitionDriver::hardwareReady, &wait, [&] { ready = true; });
    QObject::connect(driver.get(), &AcquisitionDriver::aVettore, &wait, [&](const QVector<int> &vettore) {
        if (!stored)
            m_conversion.datiDDS(vettore);
        stored = true;
        wait.quit();
    });
    QObject::connect(driver.get(), &AcquisitionDriver::aComplete, &wait, &QEventLoop::quit);
    QObject::connect(driver.get(), &AcquisitionDriver::aErrore, &wait,
                     [&](std::int16_t, const QString &text) { m_messages.warn(text); });
    driver->startUp();
    // Why it is not ready has been told.
    if (ready && driver->startSweep()) {
        QTimer::singleShot(kSweepTimeoutMs, &wait, &QEventLoop::quit);
        wait.exec();
        driver->shutDown();
    }
    if (ready && !stored)
        m_messages.warn(QCoreApplication::translate("SingleSweep", "The hardware delivered no sweep."));
    return stored;
}

} // namespace calvorn
