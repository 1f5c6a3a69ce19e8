// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "core/number_text.h"
#include "data/sweep_table.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace calvorn {

// Whether the amplitudes of all rows are what their counts convert to with this configuration.
bool amplitudesFollowFromCounts(const SweepTable &table, Configuration configuration);

// All amplitudes anew from the counts, for another detector. The volts are not rounded before they become dB.
// Announces it. RuntimeError(TypeMismatch) when a count is no number.
void rewriteAmplitudes(Configuration &configuration, SweepTable &table);

// The cells that counts have got, so that a converter's few numbers are turned into text once and not with every sweep.
class KnownAmplitudes
{
public:
    struct Cells
    {
        QString count; // empty: not known yet
        QString amplitude;
    };

    // Forgets everything when calibration, scale or decimal separator are not those for which it was kept.
    void follow(const Configuration &configuration, const NumberText &numbers);

    // Null for counts that no converter gives; below 0 and from 1024 on.
    Cells *of(int count);

private:
    std::vector<Cells> m_cells;
    float m_step = 0.0F;
    float m_offset = 0.0F;
    DetectorLaw m_law{};
    std::int16_t m_scale = 0;
    QChar m_decimal;
};

// Writes amplitude cells from detector counts: volts with "#0.000" on the linear scale, otherwise dB with "#0.0".
// One is made for a whole pass over the table, so that the locale is looked up once.
// Nobody is told; SweepTable has the announcements.
class AmplitudeWriter
{
public:
    // known: outlives the writer; null where nothing is kept for the next pass.
    AmplitudeWriter(Configuration &configuration, SweepTable &table, KnownAmplitudes *known = nullptr);

    // Writes a count into its cell, and the amplitude beside it.
    void storeCount(int row, int count);

    // Takes the count from the row's own count cell, as every reader does.
    // Returns the volts. RuntimeError(TypeMismatch) when the cell holds no number.
    float convertRow(int row);

    // All 400 rows. The caller announces it.
    void convertAllRows();

private:
    float writeAmplitude(int row, double count);

    Configuration &m_configuration;
    SweepTable &m_table;
    KnownAmplitudes *m_known;
    NumberText m_numbers;
};

} // namespace calvorn
