// SPDX-License-Identifier: MIT
#include "tools/single_sweep.h"

#include "analysis/trace_file.h"
#include "core/common_functions.h"
#include "core/number_text.h"
#include "core/runtime_error.h"
#include "core/scale_type.h"
#include "platform/process_guard.h"
#include "tools/console.h"
#include "tools/interruption.h"
#include "tools/sweep_file.h"

#include <QFileInfo>

namespace calvorn {

namespace {

// Thrown to abort the run with an exit code and an error message.
struct Failure
{
    ExitCode code;
    QString sentence;
};

ExitCode codeOf(SweepOutcome::Kind kind)
{
    switch (kind) {
    case SweepOutcome::Kind::Done:
        return kDone;
    case SweepOutcome::Kind::PortRefused:
    case SweepOutcome::Kind::PortLost:
        return kNoPort;
    case SweepOutcome::Kind::NoAnswer:
        return kNoAnswer;
    case SweepOutcome::Kind::Interrupted:
        return static_cast<ExitCode>(kSignalled + interruption());
    default:
        return kRefused;
    }
}

} // namespace

SingleSweep::SingleSweep(const ProgramFolders &folders, const SweepRequest &request, Clock &clock)
    : m_request(request)
    , m_log(m_configuration)
    , m_settingsFile(
          QFileInfo(request.settingsFile.isEmpty() ? settingsToRead(folders) : request.settingsFile).absoluteFilePath())
    , m_instrument(m_configuration, m_log, clock, folders.serverFile(), m_settingsFile)
{
    m_traces.setAverageOver(request.sweeps);
    m_traces.switchOn(TraceSet::Source::Average, request.isAveraged);
}

ExitCode SingleSweep::prepare()
{
    return guarded([this] {
        loadSettings();
        applyScale();
    });
}

ExitCode SingleSweep::run()
{
    return guarded([this] {
        if (m_request.input.isEmpty()) {
            applyRange();
            takeSweeps();
        } else {
            takeSweepFile(m_request.input, m_configuration, m_instrument.table());
            Trace trace = traceOf(table().sweep(), m_configuration.scaleType);
            trace.name = traceName(m_request.input);
            m_traces.showSweep(trace);
        }
    });
}

ExitCode SingleSweep::guarded(const std::function<void()> &act)
{
    try {
        act();
        return kDone;
    } catch (const Failure &failure) {
        m_sentence = failure.sentence;
        return failure.code;
    } catch (const UnusableFile &file) {
        m_sentence = file.sentence;
        return kFileNotUsable;
    } catch (const RuntimeError &error) {
        m_sentence = error.message();
        return kRefused;
    }
}

const Trace &SingleSweep::trace() const
{
    return m_traces.shown(m_request.isAveraged ? TraceSet::Source::Average : TraceSet::Source::Live);
}

// Rejects settings about which the window would ask the user, because the tool must not measure anything unintended.
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
        note(fault);
    if (outcome != LoadOutcome::Loaded)
        throw Failure{kBadSettings, tr("%1 specifies an unsupported device.").arg(m_settingsFile)};
    if (!isScale(m_configuration.scaleType))
        m_configuration.scaleType = kScaleLinear;
}

// Converts the amplitude markers in the settings from the stored scale to the requested scale.
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
    const Configuration &c = m_configuration;
    if (m_instrument.planRange(m_request.start.value_or(c.startFreq), m_request.stop.value_or(c.stopFreq)))
        for (const QString &notice : {c.startNotice, c.stopNotice})
            if (!notice.isEmpty())
                note(notice);
}

void SingleSweep::takeSweeps()
{
    const NumberText numbers;
    const Configuration &c = m_configuration;
    int taken = 0;
    QObject::connect(&m_instrument.conversion(), &SampleConversion::vectorStored, &m_instrument,
                     [this, taken]() mutable {
                         note(tr("Sweep %1 of %2").arg(++taken).arg(m_request.sweeps));
                         m_traces.takeSweep(traceOf(table().sweep(), m_configuration.scaleType));
                     });
    QObject::connect(&m_instrument, &Instrument::told, &m_instrument, [](const QString &text) { note(text); });
    QObject::connect(&m_instrument, &Instrument::connected, &m_instrument, [&] {
        note(tr("Sweeping from %1 to %2 Hz")
                 .arg(numbers.masked(c.startFreq, kMaskHertz), numbers.masked(c.stopFreq, kMaskHertz)));
    });
    const SweepOutcome outcome = m_instrument.takeSweeps(m_request.sweeps, [] {
        letStop();
        return interruption() != 0;
    });
    if (outcome.kind != SweepOutcome::Kind::Done)
        throw Failure{codeOf(outcome.kind), sentenceOf(outcome)};
}

QString SingleSweep::sentenceOf(const SweepOutcome &outcome) const
{
    using Kind = SweepOutcome::Kind;
    const AcquisitionDriver *driver = m_instrument.driver();
    switch (outcome.kind) {
    case Kind::PortRefused: {
        const QString port = driver->kind().portName(m_configuration);
        return outcome.reason.isEmpty() ? tr("The %1 could not be opened.").arg(port)
                                        : tr("The %1 could not be opened (%2).").arg(port, outcome.reason);
    }
    case Kind::SetUpRefused:
        return tr("The hardware could not be configured: %1.").arg(outcome.reason);
    case Kind::SweepRefused:
        return tr("The hardware refused the sweep.");
    case Kind::Interrupted:
        return tr("Interrupted.");
    default:
        return outcome.reason.isEmpty() ? tr("The hardware did not deliver a sweep in time.") : outcome.reason;
    }
}

} // namespace calvorn
