// SPDX-License-Identifier: MIT
// Tests the MiniVNA at COM100 from end to end: driver, serial port, pseudo-terminal and simulated instrument, with the
// faults that can be set in [Simulator].
#include "server/drivers/serial_opener.h"
#include "server/drivers/vna_driver.h"
#include "server/links/byte_link.h"
#include "tests/server/error_count.h"
#include "tests/support/quiet_time.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <ctime>

using namespace calvorn;

namespace {

// Creates the driver as the server does, with a temporary settings file.
struct Bench
{
    explicit Bench(const QByteArray &simulator)
    {
        QFile settings(path());
        if (!settings.open(QIODevice::WriteOnly))
            qFatal("cannot write the settings");
        settings.write("[Config]\r\nDDS Xtal freq=20000000\r\nDDS Multiplier=20\r\n[Simulator]\r\n" + simulator);
        settings.close();
        QObject::connect(
            &driver, &VnaDriver::aVettore, &driver, [this] { driver.VectorsTaken(1); }, Qt::QueuedConnection);
    }

    QString path() const { return folder.filePath(QStringLiteral("Calvorn.ini")); }

    // Makes the same calls as the program at start-up.
    bool open()
    {
        const bool opened = driver.OpenPort(100, QStringLiteral("115200,N,8,1"));
        driver.SetXtalFrequency(20e6);
        driver.SetMultiplier(20);
        driver.SetOffset(0.0);
        driver.SetMode(3);
        driver.SetFrequency(8'965'750);
        return opened;
    }

    void start()
    {
        driver.SetMode(3);
        driver.PrepareSweep(8'965'750, 250, 400);
        driver.RunSweep();
    }

    // Returns whether the crystal's resonance is in row 137 of the vector.
    bool isRight(qsizetype index)
    {
        const QList<int> samples = vectors.at(index).at(0).value<QList<int>>();
        return samples.size() == 400 && std::min_element(samples.begin(), samples.end()) - samples.begin() == 137;
    }

    int errorsWith(int wanted) const { return errorsWithCode(errors, wanted); }

    QTemporaryDir folder;
    SerialOpener opener{path()};
    int arrivals = 0; // bytesArrived() signals
    VnaDriver driver{[this](int port, const LineSettings &line) {
        auto link = opener.openVna(port, line);
        QObject::connect(link.get(), &ByteLink::bytesArrived, &driver, [this] { ++arrivals; });
        return link;
    }};
    QSignalSpy vectors{&driver, &VnaDriver::aVettore};
    QSignalSpy errors{&driver, &VnaDriver::aErrore};
    QSignalSpy completes{&driver, &VnaDriver::aComplete};
};

} // namespace

class VnaSimulatedPortTest : public QObject
{
    Q_OBJECT

private slots:
    void clockOfTheBoard();
    void portsThatCannotBeOpened();
    void twoHundredSweeps();
    void neverFasterThanTheLine();
    void idleCostsNothing();
    void endsByItself_data();
    void endsByItself();
    void garbage();
    void chatter();
    void corruptedBytes();
    void unplugged();
};

void VnaSimulatedPortTest::clockOfTheBoard()
{
    QCOMPARE(readSerialSimulatorSettings(Bench("").path()).clockHz, 400e6);
    QCOMPARE(readSerialSimulatorSettings(Bench("Clock=399000000\r\n").path()).clockHz, 399e6);
}

void VnaSimulatedPortTest::portsThatCannotBeOpened()
{
    Bench bench("");
    QVERIFY(!bench.driver.OpenPort(99, QStringLiteral("115200,N,8,1")));
    QVERIFY(!bench.driver.OpenPort(100, QStringLiteral("fast")));
    QCOMPARE(bench.errors.count(), 2);
    QCOMPARE(bench.errorsWith(code::kPort), 2);
    QVERIFY(bench.open());
    QVERIFY(bench.open());
}

