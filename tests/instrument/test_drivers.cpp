// SPDX-License-Identifier: MIT
#include "instrument/lpt_driver.h"
#include "instrument/pic_driver.h"
#include "instrument/vna_driver.h"

#include "core/messages.h"
#include "core/runtime_error.h"
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
    ServerProcess server{test::FakeServerControl::program()};
    SweepTable table{configuration};
    Driver driver{DriverContext{configuration, log, server, table, desktop}};
    QSignalSpy completed{&driver, &AcquisitionDriver::aComplete};
    QSignalSpy errors{&driver, &AcquisitionDriver::aErrore};
    QSignalSpy ready{&driver, &AcquisitionDriver::hardwareReady};
    QList<QVector<int>> vectors;

    Bench()
    {
        configuration.logDebug = true;
        configuration.ddsDevice = QStringLiteral("AD9851");
        configuration.adcDevice = QStringLiteral("10bit");
        configuration.ddsXtalFreq = 30000000;
        configuration.ddsMultiplier = 6;
        configuration.ddsOffset = 1.5;
        configuration.sweepSpeed = 1;
        configuration.startFreq = 1000000;
        configuration.stepFreq = 22500;
        configuration.commPort = 100;
        configuration.serialSettings = QStringLiteral("115200,N,8,1");
        configuration.measuringMode = 2;
        table.inizializzaGrid();
        QObject::connect(&driver, &AcquisitionDriver::refused, &driver, [this](const QString &text, bool withBeep) {
            withBeep ? messages.beepAndWarn(text) : messages.warn(text);
        });
        QObject::connect(&driver, &AcquisitionDriver::aVettore, &driver,
                         [this](const QVector<int> &vector) { vectors.append(vector); });
    }
};

bool throwsDriverCall(const std::function<void()> &operation, RuntimeError::Kind kind = RuntimeError::Kind::DriverCall)
{
    try {
        operation();
    } catch (const RuntimeError &error) {
        return error.kind() == kind;
    }
    return false;
}

QStringList list(std::initializer_list<const char *> texts)
{
    QStringList result;
    for (const char *text : texts)
        result.append(QString::fromLatin1(text));
    return result;
}

} // namespace

class TestDrivers : public QObject
{
    Q_OBJECT

private slots:
    void theParallelPortStartsInItsOrder()
    {
        Bench<LptDriver> bench;
        bench.driver.startUp();
        QCOMPARE(bench.control.takeCalls(),
                 list({"aLPT.OpenPort(0)", "aLPT.SetDdsDevice(AD9851)", "aLPT.SetAdcDevice(10bit)",
                       "aLPT.SetXtalFrequency(30000000)", "aLPT.SetMultiplier(6)", "aLPT.SetOffset(1.5)",
                       "aLPT.SetSpeed(1)", "aLPT.ResetDevice()", "aLPT.SetFrequency(1000000)"}));
        QCOMPARE(bench.ready.count(), 1);
        QCOMPARE(bench.desktop.boxes.size(), 0);
        QCOMPARE(bench.driver.caption(), QStringLiteral("Brenik - Calvorn  v2.0 - AD9851"));
    }

    void aWrongParallelPortIsTold()
    {
        Bench<LptDriver> bench;
        bench.control.setRules({QStringLiteral("refuse OpenPort")});
        bench.driver.startUp();
        QCOMPARE(bench.desktop.beeps, 1);
        QCOMPARE(bench.desktop.lastText(),
                 QStringLiteral("Parallel port not initialized.\rDriver not found or wrong LPT address.\r"
                                "Please verify 'SetUp/Configuration/Ports'."));
        QCOMPARE(bench.desktop.boxes.first().icon, BoxIcon::Warning);
        QCOMPARE(bench.control.takeCalls(), list({"aLPT.OpenPort(0)"}));
        QCOMPARE(bench.ready.count(), 0);
    }

