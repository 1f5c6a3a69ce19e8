// SPDX-License-Identifier: MIT
#include "data/sweep_csv.h"

#include "core/runtime_error.h"
#include "tests/support/locales.h"
#include "tests/support/walk_numbers.h"

#include <QBuffer>
#include <QRandomGenerator>
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

    // In a locale with a decimal point, importing an exported file restores every cell exactly.
    void aThousandTablesComeBack_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::newRow("en_US") << QLocale(QLocale::English, QLocale::UnitedStates);
        QTest::newRow("C") << QLocale::c();
    }
    void aThousandTablesComeBack()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        QRandomGenerator random(4711);
        const test::WalkNumbers numbers{QLocale()};
        Configuration configuration;
        SweepTable table(configuration);
        SweepTable again(configuration);
        for (int i = 0; i < 1000; ++i) {
            configuration.startFreq = random.bounded(1, 100000000);
            configuration.stepFreq = random.bounded(-200000, 2000000);
            table.inizializzaGrid();
            for (int row = 1; row <= 400; ++row) {
                const int count = random.bounded(1024);
                table.setText(row, SweepTable::SampleColumn, QString::number(count));
                // Positive and negative millivolts, or tenths of dB down to -100.
                const double amplitude =
                    i % 2 == 0 ? random.bounded(-500, 30000) / 1000.0 : random.bounded(-1000, 200) / 10.0;
                table.setText(row, SweepTable::AmplitudeColumn, numbers.amplitude(true, amplitude));
            }
            QByteArray csv = sweepAsCsv(table);
            QBuffer device(&csv);
            QVERIFY(device.open(QIODevice::ReadOnly));
            readSweepCsv(device, again);
            QVERIFY(!again.axis()); // imported rows have no plan
            for (int row = 1; row <= 400; ++row)
                for (int column = 0; column < 3; ++column)
                    QCOMPARE(again.text(row, column), table.text(row, column));
            QCOMPARE(sweepAsCsv(again), csv);
        }
    }

    void theLineOfAnErrorIsKnown_data()
    {
        QTest::addColumn<QByteArray>("csv");
        QTest::addColumn<int>("expected");
        QTest::newRow("empty") << QByteArray() << 1;
        QTest::newRow("the heading alone") << QByteArray("a,b,c,d\r\n") << 2;
        QTest::newRow("no number") << QByteArray("a,b,c,d\r\n1,2,3,4\r\n2,x,3,4\r\n") << 3;
        QTest::newRow("no number at the end of a line") << QByteArray("a,b,c,d\n1,2,3,x\n") << 2;
        QTest::newRow("row 401") << QByteArray("a,b,c,d\r1,2,3,4\r2,2,3,4\r401,2,3,4\r") << 4;
    }
    void theLineOfAnErrorIsKnown()
    {
        QFETCH(QByteArray, csv);
        QFETCH(int, expected);
        QBuffer device(&csv);
        QVERIFY(device.open(QIODevice::ReadOnly));
        Configuration configuration;
        SweepTable table(configuration);
        int line = 0;
        QVERIFY_THROWS_EXCEPTION(RuntimeError, readSweepCsv(device, table, &line));
        QCOMPARE(line, expected);
    }

    void linesWithoutEndAreRefused()
    {
        QByteArray csv("a,b,c,d\r\n");
        for (int line = 0; line <= 100'000; ++line)
            csv += "7,1000000,5,12\r\n";
        csv += "400,1000000,5,12\r\n";
        QBuffer device(&csv);
        QVERIFY(device.open(QIODevice::ReadOnly));
        Configuration configuration;
        SweepTable table(configuration);
        int line = 0;
        QVERIFY_THROWS_EXCEPTION(RuntimeError, readSweepCsv(device, table, &line));
        QCOMPARE(line, 100'002);
        QCOMPARE(table.text(7, SweepTable::SampleColumn), QStringLiteral("5"));
        QCOMPARE(table.text(400, SweepTable::SampleColumn), QStringLiteral("0"));
    }
};

QTEST_APPLESS_MAIN(TestSweepCsv)
#include "test_sweep_csv.moc"
