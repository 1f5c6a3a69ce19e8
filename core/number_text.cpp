// SPDX-License-Identifier: MIT
#include "core/number_text.h"

#include "core/checked_arithmetic.h"

#include <QVarLengthArray>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace calvorn {

namespace {

constexpr double kLargestExactInteger = 9007199254740992.0; // 2^53

bool isSpaceLike(QChar c)
{
    return c == u' ' || c == u'\u00A0' || c == u'\u202F' || c == u'\t';
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

[[noreturn]] void throwMismatch(QStringView text)
{
    throw RuntimeError(RuntimeError::Kind::TypeMismatch, u'"' + text.left(40).toString() + u'"');
}

[[noreturn]] void throwOverflow(QStringView text)
{
    throw RuntimeError(RuntimeError::Kind::Overflow, u'"' + text.left(40).toString() + u'"');
}

QStringView trimmedBlanks(QStringView text)
{
    while (!text.isEmpty() && isSpaceLike(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isSpaceLike(text.back()))
        text.chop(1);
    return text;
}

// Returns the bits of an "&H" literal, or nullopt if the text is not one. Throws Overflow for more than 32 bits.
std::optional<std::uint64_t> hexLiteral(QStringView text)
{
    text = trimmedBlanks(text);
    if (text.size() < 3 || text[0] != u'&' || text[1].toUpper() != u'H')
        return std::nullopt;
    std::uint64_t bits = 0;
    for (const QChar c : text.sliced(2)) {
        const char16_t upper = c.toUpper().unicode();
        const bool letter = upper >= u'A' && upper <= u'F';
        if (!letter && !isDigit(c))
            return std::nullopt;
        if (bits > std::numeric_limits<std::uint32_t>::max())
            throwOverflow(text);
        bits = bits * 16 + static_cast<std::uint64_t>(letter ? upper - u'A' + 10 : upper - u'0');
    }
    if (bits > std::numeric_limits<std::uint32_t>::max())
        throwOverflow(text);
    return bits;
}

// The digits of a rounded number, without grouping or sign.
struct Digits
{
    std::array<char, 352> text{}; // room for the longest double in fixed notation with its decimals
    int length = 0;
    bool negative = false;
};

Digits roundedDigits(double value, int decimals)
{
    Digits digits;
    const double scaled = roundHalfEven(value * powerOfTen(decimals));
    char *const begin = digits.text.data();
    char *const end = begin + digits.text.size();
    if (std::abs(scaled) < kLargestExactInteger) {
        const auto integer = static_cast<std::int64_t>(scaled);
        digits.negative = integer < 0;
        digits.length = static_cast<int>(std::to_chars(begin, end, digits.negative ? -integer : integer).ptr - begin);
        return digits;
    }
    digits.negative = value < 0;
    const auto written = std::to_chars(begin, end, std::abs(value), std::chars_format::fixed, 0);
    digits.length = static_cast<int>(written.ptr - begin);
    for (int i = 0; i < decimals; ++i)
        digits.text[static_cast<std::size_t>(digits.length++)] = '0';
    return digits;
}

} // namespace

NumberText::NumberText(const QLocale &locale)
    : m_decimal(locale.decimalPoint().isEmpty() ? QChar(u'.') : locale.decimalPoint().front())
    , m_group(locale.groupSeparator().isEmpty() ? QChar(u',') : locale.groupSeparator().front())
{
}

QString NumberText::masked(double value, DisplayMask mask) const
{
    QString text;
    assignMasked(text, value, mask);
    return text;
}

void NumberText::assignMasked(QString &target, double value, DisplayMask mask) const
{
    if (!std::isfinite(value)) {
        target = std::isnan(value) ? QStringLiteral("NaN") : QStringLiteral("Inf");
        return;
    }
    const Digits digits = roundedDigits(value, mask.decimals);
    const int significantIntegers = digits.length - mask.decimals;
    const int integers = std::max(significantIntegers, mask.integerDigits);
    const int groups = mask.grouped && integers > 0 ? (integers - 1) / 3 : 0;
    const int point = mask.decimals > 0 ? 1 : 0;
    target.resize((digits.negative ? 1 : 0) + integers + groups + point + mask.decimals);
    QChar *out = target.data();
    if (digits.negative)
        *out++ = u'-';
    // Position 0 is the first integer digit; positions before the significant digits are zeros.
    const auto digitAt = [&](int position) {
        const int index = position - (integers - significantIntegers);
        return QChar(index < 0 ? '0' : digits.text[static_cast<std::size_t>(index)]);
    };
    for (int i = 0; i < integers; ++i) {
        *out++ = digitAt(i);
        const int left = integers - 1 - i;
        if (mask.grouped && left > 0 && left % 3 == 0)
            *out++ = m_group;
    }
    if (point) {
        *out++ = m_decimal;
        for (int i = 0; i < mask.decimals; ++i)
            *out++ = digitAt(integers + i);
    }
}

QString NumberText::withDecimal(const char *first, const char *last) const
{
    QString text = QString::fromLatin1(first, last - first).toUpper();
    return text.replace(u'.', m_decimal);
}

QString NumberText::fromDouble(double value) const
{
    std::array<char, 32> buffer{};
    const double unsignedZero = value == 0.0 ? 0.0 : value;
    const auto written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), unsignedZero, std::chars_format::general, 15);
    return withDecimal(buffer.data(), written.ptr);
}

