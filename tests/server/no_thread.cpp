// SPDX-License-Identifier: MIT
// Tests the server when no new thread can be started: an operation that needs a thread fails with an error message,
// leaks nothing, and succeeds once threads are available again.
#include "server/drivers/pic_driver.h"
#include "server/drivers/serial_opener.h"
#include "server/drivers/vna_driver.h"
#include "server/links/byte_link.h"
#include "tests/server/lpt_bench.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <pthread.h>

using namespace calvorn;

namespace {

const QString kLine = QStringLiteral("115200,N,8,1");
const QString kNoThread =
    QStringLiteral("The computer cannot start another thread; close other programs and try again.");

// While an instance exists, the default thread stack exceeds the address space, so no thread can start.
class NoThreads
{
public:
    NoThreads()
    {
        pthread_attr_t attributes;
        if (pthread_getattr_default_np(&attributes) != 0 || pthread_attr_getstacksize(&attributes, &m_before) != 0)
            qFatal("cannot read the stack size");
        pthread_attr_destroy(&attributes);
        setStack(std::size_t{1} << 60);
    }
    ~NoThreads() { setStack(m_before); }
    NoThreads(const NoThreads &) = delete;
    NoThreads &operator=(const NoThreads &) = delete;

private:
    static void setStack(std::size_t bytes)
    {
        pthread_attr_t attributes;
        pthread_attr_init(&attributes);
        if (pthread_attr_setstacksize(&attributes, bytes) != 0 || pthread_setattr_default_np(&attributes) != 0)
            qFatal("cannot set the stack size");
        pthread_attr_destroy(&attributes);
    }

    std::size_t m_before = 0;
};

int openDescriptors()
{
    return static_cast<int>(
        QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).size());
}

} // namespace

class NoThreadTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void sweepOfTheParallelPort();
    void simulatedBoardOnASerialPort_data();
    void simulatedBoardOnASerialPort();
    void sweepThatHasToOpenItsPort();

private:
    QTemporaryDir m_folder;
    QString m_settings;
};

void NoThreadTest::init()
{
    m_settings = m_folder.filePath(QStringLiteral("Calvorn.ini"));
    QFile file(m_settings);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("[Simulator]\r\nPace=none\r\nClock=400000000\r\n") > 0);
}

void NoThreadTest::sweepOfTheParallelPort()
{
    LptBench bench;
    bench.takeVectors();
    QVERIFY(bench.driver.OpenPort(0));
    {
        const NoThreads none;
        bench.driver.RunSweep();
    }
    QCOMPARE(bench.errors.count(), 1);
    QCOMPARE(bench.errorCode(0), 3);
    QCOMPARE(bench.errors.at(0).at(1).toString(), kNoThread);
    QCOMPARE(bench.completes.count(), 1);
    QVERIFY(bench.driver.IsWorking());
    bench.driver.StopSweep(2); // no sweep is running
    QCOMPARE(bench.errors.count(), 2);
    QCOMPARE(bench.errorCode(1), 4);
    bench.driver.SetFrequency(7'000'000);
    QVERIFY(bench.driver.ReadDetector() > 0);

    bench.driver.RunSweep();
    QTRY_VERIFY(bench.vectors.count() >= 3);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 2);
    QCOMPARE(bench.errors.count(), 2);
}

void NoThreadTest::simulatedBoardOnASerialPort_data()
{
    QTest::addColumn<bool>("isPic");
    QTest::newRow("PIC") << true;
    QTest::newRow("MiniVNA") << false;
}

void NoThreadTest::simulatedBoardOnASerialPort()
{
    QFETCH(bool, isPic);
    SerialOpener opener(m_settings);
    PicDriver pic([&opener](int port, const LineSettings &line) { return opener.openPic(port, line); },
                  [] {
                      return PicSettings{{DdsChip::Ad9850, 400e6, 1}};
                  });
    VnaDriver vna([&opener](int port, const LineSettings &line) { return opener.openVna(port, line); });
    SerialDriver &driver = isPic ? static_cast<SerialDriver &>(pic) : vna;
    QSignalSpy errors(&driver, &SerialDriver::aErrore);
    const int before = openDescriptors();
    for (int attempt = 1; attempt <= 3; ++attempt) {
        const NoThreads none;
        QVERIFY(!driver.OpenPort(100, kLine));
        QCOMPARE(errors.count(), attempt);
        QCOMPARE(errors.last().at(0).toInt(), 2);
        QCOMPARE(errors.last().at(1).toString(), kNoThread);
    }
    QCOMPARE(openDescriptors(), before);
    QVERIFY(driver.OpenPort(100, kLine));
    if (isPic)
        QVERIFY(pic.SendFrequency(QStringLiteral("A"), 7'000'000));
    driver.ClosePort();
    QCOMPARE(errors.count(), 3);
}

void NoThreadTest::sweepThatHasToOpenItsPort()
{
    SerialOpener opener(m_settings);
    VnaDriver vna([&opener](int port, const LineSettings &line) { return opener.openVna(port, line); });
    vna.SetXtalFrequency(400e6);
    QSignalSpy errors(&vna, &VnaDriver::aErrore);
    QSignalSpy completes(&vna, &VnaDriver::aComplete);
    QSignalSpy vectors(&vna, &VnaDriver::aVettore);
    {
        const NoThreads none;
        QVERIFY(!vna.OpenPort(100, kLine));
        vna.PrepareSweep(1'000'000, 1'000, 400);
        vna.RunSweep();
    }
    QCOMPARE(completes.count(), 1);
    QCOMPARE(errors.count(), 2);
    QCOMPARE(errors.last().at(0).toInt(), 2);
    QCOMPARE(errors.last().at(1).toString(), kNoThread);
    vna.RunSweep();
    QTRY_VERIFY(!vectors.isEmpty());
    QCOMPARE(completes.count(), 1);
    QCOMPARE(errors.count(), 2);
}

QTEST_GUILESS_MAIN(NoThreadTest)
#include "no_thread.moc"
