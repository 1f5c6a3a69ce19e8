// SPDX-License-Identifier: MIT
#pragma once

#include "server/synthesiser/dds_clock.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace calvorn {

// Settling time of the detector at each point, in microseconds (docs/hardware/pic-board.md).
inline constexpr int kShortestPicSettling = 20;
inline constexpr int kLongestPicSettling = 10'000;
inline constexpr int kUsualPicSettling = 50; // after a reset, and for boards that do not report it

// The longest answer to "?", including its carriage return.
inline constexpr qsizetype kLongestPicIdentity = 48;

// The board as the settings describe it.
struct PicSettings
{
    DdsClock clock;     // for the remarks only; the board computes its own words
    int settlingUs = 0; // 0: the board's default
};

// The identity that a PIC board reports.
struct PicIdentity
{
    QString name;             // of the firmware
    QString version;          // of the firmware
    QString chip;             // of the generator
    std::int64_t clockHz = 0; // of the generator, after a multiplier
    int settlingUs = kUsualPicSettling;

    bool operator==(const PicIdentity &) const = default;
};

// Parses the text between "?+" and the carriage return. Returns nothing unless it has five words with a clock above 0
// and a settling time within its range.
std::optional<PicIdentity> picIdentityFrom(const QByteArray &text);

// Returns a sentence for the user when the board's generator differs from the settings: in the chip, or in the clock by
// more than the tolerance of a crystal. Empty otherwise.
QString remarkOnGenerator(const PicIdentity &board, const DdsClock &configured);

} // namespace calvorn
