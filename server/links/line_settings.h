// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

enum class LineParity { None, Even, Odd, Mark, Space };
enum class LineStop { One, OneAndHalf, Two };

// The parameters of a serial line.
struct LineSettings
{
    int baud = 115'200;
    LineParity parity = LineParity::None;
    int dataBits = 8; // 5..8
    LineStop stop = LineStop::One;

    bool operator==(const LineSettings &) const = default;
};

// Parses "115200,N,8,1": baud rate (1..4,000,000), parity N, E, O, M or S, data bits 5..8, stop bits 1, 1.5 or 2.
// Ignores blanks and case. For anything else, throws std::runtime_error with a message for the user.
LineSettings parseLineSettings(const QString &text);

} // namespace calvorn