    void aCallThatFailsOpensNoPort()
    {
        Bench<LptDriver> bench;
        QSignalSpy opened(&bench.driver, &AcquisitionDriver::portOpened);
        QSignalSpy refused(&bench.driver, &AcquisitionDriver::portRefused);
        bench.control.setRules({QStringLiteral("fail OpenPort")});
        bench.driver.startUp();
        QCOMPARE(opened.count(), 0);
        QCOMPARE(refused.count(), 1);
        QVERIFY(refused.first().first().toString().endsWith(QStringLiteral(": as told")));
        QVERIFY(bench.desktop.lastText().startsWith(QStringLiteral("Parallel port not initialized.")));
        QCOMPARE(bench.ready.count(), 0);
        QVERIFY(!bench.driver.isConfigured());
    }

    void aParallelPortSweep()
    {
        Bench<LptDriver> bench;
        bench.driver.startUp();
        bench.control.takeCalls();
        bench.control.setRules(list({"vectors 2", "complete"}));
        QVERIFY(bench.driver.startSweep());
        QCOMPARE(bench.control.takeCalls(),
                 list({"aLPT.SetSpeed(1)", "aLPT.PrepareSweep(1000000, 22500)", "aLPT.RunSweep()"}));
        QCOMPARE(bench.log.takeEarlyLines(), list({"L> Start sweep"}));
        // Events are not delivered during a call.
        QCOMPARE(bench.vectors.size(), 0);
        QTRY_COMPARE(bench.completed.count(), 1);
        QCOMPARE(bench.vectors.size(), 2);
        QCOMPARE(bench.vectors[1].size(), 400);
        QCOMPARE(bench.vectors[1][399], 1399);
        bench.driver.sweepCompleted();
        QCOMPARE(bench.control.takeCalls(), list({"aLPT.SetFrequency(1000000)"}));
    }

    void replanningDropsWhatIsUnderWay()
    {
        Bench<LptDriver> bench;
        bench.control.setRules(list({"vectors 3"}));
        bench.driver.startUp();
        bench.driver.startSweep();
        bench.configuration.startFreq = 2000000;
        bench.table.inizializzaGrid();
        bench.control.takeCalls();
        bench.log.takeEarlyLines();
        bench.driver.replanSweep();
        QCOMPARE(bench.control.takeCalls(), list({"aLPT.PrepareSweep(2000000, 22500)"}));
        bench.driver.stopSweep(2);
        QTRY_COMPARE(bench.completed.count(), 1);
        QCOMPARE(bench.vectors.size(), 0);
        // The next sweep's vectors are delivered.
        bench.driver.startSweep();
        QTRY_COMPARE(bench.vectors.size(), 3);
    }

    void vectorsGoOnlyWhereTheyWereMeasured()
    {
        Bench<VnaDriver> bench;
        bench.control.setRules(list({"vectors 2", "complete"}));
        bench.driver.startUp();
        const auto arrived = [&bench] {
            bench.vectors.clear();
            bench.completed.clear();
            bench.driver.startSweep();
            return QTest::qWaitFor([&bench] { return bench.completed.count() == 1; }) ? bench.vectors.size() : -1;
        };
        QCOMPARE(arrived(), 2);
        // The sweep uses a new step, but the table still has the rows for the old one.
        bench.configuration.stepFreq = 100;
        QCOMPARE(arrived(), 0);
        bench.table.inizializzaGrid();
        QCOMPARE(arrived(), 2);
        // The rows contain a sweep imported from a file.
        bench.table.forgetAxis();
        QCOMPARE(arrived(), 0);
        bench.table.inizializzaGrid();
        // The mode changes while the vectors are in transit.
        bench.driver.startSweep();
        bench.vectors.clear();
        bench.completed.clear();
        bench.configuration.measuringMode = 3;
        QTRY_COMPARE(bench.completed.count(), 1);
        QCOMPARE(bench.vectors.size(), 0);
        bench.configuration.measuringMode = 1;
        QCOMPARE(arrived(), 2);
    }

    void onlyOtherCommandsTakeTheGenerator()
    {
        Bench<PicDriver> pic;
        Bench<LptDriver> lpt;
        Bench<VnaDriver> vna;
        for (AcquisitionDriver *driver :
             {static_cast<AcquisitionDriver *>(&pic.driver), static_cast<AcquisitionDriver *>(&lpt.driver),
              static_cast<AcquisitionDriver *>(&vna.driver)}) {
            driver->startUp();
            QSignalSpy taken(driver, &AcquisitionDriver::generatorTaken);
            QVERIFY(driver->generate(7'000'000));
            driver->silence();
            driver->parkAtChangedStart();
            QCOMPARE(taken.count(), 0);
            driver->sendFrequency();
            QCOMPARE(taken.count(), 1);
        }
    }

