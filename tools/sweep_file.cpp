// SPDX-License-Identifier: MIT
#include "tools/sweep_file.h"

#include "analysis/trace_file.h"
#include "core/runtime_error.h"
#include "core/scale_type.h"
#include "tools/console.h"
#include "tools/sweep_tool.h"

namespace calvorn {

namespace {

template <typename Reading>
auto reading(Reading read)
{
    try {
        return read();
    } catch (const RuntimeError &error) {
        throw UnusableFile{error.detail()};
    }
}

void noteUnlessFollowed(bool followed, const QString &path, const Configuration &configuration)
{
    if (!followed)
        note(SweepTool::tr("%1: the amplitudes do not match the counts; they are read as %2.")
                 .arg(path, isLinearScale(configuration.scaleType) ? SweepTool::tr("volts") : SweepTool::tr("dB")));
}

} // namespace

void takeSweepFile(const QString &path, Configuration &configuration, SweepTable &table)
{
    noteUnlessFollowed(reading([&] { return readSweepFile(path, configuration, table); }), path, configuration);
}

Trace traceOfFile(const QString &path, const Configuration &configuration)
{
    bool followed = false;
    Trace trace = reading([&] { return readTraceFile(path, configuration, &followed); });
    noteUnlessFollowed(followed, path, configuration);
    return trace;
}

LimitLines limitsOfFile(const QString &path)
{
    return reading([&] { return readLimitFile(path); });
}

} // namespace calvorn
