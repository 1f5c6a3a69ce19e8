// SPDX-License-Identifier: MIT
#include "server/drivers/lpt_board.h"

#include "server/synthesiser/frequency_remark.h"
#include "server/synthesiser/tuning_word.h"

#include <QCoreApplication>

#include <mutex>

namespace calvorn {

namespace {

[[noreturn]] void throwNotOpen()
{
    throw PortError(QCoreApplication::translate("ParallelPort", "The parallel port is not open.").toStdString());
}

} // namespace

std::chrono::nanoseconds settlingTime(SweepSpeed speed)
{
    switch (speed) {
    case SweepSpeed::Standard:
        return std::chrono::microseconds(60);
    case SweepSpeed::Slow:
        return std::chrono::microseconds(850);
    case SweepSpeed::VerySlow:
        return std::chrono::microseconds(4800);
    case SweepSpeed::Calibration:
        return std::chrono::milliseconds(10);
    }
    return std::chrono::microseconds(60);
}

// The port and the objects that use it; they all have the same lifetime.
struct LptBoard::Hardware
{
    explicit Hardware(OpenedPort &&opened)
        : port(std::move(opened.port))
        , pins(*port, opened.wiring.lines)
        , dds(pins, opened.wiring.loading)
        , adc(pins)
        , i2c(pins)
    {
    }

    std::unique_ptr<ParallelPort> port;
    ParallelPins pins;
    DdsLoader dds;
    AdcReader adc;
    I2cMaster i2c;
};

LptBoard::LptBoard() = default;
LptBoard::~LptBoard() = default;

void LptBoard::attach(OpenedPort opened)
{
    const std::lock_guard guard(m_lock);
    m_firstAux = opened.outputs;
    m_hardware = std::make_unique<Hardware>(std::move(opened));
    m_started = false;
    m_hardware->pins.set({{LptLine::DdsClock, false},
                          {LptLine::DdsUpdate, false},
                          {LptLine::DdsData, false},
                          {LptLine::DdsReset, false},
                          {LptLine::AdcClock, false},
                          {LptLine::AdcSelect, true},
                          {LptLine::I2cClock, true},
                          {LptLine::I2cData, true},
                          {LptLine::AuxData, false},
                          {LptLine::AuxClock, false},
                          {LptLine::AuxLatch, false}});
    shiftAux();
}

void LptBoard::detach()
{
    const std::lock_guard guard(m_lock);
    m_hardware.reset();
}

bool LptBoard::isOpen() const
{
    const std::lock_guard guard(m_lock);
    return m_hardware != nullptr;
}

void LptBoard::setChip(DdsChip chip)
{
    const std::lock_guard guard(m_lock);
    DdsClock clock = m_clock;
    clock.chip = chip;
    changeClock(clock);
}

void LptBoard::setXtal(double hertz)
{
    const std::lock_guard guard(m_lock);
    DdsClock clock = m_clock;
    clock.xtalHz = hertz;
    changeClock(clock);
}

void LptBoard::setMultiplier(int multiplier)
{
    const std::lock_guard guard(m_lock);
    DdsClock clock = m_clock;
    clock.multiplier = multiplier;
    changeClock(clock);
}

void LptBoard::setConverter(const SerialAdcType &type)
{
    const std::lock_guard guard(m_lock);
    m_converter = type;
}

void LptBoard::setOffset(double hertz)
{
    const std::lock_guard guard(m_lock);
    m_offsetHz = hertz;
}

void LptBoard::setSpeed(SweepSpeed speed)
{
    const std::lock_guard guard(m_lock);
    m_speed = speed;
}

void LptBoard::reset()
{
    const std::lock_guard guard(m_lock);
    m_started = false;
    checkMultiplier(m_clock);
    if (!m_hardware)
        return;
    m_hardware->dds.startUp(m_clock, wordOrNone(m_hertz));
    m_started = true;
}

// Returns 0, which stops the output, if the frequency has no tuning word.
std::uint32_t LptBoard::wordOrNone(std::int64_t hertz) const
{
    try {
        return tuningWord(hertz, m_offsetHz, systemClockHz(m_clock));
    } catch (const FrequencyError &) {
        return 0;
    }
}

void LptBoard::powerDown()
{
    const std::lock_guard guard(m_lock);
    if (!m_hardware || !m_started)
        return;
    m_hardware->dds.powerDown(m_clock, wordOrNone(m_parkedHz));
    m_started = false;
}

void LptBoard::confirmPresent()
{
    const std::lock_guard guard(m_lock);
    if (!m_hardware)
        throwNotOpen();
    m_hardware->port->confirmPresent();
}

void LptBoard::checkClock() const
{
    const std::lock_guard guard(m_lock);
    checkMultiplier(m_clock);
}

void LptBoard::setFrequency(std::int64_t hertz)
{
    const std::lock_guard guard(m_lock);
    load(hertz);
    m_parkedHz = hertz;
}

QString LptBoard::remarkOn(std::int64_t hertz) const
{
    const std::lock_guard guard(m_lock);
    return remarkOnFrequency(hertz, m_offsetHz, m_clock);
}

int LptBoard::measure(std::int64_t hertz)
{
    const std::lock_guard guard(m_lock);
    load(hertz);
    return settleAndRead();
}

int LptBoard::readDetector()
{
    const std::lock_guard guard(m_lock);
    const int count = settleAndRead();
    m_hardware->port->confirmPresent();
    return count;
}

void LptBoard::setAux(std::uint8_t value, int output)
{
    const std::lock_guard guard(m_lock);
    m_aux[output == 1 ? 0 : 1] = value;
    if (m_hardware)
        shiftAux();
}

bool LptBoard::writeI2c(std::uint8_t control, std::uint8_t command, std::uint8_t data)
{
    const std::lock_guard guard(m_lock);
    if (!m_hardware)
        throwNotOpen();
    return m_hardware->i2c.write(std::array{control, command, data});
}

void LptBoard::changeClock(const DdsClock &clock)
{
    if (clock == m_clock)
        return;
    m_clock = clock;
    m_started = false;
}

void LptBoard::load(std::int64_t hertz)
{
    checkMultiplier(m_clock);
    const std::uint32_t word = tuningWord(hertz, m_offsetHz, systemClockHz(m_clock));
    m_hertz = hertz;
    if (!m_hardware)
        return;
    if (m_started) {
        m_hardware->dds.load(m_clock, word);
        return;
    }
    m_hardware->dds.startUp(m_clock, word);
    m_started = true;
}

int LptBoard::settleAndRead()
{
    if (!m_hardware)
        throwNotOpen();
    m_hardware->pins.wait(settlingTime(m_speed));
    return m_hardware->adc.read(m_converter);
}

// Shifts sixteen bits, Aux2 first because its bits pass through the Aux1 register.
void LptBoard::shiftAux()
{
    ParallelPins &pins = m_hardware->pins;
    const unsigned bits =
        static_cast<unsigned>(m_aux[1].value_or(m_firstAux[1])) << 8 | m_aux[0].value_or(m_firstAux[0]);
    for (int bit = 15; bit >= 0; --bit) {
        pins.set({{LptLine::AuxData, (bits >> bit & 1U) != 0}, {LptLine::AuxClock, false}});
        pins.set({{LptLine::AuxClock, true}});
    }
    pins.set({{LptLine::AuxClock, false}, {LptLine::AuxLatch, true}});
    pins.set({{LptLine::AuxLatch, false}});
}

} // namespace calvorn
