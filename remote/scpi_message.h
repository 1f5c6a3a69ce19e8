// SPDX-License-Identifier: MIT
#pragma once

#include "remote/scpi_error.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

namespace calvorn {

// Limits set by IEEE 488.2 and by this parser, in characters.
inline constexpr qsizetype kLongestMnemonic = 13; // 12 in IEEE 488.2; POTENTIOMETER has one more
inline constexpr qsizetype kLongestWord = 12;
inline constexpr qsizetype kLongestSuffix = 12;
inline constexpr int kMostHeaderSuffixDigits = 5;
inline constexpr int kMostMantissaDigits = 255; // without leading zeros
inline constexpr int kLargestExponent = 32000;  // positive or negative

// One mnemonic of a header. "MARKer2" is {"MARKer", 2}. Common commands have no suffix: "*ABC1" is {"ABC1", -1}.
struct ScpiNode
{
    QByteArray name; // as written, without the suffix
    int suffix = -1; // 0 to 99999; -1: none

    bool operator==(const ScpiNode &) const = default;
};

// One program data element.
struct ScpiParameter
{
    enum class Kind { Number, Word, Text, Block };

    Kind kind = Kind::Number;
    double number = 0.0; // Number: finite, in the suffix's unit
    QByteArray suffix;   // Number: upper case, may be empty
    QByteArray text;     // Word: upper case; Text: without outer quotes, doubled quotes collapsed; Block: its bytes
    QByteArray written;  // as written by the client, at most 40 bytes, for error details

    bool operator==(const ScpiParameter &) const = default;
};

// One command or query.
struct ScpiUnit
{
    QByteArray header; // as written, including ":", "*" and "?", for error details
    bool isCommon = false;
    bool isQuery = false;
    bool isAbsolute = false; // written with a leading colon
    QList<ScpiNode> path;    // from the root, with omitted nodes filled in; at least one node
    QList<ScpiParameter> parameters;

    bool operator==(const ScpiUnit &) const = default;
};

// Splits an IEEE 488.2 program message into its units.
//
// A header without a leading colon continues at the level of the previous compound header in the same message, as
// SCPI-99 specifies; common commands do not change that level. Empty units are skipped. The locale has no effect.
//
// Parsing stops at the first error; the units before it are returned first. Errors in the message syntax are -101,
// -102, -103, -111, -112 and -114; errors in data are -121, -123 (also for numbers too large for a double), -124, -131,
// -134, -138, -141, -144, -151, -161 and -178. A number too small for a double is read as 0.
class ScpiMessage
{
public:
    enum class Step { Unit, End, Error };

    // message: without the final LF, see ScpiLines. The message is copied.
    explicit ScpiMessage(QByteArrayView message);

    // Sets only "unit" if it returns Step::Unit, and only "error" if it returns Step::Error. After End or Error, every
    // further call returns End.
    Step next(ScpiUnit &unit, ScpiError &error);

    // Returns the number of bytes read so far; after an error, the position where it was found.
    qsizetype position() const { return m_at; }

private:
    bool readUnit(ScpiUnit &unit, ScpiError &error);

    QByteArray m_message;
    qsizetype m_at = 0;
    QList<ScpiNode> m_level; // the nodes that precede a header without a leading colon
    bool m_hasFailed = false;
};

} // namespace calvorn
