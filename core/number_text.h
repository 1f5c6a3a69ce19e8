// SPDX-License-Identifier: MIT
#pragma once

#include "core/display_mask.h"

#include <QLocale>
#include <QString>

#include <cstdint>

namespace calvorn {

// Converts numbers to text and text to numbers, using the separators of one locale.
//
// The constructor looks up the separators, so create the object outside loops. Digits are always 0 to 9 and the sign
// is always "-", so text written under one locale can be converted to another.
class NumberText
{
public:
    explicit NumberText(const QLocale &locale = QLocale());

    QChar decimalSeparator() const { return m_decimal; }

    // --- numbers to text ---

    // Formats a number with a display mask, rounding half to even. Zero never has a sign.
    QString masked(double value, DisplayMask mask) const;
    // Writes to an existing string and reuses its memory.
    void assignMasked(QString &target, double value, DisplayMask mask) const;

    // The default conversion: at most 15 significant digits (float: 7), the locale's decimal separator and no grouping.
    // Numbers below 0.0001, and from 10^15 (float: 10^7), are written with an exponent ("1E-05", "1E+15").
    QString fromDouble(double value) const;
    QString fromSingle(float value) const;
    static QString fromInteger(std::int64_t value);
    static void assignInteger(QString &target, std::int64_t value);

    // The "General Number" named format: converts the text to a number and back with the default conversion.
    QString generalNumber(QStringView text) const { return fromDouble(toDouble(text)); }

    // --- text to numbers ---
    //
    // Accept surrounding white space, a sign, digits with thousands separators anywhere before the decimal separator,
    // an exponent (E or D), and "&H" hexadecimal literals, which are two's complement in the target type ("&HFFFF" is
    // -1 in 16 bits and 65535 in 32 bits). Throw RuntimeError(TypeMismatch) for any other text and
    // RuntimeError(Overflow) for a number that does not fit. Conversions to integers round half to even.

    double toDouble(QStringView text) const;
    float toSingle(QStringView text) const;
    std::int16_t toInt16(QStringView text) const;
    std::int32_t toInt32(QStringView text) const;
    // Accepts "True" and "False" regardless of case, and numbers, which are true unless they are 0.
    bool toBoolean(QStringView text) const;
    bool isNumeric(QStringView text) const;

    // Replaces another locale's decimal separator with this one's: every "," becomes "." if this locale uses ".";
    // otherwise, every "." becomes this locale's separator. Thousands separators are replaced as well.
    QString normaliseDecimal(const QString &text) const;

private:
    enum class Parse { Number, NotANumber, TooLarge };
    Parse parse(QStringView text, double &value) const;
    bool readShort(QStringView text, double &value) const;
    bool isGroup(QChar c) const;
    QString withDecimal(const char *first, const char *last) const;

    QChar m_decimal;
    QChar m_group;
};

} // namespace calvorn
