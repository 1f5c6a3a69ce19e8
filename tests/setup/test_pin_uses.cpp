// SPDX-License-Identifier: MIT
#include "setup/lpt_pin_window.h"
#include "tests/support/program_folder.h"

#include <QLabel>
#include <QTest>

using namespace calvorn;

// The drawing of the parallel port's connector.
class TestPinUses : public QObject
{
    Q_OBJECT

private slots:
    void theStandardWiring()
    {
        const auto uses = pinUses({});
        const auto &strobe = uses[0];
        QCOMPARE(strobe.number, 1);
        QCOMPARE(strobe.line, QStringLiteral("STROBE"));
        QCOMPARE(strobe.signal, QStringLiteral("Aux data"));
        // An inversion by the port itself does not count as one by the board.
        QVERIFY(!strobe.invertedByBoard);
        QCOMPARE(uses[1].signal, QStringLiteral("DDS clock"));
        QCOMPARE(uses[6].signal, QStringLiteral("ADC select"));
        QCOMPARE(uses[9].kind, PinUse::Kind::Input);
        QCOMPARE(uses[9].signal, QStringLiteral("ADC data"));
        QCOMPARE(uses[10].kind, PinUse::Kind::Unused);
        QCOMPARE(uses[10].line, QStringLiteral("BUSY"));
        for (std::size_t pin = 17; pin < uses.size(); ++pin)
            QCOMPARE(uses[pin].kind, PinUse::Kind::Ground);
    }

    void bytesShareTheirPins()
    {
        BoardWiring wiring;
        wiring.loading = DdsLoading::Bytes;
        wiring.lines = kByteWideLptWiring;
        const auto uses = pinUses(wiring);
        QCOMPARE(uses[1].signal, QStringLiteral("DDS D0, ADC clock"));
        QCOMPARE(uses[4].signal, QStringLiteral("DDS D3"));
        QCOMPARE(uses[0].signal, QStringLiteral("DDS clock"));
        QCOMPARE(uses[16].signal, QStringLiteral("ADC select"));
    }

    void theSettingsFileDecides()
    {
        const test::ProgramFolder folder({}, "[LPT Wiring]\r\nDdsReset=!D4\r\nAdcClock=D3\r\nAuxLatch=none\r\n");
        LptPinWindow window(folder.iniPath());
        window.show();
        auto *drawing = window.findChild<LptPinDrawing *>();
        QVERIFY(drawing);
        const QString text = drawing->accessibleDescription();
        QVERIFY2(text.contains(QStringLiteral("Pin 6 (D4): DDS reset, inverted by the board")), qPrintable(text));
        QVERIFY2(text.contains(QStringLiteral("Pin 5 (D3): ADC clock;")), qPrintable(text));
        QVERIFY2(text.contains(QStringLiteral("Pin 16 (INIT): not used")), qPrintable(text));
        QVERIFY(!drawing->grab().isNull());
    }

    void nonsenseIsToldInstead()
    {
        const test::ProgramFolder folder({}, "[LPT Wiring]\r\nDdsReset=D99\r\n");
        LptPinWindow window(folder.iniPath());
        QVERIFY(!window.findChild<LptPinDrawing *>());
        const QString text = window.findChild<QLabel *>(QStringLiteral("lblLPTpin"))->text();
        QVERIFY2(text.contains(QStringLiteral("DdsReset")), qPrintable(text));
    }
};

QTEST_MAIN(TestPinUses)
#include "test_pin_uses.moc"
