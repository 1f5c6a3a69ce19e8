// SPDX-License-Identifier: MIT
#include "controls/sweep_controls.h"

#include "core/runtime_error.h"
#include "tests/support/fake_desktop.h"

#include <QSignalSpy>
#include <QTest>

using namespace calvorn;

namespace {

// Values of Instrument::sweepState().
constexpr std::int16_t kIdle = 0;
constexpr std::int16_t kSweeping = 4;

// A driver that records its calls.
class RecordingDriver : public AcquisitionDriver
{
public:
    using AcquisitionDriver::AcquisitionDriver;

    QStringList calls;
    Replanning how = Replanning::InPlace;
    bool accepts = true;
    bool fails = false;

    const InterfaceKind &kind() const override { return *interfaceKind(kInterfaceLpt); }
    QString logPrefix() const override { return QStringLiteral("X> "); }
    QString caption() const override { return {}; }
    Replanning replanning() const override { return how; }
    bool startSweep() override
    {
        calls.append(QStringLiteral("start"));
        if (whileStarting)
            whileStarting();
        if (fails)
            throw RuntimeError(RuntimeError::Kind::DriverCall, QStringLiteral("as told"));
        return accepts;
    }
    void stopSweep(std::int16_t reason) override { calls.append(QStringLiteral("stop %1").arg(reason)); }
    void replanSweep() override { calls.append(QStringLiteral("replan")); }
    void sendFrequency() override { calls.append(QStringLiteral("frequency")); }
    void resetGenerator() override { calls.append(QStringLiteral("reset")); }
    void setSpeed(std::int16_t code) override { calls.append(QStringLiteral("speed %1").arg(code)); }

    std::function<void()> whileStarting;

protected:
    ErrorReaction hardwareReactionTo(std::int16_t) const override { return ErrorReaction::Ignore; }
    void attach(const QDBusConnection &, const QString &) override {}
    bool configureHardware() override { return true; }
    bool runPlan(const SweepAxis &) override { return true; }
    void park() override { calls.append(QStringLiteral("park")); }
    bool putGeneratorOn(std::int32_t) override { return true; }
    void putGeneratorOff() override {}
    void releaseHardware() override {}
    QDBusPendingReply<bool> askWhetherWorking() override { return {}; }
};

struct Bench
{
    Configuration configuration;
    test::FakeDesktop desktop;
    Messages messages{configuration, desktop};
    Log log{configuration};
    ErrorBoundary boundary{messages, log};
    Instrument instrument{configuration, log, desktop, QString(), QString()};
    RecordingDriver &driver{instrument.useDriver<RecordingDriver>(QStringLiteral("/x"), nullptr)};
    SweepControls controls{configuration, instrument, messages, log, desktop, boundary};
    QSignalSpy enabled{&controls, &SweepControls::idleCommandsEnabled};

    Bench()
    {
        configuration.startFreq = 1000000;
        configuration.stopFreq = 10000000;
        controls.show();
    }

    // Simulates a driver that reports a completed sweep.
    void complete()
    {
        emit driver.aComplete();
        controls.sweepCompleted();
    }

    QAbstractButton *button(const char *name)
    {
        return controls.findChild<QAbstractButton *>(QString::fromLatin1(name));
    }
    QString label(const char *name)
    {
        return controls.findChild<QWidget *>(QString::fromLatin1(name))->property("text").toString();
    }
    void click(const char *name)
    {
        // Clicks near the left edge: a radio button reacts only to clicks on its mark or its text.
        QTest::mouseClick(button(name), Qt::LeftButton, {}, QPoint(10, button(name)->height() / 2));
    }
    void fireTimer()
    {
        auto *timer = controls.findChild<QTimer *>(QStringLiteral("timerUpdateSweep"));
        timer->setInterval(0);
        controls.restartTimerUpdateSweep();
        QTRY_VERIFY(!timer->isActive());
    }
};

} // namespace

class TestSweepControls : public QObject
{
    Q_OBJECT

private slots:
    void aRangeTooSmallStartsNothing()
    {
        Bench bench;
        bench.configuration.stopFreq = 1000399;
        bench.click("cmdStart");
        QCOMPARE(bench.desktop.beeps, 1);
        QCOMPARE(bench.desktop.lastText(), QStringLiteral("The minimum sweep range is 400 Hz"));
        QCOMPARE(bench.desktop.boxes.first().icon, BoxIcon::Warning);
        QVERIFY(bench.driver.calls.isEmpty());
        QVERIFY(bench.button("cmdStart")->isVisible());
        QCOMPARE(bench.instrument.sweepState(), kIdle);
    }

