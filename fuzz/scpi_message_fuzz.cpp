// SPDX-License-Identifier: MIT
// Parses arbitrary bytes from a remote-control client, in chunks of any size. The chunk size must not affect the
// messages. An accepted message must not change when it is rebuilt from its parts and parsed again, and the splitter
// must return it in one piece. Numbers must be finite, positions and suffixes in range, and every error must produce a
// readable reply.
#include "fuzz/require.h"
#include "remote/scpi_lines.h"
#include "remote/scpi_message.h"
#include "remote/scpi_pattern.h"
#include "remote/scpi_value.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <fuzzer/FuzzedDataProvider.h>

using namespace calvorn;
using fuzz::require;

namespace {

// The parts of a parsed message.
struct Parsed
{
    QList<ScpiUnit> units;
    ScpiError error;
};

bool isMnemonic(QByteArrayView text)
{
    const auto isLetter = [](char byte) { return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z'); };
    return !text.isEmpty() && isLetter(text.front()) && std::all_of(text.begin(), text.end(), [&](char byte) {
        return isLetter(byte) || (byte >= '0' && byte <= '9') || byte == '_';
    });
}

void checkParameter(const ScpiParameter &parameter)
{
    require(std::isfinite(parameter.number));
    require(!parameter.written.isEmpty() && parameter.written.size() <= 40);
    require(parameter.suffix == parameter.suffix.toUpper() && parameter.suffix.size() <= 12);
    const bool isNumber = parameter.kind == ScpiParameter::Kind::Number;
    require(isNumber ? parameter.text.isEmpty() : parameter.suffix.isEmpty() && parameter.number == 0.0);
    if (parameter.kind == ScpiParameter::Kind::Word)
        require(isMnemonic(parameter.text) && parameter.text.size() <= kLongestWord &&
                parameter.text == parameter.text.toUpper());
    require(parameter.kind != ScpiParameter::Kind::Text || !parameter.text.contains('\n'));
}

void checkUnit(const ScpiUnit &unit)
{
    require(!unit.path.isEmpty() && !unit.header.isEmpty());
    require(unit.isQuery == unit.header.endsWith('?'));
    require(unit.isCommon == unit.header.startsWith('*'));
    require(unit.isAbsolute == unit.header.startsWith(':'));
    require(!unit.isCommon || (unit.path.size() == 1 && unit.path.first().suffix == -1));
    for (const ScpiNode &node : unit.path) {
        require(isMnemonic(node.name) && node.name.size() <= kLongestMnemonic);
        require(node.suffix >= -1 && node.suffix <= 99999);
    }
    for (const ScpiParameter &parameter : unit.parameters)
        checkParameter(parameter);
}

Parsed parse(const QByteArray &message)
{
    Parsed parsed;
    ScpiMessage parser(message);
    for (;;) {
        const qsizetype before = parser.position();
        ScpiUnit unit;
        const ScpiMessage::Step step = parser.next(unit, parsed.error);
        require(parser.position() >= before && parser.position() <= message.size());
        if (step != ScpiMessage::Step::Unit) {
            require(parsed.error.isError() == (step == ScpiMessage::Step::Error));
            require(step == ScpiMessage::Step::Error || parser.position() == message.size());
            require(parser.next(unit, parsed.error) == ScpiMessage::Step::End);
            return parsed;
        }
        require(parser.position() > before);
        checkUnit(unit);
        parsed.units.append(unit);
    }
}

// --- rebuilding a message from its parts ---

QByteArray written(const ScpiParameter &parameter)
{
    switch (parameter.kind) {
    case ScpiParameter::Kind::Number:
        return nr3(parameter.number) + ' ' + parameter.suffix;
    case ScpiParameter::Kind::Word:
        return parameter.text;
    case ScpiParameter::Kind::Text:
        return quoted(parameter.text);
    case ScpiParameter::Kind::Block:
        break;
    }
    return block(parameter.text);
}

QByteArray written(const ScpiUnit &unit)
{
    QByteArray text = unit.isCommon ? "*" : "";
    for (const ScpiNode &node : unit.path) {
        text += (unit.isCommon ? "" : ":") + node.name;
        if (node.suffix >= 0)
            text += QByteArray::number(node.suffix);
    }
    text += unit.isQuery ? "?" : "";
    char separator = ' ';
    for (const ScpiParameter &parameter : unit.parameters) {
        text += separator + written(parameter);
        separator = ',';
    }
    return text;
}

bool isSame(const ScpiParameter &a, const ScpiParameter &b)
{
    return a.kind == b.kind && std::bit_cast<quint64>(a.number) == std::bit_cast<quint64>(b.number) &&
           a.suffix == b.suffix && a.text == b.text;
}

bool isSame(const ScpiUnit &a, const ScpiUnit &b)
{
    return a.isCommon == b.isCommon && a.isQuery == b.isQuery && a.path == b.path &&
           std::equal(a.parameters.begin(), a.parameters.end(), b.parameters.begin(), b.parameters.end(),
                      [](const ScpiParameter &x, const ScpiParameter &y) { return isSame(x, y); });
}

void requireSame(const QList<ScpiUnit> &a, const QList<ScpiUnit> &b)
{
    require(std::equal(a.begin(), a.end(), b.begin(), b.end(),
                       [](const ScpiUnit &x, const ScpiUnit &y) { return isSame(x, y); }));
}

void checkRoundTrip(const Parsed &parsed)
{
    QByteArray message;
    for (const ScpiUnit &unit : parsed.units)
        message += written(unit) + ';';
    const Parsed again = parse(message);
    require(!again.error.isError());
    requireSame(again.units, parsed.units);
}

// --- checking the parts ---

// A reply such as -113,"text" must parse as two parameters.
void checkError(const ScpiError &error)
{
    require(error.number <= -100 && error.number > -200 && error.detail.size() <= 40);
    require(esrBitOf(error.number) == 5);
    const QByteArray answer = answerOf(error);
    require(std::all_of(answer.begin(), answer.end(), [](char byte) { return byte >= ' ' && byte <= '~'; }));
    require(answer.size() <= 5 + 2 + 255);
    const Parsed read = parse("A " + answer);
    require(read.units.size() == 1 && read.units.first().parameters.size() == 2);
    require(read.units.first().parameters[0].number == error.number);
    require(read.units.first().parameters[1].kind == ScpiParameter::Kind::Text);
}

void checkValues(const ScpiParameter &parameter)
{
    constexpr ScpiRange kRange{-5.0, 1e9, 3.0};
    constexpr std::array kChoices = {"MINimum", "FILTer", "S1P"};
    for (const ScpiQuantity quantity :
         {ScpiQuantity::Plain, ScpiQuantity::Hertz, ScpiQuantity::Volts, ScpiQuantity::Decibels,
          ScpiQuantity::DecibelMilliwatts, ScpiQuantity::Seconds}) {
        ScpiError error;
        const auto value = readNumber(parameter, quantity, kRange, error);
        require(value.has_value() != error.isError() && (!value || (*value >= -5.0 && *value <= 1e9)));
    }
    const auto check = [&](auto read) {
        ScpiError error;
        const bool hasValue = read(error).has_value();
        require(hasValue != error.isError() && error.detail.size() <= 40);
    };
    check([&](ScpiError &error) { return readWhole(parameter, kRange, error); });
    check([&](ScpiError &error) { return readWhole(parameter, {}, error); });
    check([&](ScpiError &error) { return readBoolean(parameter, error); });
    check([&](ScpiError &error) { return readChoice(parameter, kChoices, error); });
    check([&](ScpiError &error) { return readText(parameter, error); });
    check([&](ScpiError &error) { return readBlock(parameter, error); });
}

void checkPatterns(const ScpiUnit &unit)
{
    static const std::array kPatterns = {ScpiPattern("*IDN"), ScpiPattern("[SENSe:]FREQuency:STARt"),
                                         ScpiPattern("CALCulate<1-4>:MARKer<1|2>:X"),
                                         ScpiPattern("INITiate[:IMMediate]")};
    for (const ScpiPattern &pattern : kPatterns) {
        QList<int> suffixes = {-7};
        const ScpiMatch match = pattern.match(unit, &suffixes);
        require(match == ScpiMatch::Yes || suffixes == QList<int>{-7});
        require(match != ScpiMatch::Yes ||
                std::all_of(suffixes.begin(), suffixes.end(), [](int s) { return s > 0 && s < 5; }));
    }
}

// A pattern must either match all of its own spellings or be rejected.
void checkOwnPattern(const QByteArray &text)
{
    const ScpiPattern pattern(text.constData());
    const QList<QByteArray> spellings = pattern.spellings();
    require(pattern.isValid() == !spellings.isEmpty());
    for (const QByteArray &spelling : spellings) {
        const Parsed parsed = parse(spelling);
        require(!parsed.error.isError() && parsed.units.size() == 1 && pattern.matches(parsed.units.first()));
    }
}

void checkMessage(const QByteArray &message)
{
    const Parsed parsed = parse(message);
    checkRoundTrip(parsed);
    for (const ScpiUnit &unit : parsed.units) {
        checkPatterns(unit);
        for (const ScpiParameter &parameter : unit.parameters)
            checkValues(parameter);
    }
    if (parsed.error.isError()) {
        checkError(parsed.error);
        return;
    }
    requireSame(parse(message + " ; ").units, parsed.units);
    // The splitter must agree with the parser on where blocks end.
    if (!message.isEmpty() && message.size() <= kLongestLine) {
        ScpiLines lines;
        lines.add(message + "\r\n*CLS\n");
        require(lines.next() == ScpiLines::Line{message, {}});
        require(lines.next() == ScpiLines::Line{"*CLS", {}});
        require(!lines.next());
    }
}

QList<ScpiLines::Line> linesOf(const QByteArray &bytes, qsizetype chunk)
{
    QList<ScpiLines::Line> all;
    ScpiLines lines;
    for (qsizetype at = 0; at < bytes.size(); at += chunk) {
        lines.add(bytes.mid(at, chunk));
        while (const auto line = lines.next())
            all.append(*line);
    }
    return all;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider provider(data, size);
    // The provider reads the chunk size from the end of the input, so the client's message is at the beginning.
    const auto chunk = provider.ConsumeIntegralInRange<qsizetype>(1, 300);
    const QByteArray bytes = QByteArray::fromStdString(provider.ConsumeRemainingBytesAsString());

    const QList<ScpiLines::Line> lines = linesOf(bytes, std::max<qsizetype>(bytes.size(), 1));
    require(linesOf(bytes, chunk) == lines);
    for (const ScpiLines::Line &line : lines) {
        require(line.isError() ? line.error.number == -363 : !line.message.isEmpty());
        require(line.message.size() <= 4096);
        checkMessage(line.message);
    }
    checkMessage(bytes.left(kLongestLine));
    constexpr qsizetype kPatternLength = 20; // the number of spellings grows quickly
    checkOwnPattern(bytes.left(kPatternLength));
    return 0;
}
