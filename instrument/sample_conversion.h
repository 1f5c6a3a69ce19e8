// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "data/amplitude_writer.h"
#include "data/sweep_table.h"

#include <QObject>
#include <QVector>

#include <functional>

namespace calvorn {

// Converts a vector of detector counts to rows of the sweep table.
class SampleConversion : public QObject
{
    Q_OBJECT

public:
    SampleConversion(Configuration &configuration, SweepTable &table, QObject *parent = nullptr);

    // isInverted: returns true if counts fall from kVnaFullScale as the voltage rises; called for each vector.
    void setInverted(std::function<bool()> isInverted) { m_isInverted = std::move(isInverted); }

    // vettore: 400 counts in row order; throws RuntimeError(SubscriptOutOfRange) if there are fewer. Writes the count
    // and amplitude of every row, then emits vectorStored().
    void datiDDS(const QVector<int> &vettore);

    // Returns a count as it appears in the table: rising with the detector's voltage.
    int risingCount(int received) const;

signals:
    // Emitted for each converted sample if logging is on. index: row (1 to 400). value: the count as received.
    void sampleReceived(int index, int value);
    void vectorStored();

private:
    Configuration &m_configuration;
    SweepTable &m_table;
    KnownAmplitudes m_known;
    std::function<bool()> m_isInverted = [] { return false; };
};

} // namespace calvorn
