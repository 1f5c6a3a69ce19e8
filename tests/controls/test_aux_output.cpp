// SPDX-License-Identifier: MIT
#include "controls/aux_output.h"

#include "tests/support/fake_desktop.h"

#include <QAccessible>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace calvorn;

namespace {

// A desktop theme where Return also presses buttons. Must be set before the application starts.
[[maybe_unused]] const bool kOnGnome = qputenv("QT_QPA_PLATFORMTHEME", "gnome");

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
    bool fails = false; // every write
    QStringList reasons;
    AuxOutput aux1{1, configuration.aux1, configuration, hardware(), boundary};
    AuxOutput aux2{2, configuration.aux2, configuration, hardware(), boundary};

    explicit Bench(const QByteArray &settings)
    {
        configuration.iniPath = folder.filePath(QStringLiteral("Calvorn.ini"));
        QFile file(configuration.iniPath);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write the test's settings file");
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
                    failOrGoOn();
                    sent.append(QStringLiteral("aux%1 %2").arg(output).arg(value));
                },
                [this](std::uint8_t control, std::uint8_t command, std::uint8_t data) {
                    failOrGoOn();
                    sent.append(QStringLiteral("i2c %1 %2 %3").arg(control).arg(command).arg(data));
                    return acknowledges;
                },
                [this](const QString &reason) { reasons.append(reason); },
                [this] { return configuration.interfaceType == kInterfaceLpt; }};
    }

    void failOrGoOn() const
    {
        if (fails)
            throw RuntimeError(RuntimeError::Kind::DriverCall, QStringLiteral("as told"));
    }

    QCheckBox *box(int index) { return aux1.findChild<QCheckBox *>(QStringLiteral("chkAux1_%1").arg(index)); }
    QString total() { return aux1.findChild<QLabel *>(QStringLiteral("lblAux1"))->text(); }
    // Only presses the button: it does not matter where the button is released.
    void press(int index) { QTest::mousePress(box(index), Qt::LeftButton); }

    // Performs a screen reader's action on a box.
    void reader(int index, const QString &action)
    {
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(box(index));
        QVERIFY(accessible && accessible->actionInterface());
        accessible->actionInterface()->doAction(action);
        // The box stays pressed for a moment.
        QTRY_VERIFY(!box(index)->isDown());
    }
};

// One way to press a box: a mouse button, a key or a screen reader.
using Press = std::function<void(Bench &, int)>;

void addPressRows()
{
    QTest::addColumn<Press>("press");
    const auto byMouse = [](Qt::MouseButton button) {
        return [button](Bench &bench, int index) { QTest::mouseClick(bench.box(index), button); };
    };
    const auto byKey = [](Qt::Key key) {
        return [key](Bench &bench, int index) {
            bench.box(index)->setFocus();
            QTest::keyClick(bench.box(index), key);
        };
    };
    QTest::newRow("left button") << Press(byMouse(Qt::LeftButton));
    QTest::newRow("right button") << Press(byMouse(Qt::RightButton));
    QTest::newRow("middle button") << Press(byMouse(Qt::MiddleButton));
    QTest::newRow("Space") << Press(byKey(Qt::Key_Space));
    QTest::newRow("Return") << Press(byKey(Qt::Key_Return));
    QTest::newRow("Enter") << Press(byKey(Qt::Key_Enter));
    QTest::newRow("Select") << Press(byKey(Qt::Key_Select));
    QTest::newRow("screen reader, press")
        << Press([](Bench &bench, int index) { bench.reader(index, QAccessibleActionInterface::pressAction()); });
    QTest::newRow("screen reader, toggle")
        << Press([](Bench &bench, int index) { bench.reader(index, QAccessibleActionInterface::toggleAction()); });
}

constexpr char kEnabled[] = "[Aux1]\r\nEnabled=1\r\n[Aux2]\r\nEnabled=1\r\n";

} // namespace

