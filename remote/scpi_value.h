// SPDX-License-Identifier: MIT
#pragma once

#include "remote/scpi_error.h"
#include "remote/scpi_message.h"

#include <QByteArray>
#include <QByteArrayView>

#include <limits>
#include <optional>
#include <span>

namespace calvorn {

// --- reading parameters ---
//
// If the parameter does not fit, each function returns nothing and sets the error; otherwise the error stays unchanged.
// Error for a parameter of the wrong kind: -128 (Number), -148 (Word), -158 (Text) or -168 (Block).

// The quantity of a number, with the suffixes accepted in any case. Without a suffix, the first one applies.
enum class ScpiQuantity {
    Plain,             // no suffix; one is -138
    Hertz,             // HZ, KHZ, MHZ (10^6, as SCPI-99 says), MAHZ (the same), GHZ
    Volts,             // V, MV (10^-3), UV
    Decibels,          // DB
    DecibelMilliwatts, // DBM
    Seconds,           // S, MS, US, NS
};

// Both ends are allowed, in the base unit of the quantity. MINimum, MAXimum and DEFault stand for these values; without
// a default (NaN), DEFault is error -224.
struct ScpiRange
{
    double min = std::numeric_limits<double>::lowest();
    double max = std::numeric_limits<double>::max();
    double def = std::numeric_limits<double>::quiet_NaN();
};

// Returns the number in the base unit: Hz, V, dB, dBm or s. -131: an unknown suffix; -141: an unknown word; -222: out
// of range.
std::optional<double> readNumber(const ScpiParameter &parameter, ScpiQuantity quantity, const ScpiRange &range,
                                 ScpiError &error);
// Accepts no suffix; rounds half away from zero before the range check. Beyond +-2^53: -222.
std::optional<qint64> readWhole(const ScpiParameter &parameter, const ScpiRange &range, ScpiError &error);
// Accepts ON, OFF, or a number: true unless it rounds to 0. -138: a suffix; -141: another word.
std::optional<bool> readBoolean(const ScpiParameter &parameter, ScpiError &error);
// Returns the index of the choice, such as "FILTer", whose short or long form matches the word. -224: no match.
std::optional<int> readChoice(const ScpiParameter &parameter, std::span<const char *const> choices, ScpiError &error);
// Return the content of a quoted string or of a block.
std::optional<QByteArray> readText(const ScpiParameter &parameter, ScpiError &error);
std::optional<QByteArray> readBlock(const ScpiParameter &parameter, ScpiError &error);

// Returns the error for a parameter of the wrong kind, with the parameter as its detail.
ScpiError notAllowed(const ScpiParameter &parameter);

// --- writing answers ---

// The values that SCPI-99 uses for NaN and infinity.
inline constexpr double kScpiNotANumber = 9.91e37;
inline constexpr double kScpiInfinity = 9.9e37;

QByteArray nr1(qint64 value);
// `d.dddE+dd`, with as few digits as needed to read back the same double: "7.1E+06", "-1.0E-300". NaN and infinities
// become the values above.
QByteArray nr3(double value);
QByteArray nr3(float value);    // likewise, for a float
QByteArray boolean(bool value); // "1" or "0"
// Puts the text in double quotes and doubles the quotes inside. LF, which would end the answer, becomes a blank.
QByteArray quoted(QByteArrayView text);
// `#<digit><length><bytes>`; contains at most the first 999,999,999 bytes.
QByteArray block(QByteArrayView bytes);
// A block of 64-bit IEEE 754 numbers, most significant byte first (REAL,64 with FORMat:BORDer NORMal). NaN and
// infinities as in nr3().
QByteArray realBlock(std::span<const double> values);

} // namespace calvorn
