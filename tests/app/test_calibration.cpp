// SPDX-License-Identifier: MIT
#include "instrument/lpt_driver.h"
#include "tests/support/calibration_hands.h"
#include "tests/support/fake_server_control.h"
#include "tests/support/locales.h"
#include "tests/support/quiet_time.h"
#include "tests/support/walk_numbers.h"
#include "tests/support/watched.h"

#include <QElapsedTimer>
#include <QListWidget>
#include <QScrollBar>

#include <cmath>

using namespace calvorn;
using calvorn::test::calibrate;
using calvorn::test::calibrationSettings;
using calvorn::test::kDetector;
using calvorn::test::kGenerator;
using calvorn::test::WindowBench;
using Hands = calvorn::test::CalibrationHands;

namespace {

void fillTable(const WindowBench &bench)
{
    QVector<int> counts;
    for (int i = 0; i < 400; ++i)
        counts.append(i);
    emit bench.driver()->aVettore(counts);
}

} // namespace

class TestCalibration : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

    WindowBench fake(int interfaceType, const QByteArray &more = {}) const
    {
        return {test::FakeServerControl::program(), calibrationSettings(interfaceType, more)};
    }

private slots:
    void init()
    {
        m_server.setRules({});
        m_server.takeCalls();
    }
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void theGeneratorIsSentEveryOffset_data();
    void theGeneratorIsSentEveryOffset();
    void openingParksTheGeneratorEveryTime_data() { theGeneratorIsSentEveryOffset_data(); }
    void openingParksTheGeneratorEveryTime();
    void theNudgeStepsByOneHundredth_data() { test::addLocaleRows(); }
    void theNudgeStepsByOneHundredth();
    void applyTakesTheOffset_data() { test::addLocaleRows(); }
    void applyTakesTheOffset();
    void thePicIsToldNothing();
    void errorsAskInTheWindow();
    void cancellingAnErrorClosesTheWindow();
    void theSimulatedGeneratorFollows_data();
    void theSimulatedGeneratorFollows();
    void theDetectorIsReadThreeTimes();
    void theDetectorOffset();
    void theMiniVnaShowsTheCountOfTheTable();
    void thePicDetectorIsNotRead();
    void aDeadDetectorIsToldOnce();
    void applyRewritesTheTable_data();
    void applyRewritesTheTable();
    void theReadOutFollowsTheVoltage();
    void withoutADriverBothWindowsOpen();
};

void TestCalibration::theGeneratorIsSentEveryOffset_data()
{
    QTest::addColumn<int>("interfaceType");
    QTest::addColumn<QString>("object");
    QTest::newRow("parallel port") << 2 << QStringLiteral("aLPT");
    QTest::newRow("MiniVNA") << 3 << QStringLiteral("aVNA");
}

void TestCalibration::theGeneratorIsSentEveryOffset()
{
    QFETCH(int, interfaceType);
    QFETCH(QString, object);
    const WindowBench bench = fake(interfaceType);
    const auto calls = [&](const QString &offset) {
        return QStringList{object + QStringLiteral(".SetOffset(%1)").arg(offset),
                           object + QStringLiteral(".SetFrequency(1000000)")};
    };
    m_server.takeCalls();
    calibrate(bench, kGenerator, [&](const Hands &hands) {
        QCOMPARE(hands.dialog->objectName(), QStringLiteral("frmCalibraDDS"));
        QCOMPARE(hands.label("Label1").split(u'\n'),
                 (QStringList{"1. Select any start frequency.",
                              "2. Connect the output of the generator to a frequency meter.",
                              "3. Adjust the offset until the meter shows the right start frequency.", "4. Apply"}));
        QCOMPARE(hands.text("txtOffset"), QStringLiteral("1.5"));
        QCOMPARE(m_server.takeCalls(), calls(QStringLiteral("1.5")));
        hands.enter("txtOffset", QStringLiteral("12"));
        QCOMPARE(m_server.takeCalls(), calls(QStringLiteral("1")) + calls(QStringLiteral("12")));
        hands.clickUpper();
        QCOMPARE(m_server.takeCalls(), calls(QStringLiteral("12.01")));
    });
    // Without "Apply", the previous offset is restored.
    QCOMPARE(bench.configuration.ddsOffset, 1.5);
    QCOMPARE(m_server.takeCalls(), calls(QStringLiteral("1.5")));
}

