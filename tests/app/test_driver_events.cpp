// SPDX-License-Identifier: MIT
#include "app/driver_events.h"

#include "instrument/lpt_driver.h"
#include "instrument/pic_driver.h"
#include "instrument/vna_driver.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/fake_server_control.h"

#include <QSignalSpy>
#include <QTest>

using namespace calvorn;

namespace {

template <typename Driver>
struct Bench
{
    test::FakeServerControl control;
    Configuration configuration;
    test::FakeDesktop desktop;
    Messages messages{configuration, desktop};
    Log log{configuration};
    ErrorBoundary boundary{messages, log};
    Instrument instrument{configuration, log, desktop, test::FakeServerControl::program(), QString()};
    SweepTable &table{instrument.table()};
    ServerProcess &server{instrument.server()};
    Driver &driver{instrument.useDriver<Driver>()};
    SweepControls controls{configuration, instrument, messages, log, desktop, boundary};
    TestPanel testPanel{configuration, table, messages, log, boundary};
    DriverEvents events{messages, log, boundary, controls, instrument, testPanel};
    QSignalSpy cancelled{&events, &DriverEvents::cancelled};

    Bench()
    {
        configuration.logDebug = true;
        configuration.startFreq = 1000000;
        configuration.stopFreq = 2000000;
        configuration.stepFreq = 2500;
        configuration.adcStep = 0.001F;
        events.connectDriver();
        table.inizializzaGrid();
        controls.show();
    }

    QStringList logLines()
    {
        auto *list = testPanel.findChild<QListWidget *>(QStringLiteral("lstLOG"));
        QStringList lines;
        for (int i = 0; i < list->count(); ++i)
            lines.append(list->item(i)->text());
        return lines;
    }
    // The program plans the new range shortly after the change.
    void changeStartWhileSweeping()
    {
        controls.cmdStart_Click();
        control.takeCalls();
        configuration.startFreq = 1500000;
        controls.findChild<QTimer *>(QStringLiteral("timerUpdateSweep"))->setInterval(0);
        controls.restartTimerUpdateSweep();
    }
    QString errorCount() { return testPanel.findChild<QLineEdit *>(QStringLiteral("txtErrori"))->text(); }
};

} // namespace

class TestDriverEvents : public QObject
{
    Q_OBJECT

private slots:
    void aParallelPortConditionOfCodeFourLeavesNoTrace()
    {
        Bench<LptDriver> bench;
        emit bench.driver.aErrore(4, QStringLiteral("whatever"));
        QVERIFY(bench.logLines().isEmpty());
        QVERIFY(bench.desktop.boxes.isEmpty());
    }

    void anyOtherParallelPortErrorAsks()
    {
        Bench<LptDriver> bench;
        emit bench.driver.aErrore(2, QStringLiteral("The port is gone."));
        QCOMPARE(bench.logLines(), QStringList{QStringLiteral("2 The port is gone.")});
        QCOMPARE(bench.desktop.boxes.size(), 1);
        QCOMPARE(bench.desktop.boxes[0].icon, BoxIcon::Critical);
        QCOMPARE(bench.desktop.boxes[0].buttons, BoxButtons::OkCancel);
        QCOMPARE(bench.desktop.boxes[0].text, QStringLiteral("The port is gone."));
        QCOMPARE(bench.desktop.boxes[0].title, QStringLiteral("Brenik - Calvorn  v2.0"));
        QCOMPARE(bench.cancelled.count(), 0);
        QCOMPARE(bench.instrument.sweepState(), Instrument::kIdle);
        bench.desktop.answers.enqueue(kBoxCancel);
        emit bench.driver.aErrore(2, QStringLiteral("The port is gone."));
        QCOMPARE(bench.cancelled.count(), 1);
    }

    // With the log off, a box is the only report of an error.
    void everyErrorIsShownOnce()
    {
        Bench<LptDriver> bench;
        bench.configuration.logDebug = false;
        const auto fail = [&](const char *text) { emit bench.driver.aErrore(2, QString::fromLatin1(text)); };
        bench.desktop.whileBoxOpen = [&] {
            fail("The port is gone.");
            if (bench.desktop.boxes.size() > 2)
                return;
            fail("The plan was refused.");
            fail("The board is silent.");
            fail("The plan was refused.");
        };
        fail("The port is gone.");
        QStringList shown;
        for (const auto &box : bench.desktop.boxes)
            shown.append(box.text);
        QCOMPARE(shown.first(), QStringLiteral("The port is gone."));
        QCOMPARE(shown.mid(1, 2),
                 (QStringList{QStringLiteral("The plan was refused."), QStringLiteral("The board is silent.")}));
        // An error that recurs after its box was closed is shown again.
        QCOMPARE(shown.mid(3), QStringList{QStringLiteral("The port is gone.")});
        QCOMPARE(bench.cancelled.count(), 0);
    }

