// SPDX-License-Identifier: MIT
#include "remote/scpi_message.h"

#include "remote/scpi_bytes.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

namespace calvorn {

using namespace scpi_bytes;

namespace {

constexpr qsizetype kLongestDetail = 40; // bytes

// Returns true if any kind of data element can start with this byte.
bool isDataStart(char byte)
{
    return isLetter(byte) || isDigit(byte) || QByteArrayView("+-.\"'#(").contains(byte);
}

// Reads the bytes of a message from a given position. '\n' represents the end of the message: ScpiLines leaves no LF
// outside blocks, and no element that is read byte by byte may contain one.
class Reader
{
public:
    Reader(const QByteArray &message, qsizetype &at)
        : m_message(message)
        , m_at(at)
    {
    }

    bool isAtEnd() const { return m_at >= m_message.size(); }
    char peek(qsizetype ahead = 0) const { return m_at + ahead < m_message.size() ? m_message[m_at + ahead] : '\n'; }
    void skip(qsizetype count = 1) { m_at += count; }
    qsizetype at() const { return m_at; }
    qsizetype left() const { return m_message.size() - m_at; }
    QByteArray from(qsizetype start) const { return m_message.mid(start, m_at - start); }
    QByteArray takeBytes(qsizetype count)
    {
        m_at += count;
        return m_message.mid(m_at - count, count);
    }

    bool take(char byte)
    {
        if (peek() != byte || isAtEnd())
            return false;
        ++m_at;
        return true;
    }

    void skipWhite() { skip(pastWhite(0)); }

    // Returns the offset of the first byte after the white space that starts at "ahead".
    qsizetype pastWhite(qsizetype ahead) const
    {
        while (m_at + ahead < m_message.size() && isWhite(peek(ahead)))
            ++ahead;
        return ahead;
    }

    // Returns true if a data element may end here.
    bool isAtSeparator() const { return isAtEnd() || isWhite(peek()) || peek() == ',' || peek() == ';'; }

    // Sets the error, with the bytes from "start" up to and including the current one as its detail. Always returns
    // false, so that callers can return the result.
    bool fail(int number, qsizetype start, ScpiError &error) const
    {
        const qsizetype length = std::min(m_at + 1, m_message.size()) - start;
        error = {number, m_message.mid(start, std::min(length, kLongestDetail))};
        return false;
    }

