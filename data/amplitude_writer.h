// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "core/number_text.h"
#include "data/sweep_table.h"

namespace calvorn {

// Whether the amplitudes of all rows are what their counts convert to with this configuration.
bool amplitudesFollowFromCounts(const SweepTable &table, Configuration configuration);

// Writes amplitude cells from detector counts: volts with "#0.000" on the linear scale, otherwise dB with "#0.0".
// One is made for a whole pass over the table, so that the locale is looked up once.
// Nobody is told; SweepTable has the announcements.
class AmplitudeWriter
{
public:
    AmplitudeWriter(Configuration &configuration, SweepTable &table);

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
    NumberText m_numbers;
};

} // namespace calvorn
