// SPDX-License-Identifier: MIT
#include "remote/scpi_value.h"

#include "remote/scpi_pattern.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>

namespace calvorn {

namespace {

// A suffix and its factor: the number is multiplied by "times" and divided by "parts", both exact powers of ten.
struct Unit
{
    ScpiQuantity quantity = ScpiQuantity::Plain;
    QByteArrayView suffix;
    double times = 1.0;
    double parts = 1.0;
};

constexpr std::array kUnits = {
    Unit{ScpiQuantity::Hertz, "HZ", 1.0, 1.0},    Unit{ScpiQuantity::Hertz, "KHZ", 1e3, 1.0},
    Unit{ScpiQuantity::Hertz, "MHZ", 1e6, 1.0},   Unit{ScpiQuantity::Hertz, "MAHZ", 1e6, 1.0},
    Unit{ScpiQuantity::Hertz, "GHZ", 1e9, 1.0},   Unit{ScpiQuantity::Volts, "V", 1.0, 1.0},
    Unit{ScpiQuantity::Volts, "MV", 1.0, 1e3},    Unit{ScpiQuantity::Volts, "UV", 1.0, 1e6},
    Unit{ScpiQuantity::Decibels, "DB", 1.0, 1.0}, Unit{ScpiQuantity::DecibelMilliwatts, "DBM", 1.0, 1.0},
    Unit{ScpiQuantity::Seconds, "S", 1.0, 1.0},   Unit{ScpiQuantity::Seconds, "MS", 1.0, 1e3},
    Unit{ScpiQuantity::Seconds, "US", 1.0, 1e6},  Unit{ScpiQuantity::Seconds, "NS", 1.0, 1e9},
};

constexpr double kLargestExactInteger = 9007199254740992.0; // 2^53

void fail(int number, const ScpiParameter &parameter, ScpiError &error)
{
    error = {number, parameter.written};
}

// Returns the number in its base unit.
std::optional<double> inBaseUnit(const ScpiParameter &parameter, ScpiQuantity quantity, ScpiError &error)
{
    if (parameter.suffix.isEmpty())
        return parameter.number;
    if (quantity == ScpiQuantity::Plain) {
        fail(kScpiSuffixNotAllowed, parameter, error);
        return std::nullopt;
    }
    const auto unit = std::find_if(kUnits.begin(), kUnits.end(), [&](const Unit &candidate) {
        return candidate.quantity == quantity && parameter.suffix == candidate.suffix;
    });
    if (unit == kUnits.end()) {
        fail(kScpiInvalidSuffix, parameter, error);
        return std::nullopt;
    }
    return parameter.number * unit->times / unit->parts;
}

// Returns the value of MINimum, MAXimum or DEFault.
std::optional<double> namedValue(const ScpiParameter &parameter, const ScpiRange &range, ScpiError &error)
{
    if (matchesMnemonic("MINimum", parameter.text))
        return range.min;
    if (matchesMnemonic("MAXimum", parameter.text))
        return range.max;
    const bool isDefault = matchesMnemonic("DEFault", parameter.text);
    if (isDefault && !std::isnan(range.def))
        return range.def;
    fail(isDefault ? kScpiIllegalParameterValue : kScpiInvalidCharacterData, parameter, error);
    return std::nullopt;
}

// Reads a number, MINimum, MAXimum or DEFault. rounded: rounds to the nearest integer before the range check.
std::optional<double> readInRange(const ScpiParameter &parameter, ScpiQuantity quantity, const ScpiRange &range,
                                  bool rounded, ScpiError &error)
{
    if (parameter.kind == ScpiParameter::Kind::Word)
        return namedValue(parameter, range, error);
    if (parameter.kind != ScpiParameter::Kind::Number) {
        error = notAllowed(parameter);
        return std::nullopt;
    }
    auto value = inBaseUnit(parameter, quantity, error);
    if (!value)
        return std::nullopt;
    if (rounded)
        value = std::round(*value);
    if (!(*value >= range.min && *value <= range.max) || !std::isfinite(*value)) {
        fail(kScpiDataOutOfRange, parameter, error);
        return std::nullopt;
    }
    return value;
}

double asScpiNumber(double value)
{
    if (std::isnan(value))
        return kScpiNotANumber;
    if (std::isinf(value))
        return std::copysign(kScpiInfinity, value);
    return value;
}

template <typename Number>
QByteArray scientific(Number value)
{
    std::array<char, 32> buffer{};
    const auto written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific);
    QByteArray text(buffer.data(), written.ptr - buffer.data());
    const qsizetype exponent = text.indexOf('e');
    text[exponent] = 'E';
    if (!text.contains('.'))
        text.insert(exponent, ".0");
    return text;
}

} // namespace

