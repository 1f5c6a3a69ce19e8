// SPDX-License-Identifier: MIT
// Tests [LPT Wiring]: the parser accepts every pin, inverted or not, and reports the key of an invalid entry, and a
// board with different wiring works.
#include "protocol/lpt_wiring_parser.h"
#include "server/boards/ad985x_model.h"
#include "server/drivers/parallel_opener.h"
#include "tests/server/lpt_bench.h"

#include <QFile>
#include <QHash>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace calvorn;

namespace {

using Section = QHash<QString, QString>;

BoardWiring parse(const Section &section)
{
    QVector<ProfileEntry> entries;
    for (auto entry = section.begin(); entry != section.end(); ++entry)
        entries.append({QString(), entry.key(), entry.value()});
    return parseBoardWiring(entries);
}

QString refusal(const Section &section)
{
    try {
        parse(section);
    } catch (const PortError &error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

LineWiring lineOf(const BoardWiring &wiring, LptLine line)
{
    return wiring.lines[static_cast<std::size_t>(line)];
}

// Every line is on a different pin than in the standard wiring, and some are inverted.
const Section kOtherBoard = {
    {"DdsClock", "D7"},      {"DdsUpdate", "!D6"}, {"DdsData", "SELECTIN"}, {"DdsReset", "!D4"}, {"AdcClock", "D3"},
    {"AdcSelect", "!INIT"},  {"I2cClock", "D1"},   {"I2cData", "!D0"},      {"AuxData", "D2"},   {"AuxClock", "!D5"},
    {"AuxLatch", "!AUTOFD"}, {"AdcOut", "!BUSY"},  {"I2cDataBack", "!PE"},
};

} // namespace

class LptWiringTest : public QObject
{
    Q_OBJECT

private slots:
    void nothingSaidIsTheStandard();
    void pins_data();
    void pins();
    void nonsense_data();
    void nonsense();
    void unconnectedLines();
    void otherBoardWorks();
    void readFromTheSettingsFile();
};

void LptWiringTest::nothingSaidIsTheStandard()
{
    const BoardWiring wiring = parse({});
    QCOMPARE(wiring.loading, DdsLoading::Serial);
    // The table in docs/hardware/lpt-board.md.
    constexpr LineWiring kStandard[] = {
        {LptLine::DdsClock, PortRegister::Data, 0x01, false},
        {LptLine::DdsUpdate, PortRegister::Data, 0x02, false},
        {LptLine::DdsData, PortRegister::Data, 0x04, false},
        {LptLine::DdsReset, PortRegister::Data, 0x08, false},
        {LptLine::AdcClock, PortRegister::Data, 0x10, false},
        {LptLine::AdcSelect, PortRegister::Data, 0x20, false},
        {LptLine::I2cClock, PortRegister::Data, 0x40, false},
        {LptLine::I2cData, PortRegister::Data, 0x80, false},
        {LptLine::AuxData, PortRegister::Control, 0x01, true},
        {LptLine::AuxClock, PortRegister::Control, 0x02, true},
        {LptLine::AuxLatch, PortRegister::Control, 0x04, false},
        {LptLine::AdcOut, PortRegister::Status, 0x40, false},
        {LptLine::I2cDataBack, PortRegister::Status, 0x10, false},
    };
    QCOMPARE(wiring.lines.size(), std::size(kStandard));
    for (const LineWiring &wanted : kStandard) {
        const LineWiring wired = lineOf(wiring, wanted.line);
        QCOMPARE(wired.line, wanted.line);
        QCOMPARE(wired.portRegister, wanted.portRegister);
        QCOMPARE(wired.mask, wanted.mask);
        QCOMPARE(wired.inverted, wanted.inverted);
    }
    QCOMPARE(parse({{"Load", "BYTE"}}).loading, DdsLoading::Bytes);
    QCOMPARE(parse({{"Load", " Serial "}}).loading, DdsLoading::Serial);
}

void LptWiringTest::pins_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("pin");
    QTest::addColumn<int>("portRegister");
    QTest::addColumn<int>("mask");
    QTest::addColumn<bool>("inverted");
    const auto row = [](const char *pin, PortRegister portRegister, int mask, bool inverted) {
        const bool input = portRegister == PortRegister::Status;
        QTest::newRow(pin) << (input ? "AdcOut" : "AuxLatch")
                           << static_cast<int>(input ? LptLine::AdcOut : LptLine::AuxLatch) << QString::fromLatin1(pin)
                           << static_cast<int>(portRegister) << mask << inverted;
    };
    row("STROBE", PortRegister::Control, 1, true);
    row("!STROBE", PortRegister::Control, 1, false);
    row("autofd", PortRegister::Control, 2, true);
    row("INIT", PortRegister::Control, 4, false);
    row("! init", PortRegister::Control, 4, true);
    row("SELECTIN", PortRegister::Control, 8, true);
    row("ERROR", PortRegister::Status, 0x08, false);
    row("PE", PortRegister::Status, 0x20, false);
    row("ACK", PortRegister::Status, 0x40, false);
    row("!ACK", PortRegister::Status, 0x40, true);
    row("BUSY", PortRegister::Status, 0x80, true);
    row("!BUSY", PortRegister::Status, 0x80, false);
    row("SELECT", PortRegister::Status, 0x10, false);
    for (int bit = 0; bit < 8; ++bit)
        row(qPrintable(QStringLiteral("D%1").arg(bit)), PortRegister::Data, 1 << bit, false);
}

void LptWiringTest::pins()
{
    QFETCH(QString, key);
    QFETCH(int, line);
    QFETCH(QString, pin);
    // Connects the other lines to pins that do not conflict with the tested pin.
    Section section = {{"I2cClock", "none"}, {"I2cData", "none"},     {"AuxData", "none"}, {"AuxClock", "none"},
                       {"AuxLatch", "none"}, {"I2cDataBack", "none"}, {"DdsClock", "D0"},  {"DdsUpdate", "D1"}};
    const QStringList spare = {"D2", "D3", "D4", "D5", "D6"};
    const QStringList lines = {"DdsData", "DdsReset", "AdcClock", "AdcSelect"};
    int next = 0;
    for (const QString &other : lines) {
        if (spare.at(next) == pin)
            ++next;
        section.insert(other, spare.at(next++));
    }
    if (pin == QLatin1String("D0"))
        section.insert(QStringLiteral("DdsClock"), QStringLiteral("D7"));
    if (pin == QLatin1String("D1"))
        section.insert(QStringLiteral("DdsUpdate"), QStringLiteral("D7"));
    section.insert(key, pin);

    const LineWiring wired = lineOf(parse(section), static_cast<LptLine>(line));
    QTEST(static_cast<int>(wired.portRegister), "portRegister");
    QTEST(static_cast<int>(wired.mask), "mask");
    QTEST(wired.inverted, "inverted");
}

void LptWiringTest::nonsense_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("load");
    QTest::addColumn<QString>("said");
    QTest::newRow("no pin") << "DdsClock"
                            << "D8"
                            << ""
                            << "[LPT Wiring] DdsClock: there is no pin \"D8\".";
    QTest::newRow("misspelt") << "DdsClok"
                              << "D6"
                              << ""
                              << "[LPT Wiring] DdsClok: unknown line.";
    QTest::newRow("only !") << "DdsClock"
                            << "!"
                            << ""
                            << "[LPT Wiring] DdsClock: there is no pin \"\".";
    QTest::newRow("input pin") << "AuxData"
                               << "ACK"
                               << ""
                               << "[LPT Wiring] AuxData: ACK is an input of the port.";
    QTest::newRow("output pin") << "AdcOut"
                                << "INIT"
                                << ""
                                << "[LPT Wiring] AdcOut: INIT is an output of the port.";
    QTest::newRow("taken") << "AdcClock"
                           << "D0"
                           << ""
                           << "[LPT Wiring] AdcClock: the pin is already used by DdsClock.";
    QTest::newRow("taken input") << "I2cDataBack"
                                 << "!ACK"
                                 << ""
                                 << "[LPT Wiring] I2cDataBack: the pin is already used by AdcOut.";
    QTest::newRow("needed") << "AdcSelect"
                            << "none"
                            << ""
                            << "[LPT Wiring] AdcSelect: this line must be connected.";
    QTest::newRow("load") << "Load"
                          << "word"
                          << "word"
                          << "[LPT Wiring] Load: must be \"serial\" or \"byte\", not \"word\".";
    QTest::newRow("bus") << "AdcSelect"
                         << "D3"
                         << "byte"
                         << "[LPT Wiring] AdcSelect: D0 to D7 are used for the generator's bytes.";
    QTest::newRow("bus, taken") << "AuxClock"
                                << "D0"
                                << "byte"
                                << "[LPT Wiring] AuxClock: the pin is already used by AdcClock.";
}