    void longErrorTextsAreTruncated()
    {
        Bench<LptDriver> bench;
        bench.driver.startUp();
        for (const int kilobytes : {1, 2}) {
            bench.errors.clear();
            bench.control.setRules({QStringLiteral("shout %1").arg(kilobytes)});
            bench.driver.startSweep();
            QTRY_COMPARE(bench.errors.count(), 1);
            const QString whole(1000, u'x');
            QCOMPARE(bench.errors.first().at(1).toString(), kilobytes == 1 ? whole : whole + u'…');
        }
    }

    void aServerThatSaysNoIsEnded()
    {
        Bench<LptDriver> bench;
        bench.driver.startUp();
        bench.driver.startSweep();
        bench.control.setRules({QStringLiteral("refuse IsWorking")});
        QTRY_COMPARE(bench.errors.count(), 1);
        QCOMPARE(bench.errors.first().at(0).toInt(), 100);
        QVERIFY(bench.errors.first().at(1).toString().startsWith(
            QStringLiteral("The acquisition server did not answer and was terminated.")));
        QTRY_COMPARE(bench.completed.count(), 1);
        QVERIFY(!bench.server.isConnected());
    }

    void settingsReachAPortThatComesLater()
    {
        Bench<VnaDriver> bench;
        bench.control.setRules({QStringLiteral("refuse OpenPort")});
        bench.driver.startUp();
        QCOMPARE(bench.control.takeCalls(), list({"aVNA.OpenPort(100, 115200,N,8,1)"}));
        QVERIFY(bench.driver.startSweep());
        QCOMPARE(bench.control.takeCalls(),
                 list({"aVNA.SetXtalFrequency(30000000)", "aVNA.SetMultiplier(6)", "aVNA.SetOffset(1.5)",
                       "aVNA.SetMode(2)", "aVNA.SetFrequency(1000000)", "aVNA.SetMode(2)",
                       "aVNA.PrepareSweep(1000000, 22500, 400)", "aVNA.RunSweep()"}));
        QVERIFY(bench.driver.startSweep());
        QCOMPARE(bench.control.takeCalls(),
                 list({"aVNA.SetMode(2)", "aVNA.PrepareSweep(1000000, 22500, 400)", "aVNA.RunSweep()"}));
    }

    void theParallelPortShutsDown()
    {
        Bench<LptDriver> bench;
        bench.driver.startUp();
        bench.control.takeCalls();
        bench.driver.shutDown();
        QCOMPARE(bench.control.takeCalls(), list({"aLPT.StopSweep(2)", "aLPT.ClosePort()"}));
    }

    void theOtherParallelPortOperations()
    {
        Bench<LptDriver> bench;
        bench.driver.startUp();
        bench.control.takeCalls();
        QCOMPARE(bench.driver.readDetector(), std::int16_t{512});
        bench.driver.setAux(250, 1);
        QVERIFY(bench.driver.writeI2c(80, 169, 128));
        bench.driver.setSpeed(3);
        QCOMPARE(bench.control.takeCalls(), list({"aLPT.ReadDetector()", "aLPT.SetAux(250, 1)",
                                                  "aLPT.WriteI2c(80, 169, 128)", "aLPT.SetSpeed(3)"}));
        bench.control.setRules({QStringLiteral("refuse WriteI2c")});
        QVERIFY(!bench.driver.writeI2c(80, 169, 128));
    }

    void parallelPortErrorsAreToldButForCodeFour()
    {
        Bench<LptDriver> bench;
        QCOMPARE(bench.driver.reactionTo(4), AcquisitionDriver::ErrorReaction::Ignore);
        QCOMPARE(bench.driver.reactionTo(1), AcquisitionDriver::ErrorReaction::LogAndAsk);
        QCOMPARE(bench.driver.reactionTo(2), AcquisitionDriver::ErrorReaction::LogAndAsk);
    }

