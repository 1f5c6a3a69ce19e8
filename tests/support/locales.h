// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>
#include <QTest>

namespace calvorn::test {

// Adds the locales for all number tests: decimal point and comma, three kinds of grouping.
inline void addLocaleRows()
{
    QTest::addColumn<QLocale>("locale");
    QTest::newRow("en_US") << QLocale(QLocale::English, QLocale::UnitedStates);
    QTest::newRow("it_IT") << QLocale(QLocale::Italian, QLocale::Italy);
    QTest::newRow("fr_FR") << QLocale(QLocale::French, QLocale::France);
    QTest::newRow("C") << QLocale::c();
}

// Converts a string with "," as group separator and "." as decimal point to the locale's separators.
inline QString inLocale(const QLocale &locale, QString text)
{
    const QString group = locale.groupSeparator();
    const QString decimal = locale.decimalPoint();
    text.replace(u',', u'\x1').replace(u'.', decimal).replace(u'\x1', group);
    return text;
}

} // namespace calvorn::test