Q_DECLARE_METATYPE(Press)

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

    void everyPressGoesRound_data() { addPressRows(); }
    void everyPressGoesRound()
    {
        QFETCH(Press, press);
        Bench bench("[Aux1]\r\nEnabled=1\r\nInverse Logic=1\r\nStep 1=a;7\r\nStep 5=b;20\r\n");
        press(bench, 1);
        press(bench, 1);
        bench.sent.clear();
        const auto expect = [&](Qt::CheckState state, int value, const QString &total) {
            press(bench, 5);
            QCOMPARE(bench.box(5)->checkState(), state);
            QCOMPARE(bench.configuration.aux1, static_cast<std::int16_t>(value));
            QCOMPARE(bench.total(), total);
            // The value is sent once.
            QCOMPARE(bench.sent, QStringList{QStringLiteral("aux1 %1").arg(255 - value)});
            bench.sent.clear();
        };
        for (int round = 0; round < 2; ++round) {
            expect(Qt::PartiallyChecked, 2, QStringLiteral("7"));
            expect(Qt::Checked, 2 + 32, QStringLiteral("27"));
            expect(Qt::Unchecked, 2, QStringLiteral("7"));
        }
        QCOMPARE(bench.box(1)->checkState(), Qt::Checked);
    }

    void otherInterfacesKeepWhatTheBoxesShow_data() { addPressRows(); }
    void otherInterfacesKeepWhatTheBoxesShow()
    {
        QFETCH(Press, press);
        for (const std::int16_t type : {kInterfacePic, kInterfaceVna}) {
            Bench bench(kEnabled);
            bench.configuration.aux1 = 2;
            bench.aux1.setUp();
            bench.configuration.interfaceType = type;
            press(bench, 0);
            press(bench, 1);
            QCOMPARE(bench.box(0)->checkState(), Qt::Unchecked);
            QCOMPARE(bench.box(1)->checkState(), Qt::Checked);
            QCOMPARE(bench.configuration.aux1, std::int16_t{2});
            QCOMPARE(bench.total(), QStringLiteral("20"));
            QVERIFY(bench.sent.isEmpty());
        }
    }

    void captionsStandWithWhatTheyName()
    {
        Bench bench("[Aux1]\r\nEnabled=1\r\n[Aux2]\r\nEnabled=0\r\nPotMax=100\r\nPotMin=10\r\n");
        auto *total1 = bench.aux1.findChild<QLabel *>(QStringLiteral("lblTotalAux1"));
        auto *total2 = bench.aux2.findChild<QLabel *>(QStringLiteral("lblTotalAux2"));
        auto *pot = bench.aux2.findChild<QLabel *>(QStringLiteral("lblCaptionPot2"));
        QVERIFY(total1 && total2 && pot);
        QCOMPARE(total1->text(), QStringLiteral("Total"));
        QCOMPARE(pot->text(), QStringLiteral("Potentiometer"));
        QVERIFY(!bench.aux1.findChild<QLabel *>(QStringLiteral("lblCaptionPot2")));
        const auto *bar = bench.aux2.findChild<QScrollBar *>(QStringLiteral("VScrollPot2"));
        QVERIFY(total1->isVisible());
        QVERIFY(!total2->isVisible());
        QCOMPARE(pot->isVisible(), bar->isVisible());
        Bench other("[Aux1]\r\nEnabled=0\r\n[Aux2]\r\nEnabled=1\r\nPotMax=100\r\nPotMin=10\r\n");
        total1 = other.aux1.findChild<QLabel *>(QStringLiteral("lblTotalAux1"));
        total2 = other.aux2.findChild<QLabel *>(QStringLiteral("lblTotalAux2"));
        pot = other.aux2.findChild<QLabel *>(QStringLiteral("lblCaptionPot2"));
        QVERIFY(!total1->isVisible());
        QVERIFY(total2->isVisible());
        QVERIFY(pot->isVisible());
        // Each caption is above its own number.
        const auto *number = other.aux2.findChild<QLabel *>(QStringLiteral("lblAux2"));
        const auto *position = other.aux2.findChild<QLabel *>(QStringLiteral("lblPot2"));
        QVERIFY(total2->geometry().bottom() < number->geometry().top());
        QVERIFY(pot->geometry().bottom() < position->geometry().top());
        Bench without("[Aux2]\r\nEnabled=1\r\n");
        QVERIFY(!without.aux2.findChild<QLabel *>(QStringLiteral("lblCaptionPot2"))->isVisible());
    }

    void onlyThePressCounts()
    {
        Bench bench(kEnabled);
        bench.press(0);
        QTest::mouseRelease(bench.box(0), Qt::LeftButton);
        QCOMPARE(bench.box(0)->checkState(), Qt::PartiallyChecked);
        QCOMPARE(bench.sent.size(), 1);
        // The second press of a double click counts like any other.
        QTest::mouseDClick(bench.box(0), Qt::LeftButton);
        QCOMPARE(bench.box(0)->checkState(), Qt::Checked);
    }

    void theKeyboardDoesTheSame()
    {
        Bench bench(kEnabled);
        bench.box(3)->setFocus();
        QTest::keyClick(bench.box(3), Qt::Key_Space);
        QCOMPARE(bench.box(3)->checkState(), Qt::PartiallyChecked);
        // Holding a key down does not switch the output repeatedly.
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), true);
        QCoreApplication::sendEvent(bench.box(3), &held);
        QCOMPARE(bench.box(3)->checkState(), Qt::PartiallyChecked);
        QTest::keyClick(bench.box(3), Qt::Key_Space);
        QCOMPARE(bench.box(3)->checkState(), Qt::Checked);
        QCOMPARE(bench.configuration.aux1, std::int16_t{8});
        QCOMPARE(bench.sent, (QStringList{QStringLiteral("aux1 0"), QStringLiteral("aux1 8")}));
    }

    void anAmpersandIsNoMnemonic()
    {
        Bench bench("[Aux1]\r\nEnabled=1\r\nStep 0=R&D;7\r\n");
        bench.aux1.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&bench.aux1));
        QCOMPARE(bench.box(0)->text(), QStringLiteral("R&&D"));
        QVERIFY(bench.box(0)->shortcut().isEmpty());
        QTest::keyClick(&bench.aux1, Qt::Key_D, Qt::AltModifier);
        QCOMPARE(bench.box(0)->checkState(), Qt::Unchecked);
    }

    void aWriteThatFailsIsNotTold()
    {
        Bench bench("[Aux1]\r\nEnabled=1\r\n[Aux2]\r\nEnabled=1\r\nPotMax=100\r\nPotMin=10\r\n");
        bench.fails = true;
        bench.configuration.msgResult = -1;
        bench.press(0);
        bench.press(0);
        QCOMPARE(bench.configuration.aux1, std::int16_t{1});
        QCOMPARE(bench.total(), QStringLiteral("10"));
        auto *bar = bench.aux2.findChild<QScrollBar *>(QStringLiteral("VScrollPot2"));
        QTest::keyClick(bar, Qt::Key_End);
        QCOMPARE(bench.configuration.pot2, std::int16_t{100});
        QCOMPARE(bench.configuration.msgResult, std::int16_t{0});
        QVERIFY(bench.sent.isEmpty());
        QCOMPARE(bench.desktop.boxes.size(), 0);
        QCOMPARE(bench.reasons.size(), 3);
        QVERIFY(bench.reasons.first().contains(QStringLiteral("as told")));
        // The next press works normally.
        bench.fails = false;
        bench.press(1);
        QCOMPARE(bench.sent, QStringList{QStringLiteral("aux1 1")});
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
        // A weight that is not a number is reported and counts as 0.
        QCOMPARE(bench.box(2)->text(), QStringLiteral("fine"));
        QCOMPARE(bench.desktop.boxes.size(), 1);
        QVERIFY(bench.desktop.lastText().contains(QStringLiteral("3;x")));
        for (const int index : {2, 2})
            bench.press(index);
        QCOMPARE(bench.total(), QStringLiteral("21"));
        QCOMPARE(bench.configuration.aux1, std::int16_t{2 + 8 + 4});
    }

    void theSecondOutputHasItsOwn()
    {
        Bench bench("[Aux1]\r\nEnabled=1\r\n[Aux2]\r\nTitle=Relays\r\nEnabled=1\r\nStep 4=15 m;15\r\n");
        QCOMPARE(bench.aux2.title(), QStringLiteral("Relays"));
        QCOMPARE(bench.aux1.title(), QStringLiteral("Aux 1"));
        auto *box = bench.aux2.findChild<QCheckBox *>(QStringLiteral("chkAux2_4"));
        QCOMPARE(box->text(), QStringLiteral("15 m"));
        QTest::mousePress(box, Qt::LeftButton);
        QTest::mousePress(box, Qt::LeftButton);
        QCOMPARE(bench.aux2.findChild<QLabel *>(QStringLiteral("lblAux2"))->text(), QStringLiteral("15"));
        QCOMPARE(bench.sent.last(), QStringLiteral("aux2 16"));
        QCOMPARE(bench.configuration.aux1, std::int16_t{0});
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

    void aDisabledOutputShowsAndSendsNothing()
    {
        Bench bench("[Aux1]\r\nEnabled=0\r\n");
        for (int i = 0; i < 8; ++i)
            QVERIFY(!bench.box(i)->isVisible());
        QVERIFY(!bench.aux1.findChild<QLabel *>(QStringLiteral("lblAux1"))->isVisible());
        restoreOutputs(bench.configuration, bench.hardware());
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
        restoreOutputs(bench.configuration, bench.hardware());
        QCOMPARE(bench.box(2)->checkState(), Qt::Checked);
        QCOMPARE(bench.box(1)->checkState(), Qt::Unchecked);
        // "True" is treated as a nonzero number.
        QCOMPARE(bench.sent,
                 (QStringList{QStringLiteral("aux1 250"), QStringLiteral("aux2 0"), QStringLiteral("i2c 80 169 255")}));
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
