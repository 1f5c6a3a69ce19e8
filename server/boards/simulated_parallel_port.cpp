// SPDX-License-Identifier: MIT
#include "server/boards/simulated_parallel_port.h"

#include "protocol/sweep_points.h"
#include "server/boards/ad985x_model.h"
#include "server/boards/ad9951_model.h"

#include <QCoreApplication>

#include <utility>

namespace calvorn {

namespace {

// The duration of one port access through the kernel and the chipset's bus.
constexpr std::chrono::nanoseconds kAccessTime{1250};

constexpr unsigned kInputPins = 0xF8; // status register bits; open inputs are pulled up
constexpr unsigned kBusyInversion = 0x80;
constexpr unsigned kHighestBusPin = 0x80;

// Each sweep point takes two conversions.
constexpr std::uint64_t kConversionsInSweep = 2 * kSweepPoints;
constexpr std::uint64_t kSilentAfter = 2 * kConversionsInSweep;
constexpr std::uint64_t kHalfAfter = kConversionsInSweep / 2;
constexpr std::uint64_t kUnpluggedAfter = kConversionsInSweep + kConversionsInSweep / 2;
constexpr std::uint64_t kEdgeLostEvery = 997;

constexpr unsigned maskOf(LptLine line)
{
    return 1U << static_cast<unsigned>(line);
}

constexpr unsigned kDdsLines =
    maskOf(LptLine::DdsClock) | maskOf(LptLine::DdsUpdate) | maskOf(LptLine::DdsData) | maskOf(LptLine::DdsReset);
constexpr unsigned kAdcLines = maskOf(LptLine::AdcClock) | maskOf(LptLine::AdcSelect);
constexpr unsigned kI2cLines = maskOf(LptLine::I2cClock) | maskOf(LptLine::I2cData);
constexpr unsigned kAuxLines = maskOf(LptLine::AuxData) | maskOf(LptLine::AuxClock) | maskOf(LptLine::AuxLatch);

std::unique_ptr<DdsChipModel> makeChip(const SimulatorSettings &settings)
{
    if (settings.chip == DdsChip::Ad9951)
        return std::make_unique<Ad9951Model>(settings.clockHz);
    return std::make_unique<Ad985xModel>(settings.chip, settings.clockHz);
}

} // namespace

SimulatedParallelPort::SimulatedParallelPort(const SimulatorSettings &settings, const BoardWiring &wiring)
    : m_settings(settings)
    , m_wiring(wiring)
    , m_levelsOfData(levelTable(wiring.lines, PortRegister::Data))
    , m_levelsOfControl(levelTable(wiring.lines, PortRegister::Control))
    , m_levels(levelsOf(0, 0))
    , m_pace(settings.paced, settings.haste)
    , m_dds(makeChip(settings))
    , m_detector(settings.seed)
    , m_adc(settings.adc, kConverterReferenceVolts,
            [this](std::chrono::nanoseconds now) { return m_detector.read(now); })
{
    if (settings.fault == SimulatorFault::Refuse)
        throw PortError(
            QCoreApplication::translate("ParallelPort", "The simulated parallel port is set to refuse.").toStdString());
    m_detector.setLevel(m_settings.detector.volts(0.0), m_pace.now());
}

SimulatedParallelPort::LevelTable SimulatedParallelPort::levelTable(const LptWiring &lines, PortRegister portRegister)
{
    LevelTable table{};
    for (unsigned value = 0; value < table.size(); ++value) {
        for (const LineWiring &wiring : lines) {
            const bool bit = (value & wiring.mask) != 0;
            if (wiring.portRegister == portRegister && wiring.mask != 0 && bit != wiring.inverted)
                table[value] = static_cast<Levels>(table[value] | maskOf(wiring.line));
        }
    }
    return table;
}

void SimulatedParallelPort::writeData(std::uint8_t value)
{
    access();
    m_data = value;
    drive();
}

void SimulatedParallelPort::writeControl(std::uint8_t value)
{
    access();
    m_control = value;
    drive();
}

std::uint8_t SimulatedParallelPort::readStatus()
{
    access();
    const std::uint64_t silentAfter = m_settings.fault == SimulatorFault::Half ? kHalfAfter : kSilentAfter;
    const bool mayFallSilent = m_settings.fault == SimulatorFault::Half || m_settings.fault == SimulatorFault::Silence;
    const bool silent = mayFallSilent && m_adc.conversions() >= silentAfter;

    unsigned bits = kInputPins ^ kBusyInversion;
    const auto put = [&](LptLine line, bool high) {
        const LineWiring &wiring = m_wiring.lines[static_cast<std::size_t>(line)];
        bits = high != wiring.inverted ? bits | wiring.mask : bits & ~static_cast<unsigned>(wiring.mask);
    };
    put(LptLine::AdcOut, m_adc.dataOut() && !silent);
    put(LptLine::I2cDataBack, m_pot.sda());
    return static_cast<std::uint8_t>(bits);
}

void SimulatedParallelPort::wait(std::chrono::nanoseconds duration)
{
    m_pace.advance(duration);
}

void SimulatedParallelPort::access()
{
    m_pace.advance(kAccessTime);
    if (m_settings.fault != SimulatorFault::Unplug || m_adc.conversions() < kUnpluggedAfter)
        return;
    if (!std::exchange(m_unplugged, true) && m_onUnplugged)
        m_onUnplugged();
    throw PortError(QCoreApplication::translate("ParallelPort", "The parallel port has disappeared.").toStdString());
}

void SimulatedParallelPort::drive()
{
    const Levels before = std::exchange(m_levels, levelsOf(m_data, m_control));
    const auto changed = static_cast<unsigned>(before ^ m_levels);
    if (changed & kDdsLines)
        driveDds();
    if (changed & kAdcLines)
        driveAdc();
    if (changed & kI2cLines)
        m_pot.drive(level(LptLine::I2cClock), level(LptLine::I2cData));
    if (changed & kAuxLines)
        m_latches.drive(level(LptLine::AuxData), level(LptLine::AuxClock), level(LptLine::AuxLatch));
}

void SimulatedParallelPort::driveDds()
{
    DdsLines lines{level(LptLine::DdsClock), level(LptLine::DdsUpdate), level(LptLine::DdsData),
                   level(LptLine::DdsReset)};
    if (m_wiring.loading == DdsLoading::Bytes) {
        lines.bus = m_data;
        if (m_settings.chip != DdsChip::Ad9951)
            lines.data = (m_data & kHighestBusPin) != 0;
    }
    if (loseClockEdge(lines.clock))
        lines.clock = false;
    m_dds->drive(lines);
    if (m_dds->updates() == m_updatesSeen && !lines.reset)
        return;
    m_updatesSeen = m_dds->updates();
    const DdsOutput &output = m_dds->output();
    const double signal = output.amplitude * m_settings.device.responseAt(output.hertz);
    m_detector.setLevel(m_settings.detector.volts(signal), m_pace.now());
}

// Returns true while the clock is high after a rising edge that the fault hides from the chip.
bool SimulatedParallelPort::loseClockEdge(bool clock)
{
    if (m_settings.fault != SimulatorFault::Drop)
        return false;
    if (clock && !m_clockWas)
        m_edgeLost = ++m_clockEdges % kEdgeLostEvery == 0;
    m_clockWas = clock;
    return clock && m_edgeLost;
}

void SimulatedParallelPort::driveAdc()
{
    m_adc.drive(level(LptLine::AdcSelect), level(LptLine::AdcClock), m_pace.now());
}

} // namespace calvorn