// The box always shows the same offset.
void TestCalibration::openingParksTheGeneratorEveryTime()
{
    QFETCH(int, interfaceType);
    QFETCH(QString, object);
    WindowBench bench = fake(interfaceType);
    for (const int start : {5000000, 5000000, 7000000}) {
        bench.configuration.startFreq = start;
        m_server.takeCalls();
        calibrate(bench, kGenerator, [&](const Hands &hands) {
            QCOMPARE(m_server.takeCalls(), (QStringList{object + QStringLiteral(".SetOffset(1.5)"),
                                                        object + QStringLiteral(".SetFrequency(%1)").arg(start)}));
            QCOMPARE(hands.find<QLineEdit>("txtOffset")->selectedText(), QStringLiteral("1.5"));
        });
    }
}

void TestCalibration::theNudgeStepsByOneHundredth()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    const WindowBench bench = fake(2);
    const auto shown = [&](const char *text) { return test::inLocale(locale, QString::fromLatin1(text)); };
    calibrate(bench, kGenerator, [&](const Hands &hands) {
        QCOMPARE(hands.text("txtOffset"), shown("1.5"));
        QCOMPARE(hands.nudge()->value(), 2);
        hands.clickUpper();
        QCOMPARE(hands.text("txtOffset"), shown("1.51"));
        QCOMPARE(hands.nudge()->value(), 2);
        hands.clickLower();
        hands.clickLower();
        QCOMPARE(hands.text("txtOffset"), shown("1.49"));
        QCOMPARE(hands.nudge()->value(), 2);
        hands.nudge()->setFocus();
        QTest::keyClick(hands.nudge(), Qt::Key_Up);
        QCOMPARE(hands.text("txtOffset"), shown("1.5"));
        // Repeatedly adding hundredths causes no rounding error.
        hands.enter("txtOffset", QStringLiteral("0"));
        for (int i = 0; i < 100; ++i)
            hands.clickUpper();
        QCOMPARE(hands.text("txtOffset"), QStringLiteral("1"));
        for (int i = 0; i < 200; ++i)
            hands.clickLower();
        QCOMPARE(hands.text("txtOffset"), QStringLiteral("-1"));
    });
}

void TestCalibration::applyTakesTheOffset()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    WindowBench bench = fake(2);
    calibrate(bench, kGenerator, [&](const Hands &hands) {
        // The decimal point is accepted in every locale.
        hands.enter("txtOffset", QStringLiteral("2.25"));
        QTest::keyClick(hands.find("txtOffset"), Qt::Key_Home);
        QTest::keyClicks(hands.find<QLineEdit>("txtOffset"), QStringLiteral("-"));
        hands.click("cmdApply");
        QVERIFY(hands.dialog->isVisible());
    });
    QCOMPARE(bench.configuration.ddsOffset, -2.25);
    QCOMPARE(m_server.takeCalls().last(), QStringLiteral("aLPT.SetFrequency(1000000)"));
    QCOMPARE(bench.folder.setting("Config", "DDS Offset"), QStringLiteral("1.5"));
    QVERIFY(bench.window->close());
    QCOMPARE(bench.folder.setting("Config", "DDS Offset"), test::inLocale(locale, QStringLiteral("-2.25")));
}

void TestCalibration::thePicIsToldNothing()
{
    const WindowBench bench = fake(1);
    m_server.takeCalls();
    calibrate(bench, kGenerator, [&](const Hands &hands) {
        hands.enter("txtOffset", QStringLiteral("12"));
        hands.clickUpper();
        hands.click("cmdApply");
    });
    QCOMPARE(bench.configuration.ddsOffset, 12.01);
    QCOMPARE(m_server.takeCalls(), QStringList());
}

