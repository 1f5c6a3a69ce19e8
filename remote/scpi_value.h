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
// If the parameter is invalid, each function returns nothing and sets the error; otherwise the error is unchanged.
// A parameter of the wrong kind is error -128 (Number), -148 (Word), -158 (Text) or -168 (Block).

// The quantity of a number, with the accepted suffixes, which are case-insensitive. The first one is the default.
enum class ScpiQuantity {
    Plain,             // no suffix allowed (error -138)
    Hertz,             // HZ, KHZ, MHZ (10^6, as specified by SCPI-99), MAHZ (the same), GHZ
    Volts,             // V, MV (10^-3), UV
    Decibels,          // DB
    DecibelMilliwatts, // DBM
    Seconds,           // S, MS, US, NS
};

// An inclusive range in the quantity's base unit. MINimum, MAXimum and DEFault select these values; without a default
// (NaN), DEFault is error -224.
struct ScpiRange
{
    double min = std::numeric_limits<double>::lowest();
    double max = std::numeric_limits<double>::max();
    double def = std::numeric_limits<double>::quiet_NaN();
};

// Returns the number in the base unit: Hz, V, dB, dBm or s. Errors: -131 (unknown suffix), -141 (unknown word), -222
// (out of range).
std::optional<double> readNumber(const ScpiParameter &parameter, ScpiQuantity quantity, const ScpiRange &range,
                                 ScpiError &error);
// Accepts no suffix; rounds half away from zero before the range check. Numbers beyond +-2^53 are error -222.
std::optional<qint64> readWhole(const ScpiParameter &parameter, const ScpiRange &range, ScpiError &error);
// Accepts ON, OFF or a number, which is true unless it rounds to 0. Errors: -138 (suffix), -141 (other word).
std::optional<bool> readBoolean(const ScpiParameter &parameter, ScpiError &error);
// Returns the index of the choice, such as "FILTer", whose short or long form matches the word. Error: -224 (no match).
std::optional<int> readChoice(const ScpiParameter &parameter, std::span<const char *const> choices, ScpiError &error);
// Return the contents of a quoted string or a block.
std::optional<QByteArray> readText(const ScpiParameter &parameter, ScpiError &error);
std::optional<QByteArray> readBlock(const ScpiParameter &parameter, ScpiError &error);

// Returns the error for a parameter of the wrong kind, with the parameter as its detail.
ScpiError notAllowed(const ScpiParameter &parameter);

// --- writing responses ---

// The values that SCPI-99 uses for NaN and infinity.
inline constexpr double kScpiNotANumber = 9.91e37;
inline constexpr double kScpiInfinity = 9.9e37;

QByteArray nr1(qint64 value);
// `d.dddE+dd`, with the fewest digits that read back as the same double: "7.1E+06", "-1.0E-300". NaN and infinities
// become the values above.
QByteArray nr3(double value);
QByteArray nr3(float value);    // the same for a float
QByteArray boolean(bool value); // "1" or "0"
// Encloses the text in double quotes and doubles the quotes inside. LF, which would end the response, becomes a space.
QByteArray quoted(QByteArrayView text);
// `#<digit><length><bytes>`; contains at most the first 999,999,999 bytes.
QByteArray block(QByteArrayView bytes);
// A block of 64-bit IEEE 754 numbers, most significant byte first (REAL,64 with FORMat:BORDer NORMal). NaN and
// infinities are written as in nr3().
QByteArray realBlock(std::span<const double> values);

} // namespace calvorn