void VnaSimulatedPortTest::twoHundredSweeps()
{
    Bench bench("Device=crystal\r\nPace=none\r\n");
    QVERIFY(bench.open());
    bench.start();
    QTRY_VERIFY_WITH_TIMEOUT(bench.vectors.count() >= 200, 30'000);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.errors.count(), 0);
    for (qsizetype index = 0; index < bench.vectors.count(); ++index)
        QVERIFY(bench.isRight(index));
}

// Checks an upper limit only: a slow machine may sweep more slowly than the real line allows.
void VnaSimulatedPortTest::neverFasterThanTheLine()
{
    constexpr int kSweeps = 14;
    Bench bench("Device=crystal\r\n");
    QVERIFY(bench.open());
    QElapsedTimer clock;
    clock.start();
    bench.start();
    QTRY_VERIFY_WITH_TIMEOUT(bench.vectors.count() >= kSweeps, 30'000);
    const double seconds = 1e-9 * static_cast<double>(clock.nsecsElapsed());
    QVERIFY(static_cast<double>(bench.vectors.count()) / seconds <= 11'520.0 / (1'600 + 22));
    QCOMPARE(bench.errors.count(), 0);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
}

void VnaSimulatedPortTest::idleCostsNothing()
{
    Bench bench("Device=crystal\r\n");
    QVERIFY(bench.open());
    QTRY_VERIFY(bench.arrivals >= 1); // the answer to SetFrequency() in open()
    const std::clock_t before = std::clock();
    test::nothingHappensFor(1'000);
    const double seconds = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
    QVERIFY2(seconds < 0.05, qPrintable(QString::number(seconds)));
}

void VnaSimulatedPortTest::endsByItself_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<int>("mostVectors");
    QTest::newRow("drop") << QByteArray("drop") << 0;
    QTest::newRow("add") << QByteArray("add") << 0;
    QTest::newRow("refuse") << QByteArray("refuse") << 0;
    QTest::newRow("silence") << QByteArray("silence") << 2;
    QTest::newRow("half") << QByteArray("half") << 1;
}

void VnaSimulatedPortTest::endsByItself()
{
    QFETCH(QByteArray, fault);
    QFETCH(int, mostVectors);
    Bench bench("Device=crystal\r\nFault=" + fault + "\r\n");
    QVERIFY(bench.open());
    bench.start();
    QTRY_COMPARE_WITH_TIMEOUT(bench.completes.count(), 1, 15'000);
    QVERIFY(bench.vectors.count() <= mostVectors);
    for (qsizetype index = 0; index < bench.vectors.count(); ++index)
        QVERIFY(bench.isRight(index));
    QCOMPARE(bench.errorsWith(code::kTransfer), 3);
    QVERIFY(bench.errorsWith(code::kBoard) >= 1);
    bench.driver.StopSweep(2);
    bench.driver.ClosePort();
    QCOMPARE(bench.completes.count(), 1);
}

void VnaSimulatedPortTest::garbage()
{
    Bench bench("Device=crystal\r\nFault=garbage\r\n");
    QVERIFY(bench.open());
    bench.start();
    QTRY_VERIFY_WITH_TIMEOUT(bench.vectors.count() >= 3, 10'000);
    QCOMPARE(bench.completes.count(), 0);
    for (qsizetype index = 0; index < bench.vectors.count(); ++index)
        QVERIFY(bench.isRight(index));
}

void VnaSimulatedPortTest::chatter()
{
    Bench bench("Device=crystal\r\nFault=chatter\r\n");
    QVERIFY(bench.open());
    QTRY_VERIFY(bench.arrivals >= 3);
    bench.start();
    QTRY_VERIFY_WITH_TIMEOUT(bench.vectors.count() >= 3, 15'000);
    for (qsizetype index = 0; index < bench.vectors.count(); ++index)
        QVERIFY(bench.isRight(index));
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
}

// The protocol cannot reveal a flipped bit in a count, so values may be wrong; their number must be correct.
void VnaSimulatedPortTest::corruptedBytes()
{
    Bench bench("Device=crystal\r\nFault=corrupt\r\n");
    QVERIFY(bench.open());
    bench.start();
    // After three damaged sweeps in a row, the driver stops sweeping.
    const auto sweeps = [&bench] { return bench.vectors.count() + bench.errorsWith(code::kTransfer); };
    QTRY_VERIFY_WITH_TIMEOUT(!bench.completes.isEmpty() || sweeps() >= 8, 15'000);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
    QVERIFY(!bench.vectors.isEmpty());
    for (qsizetype index = 0; index < bench.vectors.count(); ++index) {
        const QList<int> samples = bench.vectors.at(index).at(0).value<QList<int>>();
        QCOMPARE(samples.size(), 400);
        for (const int count : samples)
            QVERIFY(count >= 0 && count <= 1023);
    }
}

void VnaSimulatedPortTest::unplugged()
{
    Bench bench("Device=crystal\r\nFault=unplug\r\n");
    QVERIFY(bench.open());
    bench.start();
    QTRY_COMPARE_WITH_TIMEOUT(bench.completes.count(), 1, 10'000);
    QCOMPARE(bench.errorsWith(code::kPort), 1);
    test::nothingHappensFor(200);
    QCOMPARE(bench.errors.count(), 1);
    QCOMPARE(bench.completes.count(), 1);
    const auto before = bench.vectors.count();
    bench.start();
    QTRY_VERIFY_WITH_TIMEOUT(bench.vectors.count() > before, 5'000);
}

QTEST_GUILESS_MAIN(VnaSimulatedPortTest)
#include "vna_simulated_port.moc"
