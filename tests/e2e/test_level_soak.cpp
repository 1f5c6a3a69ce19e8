// SPDX-License-Identifier: MIT
// Runs the level meter for a long time, at twenty times the normal rate: every reading must be right, and memory use
// must stay constant. bench/soak runs it for three hours' worth of readings.
#include "tests/support/interface_settings.h"
#include "tests/support/resident_memory.h"
#include "tests/support/sweep_tool.h"
#include "tests/support/window_bench.h"

#include <QElapsedTimer>
#include <QTabWidget>
#include <QTimer>

#include <cmath>

using namespace calvorn;

namespace {

constexpr int kTimesFaster = 20;
// The allowed growth in kB after the first quarter. Sanitizers delay freeing memory.
#ifdef CALVORN_SANITIZED
constexpr qint64 kMostGrowth = 16'384;
#else
constexpr qint64 kMostGrowth = 2'048;
#endif

QByteArray settings()
{
    const test::ProgramFolder scratch({}, test::crystalSettings(kInterfaceLpt));
    scratch.set("Config", "ADC Step", QString::number(2.5 / 1024.0, 'g', 17));
    scratch.set("Config", "ADC Offset", QStringLiteral("0"));
    scratch.set("Config", "ADC Law", QStringLiteral("log"));
    scratch.set("Simulator", "Device", QStringLiteral("through"));
    scratch.set("Simulator", "Detector", QStringLiteral("log"));
    scratch.set("Simulator", "Level", QStringLiteral("-20"));
    return test::contents(scratch.iniPath());
}

} // namespace

class TestLevelSoak : public QObject
{
    Q_OBJECT

private slots:
    void manyReadings()
    {
        const int wanted = qEnvironmentVariableIntValue("CALVORN_SOAK_READINGS");
        const int readings = wanted > 0 ? wanted : 1'500;
        test::WindowBench bench(test::builtServer(), settings());
        QTest::keyClick(bench.window.get(), Qt::Key_M, Qt::ControlModifier);
        bench.find<QTabWidget>("tabMeasure")->setCurrentIndex(3);
        bench.find<LevelPage>("pageLevel");
        auto *reader = bench.window->findChild<LevelReader *>();
        QVERIFY(reader);
        bench.find<QTimer>("timerLevel")->setInterval(LevelReader::kInterval / kTimesFaster);
        int taken = 0;
        double farthest = 0.0; // counts
        connect(reader, &LevelReader::taken, this, [&](const LevelReading &reading) {
            ++taken;
            // -20 dBm corresponds to 1.6 V, or 655.4 counts.
            farthest = std::max(farthest, std::abs(reading.count - 1.6 / 2.5 * 1024.0));
        });
        const auto memory = [] { return test::memoryKilobytes(QCoreApplication::applicationPid()); };
        qint64 warm = 0;
        QElapsedTimer clock;
        clock.start();
        while (taken < readings) {
            const int before = taken;
            QVERIFY(QTest::qWaitFor([&] { return taken > before; }, 5'000));
            if (warm == 0 && taken >= readings / 4)
                warm = memory();
        }
        const qint64 end = memory();
        qInfo("%d readings in %.0f s; memory after a quarter and at the end: %lld, %lld kB; farthest from the level: "
              "%.2f "
              "counts",
              taken, 1e-3 * static_cast<double>(clock.elapsed()), warm, end, farthest);
        // The converter truncates by up to one count; the noise is up to 1.7 counts.
        QVERIFY(farthest < 2.7);
        QVERIFY(end - warm < kMostGrowth);
        QVERIFY(bench.desktop.boxes.isEmpty());
    }
};

QTEST_MAIN(TestLevelSoak)
#include "test_level_soak.moc"