    void startingSwitchesTheButtonsAndRefreshesTheLabels()
    {
        Bench bench;
        QStringList order;
        bench.controls.setHooks(
            {[&] { order.append(QStringLiteral("f")); }, [&] { order.append(QStringLiteral("m")); }});
        bench.click("cmdStart");
        QCOMPARE(order.join(QString()), QStringLiteral("fm"));
        QCOMPARE(bench.driver.calls, QStringList{QStringLiteral("start")});
        QCOMPARE(bench.instrument.sweepState(), kSweeping);
        QVERIFY(bench.button("cmdStop")->isVisible());
        QVERIFY(!bench.button("cmdStart")->isVisible());
        QCOMPARE(bench.enabled.last().first().toBool(), false);
        bench.click("cmdStop");
        QCOMPARE(bench.driver.calls.last(), QStringLiteral("stop 2"));
        QVERIFY(bench.button("cmdStop")->isVisible());
        bench.complete();
        QVERIFY(bench.button("cmdStart")->isVisible());
        QVERIFY(!bench.button("cmdStop")->isVisible());
        QCOMPARE(bench.enabled.last().first().toBool(), true);
        QCOMPARE(bench.instrument.sweepState(), kIdle);
    }

    void theForcedStopRestoresOnlyTheButtons()
    {
        Bench bench;
        bench.configuration.logDebug = true;
        bench.click("cmdStart");
        bench.click("cmdStop");
        QVERIFY(bench.button("cmdStop")->isVisible());
        bench.controls.cmdSwStop_Click();
        QVERIFY(bench.button("cmdStart")->isVisible());
        QCOMPARE(bench.instrument.sweepState(), kSweeping);
        QCOMPARE(bench.log.takeEarlyLines(), QStringList{QStringLiteral("Stop sweep forzato")});
        QCOMPARE(bench.driver.calls.count(QStringLiteral("stop 2")), 2);
    }

    void aNewStartWaitsForTheEndOfTheOldSweep()
    {
        Bench bench;
        bench.click("cmdStart");
        bench.controls.cmdSwStop_Click();
        int pumps = 0;
        bench.desktop.whilePumping = [&] {
            // A second click during the wait has no effect.
            bench.controls.cmdStart_Click();
            if (++pumps == 3)
                bench.complete();
        };
        bench.click("cmdStart");
        QCOMPARE(pumps, 3);
        QCOMPARE(bench.driver.calls.count(QStringLiteral("start")), 2);
        QCOMPARE(bench.instrument.sweepState(), kSweeping);
    }

    void aChangedRangeDuringAStartIsAppliedAfterIt()
    {
        Bench bench;
        bench.driver.how = AcquisitionDriver::Replanning::StopAndRestart;
        auto *timer = bench.controls.findChild<QTimer *>(QStringLiteral("timerUpdateSweep"));
        timer->setInterval(0);
        // A message box shown while the sweep starts processes events, including the timer's.
        bench.driver.whileStarting = [&] {
            bench.driver.whileStarting = {};
            QSignalSpy fired(timer, &QTimer::timeout);
            bench.controls.restartTimerUpdateSweep();
            QTRY_VERIFY(fired.count() > 1);
            QCOMPARE(bench.driver.calls, QStringList{QStringLiteral("start")});
        };
        bench.desktop.whilePumping = [&] { bench.complete(); };
        bench.click("cmdStart");
        QTRY_COMPARE(bench.driver.calls,
                     (QStringList{QStringLiteral("start"), QStringLiteral("stop 1"), QStringLiteral("start")}));
        QVERIFY(!timer->isActive());
    }

