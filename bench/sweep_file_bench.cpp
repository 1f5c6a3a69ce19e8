// SPDX-License-Identifier: MIT
// Measures exporting and importing a sweep as the menu commands do, with a file on disk. Baseline: the minimum work
// that any program must do: write these bytes to a new file and rename it, or read them and convert the numbers.
#include "core/whole_file.h"
#include "data/amplitude_writer.h"
#include "data/sweep_csv.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>

#include <charconv>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace calvorn;

struct Room
{
    Configuration configuration;
    SweepTable table{configuration};
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("sweep.csv"));
    QByteArray csv;

    Room()
    {
        configuration.adcStep = 0.00244F;
        configuration.startFreq = 1000000;
        configuration.stepFreq = 35000;
        table.inizializzaGrid();
        for (int row = 1; row <= kSweepPoints; ++row)
            table.setText(row, SweepTable::SampleColumn, NumberText::fromInteger(1 + (row * 37) % 1023));
        AmplitudeWriter(configuration, table).convertAllRows();
        csv = sweepAsCsv(table);
        writeWholeFile(path, csv);
    }
};

void exportSweep(benchmark::State &state)
{
    const Room room;
    for (auto _ : state)
        writeWholeFile(room.path, sweepAsCsv(room.table));
}

void exportFloor(benchmark::State &state)
{
    const Room room;
    const QByteArray name = room.path.toLocal8Bit();
    const QByteArray fresh = name + ".new";
    for (auto _ : state) {
        const int file = open(fresh.constData(), O_CREAT | O_WRONLY | O_TRUNC, 0600);
        bool whole = write(file, room.csv.constData(), static_cast<std::size_t>(room.csv.size())) == room.csv.size();
        whole = fsync(file) == 0 && close(file) == 0 && whole;
        if (!whole || std::rename(fresh.constData(), name.constData()) != 0)
            state.SkipWithError("the file could not be written");
    }
}

void importSweep(benchmark::State &state)
{
    Room room;
    for (auto _ : state) {
        QFile file(room.path);
        if (!file.open(QIODevice::ReadOnly))
            state.SkipWithError("the file could not be read");
        readSweepCsv(file, room.table);
        benchmark::ClobberMemory();
    }
}

void importFloor(benchmark::State &state)
{
    const Room room;
    for (auto _ : state) {
        QFile file(room.path);
        if (!file.open(QIODevice::ReadOnly))
            state.SkipWithError("the file could not be read");
        const QByteArray text = file.readAll();
        const char *end = text.constData() + text.size();
        for (const char *at = text.constData(); at < end;) {
            double value = 0.0;
            const auto [next, error] = std::from_chars(at, end, value);
            benchmark::DoNotOptimize(value);
            at = error == std::errc() ? next : at + 1;
        }
    }
}

BENCHMARK(exportFloor)->Unit(benchmark::kMicrosecond);
BENCHMARK(exportSweep)->Unit(benchmark::kMicrosecond);
BENCHMARK(importFloor)->Unit(benchmark::kMicrosecond);
BENCHMARK(importSweep)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
