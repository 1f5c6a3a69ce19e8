// SPDX-License-Identifier: MIT
#include "server/drivers/pic_frames.h"

namespace calvorn {

namespace {

constexpr std::uint16_t kPolynomial = 0x1021;
constexpr qsizetype kHeaderBytes = 3;
constexpr qsizetype kSyncBytes = 2;
constexpr int kSampleBits = 10;

std::uint8_t byteAt(const QByteArray &bytes, qsizetype index)
{
    return static_cast<std::uint8_t>(bytes.at(index));
}

QList<int> samplesOf(const QByteArray &frame)
{
    QList<int> samples;
    samples.reserve(kPicSamples);
    std::uint32_t held = 0;
    int bits = 0;
    for (qsizetype index = kHeaderBytes; index < kHeaderBytes + kPicDataBytes; ++index) {
        held = (held << 8 | byteAt(frame, index)) & 0xFFFFFU;
        bits += 8;
        if (bits < kSampleBits)
            continue;
        bits -= kSampleBits;
        samples.append(static_cast<int>(held >> bits & 0x3FFU));
    }
    return samples;
}

} // namespace

std::uint16_t picCrc(std::uint16_t crc, std::uint8_t byte)
{
    std::uint32_t value = crc ^ static_cast<std::uint32_t>(byte) << 8;
    for (int bit = 0; bit < 8; ++bit)
        value = (value & 0x8000U) != 0 ? value << 1 ^ kPolynomial : value << 1;
    return static_cast<std::uint16_t>(value & 0xFFFFU);
}

QByteArray picFrame(std::uint8_t sequence, const QList<int> &samples)
{
    QByteArray frame;
    frame += static_cast<char>(kPicSyncFirst);
    frame += static_cast<char>(kPicSyncSecond);
    frame += static_cast<char>(sequence);
    std::uint32_t held = 0;
    int bits = 0;
    for (const int sample : samples) {
        held = (held << kSampleBits | static_cast<std::uint32_t>(sample)) & 0x3FFFFU;
        for (bits += kSampleBits; bits >= 8; bits -= 8)
            frame += static_cast<char>(held >> (bits - 8) & 0xFFU);
    }
    std::uint16_t crc = kPicCrcStart;
    for (qsizetype index = kSyncBytes; index < frame.size(); ++index)
        crc = picCrc(crc, byteAt(frame, index));
    frame += static_cast<char>(crc >> 8);
    frame += static_cast<char>(crc & 0xFF);
    return frame;
}

void PicDecoder::reset()
{
    *this = PicDecoder();
}

std::optional<PicDecoder::Sweep> PicDecoder::next()
{
    while (!m_bytes.isEmpty()) {
        const qsizetype before = m_skipped;
        if (!alignToSync() || m_bytes.size() < kPicFrameBytes + kSyncBytes)
            return m_skipped > before ? skip(0) : std::nullopt;
        if (!isWhole() || !isFollowed()) {
            if (auto damaged = skip(1))
                return damaged;
            continue;
        }
        const std::uint8_t sequence = byteAt(m_bytes, kSyncBytes);
        if (isRemnant(sequence)) {
            m_bytes.remove(0, kPicFrameBytes);
            return Sweep{};
        }
        // A gap in the numbers without any other trace: whole frames have vanished.
        if (m_told == 0 && m_expected && *m_expected != sequence) {
            m_told = 1;
            return Sweep{};
        }
        Sweep sweep{samplesOf(m_bytes)};
        m_bytes.remove(0, kPicFrameBytes);
        m_expected = static_cast<std::uint8_t>(sequence + 1);
        m_skipped = 0;
        m_told = 0;
        return sweep;
    }
    return std::nullopt;
}

// False while the sync bytes have not come.
bool PicDecoder::alignToSync()
{
    static const QByteArray kSync("\xA5\x5A", kSyncBytes);
    qsizetype found = m_bytes.indexOf(kSync);
    const bool isThere = found >= 0;
    if (!isThere)
        found = m_bytes.size() - (m_bytes.endsWith(kSync.at(0)) ? 1 : 0);
    m_bytes.remove(0, found);
    m_skipped += found;
    return isThere;
}

bool PicDecoder::isWhole() const
{
    std::uint16_t crc = kPicCrcStart;
    for (qsizetype index = kSyncBytes; index < kPicFrameBytes; ++index)
        crc = picCrc(crc, byteAt(m_bytes, index));
    return crc == 0; // over the data and their own check sum
}

// A check sum of 16 bits alone would pass one in 65,536 of the frames whose bytes have moved. Where one byte was lost
// or added, the next frame's sync bytes stand one place beside where they should; one of them may be damaged
// themselves.
bool PicDecoder::isFollowed() const
{
    const std::uint8_t last = byteAt(m_bytes, kPicFrameBytes - 1);
    const std::uint8_t first = byteAt(m_bytes, kPicFrameBytes);
    const std::uint8_t second = byteAt(m_bytes, kPicFrameBytes + 1);
    const bool firstIsLost = first == kPicSyncSecond && last != kPicSyncFirst;
    return first == kPicSyncFirst || second == kPicSyncSecond || firstIsLost;
}

// The bytes skipped so far may have been damaged frames of this sweep: each has left at least half of its length.
bool PicDecoder::isRemnant(std::uint8_t sequence) const
{
    return !m_expected && sequence > (m_skipped + kPicFrameBytes / 2) / kPicFrameBytes;
}

std::optional<PicDecoder::Sweep> PicDecoder::skip(qsizetype bytes)
{
    m_bytes.remove(0, bytes);
    m_skipped += bytes;
    if (m_told > 0 && m_skipped <= qsizetype{m_told} * kPicFrameBytes)
        return std::nullopt;
    ++m_told;
    return Sweep{};
}

} // namespace calvorn
