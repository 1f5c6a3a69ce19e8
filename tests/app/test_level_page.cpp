// SPDX-License-Identifier: MIT
// Operates the level meter and generator on the last page of the Measure panel, as a user would, on the three
// simulated boards.
#include "tests/support/interface_rows.h"
#include "tests/support/interface_settings.h"
#include "tests/support/quiet_time.h"
#include "tests/support/settings_page.h"
#include "tests/support/window_bench.h"

#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QProgressBar>
#include <QTabWidget>

#include <cmath>

using namespace calvorn;

namespace {

// A logarithmic detector (25 mV per dB) that measures this level through a piece of cable. One count is 0.1 dB.
QByteArray logSettings(int interfaceType, double dBm)
{
    const test::ProgramFolder scratch({}, test::crystalSettings(static_cast<std::int16_t>(interfaceType)));
    scratch.set("Config", "ADC Step", QString::number(2.5 / 1024.0, 'g', 17));
    scratch.set("Config", "ADC Offset", QStringLiteral("0"));
    scratch.set("Config", "ADC Law", QStringLiteral("log"));
    scratch.set("Simulator", "Device", QStringLiteral("through"));
    scratch.set("Simulator", "Detector", QStringLiteral("log"));
    scratch.set("Simulator", "Level", QString::number(dBm));
    QFile file(scratch.iniPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

struct Bench : test::WindowBench
{
    explicit Bench(int interfaceType, double dBm = -20.0)
        : WindowBench(test::ProgramFolder::builtFile(QStringLiteral("CalvornAsync")), logSettings(interfaceType, dBm))
    {
    }

    void openPage() const
    {
        QTest::keyClick(window.get(), Qt::Key_M, Qt::ControlModifier);
        find<QTabWidget>("tabMeasure")->setCurrentIndex(3);
    }

    // Returns the displayed level in dBm, or NaN if none is shown.
    double level() const
    {
        const QString text = label("lblLevel");
        bool isNumber = false;
        const double value = text.section(u' ', 0, 0).toDouble(&isNumber);
        return isNumber && text.endsWith(QLatin1String(" dBm")) ? value : std::nan("");
    }
    bool reads(double dBm, double off = 0.15) const
    {
        return QTest::qWaitFor([&] { return std::abs(level() - dBm) <= off; }, 5'000);
    }
};

} // namespace

class TestLevelPage : public QObject
{
    Q_OBJECT

private slots:
    void theLevelIsRead_data() { test::addInterfaceRows(); }
    void theLevelIsRead();
    void aSweepComesFirst_data() { test::addInterfaceRows(); }
    void aSweepComesFirst();
    void holdZeroAndAttenuator();
    void warnings();
    void theGenerator_data() { test::addInterfaceRows(); }
    void theGenerator();
    void memoriesAndStepsAreKept();
    void theLimitsHold();
    void whatIsNotChangedIsNotWritten();
    void aDialogHasTheHardware();
    void theSettingsAreExplained();
    void nothingRunsWhileItIsClosed_data() { test::addInterfaceRows(); }
    void nothingRunsWhileItIsClosed();
};

void TestLevelPage::theLevelIsRead()
{
    QFETCH(int, interfaceType);
    Bench bench(interfaceType);
    QVERIFY(bench.started);
    bench.openPage();
    // On the parallel port the generator is at the start frequency; on the other boards the meter sweeps around its
    // own frequency.
    QVERIFY2(bench.reads(-20.0), qPrintable(bench.label("lblLevel")));
    QCOMPARE(bench.label("lblLevelWarning"), QString());
    // The level stays within one count (0.1 dB); the display has one decimal.
    test::nothingHappensFor(1'000);
    for (int look = 0; look < 20; ++look) {
        test::nothingHappensFor(100);
        QVERIFY2(std::abs(bench.level() + 20.0) < 0.15, qPrintable(bench.label("lblLevel")));
    }
    // -20 dBm is 22.4 mV and 10 µW.
    QVERIFY2(bench.label("lblLevelVolts").endsWith(QLatin1String(" mV")), qPrintable(bench.label("lblLevelVolts")));
    QVERIFY(std::abs(bench.label("lblLevelVolts").section(u' ', 0, 0).toDouble() - 22.36) < 0.6);
    QVERIFY2(bench.label("lblLevelWatts").endsWith(QStringLiteral(" µW")), qPrintable(bench.label("lblLevelWatts")));
    QVERIFY(std::abs(bench.find<QProgressBar>("barLevel")->value() + 200) <= 3);
    // The three small read-outs are equally wide.
    const int width = bench.find<QLabel>("lblLevelVolts")->width();
    for (const char *name : {"lblLevelWatts", "lblLevelRelative"})
        QVERIFY(std::abs(bench.find<QLabel>(name)->width() - width) <= 1);
    // Readings are not stored in the table.
    QVERIFY(!bench.table()->hasSweep());
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestLevelPage::aSweepComesFirst()
{
    QFETCH(int, interfaceType);
    Bench bench(interfaceType);
    bench.openPage();
    QVERIFY(bench.reads(-20.0));
    QSignalSpy stored(&bench.station->instrument.conversion(), &SampleConversion::vectorStored);
    bench.click("cmdStart");
    QVERIFY(QTest::qWaitFor([&] { return stored.count() >= 3; }, 10'000));
    QVERIFY(
        QTest::qWaitFor([&] { return bench.label("lblLevelWarning").contains(QLatin1String("sweep is running")); }));
    QCOMPARE(bench.table()->axis()->start, 8'950'000);
    QCOMPARE(bench.table()->frequency(1), 8'950'000);
    bench.click("cmdStop");
    QVERIFY(QTest::qWaitFor([&] { return !bench.station->instrument.isSweeping(); }, 5'000));
    QVERIFY(QTest::qWaitFor([&] { return bench.label("lblLevelWarning").isEmpty(); }, 5'000));
    QVERIFY(bench.reads(-20.0));
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestLevelPage::holdZeroAndAttenuator()
{
    Bench bench(kInterfaceLpt);
    bench.openPage();
    QVERIFY(bench.reads(-20.0));
    // The zero point is shown immediately, even while the readings are held.
    bench.click("cmdHold");
    bench.click("cmdZero");
    QVERIFY2(bench.label("lblLevelRelative").endsWith(QLatin1String(" dB")),
             qPrintable(bench.label("lblLevelRelative")));
    bench.click("cmdHold");
    bench.find<QDoubleSpinBox>("spinAttenuator")->setValue(30.0);
    QVERIFY(bench.reads(10.0));
    QVERIFY(std::abs(bench.label("lblLevelRelative").section(u' ', 0, 0).toDouble() - 30.0) < 0.4);
    bench.click("cmdHold");
    bench.find<QDoubleSpinBox>("spinAttenuator")->setValue(0.0);
    test::nothingHappensFor(500);
    QVERIFY(std::abs(bench.level() - 10.0) <= 0.2);
    bench.click("cmdHold");
    QVERIFY(bench.reads(-20.0));
    // The extremes include both levels.
    QVERIFY2(bench.label("lblLevelExtremes").contains(QLatin1String("-20.")) ||
                 bench.label("lblLevelExtremes").contains(QLatin1String("-19.")),
             qPrintable(bench.label("lblLevelExtremes")));
    bench.click("cmdExtremes");
    QVERIFY(QTest::qWaitFor([&] { return !bench.label("lblLevelExtremes").contains(QLatin1String("10.")); }));
}

void TestLevelPage::warnings()
{
    {
        Bench low(kInterfaceLpt, -100.0);
        low.openPage();
        QVERIFY(QTest::qWaitFor([&] { return low.label("lblLevelWarning").contains(QLatin1String("floor")); }, 5'000));
    }
    Bench high(kInterfaceLpt, 40.0);
    high.openPage();
    QVERIFY(
        QTest::qWaitFor([&] { return high.label("lblLevelWarning").contains(QLatin1String("full scale")); }, 5'000));
}

void TestLevelPage::theGenerator()
{
    QFETCH(int, interfaceType);
    Bench bench(interfaceType);
    bench.openPage();
    QVERIFY(bench.label("lblGenerator").contains(QLatin1String("not in use as a signal source")));
    bench.type("txtGenerator", QStringLiteral("5000000"));
    bench.click("cmdGenerator");
    QCOMPARE(bench.label("lblGenerator"), QStringLiteral("The generator is on."));
    if (interfaceType == kInterfaceLpt)
        QVERIFY(bench.reads(-20.0));
    bench.click("cmdGeneratorUp");
    QCOMPARE(bench.text("txtGenerator"), QStringLiteral("5,001,000"));
    bench.click("cmdGeneratorDown");
    bench.click("cmdGeneratorDown");
    QCOMPARE(bench.text("txtGenerator"), QStringLiteral("4,999,000"));
    // A sweep takes over the generator, which cannot be switched on until the sweep ends.
    bench.click("cmdStart");
    QVERIFY(QTest::qWaitFor([&] { return bench.station->instrument.isSweeping(); }));
    QVERIFY(bench.label("lblGenerator").contains(QLatin1String("not in use as a signal source")));
    bench.click("cmdGenerator");
    QVERIFY2(bench.label("lblGenerator").contains(QLatin1String("stop it first")),
             qPrintable(bench.label("lblGenerator")));
    bench.click("cmdStop");
    QVERIFY(QTest::qWaitFor([&] { return !bench.station->instrument.isSweeping(); }, 5'000));
    bench.click("cmdGenerator");
    QCOMPARE(bench.label("lblGenerator"), QStringLiteral("The generator is on."));
    bench.click("cmdGenerator");
    QCOMPARE(bench.label("lblGenerator"), QStringLiteral("The generator is off."));
    // The meter works again.
    QVERIFY(bench.reads(-20.0));
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestLevelPage::memoriesAndStepsAreKept()
{
    Bench bench(kInterfaceLpt);
    bench.openPage();
    bench.type("txtGenerator", QStringLiteral("14060000"));
    bench.type("txtGeneratorStep", QStringLiteral("500"));
    auto *memory = bench.find<QComboBox>("cboMemory");
    QCOMPARE(memory->count(), 10);
    memory->setCurrentIndex(2);
    memory->setEditText(QStringLiteral("QRP 20 m"));
    bench.click("cmdMemory");
    QCOMPARE(memory->itemText(2), QStringLiteral("QRP 20 m"));
    bench.type("txtGenerator", QStringLiteral("7000000"));
    bench.window->close();
    bench.open();
    QTest::keyClick(bench.window.get(), Qt::Key_M, Qt::ControlModifier);
    if (!bench.find<QTabWidget>("tabMeasure")->isVisible())
        QTest::keyClick(bench.window.get(), Qt::Key_M, Qt::ControlModifier);
    memory = bench.find<QComboBox>("cboMemory");
    QCOMPARE(memory->itemText(2), QStringLiteral("QRP 20 m"));
    QCOMPARE(bench.text("txtGeneratorStep"), QStringLiteral("500"));
    QCOMPARE(bench.text("txtGenerator"), QStringLiteral("7,000,000"));
    memory->setCurrentIndex(2);
    emit memory->activated(2);
    QCOMPARE(bench.text("txtGenerator"), QStringLiteral("14,060,000"));
}

void TestLevelPage::theLimitsHold()
{
    Bench bench(kInterfaceLpt);
    bench.window->close();
    bench.folder.set("Generator", "Frequency", QStringLiteral("2000000000"));
    bench.open();
    bench.openPage();
    QCOMPARE(bench.text("txtGenerator"), QStringLiteral("70,000,000"));
    // The new limits take effect when the dialog closes.
    bench.configuration.ddsMaxFreq /= 2;
    QDialog dialog(bench.window.get());
    dialog.open();
    dialog.reject();
    QCOMPARE(bench.text("txtGenerator"), QStringLiteral("35,000,000"));
}

void TestLevelPage::whatIsNotChangedIsNotWritten()
{
    Bench bench(kInterfaceLpt);
    bench.window->close();
    // The boxes show 12.3 dB and a frequency within the limits.
    bench.folder.set("Level", "Attenuator", QStringLiteral("12.3456"));
    bench.folder.set("Generator", "Frequency", QStringLiteral("2000000000"));
    bench.folder.set("Generator", "Step", QStringLiteral("0"));
    bench.open();
    bench.openPage();
    bench.window->close();
    QCOMPARE(bench.folder.setting("Level", "Attenuator"), QStringLiteral("12.3456"));
    QCOMPARE(bench.folder.setting("Generator", "Frequency"), QStringLiteral("2000000000"));
    QCOMPARE(bench.folder.setting("Generator", "Step"), QStringLiteral("0"));
    bench.open();
    bench.openPage();
    bench.type("txtGeneratorStep", QStringLiteral("250"));
    bench.window->close();
    QCOMPARE(bench.folder.setting("Generator", "Step"), QStringLiteral("250"));
    QCOMPARE(bench.folder.setting("Level", "Attenuator"), QStringLiteral("12.3456"));
    QCOMPARE(bench.folder.setting("Generator", "Frequency"), QStringLiteral("2000000000"));
}

void TestLevelPage::aDialogHasTheHardware()
{
    Bench bench(kInterfacePic);
    bench.openPage();
    QVERIFY(bench.reads(-20.0));
    const auto *reader = bench.window->findChild<LevelReader *>();
    QVERIFY(reader->isRunning());
    QDialog dialog(bench.window.get());
    dialog.open();
    QVERIFY(!reader->isRunning());
    QVERIFY(!bench.driver()->isReading());
    dialog.reject();
    QVERIFY(reader->isRunning());
    // A held reading stays held.
    bench.click("cmdHold");
    QVERIFY(!reader->isRunning());
    dialog.open();
    dialog.reject();
    QVERIFY(!reader->isRunning());
}

void TestLevelPage::theSettingsAreExplained()
{
    const QStringList documented =
        test::keysOfPage(QStringLiteral("Level")) + test::keysOfPage(QStringLiteral("Generator"));
    QCOMPARE(documented, test::keysOf(levelKeys()));
    QCOMPARE(documented.size(), 13);
}

void TestLevelPage::nothingRunsWhileItIsClosed()
{
    QFETCH(int, interfaceType);
    Bench bench(interfaceType);
    bench.openPage();
    QVERIFY(bench.reads(-20.0));
    bench.click("cmdGenerator");
    bench.find<QTabWidget>("tabMeasure")->setCurrentIndex(0);
    auto *level = bench.find<QLabel>("lblLevel");
    level->setText(QStringLiteral("untouched"));
    QSignalSpy taken(bench.driver(), &AcquisitionDriver::readingTaken);
    test::nothingHappensFor(600);
    QCOMPARE(level->text(), QStringLiteral("untouched"));
    QCOMPARE(taken.count(), 0);
    QCOMPARE(bench.find<QLabel>("lblGenerator")->text(), QStringLiteral("The generator is off."));
    bench.find<QTabWidget>("tabMeasure")->setCurrentIndex(3);
    QVERIFY(bench.reads(-20.0));
}

QTEST_MAIN(TestLevelPage)
#include "test_level_page.moc"
