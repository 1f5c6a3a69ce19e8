// SPDX-License-Identifier: MIT
#pragma once

#include "server/synthesiser/dds_clock.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace calvorn {

// Microseconds that the detector has to settle at each point (docs/hardware/pic-board.md).
inline constexpr int kShortestPicSettling = 20;
inline constexpr int kLongestPicSettling = 10'000;
inline constexpr int kUsualPicSettling = 50; // after a reset, and of a board that does not tell

// The longest answer to "?", with its carriage return.
inline constexpr qsizetype kLongestPicIdentity = 48;

// What the settings say of the board.
struct PicSettings
{
    DdsClock clock;     // of its generator; the board computes its own words, this serves the remarks
    int settlingUs = 0; // 0: as the board does by itself
};

// What a PIC board tells about itself.
struct PicIdentity
{
    QString name;             // of the firmware
    QString version;          // of the firmware
    QString chip;             // of the generator
    std::int64_t clockHz = 0; // of the generator, after a multiplier
    int settlingUs = kUsualPicSettling;

    bool operator==(const PicIdentity &) const = default;
};

// text: what stands between "?+" and the carriage return. Nothing unless it is five words with a clock above 0 and a
// settling time that there is.
std::optional<PicIdentity> picIdentityFrom(const QByteArray &text);

// A sentence for the user when the board's generator is another one than that of the settings: another chip, or a clock
// that differs by more than a crystal can. Empty otherwise.
QString remarkOnGenerator(const PicIdentity &board, const DdsClock &configured);

} // namespace calvorn
