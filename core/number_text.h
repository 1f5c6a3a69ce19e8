// SPDX-License-Identifier: MIT
#pragma once

#include "core/display_mask.h"

#include <QLocale>
#include <QString>

#include <cstdint>

namespace calvorn {

// Numbers as text and text as numbers, by the separators of one locale.
//
// Making one looks the separators up, so a loop makes it once outside. Digits are always 0 to 9 and the sign is
// always "-", so that what one locale writes another can be told to read.
class NumberText
{
public:
    explicit NumberText(const QLocale &locale = QLocale());

    QChar decimalSeparator() const { return m_decimal; }

    // --- numbers to text ---

    // By a display mask, rounded half to even. Zero never carries a sign.
    QString masked(double value, DisplayMask mask) const;
    // The same into an existing text, whose memory is used again.
    void assignMasked(QString &target, double value, DisplayMask mask) const;

    // The ordinary conversion: at most 15 significant digits (single: 7), the locale's decimal separator, no
    // grouping; an exponent ("1E-05", "1E+15") below 0.0001 and from 10^15 (single: 10^7) on.
    QString fromDouble(double value) const;
    QString fromSingle(float value) const;
    static QString fromInteger(std::int64_t value);
    static void assignInteger(QString &target, std::int64_t value);

    // The named format "General Number": the ordinary conversion of the number that the text holds.
    QString generalNumber(QStringView text) const { return fromDouble(toDouble(text)); }

    // --- text to numbers ---
    //
    // Accepted: blanks around, a sign, digits with thousands separators anywhere among those before the decimal
    // separator, an exponent (E or D), and "&H" hexadecimal literals, which fill their type ("&HFFFF" is -1 as 16
    // bits and 65535 as 32 bits). Anything else is RuntimeError(TypeMismatch); a number that does not fit is
    // RuntimeError(Overflow). The conversions to integers round half to even.

    double toDouble(QStringView text) const;
    float toSingle(QStringView text) const;
    std::int16_t toInt16(QStringView text) const;
    std::int32_t toInt32(QStringView text) const;
    // "True" and "False" without regard to case, otherwise whether the number differs from 0.
    bool toBoolean(QStringView text) const;
    bool isNumeric(QStringView text) const;

    // Text with a decimal separator of another locale, made readable in this one: where this locale's separator
    // is not ".", every "." becomes it; otherwise every "," becomes ".". Thousands separators are not protected.
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
