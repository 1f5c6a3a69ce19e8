// SPDX-License-Identifier: MIT
// The level calibration on the three simulated boards: computes a detector law from known levels.
#include "core/detector_settings.h"
#include "tests/support/detector_laws.h"
#include "tests/support/interface_rows.h"
#include "tests/support/interface_settings.h"
#include "tests/support/paint_count.h"
#include "tests/support/sweep_tool.h"
#include "tests/support/while_modal.h"
#include "tests/support/window_bench.h"

#include <QDoubleSpinBox>
#include <QPushButton>
#include <QTableWidget>

#include <cmath>

using namespace calvorn;

namespace {

constexpr double kFullDbm = 10.0;   // of the simulated source
constexpr int kStepHertz = 100'000; // so low that the generators lose no amplitude

int hertzOf(int step)
{
    return (step + 2) * kStepHertz;
}

// The simulated device acts as the attenuator: each frequency step adds 5 dB.
QByteArray attenuatorFile()
{
    QByteArray text;
    for (int step = 0; step <= 8; ++step) {
        const double ratio = std::pow(10.0, -5.0 * step / 20.0);
        for (const int side : {-1000, 1000})
            text += QByteArray::number(hertzOf(step) + side) + ',' + QByteArray::number(ratio, 'g', 12) + '\n';
    }
    return text;
}

// As a base class, it creates the folder before the window, whose settings name a file in it.
struct CurveFolder
{
    QTemporaryDir curve;
};

struct Bench : CurveFolder, test::WindowBench
{
    Bench(int interfaceType, const char *detector)
        : WindowBench(test::builtServer(), settings(interfaceType, detector))
    {
    }

    QByteArray settings(int interfaceType, const char *detector)
    {
        QFile file(curve.filePath(QStringLiteral("steps.csv")));
        if (!file.open(QIODevice::WriteOnly) || file.write(attenuatorFile()) < 0)
            qFatal("cannot write the steps");
        const test::ProgramFolder scratch({}, test::crystalSettings(static_cast<std::int16_t>(interfaceType)));
        scratch.set("Config", "ADC Step", QString::number(2.5 / 1024.0, 'g', 17));
        scratch.set("Config", "ADC Offset", QStringLiteral("0"));
        scratch.set("Calvorn", "Scale", QStringLiteral("2"));
        scratch.set("Simulator", "Device", QStringLiteral("curve"));
        scratch.set("Simulator", "Curve", file.fileName());
        scratch.set("Simulator", "Detector", QString::fromLatin1(detector));
        return test::contents(scratch.iniPath());
    }