ScpiError notAllowed(const ScpiParameter &parameter)
{
    switch (parameter.kind) {
    case ScpiParameter::Kind::Number:
        return {kScpiNumericDataNotAllowed, parameter.written};
    case ScpiParameter::Kind::Word:
        return {kScpiCharacterDataNotAllowed, parameter.written};
    case ScpiParameter::Kind::Text:
        return {kScpiStringDataNotAllowed, parameter.written};
    case ScpiParameter::Kind::Block:
        break;
    }
    return {kScpiBlockDataNotAllowed, parameter.written};
}

std::optional<double> readNumber(const ScpiParameter &parameter, ScpiQuantity quantity, const ScpiRange &range,
                                 ScpiError &error)
{
    return readInRange(parameter, quantity, range, false, error);
}

std::optional<qint64> readWhole(const ScpiParameter &parameter, const ScpiRange &range, ScpiError &error)
{
    const ScpiRange exact{std::max(range.min, -kLargestExactInteger), std::min(range.max, kLargestExactInteger),
                          range.def};
    const auto value = readInRange(parameter, ScpiQuantity::Plain, exact, true, error);
    if (!value)
        return std::nullopt;
    return static_cast<qint64>(std::round(*value));
}

std::optional<bool> readBoolean(const ScpiParameter &parameter, ScpiError &error)
{
    if (parameter.kind == ScpiParameter::Kind::Word) {
        if (parameter.text == "ON")
            return true;
        if (parameter.text == "OFF")
            return false;
        fail(kScpiInvalidCharacterData, parameter, error);
        return std::nullopt;
    }
    const auto value = readInRange(parameter, ScpiQuantity::Plain, ScpiRange(), true, error);
    if (!value)
        return std::nullopt;
    return *value != 0.0;
}

std::optional<int> readChoice(const ScpiParameter &parameter, std::span<const char *const> choices, ScpiError &error)
{
    if (parameter.kind != ScpiParameter::Kind::Word) {
        error = notAllowed(parameter);
        return std::nullopt;
    }
    for (std::size_t index = 0; index < choices.size(); ++index) {
        if (matchesMnemonic(choices[index], parameter.text))
            return static_cast<int>(index);
    }
    fail(kScpiIllegalParameterValue, parameter, error);
    return std::nullopt;
}

std::optional<QByteArray> readText(const ScpiParameter &parameter, ScpiError &error)
{
    if (parameter.kind == ScpiParameter::Kind::Text)
        return parameter.text;
    error = notAllowed(parameter);
    return std::nullopt;
}

std::optional<QByteArray> readBlock(const ScpiParameter &parameter, ScpiError &error)
{
    if (parameter.kind == ScpiParameter::Kind::Block)
        return parameter.text;
    error = notAllowed(parameter);
    return std::nullopt;
}

QByteArray nr1(qint64 value)
{
    return QByteArray::number(value);
}

QByteArray nr3(double value)
{
    return scientific(asScpiNumber(value));
}

QByteArray nr3(float value)
{
    return std::isfinite(value) ? scientific(value) : nr3(static_cast<double>(value));
}

QByteArray boolean(bool value)
{
    return value ? "1" : "0";
}

QByteArray quoted(QByteArrayView text)
{
    return '"' + text.toByteArray().replace('"', "\"\"").replace('\n', ' ') + '"';
}

QByteArray block(QByteArrayView bytes)
{
    constexpr qsizetype kMostBytes = 999'999'999;
    const QByteArray taken = bytes.first(std::min(bytes.size(), kMostBytes)).toByteArray();
    const QByteArray length = QByteArray::number(taken.size());
    return '#' + QByteArray::number(length.size()) + length + taken;
}

QByteArray realBlock(std::span<const double> values)
{
    QByteArray bytes(static_cast<qsizetype>(values.size_bytes()), Qt::Uninitialized);
    char *out = bytes.data();
    for (const double value : values) {
        qToBigEndian(std::bit_cast<quint64>(asScpiNumber(value)), out);
        out += sizeof(quint64);
    }
    return block(bytes);
}

} // namespace calvorn