    void cancelDropsTheErrorsThatWait()
    {
        Bench<LptDriver> bench;
        bench.desktop.answers.enqueue(kBoxOk);
        bench.desktop.answers.enqueue(kBoxCancel);
        bench.desktop.whileBoxOpen = [&] {
            for (const char *text : {"first", "second", "third"})
                emit bench.driver.aErrore(2, QString::fromLatin1(text));
        };
        emit bench.driver.aErrore(2, QStringLiteral("first"));
        QCOMPARE(bench.desktop.boxes.size(), 2);
        QCOMPARE(bench.desktop.lastText(), QStringLiteral("second"));
        QCOMPARE(bench.cancelled.count(), 1);
        // The next error is shown as usual.
        bench.desktop.whileBoxOpen = {};
        emit bench.driver.aErrore(2, QStringLiteral("third"));
        QCOMPARE(bench.desktop.boxes.size(), 3);
    }

    void okLeavesTheSweepAsItWas()
    {
        Bench<LptDriver> bench;
        bench.controls.cmdStart_Click();
        emit bench.driver.aErrore(2, QStringLiteral("The port is gone."));
        QCOMPARE(bench.instrument.sweepState(), Instrument::kSweeping);
    }

    void afterASweepTheParallelPortGeneratorIsParked()
    {
        Bench<LptDriver> bench;
        bench.controls.cmdStart_Click();
        bench.controls.cmdStop_Click();
        bench.control.takeCalls();
        QTRY_COMPARE(bench.instrument.sweepState(), Instrument::kIdle);
        QCOMPARE(bench.control.takeCalls(), QStringList{QStringLiteral("aLPT.SetFrequency(1000000)")});
    }

    void afterASerialSweepTheGeneratorIsToldNothing()
    {
        Bench<PicDriver> pic;
        pic.controls.cmdStart_Click();
        pic.controls.cmdStop_Click();
        pic.control.takeCalls();
        QTRY_COMPARE(pic.instrument.sweepState(), Instrument::kIdle);
        QVERIFY(pic.control.takeCalls().isEmpty());
        Bench<VnaDriver> vna;
        vna.controls.cmdStart_Click();
        vna.controls.cmdStop_Click();
        vna.control.takeCalls();
        QTRY_COMPARE(vna.instrument.sweepState(), Instrument::kIdle);
        QVERIFY(vna.control.takeCalls().isEmpty());
    }

    void aPicThatRefusesLeavesTheWindowIdle()
    {
        Bench<PicDriver> bench;
        bench.control.setRules({QStringLiteral("refuse PrepareSweep")});
        bench.controls.cmdStart_Click();
        QCOMPARE(bench.control.takeCalls().last(), QStringLiteral("aPIC.RunSweep()"));
        QCOMPARE(bench.instrument.sweepState(), Instrument::kIdle);
        QCOMPARE(bench.logLines().last(), QStringLiteral("P> Errore inizializza ciclo sweep"));
    }

    void aSerialSweepIsRestartedForANewRange()
    {
        Bench<PicDriver> pic;
        pic.changeStartWhileSweeping();
        QTRY_COMPARE(pic.logLines().count(QStringLiteral("P> Start sweep")), 2);
        QCOMPARE(pic.control.takeCalls(),
                 (QStringList{QStringLiteral("aPIC.StopSweep(1)"), QStringLiteral("aPIC.PrepareSweep(1500000, 2500)"),
                              QStringLiteral("aPIC.RunSweep()")}));
        QCOMPARE(pic.instrument.sweepState(), Instrument::kSweeping);
        Bench<VnaDriver> vna;
        vna.configuration.measuringMode = 3;
        vna.changeStartWhileSweeping();
        QTRY_COMPARE(vna.logLines().count(QStringLiteral("V> Start sweep")), 2);
        QCOMPARE(
            vna.control.takeCalls(),
            (QStringList{QStringLiteral("aVNA.StopSweep(1)"), QStringLiteral("aVNA.SetMode(3)"),
                         QStringLiteral("aVNA.PrepareSweep(1500000, 2500, 400)"), QStringLiteral("aVNA.RunSweep()")}));
        QCOMPARE(vna.instrument.sweepState(), Instrument::kSweeping);
    }

