// SPDX-License-Identifier: MIT
// Trace data, display and markers.
#include "analysis/shown_curve.h"
#include "core/detector_law.h"
#include "core/scale_type.h"
#include "remote/command_traces.h"
#include "remote/scpi_command.h"
#include "remote/scpi_pattern.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace calvorn {

namespace {

constexpr std::array<const char *, 3> kUnits{"V", "DB", "DBM"};
constexpr double kHeadroomDb = 10.0;
// The same limits as in the boxes beside the graph.
constexpr ScpiRange kTopVolts{1e-3, 10.0, 2.5};
constexpr ScpiRange kBottomDb{-90.0, -1.0, -60.0};
constexpr ScpiRange kProminence{0.0, 200.0, 3.0};

void askData(ScpiCall &call)
{
    call.answer(amplitudesOf(call, traceOf(call, 0)));
}

void askFrequencies(ScpiCall &call)
{
    const Trace &trace = traceOf(call, 0);
    std::vector<double> hertz(trace.volts.size());
    for (std::size_t i = 0; i < hertz.size(); ++i)
        hertz[i] = trace.frequencyAt(i);
    call.answer(hertz);
}

void askCounts(ScpiCall &call)
{
    const SweepTable &table = call.target.instrument().table();
    if (!table.hasSweep())
        throw ScpiError{kScpiDataCorruptOrStale, "there is no sweep yet"};
    call.answer(table.numbers(SweepTable::SampleColumn));
}

void setUnit(ScpiCall &call)
{
    call.client.unit = static_cast<ScpiClient::Unit>(call.choice(0, kUnits));
}

void askUnit(ScpiCall &call)
{
    call.answer(kUnits[static_cast<std::size_t>(call.client.unit)]);
}

// --- stored traces ---

int slotOf(const ScpiCall &call)
{
    return call.whole(0, {1.0, static_cast<double>(TraceSet::kStored), 1.0}) - 1;
}

void storeTrace(ScpiCall &call)
{
    const int slot = slotOf(call);
    const TraceSet::Source source = sourceOf(call, 1);
    bool isThere = false;
    call.target.editTraces([&](TraceSet &traces) {
        isThere = traces.store(slot, source);
        if (isThere && traces.stored(slot).trace.name.isEmpty())
            traces.rename(slot, QStringLiteral("Trace %1").arg(slot + 1));
    });
    if (!isThere)
        throw ScpiError{kScpiDataCorruptOrStale, "this trace does not exist yet"};
}

void deleteTrace(ScpiCall &call)
{
    const int slot = slotOf(call);
    call.target.editTraces([slot](TraceSet &traces) { traces.clear(slot); });
}

void askCatalogue(ScpiCall &call)
{
    QByteArrayList slots_;
    for (int slot = 0; slot < TraceSet::kStored; ++slot) {
        const Trace &trace = call.target.traces().stored(slot).trace;
        if (!trace.isEmpty())
            slots_.append(nr1(slot + 1) + ',' + quoted(trace.name.toUtf8()));
    }
    call.answer(slots_.isEmpty() ? nr1(0) : slots_.join(','));
}

void askTrace(ScpiCall &call)
{
    const Trace &trace = call.target.traces().stored(slotOf(call)).trace;
    if (trace.isEmpty())
        throw ScpiError{kScpiDataCorruptOrStale, "no trace is stored there"};
    call.answer(amplitudesOf(call, trace));
}

// --- display ---

void setScale(ScpiCall &call)
{
    std::array<const char *, kScales> words{};
    std::ranges::transform(kScaleTypes, words.begin(), &ScaleType::word);
    call.target.setScale(static_cast<std::int16_t>(call.choice(0, words)));
}

std::int16_t scaleOf(const ScpiCall &call)
{
    const std::int16_t scale = call.target.configuration().scaleType;
    return isScale(scale) ? scale : kScaleLinear;
}

void askScale(ScpiCall &call)
{
    call.answer(shortFormOf(scaleType(scaleOf(call)).word));
}

// The top of a dB scale is 0 or 10 dB; each scale without headroom has a counterpart with headroom.
void setLevel(ScpiCall &call)
{
    const std::int16_t scale = scaleOf(call);
    if (isLinearScale(scale)) {
        call.target.setTopOfLinearScale(call.number(0, ScpiQuantity::Volts, kTopVolts));
        return;
    }
    const double top = call.number(0, ScpiQuantity::Decibels, {0.0, kHeadroomDb, 0.0});
    if (top != 0.0 && top != kHeadroomDb)
        throw ScpiError{kScpiIllegalParameterValue, "0 or 10 dB"};
    const bool hasHeadroom = top > 0.0;
    if (hasHeadroom != scaleHasHeadroom(scale))
        call.target.setScale(static_cast<std::int16_t>(hasHeadroom ? scale + 1 : scale - 1));
}

void askLevel(ScpiCall &call)
{
    const std::int16_t scale = scaleOf(call);
    if (isLinearScale(scale))
        call.answer(nr3(call.target.configuration().maxScaleVolt));
    else
        call.answer(nr3(scaleHasHeadroom(scale) ? kHeadroomDb : 0.0));
}

void setBottom(ScpiCall &call)
{
    call.target.setBottomOfDbScales(static_cast<int>(std::lround(call.number(0, ScpiQuantity::Decibels, kBottomDb))));
}

void askBottom(ScpiCall &call)
{
    call.answer(nr1(call.target.configuration().maxScaleDb));
}

// --- markers ---

GraphItem markerOf(const ScpiCall &call)
{
    return call.suffix() == 2 ? GraphItem::M2 : GraphItem::M1;
}

void setMarker(ScpiCall &call)
{
    const Configuration &c = call.target.configuration();
    const double low = std::min(c.startFreq, c.stopFreq);
    const double high = std::max(c.startFreq, c.stopFreq);
    const double hertz = call.number(0, ScpiQuantity::Hertz, {low, high, (low + high) / 2.0});
    call.target.placeMarker(markerOf(call), hertz);
}

void askMarkerX(ScpiCall &call)
{
    const SweepTable &table = call.target.instrument().table();
    call.answer(nr3(table.number(call.target.markers().row(markerOf(call)), SweepTable::FrequencyColumn)));
}

void askMarkerY(ScpiCall &call)
{
    const std::vector<double> amplitudes = amplitudesOf(call, liveTrace(call));
    const auto row = static_cast<std::size_t>(call.target.markers().row(markerOf(call)) - 1);
    call.answer(nr3(row < amplitudes.size() ? amplitudes[row] : std::nan("")));
}

void placeOn(ScpiCall &call, const std::optional<Plateau> &plateau, const Response &response)
{
    if (!plateau)
        throw ScpiError{kScpiDataCorruptOrStale, "there is no sweep yet"};
    call.target.placeMarker(markerOf(call), middleOf(response.frequencies, *plateau));
}

void markHighest(ScpiCall &call)
{
    const Response response = responseOf(call, TraceSet::Source::Live);
    placeOn(call, highestPlateau(response.frequencies, response.decibels), response);
}

void markLowest(ScpiCall &call)
{
    const Response response = responseOf(call, TraceSet::Source::Live);
    placeOn(call, lowestPlateau(response.frequencies, response.decibels), response);
}

void markNext(ScpiCall &call)
{
    const int direction = call.count() > 0 && call.choice(0, {"RIGHt", "LEFT"}) == 1 ? -1 : 1;
    const double prominence = call.count() > 1 ? call.number(1, ScpiQuantity::Decibels, kProminence) : kProminence.def;
    const Response response = responseOf(call, TraceSet::Source::Live);
    const SweepTable &table = call.target.instrument().table();
    const double from = table.number(call.target.markers().row(markerOf(call)), SweepTable::FrequencyColumn);
    const auto place = std::ranges::lower_bound(response.frequencies, from);
    const auto index =
        std::min(static_cast<std::size_t>(place - response.frequencies.begin()), response.frequencies.size() - 1);
    const std::optional<std::size_t> next = nextPeak(response, index, direction, prominence);
    if (!next)
        throw ScpiError{kScpiExecutionError, "there is no further peak"};
    call.target.placeMarker(markerOf(call), response.frequencies[*next]);
}

} // namespace