void LptWiringTest::nonsense()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, load);
    QTEST(refusal({{QStringLiteral("Load"), load}, {key, value}}), "said");
}

void LptWiringTest::unconnectedLines()
{
    const Section section = {{"I2cClock", "none"}, {"I2cData", "None"},  {"I2cDataBack", "none"},
                             {"AuxData", "none"},  {"AuxClock", "none"}, {"AuxLatch", "none"}};
    LptBench bench;
    bench.wiring = parse(section);
    QVERIFY(bench.driver.OpenPort(0));
    const auto before = bench.board->accesses();
    bench.driver.SetAux(0xFF, 1);
    QCOMPARE(bench.board->accesses(), before); // the outputs are not connected
    QVERIFY(!bench.driver.WriteI2c(0x50, 0xA9, 1));
    bench.driver.SetFrequency(7'000'000);
    QVERIFY(std::fabs(bench.board->dds().output().hertz - 7e6) < 0.01);
    QCOMPARE(bench.errors.count(), 0);
}

void LptWiringTest::otherBoardWorks()
{
    LptBench bench;
    bench.settings.device = DeviceKind::Through;
    bench.wiring = parse(kOtherBoard);
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.SetFrequency(7'000'000);
    QVERIFY(std::fabs(bench.board->dds().output().hertz - 7e6) < 0.01);
    const int count = bench.driver.ReadDetector();
    QVERIFY2(count > 384 && count < 424, qPrintable(QString::number(count)));
    bench.driver.SetAux(0xC5, 1);
    bench.driver.SetAux(0x3A, 2);
    QCOMPARE(bench.board->latches().aux1(), std::uint8_t{0xC5});
    QCOMPARE(bench.board->latches().aux2(), std::uint8_t{0x3A});
    QVERIFY(bench.driver.WriteI2c(0x50, 0xAA, 77));
    QCOMPARE(bench.board->pot().wiper(1), std::uint8_t{77});
    QVERIFY(!bench.driver.WriteI2c(0x52, 0xAA, 1));
    QCOMPARE(bench.board->dds().violations(), 0U);
    QCOMPARE(bench.errors.count(), 0);
}