    void theKeyStartsStopsAndTakesTheFocusAlong()
    {
        Bench bench;
        bench.controls.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&bench.controls));
        bench.button("optSpeed_0")->setFocus();
        QTest::keyClick(&bench.controls, Qt::Key_F5);
        QCOMPARE(bench.driver.calls, QStringList{QStringLiteral("start")});
        QVERIFY(bench.button("cmdStop")->hasFocus());
        QTest::keyClick(&bench.controls, Qt::Key_F5);
        QCOMPARE(bench.driver.calls.last(), QStringLiteral("stop 2"));
    }

    void theMenuTakesTheFocusToTheButtonThatStops()
    {
        Bench bench;
        bench.controls.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&bench.controls));
        bench.button("optSpeed_0")->setFocus();
        bench.controls.singleAction()->trigger();
        QVERIFY(bench.button("cmdStop")->hasFocus());
    }

    void closingEndsTheWaiting()
    {
        Bench bench;
        bench.click("cmdStart");
        bench.controls.cmdSwStop_Click();
        bench.controls.restartTimerUpdateSweep();
        bench.desktop.whilePumping = [&] { bench.controls.abandonWaiting(); };
        bench.click("cmdStart");
        QVERIFY(!bench.controls.findChild<QTimer *>(QStringLiteral("timerUpdateSweep"))->isActive());
        QCOMPARE(bench.driver.calls.count(QStringLiteral("start")), 1);
        QVERIFY(bench.button("cmdStart")->isVisible());
    }

    void aSingleSweepStopsAfterItsVector()
    {
        Bench bench;
        bench.configuration.stepFreq = 22500;
        bench.instrument.table().inizializzaGrid();
        bench.controls.singleAction()->trigger();
        QCOMPARE(bench.driver.calls, QStringList{QStringLiteral("start")});
        QVERIFY(bench.button("cmdStop")->isVisible());
        bench.instrument.store(QVector<int>(400, 700));
        QCOMPARE(bench.driver.calls.last(), QStringLiteral("stop 2"));
        // Vectors still in transit are discarded, both before and after the sweep ends.
        QSignalSpy changed(&bench.instrument.table(), &SweepTable::changed);
        bench.instrument.store(QVector<int>(400, 600));
        bench.complete();
        bench.instrument.store(QVector<int>(400, 500));
        QCOMPARE(changed.count(), 0);
        QCOMPARE(bench.instrument.table().text(1, SweepTable::SampleColumn), QStringLiteral("700"));
        QCOMPARE(bench.driver.calls.size(), 2);
        QVERIFY(bench.button("cmdStart")->isVisible());
        // The next sweep works normally.
        bench.click("cmdStart");
        bench.instrument.store(QVector<int>(400, 600));
        bench.instrument.store(QVector<int>(400, 500));
        QCOMPARE(bench.driver.calls.size(), 3);
        QCOMPARE(bench.instrument.table().text(1, SweepTable::SampleColumn), QStringLiteral("500"));
    }

    void aNewRangeInASingleSweepRestartsItAsASingleOne()
    {
        Bench bench;
        bench.configuration.stepFreq = 22500;
        bench.instrument.table().inizializzaGrid();
        bench.driver.how = AcquisitionDriver::Replanning::StopAndRestart;
        bench.desktop.whilePumping = [&] { bench.complete(); };
        bench.controls.singleAction()->trigger();
        bench.fireTimer();
        const QStringList replanned{QStringLiteral("start"), QStringLiteral("stop 1"), QStringLiteral("start")};
        QCOMPARE(bench.driver.calls, replanned);
        bench.instrument.store(QVector<int>(400, 700));
        QCOMPARE(bench.driver.calls.mid(3), QStringList{QStringLiteral("stop 2")});
    }

    void aNewRangeWaitsForTheEndOfASingleSweepThatIsDone()
    {
        Bench bench;
        bench.configuration.stepFreq = 22500;
        bench.instrument.table().inizializzaGrid();
        auto *timer = bench.controls.findChild<QTimer *>(QStringLiteral("timerUpdateSweep"));
        timer->setInterval(0);
        bench.controls.singleAction()->trigger();
        bench.instrument.store(QVector<int>(400, 700));
        QSignalSpy fired(timer, &QTimer::timeout);
        bench.controls.restartTimerUpdateSweep();
        QTRY_VERIFY(fired.count() > 2);
        QVERIFY(timer->isActive());
        QCOMPARE(bench.driver.calls.last(), QStringLiteral("stop 2"));
        bench.complete();
        QTRY_VERIFY(!timer->isActive());
        QCOMPARE(bench.driver.calls.last(), QStringLiteral("park"));
    }

    void aRefusedPreparationLeavesTheWindowIdle()
    {
        Bench bench;
        bench.driver.accepts = false;
        bench.click("cmdStart");
        QCOMPARE(bench.instrument.sweepState(), kIdle);
        QVERIFY(bench.button("cmdStop")->isVisible());
    }

    void aFailedStartNeverLeavesTheWindowStuck()
    {
        Bench bench;
        bench.driver.fails = true;
        bench.click("cmdStart");
        QCOMPARE(bench.desktop.boxes.size(), 1);
        QVERIFY(bench.desktop.lastText().contains(QStringLiteral("(in cmdStart_Click)")));
        QCOMPARE(bench.instrument.sweepState(), kIdle);
        QVERIFY(bench.button("cmdStart")->isVisible());
        bench.driver.fails = false;
        bench.click("cmdStart");
        QCOMPARE(bench.instrument.sweepState(), kSweeping);
    }

    void anErrorInThePlanEndsTheStart()
    {
        Bench bench;
        bench.controls.setHooks({[] { throw RuntimeError(RuntimeError::Kind::Overflow); }, [] {}, [] {}});
        bench.click("cmdStart");
        QCOMPARE(bench.desktop.lastText(), QStringLiteral("Overflow.\r(in cmdStart_Click)"));
        QVERIFY(bench.driver.calls.isEmpty());
        QCOMPARE(bench.instrument.sweepState(), kIdle);
        QVERIFY(bench.button("cmdStart")->isVisible());
    }

    void anInterfaceWithoutADriverIsTold()
    {
        Bench bench;
        bench.configuration.interfaceType = 7;
        QVERIFY(!bench.instrument.makeDriver());
        int refreshes = 0;
        bench.controls.setHooks({[&] { ++refreshes; }, [&] { ++refreshes; }, [] {}});
        bench.click("cmdStart");
        QCOMPARE(refreshes, 0);
        QVERIFY2(bench.desktop.lastText().startsWith(QStringLiteral("There is no driver for this interface: 7")),
                 qPrintable(bench.desktop.lastText()));
        QCOMPARE(bench.instrument.sweepState(), kIdle);
        QVERIFY(bench.button("cmdStart")->isVisible());
        bench.click("optSpeed_1");
        bench.fireTimer();
        QCOMPARE(bench.desktop.boxes.size(), 1);
    }

    void theSpeedIsStoredAndSentAtOnce()
    {
        Bench bench;
        bench.configuration.sweepSpeed = 1;
        bench.controls.showSpeed(true);
        QVERIFY(bench.button("optSpeed_1")->isChecked());
        bench.click("optSpeed_2");
        QCOMPARE(bench.configuration.sweepSpeed, std::int16_t{2});
        QCOMPARE(bench.driver.calls, QStringList{QStringLiteral("speed 2")});
        bench.controls.showSpeed(false);
        QVERIFY(!bench.button("optSpeed_2")->isVisible());
    }

    void theTabKeyComesToTheChosenSpeed()
    {
        for (const std::int16_t speed : {std::int16_t{0}, std::int16_t{1}, std::int16_t{2}}) {
            Bench bench;
            bench.configuration.sweepSpeed = speed;
            bench.controls.showSpeed(true);
            bench.controls.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&bench.controls));
            bench.button("cmdStart")->setFocus();
            QTest::keyClick(bench.button("cmdStart"), Qt::Key_Backtab);
            QVERIFY(bench.button(qPrintable(QStringLiteral("optSpeed_%1").arg(speed)))->hasFocus());
        }
    }

    void anIdleChangeParksTheGenerator()
    {
        Bench bench;
        int planned = 0;
        bench.controls.setHooks({[] {}, [] {},
                                 [&] {
                                     ++planned;
                                     QVERIFY(bench.driver.calls.isEmpty());
                                 }});
        bench.fireTimer();
        QCOMPARE(planned, 1);
        QCOMPARE(bench.driver.calls, QStringList{QStringLiteral("park")});
    }

    void aRunningSweepIsReplannedInPlaceOrRestarted()
    {
        Bench bench;
        bench.click("cmdStart");
        bench.fireTimer();
        QCOMPARE(bench.driver.calls, (QStringList{QStringLiteral("start"), QStringLiteral("replan")}));
        bench.driver.how = AcquisitionDriver::Replanning::StopAndRestart;
        bench.desktop.whilePumping = [&] { bench.complete(); };
        bench.fireTimer();
        QCOMPARE(bench.driver.calls.mid(2), (QStringList{QStringLiteral("stop 1"), QStringLiteral("start")}));
        QVERIFY(bench.button("cmdStop")->isVisible());
    }

    void manyChangesAreAppliedOnce()
    {
        Bench bench;
        auto *timer = bench.controls.findChild<QTimer *>(QStringLiteral("timerUpdateSweep"));
        timer->setInterval(20);
        for (int i = 0; i < 10; ++i)
            bench.controls.restartTimerUpdateSweep();
        QTRY_COMPARE(bench.driver.calls.size(), 1);
        QVERIFY(!timer->isActive());
    }

    void thePeriodIsMeasured()
    {
        Bench bench;
        bench.desktop.ticks = 5000;
        bench.controls.aggiornaTimer();
        bench.desktop.ticks = 6000;
        bench.controls.aggiornaTimer();
        QCOMPARE(bench.label("lblSweepTime"), QStringLiteral("1000"));
        QCOMPARE(bench.label("lblSweepRate"), QStringLiteral("1.00"));
        // Two vectors within one tick do not change the display.
        bench.controls.aggiornaTimer();
        QCOMPARE(bench.label("lblSweepTime"), QStringLiteral("1000"));
        bench.desktop.ticks = 6120;
        bench.controls.aggiornaTimer();
        QCOMPARE(bench.label("lblSweepTime"), QStringLiteral("120"));
        QCOMPARE(bench.label("lblSweepRate"), QStringLiteral("8.33"));
    }

    void thePeriodIsRightAcrossAWrapOfTheTickCounter()
    {
        Bench bench;
        bench.desktop.ticks = 0xFFFFFF00U;
        bench.controls.aggiornaTimer();
        bench.desktop.ticks = 0x00000100U;
        bench.controls.aggiornaTimer();
        QCOMPARE(bench.label("lblSweepTime"), QStringLiteral("512"));
    }
};

QTEST_MAIN(TestSweepControls)
#include "test_sweep_controls.moc"
