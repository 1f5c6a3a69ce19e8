// SPDX-License-Identifier: MIT
#include "tools/sweep_file.h"

#include "core/runtime_error.h"
#include "core/scale_type.h"
#include "data/amplitude_writer.h"
#include "data/sweep_csv.h"
#include "tools/console.h"
#include "tools/sweep_tool.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>

namespace calvorn {

namespace {

void open(QFile &file)
{
    const auto refuse = [&file](const QString &reason) {
        throw UnusableFile{SweepTool::tr("%1 cannot be read: %2.").arg(file.fileName(), reason)};
    };
    // Opening a pipe would wait for its other end.
    if (QFileInfo::exists(file.fileName()) && !QFileInfo(file.fileName()).isFile())
        refuse(SweepTool::tr("it is not a file"));
    if (!file.open(QIODevice::ReadOnly))
        refuse(file.errorString());
}

// The file does not say which scale it was written on.
bool followsFromCounts(const SweepTable &table, Configuration configuration)
{
    const std::array scales{configuration.scaleType, kScaleLinear, kScaleDb1V, kScaleDb10V};
    return std::ranges::any_of(scales, [&](std::int16_t scale) {
        configuration.scaleType = scale;
        return amplitudesFollowFromCounts(table, configuration);
    });
}

} // namespace

void readSweepFile(const QString &path, Configuration &configuration, SweepTable &table)
{
    QFile file(path);
    open(file);
    int line = 1;
    try {
        readSweepCsv(file, table, &line);
    } catch (const RuntimeError &error) {
        throw UnusableFile{SweepTool::tr("%1, line %2: %3").arg(path, QString::number(line), error.message())};
    }
    const Sweep::Column &frequencies = table.numbers(SweepTable::FrequencyColumn);
    if (!isEquallySpaced(table.sweep()) || frequencies.front() == frequencies.back())
        throw UnusableFile{SweepTool::tr("%1: the frequencies do not lie at equal distances.").arg(path)};
    if (!followsFromCounts(table, configuration)) {
        note(SweepTool::tr("%1: the amplitudes do not follow from the counts; they are taken as %2.")
                 .arg(path, isLinearScale(configuration.scaleType) ? SweepTool::tr("volts") : SweepTool::tr("dB")));
        table.sweepWritten(SweepOrigin::Imported, std::nullopt);
        return;
    }
    AmplitudeWriter(configuration, table).convertAllRows();
    table.sweepWritten(SweepOrigin::Imported, detectorOf(configuration));
}

Trace traceOfFile(const QString &path, Configuration configuration)
{
    SweepTable table(configuration);
    readSweepFile(path, configuration, table);
    Trace trace = traceOf(table.sweep(), configuration.scaleType);
    trace.name = traceName(path);
    return trace;
}

LimitLines readLimitFile(const QString &path)
{
    QFile file(path);
    open(file);
    try {
        return readLimitLinesCsv(file);
    } catch (const RuntimeError &error) {
        throw UnusableFile{SweepTool::tr("%1: %2").arg(path, error.message())};
    }
}

QString traceName(const QString &path)
{
    return QFileInfo(path).completeBaseName();
}

} // namespace calvorn
