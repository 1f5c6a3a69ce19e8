// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>

#include <cstdint>
#include <optional>

namespace calvorn {

// A sweep of the PIC board on the line: A5 5A, sequence number, 400 samples of ten bits in 500 bytes, check sum.
inline constexpr int kPicFrameBytes = 505;

// What a sweep of the board is made of. The check sums of its frames begin with it.
struct PicPlan
{
    std::int32_t start = 0; // Hz
    std::int32_t step = 0;  // Hz
};

// Finds the frames in what arrives. After bytes that were lost, added or damaged it looks for the next frame within
// all that it has kept, so that only the frames that were hit are lost.
class PicDecoder
{
public:
    struct Sweep
    {
        QList<int> samples; // empty: a sweep was damaged
        bool isDamaged() const { return samples.isEmpty(); }
    };

    // A sweep with this plan begins. Frames of any other one are damaged.
    explicit PicDecoder(const PicPlan &plan);

    // Bytes in pieces of any length.
    void take(const QByteArray &bytes) { m_bytes += bytes; }

    // The next sweep, in the order of the line, as soon as the sync bytes behind it have come; nothing when more bytes
    // are needed. A damaged one is told when the damage is noticed, and again for each further frame length without a
    // good frame. So is a whole frame that comes first and has a number other than 0, unless the bytes before it were
    // damaged frames that account for its number: it is a remnant of an earlier sweep.
    std::optional<Sweep> next();

private:
    bool alignToSync();
    bool isWhole() const;
    bool isFollowed() const;
    bool isRemnant(std::uint8_t sequence) const;
    std::optional<Sweep> skip(qsizetype bytes);

    std::uint16_t m_crcOfPlan;
    QByteArray m_bytes;
    qsizetype m_skipped = 0;                // since the last good frame
    int m_told = 0;                         // damaged sweeps told since the last good frame
    std::optional<std::uint8_t> m_expected; // nothing before the first good frame
};

} // namespace calvorn
