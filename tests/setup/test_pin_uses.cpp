// SPDX-License-Identifier: MIT
#include "setup/lpt_pin_window.h"
#include "tests/support/program_folder.h"

#include <QHash>
#include <QLabel>
#include <QTest>

#include <algorithm>

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
        // An inversion inside the port is not attributed to the board.
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

    // At its size hint, the drawing shows every pin and every label completely.
    void thePinsAndTheirLabelsHaveRoom()
    {
        LptPinDrawing drawing;
        drawing.setUses(pinUses({}));
        drawing.resize(drawing.sizeHint());
        const QImage image = drawing.grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QRgb paper = image.pixel(0, 0);
        QRect inked;
        QHash<QRgb, int> pixels; // of each colour in the image
        int rowsOfPins = 0;
        const QRgb shell = drawing.palette().color(QPalette::Mid).rgb();
        for (int y = 0; y < image.height(); ++y) {
            int gaps = 0;
            int width = 0; // of the current run of shell pixels
            for (int x = 0; x < image.width(); ++x) {
                const QRgb colour = image.pixel(x, y);
                ++pixels[colour];
                if (colour != paper)
                    inked |= QRect(x, y, 1, 1);
                width = colour == shell ? width + 1 : 0;
                gaps += width == 4 ? 1 : 0;
            }
            rowsOfPins += gaps == 14 ? 1 : 0; // a row of 13 pins
        }
        QVERIFY(image.rect().adjusted(2, 2, -2, -2).contains(inked));
        QVERIFY2(rowsOfPins >= 12, qPrintable(QString::number(rowsOfPins))); // pins do not touch each other
        // The colours of outputs, inputs and grounds.
        for (const QRgb colour : {qRgb(0x2e, 0x7d, 0x32), qRgb(0x15, 0x65, 0xc0), qRgb(0x40, 0x40, 0x40)})
            QVERIFY2(pixels.value(colour) > 200, qPrintable(QString::number(colour, 16)));

        // The same connector without labels shows where the labels begin.
        int longest = 0;
        auto unlabelled = pinUses({});
        for (PinUse &use : unlabelled) {
            const QString label = use.kind == PinUse::Kind::Unused ? use.line : use.signal;
            if (use.number <= 13)
                longest = std::max(longest, drawing.fontMetrics().tightBoundingRect(label).width());
            use = {use.number, {}, {}, PinUse::Kind::Ground, false};
        }
        LptPinDrawing bare;
        bare.setUses(unlabelled);
        bare.resize(drawing.size());
        const QImage plain = bare.grab().toImage().convertToFormat(QImage::Format_RGB32);
        int top = 0; // first row of the shell
        while (top < plain.height() && plain.pixel(plain.width() / 2, top) == paper)
            ++top;
        QVERIFY2(top - inked.top() >= longest, qPrintable(QString::number(top - inked.top())));
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
