// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "core/number_text.h"
#include "data/sweep_table.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace calvorn {

// Returns true if the amplitude of every row is what this configuration computes from its count.
bool amplitudesFollowFromCounts(const SweepTable &table, Configuration configuration);

// Recomputes all amplitudes from the counts, for another detector, and announces the change. Volts are not rounded
// before conversion to dB. Throws RuntimeError(TypeMismatch) if a count is not a number.
void rewriteAmplitudes(Configuration &configuration, SweepTable &table);

// Caches the cell texts for each count, so that a count is formatted once rather than in every sweep.
class KnownAmplitudes
{
public:
    struct Cells
    {
        QString count; // empty: not cached yet
        QString amplitude;
    };

    // Clears the cache if calibration, scale or decimal separator have changed since it was filled.
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

// Writes amplitude cells from detector counts: volts with "#0.000" on the linear scale, otherwise dB with "#0.0". Use
// one writer for a whole pass over the table, so that the locale is looked up only once. The writer emits no signal;
// the caller must call one of SweepTable's announcement functions.
class AmplitudeWriter
{
public:
    // known: must outlive the writer; null disables caching.
    AmplitudeWriter(Configuration &configuration, SweepTable &table, KnownAmplitudes *known = nullptr);

    // Writes a count and its amplitude into the row's cells.
    void storeCount(int row, int count);

    // Converts the count in the row's count cell and returns the volts. Throws RuntimeError(TypeMismatch) if the cell
    // does not contain a number.
    float convertRow(int row);

    // Converts all 400 rows. The caller must announce the change.
    void convertAllRows();

private:
    float writeAmplitude(int row, double count);

    Configuration &m_configuration;
    SweepTable &m_table;
    KnownAmplitudes *m_known;
    NumberText m_numbers;
};

} // namespace calvorn
