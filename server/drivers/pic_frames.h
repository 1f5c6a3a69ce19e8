// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>

#include <cstdint>
#include <optional>

namespace calvorn {

// A sweep as the PIC board transmits it: A5 5A, sequence number, 400 ten-bit samples in 500 bytes, check sum.
inline constexpr int kPicFrameBytes = 505;

// The frequencies of a sweep. They are included in the check sum of each frame.
struct PicPlan
{
    std::int32_t start = 0; // Hz
    std::int32_t step = 0;  // Hz
};

// Finds the frames in a byte stream. If bytes were lost, added or damaged, it searches all stored bytes for the next
// frame, so that only the affected frames are lost.
class PicDecoder
{
public:
    struct Sweep
    {
        QList<int> samples; // empty for a damaged sweep
        bool isDamaged() const { return samples.isEmpty(); }
    };

    // Starts decoding a sweep with this plan. Frames with any other plan are treated as damaged.
    explicit PicDecoder(const PicPlan &plan);

    // Adds received bytes, in pieces of any length.
    void take(const QByteArray &bytes) { m_bytes += bytes; }

    // Returns the next sweep in the order of transmission once the sync bytes after it have been received, or nullopt
    // if more bytes are needed. Returns a damaged sweep when damage is detected, and another one for each further frame
    // length without a good frame. A complete first frame whose number is not 0 also counts as damaged, because it is
    // left over from an earlier sweep, unless damaged frames before it explain its number.
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
