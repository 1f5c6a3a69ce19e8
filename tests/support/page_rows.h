// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep_table.h"
#include "tests/support/page_boards.h"

namespace calvorn::test {

// The state of the table's rows.
enum class Rows { Empty, Right, Wrong };

inline int countAtRow(std::int16_t interfaceType, std::int16_t mode, std::int32_t start, std::int32_t step, int row)
{
    const std::int64_t hertz = start + std::int64_t{step} * (row - 1);
    if (interfaceType == kInterfacePic)
        return countAt(static_cast<std::uint32_t>(hertz));
    if (interfaceType == kInterfaceLpt)
        return countAt(wordAt(static_cast<double>(hertz), 80e6));
    // The MiniVNA sweeps upwards in integer steps of its tuning word.
    constexpr double kClockHz = 400e6;
    const std::int64_t last = start + std::int64_t{step} * 399;
    const std::uint32_t first = wordAt(static_cast<double>(std::min<std::int64_t>(start, last)), kClockHz);
    const int fromBelow = step < 0 ? 400 - row : row - 1;
    const std::uint32_t word = first + static_cast<std::uint32_t>(fromBelow) * wordAt(std::abs(double(step)), kClockHz);
    if (mode == 1)
        return countAt(word);
    return mode == 2 ? countAt(word ^ 0x5A5A5A5AU) : 1024 - countAt(word ^ 0x33333333U);
}

// Checks that every count in the table was measured at its row's frequency and, for the MiniVNA, in this mode.
inline Rows rowsOf(const SweepTable &table, std::int16_t interfaceType, std::int16_t mode = 0)
{
    const auto hertz = [&](int row) {
        return QString(table.text(row, SweepTable::FrequencyColumn)).remove(u',').remove(u'.').toInt();
    };
    const std::int32_t start = hertz(1);
    const std::int32_t step = hertz(2) - start;
    bool isEmpty = true;
    bool isRight = true;
    for (int row = 1; row <= 400; ++row) {
        const int count = table.text(row, SweepTable::SampleColumn).toInt();
        isEmpty = isEmpty && count == 0;
        isRight = isRight && hertz(row) == start + step * (row - 1) &&
                  count == countAtRow(interfaceType, mode, start, step, row);
    }
    return isEmpty ? Rows::Empty : isRight ? Rows::Right : Rows::Wrong;
}

} // namespace calvorn::test