std::vector<ScpiCommand> traceCommands()
{
    const char *trace = "[LIVE|AVERage|MAXHold|MINHold|REFerence|1 to 4]";
    const char *slot = "<1 to 4>";
    return {
        {"CALCulate:DATA", nullptr, trace, "amplitudes of a trace in the unit of CALCulate:UNIT", nullptr, askData, 0,
         1},
        {"CALCulate:FREQuency", nullptr, trace, "frequencies of a trace, Hz", nullptr, askFrequencies, 0, 1},
        {"CALCulate:COUNts", nullptr, "", "the detector's counts of the last sweep", nullptr, askCounts},
        {"CALCulate:UNIT", "V|DB|DBM", "",
         "unit of amplitudes for this client; for relative curves, V is a ratio and DB a difference", setUnit, askUnit,
         1, 0, true},
        {"TRACe:STORe", "<1 to 4>[,LIVE|AVERage|MAXHold|MINHold]", nullptr, "stores a trace", storeTrace, nullptr, 2},
        {"TRACe:DELete", slot, nullptr, "removes a stored trace", deleteTrace, nullptr, 1},
        {"TRACe:CATalog", nullptr, "", "numbers and names of the stored traces; 0: none", nullptr, askCatalogue},
        {"TRACe:DATA", nullptr, slot, "amplitudes of a stored trace", nullptr, askTrace, 0, 1},
        {"DISPlay:SCALe", "LINear|DBV|DBVHead|DB10V|DB10VHead", "",
         "volts, or dB referred to 1 V or 10 V, each up to 0 dB or with headroom up to +10 dB", setScale, askScale, 1},
        {"DISPlay:RLEVel", "<level>|MIN|MAX|DEF", "", "top of the scale: volts, or 0 or 10 dB", setLevel, askLevel, 1},
        {"DISPlay:BOTTom", "<level>|MIN|MAX|DEF", "", "bottom of the scales in dB", setBottom, askBottom, 1},
        {"CALCulate:MARKer<1|2>:X", "<frequency>|MIN|MAX|DEF", "", "moves M1 or M2 to this frequency, Hz", setMarker,
         askMarkerX, 1},
        {"CALCulate:MARKer<1|2>:Y", nullptr, "", "amplitude at M1 or M2", nullptr, askMarkerY},
        {"CALCulate:MARKer<1|2>:MAXimum", "", nullptr, "moves the marker to the highest sample", markHighest, nullptr},
        {"CALCulate:MARKer<1|2>:MINimum", "", nullptr, "moves the marker to the lowest sample", markLowest, nullptr},
        {"CALCulate:MARKer<1|2>:NEXT", "[RIGHt|LEFT[,<dB>]]", nullptr,
         "moves the marker to the next peak that rises by at least this many dB (3 by default) above its surroundings",
         markNext, nullptr, 2},
    };
}

} // namespace calvorn
