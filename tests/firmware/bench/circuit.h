// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gpsim/pic-processor.h>
#include <gpsim/stimuli.h>

#include "device.h"
#include "generator.h"
#include "line.h"
#include "spies.h"
#include "usart.h"

namespace bench {

// A voltage source with an internal resistance, connected to a chip pin.
class Source : public stimulus
{
public:
    Source(Processor &chip, int pin, const std::string &name, double volts, double ohms);

    void setVolts(double volts);
    void setOpen(bool isOpen);

private:
    double ohms_;
};

// Reports the level of a chip pin.
class Probe : public IOPIN
{
public:
    Probe(Processor &chip, int pin, const std::string &name, std::function<void(bool)> heard);

    void setDrivenState(bool level) override;

private:
    std::function<void(bool)> heard_;
};

// Everything around the chip: generator, detector, reference, jumpers, serial line and reset.
class Circuit
{
public:
    struct Conversion
    {
        std::uint64_t cycle = 0; // in which GO was set
        unsigned int adcon0 = 0;
        unsigned int adcon1 = 0;
        std::size_t word = 0; // words latched so far
    };

    explicit Circuit(pic_processor &chip);

    pic_processor &chip;
    Generator generator;
    Device device;
    Receiver receiver;
    Sender sender;
    Usart usart;
    std::vector<Conversion> conversions;
    std::vector<Generator::Fault> faults; // firmware faults that the generator cannot detect
    Stretch clearsWatchdog;

    void setJumpers(bool isJ1Closed, bool isJ2Closed);
    void reset(RESET_TYPE kind);
    void fillRam(std::uint32_t seed);
    unsigned int poke(unsigned int address, unsigned int opcode, bool isUntilReset); // returns the previous opcode
    const StackSpy &stack() const { return *stack_; }
    std::string pinStates();

private:
    void wire();
    void wasReset();
    void spy();
    void watchWatchdog();
    void setLine(Generator::Line line, bool level);
    void showWord();
    void convert(unsigned int before, unsigned int after);

    std::unique_ptr<Source> detector_, reference_, line_, jumper1_, jumper2_;
    std::vector<std::unique_ptr<Probe>> probes_;
    std::vector<std::unique_ptr<Source>> pulls_;
    std::vector<std::unique_ptr<RegisterSpy>> spies_;
    StackSpy *stack_ = nullptr; // owned by the chip
    std::unique_ptr<TriggerObject> watchdogEvent_;
    std::size_t shownWords_ = 0;
    std::vector<std::pair<unsigned int, unsigned int>> atReset_; // addresses and opcodes to restore at a reset
    std::uint64_t resetCycle_ = std::numeric_limits<std::uint64_t>::max();
};

} // namespace bench
