// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>

#include <cstdint>
#include <optional>

namespace calvorn {

// A sweep of the PIC board on the line: A5 5A, sequence number, 400 samples of ten bits in 500 bytes, check sum.
inline constexpr int kPicFrameBytes = 505;

// The frequencies of a sweep. The check sum of each frame starts with them.
struct PicPlan
{
    std::int32_t start = 0; // Hz
    std::int32_t step = 0;  // Hz
};

// Finds the frames in a byte stream. After lost, added or damaged bytes, searches all the stored bytes for the next
// frame, so that only the affected frames are lost.
class PicDecoder
{
public:
    struct Sweep
    {
        QList<int> samples; // empty for a damaged sweep
        bool isDamaged() const { return samples.isEmpty(); }
    };

    // Starts a sweep with this plan. Frames of any other plan count as damaged.
    explicit PicDecoder(const PicPlan &plan);

    // Adds received bytes, in pieces of any length.
    void take(const QByteArray &bytes) { m_bytes += bytes; }

    // Returns the next sweep, in the order of the line, as soon as the sync bytes after it have arrived, or nothing if
    // more bytes are needed. Reports a damaged sweep when it detects the damage, and again for each further frame
    // length without a good frame. Also reports as damaged a complete first frame with a number other than 0, because
    // it remains from an earlier sweep, unless damaged frames before it explain its number.
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
    int m_reported = 0;                     // damaged sweeps reported since the last good frame
    std::optional<std::uint8_t> m_expected; // empty before the first good frame
};

} // namespace calvorn
