// SPDX-License-Identifier: MIT
#include "tools/console_target.h"

#include "analysis/shown_curve.h"
#include "analysis/trace_file.h"
#include "core/checked_arithmetic.h"
#include "core/common_functions.h"
#include "core/runtime_error.h"
#include "core/whole_file.h"
#include "data/amplitude_writer.h"
#include "data/sweep_csv.h"
#include "display/plot/marker_readings.h"
#include "display/plot/sweep_picture.h"
#include "instrument/aux_hardware.h"
#include "instrument/frequency_plan.h"
#include "protocol/error_codes.h"
#include "protocol/stop_reasons.h"
#include "tools/sweep_tool.h"

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {

// Returns the first line of a message, whose lines are separated by carriage returns.
QByteArray firstLine(const QString &text)
{
    return text.section(u'\r', 0, 0).toUtf8();
}

} // namespace

ConsoleTarget::ConsoleTarget(const Station &station, Markers &markers, SignalGenerator &generator, QObject *parent)
    : RemoteTarget(station.configuration, station.instrument, station.traces, markers, generator, parent)
    , m_station(station)
    , m_placed(markers)
{
    connect(&station.instrument.table(), &SweepTable::changed, this, &ConsoleTarget::followTable);
    connect(&station.instrument, &Instrument::driverMade, this, &ConsoleTarget::followDriver);
    connect(&station.instrument, &Instrument::becameIdle, this, [this] {
        if (const auto run = std::exchange(m_restart, std::nullopt))
            start(*run);
    });
}

void ConsoleTarget::followDriver()
{
    AcquisitionDriver *driver = instrument().driver();
    connect(driver, &AcquisitionDriver::aErrore, this, &ConsoleTarget::hardwareFailed);
    connect(driver, &AcquisitionDriver::refused, this, [this](const QString &text) {
        m_refusal = QString::fromUtf8(firstLine(text));
        emit errorReported({kScpiHardwareError, m_refusal.toUtf8()});
    });
    connect(driver, &AcquisitionDriver::aVettore, this, [this](const QVector<int> &vector) {
        try {
            instrument().store(vector);
        } catch (const RuntimeError &error) {
            emit errorReported({kScpiExecutionError, error.message().toUtf8()});
            stop();
        }
    });
    connect(driver, &AcquisitionDriver::aComplete, this, [driver] { driver->sweepCompleted(); });
}

// Transmission errors are not reported, because each loses only one sweep.
void ConsoleTarget::hardwareFailed(std::int16_t code, const QString &text)
{
    if (code != numberOf(ErrorCode::Transmission) && code != numberOf(ErrorCode::Ignorable))
        emit errorReported({kScpiHardwareError, firstLine(text)});
}

void ConsoleTarget::followTable()
{
    const SweepTable &table = instrument().table();
    const Trace trace = traceOf(table.sweep(), configuration().scaleType);
    editTraces([&](TraceSet &traces) {
        switch (table.origin()) {
        case SweepOrigin::None:
            traces.forgetSweep();
            break;
        case SweepOrigin::Measured:
            traces.takeSweep(trace);
            break;
        default:
            traces.showSweep(trace);
        }
    });
}

QString ConsoleTarget::connectHardware()
{
    try {
        instrument().planRange(configuration().startFreq, configuration().stopFreq);
        const MarkerSet set = markersOf(m_station.window, instrument().table());
        for (const GraphItem item : {GraphItem::M1, GraphItem::M2, GraphItem::M3, GraphItem::M4})
            m_placed.move(item, set[item].position);
        instrument().makeDriver();
        instrument().connectHardware();
    } catch (const RuntimeError &error) {
        return error.message();
    }
    return m_refusal;
}

void ConsoleTarget::setRange(double start, double stop)
{
    const auto limited = [this](double hertz) {
        const double low = configuration().ddsMinFreq;
        return roundToInteger<std::int32_t>(
            std::clamp(hertz, low, std::max(low, static_cast<double>(configuration().ddsMaxFreq))));
    };
    Configuration &c = m_station.configuration;
    if (instrument().planRange(limited(start), limited(stop)))
        for (const QString &notice : {c.startNotice, c.stopNotice})
            if (!notice.isEmpty())
                emit errorReported({kScpiSettingsConflict, notice.toUtf8()});
    replan();
}

// Performs the same steps as the window's controls.
void ConsoleTarget::replan()
{
    AcquisitionDriver *driver = instrument().driver();
    if (!driver)
        return;
    if (!instrument().isSweeping()) {
        if (driver->isConfigured())
            driver->parkAtChangedStart();
        generator().resume();
        return;
    }
    if (driver->replanning() == AcquisitionDriver::Replanning::InPlace) {
        driver->replanSweep();
        return;
    }
    m_restart = instrument().run();
    instrument().stopSweep(kStopForNewRange);
}