QString NumberText::fromSingle(float value) const
{
    std::array<char, 32> buffer{};
    const float unsignedZero = value == 0.0F ? 0.0F : value;
    const auto written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), unsignedZero, std::chars_format::general, 7);
    return withDecimal(buffer.data(), written.ptr);
}

QString NumberText::fromInteger(std::int64_t value)
{
    QString text;
    assignInteger(text, value);
    return text;
}

void NumberText::assignInteger(QString &target, std::int64_t value)
{
    std::array<char, 24> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    const auto length = written.ptr - buffer.data();
    target.resize(length);
    QChar *out = target.data();
    for (std::ptrdiff_t i = 0; i < length; ++i)
        out[i] = QLatin1Char(buffer[static_cast<std::size_t>(i)]);
}

bool NumberText::isGroup(QChar c) const
{
    if (c == m_group)
        return true;
    // Where the locale's group separator is a narrow space, users type an ordinary space.
    if (isSpaceLike(m_group))
        return isSpaceLike(c);
    return m_group == u'\u2019' && c == u'\'';
}

// Fast path for text written with display masks. Integers of up to 15 digits and powers of ten are exact as doubles, so
// their quotient is the double nearest to the decimal number.
bool NumberText::readShort(QStringView text, double &value) const
{
    constexpr int kMostDigits = 15;
    const bool isNegative = text.startsWith(u'-');
    std::int64_t digits = 0;
    int count = 0;
    int decimals = -1; // -1 until the decimal separator is found
    for (const QChar c : text.sliced(isNegative ? 1 : 0)) {
        if (isDigit(c)) {
            if (++count > kMostDigits)
                return false;
            digits = digits * 10 + (c.unicode() - u'0');
            decimals += decimals >= 0 ? 1 : 0;
        } else if (c == m_decimal && decimals < 0) {
            decimals = 0;
        } else if (c != m_group || decimals >= 0 || count == 0) {
            return false;
        }
    }
    if (count == 0)
        return false;
    const auto magnitude = static_cast<double>(digits) / (decimals > 0 ? powerOfTen(decimals) : 1.0);
    value = isNegative ? -magnitude : magnitude;
    return true;
}