void TestCalibration::errorsAskInTheWindow()
{
    WindowBench bench = fake(3, "[Debug]\r\nLog=1\r\n");
    auto *driver = bench.driver();
    calibrate(bench, kGenerator, [&](const Hands &hands) {
        emit driver->aErrore(4, QStringLiteral("Nothing to see."));
        QCOMPARE(bench.desktop.boxes.size(), 0);
        QCOMPARE(bench.text("txtErrori"), QStringLiteral("0"));
        emit driver->aErrore(3, QStringLiteral("The MiniVNA does not answer."));
        QCOMPARE(bench.desktop.boxes.size(), 1);
        QCOMPARE(bench.desktop.boxes[0].title, QStringLiteral("Sweep by Brenik"));
        QCOMPARE(bench.desktop.boxes[0].text, QStringLiteral("The MiniVNA does not answer."));
        QCOMPARE(bench.desktop.boxes[0].icon, BoxIcon::Critical);
        QCOMPARE(bench.desktop.boxes[0].buttons, BoxButtons::OkCancel);
        QVERIFY(hands.dialog->isVisible());
        // The main window still counts transmission errors.
        emit driver->aErrore(1, QStringLiteral("A byte was lost."));
        QCOMPARE(bench.text("txtErrori"), QStringLiteral("1"));
        QCOMPARE(bench.desktop.boxes.size(), 2);
        QCOMPARE(bench.desktop.boxes.takeLast().text, QStringLiteral("A byte was lost."));
    });
    const auto *list = bench.find<QListWidget>("lstLOG");
    QCOMPARE(list->item(list->count() - 2)->text(), QStringLiteral("The MiniVNA does not answer. 3"));
    QCOMPARE(list->item(list->count() - 1)->text(), QStringLiteral("A byte was lost. 1"));
    // Afterwards the main window handles errors again, and only logs those of this interface.
    emit driver->aErrore(3, QStringLiteral("Again."));
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QCOMPARE(list->item(list->count() - 1)->text(), QStringLiteral("3 Again."));
}

void TestCalibration::cancellingAnErrorClosesTheWindow()
{
    WindowBench bench = fake(2);
    auto *driver = bench.driver();
    m_server.takeCalls();
    calibrate(bench, kGenerator, [&](const Hands &hands) {
        bench.desktop.answers.enqueue(kBoxCancel);
        emit driver->aErrore(2, QStringLiteral("The port is gone."));
        QVERIFY(!hands.dialog->isVisible());
    });
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QVERIFY(bench.window->isVisible());
    QCOMPARE(m_server.takeCalls().first(), QStringLiteral("aLPT.SetOffset(1.5)"));
}

void TestCalibration::theSimulatedGeneratorFollows_data()
{
    QTest::addColumn<int>("interfaceType");
    QTest::addColumn<double>("resolution"); // Hz
    QTest::newRow("AD9851 at 180 MHz") << 2 << 180e6 / 4294967296.0;
    QTest::newRow("MiniVNA at 400 MHz") << 3 << 400e6 / 4294967296.0;
}

void TestCalibration::theSimulatedGeneratorFollows()
{
    QFETCH(int, interfaceType);
    QFETCH(double, resolution);
    const test::Watched generator;
    WindowBench bench(test::Watched::program(), calibrationSettings(interfaceType));
    QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
    const auto makes = [&](double hertz) {
        const bool made = QTest::qWaitFor([&] { return std::abs(generator.last() - hertz) <= resolution / 2 + 1e-6; });
        if (!made)
            qWarning("%f Hz instead of %f Hz", generator.last(), hertz);
        return made;
    };
    QVERIFY(makes(1000001.5));
    // Opening the window sets the generator to the start frequency, whatever it was set to before.
    bench.configuration.startFreq = 5000000;
    calibrate(bench, kGenerator, [&](const Hands &) { QVERIFY(makes(5000001.5)); });
    bench.configuration.startFreq = 1000000;
    calibrate(bench, kGenerator, [&](const Hands &hands) {
        QVERIFY(makes(1000001.5));
        hands.enter("txtOffset", QStringLiteral("250"));
        QVERIFY(makes(1000250.0));
        hands.enter("txtOffset", QStringLiteral("33.3"));
        QVERIFY(makes(1000033.3));
        QTest::keyClick(hands.find("txtOffset"), Qt::Key_Home);
        QTest::keyClicks(hands.find<QLineEdit>("txtOffset"), QStringLiteral("-"));
        QVERIFY(makes(999966.7));
    });
    // When closed without "Apply", the window restores the previous offset.
    QVERIFY(makes(1000001.5));
    calibrate(bench, kGenerator, [&](const Hands &hands) {
        hands.enter("txtOffset", QStringLiteral("80"));
        hands.click("cmdApply");
    });
    QVERIFY(makes(1000080.0));
}

