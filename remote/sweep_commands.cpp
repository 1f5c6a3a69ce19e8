// SPDX-License-Identifier: MIT
// Range, sweep, average and reference.
#include "instrument/interface_kind.h"
#include "remote/scpi_command.h"
#include "remote/scpi_pattern.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace calvorn {

namespace {

constexpr double kAnyHertz = std::numeric_limits<double>::max();

// Indexed by SweepSpeed.
constexpr std::array<const char *, 3> kSpeeds{"STANdard", "SLOW", "VSLow"};

double lowest(const ScpiCall &call)
{
    return call.target.configuration().ddsMinFreq;
}

double highest(const ScpiCall &call)
{
    return std::max(lowest(call), static_cast<double>(call.target.configuration().ddsMaxFreq));
}

// Clamps a frequency to the limits; queues an error if this changes it.
double limited(ScpiCall &call, double hertz)
{
    const double taken = std::clamp(hertz, lowest(call), highest(call));
    if (taken != hertz)
        call.client.note({kScpiDataOutOfRange, "set to " + QByteArray::number(taken, 'f', 0) + " Hz"});
    return taken;
}

double hertzOf(const ScpiCall &call, double least, double most, double standard)
{
    // Accept any number, because the caller corrects it; MIN, MAX and DEF mean "least", "most" and "standard".
    const ScpiParameter &parameter = call.parameter(0);
    const bool isWord = parameter.kind == ScpiParameter::Kind::Word;
    return call.number(0, ScpiQuantity::Hertz,
                       isWord ? ScpiRange{least, most, standard} : ScpiRange{-kAnyHertz, kAnyHertz, standard});
}

// --- range ---

void setStart(ScpiCall &call)
{
    const double hertz = limited(call, hertzOf(call, lowest(call), highest(call), lowest(call)));
    call.target.setRange(hertz, call.target.configuration().stopFreq);
}

void setStop(ScpiCall &call)
{
    const double hertz = limited(call, hertzOf(call, lowest(call), highest(call), highest(call)));
    call.target.setRange(call.target.configuration().startFreq, hertz);
}

double centre(const ScpiCall &call)
{
    const Configuration &c = call.target.configuration();
    return (static_cast<double>(c.startFreq) + static_cast<double>(c.stopFreq)) / 2.0;
}

// Sets the range around the centre; the limits may reduce the span, but it keeps its sign.
void setAround(ScpiCall &call, double middle, double span)
{
    const double widest = 2.0 * std::min(middle - lowest(call), highest(call) - middle);
    if (std::abs(span) > widest)
        call.client.note({kScpiDataOutOfRange, "span set to " + QByteArray::number(widest, 'f', 0) + " Hz"});
    const double half = std::copysign(std::min(std::abs(span), widest) / 2.0, span);
    call.target.setRange(middle - half, middle + half);
}

double span(const ScpiCall &call)
{
    const Configuration &c = call.target.configuration();
    return static_cast<double>(c.stopFreq) - static_cast<double>(c.startFreq);
}

void setCentre(ScpiCall &call)
{
    const double standard = (lowest(call) + highest(call)) / 2.0;
    setAround(call, limited(call, hertzOf(call, lowest(call), highest(call), standard)), span(call));
}

void setSpan(ScpiCall &call)
{
    const double widest = highest(call) - lowest(call);
    setAround(call, centre(call), hertzOf(call, kMinSweepRange, widest, widest));
}

// Responds with the value or, if the parameter is MIN, MAX or DEF, with the frequency that it stands for.
void answerHertz(ScpiCall &call, double value, double least, double most, double standard)
{
    call.answer(nr1(std::llround(call.count() > 0 ? hertzOf(call, least, most, standard) : value)));
}

void askStart(ScpiCall &call)
{
    answerHertz(call, call.target.configuration().startFreq, lowest(call), highest(call), lowest(call));
}

void askStop(ScpiCall &call)
{
    answerHertz(call, call.target.configuration().stopFreq, lowest(call), highest(call), highest(call));
}

void askCentre(ScpiCall &call)
{
    answerHertz(call, centre(call), lowest(call), highest(call), (lowest(call) + highest(call)) / 2.0);
}

void askSpan(ScpiCall &call)
{
    const double widest = highest(call) - lowest(call);
    answerHertz(call, span(call), kMinSweepRange, widest, widest);
}

void askStep(ScpiCall &call)
{
    call.answer(nr1(call.target.configuration().stepFreq));
}

// --- sweep ---

void askPoints(ScpiCall &call)
{
    call.answer(nr1(kSweepPoints));
}

void requireSpeeds(const ScpiCall &call)
{
    const InterfaceKind *kind = interfaceKind(call.target.configuration().interfaceType);
    if (!kind || !kind->hasSpeeds)
        throw ScpiError{kScpiSettingsConflict, "this interface has only one speed"};
}

void setSpeed(ScpiCall &call)
{
    requireSpeeds(call);
    call.target.setSpeed(static_cast<std::int16_t>(call.choice(0, kSpeeds)));
}

void askSpeed(ScpiCall &call)
{
    const auto speed = static_cast<std::size_t>(call.target.configuration().sweepSpeed);
    call.answer(shortFormOf(kSpeeds[std::min(speed, kSpeeds.size() - 1)]));
}

void askTime(ScpiCall &call)
{
    call.answer(nr3(call.target.sweepTime()));
}

void askCount(ScpiCall &call)
{
    call.answer(nr1(call.target.sweepCount()));
}

void initiate(ScpiCall &call)
{
    if (call.target.instrument().isSweeping())
        throw ScpiError{kScpiInitIgnored, {}};
    call.target.start(SweepRun::Once);
}

bool isContinuous(const ScpiCall &call)
{
    const Instrument &instrument = call.target.instrument();
    return instrument.isSweeping() && instrument.run() == SweepRun::UntilStopped;
}

void setContinuous(ScpiCall &call)
{
    const bool wanted = call.boolean(0);
    if (wanted == isContinuous(call))
        return;
    if (!wanted)
        call.target.instrument().endAfterNextVector();
    else if (call.target.instrument().isSweeping())
        throw ScpiError{kScpiInitIgnored, "a single sweep is running"};
    else
        call.target.start(SweepRun::UntilStopped);
}

void askContinuous(ScpiCall &call)
{
    call.answer(boolean(isContinuous(call)));
}

void abortSweep(ScpiCall &call)
{
    if (!call.target.instrument().isSweeping())
        return;
    call.target.stop();
    call.wait([](ScpiCall &waiting) { return !waiting.target.instrument().isSweeping(); }, kStopPatience);
}

// --- average and holds ---

template <TraceSet::Source source>
void switchHold(ScpiCall &call)
{
    const bool on = call.boolean(0);
    call.target.editTraces([on](TraceSet &traces) { traces.switchOn(source, on); });
}

template <TraceSet::Source source>
void askHold(ScpiCall &call)
{
    call.answer(boolean(call.target.traces().isOn(source)));
}

constexpr ScpiRange kAveraged{static_cast<double>(TraceSet::kFewestAveraged),
                              static_cast<double>(TraceSet::kMostAveraged), 10.0};

void setAverageCount(ScpiCall &call)
{
    const int sweeps = call.whole(0, kAveraged);
    call.target.editTraces([sweeps](TraceSet &traces) { traces.setAverageOver(sweeps); });
}

void askAverageCount(ScpiCall &call)
{
    call.answer(nr1(call.count() > 0 ? call.whole(0, kAveraged) : call.target.traces().averageOver()));
}

void clearAverage(ScpiCall &call)
{
    call.target.editTraces([](TraceSet &traces) { traces.restart(); });
}

// --- reference ---

void collect(ScpiCall &call)
{
    call.choice(0, {"THRough"});
    bool isThere = false;
    call.target.editTraces([&isThere](TraceSet &traces) { isThere = traces.normalise(true); });
    if (!isThere)
        throw ScpiError{kScpiDataCorruptOrStale, "there is no sweep yet"};
}

void setCorrection(ScpiCall &call)
{
    const bool on = call.boolean(0);
    if (on == call.target.traces().isNormalised())
        return;
    const Trace reference = call.target.traces().reference();
    if (on && reference.isEmpty())
        throw ScpiError{kScpiSettingsConflict, "there is no reference: CORRection:COLLect THRough"};
    call.target.editTraces([&](TraceSet &traces) {
        if (on)
            traces.setReference(reference);
        else
            traces.normalise(false);
    });
}

void askCorrection(ScpiCall &call)
{
    call.answer(boolean(call.target.traces().isNormalised()));
}

} // namespace

