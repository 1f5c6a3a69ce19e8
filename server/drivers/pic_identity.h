// SPDX-License-Identifier: MIT
#pragma once

#include "server/synthesiser/dds_clock.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace calvorn {

// Detector settling time at each point, in microseconds (docs/hardware/pic-board.md).
inline constexpr int kShortestPicSettling = 20;
inline constexpr int kLongestPicSettling = 10'000;
inline constexpr int kUsualPicSettling = 50; // after a reset, and for boards that do not report it

// The longest reply to "?", including its carriage return.
inline constexpr qsizetype kLongestPicIdentity = 48;

// The board as configured in the settings.
struct PicSettings
{
    DdsClock clock;     // used only for remarks; the board computes its own tuning words
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

// Parses the text between "?+" and the carriage return. Returns nullopt unless it consists of five words with a clock
// above 0 and a settling time within the range above.
std::optional<PicIdentity> picIdentityFrom(const QByteArray &text);

// Returns a message for the user if the board's generator differs from the settings, either in the chip or in the clock
// by more than a crystal's tolerance; otherwise an empty string.
QString remarkOnGenerator(const PicIdentity &board, const DdsClock &configured);

} // namespace calvorn
