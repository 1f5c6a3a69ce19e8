// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>
#include <QTest>

namespace calvorn::test {

// The locales that every test about numbers runs under: point and comma decimals, three kinds of grouping.
inline void addLocaleRows()
{
    QTest::addColumn<QLocale>("locale");
    QTest::newRow("en_US") << QLocale(QLocale::English, QLocale::UnitedStates);
    QTest::newRow("it_IT") << QLocale(QLocale::Italian, QLocale::Italy);
    QTest::newRow("fr_FR") << QLocale(QLocale::French, QLocale::France);
    QTest::newRow("C") << QLocale::c();
}

// A text written with "," for groups and "." for decimals, as the locale shows it.
inline QString inLocale(const QLocale &locale, QString text)
{
    const QString group = locale.groupSeparator();
    const QString decimal = locale.decimalPoint();
    text.replace(u',', u'\x1').replace(u'.', decimal).replace(u'\x1', group);
    return text;
}

} // namespace calvorn::test
