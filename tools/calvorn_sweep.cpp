// SPDX-License-Identifier: MIT
// calvorn-sweep: sweeps without a window.
#include "tools/console.h"
#include "tools/curve_picture.h"
#include "tools/interruption.h"
#include "tools/listening.h"
#include "tools/output.h"
#include "tools/report.h"
#include "tools/single_sweep.h"
#include "tools/sweep_file.h"
#include "tools/sweep_options.h"
#include "tools/sweep_tool.h"

#include "core/runtime_error.h"
#include "data/sweep_csv.h"
#include "platform/process_guard.h"
#include "translations/language.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QLoggingCategory>

#include <algorithm>
#include <cmath>

namespace {

using namespace calvorn;

const QString kStandardOutput = QStringLiteral("-");

int fail(int code, const QString &sentence)
{
    note(QStringLiteral("calvorn-sweep: ") + sentence);
    return code;
}

// Returns an error message that names the scale and reference required by limits in this unit.
QString conditionOf(LimitUnit unit, const QString &path)
{
    switch (unit) {
    case LimitUnit::Volt:
        return SweepTool::tr("The limits in %1 are in volts: they need --scale linear, and no --reference.").arg(path);
    case LimitUnit::Decibel:
        return SweepTool::tr("The limits in %1 are in dB: they need a --scale in dB, and no --reference.").arg(path);
    case LimitUnit::RelativeDecibel:
        break;
    }
    return SweepTool::tr("The limits in %1 are in relative dB: they need a --scale in dB, and a --reference.")
        .arg(path);
}

// Called before the measurement. Throws UnusableFile if a file cannot be used.
Companions readCompanions(const ToolRequest &request, const Configuration &configuration)
{
    Companions companions;
    if (!request.reference.isEmpty())
        companions.reference = traceOfFile(request.reference, configuration);
    for (const QString &path : request.traces)
        companions.traces.push_back(traceOfFile(path, configuration));
    if (request.limits.isEmpty())
        return companions;
    companions.limits = limitsOfFile(request.limits);
    const bool isRelative = !companions.reference.isEmpty();
    if (shownUnit(configuration.scaleType, isRelative) != companions.limits->unit)
        throw UnusableFile{conditionOf(companions.limits->unit, request.limits)};
    return companions;
}

// Returns false if the reference has no frequency in common with the curve.
bool noteGaps(const ShownCurve &curve)
{
    if (!curve.isRelative())
        return true;
    const RelativeTrace relative = relativeTo(curve.trace(), curve.reference());
    if (relative.isOutsideReference && !relative.isReferenceBelowFloor &&
        std::ranges::all_of(relative.ratios, [](double ratio) { return std::isnan(ratio); }))
        return false;
    if (relative.isOutsideReference)
        note(SweepTool::tr("The reference does not cover the whole range: there are gaps."));
    if (relative.isReferenceBelowFloor)
        note(SweepTool::tr("The reference is partly below the detector's floor: there are gaps."));
    return true;
}

// Prints the names of the written files to standard output, or to standard error if standard output carries data.
void printNames(const ToolRequest &request)
{
    for (const QString &path : {request.output, request.picture}) {
        if (path.isEmpty() || isDescriptor(path))
            continue;
        const QString name = QFileInfo(path).absoluteFilePath();
        if (isStandardOutput(request.output) || request.isJson)
            note(name);
        else
            writeResult(kStandardOutput, (name + u'\n').toLocal8Bit());
    }
}

// Prints response, results and verdict, as requested.
void print(const ToolRequest &request, const SingleSweep &sweep, const ShownCurve &curve,
           const std::optional<LimitVerdict> &verdict)
{
    if (request.isJson) {
        const ResultKind kind = request.results.value_or(ResultKind::Filter);
        const Results results = resultsOf(kind, curve.response(), request.fixtureOhms);
        writeResult(kStandardOutput, reportAsJson(kind, results, curve, verdict));
        return;
    }
    QStringList parts;
    if (request.hasResponse())
        parts.append(responseText(sweep, curve));
    if (request.results)
        parts.append(resultsText(resultsOf(*request.results, curve.response(), request.fixtureOhms)));
    if (verdict)
        parts.append(verdictText(*verdict, curve));
    if (!parts.isEmpty())
        writeResult(kStandardOutput, parts.join(u'\n').toLocal8Bit());
}

int deliver(const SingleSweep &sweep, const ToolRequest &request, const Companions &companions)
{
    const ShownCurve curve(sweep.trace(), companions.reference, sweep.configuration().scaleType, sweep.averaged());
    const bool hasValues = noteGaps(curve);
    try {
        if (!request.output.isEmpty())
            writeResult(request.output, sweepAsCsv(sweep.table()));
        if (!request.picture.isEmpty())
            savePicture(request.picture, sweep, curve, companions);
        std::optional<LimitVerdict> verdict;
        if (companions.limits)
            verdict = curve.judgedBy(*companions.limits);
        const bool isUnjudged = verdict && !verdict->hasVerdict();
        if (hasValues && !isUnjudged)
            print(request, sweep, curve, verdict);
        printNames(request);
        if (!hasValues)
            return fail(
                kFileNotUsable,
                SweepTool::tr("The reference in %1 does not cover any point of the sweep.").arg(request.reference));
        if (isUnjudged)
            return fail(kFileNotUsable,
                        SweepTool::tr("The limits in %1 do not cover any point of the sweep.").arg(request.limits));
        return verdict && !verdict->hasPassed() ? kLimitsBroken : kDone;
    } catch (const RuntimeError &error) {
        const int signal = interruption();
        return fail(signal != 0 ? static_cast<ExitCode>(kSignalled + signal) : kFileNotWritable, error.message());
    }
}

int run(const ToolRequest &request, SingleSweep &sweep)
{
    try {
        if (const int code = sweep.prepare(); code != kDone)
            return fail(code, sweep.sentence());
        if (request.port)
            return listenForClients(sweep, *request.port);
        const Companions companions = readCompanions(request, sweep.configuration());
        const int code = sweep.run();
        return code == kDone ? deliver(sweep, request, companions) : fail(code, sweep.sentence());
    } catch (const UnusableFile &file) {
        return fail(kFileNotUsable, file.sentence);
    }
}

} // namespace

int main(int argc, char **argv)
{
    keepStandardDescriptors();
    holdStopBack();
    watchForInterruption();
    // A closed pipe is reported as a failed write.
    std::signal(SIGPIPE, SIG_IGN);
    // Standard error is for the user: suppress Qt's warnings about the missing desktop.
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
    // Pictures need fonts but no display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    const Language language(QLocale::system());
    QGuiApplication::setApplicationName(QStringLiteral("calvorn-sweep"));
    QGuiApplication::setApplicationVersion(QStringLiteral(CALVORN_VERSION));

    SweepOptions options;
    ToolRequest request;
    const QString wrong = options.read(QCoreApplication::arguments(), request);
    if (!wrong.isEmpty())
        return fail(kBadArguments, wrong);

    ConsoleClock clock;
    SingleSweep sweep(programFolders(QCoreApplication::applicationDirPath()), request.sweep, clock);
    const QString clash = options.clashWithSettings(sweep.settingsFile());
    if (!clash.isEmpty())
        return fail(kBadArguments, clash);
    endAtOnce(run(request, sweep));
}