void ConsoleTarget::setSpeed(std::int16_t speed)
{
    m_station.configuration.sweepSpeed = speed;
    AcquisitionDriver *driver = instrument().driver();
    if (driver && driver->isConfigured())
        driver->setSpeed(speed);
}

void ConsoleTarget::start(SweepRun run)
{
    m_refusal.clear();
    instrument().requiredDriver();
    // After an import, the table rows have no plan.
    if (!instrument().table().axis())
        instrument().planRange(configuration().startFreq, configuration().stopFreq);
    if (!instrument().startSweep(run) && m_refusal.isEmpty())
        throw ScpiError{kScpiHardwareError, "the hardware refused the sweep"};
}

void ConsoleTarget::stop()
{
    m_restart.reset();
    instrument().stopSweep();
}

void ConsoleTarget::setScale(std::int16_t scale)
{
    Configuration &c = m_station.configuration;
    // Amplitude markers stay at the same voltage.
    for (const GraphItem marker : {GraphItem::M3, GraphItem::M4}) {
        const double volts = dbToVoltsBounded(c, m_placed.position(marker));
        Configuration target = c;
        target.scaleType = scale;
        m_placed.move(marker, voltsToDb(target, volts));
    }
    c.scaleType = scale;
    SweepTable &table = instrument().table();
    AmplitudeWriter(c, table).convertAllRows();
    table.amplitudesRewritten(detectorOf(c));
}

void ConsoleTarget::setTopOfLinearScale(double volts)
{
    m_station.configuration.maxScaleVolt = static_cast<float>(volts);
}

void ConsoleTarget::setBottomOfDbScales(int decibels)
{
    m_station.configuration.maxScaleDb = decibels;
}

void ConsoleTarget::placeMarker(GraphItem marker, double hertz)
{
    const SweepTable &table = instrument().table();
    const double first = table.number(1, SweepTable::FrequencyColumn);
    const double last = table.number(kSweepPoints, SweepTable::FrequencyColumn);
    const double row = 1.0 + std::round((hertz - first) / (last - first) * (kSweepPoints - 1));
    m_placed.move(marker, std::clamp(row, 1.0, static_cast<double>(kSweepPoints)));
}

void ConsoleTarget::setOutput(int number, std::uint8_t value)
{
    (number == 2 ? m_station.configuration.aux2 : m_station.configuration.aux1) = value;
    sendOutputs();
}

void ConsoleTarget::setPotentiometer(std::uint8_t position)
{
    m_station.configuration.pot2 = position;
    sendOutputs();
}

void ConsoleTarget::sendOutputs()
{
    restoreOutputs(m_station.configuration, auxHardwareOf([this] { return instrument().driver(); }, m_station.log));
}

void ConsoleTarget::storeSweep(const QString &path)
{
    writeWholeFile(path, sweepAsCsv(instrument().table()));
}

void ConsoleTarget::loadSweep(const QString &path)
{
    SweepTable &table = instrument().table();
    Configuration &c = m_station.configuration;
    if (!readSweepFile(path, c, table))
        emit errorReported({kScpiSettingsConflict, "the file was made with another detector calibration"});
    c.startFreq = table.frequency(1);
    c.stopFreq = table.frequency(kSweepPoints);
    c.stepFreq = stepOfRange(c.startFreq, c.stopFreq);
}

PictureComponents ConsoleTarget::pictureComponents() const
{
    return {configuration(), instrument().table(), m_placed.set(), SweepTool::tr("Sweep")};
}

ShownCurve ConsoleTarget::curve() const
{
    const Trace reference = traces().isNormalised() ? traces().reference() : Trace();
    return {traces().shown(TraceSet::Source::Live), reference, configuration().scaleType, 1};
}

Companions ConsoleTarget::companions() const
{
    Companions beside;
    if (traces().isNormalised()) {
        beside.reference = traces().reference();
        beside.reference.name = SweepTool::tr("the reference");
    }
    for (int slot = 0; slot < TraceSet::kStored; ++slot)
        if (!traces().stored(slot).trace.isEmpty())
            beside.traces.push_back(traces().stored(slot).trace);
    if (m_limitsOn)
        beside.limits = m_limits;
    return beside;
}

void ConsoleTarget::storePicture(const QString &path)
{
    if (!SweepPicture::isPictureName(path))
        throw ScpiError{kScpiFileNameError, "the name must end in .png or .svg"};
    savePicture(path, pictureComponents(), curve(), companions());
}

QByteArray ConsoleTarget::picture() const
{
    return pictureAsPng(pictureComponents(), curve(), companions());
}

} // namespace calvorn
