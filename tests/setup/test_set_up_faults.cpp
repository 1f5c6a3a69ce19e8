// SPDX-License-Identifier: MIT
// The messages about settings that the configuration dialog cannot read.
#include "tests/support/set_up_bench.h"

using namespace calvorn;
using calvorn::test::SetUpBench;

class TestSetUpFaults : public QObject
{
    Q_OBJECT

private slots:
    void everyBadValueIsNamedInItsOrder();
    void badDefaultsAreNamedWithTheirSection();
};

void TestSetUpFaults::everyBadValueIsNamedInItsOrder()
{
    SetUpBench bench("[Config]\nInterface=?\nDDS Device=?\nDDS Multiplier=?\nDDS Xtal freq=?\nDDS Max freq=?\n"
                     "DDS Min freq=?\nDDS Offset=?\nADC Device=?\nADC Offset=?\nADC Step=?\nADC Channel=?\n"
                     "[Parallel Port]\nLPT=?\n[Serial Port]\nCommPort=?\n[Aux1]\nEnabled=?\nInverse Logic=?\n"
                     "[Aux2]\nEnabled=?\nInverse Logic=?\nPotMax=?\nPotMin=?\n");
    QCOMPARE(bench.desktop.boxes.size(), 1);
    const QString mismatch = QStringLiteral(": Type mismatch: \"?\". The default ");
    const QString unknown = QStringLiteral(": Unknown device \"?\". The default ");
    QCOMPARE(bench.desktop.lastText().split(u'\r'),
             (QStringList{QStringLiteral("Some settings could not be read."),
                          QStringLiteral("[Config] \"Interface\"") + mismatch + QStringLiteral("2 is used."),
                          QStringLiteral("[Parallel Port] \"LPT\"") + mismatch + QStringLiteral("&H378 is used."),
                          QStringLiteral("[Serial Port] \"CommPort\"") + mismatch + QStringLiteral("6 is used."),
                          QStringLiteral("[Config] \"DDS Device\"") + unknown + QStringLiteral("AD9850 is used."),
                          QStringLiteral("[Config] \"DDS Multiplier\"") + mismatch + QStringLiteral("1 is used."),
                          QStringLiteral("[Config] \"DDS Xtal freq\"") + mismatch + QStringLiteral("80000000 is used."),
                          QStringLiteral("[Config] \"DDS Max freq\"") + mismatch + QStringLiteral("60000000 is used."),
                          QStringLiteral("[Config] \"DDS Min freq\"") + mismatch + QStringLiteral("10 is used."),
                          QStringLiteral("[Config] \"DDS Offset\"") + mismatch + QStringLiteral("0 is used."),
                          QStringLiteral("[Config] \"ADC Device\"") + unknown + QStringLiteral("10bit is used."),
                          QStringLiteral("[Config] \"ADC Step\"") + mismatch + QStringLiteral("0 is used."),
                          QStringLiteral("[Config] \"ADC Channel\"") + mismatch + QStringLiteral("1 is used."),
                          QStringLiteral("[Config] \"ADC Offset\"") + mismatch + QStringLiteral("5 is used."),
                          QStringLiteral("[Aux1] \"Enabled\"") + mismatch + QStringLiteral("0 is used."),
                          QStringLiteral("[Aux1] \"Inverse Logic\"") + mismatch + QStringLiteral("0 is used."),
                          QStringLiteral("[Aux2] \"Enabled\"") + mismatch + QStringLiteral("0 is used."),
                          QStringLiteral("[Aux2] \"Inverse Logic\"") + mismatch + QStringLiteral("0 is used.")}));
}

void TestSetUpFaults::badDefaultsAreNamedWithTheirSection()
{
    SetUpBench bench("[Interface1]\r\nDDS Device=AD9852\r\nDDS Max freq=many\r\nADC Step=1e400\r\n");
    bench.click("cmdDefault1");
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QCOMPARE(bench.desktop.lastText(),
             QStringLiteral("Some settings could not be read.\r"
                            "[Interface1] \"DDS Device\": Unknown device \"AD9852\". "
                            "The default AD9850 is used.\r"
                            "[Interface1] \"DDS Max freq\": Type mismatch: \"many\". "
                            "The default 60000000 is used.\r"
                            "[Interface1] \"ADC Step\": Overflow: \"1e400\". The default 0 is used."));
}

QTEST_MAIN(TestSetUpFaults)
#include "test_set_up_faults.moc"