std::vector<ScpiCommand> sweepCommands()
{
    const char *hertz = "<frequency>|MIN|MAX|DEF";
    const char *which = "[MIN|MAX|DEF]";
    return {
        {"[SENSe:]FREQuency:STARt", hertz, which, "start frequency, Hz", setStart, askStart, 1, 1},
        {"[SENSe:]FREQuency:STOP", hertz, which, "stop frequency, Hz", setStop, askStop, 1, 1},
        {"[SENSe:]FREQuency:CENTer", hertz, which, "centre of the sweep, Hz; keeps the span if the limits allow it",
         setCentre, askCentre, 1, 1},
        {"[SENSe:]FREQuency:SPAN", hertz, which,
         "span of the sweep, Hz, around the same centre; negative for a descending sweep", setSpan, askSpan, 1, 1},
        {"[SENSe:]FREQuency:STEP", nullptr, "", "spacing between adjacent samples, Hz", nullptr, askStep},
        {"[SENSe:]SWEep:POINts", nullptr, "", "samples in a sweep: 400", nullptr, askPoints},
        {"[SENSe:]SWEep:SPEed", "STANdard|SLOW|VSLow", "", "settling time at each frequency; parallel port only",
         setSpeed, askSpeed, 1},
        {"[SENSe:]SWEep:TIME", nullptr, "", "seconds between the last two sweeps", nullptr, askTime},
        {"[SENSe:]SWEep:COUNt", nullptr, "", "sweeps since the last start", nullptr, askCount},
        {"INITiate[:IMMediate]", "", nullptr, "starts a single sweep; *OPC? reports its end", initiate, nullptr},
        {"INITiate:CONTinuous", "<boolean>", "", "repeats sweeps; when switched off, completes the current sweep",
         setContinuous, askContinuous, 1},
        {"ABORt", "", nullptr, "stops the sweep and waits until the hardware has confirmed it", abortSweep, nullptr},
        {"[SENSe:]AVERage[:STATe]", "<boolean>", "", "averages the sweeps", switchHold<TraceSet::Source::Average>,
         askHold<TraceSet::Source::Average>, 1},
        {"[SENSe:]AVERage:COUNt", "<2 to 999>|MIN|MAX|DEF", which, "sweeps in the average", setAverageCount,
         askAverageCount, 1, 1},
        {"[SENSe:]AVERage:CLEar", "", nullptr, "restarts average and holds", clearAverage, nullptr},
        {"[SENSe:]HOLD:MAXimum", "<boolean>", "", "keeps the highest amplitude at each frequency",
         switchHold<TraceSet::Source::MaxHold>, askHold<TraceSet::Source::MaxHold>, 1},
        {"[SENSe:]HOLD:MINimum", "<boolean>", "", "keeps the lowest amplitude at each frequency",
         switchHold<TraceSet::Source::MinHold>, askHold<TraceSet::Source::MinHold>, 1},
        {"[SENSe:]CORRection:COLLect[:ACQuire]", "THRough", nullptr,
         "uses the last sweep as the reference and shows the curves relative to it", collect, nullptr, 1},
        {"[SENSe:]CORRection[:STATe]", "<boolean>", "", "shows the curves relative to the reference", setCorrection,
         askCorrection, 1},
    };
}

} // namespace calvorn
