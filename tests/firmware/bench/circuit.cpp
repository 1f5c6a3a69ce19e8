// SPDX-License-Identifier: MIT
#include "circuit.h"

#include <array>
#include <random>
#include <sstream>

#include <gpsim/14bit-processors.h>
#include <gpsim/breakpoints.h>
#include <gpsim/intcon.h>

namespace bench {

namespace {

constexpr int Detector = 2;
constexpr int Reference = 5;
constexpr int Clock = 19;
constexpr int Update = 20;
constexpr int Data = 21;
constexpr int Reset = 22;
constexpr int Receive = 26;
constexpr int Jumper1 = 33;
constexpr int Jumper2 = 34;

constexpr unsigned int PortD = 0x08;
constexpr unsigned int Adcon0 = 0x1F;
constexpr unsigned int Adcon1 = 0x9F;
constexpr unsigned int Go = 4;
constexpr unsigned int ClearWatchdog = 0x0064; // opcode
constexpr unsigned int PowerDown = 4;          // a bit in W0

constexpr double ReferenceVolts = 2.5;
constexpr double Open = 1e9; // ohms

// The general-purpose registers. All banks share their last 16 registers.
constexpr std::array<std::pair<unsigned int, unsigned int>, 4> Ram{
    {{0x20, 0x7F}, {0xA0, 0xEF}, {0x110, 0x16F}, {0x190, 0x1EF}}};

void connect(Processor &chip, int pin, stimulus *other, const std::string &name)
{
    IOPIN *own = chip.get_pin(static_cast<unsigned int>(pin));
    if (!own->snode) {
        auto *node = new Stimulus_Node(("node_" + name).c_str()); // never deleted: exists until gpsim exits
        node->attach_stimulus(own);
    }
    own->snode->attach_stimulus(other);
}

class Event : public TriggerObject
{
public:
    explicit Event(std::function<void()> happens)
        : happens_(std::move(happens))
    {
    }
    void callback() override { happens_(); }

private:
    std::function<void()> happens_;
};

std::uint64_t now()
{
    return get_cycles().get();
}

} // namespace

Source::Source(Processor &chip, int pin, const std::string &name, double volts, double ohms)
    : stimulus(name.c_str(), volts, ohms)
    , ohms_(ohms)
{
    setDriving(true);
    connect(chip, pin, this, name);
    updateNode();
}

void Source::setVolts(double volts)
{
    set_Vth(volts);
    updateNode();
}

void Source::setOpen(bool isOpen)
{
    set_Zth(isOpen ? Open : ohms_);
    updateNode();
}

Probe::Probe(Processor &chip, int pin, const std::string &name, std::function<void(bool)> heard)
    : IOPIN(name.c_str())
    , heard_(std::move(heard))
{
    connect(chip, pin, this, name);
}

void Probe::setDrivenState(bool level)
{
    IOPIN::setDrivenState(level);
    heard_(level);
}

Circuit::Circuit(pic_processor &itsChip)
    : chip(itsChip)
    , usart(itsChip)
{
    // Keeps the simulator running after a reset.
    chip.setBreakOnReset(false);
    wire();
    spy();
    watchWatchdog();
}

void Circuit::wire()
{
    const auto pull = [this](int pin, const std::string &name, double volts, double ohms) {
        pulls_.push_back(std::make_unique<Source>(chip, pin, name, volts, ohms));
    };
    const auto hear = [this](int pin, const std::string &name, std::function<void(bool)> heard) {
        probes_.push_back(std::make_unique<Probe>(chip, pin, name, std::move(heard)));
    };
    detector_ = std::make_unique<Source>(chip, Detector, "detector", 0, 1e3);
    reference_ = std::make_unique<Source>(chip, Reference, "reference", ReferenceVolts, 10);
    line_ = std::make_unique<Source>(chip, Receive, "line", 5, 100);
    jumper1_ = std::make_unique<Source>(chip, Jumper1, "jumper1", 0, 1);
    jumper2_ = std::make_unique<Source>(chip, Jumper2, "jumper2", 0, 1);
    pull(Reset, "pull_reset", 0, 10e3);
    hear(Clock, "w_clk", [this](bool level) { setLine(Generator::Line::Clock, level); });
    hear(Update, "fq_ud", [this](bool level) { setLine(Generator::Line::Update, level); });
    hear(Data, "d7", [this](bool level) { setLine(Generator::Line::Data, level); });
    hear(Reset, "reset", [this](bool level) { setLine(Generator::Line::Reset, level); });
    usart.drive = [this](bool level) { receiver.set(level); };
    usart.failed = [this](const char *what) { faults.push_back({now(), what}); };
    sender.drive = [this](bool level) {
        line_->setVolts(level ? 5 : 0);
        usart.set(level);
    };
    sender.overrun = [this] { usart.overrun(); };
    setJumpers(false, false);
}

void Circuit::spy()
{
    spies_.push_back(std::make_unique<RegisterSpy>(&chip, Adcon0));
    spies_.back()->written = [this](unsigned int before, unsigned int after) { convert(before, after); };
    spies_.push_back(std::make_unique<RegisterSpy>(&chip, PortD));
    spies_.back()->wasReset = [this] { wasReset(); };
    stack_ = new StackSpy(&chip); // replaces the chip's own stack
    chip.stack = stack_;
}

void Circuit::wasReset()
{
    resetCycle_ = now();
    // gpsim does not end the interrupt on a reset and would never start another interrupt.
    dynamic_cast<_14bit_processor &>(chip).intcon->in_interrupt = false;
    for (const auto &[address, opcode] : atReset_)
        chip.pma->put_opcode(address, opcode);
    atReset_.clear();
}

unsigned int Circuit::poke(unsigned int address, unsigned int opcode, bool isUntilReset)
{
    const unsigned int before = chip.program_memory[address]->get_opcode();
    if (isUntilReset)
        atReset_.emplace_back(address, before);
    chip.pma->put_opcode(address, opcode);
    return before;
}

void Circuit::watchWatchdog()
{
    watchdogEvent_ = std::make_unique<Event>([this] { clearsWatchdog.event(now()); });
    for (unsigned int address = 0; address < chip.program_memory_size(); ++address)
        if (chip.program_memory[address]->get_opcode() == ClearWatchdog)
            get_bp().set_notify_break(&chip, address, watchdogEvent_.get());
}

void Circuit::setJumpers(bool isJ1Closed, bool isJ2Closed)
{
    jumper1_->setOpen(!isJ1Closed);
    jumper2_->setOpen(!isJ2Closed);
    generator.setTestBits(isJ1Closed ? 2 : 3);
}

// gpsim has no MCLR pin on this chip, so an MCLR reset has no duration.
void Circuit::reset(RESET_TYPE kind)
{
    usart.looks.restart();
    clearsWatchdog.restart();
    chip.reset(kind);
    if (kind == MCLR_RESET)
        chip.reset(EXIT_RESET);
}

void Circuit::fillRam(std::uint32_t seed)
{
    std::mt19937 random(seed);
    for (const auto &[first, last] : Ram)
        for (unsigned int address = first; address <= last; ++address)
            chip.registers[address]->put_value(random() & 0xFF);
}

// A reset makes the chip release its pins, but gpsim first changes the port and then its direction. Level changes in
// the cycle of a reset therefore do not count as edges.
void Circuit::setLine(Generator::Line line, bool level)
{
    if (now() == resetCycle_)
        generator.release(line, level);
    else
        generator.set(line, level, now());
    if (shownWords_ != generator.words().size() || line == Generator::Line::Reset)
        showWord();
}

void Circuit::showWord()
{
    shownWords_ = generator.words().size();
    if (shownWords_ == 0 || !generator.isSerial() || generator.words().back().control & PowerDown)
        device.setWord(std::nullopt, now());
    else
        device.setWord(generator.words().back().tuning, now());
}

// The converter's capacitor holds the voltage present in the cycle in which GO is set.
void Circuit::convert(unsigned int before, unsigned int after)
{
    if (!(after & Go) || before & Go)
        return;
    conversions.push_back({now(), after, chip.registers[Adcon1]->get_value(), generator.words().size()});
    detector_->setVolts(device.counts(now()) / Device::FullScale * ReferenceVolts);
}

// Returns each pin's direction, level, voltage and resistance, for example o1:5:250.
std::string Circuit::pinStates()
{
    std::ostringstream text;
    for (int pin = 1; pin <= chip.get_pin_count(); ++pin) {
        IOPIN *own = chip.get_pin(static_cast<unsigned int>(pin));
        text << (pin > 1 ? " " : "");
        if (!own) {
            text << '-';
            continue;
        }
        const bool isOutput = own->get_direction() == IOPIN::DIR_OUTPUT;
        text << (isOutput ? 'o' : 'i') << own->getState() << ':' << own->get_Vth() << ':' << own->get_Zth();
    }
    return text.str();
}

} // namespace bench
