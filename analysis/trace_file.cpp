// SPDX-License-Identifier: MIT
#include "analysis/trace_file.h"

#include "core/common_functions.h"
#include "core/number_text.h"
#include "core/runtime_error.h"
#include "core/scale_type.h"
#include "data/amplitude_writer.h"
#include "data/sweep_csv.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {

constexpr double kSameVolts = 1e-9;
constexpr double kHighestCount = 1e6; // far above any converter

struct TraceFileTexts
{
    Q_DECLARE_TR_FUNCTIONS(TraceFile)
};

[[noreturn]] void refuse(const QString &path, const QString &reason)
{
    throw RuntimeError(RuntimeError::Kind::File, path + QStringLiteral(": ") + reason);
}

void readInto(SweepTable &table, const QString &path)
{
    // Opening a pipe would wait for its other end.
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile())
        refuse(path, TraceFileTexts::tr("it is not a file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        refuse(path, file.errorString());
    try {
        readSweepCsv(file, table);
    } catch (const RuntimeError &error) {
        refuse(path, error.message());
    }
}

} // namespace

Trace readTraceFile(const QString &path, const Configuration &configuration)
{
    Configuration record = configuration;
    SweepTable table(record);
    table.inizializzaGrid();
    table.forgetAxis();
    readInto(table, path);
    const bool follow = amplitudesFollowFromCounts(table, record);
    table.sweepWritten(SweepOrigin::Imported, follow ? std::optional(detectorOf(record)) : std::nullopt);
    if (!isEquallySpaced(table.sweep()))
        refuse(path, TraceFileTexts::tr("its frequencies are not at equal distances"));
    Trace trace = traceOf(table.sweep(), record.scaleType);
    trace.name = QFileInfo(path).completeBaseName();
    return trace;
}

QByteArray traceAsCsv(const Trace &trace, const Configuration &configuration)
{
    Configuration record = configuration;
    SweepTable table(record);
    const NumberText numbers;
    AmplitudeWriter writer(record, table);
    const bool linear = isLinearScale(record.scaleType);
    const double step = static_cast<double>(record.adcStep);
    const double offset = static_cast<double>(record.adcOffset);
    for (int row = 1; row <= kSweepPoints; ++row) {
        const auto index = static_cast<std::size_t>(row - 1);
        const double volts = std::isnan(trace.volts[index]) ? 0.0 : trace.volts[index];
        const double count = step > 0.0 ? std::clamp(std::nearbyint((volts - offset) / step), 0.0, kHighestCount) : 0.0;
        table.setText(row, SweepTable::FrequencyColumn, numbers.masked(trace.frequencyAt(index), kMaskHertz));
        // Amplitude and count as a sweep has them; those of an average lie between two counts.
        writer.storeCount(row, static_cast<int>(count));
        if (std::abs(volts - (count * step + offset)) > kSameVolts)
            table.setText(row, SweepTable::AmplitudeColumn,
                          linear ? numbers.masked(volts, kMaskVolt)
                                 : numbers.masked(voltsToDb(record, volts), kMaskDb));
    }
    table.sweepWritten(SweepOrigin::Imported, std::nullopt);
    return sweepAsCsv(table);
}

} // namespace calvorn
