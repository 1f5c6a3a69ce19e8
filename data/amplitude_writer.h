// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "core/number_text.h"
#include "data/sweep_table.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace calvorn {

// Returns whether the amplitude of every row equals the conversion of its count under this configuration.
bool amplitudesFollowFromCounts(const SweepTable &table, Configuration configuration);

// Recomputes all amplitudes from the counts, for another detector, and announces the change. The volts are converted
// to dB without rounding. Throws RuntimeError(TypeMismatch) if a count is not a number.
void rewriteAmplitudes(Configuration &configuration, SweepTable &table);

// Caches the cell texts of each count, so that a count is formatted once and not in every sweep.
class KnownAmplitudes
{
public:
    struct Cells
    {
        QString count; // empty: not cached yet
        QString amplitude;
    };

    // Clears the cache if calibration, scale or decimal separator differ from those it was filled with.
    void follow(const Configuration &configuration, const NumberText &numbers);

    // Returns null for counts that no converter produces: below 0, or 1024 and above.
    Cells *of(int count);

private:
    std::vector<Cells> m_cells;
    float m_step = 0.0F;
    float m_offset = 0.0F;
    DetectorLaw m_law{};
    std::int16_t m_scale = 0;
    QChar m_decimal;
};

// Writes amplitude cells from detector counts: volts with "#0.000" on the linear scale, otherwise dB with "#0.0". One
// writer serves a whole pass over the table, so the locale is looked up once. The writer emits no signal; the caller
// makes one of SweepTable's announcements.
class AmplitudeWriter
{
public:
    // known: must outlive the writer; null disables caching.
    AmplitudeWriter(Configuration &configuration, SweepTable &table, KnownAmplitudes *known = nullptr);

    // Writes a count and its amplitude into the row's cells.
    void storeCount(int row, int count);

    // Converts the count in the row's count cell and returns the volts. Throws RuntimeError(TypeMismatch) if the cell
    // holds no number.
    float convertRow(int row);

    // Converts all 400 rows. The caller announces the change.
    void convertAllRows();

private:
    float writeAmplitude(int row, double count);

    Configuration &m_configuration;
    SweepTable &m_table;
    KnownAmplitudes *m_known;
    NumberText m_numbers;
};

} // namespace calvorn
