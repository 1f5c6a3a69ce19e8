// SPDX-License-Identifier: MIT
// Sweeps in the window, on a simulated board with a logarithmic detector: the warning in the status line, the sweep
// files, and the instrument modes that do not measure a level.
#include "core/common_functions.h"
#include "core/detector_calibration.h"
#include "core/scale_type.h"
#include "tests/support/interface_rows.h"
#include "tests/support/interface_settings.h"
#include "tests/support/window_bench.h"

#include <QAction>

#include <cmath>

using namespace calvorn;

namespace {

constexpr double kLevel = -20.0; // dBm, through a piece of cable
constexpr double kVoltsPerCount = 2.5 / 1024.0;
const QString kOutside = QStringLiteral("400 of 400 samples are outside the detector's calibrated range");

// 25 mV per dB, starting at -84 dBm: -20 dBm gives 1.6 V. One count is 0.1 dB.
QByteArray settings(int interfaceType, const QList<QByteArray> &law)
{
    const test::ProgramFolder scratch({}, test::crystalSettings(static_cast<std::int16_t>(interfaceType)));
    scratch.set("Config", "ADC Step", QString::number(kVoltsPerCount, 'g', 17));
    scratch.set("Config", "ADC Offset", QStringLiteral("0"));
    scratch.set("Simulator", "Device", QStringLiteral("through"));
    scratch.set("Simulator", "Detector", QStringLiteral("log"));
    scratch.set("Simulator", "Level", QString::number(kLevel));
    scratch.set("Config", "ADC Law", QString::fromLatin1(law.first()));
    for (qsizetype point = 1; point < law.size(); ++point)
        scratch.set("Detector", QByteArray("Point " + QByteArray::number(point)).constData(),
                    QString::fromLatin1(law[point]));
    QFile file(scratch.iniPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const QList<QByteArray> kTable{"table", "0.1;-80", "0.6;-60", "1.1;-40", "2.1;0"};
const QList<QByteArray> kTableBelow{"table", "0.1;-80", "0.6;-60", "1.1;-40"};

struct Bench : test::WindowBench
{
    Bench(int interfaceType, const QList<QByteArray> &law)
        : WindowBench(test::ProgramFolder::builtFile(QStringLiteral("CalvornAsync")), settings(interfaceType, law))
    {
        desktop.fileChoice = folder.path() + QStringLiteral("/sweep.csv");
    }

    void trigger(const char *action) const { window->findChild<QAction *>(QString::fromLatin1(action))->trigger(); }

    bool sweeps()
    {
        QSignalSpy stored(&station->instrument.conversion(), &SampleConversion::vectorStored);
        click("cmdStart");
        const bool came = QTest::qWaitFor([&] { return stored.count() >= 2; }, 10'000);
        click("cmdStop");
        return came && QTest::qWaitFor([&] { return !station->instrument.isSweeping(); }, 5'000);
    }

    // Returns a row's level in dBm, computed from its dB relative to 1 V.
    double level(int row) const
    {
        const double decibels = table()->number(row, SweepTable::AmplitudeColumn);
        return dBmOfVolts(std::pow(10.0, decibels / 20.0));
    }
};

} // namespace

class TestDetectorLawWindow : public QObject
{
    Q_OBJECT

private slots:
    void theTableOfPointsIsFollowed_data() { test::addInterfaceRows(); }
    void theTableOfPointsIsFollowed();
    void samplesOutsideAreMarked_data() { test::addInterfaceRows(); }
    void samplesOutsideAreMarked();
    void filesAreImportedWithoutQuestions();
    void aPhaseFollowsNoLaw();
};

void TestDetectorLawWindow::theTableOfPointsIsFollowed()
{
    QFETCH(int, interfaceType);
    Bench bench(interfaceType, kTable);
    QVERIFY(bench.started);
    bench.configuration.scaleType = kScaleDb1VHeadroom;
    QVERIFY(bench.sweeps());
    // -20 dBm lies midway between two points; one count is 0.1 dB, and the noise is a few counts.
    for (int row = 1; row <= kSweepPoints; ++row)
        QVERIFY2(std::abs(bench.level(row) - kLevel) < 0.4, qPrintable(QString::number(bench.level(row))));
    QVERIFY(!bench.label("lblStatus").contains(QLatin1String("outside")));
}

void TestDetectorLawWindow::samplesOutsideAreMarked()
{
    QFETCH(int, interfaceType);
    Bench bench(interfaceType, kTableBelow);
    QVERIFY(!bench.label("lblStatus").contains(QLatin1String("outside")));
    bench.configuration.scaleType = kScaleDb1VHeadroom;
    QVERIFY(bench.sweeps());
    QVERIFY2(bench.label("lblStatus").contains(kOutside), qPrintable(bench.label("lblStatus")));
    // These samples have the level of the table's last point.
    for (int row = 1; row <= kSweepPoints; ++row)
        QVERIFY2(std::abs(bench.level(row) + 40.0) < 0.06, qPrintable(QString::number(bench.level(row))));
}

void TestDetectorLawWindow::filesAreImportedWithoutQuestions()
{
    Bench bench(kInterfaceLpt, kTable);
    QVERIFY(bench.sweeps());
    const auto amplitudes = [&bench] {
        QStringList all;
        for (int row = 1; row <= kSweepPoints; ++row)
            all.append(bench.table()->text(row, SweepTable::SampleColumn) + u' ' +
                       bench.table()->text(row, SweepTable::AmplitudeColumn));
        return all;
    };
    const QStringList before = amplitudes();
    bench.trigger("mnuSaveCSV");
    bench.click("cmdClear");
    QVERIFY(amplitudes() != before);
    bench.trigger("mnuOpenCSV");
    QCOMPARE(amplitudes(), before);
    QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
}

void TestDetectorLawWindow::aPhaseFollowsNoLaw()
{
    Bench bench(kInterfaceVna, kTable);
    bench.configuration.measuringMode = 1;
    bench.configuration.scaleType = kScaleDb1VHeadroom;
    QVERIFY(bench.sweeps());
    for (int row = 1; row <= kSweepPoints; ++row) {
        const double count = bench.table()->number(row, SweepTable::SampleColumn);
        QVERIFY(count > 0.0);
        const double expected = 20.0 * std::log10(count * kVoltsPerCount);
        QVERIFY(std::abs(bench.table()->number(row, SweepTable::AmplitudeColumn) - expected) < 0.06);
    }
    QVERIFY(!bench.label("lblStatus").contains(QLatin1String("outside")));
}

QTEST_MAIN(TestDetectorLawWindow)
#include "test_detector_law_window.moc"
