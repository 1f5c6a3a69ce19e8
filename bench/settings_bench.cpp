// SPDX-License-Identifier: MIT
// Measures loading the settings at start-up. Baseline: reading the file once and splitting it into lines.
// Usage: CALVORN_SETTINGS=<settings file> settings_bench
#include "core/settings.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>

namespace {

using namespace calvorn;

struct Folder
{
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("Calvorn.ini"));

    Folder() { QFile::copy(qEnvironmentVariable("CALVORN_SETTINGS"), path); }
};

void loadSettings(benchmark::State &state)
{
    const Folder folder;
    for (auto _ : state) {
        Configuration configuration;
        WindowSettings window;
        configuration.iniPath = folder.path;
        SettingsLoader loader(configuration, window);
        if (loader.load() != LoadOutcome::Loaded)
            state.SkipWithError("the settings cannot be loaded");
        loader.loadMarkers();
        benchmark::DoNotOptimize(configuration);
    }
}

void settingsFloor(benchmark::State &state)
{
    const Folder folder;
    for (auto _ : state) {
        QFile file(folder.path);
        if (!file.open(QIODevice::ReadOnly))
            state.SkipWithError("the file could not be read");
        int keys = 0;
        for (const QByteArray &line : file.readAll().split('\n'))
            keys += line.contains('=') ? 1 : 0;
        benchmark::DoNotOptimize(keys);
    }
}

BENCHMARK(settingsFloor)->Unit(benchmark::kMicrosecond);
BENCHMARK(loadSettings)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
