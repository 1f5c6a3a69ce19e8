// SPDX-License-Identifier: MIT
#include "server/boards/vna_board.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace calvorn {

namespace {

constexpr int kCounts = 1024; // number of converter steps

// The phase detector outputs 10 mV per degree, 0..180, regardless of the sign of the phase.
constexpr double kVoltsPerDegree = 10e-3;
constexpr double kCableSeconds = 10e-9; // round trip to the device under test

// Four bytes of ten bits at 115,200 baud: the generator switches to the next frequency after sending the sample.
constexpr DetectorModel::Time kSampleTime{347'222};

constexpr int kMostDigits = 10;

int countOf(double volts)
{
    return convertedCount(volts, kConverterReferenceVolts, kCounts);
}

double degreesOfCable(double hertz)
{
    const double turn = std::fmod(360.0 * hertz * kCableSeconds, 360.0);
    return turn > 180.0 ? 360.0 - turn : turn;
}

} // namespace

VnaBoard::VnaBoard(const SimulatorSettings &settings)
    : m_settings(settings)
    , m_phaseDetector(settings.seed + 1)
    , m_levelDetector(settings.seed)
{
}

void VnaBoard::receive(std::uint8_t byte)
{
    if (isReplying())
        return;
    if (byte == '\r') {
        endNumber();
    } else if (byte >= '0' && byte <= '9' && m_digits < kMostDigits) {
        m_number = 10 * m_number + static_cast<std::uint64_t>(byte - '0');
        ++m_digits;
    } else {
        forgetCommand();
    }
}

std::optional<std::uint8_t> VnaBoard::nextByte()
{
    if (m_position == m_bytes.size()) {
        if (m_samplesDue == 0)
            return std::nullopt;
        --m_samplesDue;
        measure();
    }
    return m_bytes[m_position++];
}

void VnaBoard::endNumber()
{
    if (m_digits == 0 || m_number > std::numeric_limits<std::uint32_t>::max()) {
        forgetCommand();
        return;
    }
    m_numbers[m_numberCount++] = static_cast<std::uint32_t>(m_number);
    m_number = 0;
    m_digits = 0;
    if (m_numberCount == m_numbers.size()) {
        execute();
        forgetCommand();
    }
}

void VnaBoard::forgetCommand()
{
    m_numberCount = 0;
    m_number = 0;
    m_digits = 0;
}

// A command for 0 samples gets no reply and does not change the generator. The instrument cannot report a rejection.
void VnaBoard::execute()
{
    const auto [path, start, samples, step] = m_numbers;
    if (path > 1 || m_settings.fault == SimulatorFault::Refuse)
        return;
    m_transmission = path == 1;
    m_word = start;
    m_step = step;
    m_samplesDue = samples;
}

// In transmission mode, the stronger the signal, the smaller the count.
void VnaBoard::measure()
{
    const DdsOutput output = ddsOutput(m_word, m_settings.clockHz);
    const DeviceUnderTest &device = m_settings.device;
    const double ratio = m_transmission ? device.responseAt(output.hertz) : device.reflectionAt(output.hertz);
    m_levelDetector.setLevel(m_settings.detector.volts(output.amplitude * ratio), m_now);
    m_phaseDetector.setLevel(kVoltsPerDegree * degreesOfCable(output.hertz), m_now);
    m_now += kSampleTime;

    const int level = countOf(m_levelDetector.read(m_now));
    const int magnitude = m_transmission ? std::min(kCounts - level, kCounts - 1) : level;
    const int phase = countOf(m_phaseDetector.read(m_now));
    m_bytes = {static_cast<std::uint8_t>(phase & 0xFF), static_cast<std::uint8_t>(phase >> 8),
               static_cast<std::uint8_t>(magnitude & 0xFF), static_cast<std::uint8_t>(magnitude >> 8)};
    m_position = 0;
    sampled({m_word, output.hertz, phase, magnitude});
    m_word += m_step;
}

} // namespace calvorn
