// SPDX-License-Identifier: MIT
// Generator, level meter and auxiliary outputs.
#include "core/detector_calibration.h"
#include "instrument/aux_hardware.h"
#include "instrument/level_reader.h"
#include "remote/scpi_command.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <optional>

namespace calvorn {

namespace {

constexpr ScpiRange kByte{0.0, 255.0, 0.0};
constexpr double kAnyHertz = std::numeric_limits<double>::max();
constexpr int kReadings = 16;
constexpr int kReadingPatience = 15'000; // ms

void setFrequency(ScpiCall &call)
{
    SignalGenerator &generator = call.target.generator();
    const Configuration &c = call.target.configuration();
    const bool isWord = call.parameter(0).kind == ScpiParameter::Kind::Word;
    const double low = isWord ? static_cast<double>(c.ddsMinFreq) : -kAnyHertz;
    const double high = isWord ? static_cast<double>(c.ddsMaxFreq) : kAnyHertz;
    const double hertz = call.number(0, ScpiQuantity::Hertz, {low, high, static_cast<double>(c.ddsMinFreq)});
    const std::int32_t taken = generator.withinLimits(hertz);
    if (std::abs(taken - hertz) > 0.5)
        call.client.note({kScpiDataOutOfRange, "set to " + QByteArray::number(taken) + " Hz"});
    generator.setFrequency(taken);
}

void askFrequency(ScpiCall &call)
{
    call.answer(nr1(call.target.generator().frequency()));
}

void setOutput(ScpiCall &call)
{
    SignalGenerator &generator = call.target.generator();
    if (!call.boolean(0)) {
        generator.switchOff();
        return;
    }
    generator.switchOn();
    if (!generator.isOn())
        throw ScpiError{kScpiSettingsConflict, generator.fault().toUtf8()};
}

void askOutput(ScpiCall &call)
{
    call.answer(boolean(call.target.generator().isOn()));
}

// A reading in progress and its result.
struct Reading
{
    explicit Reading(RemoteTarget &target)
        : reader(target.instrument(), &target.generator())
    {
        QObject::connect(&reader, &LevelReader::taken, &reader, [this, &target](const LevelReading &taken) {
            level = dBmOfVolts(detectorOf(target.configuration()).volts(taken.count));
            end(target);
        });
        QObject::connect(&reader, &LevelReader::failed, &reader, [this, &target](const QString &reason) {
            error = ScpiError{kScpiHardwareError, reason.toUtf8()};
            end(target);
        });
        QObject::connect(&reader, &LevelReader::paused, &reader, [this, &target](LevelReader::Pause why) {
            if (why == LevelReader::Pause::None)
                return;
            error = errorOf(why);
            end(target);
        });
    }

    static ScpiError errorOf(LevelReader::Pause why)
    {
        switch (why) {
        case LevelReader::Pause::Sweep:
            return {kScpiSettingsConflict, "a sweep is running"};
        case LevelReader::Pause::NotConnected:
            return {kScpiHardwareMissing, "the hardware is not connected"};
        case LevelReader::Pause::NoLevel:
            return {kScpiSettingsConflict, "the instrument measures the phase"};
        default:
            return {kScpiSettingsConflict, "the generator is on, and a reading would move it"};
        }
    }

    void end(RemoteTarget &target)
    {
        reader.stop();
        emit target.sweepDone(); // makes a waiting session check its condition
    }

    LevelReader reader;
    std::optional<double> level; // dBm
    std::optional<ScpiError> error;
};

void askLevel(ScpiCall &call)
{
    auto reading = std::make_shared<Reading>(call.target);
    reading->reader.start(call.target.generator().frequency(), kReadings);
    call.wait(
        [reading](ScpiCall &waiting) {
            if (reading->error)
                throw *reading->error;
            if (reading->level)
                waiting.answer(nr3(*reading->level));
            return reading->level.has_value();
        },
        kReadingPatience);
}

void requireOutputs(const ScpiCall &call)
{
    AcquisitionDriver *driver = call.target.instrument().driver();
    if (!driver || !driver->outputs())
        throw ScpiError{kScpiHardwareMissing, "this interface has no auxiliary outputs"};
}

void setAux(ScpiCall &call)
{
    requireOutputs(call);
    call.target.setOutput(call.suffix(), static_cast<std::uint8_t>(call.whole(0, kByte)));
}

void askAux(ScpiCall &call)
{
    const Configuration &c = call.target.configuration();
    call.answer(nr1(call.suffix() == 2 ? c.aux2 : c.aux1));
}

void setPotentiometer(ScpiCall &call)
{
    requireOutputs(call);
    call.target.setPotentiometer(static_cast<std::uint8_t>(call.whole(0, kByte)));
}

void askPotentiometer(ScpiCall &call)
{
    call.answer(nr1(call.target.configuration().pot2));
}

} // namespace

std::vector<ScpiCommand> outputCommands()
{
    return {
        {"SOURce:FREQuency", "<frequency>|MIN|MAX|DEF", "", "frequency of the generator, Hz", setFrequency,
         askFrequency, 1},
        {"OUTPut[:STATe]", "<boolean>", "",
         "switches the generator on or off as a signal source; a sweep ends this use", setOutput, askOutput, 1},
        {"MEASure:LEVel", nullptr, "", "level at the detector, dBm", nullptr, askLevel, 0, 0, false, true},
        {"OUTPut:AUX<1|2>", "<0 to 255>", "", "byte of an auxiliary output", setAux, askAux, 1},
        {"OUTPut:POTentiometer", "<0 to 255>", "", "position of the potentiometer", setPotentiometer, askPotentiometer,
         1},
    };
}

} // namespace calvorn
