// SPDX-License-Identifier: MIT
#include "tools/single_sweep.h"

#include "acquisition/aux_hardware.h"
#include "acquisition/driver_factory.h"
#include "acquisition/frequency_plan.h"
#include "core/common_functions.h"
#include "core/number_text.h"
#include "core/runtime_error.h"
#include "core/scale_type.h"
#include "core/settings_folder.h"
#include "platform/parallel_ports.h"
#include "platform/process_guard.h"
#include "tools/interruption.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <QTimer>

#include <memory>

namespace calvorn {

namespace {

// The slowest speed needs a few seconds for a sweep.
constexpr int kSweepTimeoutMs = 30000;
constexpr int kPollMs = 50;

// Codes of the error event (docs/hardware/errors.md).
constexpr std::int16_t kErrorTransfer = 1;
constexpr std::int16_t kErrorPort = 2;
constexpr std::int16_t kErrorNoAnswer = 3;
constexpr std::int16_t kErrorNoAction = 4;

// Ends the run with a code and a sentence.
struct Failure
{
    ExitCode code;
    QString sentence;
};

} // namespace

SingleSweep::SingleSweep(const QString &programFolder, const SweepRequest &request, ConsoleDesktop &desktop)
    : m_request(request)
    , m_desktop(desktop)
    , m_messages(m_configuration, desktop)
    , m_log(m_configuration)
    , m_settingsFile(QFileInfo(request.settingsFile.isEmpty() ? settingsToRead(programFolder) : request.settingsFile)
                         .absoluteFilePath())
    , m_server(programFolder + QStringLiteral("/CalvornAsync"), m_settingsFile)
    , m_table(m_configuration)
    , m_conversion(m_configuration, m_window, m_table)
{
    QObject::connect(&m_log, &Log::lineWritten, &m_log, [this](const QString &line) { m_lastLogLine = line; });
}

ExitCode SingleSweep::run()
{
    // However it went, the hardware is at rest when the tool ends.
    const auto atRest = qScopeGuard([this] { m_server.stop(); });
    try {
        loadSettings();
        applyScale();
        applyRange();
        m_table.inizializzaGrid();
        takeSweeps();
        return kDone;
    } catch (const Failure &failure) {
        m_sentence = failure.sentence;
        return failure.code;
    } catch (const RuntimeError &error) {
        m_sentence = error.message();
        return error.kind() == RuntimeError::Kind::NoAnswer ? kNoAnswer : kRefused;
    }
}

// What a window would ask the user about is refused: nobody is there to see what is measured instead.
void SingleSweep::loadSettings()
{
    m_configuration.iniPath = m_settingsFile;
    SettingsLoader loader(m_configuration, m_window, SettingReader::Defaults::KeepOut);
    const LoadOutcome outcome = loader.load();
    const QString doubt = loader.profile().doubt();
    if (!doubt.isEmpty())
        throw Failure{kBadSettings, tr("The settings file %1 cannot be read: %2.").arg(m_settingsFile, doubt)};
    if (outcome == LoadOutcome::Loaded)
        loader.loadMarkers();
    for (const QString &fault : loader.faults())
        ConsoleDesktop::note(fault);
    if (outcome != LoadOutcome::Loaded)
        throw Failure{kBadSettings, tr("%1 names a device that is not supported.").arg(m_settingsFile)};
    if (m_configuration.scaleType < 0 || m_configuration.scaleType >= kScales)
        m_configuration.scaleType = kScaleLinear;
    // The log is where a driver says why a port does not open.
    m_configuration.logDebug = true;
}

// The amplitude markers of the settings have the units of the stored scale; a picture shows them in those of the other.
void SingleSweep::applyScale()
{
    Configuration &c = m_configuration;
    if (!m_request.scale || *m_request.scale == c.scaleType)
        return;
    Configuration target = c;
    target.scaleType = *m_request.scale;
    const NumberText numbers;
    for (QString *marker : {&m_window.marker3, &m_window.marker4}) {
        if (!numbers.isNumeric(*marker))
            continue;
        const double volts = dbToVoltsBounded(c, numbers.toDouble(*marker));
        *marker = numbers.masked(voltsToDb(target, volts), isLinearScale(target.scaleType) ? kMaskVolt : kMaskDb);
    }
    c.scaleType = target.scaleType;
}

void SingleSweep::checkLimit(const char *option, const std::optional<std::int32_t> &hertz)
{
    const Configuration &c = m_configuration;
    if (!hertz || (*hertz >= c.ddsMinFreq && *hertz <= c.ddsMaxFreq))
        return;
    const NumberText numbers;
    throw Failure{kBadArguments, tr("%1 must lie between %2 and %3 Hz.")
                                     .arg(QString::fromLatin1(option), numbers.masked(c.ddsMinFreq, kMaskHertz),
                                          numbers.masked(c.ddsMaxFreq, kMaskHertz))};
}

void SingleSweep::applyRange()
{
    checkLimit("--start", m_request.start);
    checkLimit("--stop", m_request.stop);
    Configuration &c = m_configuration;
    c.startFreq = m_request.start.value_or(c.startFreq);
    c.stopFreq = m_request.stop.value_or(c.stopFreq);
    if (correctRange(c))
        for (const QString &notice : {c.startNotice, c.stopNotice})
            if (!notice.isEmpty())
                ConsoleDesktop::note(notice);
    c.stepFreq = stepOfRange(c.startFreq, c.stopFreq);
}

QString SingleSweep::portName() const
{
    return m_configuration.interfaceType == kInterfaceLpt
               ? tr("parallel port %1").arg(hexAddress(m_configuration.lptAddress))
               : tr("serial port COM%1").arg(m_configuration.commPort);
}

void SingleSweep::takeSweeps()
{
    const std::unique_ptr<AcquisitionDriver> driver(
        makeDriver({m_configuration, m_window, m_messages, m_log, m_server, m_table}, nullptr));
    if (!driver)
        throw RuntimeError(RuntimeError::Kind::NoDriver, NumberText::fromInteger(m_configuration.interfaceType));
    QEventLoop wait;
    listen(*driver, wait);
    driver->startUp();
    if (!m_portOpen) {
        const QString reason = m_lastLogLine.mid(driver->logPrefix().size());
        throw Failure{kNoPort, reason.isEmpty() ? tr("The %1 could not be opened.").arg(portName())
                                                : tr("The %1 could not be opened (%2).").arg(portName(), reason)};
    }
    if (!m_ready)
        throw Failure{kRefused, tr("The hardware refused to be set up: %1.").arg(m_desktop.lastText())};
    const NumberText numbers;
    ConsoleDesktop::note(tr("Sweeping from %1 to %2 Hz")
                             .arg(numbers.masked(m_configuration.startFreq, kMaskHertz),
                                  numbers.masked(m_configuration.stopFreq, kMaskHertz)));
    if (!driver->startSweep())
        throw Failure{kRefused, tr("The hardware refused the sweep.")};
    waitForSweeps(wait);
    driver->disconnect(&wait);
    try {
        driver->shutDown();
    } catch (const RuntimeError &error) {
        // What was taken is good all the same.
        ConsoleDesktop::note(error.message());
    }
    m_server.stop();
    if (interruption() != 0)
        throw Failure{static_cast<ExitCode>(kSignalled + interruption()), tr("Interrupted.")};
    if (m_taken >= m_request.sweeps)
        return;
    if (m_failure != kDone)
        throw Failure{m_failure, m_sentence};
    throw Failure{kNoAnswer, tr("The hardware delivered no sweep in time.")};
}

void SingleSweep::listen(AcquisitionDriver &driver, QEventLoop &wait)
{
    QObject::connect(&driver, &AcquisitionDriver::portOpened, &wait, [this] { m_portOpen = true; });
    QObject::connect(&driver, &AcquisitionDriver::hardwareReady, &wait, [this, &driver] {
        m_ready = true;
        if (m_configuration.interfaceType == kInterfaceLpt)
            restoreOutputs(m_configuration, auxHardwareOf([&driver] { return &driver; }, m_log));
    });
    QObject::connect(&driver, &AcquisitionDriver::aVettore, &wait,
                     [this, &wait](const QVector<int> &counts) { store(counts, wait); });
    QObject::connect(&driver, &AcquisitionDriver::aComplete, &wait, &QEventLoop::quit);
    QObject::connect(&driver, &AcquisitionDriver::aErrore, &wait,
                     [this, &wait](std::int16_t code, const QString &text) { hardwareFailed(code, text, wait); });
}

// A damaged transfer costs one sweep; the next one comes.
void SingleSweep::hardwareFailed(std::int16_t code, const QString &text, QEventLoop &wait)
{
    if (code == kErrorTransfer)
        ConsoleDesktop::note(ConsoleDesktop::firstLine(text));
    // The server says what calls for no action on standard error, which is the tool's own.
    if (code == kErrorTransfer || code == kErrorNoAction)
        return;
    m_sentence = ConsoleDesktop::firstLine(text);
    m_failure = code == kErrorPort ? kNoPort : code == kErrorNoAnswer ? kNoAnswer : kRefused;
    wait.quit();
}

void SingleSweep::store(const QVector<int> &counts, QEventLoop &wait)
{
    if (m_taken >= m_request.sweeps)
        return;
    try {
        m_conversion.datiDDS(counts);
    } catch (const RuntimeError &error) {
        m_sentence = error.message();
        m_failure = kRefused;
        wait.quit();
        return;
    }
    ++m_taken;
    ConsoleDesktop::note(tr("Sweep %1 of %2").arg(m_taken).arg(m_request.sweeps));
    if (m_taken == m_request.sweeps)
        wait.quit();
}

// Counts its own ticks and not the time: while the program is stopped, none passes.
void SingleSweep::waitForSweeps(QEventLoop &wait)
{
    QTimer poll;
    int taken = 0;
    int ticks = 0; // since the last sweep
    QObject::connect(&poll, &QTimer::timeout, &wait, [&] {
        letStop();
        ticks = m_taken == taken ? ticks + 1 : 0;
        taken = m_taken;
        if (interruption() != 0 || ticks > kSweepTimeoutMs / kPollMs)
            wait.quit();
    });
    poll.start(kPollMs);
    // What has happened already has nobody to wake.
    if (m_failure == kDone)
        wait.exec();
}

} // namespace calvorn
