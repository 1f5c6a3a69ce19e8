// SPDX-License-Identifier: MIT
// Results of the last sweep or the average, and limits.
#include "analysis/results.h"
#include "analysis/shown_curve.h"
#include "remote/command_traces.h"
#include "remote/scpi_command.h"

#include <QFileInfo>

#include <cmath>

namespace calvorn {

namespace {

constexpr ScpiRange kOhms{0.1, 10'000.0, kDefaultFixtureOhms};
constexpr ScpiRange kBelowPeak{0.1, 120.0, 3.0};
constexpr double kMinusThree = 3.0; // means half the power

ResultKind kindOf(const ScpiCall &call)
{
    return static_cast<ResultKind>(call.choice(0, {"FILTer", "NOTCh", "CRYStal", "MATCh"}));
}

// Returns the response of the live or the average trace.
Response measured(const ScpiCall &call, int index)
{
    const bool isAverage = index < call.count() && call.choice(index, {"LIVE", "AVERage"}) == 1;
    return responseOf(call, isAverage ? TraceSet::Source::Average : TraceSet::Source::Live);
}

void askResults(ScpiCall &call)
{
    const ResultKind kind = kindOf(call);
    const Response response = measured(call, 1);
    const double ohms = call.count() > 2 ? call.number(2, ScpiQuantity::Plain, kOhms) : kDefaultFixtureOhms;
    QByteArrayList values;
    for (const Result &result : resultsOf(kind, response, ohms))
        values.append(nr3(result.value.value_or(std::nan(""))));
    call.answer(values.join(','));
}

void askKeys(ScpiCall &call)
{
    QByteArrayList keys;
    for (const char *key : resultKeys(kindOf(call)))
        keys.append(quoted(key));
    call.answer(keys.join(','));
}

void askBandwidth(ScpiCall &call)
{
    const double below = call.number(0, ScpiQuantity::Decibels, kBelowPeak);
    const Response response = measured(call, 1);
    const Crossings ends = crossings(response, below == kMinusThree ? kHalfPowerDb : below);
    const bool isThere = ends.lower.frequency && ends.upper.frequency;
    call.answer(nr3(isThere ? *ends.upper.frequency - *ends.lower.frequency : std::nan("")));
}

// --- limits ---

void loadLimits(ScpiCall &call)
{
    const QString path = call.file(0);
    if (!QFileInfo::exists(path))
        throw ScpiError{kScpiFileNameNotFound, path.toUtf8()};
    call.target.setLimits(readLimitFile(path));
}

void setLimitsOn(ScpiCall &call)
{
    const bool on = call.boolean(0);
    if (on && call.target.limits().isEmpty())
        throw ScpiError{kScpiSettingsConflict, "there are no limits: CALCulate:LIMit:LOAD"};
    call.target.setLimitsOn(on);
}

void askLimitsOn(ScpiCall &call)
{
    call.answer(boolean(call.target.areLimitsOn()));
}

LimitVerdict verdictOf(const ScpiCall &call)
{
    const LimitLines &limits = call.target.limits();
    if (limits.isEmpty())
        throw ScpiError{kScpiSettingsConflict, "there are no limits: CALCulate:LIMit:LOAD"};
    const TraceSet &traces = call.target.traces();
    const std::int16_t scale = call.target.configuration().scaleType;
    if (shownUnit(scale, traces.isNormalised()) != limits.unit)
        throw ScpiError{kScpiSettingsConflict, "the limits and the curve have different units"};
    const Trace &trace = liveTrace(call);
    const Trace reference = traces.isNormalised() ? traces.reference() : Trace();
    const LimitVerdict verdict = judgeTrace(limits, trace, shownAmplitudes(trace, reference, scale));
    if (!verdict.hasVerdict())
        throw ScpiError{kScpiSettingsConflict, "the limits cover no sample of the sweep"};
    return verdict;
}

void askFail(ScpiCall &call)
{
    call.answer(boolean(!verdictOf(call).hasPassed()));
}

void askReport(ScpiCall &call)
{
    const LimitVerdict verdict = verdictOf(call);
    QByteArrayList parts{nr1(static_cast<qint64>(verdict.judged)), nr1(static_cast<qint64>(verdict.outside))};
    for (const double number : {verdict.frequency, verdict.value, verdict.limit, verdict.margin})
        parts.append(nr3(number));
    parts.append(verdict.isUpper ? "UPP" : "LOW");
    call.answer(parts.join(','));
}

} // namespace

std::vector<ScpiCommand> resultCommands()
{
    const char *kind = "FILTer|NOTCh|CRYStal|MATCh";
    return {
        {"CALCulate:RESult", nullptr, "FILTer|NOTCh|CRYStal|MATCh[,LIVE|AVERage[,<ohms>]]",
         "results for a kind of device, in the order of CALCulate:RESult:KEYS?; 9.91E+37 for a missing value. Ohms (50 "
         "by default): source and load resistance of a crystal fixture.",
         nullptr, askResults, 0, 3},
        {"CALCulate:RESult:KEYS", nullptr, kind, "names of the results for a kind of device", nullptr, askKeys, 0, 1},
        {"CALCulate:BWIDth", nullptr, "<dB>[,LIVE|AVERage]",
         "bandwidth at this many dB below the peak, Hz; 3 means half the power", nullptr, askBandwidth, 0, 2},
        {"CALCulate:LIMit:LOAD", "<file>", nullptr, "reads limit lines from a file", loadLimits, nullptr, 1},
        {"CALCulate:LIMit:STATe", "<boolean>", "", "shows the limits and checks each sweep", setLimitsOn, askLimitsOn,
         1},
        {"CALCulate:LIMit:FAIL", nullptr, "", "1: the last sweep is outside its limits", nullptr, askFail},
        {"CALCulate:LIMit:REPort", nullptr, "",
         "samples checked, samples outside; for the worst sample: frequency, value, limit, margin (below 0: outside), "
         "UPP or LOW",
         nullptr, askReport},
    };
}

} // namespace calvorn
