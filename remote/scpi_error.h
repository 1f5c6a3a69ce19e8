// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

namespace calvorn {

// Error numbers from SCPI-99, volume 2, chapter 21. The names follow the standard messages.
inline constexpr int kScpiNoError = 0;
inline constexpr int kScpiCommandError = -100;
inline constexpr int kScpiInvalidCharacter = -101;
inline constexpr int kScpiSyntaxError = -102;
inline constexpr int kScpiInvalidSeparator = -103;
inline constexpr int kScpiDataTypeError = -104;
inline constexpr int kScpiParameterNotAllowed = -108;
inline constexpr int kScpiMissingParameter = -109;
inline constexpr int kScpiHeaderSeparatorError = -111;
inline constexpr int kScpiMnemonicTooLong = -112;
inline constexpr int kScpiUndefinedHeader = -113;
inline constexpr int kScpiHeaderSuffixOutOfRange = -114;
inline constexpr int kScpiNumericDataError = -120;
inline constexpr int kScpiInvalidCharacterInNumber = -121;
inline constexpr int kScpiExponentTooLarge = -123;
inline constexpr int kScpiTooManyDigits = -124;
inline constexpr int kScpiNumericDataNotAllowed = -128;
inline constexpr int kScpiInvalidSuffix = -131;
inline constexpr int kScpiSuffixTooLong = -134;
inline constexpr int kScpiSuffixNotAllowed = -138;
inline constexpr int kScpiInvalidCharacterData = -141;
inline constexpr int kScpiCharacterDataTooLong = -144;
inline constexpr int kScpiCharacterDataNotAllowed = -148;
inline constexpr int kScpiStringDataError = -150;
inline constexpr int kScpiInvalidStringData = -151;
inline constexpr int kScpiStringDataNotAllowed = -158;
inline constexpr int kScpiInvalidBlockData = -161;
inline constexpr int kScpiBlockDataNotAllowed = -168;
inline constexpr int kScpiExpressionDataNotAllowed = -178;
inline constexpr int kScpiExecutionError = -200;
inline constexpr int kScpiInitIgnored = -213;
inline constexpr int kScpiSettingsConflict = -221;
inline constexpr int kScpiDataOutOfRange = -222;
inline constexpr int kScpiIllegalParameterValue = -224;
inline constexpr int kScpiDataCorruptOrStale = -230;
inline constexpr int kScpiHardwareError = -240;
inline constexpr int kScpiHardwareMissing = -241;
inline constexpr int kScpiMassStorageError = -250;
inline constexpr int kScpiFileNameNotFound = -256;
inline constexpr int kScpiFileNameError = -257;
inline constexpr int kScpiDeviceSpecificError = -300;
inline constexpr int kScpiSystemError = -310;
inline constexpr int kScpiQueueOverflow = -350;
inline constexpr int kScpiInputBufferOverrun = -363;
inline constexpr int kScpiQueryError = -400;
inline constexpr int kScpiQueryInterrupted = -410;
inline constexpr int kScpiQueryUnterminated = -420;
inline constexpr int kScpiQueryDeadlocked = -430;

// Maximum length of an error message in a response, in characters, excluding the surrounding quotes.
inline constexpr qsizetype kLongestErrorText = 255;

struct ScpiError
{
    int number = kScpiNoError;
    QByteArray detail; // what the client sent or where the error is; arbitrary bytes, may be empty

    bool isError() const { return number != kScpiNoError; }
    bool operator==(const ScpiError &) const = default;
};

// Returns the standard message. For an unknown number, returns the message of its class (-100, -200, -300 or -400); for
// positive numbers and numbers outside these classes, the message of -300.
QByteArrayView textOf(int number);

// Formats an error as `-113,"Undefined header;FREK"`. Non-printable and non-ASCII bytes of the detail become "?";
// quotes are doubled. A message that is too long is truncated, but never within a doubled quote.
QByteArray answerOf(const ScpiError &error);

// Returns the bit (0 to 7) that an error sets in the standard event status register: 5 for command errors, 4 for
// execution errors, 3 for device-specific errors (-300 to -399 and positive numbers), 2 for query errors. Returns -1
// for no error or a number outside these classes.
int esrBitOf(int number);

// The errors of one client, oldest first.
class ScpiErrorQueue
{
public:
    static constexpr int kMostErrors = 30;

    // Ignores number 0. If the queue is full, its newest error becomes -350 and the added error is discarded. Stores at
    // most kLongestErrorText bytes of the detail.
    void add(const ScpiError &error);
    // Removes and returns the oldest error, or error number 0 if the queue is empty.
    ScpiError take();
    int count() const { return static_cast<int>(m_errors.size()); }
    bool isEmpty() const { return m_errors.isEmpty(); }
    void clear() { m_errors.clear(); }

private:
    QList<ScpiError> m_errors;
};

} // namespace calvorn