    void thePicStartsAndSweeps()
    {
        Bench<PicDriver> bench;
        bench.driver.startUp();
        QCOMPARE(bench.control.takeCalls(),
                 list({"aPIC.OpenPort(100, 115200,N,8,1)", "aPIC.SendFrequency(A, 1000000)"}));
        QVERIFY(bench.driver.startSweep());
        QCOMPARE(bench.control.takeCalls(), list({"aPIC.PrepareSweep(1000000, 22500)", "aPIC.RunSweep()"}));
        bench.driver.parkAtChangedStart();
        QCOMPARE(bench.control.takeCalls(), list({"aPIC.SendFrequency(B, 1000000)"}));
        bench.driver.sweepCompleted();
        QVERIFY(bench.control.takeCalls().isEmpty());
        bench.driver.shutDown();
        QCOMPARE(bench.control.takeCalls(),
                 list({"aPIC.StopSweep(2)", "aPIC.SendFrequency(A, 1000000)", "aPIC.ClosePort()"}));
        QVERIFY(bench.configuration.msgResult != 0);
    }

    void aPicThatRefusesIsStillToldToRun()
    {
        Bench<PicDriver> bench;
        bench.driver.startUp();
        bench.control.takeCalls();
        bench.control.setRules({QStringLiteral("refuse PrepareSweep")});
        QVERIFY(!bench.driver.startSweep());
        QCOMPARE(bench.control.takeCalls(), list({"aPIC.PrepareSweep(1000000, 22500)", "aPIC.RunSweep()"}));
        QCOMPARE(bench.log.takeEarlyLines(), list({"P> Start sweep", "P> Errore inizializza ciclo sweep"}));
    }

    void picRefusalsAreTold()
    {
        Bench<PicDriver> bench;
        bench.control.setRules({QStringLiteral("refuse OpenPort")});
        bench.driver.startUp();
        QCOMPARE(bench.desktop.lastText(),
                 QStringLiteral("Wrong serial port number (COM100).\rPlease verify 'SetUp/Configuration/Ports'."));
        bench.control.setRules({QStringLiteral("refuse SendFrequency")});
        bench.driver.startUp();
        QCOMPARE(bench.desktop.lastText(), QStringLiteral("DDS not initialized\rVerify the serial interface."));
        QCOMPARE(bench.desktop.beeps, 2);
        bench.driver.parkAtChangedStart();
        QCOMPARE(bench.desktop.lastText(), QStringLiteral("Frequency not iniatized."));
        QCOMPARE(bench.desktop.beeps, 2);
    }

    void theMiniVnaStartsAndSweeps()
    {
        Bench<VnaDriver> bench;
        bench.driver.startUp();
        QCOMPARE(bench.control.takeCalls(),
                 list({"aVNA.OpenPort(100, 115200,N,8,1)", "aVNA.SetXtalFrequency(30000000)", "aVNA.SetMultiplier(6)",
                       "aVNA.SetOffset(1.5)", "aVNA.SetMode(2)", "aVNA.SetFrequency(1000000)"}));
        QCOMPARE(bench.driver.caption(), QStringLiteral("Brenik - Calvorn  v2.0 - MiniVNA"));
        QVERIFY(bench.driver.startSweep());
        QCOMPARE(bench.control.takeCalls(),
                 list({"aVNA.SetMode(2)", "aVNA.PrepareSweep(1000000, 22500, 400)", "aVNA.RunSweep()"}));
        bench.driver.parkAtChangedStart();
        QCOMPARE(bench.control.takeCalls(), list({"aVNA.SetMode(0)", "aVNA.SetFrequency(1000000)", "aVNA.SetMode(2)"}));
        bench.driver.shutDown();
        QCOMPARE(bench.control.takeCalls(), list({"aVNA.StopSweep(2)", "aVNA.ClosePort()"}));
    }

    void serialErrorsAreCountedOrLogged()
    {
        Bench<PicDriver> pic;
        Bench<VnaDriver> vna;
        for (const AcquisitionDriver *driver :
             {static_cast<AcquisitionDriver *>(&pic.driver), static_cast<AcquisitionDriver *>(&vna.driver)}) {
            QCOMPARE(driver->reactionTo(1), AcquisitionDriver::ErrorReaction::CountSilently);
            QCOMPARE(driver->reactionTo(4), AcquisitionDriver::ErrorReaction::LogOnly);
            QCOMPARE(driver->reactionTo(100), AcquisitionDriver::ErrorReaction::LogAndAsk);
            QCOMPARE(driver->replanning(), AcquisitionDriver::Replanning::StopAndRestart);
        }
    }

