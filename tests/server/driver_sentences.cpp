// SPDX-License-Identifier: MIT
#include "server/drivers/lpt_driver.h"
#include "server/drivers/parallel_opener.h"
#include "server/drivers/pic_driver.h"
#include "server/drivers/serial_opener.h"
#include "server/drivers/vna_driver.h"

#include "server/links/byte_link.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace calvorn;

namespace {

const QString kLine = QStringLiteral("115200,N,8,1");

// The server's three drivers, sharing one settings file.
class Drivers
{
    QTemporaryDir m_folder;
    QString m_path;
    ParallelOpener m_parallel;
    SerialOpener m_serial;

public:
    explicit Drivers(const QByteArray &settings)
        : m_path(m_folder.filePath(QStringLiteral("Calvorn.ini")))
        , m_parallel(m_path)
        , m_serial(m_path)
    {
        QFile file(m_path);
        if (!file.open(QIODevice::WriteOnly) || file.write(settings) != settings.size())
            qFatal("cannot write the settings file of the test");
        const auto keep = [this](short code, const QString &sentence) {
            latestCode = code;
            latestSentence = sentence;
        };
        QObject::connect(&lpt, &LptDriver::aErrore, &lpt, keep);
        QObject::connect(&pic, &PicDriver::aErrore, &pic, keep);
        QObject::connect(&vna, &VnaDriver::aErrore, &vna, keep);
        lpt.SetXtalFrequency(80e6);
        vna.SetXtalFrequency(20e6);
        vna.SetMultiplier(20);
    }

    LptDriver lpt{[this](int address) { return m_parallel.open(address); }};
    PicDriver pic{[this](int port, const LineSettings &line) { return m_serial.openPic(port, line); },
                  [this] { return readPicSettings(m_path); }};
    VnaDriver vna{[this](int port, const LineSettings &line) { return m_serial.openVna(port, line); }};
    int latestCode = 0;
    QString latestSentence;
};

struct Fault
{
    const char *settings;
    int code;
    const char *sentence;
    std::function<void(Drivers &)> cause;
};

const QList<Fault> kFaults = {
    {"", 4, "No sweep is running.", [](Drivers &d) { d.lpt.StopSweep(2); }},
    {"", 6, "Unknown generator chip: AD9999", [](Drivers &d) { d.lpt.SetDdsDevice("AD9999"); }},
    {"", 6, "Unknown detector converter: 12bit", [](Drivers &d) { d.lpt.SetAdcDevice("12bit"); }},
    {"", 6, "Unknown sweep speed: 4", [](Drivers &d) { d.lpt.SetSpeed(4); }},
    {"", 6, "Unknown auxiliary output: 3", [](Drivers &d) { d.lpt.SetAux(1, 3); }},
    {"", 4, "The parallel port is not open.", [](Drivers &d) { d.lpt.ReadDetector(); }},
    {"", 2, "The parallel port is not open.", [](Drivers &d) { d.lpt.RunSweep(); }},
    {"[Simulator]\nFault=refuse\n", 4, "The simulated parallel port is set to refuse.",
     [](Drivers &d) { d.lpt.OpenPort(0); }},
    {"[Simulator]\nFault=refuse\n", 2, "The parallel port is not open. The simulated parallel port is set to refuse.",
     [](Drivers &d) {
         d.lpt.OpenPort(0);
         d.lpt.RunSweep();
     }},
    {"[LPT Wiring]\nAdcOut=D0\n", 4, "[LPT Wiring] AdcOut: D0 is an output of the port.",
     [](Drivers &d) { d.lpt.OpenPort(0); }},
    {"", 5, "The frequency 80000000 Hz cannot be generated with a system clock of 80000000 Hz.",
     [](Drivers &d) { d.lpt.SetFrequency(80'000'000); }},
    {"", 5, "The reference clock of the generator must be at least 1 Hz.",
     [](Drivers &d) {
         d.lpt.SetXtalFrequency(0.0);
         d.lpt.SetFrequency(1);
     }},
    {"", 4, "41000000 Hz is above half the generator's clock: the output is its image.",
     [](Drivers &d) { d.lpt.SetFrequency(41'000'000); }},
    {"", 4, "30000000 Hz is above the generator's useful maximum of 26000000 Hz.",
     [](Drivers &d) { d.lpt.SetFrequency(30'000'000); }},
    {"", 2, "The serial port is not open.", [](Drivers &d) { d.pic.RunSweep(); }},
    {"", 2, "The serial port is not open.", [](Drivers &d) { d.vna.RunSweep(); }},
    {"", 2, "There is no serial port COM77.", [](Drivers &d) { d.pic.OpenPort(77, kLine); }},
    {"", 2, "\"fast\" does not describe a serial line; it should look like 115200,N,8,1.",
     [](Drivers &d) { d.vna.OpenPort(100, "fast"); }},
    {"", 6, "The board does not know the command \"Z\".", [](Drivers &d) { d.pic.SendFrequency("Z", 1); }},
    {"[Simulator]\nPace=none\nChip=AD9851\nClock=180000000\n", 4,
     "The board has an AD9851 with a clock of 180000000 Hz; the settings specify AD9850, 80000000 Hz.",
     [](Drivers &d) {
         d.pic.OpenPort(100, kLine);
         d.pic.SendFrequency("A", 7'000'000);
     }},
    {"[Simulator]\nPace=none\n[Serial Port]\nSettling=5\n", 6, "The board does not support a settling time of 5 µs.",
     [](Drivers &d) {
         d.pic.OpenPort(100, kLine);
         d.pic.PrepareSweep(1'000'000, 1'000);
     }},
    {"[Simulator]\nPace=none\n", 3, "The board did not start the sweep.",
     [](Drivers &d) {
         d.pic.OpenPort(100, kLine);
         d.pic.RunSweep(); // without a plan
     }},
    {"", 6, "Unknown measurement mode: 4", [](Drivers &d) { d.vna.SetMode(4); }},
    {"", 6, "A sweep has 400 samples, not 100.", [](Drivers &d) { d.vna.PrepareSweep(1'000'000, 1'000, 100); }},
    {"[Simulator]\nPace=none\nClock=400000000\n", 4,
     "The MiniVNA is designed for 0.1 to 180 MHz; the frequency is set as requested.",
     [](Drivers &d) {
         d.vna.OpenPort(100, kLine);
         d.vna.SetFrequency(181'000'000);
     }},
    {"[Simulator]\nPace=none\nClock=400000000\n", 5,
     "The sweep up to 400398000 Hz cannot be generated with a system clock of 400000000 Hz.",
     [](Drivers &d) {
         d.vna.OpenPort(100, kLine);
         d.vna.PrepareSweep(399'999'000, 1'000, 400);
         d.vna.RunSweep();
     }},
};

} // namespace

// Causes each driver error and compares its message word for word.
class DriverSentences : public QObject
{
    Q_OBJECT

private slots:
    void theyAreSaid_data();
    void theyAreSaid();
};

void DriverSentences::theyAreSaid_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < kFaults.size(); ++index)
        QTest::addRow("%d: %s", kFaults[index].code, kFaults[index].sentence) << index;
}

void DriverSentences::theyAreSaid()
{
    QFETCH(int, index);
    const Fault &fault = kFaults[index];
    Drivers drivers(fault.settings);
    fault.cause(drivers);
    QCOMPARE(drivers.latestSentence, QString::fromUtf8(fault.sentence));
    QCOMPARE(drivers.latestCode, fault.code);
}

QTEST_GUILESS_MAIN(DriverSentences)
#include "driver_sentences.moc"
