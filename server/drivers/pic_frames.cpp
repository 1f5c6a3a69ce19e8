// SPDX-License-Identifier: MIT
#include "server/drivers/pic_frames.h"

#include "protocol/sweep_points.h"

namespace calvorn {

namespace {

constexpr std::uint8_t kSyncFirst = 0xA5;
constexpr std::uint8_t kSyncSecond = 0x5A;
constexpr qsizetype kSyncBytes = 2;
constexpr qsizetype kHeaderBytes = 3;
constexpr int kSampleBits = 10;
constexpr qsizetype kDataBytes = kSweepPoints * kSampleBits / 8;
constexpr qsizetype kCheckSumBytes = 2;
static_assert(kHeaderBytes + kDataBytes + kCheckSumBytes == kPicFrameBytes);

// CRC-16/CCITT-FALSE: most significant bit first, no inversion; the CRC of the nine characters "123456789" is 0x29B1.
constexpr std::uint16_t kCrcPolynomial = 0x1021;
constexpr std::uint16_t kCrcStart = 0xFFFF;

std::uint16_t crcWith(std::uint16_t crc, std::uint8_t byte)
{
    std::uint32_t value = crc ^ static_cast<std::uint32_t>(byte) << 8;
    for (int bit = 0; bit < 8; ++bit)
        value = (value & 0x8000U) != 0 ? value << 1 ^ kCrcPolynomial : value << 1;
    return static_cast<std::uint16_t>(value & 0xFFFFU);
}

// The check sum covers start and step as 32-bit two's complement numbers, highest byte first.
std::uint16_t crcOf(const PicPlan &plan)
{
    std::uint16_t crc = kCrcStart;
    for (const std::int32_t hertz : {plan.start, plan.step})
        for (int shift = 24; shift >= 0; shift -= 8)
            crc = crcWith(crc, static_cast<std::uint8_t>(static_cast<std::uint32_t>(hertz) >> shift & 0xFFU));
    return crc;
}

std::uint8_t byteAt(const QByteArray &bytes, qsizetype index)
{
    return static_cast<std::uint8_t>(bytes.at(index));
}

QList<int> samplesOf(const QByteArray &frame)
{
    QList<int> samples;
    samples.reserve(kSweepPoints);
    std::uint32_t held = 0;
    int bits = 0;
    for (qsizetype index = kHeaderBytes; index < kHeaderBytes + kDataBytes; ++index) {
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

PicDecoder::PicDecoder(const PicPlan &plan)
    : m_crcOfPlan(crcOf(plan))
{
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
        // A gap in the sequence numbers without damaged bytes means that whole frames were lost.
        if (m_reported == 0 && m_expected && *m_expected != sequence) {
            m_reported = 1;
            return Sweep{};
        }
        Sweep sweep{samplesOf(m_bytes)};
        m_bytes.remove(0, kPicFrameBytes);
        m_expected = static_cast<std::uint8_t>(sequence + 1);
        m_skipped = 0;
        m_reported = 0;
        return sweep;
    }
    return std::nullopt;
}

// Removes all bytes before the sync bytes. Returns false if the sync bytes have not been received yet.
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
    std::uint16_t crc = m_crcOfPlan;
    for (qsizetype index = kSyncBytes; index < kPicFrameBytes; ++index)
        crc = crcWith(crc, byteAt(m_bytes, index));
    return crc == 0; // the CRC includes the received check sum
}

// Checks the sync bytes of the next frame, because a 16-bit check sum alone would accept one in 65,536 frames with
// shifted bytes. If a byte was lost or added, the next sync bytes are off by one position. One of the two sync bytes
// may itself be damaged.
bool PicDecoder::isFollowed() const
{
    const std::uint8_t last = byteAt(m_bytes, kPicFrameBytes - 1);
    const std::uint8_t first = byteAt(m_bytes, kPicFrameBytes);
    const std::uint8_t second = byteAt(m_bytes, kPicFrameBytes + 1);
    const bool firstIsLost = first == kSyncSecond && last != kSyncFirst;
    return first == kSyncFirst || second == kSyncSecond || firstIsLost;
}

// Returns true if the frame is left over from an earlier sweep, because its number exceeds the number of damaged frames
// that the skipped bytes can contain. A damaged frame is assumed to have lost no more than half of its bytes.
bool PicDecoder::isRemnant(std::uint8_t sequence) const
{
    return !m_expected && sequence > (m_skipped + kPicFrameBytes / 2) / kPicFrameBytes;
}

std::optional<PicDecoder::Sweep> PicDecoder::skip(qsizetype bytes)
{
    m_bytes.remove(0, bytes);
    m_skipped += bytes;
    if (m_reported > 0 && m_skipped <= qsizetype{m_reported} * kPicFrameBytes)
        return std::nullopt;
    ++m_reported;
    return Sweep{};
}

} // namespace calvorn
