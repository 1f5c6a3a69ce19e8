// SPDX-License-Identifier: MIT
#include "data/sweep_csv.h"

#include "tests/support/locales.h"

#include <QTest>

using namespace calvorn;

class TestSweepCsv : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void isTheSameInEveryLocale_data() { test::addLocaleRows(); }
    void isTheSameInEveryLocale()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        Configuration configuration;
        configuration.startFreq = 1000000;
        configuration.stepFreq = 25000;
        SweepTable table(configuration);
        table.inizializzaGrid();
        table.setText(1, SweepTable::SampleColumn, QStringLiteral("512"));
        table.setText(1, SweepTable::AmplitudeColumn, test::inLocale(locale, QStringLiteral("1.2345")));
        table.setText(2, SweepTable::AmplitudeColumn, test::inLocale(locale, QStringLiteral("-6.0")));
        const QList<QByteArray> lines = sweepAsCsv(table).split('\n');
        QCOMPARE(lines.size(), 402);
        QCOMPARE(lines[0], QByteArray("\"Sample N\",\"Frequency\",\"DAC sample\",\"milliVolt\"\r"));
        QCOMPARE(lines[1], QByteArray("1,1000000,512,1234.5\r"));
        QCOMPARE(lines[2], QByteArray("2,1025000,0,-6000\r"));
        QCOMPARE(lines[400], QByteArray("400,10975000,0,0\r"));
        QCOMPARE(lines[401], QByteArray());
    }
};

QTEST_APPLESS_MAIN(TestSweepCsv)
#include "test_sweep_csv.moc"
