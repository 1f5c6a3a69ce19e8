// SPDX-License-Identifier: MIT
#include "acquisition/aux_output.h"

#include "tests/support/fake_desktop.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace calvorn;

namespace {

struct Bench
{
    QTemporaryDir folder;
    Configuration configuration;
    test::FakeDesktop desktop;
    Messages messages{configuration, desktop};
    Log log{configuration};
    ErrorBoundary boundary{messages, log};
    QStringList sent;
    bool acknowledges = true;
    AuxOutput aux1{1, configuration.aux1, configuration, hardware(), boundary};
    AuxOutput aux2{2, configuration.aux2, configuration, hardware(), boundary};

    explicit Bench(const QByteArray &settings)
    {
        configuration.iniPath = folder.filePath(QStringLiteral("Calvorn.ini"));
        QFile file(configuration.iniPath);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write the settings file of the test");
        file.write(settings);
        file.close();
        aux1.setUp();
        aux2.setUp();
        aux1.show();
        aux2.show();
    }

    AuxHardware hardware()
    {
        return {[this](std::uint8_t value, std::int16_t output) {
                    sent.append(QStringLiteral("aux%1 %2").arg(output).arg(value));
                },
                [this](std::uint8_t control, std::uint8_t command, std::uint8_t data) {
                    sent.append(QStringLiteral("i2c %1 %2 %3").arg(control).arg(command).arg(data));
                    return acknowledges;
                }};
    }

    QCheckBox *box(int index) { return aux1.findChild<QCheckBox *>(QStringLiteral("chkAux1_%1").arg(index)); }
    QString total() { return aux1.findChild<QLabel *>(QStringLiteral("lblAux1"))->text(); }
    void press(int index) { QTest::mouseClick(box(index), Qt::LeftButton); }
};

constexpr char kEnabled[] = "[Aux1]\r\nEnabled=1\r\n[Aux2]\r\nEnabled=1\r\n";

} // namespace

class TestAuxOutput : public QObject
{
    Q_OBJECT

private slots:
    void threePressesGoRound()
    {
        Bench bench(kEnabled);
        bench.press(0);
        QCOMPARE(bench.box(0)->checkState(), Qt::PartiallyChecked);
        QCOMPARE(bench.configuration.aux1, std::int16_t{0});
        QCOMPARE(bench.total(), QStringLiteral("0"));
        bench.press(0);
        QCOMPARE(bench.box(0)->checkState(), Qt::Checked);
        QCOMPARE(bench.configuration.aux1, std::int16_t{1});
        QCOMPARE(bench.total(), QStringLiteral("10"));
        bench.press(0);
        QCOMPARE(bench.box(0)->checkState(), Qt::Unchecked);
        QCOMPARE(bench.configuration.aux1, std::int16_t{0});
        QCOMPARE(bench.sent,
                 (QStringList{QStringLiteral("aux1 0"), QStringLiteral("aux1 1"), QStringLiteral("aux1 0")}));
    }

    void theInverseLogicSendsTheComplement()
    {
        Bench bench("[Aux1]\r\nEnabled=1\r\nInverse Logic=1\r\n");
        for (const int index : {0, 0, 2, 2})
            bench.press(index);
        QCOMPARE(bench.configuration.aux1, std::int16_t{5});
        QCOMPARE(bench.sent.last(), QStringLiteral("aux1 250"));
        QCOMPARE(bench.total(), QStringLiteral("40"));
    }

    void captionsAndWeights()
    {
        Bench bench("[Aux1]\r\nTitle=Attenuator\r\nEnabled=1\r\nStep 1=25\r\nStep 2=fine;3;x\r\nStep 3=minus;-4\r\n");
        QCOMPARE(bench.aux1.title(), QStringLiteral("Attenuator"));
        QCOMPARE(bench.box(0)->text(), QStringLiteral("10dB"));
        QCOMPARE(bench.box(7)->text(), QStringLiteral("80dB"));
        QCOMPARE(bench.box(1)->text(), QStringLiteral("25"));
        for (const int index : {1, 1})
            bench.press(index);
        QCOMPARE(bench.total(), QStringLiteral("25"));
        for (const int index : {3, 3})
            bench.press(index);
        QCOMPARE(bench.total(), QStringLiteral("21"));
    }

    void aStepWithoutALabelIsDisabled()
    {
        Bench bench("[Aux1]\r\nEnabled=1\r\nStep 3=;40\r\n");
        QVERIFY(!bench.box(3)->isEnabled());
        QVERIFY(bench.box(2)->isEnabled());
        bench.press(3);
        bench.press(3);
        QCOMPARE(bench.configuration.aux1, std::int16_t{0});
        QCOMPARE(bench.sent, QStringList());
    }

    void otherInterfacesDoNotReact()
    {
        Bench bench(kEnabled);
        bench.configuration.interfaceType = kInterfacePic;
        bench.press(0);
        QCOMPARE(bench.box(0)->checkState(), Qt::Unchecked);
        QVERIFY(bench.sent.isEmpty());
    }

    void aDisabledOutputShowsAndSendsNothing()
    {
        Bench bench("[Aux1]\r\nEnabled=0\r\n");
        QVERIFY(!bench.box(0)->isVisible());
        bench.aux1.restore();
        QVERIFY(bench.sent.isEmpty());
    }

    void theStoredValueIsRestored()
    {
        Bench bench("[Aux1]\r\nEnabled=1\r\nInverse Logic=True\r\n"
                    "[Aux2]\r\nEnabled=1\r\nPotMax=255\r\nPotMin=0\r\ni2c_control=80\r\ni2c_command=&HA9\r\n");
        bench.configuration.aux1 = 5;
        bench.configuration.pot2 = 400;
        bench.aux1.setUp();
        bench.aux2.setUp();
        bench.aux1.restore();
        bench.aux2.restore();
        QCOMPARE(bench.box(2)->checkState(), Qt::Checked);
        QCOMPARE(bench.box(1)->checkState(), Qt::Unchecked);
        // "True" is no number, so the logic is not inverse.
        QCOMPARE(bench.sent,
                 (QStringList{QStringLiteral("aux1 5"), QStringLiteral("aux2 0"), QStringLiteral("i2c 80 169 255")}));
        QCOMPARE(bench.configuration.pot2, std::int16_t{255});
        QCOMPARE(bench.aux2.findChild<QLabel *>(QStringLiteral("lblPot2"))->text(), QStringLiteral("255"));
    }

    void aMovedPotentiometerIsSent()
    {
        Bench bench("[Aux2]\r\nEnabled=1\r\nPotMax=100\r\nPotMin=10\r\ni2c_control=80\r\ni2c_command=170\r\n");
        auto *bar = bench.aux2.findChild<QScrollBar *>(QStringLiteral("VScrollPot2"));
        QCOMPARE(bar->value(), 10);
        bench.acknowledges = false;
        bar->setFocus();
        QTest::keyClick(bar, Qt::Key_End);
        QCOMPARE(bench.sent, QStringList{QStringLiteral("i2c 80 170 100")});
        QCOMPARE(bench.configuration.pot2, std::int16_t{100});
        QCOMPARE(bench.configuration.msgResult, std::int16_t{0});
        QCOMPARE(bench.desktop.boxes.size(), 0);
    }
};

QTEST_MAIN(TestAuxOutput)
#include "test_aux_output.moc"
