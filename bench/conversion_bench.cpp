// SPDX-License-Identifier: MIT
// Measures storing a vector in the table and reading it back. The baseline in each case is the minimum work that any
// program must do.
#include "instrument/sample_conversion.h"

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>

namespace {

using namespace calvorn;

struct Room
{
    Configuration configuration;
    SweepTable table{configuration};
    SampleConversion conversion{configuration, table};
    QVector<int> counts;

    explicit Room(std::int16_t scaleType)
    {
        configuration.scaleType = scaleType;
        configuration.adcStep = 0.00244F;
        configuration.startFreq = 1000000;
        configuration.stepFreq = 35000;
        table.inizializzaGrid();
        for (int i = 0; i < kSweepPoints; ++i)
            counts.append(1 + (i * 37) % 1023);
        conversion.datiDDS(counts);
    }
};

// Returns the amplitudes of the sweep above as numbers.
std::array<double, kSweepPoints> values()
{
    std::array<double, kSweepPoints> result{};
    for (int i = 0; i < kSweepPoints; ++i)
        result[static_cast<std::size_t>(i)] = (1 + (i * 37) % 1023) * 0.00244;
    return result;
}

void conversionFloor(benchmark::State &state)
{
    const auto numbers = values();
    std::array<char, 32> buffer;
    for (auto _ : state)
        for (const double value : numbers) {
            benchmark::DoNotOptimize(std::to_chars(buffer.data(), buffer.data() + buffer.size(), value));
            benchmark::ClobberMemory();
        }
}

void conversionIntoTable(benchmark::State &state)
{
    Room room(static_cast<std::int16_t>(state.range(0)));
    for (auto _ : state) {
        room.conversion.datiDDS(room.counts);
        benchmark::ClobberMemory();
    }
}

void readingFloor(benchmark::State &state)
{
    std::array<std::array<char, 32>, kSweepPoints> texts{};
    std::array<char *, kSweepPoints> ends{};
    const auto numbers = values();
    for (std::size_t i = 0; i < numbers.size(); ++i)
        ends[i] = std::to_chars(texts[i].data(), texts[i].data() + texts[i].size(), numbers[i]).ptr;
    for (auto _ : state)
        for (std::size_t i = 0; i < texts.size(); ++i) {
            double value = 0.0;
            std::from_chars(texts[i].data(), ends[i], value);
            benchmark::DoNotOptimize(value);
        }
}

void readingFromTable(benchmark::State &state)
{
    Room room(static_cast<std::int16_t>(state.range(0)));
    for (auto _ : state) {
        room.table.cell(1, SweepTable::AmplitudeColumn); // marks the column as changed
        benchmark::DoNotOptimize(room.table.numbers(SweepTable::AmplitudeColumn).data());
        benchmark::ClobberMemory();
    }
}

BENCHMARK(conversionFloor);
BENCHMARK(conversionIntoTable)->Arg(0)->Arg(1);
BENCHMARK(readingFloor);
BENCHMARK(readingFromTable)->Arg(0)->Arg(1);

} // namespace

BENCHMARK_MAIN();
