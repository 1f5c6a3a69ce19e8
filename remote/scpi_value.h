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
// Each function returns nothing and sets the error when the parameter does not fit, and leaves the error alone
// otherwise. A parameter of the wrong kind is -128 (Number), -148 (Word), -158 (Text) or -168 (Block).

// What a number measures, with the suffixes that are taken, in any case. Without a suffix: the first one.
enum class ScpiQuantity {
    Plain,             // no suffix; one is -138
    Hertz,             // HZ, KHZ, MHZ (10^6, as SCPI-99 says), MAHZ (the same), GHZ
    Volts,             // V, MV (10^-3), UV
    Decibels,          // DB
    DecibelMilliwatts, // DBM
    Seconds,           // S, MS, US, NS
};

// In the base unit of the quantity, both ends allowed. MINimum, MAXimum and DEFault stand for these values; without a
// default (NaN), DEFault is -224.
struct ScpiRange
{
    double min = std::numeric_limits<double>::lowest();
    double max = std::numeric_limits<double>::max();
    double def = std::numeric_limits<double>::quiet_NaN();
};

// In the base unit: Hz, V, dB, dBm or s. -131: another suffix; -141: another word than the three; -222: out of range.
std::optional<double> readNumber(const ScpiParameter &parameter, ScpiQuantity quantity, const ScpiRange &range,
                                 ScpiError &error);
// Without suffix, rounded half away from zero before the range is looked at. Beyond +-2^53: -222.
std::optional<qint64> readWhole(const ScpiParameter &parameter, const ScpiRange &range, ScpiError &error);
// ON, OFF, or a number: true unless it rounds to 0. -138: a suffix; -141: another word.
std::optional<bool> readBoolean(const ScpiParameter &parameter, ScpiError &error);
// The index of the choice, such as "FILTer", whose short or long form the word is. -224: none.
std::optional<int> readChoice(const ScpiParameter &parameter, std::span<const char *const> choices, ScpiError &error);
// A string in quotes, or the bytes of a block.
std::optional<QByteArray> readText(const ScpiParameter &parameter, ScpiError &error);
std::optional<QByteArray> readBlock(const ScpiParameter &parameter, ScpiError &error);

// The error for a parameter of a kind that is not allowed, with the parameter as its detail.
ScpiError notAllowed(const ScpiParameter &parameter);

// --- writing answers ---

// What SCPI-99 says instead of numbers that are none. Not a number, and either infinity with its sign.
inline constexpr double kScpiNotANumber = 9.91e37;
inline constexpr double kScpiInfinity = 9.9e37;

QByteArray nr1(qint64 value);
// `d.dddE+dd`, with as few digits as read back to the same double: "7.1E+06", "-1.0E-300". NaN and infinities become
// the numbers above.
QByteArray nr3(double value);
QByteArray nr3(float value);    // with as few digits as read back to the same float
QByteArray boolean(bool value); // "1" or "0"
// In double quotes, those inside doubled. LF, which would end the answer, becomes a blank.
QByteArray quoted(QByteArrayView text);
// `#<digit><length><bytes>`, of at most 999,999,999 bytes: of more, only the first ones.
QByteArray block(QByteArrayView bytes);
// A block of IEEE 754 numbers of 64 bits, most significant byte first (REAL,64 with FORMat:BORDer NORMal). NaN and
// infinities as nr3() writes them.
QByteArray realBlock(std::span<const double> values);

} // namespace calvorn
