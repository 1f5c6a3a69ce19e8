// SPDX-License-Identifier: MIT
// The IEEE 488.2 common commands and the status system.
#include "core/scale_type.h"
#include "protocol/sweep_speed.h"
#include "remote/scpi_command.h"

#include <QCoreApplication>

#include <array>

namespace calvorn {

namespace {

constexpr ScpiRange kRegister{0.0, 255.0, 0.0};
constexpr ScpiRange kWideRegister{0.0, 32767.0, 0.0};
constexpr int kNoPatience = 0; // no time limit

void askIdentity(ScpiCall &call)
{
    call.answer("Brenik,Calvorn,0," + QCoreApplication::applicationVersion().toLatin1());
}

// Leaves the hardware's outputs unchanged, because they may control relays. Does not modify files.
void reset(ScpiCall &call)
{
    RemoteTarget &target = call.target;
    call.client.unit = ScpiClient::Unit::Decibel;
    call.client.isBinary = false;
    const auto setUp = [](ScpiCall &idle) {
        RemoteTarget &t = idle.target;
        if (t.generator().isOn())
            t.generator().switchOff();
        t.editTraces([](TraceSet &traces) {
            for (const auto source : {TraceSet::Source::Average, TraceSet::Source::MaxHold, TraceSet::Source::MinHold})
                traces.switchOn(source, false);
            traces.setAverageOver(10);
            traces.normalise(false);
        });
        t.setLimitsOn(false);
        t.setScale(kScaleLinear);
        t.setSpeed(numberOf(SweepSpeed::Standard));
        t.setRange(t.configuration().ddsMinFreq, t.configuration().ddsMaxFreq);
    };
    if (!target.instrument().isSweeping()) {
        setUp(call);
        return;
    }
    target.stop();
    call.wait(
        [setUp](ScpiCall &waiting) {
            if (waiting.target.instrument().isSweeping())
                return false;
            setUp(waiting);
            return true;
        },
        kStopPatience);
}

void clearStatus(ScpiCall &call)
{
    call.client.errors.clear();
    call.client.status.clear();
    call.client.completes = false;
}

void setEventEnable(ScpiCall &call)
{
    call.client.status.setEsrEnable(call.whole(0, kRegister));
}

void askEventEnable(ScpiCall &call)
{
    call.answer(nr1(call.client.status.esrEnable()));
}

void askEvents(ScpiCall &call)
{
    call.answer(nr1(call.client.status.takeEsr()));
}

void noteCompletion(ScpiCall &call)
{
    if (call.target.isSweepDone())
        call.client.status.raise(kEsrOperationComplete);
    else
        call.client.completes = true;
}

void askCompletion(ScpiCall &call)
{
    call.answer(nr1(1));
    call.wait([](ScpiCall &waiting) { return waiting.target.isSweepDone(); }, kNoPatience);
}

void waitToContinue(ScpiCall &call)
{
    call.wait([](ScpiCall &waiting) { return waiting.target.isSweepDone(); }, kNoPatience);
}

void setServiceEnable(ScpiCall &call)
{
    call.client.status.setServiceEnable(call.whole(0, kRegister));
}

void askServiceEnable(ScpiCall &call)
{
    call.answer(nr1(call.client.status.serviceEnable()));
}

// Bit 4 (message available) is always 0, because responses are sent immediately.
void askStatusByte(ScpiCall &call)
{
    call.answer(nr1(call.client.status.statusByte(!call.client.errors.isEmpty(), false)));
}

void askTest(ScpiCall &call)
{
    const AcquisitionDriver *driver = call.target.instrument().driver();
    call.answer(nr1(driver && driver->isConfigured() ? 0 : 1));
}

// --- STATus, for both groups ---

using Group = ScpiRegisterGroup &(ScpiStatus::*)();
constexpr Group kOperation = &ScpiStatus::operation;
constexpr Group kQuestionable = &ScpiStatus::questionable;

template <Group group>
void takeEvent(ScpiCall &call)
{
    call.answer(nr1((call.client.status.*group)().takeEvent()));
}

template <Group group>
void askCondition(ScpiCall &call)
{
    call.answer(nr1((call.client.status.*group)().condition()));
}

template <Group group, void (ScpiRegisterGroup::*set)(int)>
void setBits(ScpiCall &call)
{
    ((call.client.status.*group)().*set)(call.whole(0, kWideRegister));
}

template <Group group, int (ScpiRegisterGroup::*get)() const>
void askBits(ScpiCall &call)
{
    call.answer(nr1(((call.client.status.*group)().*get)()));
}

void preset(ScpiCall &call)
{
    call.client.status.preset();
}

template <Group group>
std::vector<ScpiCommand> groupCommands(const char *conditions, const std::array<const char *, 5> &patterns)
{
    using R = ScpiRegisterGroup;
    const char *bits = "<0 to 32767>";
    return {
        {patterns[0], nullptr, "", "events since the last query", nullptr, takeEvent<group>},
        {patterns[1], nullptr, "", conditions, nullptr, askCondition<group>},
        {patterns[2], bits, "", "events that go into the status byte", setBits<group, &R::setEnable>,
         askBits<group, &R::enable>, 1, 0, true},
        {patterns[3], bits, "", "conditions that set an event when they begin",
         setBits<group, &R::setPositiveTransition>, askBits<group, &R::positiveTransition>, 1, 0, true},
        {patterns[4], bits, "", "conditions that set an event when they end", setBits<group, &R::setNegativeTransition>,
         askBits<group, &R::negativeTransition>, 1, 0, true},
    };
}

} // namespace

std::vector<ScpiCommand> commonCommands()
{
    const char *bits = "<0 to 255>";
    std::vector<ScpiCommand> commands{
        {"*IDN", nullptr, "", "maker, model, serial number 0, version", nullptr, askIdentity},
        {"*RST", "", nullptr,
         "stops; sets full range, linear scale and standard speed; switches average, holds, reference, limits and "
         "generator off. Outputs and files do not change.",
         reset, nullptr},
        {"*CLS", "", nullptr, "empties the error queue and the event registers", clearStatus, nullptr, 0, 0, true},
        {"*ESE", bits, "", "events that go into bit 5 of the status byte", setEventEnable, askEventEnable, 1, 0, true},
        {"*ESR", nullptr, "", "standard events since the last query", nullptr, askEvents},
        {"*OPC", "", "", "the query returns 1 when a single sweep has ended; the command then sets bit 0 of *ESR?",
         noteCompletion, askCompletion, 0, 0, true},
        {"*SRE", bits, "", "bits of the status byte that request service", setServiceEnable, askServiceEnable, 1, 0,
         true},
        {"*STB", nullptr, "", "status byte", nullptr, askStatusByte},
        {"*TST", nullptr, "", "0: the hardware is connected and configured; 1: it is not", nullptr, askTest},
        {"*WAI", "", nullptr, "delays later commands until a single sweep has ended", waitToContinue, nullptr, 0, 0,
         true},
    };
    for (const auto &group :
         {groupCommands<kOperation>("current conditions; bit 3: a sweep is running",
                                    {"STATus:OPERation[:EVENt]", "STATus:OPERation:CONDition",
                                     "STATus:OPERation:ENABle", "STATus:OPERation:PTRansition",
                                     "STATus:OPERation:NTRansition"}),
          groupCommands<kQuestionable>("current conditions: none defined",
                                       {"STATus:QUEStionable[:EVENt]", "STATus:QUEStionable:CONDition",
                                        "STATus:QUEStionable:ENABle", "STATus:QUEStionable:PTRansition",
                                        "STATus:QUEStionable:NTRansition"})})
        commands.insert(commands.end(), group.begin(), group.end());
    commands.push_back({"STATus:PRESet", "", nullptr,
                        "disables all events; each condition sets an event when it begins", preset, nullptr, 0, 0,
                        true});
    return commands;
}

} // namespace calvorn