    void calibrate(const std::function<void(QWidget &)> &hands)
    {
        bool done = false;
        test::whileModal([&](QWidget &dialog) {
            hands(dialog);
            done = true;
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        window->findChild<QAction *>(QStringLiteral("mnuCalibraLevel"))->trigger();
        QVERIFY(done);
    }

    // The generator frequency selects the attenuator step.
    void measure(QWidget &dialog, int step)
    {
        configuration.startFreq = hertzOf(step);
        driver()->generate(configuration.startFreq);
        dialog.findChild<QDoubleSpinBox *>(QStringLiteral("spinKnownLevel"))->setValue(kFullDbm);
        dialog.findChild<QDoubleSpinBox *>(QStringLiteral("spinStep"))->setValue(5.0 * step);
        auto *button = dialog.findChild<QPushButton *>(QStringLiteral("cmdMeasure"));
        auto *list = dialog.findChild<QTableWidget *>(QStringLiteral("lstPoints"));
        const int before = list->rowCount();
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(!button->isEnabled());
        QVERIFY(QTest::qWaitFor([&] { return button->isEnabled(); }, 10'000));
        QCOMPARE(list->rowCount(), before + 1);
    }
};

QString textOf(const QWidget &dialog, const char *name)
{
    return dialog.findChild<QLabel *>(QString::fromLatin1(name))->text();
}

void click(const QWidget &dialog, const char *name)
{
    auto *button = dialog.findChild<QAbstractButton *>(QString::fromLatin1(name));
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(10, button->height() / 2));
}

} // namespace

class TestLevelCalibrationWindow : public QObject
{
    Q_OBJECT

private slots:
    void twoPointsOfALogarithmicDetector_data() { test::addInterfaceRows(); }
    void twoPointsOfALogarithmicDetector();
    void eightStepsOfADiode_data() { test::addInterfaceRows(); }
    void eightStepsOfADiode();
    void aSlopeOfNothingIsRefused();
    void cancelLeavesEverything();
    void pointsAreReplacedAndRemoved();
    void aSweepIsToldAndNothingIsWrittenWhereItCannotBe();
};

void TestLevelCalibrationWindow::twoPointsOfALogarithmicDetector()
{
    QFETCH(int, interfaceType);
    Bench bench(interfaceType, "log");
    QVERIFY(bench.started);
    bench.calibrate([&](QWidget &dialog) {
        const auto *apply = dialog.findChild<QPushButton *>(QStringLiteral("cmdApply"));
        QVERIFY(!apply->isEnabled());
        bench.measure(dialog, 0);
        QVERIFY(!apply->isEnabled());
        // The text is aligned with the curve, and a new point is drawn.
        auto *curve = dialog.findChild<QWidget *>(QStringLiteral("picLevel"));
        QCOMPARE(dialog.findChild<QWidget *>(QStringLiteral("lblTold"))->x(), curve->x());
        test::PaintCount painted;
        curve->installEventFilter(&painted);
        bench.measure(dialog, 8);
        QTRY_VERIFY(painted.count > 0);
        QVERIFY(apply->isEnabled());
        click(dialog, "cmdApply");
        QVERIFY(!dialog.isVisible());
    });
    const DetectorLaw &law = bench.configuration.detectorLaw;
    QCOMPARE(law.kind, DetectorLaw::Kind::Log);
    QVERIFY2(std::abs(law.slope - 25.0) < 0.05, qPrintable(QString::number(law.slope)));
    QVERIFY2(std::abs(law.intercept + 84.0) < 0.2, qPrintable(QString::number(law.intercept)));
    QStringList faults;
    QVERIFY(readDetectorLaw(Profile(bench.folder.iniPath()), faults).kind == DetectorLaw::Kind::Log);
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestLevelCalibrationWindow::eightStepsOfADiode()
{
    QFETCH(int, interfaceType);
    Bench bench(interfaceType, "diode");
    bench.calibrate([&](QWidget &dialog) {
        click(dialog, "optTable");
        for (int step = 0; step <= 8; ++step)
            bench.measure(dialog, step);
        QVERIFY2(textOf(dialog, "lblResult").contains(QLatin1String("9 points")),
                 qPrintable(textOf(dialog, "lblResult")));
        click(dialog, "cmdApply");
    });
    const DetectorLaw &law = bench.configuration.detectorLaw;
    QCOMPARE(law.kind, DetectorLaw::Kind::Table);
    QCOMPARE(law.points().size(), std::size_t{9});
    for (double dBm = -30.0; dBm <= 10.0; dBm += 1.3) {
        const double found = dBmOfVolts(law.inputVolts(test::diodeVolts(dBm)));
        QVERIFY2(std::abs(found - dBm) <= 0.3, qPrintable(QStringLiteral("%1 dBm, not %2").arg(found).arg(dBm)));
    }
}

// The same level is measured twice but entered as two levels.
void TestLevelCalibrationWindow::aSlopeOfNothingIsRefused()
{
    Bench bench(kInterfaceLpt, "log");
    bench.calibrate([&](QWidget &dialog) {
        bench.measure(dialog, 4);
        dialog.findChild<QDoubleSpinBox *>(QStringLiteral("spinStep"))->setValue(60.0);
        auto *button = dialog.findChild<QPushButton *>(QStringLiteral("cmdMeasure"));
        click(dialog, "cmdMeasure");
        QVERIFY(QTest::qWaitFor([&] { return button->isEnabled(); }, 10'000));
        QCOMPARE(dialog.findChild<QTableWidget *>(QStringLiteral("lstPoints"))->rowCount(), 2);
        QVERIFY2(textOf(dialog, "lblResult").contains(QLatin1String("slope outside 1 to 1000 mV per dB")),
                 qPrintable(textOf(dialog, "lblResult")));
        QVERIFY(!dialog.findChild<QPushButton *>(QStringLiteral("cmdApply"))->isEnabled());
    });
}

void TestLevelCalibrationWindow::cancelLeavesEverything()
{
    Bench bench(kInterfaceLpt, "log");
    const QByteArray before = test::contents(bench.folder.iniPath());
    bench.calibrate([&](QWidget &dialog) {
        bench.measure(dialog, 0);
        bench.measure(dialog, 4);
        click(dialog, "cmdCancel");
    });
    QCOMPARE(bench.configuration.detectorLaw.kind, DetectorLaw::Kind::Linear);
    QCOMPARE(test::contents(bench.folder.iniPath()), before);
}

void TestLevelCalibrationWindow::pointsAreReplacedAndRemoved()
{
    Bench bench(kInterfaceLpt, "log");
    bench.calibrate([&](QWidget &dialog) {
        auto *list = dialog.findChild<QTableWidget *>(QStringLiteral("lstPoints"));
        bench.measure(dialog, 2);
        bench.measure(dialog, 0);
        bench.measure(dialog, 4);
        // The list is sorted by descending level, whatever the order of measurement.
        QCOMPARE(list->item(0, 0)->text(), QStringLiteral("10.00"));
        QCOMPARE(list->item(2, 0)->text(), QStringLiteral("-10.00"));
        list->selectRow(1);
        click(dialog, "cmdRemove");
        QCOMPARE(list->rowCount(), 2);
        QCOMPARE(list->item(1, 0)->text(), QStringLiteral("-10.00"));
        // Measuring the same level again replaces the previous point.
        auto *button = dialog.findChild<QPushButton *>(QStringLiteral("cmdMeasure"));
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(QTest::qWaitFor([&] { return button->isEnabled(); }, 10'000));
        QCOMPARE(list->rowCount(), 2);
        QVERIFY2(textOf(dialog, "lblTold").contains(QLatin1String("64 readings")),
                 qPrintable(textOf(dialog, "lblTold")));
    });
}

void TestLevelCalibrationWindow::aSweepIsToldAndNothingIsWrittenWhereItCannotBe()
{
    Bench bench(kInterfaceLpt, "log");
    bench.calibrate([&](QWidget &dialog) {
        bench.click("cmdStart"); // users cannot do this: the menu is disabled during a sweep
        QVERIFY(QTest::qWaitFor([&] { return bench.station->instrument.isSweeping(); }, 5'000));
        auto *button = dialog.findChild<QPushButton *>(QStringLiteral("cmdMeasure"));
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(QTest::qWaitFor([&] { return button->isEnabled(); }, 5'000));
        QVERIFY2(textOf(dialog, "lblTold").contains(QLatin1String("A sweep is running")),
                 qPrintable(textOf(dialog, "lblTold")));
        QCOMPARE(dialog.findChild<QTableWidget *>(QStringLiteral("lstPoints"))->rowCount(), 0);
        bench.click("cmdStop");
        QVERIFY(QTest::qWaitFor([&] { return !bench.station->instrument.isSweeping(); }, 5'000));
    });

    bench.configuration.iniPath = QStringLiteral("/proc/nowhere/Calvorn.ini");
    bench.calibrate([&](QWidget &dialog) {
        bench.measure(dialog, 0);
        bench.measure(dialog, 4);
        bench.desktop.boxes.clear();
        click(dialog, "cmdApply");
        QVERIFY(dialog.isVisible());
    });
    QVERIFY(!bench.desktop.boxes.isEmpty());
    QCOMPARE(bench.configuration.detectorLaw.kind, DetectorLaw::Kind::Linear);
}

QTEST_MAIN(TestLevelCalibrationWindow)
#include "test_level_calibration_window.moc"