    void errorsAtShutDownOfASerialInterfaceAreIgnored()
    {
        Bench<PicDriver> pic;
        pic.driver.startUp();
        pic.control.takeCalls();
        pic.control.setRules({QStringLiteral("fail StopSweep")});
        pic.driver.shutDown();
        QCOMPARE(pic.desktop.boxes.size(), 0);
        // A failed step does not prevent the others.
        QCOMPARE(pic.control.takeCalls(),
                 list({"aPIC.StopSweep(2)", "aPIC.SendFrequency(A, 1000000)", "aPIC.ClosePort()"}));
        // A server that has exited is not restarted.
        pic.server.kill(1'000);
        pic.driver.shutDown();
        QVERIFY(pic.control.takeCalls().isEmpty());
    }

    void aFailingCallIsARunTimeError()
    {
        Bench<LptDriver> bench;
        bench.driver.startUp();
        bench.control.setRules({QStringLiteral("fail SetSpeed")});
        QVERIFY(throwsDriverCall([&] { bench.driver.setSpeed(1); }));
        QVERIFY(bench.server.isConnected());
    }

    void aServerThatDiesEndsTheSweepAndComesBack()
    {
        Bench<LptDriver> bench;
        bench.driver.startUp();
        bench.driver.startSweep();
        bench.control.takeCalls();
        bench.server.kill(1'000);
        QTRY_COMPARE(bench.completed.count(), 1);
        QCOMPARE(bench.errors.count(), 1);
        QVERIFY(!bench.server.isConnected());
        bench.driver.sweepCompleted();
        bench.driver.stopSweep(2);
        QVERIFY(bench.control.takeCalls().isEmpty());
        // The next sweep starts a new server and configures it as at start-up.
        bench.driver.startSweep();
        const QStringList calls = bench.control.takeCalls();
        QCOMPARE(calls.size(), 12);
        QCOMPARE(calls.first(), QStringLiteral("aLPT.OpenPort(0)"));
        QCOMPARE(calls.last(), QStringLiteral("aLPT.RunSweep()"));
        QCOMPARE(bench.ready.count(), 2);
    }

    void aServerThatDiesWhileIdleIsNotReported()
    {
        Bench<LptDriver> bench;
        bench.driver.startUp();
        // kill() detects the exit; processEvents() delivers any events that the exit caused.
        bench.server.kill(1'000);
        QCoreApplication::processEvents();
        QCOMPARE(bench.errors.count(), 0);
        QCOMPARE(bench.completed.count(), 0);
        bench.driver.setSpeed(2);
        QVERIFY(bench.server.isConnected());
    }

    void aHungServerIsEndedByTheTimeOut()
    {
        Bench<LptDriver> bench;
        bench.driver.startUp();
        bench.driver.startSweep();
        bench.control.setRules({QStringLiteral("hang StopSweep")});
        QVERIFY(throwsDriverCall([&] { bench.driver.stopSweep(2); }, RuntimeError::Kind::NoAnswer));
        QVERIFY(!bench.server.isConnected());
        QTRY_COMPARE(bench.completed.count(), 1);
        // The failed call has already reported the error.
        QCOMPARE(bench.errors.count(), 0);
    }

    void aServerThatDiesInsideACall()
    {
        Bench<LptDriver> bench;
        bench.driver.startUp();
        bench.control.setRules({QStringLiteral("die RunSweep")});
        QVERIFY(throwsDriverCall([&] { bench.driver.startSweep(); }));
        QTRY_VERIFY(!bench.server.isConnected());
        // The failed call has already reported the error.
        QCOMPARE(bench.errors.count(), 0);
        bench.control.setRules({});
        QVERIFY(bench.driver.startSweep());
    }

    void aMissingServerIsAnError()
    {
        ServerProcess server(QStringLiteral("/nonexistent/CalvornAsync"));
        QVERIFY(throwsDriverCall([&] { server.connectToServer(); }));
        QVERIFY(!server.isConnected());
    }
};

QTEST_GUILESS_MAIN(TestDrivers)
#include "test_drivers.moc"