void TestCalibration::theDetectorIsReadThreeTimes()
{
    const WindowBench bench = fake(2);
    m_server.takeCalls();
    calibrate(bench, kDetector, [&](const Hands &hands) {
        QCOMPARE(hands.dialog->objectName(), QStringLiteral("frmCalibraADC"));
        QCOMPARE(hands.label("Label1").split(u'\n'),
                 (QStringList{"1. Select 'View/Table' and 'Scale/Linear'.",
                              "2. Connect the input of the detector to a known voltage.",
                              "3. Adjust the offset until the right voltage is presented.",
                              "4. Everytime you 'Apply', table will be updated with the new offset"}));
        QCOMPARE(hands.text("txtOffsetVolt"), QStringLiteral("0.100"));
        // 512 counts x 0.00244 V + 0.1 V
        QTRY_COMPARE(hands.label("lblVolt"), QStringLiteral("1.349"));
        hands.enter("txtOffsetVolt", QStringLiteral("0.2"));
        QTRY_COMPARE(hands.label("lblVolt"), QStringLiteral("1.449"));
    });
    QStringList calls = m_server.takeCalls();
    QCOMPARE(calls.takeFirst(), QStringLiteral("aLPT.SetSpeed(3)"));
    QCOMPARE(calls.takeLast(), QStringLiteral("aLPT.SetSpeed(1)"));
    QVERIFY(calls.size() >= 6 && calls.size() % 3 == 0);
    for (const QString &call : calls)
        QCOMPARE(call, QStringLiteral("aLPT.ReadDetector()"));
    // The timer does not fire after the window has closed.
    test::nothingHappensFor(700);
    QCOMPARE(m_server.takeCalls(), QStringList());
    QCOMPARE(bench.configuration.adcOffset, 0.1F);
}

void TestCalibration::theDetectorOffset()
{
    WindowBench bench = fake(2);
    calibrate(bench, kDetector, [&](const Hands &hands) {
        hands.clickUpper();
        QCOMPARE(hands.text("txtOffsetVolt"), QStringLiteral("0.101"));
        QCOMPARE(hands.nudge()->value(), 2);
        hands.clickLower();
        hands.clickLower();
        QCOMPARE(hands.text("txtOffsetVolt"), QStringLiteral("0.099"));
        hands.enter("txtOffsetVolt", QStringLiteral("x"));
        QCOMPARE(hands.text("txtOffsetVolt"), QStringLiteral("0"));
        hands.clickLower();
        QCOMPARE(hands.text("txtOffsetVolt"), QStringLiteral("-0.001"));
        hands.click("cmdApply");
        QVERIFY(hands.dialog->isVisible());
    });
    QCOMPARE(bench.configuration.adcOffset, -0.001F);
    QVERIFY(bench.window->close());
    QCOMPARE(bench.folder.setting("Config", "ADC Offset"), QStringLiteral("-0.001"));
}

void TestCalibration::theMiniVnaShowsTheCountOfTheTable()
{
    const WindowBench bench = fake(3);
    bench.table()->setText(1, SweepTable::SampleColumn, QStringLiteral("500"));
    m_server.takeCalls();
    calibrate(bench, kDetector, [&](const Hands &hands) {
        // 500 counts x 0.00244 V + 0.1 V: the offset being tried does not change the read-out.
        hands.enter("txtOffsetVolt", QStringLiteral("3"));
        QTRY_COMPARE(hands.label("lblVolt"), QStringLiteral("1.320"));
        hands.click("cmdApply");
        QTRY_COMPARE(hands.label("lblVolt"), QStringLiteral("4.220"));
    });
    const QStringList calls = m_server.takeCalls();
    QVERIFY(!calls.isEmpty());
    for (const QString &call : calls)
        QCOMPARE(call, QStringLiteral("aVNA.SetFrequency(1000000)"));
}

void TestCalibration::thePicDetectorIsNotRead()
{
    const WindowBench bench = fake(1);
    m_server.takeCalls();
    calibrate(bench, kDetector, [&](const Hands &hands) {
        QTRY_VERIFY(!hands.label("lblHint").isEmpty());
        QCOMPARE(hands.label("lblVolt"), QString());
    });
    QCOMPARE(m_server.takeCalls(), QStringList());
}