    // Like fail(), for a byte directly after a data element: reports a missing separator if the byte starts another
    // element.
    bool failBehind(int number, qsizetype start, ScpiError &error) const
    {
        return fail(QByteArrayView(":\"'#(").contains(peek()) ? kScpiInvalidSeparator : number, start, error);
    }

private:
    const QByteArray &m_message;
    qsizetype &m_at;
};

// --- numbers ---

// The parts of a decimal number, before conversion.
struct Decimal
{
    QByteArray mantissa; // sign, digits and point, as accepted by std::from_chars
    int digits = 0;      // without leading zeros
    bool hasDigit = false;
    qsizetype magnitude = 0; // position of the point relative to the first nonzero digit, without the exponent
    int exponent = 0;
};

void readMantissa(Reader &reader, Decimal &decimal)
{
    if (reader.peek() == '-' || reader.peek() == '+') {
        if (reader.peek() == '-')
            decimal.mantissa += '-';
        reader.skip();
    }
    bool hasPoint = false;
    for (; isDigit(reader.peek()) || (reader.peek() == '.' && !hasPoint); reader.skip()) {
        const char byte = reader.peek();
        decimal.mantissa += byte;
        if (byte == '.') {
            hasPoint = true;
            continue;
        }
        decimal.hasDigit = true;
        if (byte != '0' || decimal.digits > 0)
            ++decimal.digits;
        if (!hasPoint && decimal.digits > 0)
            ++decimal.magnitude;
        else if (hasPoint && decimal.digits == 0)
            --decimal.magnitude;
    }
}

// Reads an optional exponent; IEEE 488.2 allows white space around the E. An E followed by a letter begins a suffix.
bool readExponent(Reader &reader, qsizetype start, Decimal &decimal, ScpiError &error)
{
    qsizetype ahead = reader.pastWhite(0);
    if (reader.peek(ahead) != 'E' && reader.peek(ahead) != 'e')
        return true;
    ahead = reader.pastWhite(ahead + 1);
    const char first = reader.peek(ahead);
    if (isLetter(first) || first == '/')
        return true;
    reader.skip(ahead);
    const bool isNegative = first == '-';
    if (first == '-' || first == '+')
        reader.skip();
    if (!isDigit(reader.peek()))
        return reader.fail(kScpiInvalidCharacterInNumber, start, error);
    for (; isDigit(reader.peek()); reader.skip()) {
        if (decimal.exponent <= kLargestExponent)
            decimal.exponent = 10 * decimal.exponent + (reader.peek() - '0');
    }
    if (decimal.exponent > kLargestExponent)
        return reader.fail(kScpiExponentTooLarge, start, error);
    if (isNegative)
        decimal.exponent = -decimal.exponent;
    return true;
}

// Returns the nearest double, or nothing if the number is too large. A number that is too small becomes 0.
std::optional<double> valueOf(const Decimal &decimal)
{
    const QByteArray text = decimal.mantissa + 'e' + QByteArray::number(decimal.exponent);
    double value = 0.0;
    const auto read = std::from_chars(text.constData(), text.constData() + text.size(), value);
    if (read.ec == std::errc() && std::isfinite(value))
        return value;
    if (decimal.magnitude + decimal.exponent > 0)
        return std::nullopt;
    return text.startsWith('-') ? -0.0 : 0.0;
}

// Format: `[/]unit{(/|.)unit}`; a unit consists of letters, an optional "-" and an optional digit.
bool isSuffix(QByteArrayView text)
{
    qsizetype at = text.startsWith('/') ? 1 : 0;
    const auto byteAt = [&](qsizetype index) { return index < text.size() ? text[index] : '\0'; };
    for (;;) {
        if (!isLetter(byteAt(at)))
            return false;
        while (isLetter(byteAt(at)))
            ++at;
        if (byteAt(at) == '-' && isDigit(byteAt(at + 1)))
            at += 2;
        else if (isDigit(byteAt(at)))
            ++at;
        if (at == text.size())
            return true;
        if (byteAt(at) != '/' && byteAt(at) != '.')
            return false;
        ++at;
    }
}

bool readSuffix(Reader &reader, ScpiParameter &parameter, ScpiError &error)
{
    const qsizetype ahead = reader.pastWhite(0);
    if (!isLetter(reader.peek(ahead)) && reader.peek(ahead) != '/')
        return true;
    reader.skip(ahead);
    const qsizetype start = reader.at();
    while (isLetter(reader.peek()) || isDigit(reader.peek()) || QByteArrayView("/.-").contains(reader.peek()))
        reader.skip();
    const QByteArray suffix = reader.from(start);
    if (!isSuffix(suffix) || !reader.isAtSeparator())
        return reader.fail(kScpiInvalidSuffix, start, error);
    if (suffix.size() > kLongestSuffix)
        return reader.fail(kScpiSuffixTooLong, start, error);
    parameter.suffix = suffix.toUpper();
    return true;
}

bool readDecimal(Reader &reader, ScpiParameter &parameter, ScpiError &error)
{
    const qsizetype start = reader.at();
    Decimal decimal;
    readMantissa(reader, decimal);
    if (!decimal.hasDigit)
        return reader.fail(kScpiInvalidCharacterInNumber, start, error);
    if (decimal.digits > kMostMantissaDigits)
        return reader.fail(kScpiTooManyDigits, start, error);
    if (!readExponent(reader, start, decimal, error))
        return false;
    const auto value = valueOf(decimal);
    if (!value)
        return reader.fail(kScpiExponentTooLarge, start, error);
    parameter.kind = ScpiParameter::Kind::Number;
    parameter.number = *value;
    if (!reader.isAtSeparator() && !isLetter(reader.peek()) && reader.peek() != '/')
        return reader.failBehind(kScpiInvalidCharacterInNumber, start, error);
    return readSuffix(reader, parameter, error);
}

int valueOfDigit(char byte)
{
    if (isDigit(byte))
        return byte - '0';
    const char upper = byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
    return upper >= 'A' && upper <= 'F' ? upper - 'A' + 10 : 16;
}

// Reads the digits of a hexadecimal, octal or binary number (bitsOfDigit 4, 3 or 1) after "#" and the letter. Accepts
// at most 64 bits; numbers above 2^53 are rounded.
bool readBits(Reader &reader, qsizetype start, unsigned bitsOfDigit, ScpiParameter &parameter, ScpiError &error)
{
    std::uint64_t bits = 0;
    const qsizetype first = reader.at();
    for (; valueOfDigit(reader.peek()) < (1 << bitsOfDigit); reader.skip()) {
        if (bits >> (64U - bitsOfDigit) != 0)
            return reader.fail(kScpiTooManyDigits, start, error);
        bits = (bits << bitsOfDigit) | static_cast<std::uint64_t>(valueOfDigit(reader.peek()));
    }
    if (reader.at() == first)
        return reader.fail(kScpiInvalidCharacterInNumber, start, error);
    if (!reader.isAtSeparator())
        return reader.failBehind(kScpiInvalidCharacterInNumber, start, error);
    const qsizetype ahead = reader.pastWhite(0);
    if (isLetter(reader.peek(ahead)) || reader.peek(ahead) == '/') {
        reader.skip(ahead);
        return reader.fail(kScpiSuffixNotAllowed, start, error);
    }
    parameter.kind = ScpiParameter::Kind::Number;
    parameter.number = static_cast<double>(bits);
    return true;
}

// --- other data ---

bool readBlockBytes(Reader &reader, qsizetype start, ScpiParameter &parameter, ScpiError &error)
{
    int digits = reader.peek() - '0';
    reader.skip();
    if (digits == 0)
        return reader.fail(kScpiInvalidBlockData, start, error);
    qsizetype length = 0;
    for (; digits > 0; --digits, reader.skip()) {
        if (!isDigit(reader.peek()))
            return reader.fail(kScpiInvalidBlockData, start, error);
        length = 10 * length + (reader.peek() - '0');
    }
    if (length > reader.left())
        return reader.fail(kScpiInvalidBlockData, start, error);
    parameter.kind = ScpiParameter::Kind::Block;
    parameter.text = reader.takeBytes(length);
    return true;
}

bool readAfterHash(Reader &reader, ScpiParameter &parameter, ScpiError &error)
{
    const qsizetype start = reader.at();
    reader.skip();
    if (isDigit(reader.peek()))
        return readBlockBytes(reader, start, parameter, error);
    const char kind = reader.peek();
    reader.skip(reader.isAtEnd() ? 0 : 1);
    switch (kind) {
    case 'H':
    case 'h':
        return readBits(reader, start, 4, parameter, error);
    case 'Q':
    case 'q':
        return readBits(reader, start, 3, parameter, error);
    case 'B':
    case 'b':
        return readBits(reader, start, 1, parameter, error);
    default:
        return reader.fail(kScpiInvalidBlockData, start, error);
    }
}

bool readString(Reader &reader, ScpiParameter &parameter, ScpiError &error)
{
    const qsizetype start = reader.at();
    const char quote = reader.peek();
    parameter.kind = ScpiParameter::Kind::Text;
    reader.skip();
    while (reader.peek() != '\n') {
        const char byte = reader.peek();
        reader.skip();
        if (byte == quote && !reader.take(quote))
            return true;
        parameter.text += byte;
    }
    return reader.fail(kScpiInvalidStringData, start, error);
}

bool readWord(Reader &reader, ScpiParameter &parameter, ScpiError &error)
{
    const qsizetype start = reader.at();
    while (isMnemonicByte(reader.peek()))
        reader.skip();
    if (!reader.isAtSeparator())
        return reader.failBehind(kScpiInvalidCharacterData, start, error);
    const QByteArray word = reader.from(start);
    if (word.size() > kLongestWord)
        return reader.fail(kScpiCharacterDataTooLong, start, error);
    parameter.kind = ScpiParameter::Kind::Word;
    parameter.text = word.toUpper();
    return true;
}

bool readElement(Reader &reader, ScpiParameter &parameter, ScpiError &error)
{
    const char first = reader.peek();
    if (reader.isAtEnd())
        return reader.fail(kScpiSyntaxError, reader.at(), error);
    if (isLetter(first))
        return readWord(reader, parameter, error);
    if (isDigit(first) || first == '+' || first == '-' || first == '.')
        return readDecimal(reader, parameter, error);
    if (first == '"' || first == '\'')
        return readString(reader, parameter, error);
    if (first == '#')
        return readAfterHash(reader, parameter, error);
    if (first == '(')
        return reader.fail(kScpiExpressionDataNotAllowed, reader.at(), error);
    const bool isPrintable = first > ' ' && first <= '~';
    return reader.fail(isPrintable ? kScpiSyntaxError : kScpiInvalidCharacter, reader.at(), error);
}

// Reads all parameters of a unit, up to its ";" or the end of the message.
bool readParameters(Reader &reader, QList<ScpiParameter> &parameters, ScpiError &error)
{
    for (;;) {
        reader.skipWhite();
        const qsizetype start = reader.at();
        ScpiParameter parameter;
        if (!readElement(reader, parameter, error))
            return false;
        parameter.written = reader.from(start).left(kLongestDetail);
        parameters.append(std::move(parameter));
        reader.skipWhite();
        if (reader.isAtEnd() || reader.peek() == ';')
            return true;
        if (!reader.take(','))
            return reader.fail(kScpiInvalidSeparator, start, error);
    }
}

// --- headers ---

// start: the start of the header, for error details.
bool readMnemonic(Reader &reader, qsizetype start, QByteArray &mnemonic, ScpiError &error)
{
    const char first = reader.peek();
    if (!isLetter(first)) {
        const bool isKnown = reader.isAtEnd() || isWhite(first) || (first > ' ' && first <= '~');
        return reader.fail(isKnown ? kScpiSyntaxError : kScpiInvalidCharacter, start, error);
    }
    const qsizetype at = reader.at();
    while (isMnemonicByte(reader.peek()))
        reader.skip();
    mnemonic = reader.from(at);
    return true;
}

bool readCommonHeader(Reader &reader, qsizetype start, ScpiNode &node, ScpiError &error)
{
    if (!readMnemonic(reader, start, node.name, error))
        return false;
    return node.name.size() <= kLongestMnemonic || reader.fail(kScpiMnemonicTooLong, start, error);
}

// Reads one mnemonic of a compound header. Its trailing digits are the suffix.
bool readNode(Reader &reader, qsizetype start, ScpiNode &node, ScpiError &error)
{
    if (!readMnemonic(reader, start, node.name, error))
        return false;
    qsizetype length = node.name.size();
    while (isDigit(node.name[length - 1]))
        --length;
    const QByteArray digits = node.name.mid(length);
    node.name.truncate(length);
    if (length > kLongestMnemonic)
        return reader.fail(kScpiMnemonicTooLong, start, error);
    if (digits.size() > kMostHeaderSuffixDigits)
        return reader.fail(kScpiHeaderSuffixOutOfRange, start, error);
    if (!digits.isEmpty())
        node.suffix = digits.toInt();
    return true;
}

} // namespace

ScpiMessage::ScpiMessage(QByteArrayView message)
    : m_message(message.toByteArray())
{
}

ScpiMessage::Step ScpiMessage::next(ScpiUnit &unit, ScpiError &error)
{
    if (m_hasFailed)
        return Step::End;
    Reader reader(m_message, m_at);
    do
        reader.skipWhite();
    while (reader.take(';'));
    if (reader.isAtEnd())
        return Step::End;
    ScpiUnit read;
    if (!readUnit(read, error)) {
        m_hasFailed = true;
        return Step::Error;
    }
    unit = std::move(read);
    return Step::Unit;
}

bool ScpiMessage::readUnit(ScpiUnit &unit, ScpiError &error)
{
    Reader reader(m_message, m_at);
    const qsizetype start = m_at;
    unit.isCommon = reader.take('*');
    if (unit.isCommon) {
        unit.path.append(ScpiNode());
        if (!readCommonHeader(reader, start, unit.path.back(), error))
            return false;
    } else {
        unit.isAbsolute = reader.take(':');
        if (!unit.isAbsolute)
            unit.path = m_level;
        do {
            unit.path.append(ScpiNode());
            if (!readNode(reader, start, unit.path.back(), error))
                return false;
        } while (reader.take(':'));
        m_level = unit.path.first(unit.path.size() - 1);
    }
    unit.isQuery = reader.take('?');
    unit.header = reader.from(start);

    const char byte = reader.peek();
    if (reader.isAtEnd() || byte == ';')
        return true;
    if (!isWhite(byte)) {
        const bool isData = isDataStart(byte) || byte == ',' || byte == ':';
        return reader.fail(isData ? kScpiHeaderSeparatorError : kScpiInvalidCharacter, start, error);
    }
    reader.skipWhite();
    return reader.isAtEnd() || reader.peek() == ';' || readParameters(reader, unit.parameters, error);
}

} // namespace calvorn
