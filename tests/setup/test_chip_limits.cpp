// SPDX-License-Identifier: MIT
#include "setup/chip_limits.h"

#include <QTest>

using namespace calvorn;

class TestChipLimits : public QObject
{
    Q_OBJECT

private slots:
    void verdicts_data()
    {
        QTest::addColumn<QString>("device");
        QTest::addColumn<int>("clock");
        QTest::addColumn<int>("multiplier");
        QTest::addColumn<int>("maximum");
        QTest::addColumn<int>("interfaceType");
        QTest::addColumn<QString>("part");
        const QString fine = QStringLiteral("are within the limits of the ");
        const QString image = QStringLiteral("above half the system clock");
        const auto row = [](const char *name, const char *device, int clock, int multiplier, int maximum, int type,
                            const QString &part) {
            QTest::newRow(name) << QString::fromLatin1(device) << clock << multiplier << maximum << type << part;
        };
        row("AD9850 at 125 MHz", "AD9850", 125000000, 1, 40000000, 2, fine + QStringLiteral("AD9850"));
        row("AD9850 too fast", "AD9850", 125000001, 1, 40000000, 2, QStringLiteral("must not exceed 125,000,000 Hz"));
        row("AD9850 at 80 MHz", "AD9850", 80000000, 1, 26000000, 2, fine);
        row("AD9850 at 80 MHz, too high", "AD9850", 80000000, 1, 26000001, 2, QStringLiteral("Above 26,000,000 Hz"));
        row("AD9850 beyond half", "AD9850", 80000000, 1, 40000001, 2, image);
        row("AD9851 times six", "AD9851", 30000000, 6, 70000000, 2, fine);
        row("AD9851 multiplier input", "AD9851", 30000001, 6, 70000000, 2,
            QStringLiteral("must not exceed 30,000,000 Hz"));
        row("AD9851 too fast", "AD9851", 180000001, 1, 70000000, 2, QStringLiteral("must not exceed 180,000,000 Hz"));
        row("AD9851 too high", "AD9851", 30000000, 6, 70000001, 2, QStringLiteral("Above 70,000,000 Hz"));
        row("AD9951 times twenty", "AD9951", 20000000, 20, 160000000, 2, fine);
        row("AD9951 too high", "AD9951", 20000000, 20, 160000001, 2, QStringLiteral("Above 160,000,000 Hz"));
        row("AD9951 too fast", "AD9951", 20000001, 20, 160000000, 2, QStringLiteral("must not exceed 400,000,000 Hz"));
        row("AD9951 odd factor", "AD9951", 100000000, 3, 100000000, 2, QStringLiteral("by 3"));
        row("MiniVNA", "AD9951", 20000000, 20, 180000000, 3, fine);
        row("too slow", "AD9850", 999999, 1, 100, 2, QStringLiteral("at least 1,000,000 Hz"));
        row("beyond 32 bits", "AD9951", 1000000000, 20, 160000000, 2, QStringLiteral("must not exceed 400,000,000 Hz"));
    }

    void verdicts()
    {
        QFETCH(QString, device);
        QFETCH(int, clock);
        QFETCH(int, multiplier);
        QFETCH(int, maximum);
        QFETCH(int, interfaceType);
        QFETCH(QString, part);
        SetUpValues values;
        values.ddsDevice = device;
        values.ddsXtalFreq = clock;
        values.ddsMultiplier = static_cast<std::int16_t>(multiplier);
        values.ddsMaxFreq = maximum;
        values.interfaceType = static_cast<std::int16_t>(interfaceType);
        const QString verdict = chipVerdict(values);
        QVERIFY2(verdict.contains(part), qPrintable(verdict));
        QCOMPARE(verdict.contains(QStringLiteral("within the limits")), part.contains(QStringLiteral("within")));
    }
};

QTEST_APPLESS_MAIN(TestChipLimits)
#include "test_chip_limits.moc"
