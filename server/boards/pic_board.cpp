// SPDX-License-Identifier: MIT
#include "server/boards/pic_board.h"

#include "server/boards/dds_chip_model.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace calvorn {

namespace {

constexpr int kFractionBits = 32;
constexpr int kLongestLine = 12; // letter, sign, ten digits
constexpr char kAbort = '!';
constexpr char kLineFeed = '\n';      // ignored
const QByteArray kUnprepares("BDP*"); // these letters invalidate the plan, even if they are rejected
constexpr std::int64_t kUsualSettlingUs = 50;
constexpr std::int64_t kLeastSettlingUs = 20;
constexpr std::int64_t kMostSettlingUs = 10'000;
constexpr int kSamples = 400; // independent of the program's constant, like real firmware
constexpr int kGroup = 4;     // samples in five bytes
constexpr int kCounts = 1024;
constexpr char kSyncFirst = '\xA5';
constexpr char kSyncSecond = '\x5A';
constexpr std::uint16_t kCrcStart = 0xFFFF;
constexpr std::chrono::nanoseconds kLineTime{108'507}; // transmission time of a sample: 1 1/4 bytes at 115,200 baud
// Time for a sample in addition to its settling time; with the usual settling time, the line has no gaps.
constexpr std::chrono::nanoseconds kPointTime = kLineTime - std::chrono::microseconds(kUsualSettlingUs);

// CRC-16/CCITT-FALSE without a loop, so that firmware could compute it between two samples.
std::uint16_t crcWith(std::uint16_t crc, std::uint8_t byte)
{
    const unsigned before = crc;
    unsigned value = (before >> 8 | before << 8) & 0xFFFFU;
    value ^= byte;
    value ^= (value & 0xFFU) >> 4;
    value ^= value << 12 & 0xFFFFU;
    value ^= (value & 0xFFU) << 5;
    return static_cast<std::uint16_t>(value);
}

// Returns 2^64 / clock, rounded. For a clock below 2 Hz, the factor would not fit in 64 bits, so every word is 0.
std::uint64_t factorOf(double clockHz)
{
    constexpr double kLowestClock = 2.0;
    if (clockHz < kLowestClock)
        return 0;
    return static_cast<std::uint64_t>(std::round(std::ldexp(1.0L, 32 + kFractionBits) / clockHz));
}

// Returns true if the text consists of digits, after a minus sign if one is allowed.
bool isWholeNumber(const QByteArray &text, bool mayBeNegative)
{
    const QByteArray digits = mayBeNegative && text.startsWith('-') ? text.mid(1) : text;
    return !digits.isEmpty() &&
           std::all_of(digits.begin(), digits.end(), [](char digit) { return digit >= '0' && digit <= '9'; });
}

} // namespace

PicBoard::PicBoard(const SimulatorSettings &settings)
    : m_settings(settings)
    , m_detector(settings.seed)
    , m_factor(factorOf(settings.clockHz))
    , m_settlingUs(kUsualSettlingUs)
{
}

void PicBoard::receive(std::uint8_t byte)
{
    const char character = static_cast<char>(byte);
    if (character == kAbort) {
        m_line.clear();
        m_out.remove(0, m_sent);
        m_sent = 0;
        if (m_sweeping)
            m_out.clear();
        m_sweeping = false;
        answer(kAbort, true);
    } else if (m_sweeping) {
        return;
    } else if (character == '\r') {
        execute();
        m_line.clear();
    } else if (character != kLineFeed && m_line.size() <= kLongestLine) {
        m_line += character;
    }
}

std::optional<std::uint8_t> PicBoard::nextByte()
{
    if (m_sent == m_out.size()) {
        m_out.clear();
        m_sent = 0;
        if (!m_sweeping)
            return std::nullopt;
        refill();
    }
    return static_cast<std::uint8_t>(m_out.at(m_sent++));
}

// If a sample takes longer than its transmission, the line has a gap, reported with the first byte of each group.
std::chrono::nanoseconds PicBoard::idleTime() const
{
    const std::chrono::nanoseconds late = sampleTime() - kLineTime;
    return m_sweeping && m_sent == 1 && late.count() > 0 ? kGroup * late : std::chrono::nanoseconds();
}

std::chrono::nanoseconds PicBoard::sampleTime() const
{
    return std::max<std::chrono::nanoseconds>(kLineTime, std::chrono::microseconds(m_settlingUs) + kPointTime);
}

void PicBoard::execute()
{
    if (m_line.isEmpty())
        return;
    const QByteArray digits = m_line.mid(1);
    const char letter = m_line.at(0);
    const bool isNumber = isWholeNumber(digits, letter == 'D');
    const std::int64_t value = digits.toLongLong();
    const bool understood = m_line.size() <= kLongestLine && (isNumber || digits.isEmpty());
    if (kUnprepares.contains(letter))
        m_prepared = false;
    const bool accepted = understood && m_settings.fault != SimulatorFault::Refuse && accept(letter, value, isNumber);
    answer(letter, accepted, accepted && letter == '?' ? identity() : QByteArray());
    if (accepted && letter == 'G') {
        m_sweeping = true;
        m_sequence = 0;
        m_point = 0;
    }
}

bool PicBoard::accept(char letter, std::int64_t value, bool hasValue)
{
    const bool inRange = hasValue && std::llabs(value) < static_cast<std::int64_t>(m_settings.clockHz);
    switch (letter) {
    case 'A':
        if (!inRange)
            return false;
        generatorSet(rounded(product(value)));
        return true;
    case 'B':
    case 'D':
        if (!inRange)
            return false;
        if (!m_isStale)
            (letter == 'B' ? m_startHz : m_stepHz) = value;
        return true;
    case 'P':
        return !hasValue && prepare();
    case 'S':
        if (!hasValue || value < kLeastSettlingUs || value > kMostSettlingUs)
            return false;
        m_settlingUs = value;
        return true;
    case 'G':
        return !hasValue && m_prepared;
    case '*':
        if (hasValue)
            return false;
        generatorSet(0);
        m_startHz = m_stepHz = 0;
        m_isStale = false;
        return true;
    case '?':
        return !hasValue;
    default:
        return false;
    }
}

bool PicBoard::prepare()
{
    const std::int64_t endHz = m_startHz + (kSamples - 1) * m_stepHz;
    if (endHz < 0 || endHz >= static_cast<std::int64_t>(m_settings.clockHz))
        return false;
    m_crcOfPlan = planCrc();
    m_isStale = m_settings.fault == SimulatorFault::Stale;
    m_prepared = true;
    return true;
}

QByteArray PicBoard::identity() const
{
    return "CALVORN-SIM 1.0 " + QByteArray(factsOf(m_settings.chip).name) + ' ' +
           QByteArray::number(std::llround(m_settings.clockHz)) + ' ' + QByteArray::number(qint64{m_settlingUs});
}

// The check sum covers start and step, four bytes each.
std::uint16_t PicBoard::planCrc() const
{
    const std::uint64_t plan =
        static_cast<std::uint64_t>(m_startHz) << 32 | (static_cast<std::uint64_t>(m_stepHz) & 0xFFFFFFFFU);
    std::uint16_t crc = kCrcStart;
    for (int shift = 56; shift >= 0; shift -= 8)
        crc = crcWith(crc, static_cast<std::uint8_t>(plan >> shift & 0xFFU));
    return crc;
}

// Computes modulo 2^64, so that adding the product of a negative step is a subtraction.
std::uint64_t PicBoard::product(std::int64_t hertz) const
{
    return static_cast<std::uint64_t>(hertz) * m_factor;
}

std::uint32_t PicBoard::rounded(std::uint64_t phase)
{
    return static_cast<std::uint32_t>((phase + (std::uint64_t{1} << (kFractionBits - 1))) >> kFractionBits);
}

void PicBoard::answer(char letter, bool accepted, const QByteArray &text)
{
    m_out += letter;
    m_out += accepted ? '+' : '-';
    m_out += text;
    m_out += '\r';
}

void PicBoard::startFrame()
{
    m_out += kSyncFirst;
    m_out += kSyncSecond;
    m_out += static_cast<char>(m_sequence);
    m_crc = crcWith(m_crcOfPlan, m_sequence++);
    m_phase = product(m_startHz);
}

void PicBoard::refill()
{
    if (m_point == 0)
        startFrame();
    std::uint64_t packed = 0;
    for (int sample = 0; sample < kGroup; ++sample, ++m_point)
        packed = packed << 10 | static_cast<std::uint64_t>(measure());
    for (int shift = 32; shift >= 0; shift -= 8) {
        const auto byte = static_cast<std::uint8_t>(packed >> shift & 0xFFU);
        m_crc = crcWith(m_crc, byte);
        m_out += static_cast<char>(byte);
    }
    if (m_point == kSamples) {
        m_out += static_cast<char>(m_crc >> 8);
        m_out += static_cast<char>(m_crc & 0xFF);
        m_point = 0;
    }
}

int PicBoard::measure()
{
    const std::uint32_t word = rounded(m_phase);
    m_phase += product(m_stepHz);
    generatorSet(word);
    return countAt(word);
}

int PicBoard::countAt(std::uint32_t word)
{
    const DdsOutput output = ddsOutput(word, m_settings.clockHz);
    m_detector.setLevel(m_settings.detector.volts(output.amplitude * m_settings.device.responseAt(output.hertz)),
                        m_now);
    m_now += sampleTime();
    return convertedCount(m_detector.read(m_now), kConverterReferenceVolts, kCounts);
}

} // namespace calvorn