NumberText::Parse NumberText::parse(QStringView text, double &value) const
{
    if (readShort(text, value))
        return Parse::Number;
    const QStringView body = trimmedBlanks(text);
    QVarLengthArray<char, 64> plain;
    qsizetype i = 0;
    if (i < body.size() && (body[i] == u'-' || body[i] == u'\u2212' || body[i] == u'+')) {
        if (body[i] != u'+')
            plain.append('-');
        ++i;
    }
    bool anyDigit = false;
    bool fraction = false;
    for (; i < body.size(); ++i) {
        const QChar c = body[i];
        if (isDigit(c)) {
            plain.append(static_cast<char>(c.unicode()));
            anyDigit = true;
        } else if (c == m_decimal && !fraction) {
            plain.append('.');
            fraction = true;
        } else if (fraction || !anyDigit || !isGroup(c)) {
            break;
        }
    }
    if (anyDigit && i < body.size() && QStringView(u"eEdD").contains(body[i])) {
        plain.append('e');
        ++i;
        if (i < body.size() && (body[i] == u'-' || body[i] == u'+')) {
            if (body[i] == u'-')
                plain.append('-');
            ++i;
        }
        for (; i < body.size() && isDigit(body[i]); ++i)
            plain.append(static_cast<char>(body[i].unicode()));
    }
    if (!anyDigit || i < body.size())
        return Parse::NotANumber;
    const char *const end = plain.data() + plain.size();
    const auto read = std::from_chars(plain.data(), end, value);
    if (read.ptr != end)
        return Parse::NotANumber;
    if (read.ec == std::errc::result_out_of_range) {
        // A number too small for a double becomes zero; one that is too large is an overflow.
        if (!QByteArrayView(plain.data(), plain.size()).contains("e-"))
            return Parse::TooLarge;
        value = 0.0;
    }
    return Parse::Number;
}

double NumberText::toDouble(QStringView text) const
{
    double value = 0.0;
    switch (parse(text, value)) {
    case Parse::Number:
        return value;
    case Parse::TooLarge:
        throwOverflow(text);
    case Parse::NotANumber:
        break;
    }
    if (const auto bits = hexLiteral(text))
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(*bits));
    throwMismatch(text);
}

float NumberText::toSingle(QStringView text) const
{
    const double value = toDouble(text);
    if (std::abs(value) > static_cast<double>(std::numeric_limits<float>::max()))
        throwOverflow(text);
    return static_cast<float>(value);
}

std::int16_t NumberText::toInt16(QStringView text) const
{
    if (const auto bits = hexLiteral(text)) {
        if (*bits > std::numeric_limits<std::uint16_t>::max())
            throwOverflow(text);
        return static_cast<std::int16_t>(static_cast<std::uint16_t>(*bits));
    }
    const double value = roundHalfEven(toDouble(text));
    if (!(value >= std::numeric_limits<std::int16_t>::min() && value <= std::numeric_limits<std::int16_t>::max()))
        throwOverflow(text);
    return static_cast<std::int16_t>(value);
}

std::int32_t NumberText::toInt32(QStringView text) const
{
    const double value = roundHalfEven(toDouble(text));
    if (!(value >= std::numeric_limits<std::int32_t>::min() && value <= std::numeric_limits<std::int32_t>::max()))
        throwOverflow(text);
    return static_cast<std::int32_t>(value);
}

bool NumberText::toBoolean(QStringView text) const
{
    const QStringView body = trimmedBlanks(text);
    if (body.compare(u"True", Qt::CaseInsensitive) == 0)
        return true;
    if (body.compare(u"False", Qt::CaseInsensitive) == 0)
        return false;
    return toDouble(body) != 0.0;
}

bool NumberText::isNumeric(QStringView text) const
{
    double value = 0.0;
    if (parse(text, value) == Parse::Number)
        return true;
    try {
        return hexLiteral(text).has_value();
    } catch (const RuntimeError &) {
        return false;
    }
}

QString NumberText::normaliseDecimal(const QString &text) const
{
    QString result = text;
    return m_decimal == u'.' ? result.replace(u',', u'.') : result.replace(u'.', m_decimal);
}

} // namespace calvorn