void LptWiringTest::readFromTheSettingsFile()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Calvorn.ini"));
    const auto write = [&path](const QByteArray &text) {
        QFile file(path);
        return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(text) == text.size();
    };
    QVERIFY(write("[Simulator]\nPace=none\n[LPT Wiring]\nDdsClock=!D5\nAdcSelect=D0\n"));
    ParallelOpener opener(path);
    const OpenedPort opened = opener.open(0);
    QCOMPARE(lineOf(opened.wiring, LptLine::DdsClock).mask, std::uint8_t{0x20});
    QVERIFY(lineOf(opened.wiring, LptLine::DdsClock).inverted);

    QVERIFY(write("[LPT Wiring]\nDdsClock=D9\n"));
    LptDriver driver([&opener](int address) { return opener.open(address); });
    QSignalSpy errors(&driver, &LptDriver::aErrore);
    QVERIFY(!driver.OpenPort(0));
    QCOMPARE(errors.count(), 1);
    QCOMPARE(errors.at(0).at(0).toInt(), code::kNoAction);
    QCOMPARE(errors.at(0).at(1).toString(), QStringLiteral("[LPT Wiring] DdsClock: there is no pin \"D9\"."));
}

QTEST_GUILESS_MAIN(LptWiringTest)
#include "lpt_wiring.moc"
