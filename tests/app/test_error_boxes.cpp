// SPDX-License-Identifier: MIT
// Error boxes over an open calibration dialog: their content, and that nothing is sent after the program closes.
#include "tests/support/calibration_hands.h"
#include "tests/support/fake_server_control.h"
#include "tests/support/page_boards.h"
#include "tests/support/page_scene.h"
#include "tests/support/quiet_time.h"

using namespace calvorn;
using calvorn::test::calibrate;
using calvorn::test::calibrationSettings;
using calvorn::test::kDetector;
using calvorn::test::kGenerator;
using calvorn::test::Scene;
using calvorn::test::WindowBench;
using Hands = calvorn::test::CalibrationHands;

namespace {

QStringList textsOf(const WindowBench &bench)
{
    QStringList texts;
    for (const auto &box : bench.desktop.boxes)
        texts.append(box.text);
    return texts;
}

} // namespace

class TestErrorBoxes : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

private slots:
    void init()
    {
        m_server.setRules({});
        m_server.takeCalls();
    }

    void everyErrorIsShownOnce();
    void cancelDropsTheErrorsThatWait();
    void theEndTalksToNobody_data();
    void theEndTalksToNobody();
    void theDetectorLosesItsPort();
    void theGeneratorLosesItsPort();
};

// With the log off, a box is the only report of an error.
void TestErrorBoxes::everyErrorIsShownOnce()
{
    WindowBench bench(test::FakeServerControl::program(), calibrationSettings(kInterfaceLpt));
    auto *driver = bench.driver();
    calibrate(bench, kGenerator, [&](const Hands &hands) {
        bench.desktop.whileBoxOpen = [&] {
            bench.desktop.whileBoxOpen = {};
            for (const char *text : {"first", "second", "third", "second"})
                emit driver->aErrore(2, QString::fromLatin1(text));
        };
        emit driver->aErrore(2, QStringLiteral("first"));
        QCOMPARE(textsOf(bench),
                 (QStringList{QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third")}));
        QCOMPARE(bench.desktop.boxes.last().title, QStringLiteral("Sweep by Brenik"));
        QVERIFY(hands.dialog->isVisible());
    });
    QVERIFY(bench.window->isVisible());
}

void TestErrorBoxes::cancelDropsTheErrorsThatWait()
{
    WindowBench bench(test::FakeServerControl::program(), calibrationSettings(kInterfaceLpt));
    auto *driver = bench.driver();
    calibrate(bench, kGenerator, [&](const Hands &hands) {
        bench.desktop.whileBoxOpen = [&] {
            for (const char *text : {"first", "second", "third"})
                emit driver->aErrore(2, QString::fromLatin1(text));
        };
        bench.desktop.answers.enqueue(kBoxOk);
        bench.desktop.answers.enqueue(kBoxCancel);
        emit driver->aErrore(2, QStringLiteral("first"));
        QVERIFY(!hands.dialog->isVisible());
        QCOMPARE(textsOf(bench), (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
    });
    QVERIFY(bench.window->isVisible());
    QCOMPARE(bench.desktop.boxes.size(), 2);
}

void TestErrorBoxes::theEndTalksToNobody_data()
{
    QTest::addColumn<int>("interfaceType");
    QTest::addColumn<QByteArray>("entry");
    for (const char *entry : {kGenerator, kDetector}) {
        QTest::addRow("PIC, %s", entry) << int{kInterfacePic} << QByteArray(entry);
        QTest::addRow("parallel port, %s", entry) << int{kInterfaceLpt} << QByteArray(entry);
        QTest::addRow("MiniVNA, %s", entry) << int{kInterfaceVna} << QByteArray(entry);
    }
}

// The calibration dialog closes after the program has released the hardware.
void TestErrorBoxes::theEndTalksToNobody()
{
    QFETCH(int, interfaceType);
    QFETCH(QByteArray, entry);
    WindowBench bench(test::FakeServerControl::program(), calibrationSettings(interfaceType));
    QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
    auto *driver = bench.driver();
    // A generator calibration that takes effect immediately shows errors itself; "Cancel" closes only that dialog.
    const bool ownBox = entry == kGenerator && interfaceType != kInterfacePic;
    calibrate(bench, entry.constData(), [&](const Hands &hands) {
        m_server.takeCalls();
        bench.desktop.whileBoxOpen = [&] {
            bench.desktop.whileBoxOpen = {};
            if (ownBox)
                bench.window->close();
        };
        bench.desktop.answers.enqueue(kBoxCancel);
        emit driver->aErrore(std::int16_t{100}, QStringLiteral("The acquisition server has ended unexpectedly."));
        QVERIFY(!bench.window->isVisible());
        QCOMPARE(hands.dialog->isVisible(), !ownBox);
        const QStringList calls = m_server.takeCalls();
        QVERIFY2(calls.last().endsWith(QStringLiteral(".ClosePort()")), qPrintable(calls.join(u' ')));
        // Neither detector readings nor a typed offset reach the server.
        QTest::keyClicks(hands.dialog->findChild<QLineEdit *>(), QStringLiteral("7"));
        emit driver->aErrore(2, QStringLiteral("too late"));
        test::nothingHappensFor(400);
    });
    QCOMPARE(m_server.takeCalls(), QStringList());
    QCOMPARE(textsOf(bench), QStringList{QStringLiteral("The acquisition server has ended unexpectedly.")});
}

// The server detects the loss of its port during the calibration.
void TestErrorBoxes::theDetectorLosesItsPort()
{
    Scene scene(kInterfaceLpt, test::crystalSettings(kInterfaceLpt, QStringLiteral("unplug")));
    QVERIFY2(scene.desktop.boxes.isEmpty(), qPrintable(scene.desktop.lastText()));
    calibrate(scene, kDetector, [&](const Hands &hands) {
        scene.desktop.answers.enqueue(kBoxCancel);
        // The simulated port disappears after one and a half sweeps, equivalent to a minute of readings.
        hands.find<QTimer>("TimerDetector")->setInterval(0);
        QTRY_VERIFY_WITH_TIMEOUT(!scene.window->isVisible(), 30'000);
        QCOMPARE(scene.serverPid(), 0);
        test::nothingHappensFor(400);
    });
    QCOMPARE(scene.serverPid(), 0);
    QCOMPARE(textsOf(scene), QStringList{QStringLiteral("The parallel port has disappeared.")});
}

void TestErrorBoxes::theGeneratorLosesItsPort()
{
    test::SerialPageBoard board("vna_board_by_the_page");
    Scene scene(kInterfaceVna, test::pageSettings(kInterfaceVna, board.link()));
    QVERIFY2(scene.desktop.boxes.isEmpty(), qPrintable(scene.desktop.lastText()));
    calibrate(scene, kGenerator, [&](const Hands &hands) {
        scene.desktop.whileBoxOpen = [&] {
            scene.desktop.whileBoxOpen = {};
            scene.window->close();
        };
        scene.desktop.answers.enqueue(kBoxCancel);
        board.tell("unplug");
        QTest::keyClicks(hands.dialog->findChild<QLineEdit *>(), QStringLiteral("7"));
        QTRY_VERIFY(!scene.window->isVisible());
        board.tell("plug");
        QCOMPARE(scene.serverPid(), 0);
    });
    QCOMPARE(scene.serverPid(), 0);
    QCOMPARE(scene.desktop.boxes.size(), 1);
    QVERIFY2(scene.desktop.lastText().contains(QStringLiteral("was lost")), qPrintable(scene.desktop.lastText()));
}

QTEST_MAIN(TestErrorBoxes)
#include "test_error_boxes.moc"