    void aParallelPortSweepGoesOnInANewRange()
    {
        Bench<LptDriver> bench;
        bench.changeStartWhileSweeping();
        QTRY_COMPARE(bench.logLines().last(), QStringLiteral("L> Start/step sweep reinizializzati"));
        QCOMPARE(bench.control.takeCalls(), QStringList{QStringLiteral("aLPT.PrepareSweep(1500000, 2500)")});
        QCOMPARE(bench.logLines().count(QStringLiteral("L> Start sweep")), 1);
        QVERIFY(!bench.logLines().contains(QStringLiteral("L> Stop sweep")));
        QCOMPARE(bench.instrument.sweepState(), Instrument::kSweeping);
    }

    void threeClicksGoRoundTheModes()
    {
        Bench<VnaDriver> bench;
        bench.configuration.measuringMode = 3;
        bench.testPanel.setDriver(&bench.driver);
        bench.testPanel.show();
        auto *button = bench.testPanel.findChild<QAbstractButton *>(QStringLiteral("cmdMisura"));
        QCOMPARE(button->text(), QStringLiteral("DUT"));
        const std::initializer_list<std::pair<QString, std::int16_t>> modes{
            {QStringLiteral("Angle"), 1}, {QStringLiteral("RetLoss"), 2}, {QStringLiteral("DUT"), 3}};
        for (const auto &[caption, mode] : modes) {
            bench.control.takeCalls();
            QTest::mouseClick(button, Qt::LeftButton);
            QCOMPARE(button->text(), caption);
            QCOMPARE(bench.configuration.measuringMode, mode);
            QCOMPARE(bench.control.takeCalls().last(), QStringLiteral("aVNA.SetMode(%1)").arg(mode));
        }
    }

    void serialTransmissionErrorsAreOnlyCounted()
    {
        Bench<PicDriver> pic;
        for (int i = 0; i < 3; ++i)
            emit pic.driver.aErrore(1, QStringLiteral("crc"));
        QCOMPARE(pic.errorCount(), QStringLiteral("3"));
        QVERIFY(pic.logLines().isEmpty());
        emit pic.driver.aErrore(4, QStringLiteral("late"));
        QCOMPARE(pic.logLines(), QStringList{QStringLiteral("4 late")});
        QVERIFY(pic.desktop.boxes.isEmpty());
        Bench<VnaDriver> vna;
        emit vna.driver.aErrore(1, QStringLiteral("sync"));
        emit vna.driver.aErrore(2, QStringLiteral("gone"));
        QCOMPARE(vna.errorCount(), QStringLiteral("1"));
        QCOMPARE(vna.logLines(), QStringList{QStringLiteral("2 gone")});
    }

    void theEndOfASweepIsLogged()
    {
        Bench<LptDriver> lpt;
        emit lpt.driver.aComplete();
        QCOMPARE(lpt.logLines(), QStringList{QStringLiteral("L> Stop sweep")});
        Bench<PicDriver> pic;
        emit pic.driver.aComplete();
        QCOMPARE(pic.logLines(), QStringList{QStringLiteral("P> Stop sweep")});
        Bench<VnaDriver> vna;
        emit vna.driver.aComplete();
        QCOMPARE(vna.logLines(), QStringList{QStringLiteral("V> Stop sweep")});
    }

    void aVectorLandsInTheTable()
    {
        Bench<LptDriver> bench;
        emit bench.driver.aVettore(QVector<int>(400, 500));
        QCOMPARE(bench.table.text(400, 2), QStringLiteral("500"));
        QCOMPARE(bench.table.text(400, 1), QStringLiteral("0.500"));
    }

    void aShortVectorIsToldOnce()
    {
        Bench<LptDriver> bench;
        emit bench.driver.aVettore(QVector<int>(10, 500));
        QCOMPARE(bench.desktop.boxes.size(), 1);
        QVERIFY(bench.desktop.lastText().endsWith(QStringLiteral("(in aLPT_aVettore)")));
        // The next vector would fail too, so the program stops the sweep.
        bench.controls.cmdStart_Click();
        bench.control.takeCalls();
        emit bench.driver.aVettore(QVector<int>(10, 500));
        QCOMPARE(bench.control.takeCalls(), QStringList{QStringLiteral("aLPT.StopSweep(2)")});
    }
};

QTEST_MAIN(TestDriverEvents)
#include "test_driver_events.moc"
