// SPDX-License-Identifier: MIT
#include "remote/scpi_error.h"

#include <algorithm>
#include <array>

namespace calvorn {

namespace {

struct ErrorText
{
    int number = kScpiNoError;
    QByteArrayView text;
};

constexpr std::array kTexts = {
    ErrorText{kScpiNoError, "No error"},
    ErrorText{kScpiCommandError, "Command error"},
    ErrorText{kScpiInvalidCharacter, "Invalid character"},
    ErrorText{kScpiSyntaxError, "Syntax error"},
    ErrorText{kScpiInvalidSeparator, "Invalid separator"},
    ErrorText{kScpiDataTypeError, "Data type error"},
    ErrorText{kScpiParameterNotAllowed, "Parameter not allowed"},
    ErrorText{kScpiMissingParameter, "Missing parameter"},
    ErrorText{kScpiHeaderSeparatorError, "Header separator error"},
    ErrorText{kScpiMnemonicTooLong, "Program mnemonic too long"},
    ErrorText{kScpiUndefinedHeader, "Undefined header"},
    ErrorText{kScpiHeaderSuffixOutOfRange, "Header suffix out of range"},
    ErrorText{kScpiNumericDataError, "Numeric data error"},
    ErrorText{kScpiInvalidCharacterInNumber, "Invalid character in number"},
    ErrorText{kScpiExponentTooLarge, "Exponent too large"},
    ErrorText{kScpiTooManyDigits, "Too many digits"},
    ErrorText{kScpiNumericDataNotAllowed, "Numeric data not allowed"},
    ErrorText{kScpiInvalidSuffix, "Invalid suffix"},
    ErrorText{kScpiSuffixTooLong, "Suffix too long"},
    ErrorText{kScpiSuffixNotAllowed, "Suffix not allowed"},
    ErrorText{kScpiInvalidCharacterData, "Invalid character data"},
    ErrorText{kScpiCharacterDataTooLong, "Character data too long"},
    ErrorText{kScpiCharacterDataNotAllowed, "Character data not allowed"},
    ErrorText{kScpiStringDataError, "String data error"},
    ErrorText{kScpiInvalidStringData, "Invalid string data"},
    ErrorText{kScpiStringDataNotAllowed, "String data not allowed"},
    ErrorText{kScpiInvalidBlockData, "Invalid block data"},
    ErrorText{kScpiBlockDataNotAllowed, "Block data not allowed"},
    ErrorText{kScpiExpressionDataNotAllowed, "Expression data not allowed"},
    ErrorText{kScpiExecutionError, "Execution error"},
    ErrorText{kScpiInitIgnored, "Init ignored"},
    ErrorText{kScpiSettingsConflict, "Settings conflict"},
    ErrorText{kScpiDataOutOfRange, "Data out of range"},
    ErrorText{kScpiIllegalParameterValue, "Illegal parameter value"},
    ErrorText{kScpiDataCorruptOrStale, "Data corrupt or stale"},
    ErrorText{kScpiHardwareError, "Hardware error"},
    ErrorText{kScpiHardwareMissing, "Hardware missing"},
    ErrorText{kScpiMassStorageError, "Mass storage error"},
    ErrorText{kScpiFileNameNotFound, "File name not found"},
    ErrorText{kScpiFileNameError, "File name error"},
    ErrorText{kScpiDeviceSpecificError, "Device-specific error"},
    ErrorText{kScpiSystemError, "System error"},
    ErrorText{kScpiQueueOverflow, "Queue overflow"},
    ErrorText{kScpiInputBufferOverrun, "Input buffer overrun"},
    ErrorText{kScpiQueryError, "Query error"},
    ErrorText{kScpiQueryInterrupted, "Query INTERRUPTED"},
    ErrorText{kScpiQueryUnterminated, "Query UNTERMINATED"},
    ErrorText{kScpiQueryDeadlocked, "Query DEADLOCKED"},
};

// Returns the number of the error's class.
int classOf(int number)
{
    if (number <= -100 && number > -500)
        return number / 100 * 100;
    return kScpiDeviceSpecificError;
}

} // namespace

QByteArrayView textOf(int number)
{
    for (const int wanted : {number, classOf(number)}) {
        const auto found = std::find_if(kTexts.begin(), kTexts.end(),
                                        [wanted](const ErrorText &entry) { return entry.number == wanted; });
        if (found != kTexts.end())
            return found->text;
    }
    return {};
}

QByteArray answerOf(const ScpiError &error)
{
    QByteArray text = textOf(error.number).toByteArray();
    if (!error.detail.isEmpty())
        text += ';';
    for (const char byte : error.detail) {
        const bool isPrintable = byte >= ' ' && byte <= '~';
        const QByteArrayView added = byte == '"' ? QByteArrayView("\"\"") : QByteArrayView(&byte, 1);
        if (text.size() + added.size() > kLongestErrorText)
            break;
        text += isPrintable ? added : QByteArrayView("?");
    }
    return QByteArray::number(error.number) + ",\"" + text + '"';
}

int esrBitOf(int number)
{
    constexpr int kQueryBit = 2;
    constexpr int kDeviceBit = 3;
    constexpr int kExecutionBit = 4;
    constexpr int kCommandBit = 5;
    const bool hasClass = number > 0 || (number <= -100 && number > -500);
    if (!hasClass)
        return -1;
    switch (classOf(number)) {
    case kScpiCommandError:
        return kCommandBit;
    case kScpiExecutionError:
        return kExecutionBit;
    case kScpiQueryError:
        return kQueryBit;
    default:
        return kDeviceBit;
    }
}

void ScpiErrorQueue::add(const ScpiError &error)
{
    if (!error.isError())
        return;
    if (m_errors.size() >= kMostErrors)
        m_errors.back() = {kScpiQueueOverflow, {}};
    else
        m_errors.append({error.number, error.detail.left(kLongestErrorText)});
}

ScpiError ScpiErrorQueue::take()
{
    return m_errors.isEmpty() ? ScpiError() : m_errors.takeFirst();
}

} // namespace calvorn