void TestCalibration::aDeadDetectorIsToldOnce()
{
    m_server.setRules({QStringLiteral("fail ReadDetector")});
    const WindowBench bench = fake(2);
    calibrate(bench, kDetector, [&](const Hands &hands) {
        QTRY_COMPARE(bench.desktop.boxes.size(), 1);
        test::nothingHappensFor(1'000);
        QCOMPARE(bench.desktop.boxes.size(), 1);
        QCOMPARE(hands.label("lblVolt"), QString());
    });
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QVERIFY(bench.window->isVisible());
}

void TestCalibration::applyRewritesTheTable_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<int>("scale");
    for (const int scale : {0, 1, 3}) {
        QTest::addRow("scale %d, point", scale) << QLocale::c() << scale;
        QTest::addRow("scale %d, comma", scale) << QLocale(QLocale::Italian, QLocale::Italy) << scale;
    }
}

void TestCalibration::applyRewritesTheTable()
{
    QFETCH(QLocale, locale);
    QFETCH(int, scale);
    QLocale::setDefault(locale);
    WindowBench bench = fake(2, "Scale=" + QByteArray::number(scale) + "\r\n");
    fillTable(bench);
    const auto *graph = bench.find<SweepGraph>("picSweep");
    QTRY_VERIFY(!graph->curve().isEmpty());
    const QPolygonF curve = graph->curve();
    int redraws = 0;
    connect(bench.table(), &SweepTable::dataChanged, bench.window.get(), [&] { ++redraws; });
    calibrate(bench, kDetector, [&](const Hands &hands) {
        hands.enter("txtOffsetVolt", QStringLiteral("0.012"));
        QTest::keyClick(hands.find("txtOffsetVolt"), Qt::Key_Home);
        QTest::keyClicks(hands.find<QLineEdit>("txtOffsetVolt"), QStringLiteral("-"));
        hands.click("cmdApply");
    });
    QCOMPARE(redraws, 1);
    const double step = static_cast<double>(0.00244F);
    const double offset = static_cast<double>(-0.012F);
    const double reference = scale == 3 ? 10.0 : 1.0;
    for (int row = 1; row <= 400; ++row) {
        const QString cell = bench.table()->text(row, SweepTable::AmplitudeColumn);
        const double volts = (row - 1) * step + offset;
        const double value = test::readNumber(cell);
        QCOMPARE(cell.section(locale.decimalPoint(), 1).size(), scale == 0 ? 3 : 1);
        if (scale == 0)
            QVERIFY2(std::abs(value - volts) <= 0.0005000001, qPrintable(cell));
        else if (volts <= 0)
            QCOMPARE(cell, test::inLocale(locale, QStringLiteral("-100.0")));
        else
            QVERIFY2(std::abs(value - 20 * std::log10(volts / reference)) <= 0.0551, qPrintable(cell));
    }
    QCOMPARE(bench.table()->text(1, SweepTable::SampleColumn), QStringLiteral("0"));
    QVERIFY(!graph->curve().isEmpty() && graph->curve() != curve);
}

// Changing the generator frequency changes the simulated detector's input voltage.
void TestCalibration::theReadOutFollowsTheVoltage()
{
    const WindowBench bench(test::ProgramFolder::builtFile(QStringLiteral("CalvornAsync")),
                            calibrationSettings(2).replace("Device=through", "Device=bandpass"));
    QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
    auto *driver = qobject_cast<LptDriver *>(bench.driver());
    const auto volts = [](const Hands &hands) { return test::readNumber(hands.label("lblVolt")); };
    calibrate(bench, kDetector, [&](const Hands &hands) {
        QTRY_VERIFY(!hands.label("lblVolt").isEmpty());
        // Far outside the passband, only the offset remains.
        QVERIFY(std::abs(volts(hands) - 0.1) < 0.02);
        QElapsedTimer clock;
        clock.start();
        driver->setFrequency(7100000);
        QTRY_VERIFY(volts(hands) > 0.8);
        QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
        clock.restart();
        driver->setFrequency(1000000);
        QTRY_VERIFY(volts(hands) < 0.12);
        QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
    });
}

void TestCalibration::withoutADriverBothWindowsOpen()
{
    const WindowBench bench = fake(7);
    calibrate(bench, kGenerator, [&](const Hands &hands) {
        hands.enter("txtOffset", QStringLiteral("9"));
        hands.click("cmdApply");
    });
    QCOMPARE(bench.configuration.ddsOffset, 9.0);
    calibrate(bench, kDetector, [](const Hands &hands) { hands.click("cmdApply"); });
    QCOMPARE(bench.desktop.boxes.size(), 0);
}

QTEST_MAIN(TestCalibration)
#include "test_calibration.moc"
