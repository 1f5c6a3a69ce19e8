// SPDX-License-Identifier: MIT
#include "instrument/instrument.h"

#include "core/runtime_error.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/fake_server_control.h"

#include <QSignalSpy>
#include <QTest>

using namespace calvorn;

namespace {

struct Bench
{
    test::FakeServerControl control;
    Configuration configuration;
    test::FakeDesktop desktop; // provides the clock; Instrument shows no message boxes
    Log log{configuration};
    Instrument instrument{configuration, log, desktop, test::FakeServerControl::program(), QString()};

    explicit Bench(std::int16_t interfaceType = kInterfaceLpt)
    {
        configuration.interfaceType = interfaceType;
        configuration.ddsDevice = QStringLiteral("AD9851");
        configuration.adcDevice = QStringLiteral("10bit");
        configuration.ddsMaxFreq = 60000000;
        configuration.adcStep = 0.001F;
        configuration.commPort = 100;
        configuration.serialSettings = QStringLiteral("115200,N,8,1");
        instrument.planRange(1000000, 11000000);
    }

    SweepOutcome take(int count)
    {
        return instrument.takeSweeps(count, [] { return false; });
    }
};

} // namespace

class TestInstrument : public QObject
{
    Q_OBJECT

private slots:
    void aRangeIsPlanned()
    {
        Bench bench;
        QCOMPARE(bench.configuration.stepFreq, 25000);
        QCOMPARE(bench.instrument.table().text(400, 0), QStringLiteral("10,975,000"));
        QVERIFY(bench.instrument.planRange(5000000, 5000100));
        QCOMPARE(bench.configuration.stopFreq, 5000400);
        QCOMPARE(bench.configuration.stepFreq, 1);
        QCOMPARE(bench.instrument.table().frequency(400), 5000399);
        QVERIFY(!bench.instrument.planRange(2000000, 1000000));
        QCOMPARE(bench.configuration.stepFreq, -2500);
    }

    void withoutADriverNothingStarts()
    {
        Bench bench(9);
        QVERIFY(!bench.instrument.makeDriver());
        QVERIFY_THROWS_EXCEPTION(RuntimeError, bench.instrument.connectHardware());
        QVERIFY_THROWS_EXCEPTION(RuntimeError, bench.instrument.startSweep());
        QVERIFY(!bench.instrument.isSweeping());
        bench.instrument.stopSweep();
        bench.instrument.shutDown();
        const SweepOutcome outcome = bench.take(1);
        QCOMPARE(outcome.kind, SweepOutcome::Kind::Failed);
        QVERIFY(!outcome.reason.isEmpty());
    }

    void sweepsUntilItIsStopped()
    {
        Bench bench;
        QVERIFY(bench.instrument.makeDriver());
        bench.instrument.connectHardware();
        QSignalSpy idle(&bench.instrument, &Instrument::becameIdle);
        QVERIFY(bench.instrument.startSweep());
        QCOMPARE(bench.instrument.sweepState(), std::int16_t{4});
        QVERIFY(bench.instrument.isSweeping());
        bench.control.takeCalls();
        bench.instrument.stopSweep();
        QVERIFY(bench.control.takeCalls().contains(QStringLiteral("aLPT.StopSweep(2)")));
        emit bench.instrument.driver()->aComplete();
        QCOMPARE(bench.instrument.sweepState(), std::int16_t{0});
        QVERIFY(idle.count() >= 1);
    }

    void aVectorBecomesTheSweepOfTheTable()
    {
        Bench bench;
        QSignalSpy changed(&bench.instrument.table(), &SweepTable::changed);
        bench.instrument.store(QVector<int>(400, 700));
        QCOMPARE(changed.count(), 1);
        const Sweep &sweep = bench.instrument.table().sweep();
        QCOMPARE(sweep.origin, SweepOrigin::Measured);
        QCOMPARE(sweep.amplitudes[199], 0.7);
        QCOMPARE(sweep.detector->step, 0.001F);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, bench.instrument.store(QVector<int>(399, 700)));
        QCOMPARE(changed.count(), 1);
    }

    void aRefusedPortEndsWithItsReason_data()
    {
        QTest::addColumn<int>("interfaceType");
        QTest::newRow("PIC") << int{kInterfacePic};
        QTest::newRow("parallel port") << int{kInterfaceLpt};
        QTest::newRow("MiniVNA") << int{kInterfaceVna};
    }
    void aRefusedPortEndsWithItsReason()
    {
        QFETCH(int, interfaceType);
        Bench bench(static_cast<std::int16_t>(interfaceType));
        bench.control.setRules({QStringLiteral("refuse OpenPort")});
        QCOMPARE(bench.take(1).kind, SweepOutcome::Kind::PortRefused);
        QVERIFY(!bench.instrument.table().hasSweep());
        QVERIFY(bench.desktop.boxes.isEmpty());
        QCOMPARE(bench.desktop.beeps, 0);
    }

    void aRefusalOfTheBoardIsNoRefusalOfThePort()
    {
        Bench bench(kInterfacePic);
        bench.control.setRules({QStringLiteral("refuse SendFrequency")});
        const SweepOutcome outcome = bench.take(1);
        QCOMPARE(outcome.kind, SweepOutcome::Kind::SetUpRefused);
        QCOMPARE(outcome.reason, QStringLiteral("DDS not initialized"));
    }

    void anInterruptionEndsTheWaiting()
    {
        Bench bench;
        int asked = 0;
        const SweepOutcome outcome = bench.instrument.takeSweeps(1, [&asked] { return ++asked > 3; });
        QCOMPARE(outcome.kind, SweepOutcome::Kind::Interrupted);
        QVERIFY(!bench.instrument.server().isConnected());
    }

    void whatTellsTheInterfacesApart()
    {
        QVERIFY(!interfaceKind(0));
        QVERIFY(!interfaceKind(4));
        Configuration configuration;
        configuration.commPort = 7;
        configuration.lptAddress = 0x378;
        const InterfaceKind *pic = interfaceKind(1);
        const InterfaceKind *lpt = interfaceKind(2);
        const InterfaceKind *vna = interfaceKind(3);
        QCOMPARE(pic->portName(configuration), QStringLiteral("serial port COM7"));
        QCOMPARE(lpt->portName(configuration), QStringLiteral("parallel port 0x378"));
        QCOMPARE(vna->portName(configuration), QStringLiteral("serial port COM7"));
        QVERIFY(lpt->hasSpeeds && lpt->hasOutputs && !pic->hasSpeeds && !pic->hasOutputs && !vna->hasSpeeds);
        QVERIFY(vna->channelIsMode && !pic->channelIsMode && !lpt->channelIsMode);
        QCOMPARE(interfaceKinds().size(), std::size_t{3});
        for (const std::int16_t number : {std::int16_t{1}, std::int16_t{2}, std::int16_t{3}}) {
            Bench bench(number);
            QVERIFY(bench.instrument.makeDriver());
            QCOMPARE(bench.instrument.driver()->kind().number, number);
            QCOMPARE(bench.instrument.driver()->outputs() != nullptr, number == 2);
        }
    }
};

QTEST_GUILESS_MAIN(TestInstrument)
#include "test_instrument.moc"
