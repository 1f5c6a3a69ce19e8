// SPDX-License-Identifier: MIT
#include "server/boards/simulated_parallel_port.h"

#include "server/boards/ad985x_model.h"
#include "server/boards/ad9951_model.h"

#include <cmath>

namespace calvorn {

namespace {

// One access of a port on the chipset's bus, through the kernel.
constexpr std::chrono::nanoseconds kAccessTime{1250};

constexpr double kReferenceVolts = 2.5;
constexpr double kFullVolts = 1.0;   // detector voltage with a piece of cable in place of a device
constexpr double kFloorVolts = 5e-3; // what the detector gives without any signal

constexpr unsigned kDdsClock = 0x01;
constexpr unsigned kDdsUpdate = 0x02;
constexpr unsigned kDdsData = 0x04;
constexpr unsigned kDdsReset = 0x08;
constexpr unsigned kDdsPins = 0x0F;
constexpr unsigned kAdcClock = 0x10;
constexpr unsigned kAdcSelect = 0x20;
constexpr unsigned kAdcPins = 0x30;
constexpr unsigned kScl = 0x40;
constexpr unsigned kSda = 0x80;
constexpr unsigned kI2cPins = 0xC0;

constexpr unsigned kControlInversion = 0x0B; // STROBE, AUTOFD, SELECT-IN
constexpr unsigned kStrobePin = 0x01;
constexpr unsigned kAutofdPin = 0x02;
constexpr unsigned kInitPin = 0x04;

constexpr unsigned kStatusInversion = 0x80; // BUSY
constexpr unsigned kAckPin = 0x40;
constexpr unsigned kSelectPin = 0x10;
constexpr unsigned kUnusedHigh = 0xA8; // BUSY, PE and ERROR: open inputs are pulled up

std::unique_ptr<DdsChipModel> makeChip(const SimulatorSettings &settings)
{
    if (settings.chip == DdsChip::Ad9951)
        return std::make_unique<Ad9951Model>(settings.clockHz);
    return std::make_unique<Ad985xModel>(settings.chip, settings.clockHz);
}

} // namespace

SimulatedParallelPort::SimulatedParallelPort(const SimulatorSettings &settings)
    : m_settings(settings)
    , m_pace(settings.paced)
    , m_dds(makeChip(settings))
    , m_detector(settings.seed)
    , m_adc(settings.adc, kReferenceVolts, [this](std::chrono::nanoseconds now) { return m_detector.read(now); })
{
    m_detector.setLevel(kFloorVolts, m_pace.now());
}

void SimulatedParallelPort::writeData(std::uint8_t value)
{
    access();
    const unsigned changed = static_cast<unsigned>(m_dataPins ^ value);
    m_dataPins = value;
    if (changed & kDdsPins)
        driveDds(value);
    if (changed & kAdcPins)
        driveAdc(value);
    if (changed & kI2cPins)
        m_pot.drive((value & kScl) != 0, (value & kSda) != 0);
}

void SimulatedParallelPort::writeControl(std::uint8_t value)
{
    access();
    const unsigned pins = value ^ kControlInversion;
    m_latches.drive((pins & kStrobePin) != 0, (pins & kAutofdPin) != 0, (pins & kInitPin) != 0);
}

std::uint8_t SimulatedParallelPort::readStatus()
{
    access();
    unsigned pins = kUnusedHigh;
    if (m_adc.dataOut())
        pins |= kAckPin;
    if (m_pot.sda())
        pins |= kSelectPin;
    return static_cast<std::uint8_t>(pins ^ kStatusInversion);
}

void SimulatedParallelPort::wait(std::chrono::nanoseconds duration)
{
    m_pace.advance(duration);
}

void SimulatedParallelPort::recordConversions(std::size_t atMost)
{
    m_recordAtMost = atMost;
    m_records.clear();
    m_records.reserve(atMost);
}

void SimulatedParallelPort::access()
{
    ++m_accesses;
    m_pace.advance(kAccessTime);
}

void SimulatedParallelPort::driveDds(std::uint8_t pins)
{
    m_dds->drive({(pins & kDdsClock) != 0, (pins & kDdsUpdate) != 0, (pins & kDdsData) != 0, (pins & kDdsReset) != 0});
    if (m_dds->updates() == m_updatesSeen && !(pins & kDdsReset))
        return;
    m_updatesSeen = m_dds->updates();
    const DdsOutput &output = m_dds->output();
    const double signal = kFullVolts * output.amplitude * responseOf(m_settings.device, output.hertz);
    m_detector.setLevel(std::hypot(signal, kFloorVolts), m_pace.now());
}

void SimulatedParallelPort::driveAdc(std::uint8_t pins)
{
    const std::uint64_t before = m_adc.conversions();
    m_adc.drive((pins & kAdcSelect) != 0, (pins & kAdcClock) != 0, m_pace.now());
    if (m_adc.conversions() != before && m_records.size() < m_recordAtMost)
        m_records.push_back({m_dds->output().hertz, m_adc.latestCount()});
}

} // namespace calvorn
