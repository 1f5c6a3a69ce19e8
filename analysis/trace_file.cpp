// SPDX-License-Identifier: MIT
#include "analysis/trace_file.h"

#include "core/common_functions.h"
#include "core/detector_calibration.h"
#include "core/number_text.h"
#include "core/runtime_error.h"
#include "core/scale_type.h"
#include "data/amplitude_writer.h"
#include "data/readable_file.h"
#include "data/sweep_csv.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cmath>

namespace calvorn {

namespace {

constexpr double kSameVolts = 1e-9;
constexpr double kHighestCount = 1e6; // far above the counts of any converter

struct TraceFileTexts
{
    Q_DECLARE_TR_FUNCTIONS(TraceFile)
};

// The file does not state its scale, so try all scales.
bool followsFromCounts(const SweepTable &table, Configuration configuration)
{
    if (amplitudesFollowFromCounts(table, configuration))
        return true;
    for (std::int16_t scale = 0; scale < kScales; ++scale) {
        configuration.scaleType = scale;
        if (amplitudesFollowFromCounts(table, configuration))
            return true;
    }
    return false;
}

} // namespace

bool readSweepFile(const QString &path, Configuration &configuration, SweepTable &table)
{
    QFile file(path);
    openToRead(file);
    int line = 1;
    try {
        readSweepCsv(file, table, &line);
    } catch (const RuntimeError &error) {
        throw RuntimeError(RuntimeError::Kind::File,
                           TraceFileTexts::tr("%1, line %2: %3").arg(path, QString::number(line), error.message()));
    }
    const Sweep::Column &frequencies = table.numbers(SweepTable::FrequencyColumn);
    if (!isEquallySpaced(table.sweep()) || frequencies.front() == frequencies.back())
        throw RuntimeError(RuntimeError::Kind::File,
                           TraceFileTexts::tr("%1: the frequencies are not equally spaced.").arg(path));
    if (!followsFromCounts(table, configuration)) {
        table.sweepWritten(SweepOrigin::Imported, std::nullopt);
        return false;
    }
    AmplitudeWriter(configuration, table).convertAllRows();
    table.sweepWritten(SweepOrigin::Imported, detectorOf(configuration));
    return true;
}

Trace readTraceFile(const QString &path, Configuration configuration, bool *follows)
{
    SweepTable table(configuration);
    const bool followed = readSweepFile(path, configuration, table);
    if (follows)
        *follows = followed;
    Trace trace = traceOf(table.sweep(), configuration.scaleType);
    trace.name = traceName(path);
    return trace;
}

QByteArray traceAsCsv(const Trace &trace, Configuration configuration)
{
    SweepTable table(configuration);
    const NumberText numbers;
    AmplitudeWriter writer(configuration, table);
    const bool linear = isLinearScale(configuration.scaleType);
    const DetectorCalibration detector = detectorOf(configuration);
    for (int row = 1; row <= kSweepPoints; ++row) {
        const auto index = static_cast<std::size_t>(row - 1);
        const double volts = std::isnan(trace.volts[index]) ? 0.0 : trace.volts[index];
        const double count = std::min(detector.countOf(volts), kHighestCount);
        table.setText(row, SweepTable::FrequencyColumn, numbers.masked(trace.frequencyAt(index), kMaskHertz));
        // Store the count as for a measured sweep. An average may lie between two counts; then correct the amplitude.
        writer.storeCount(row, static_cast<int>(count));
        if (std::abs(volts - detector.volts(count)) > kSameVolts)
            table.setText(row, SweepTable::AmplitudeColumn,
                          linear ? numbers.masked(volts, kMaskVolt)
                                 : numbers.masked(voltsToDb(configuration, volts), kMaskDb));
    }
    table.sweepWritten(SweepOrigin::Imported, std::nullopt);
    return sweepAsCsv(table);
}

QString traceName(const QString &path)
{
    return QFileInfo(path).completeBaseName();
}

} // namespace calvorn
