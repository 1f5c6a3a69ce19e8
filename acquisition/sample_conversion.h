// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "core/settings.h"
#include "data/sweep_table.h"

#include <QObject>
#include <QVector>

namespace calvorn {

// Turns the detector counts of a vector into rows of the sweep table.
class SampleConversion : public QObject
{
    Q_OBJECT

public:
    SampleConversion(Configuration &configuration, const WindowSettings &window, SweepTable &table,
                     QObject *parent = nullptr);

    // vettore: 400 counts in the order of the rows; RuntimeError(SubscriptOutOfRange) when it is shorter.
    // Writes count and amplitude of all rows, then emits vectorStored().
    void datiDDS(const QVector<int> &vettore);

signals:
    // With the log on, for each sample as it is converted: row (1 to 400) and received value.
    void sampleReceived(int index, int value);
    void vectorStored();

private:
    Configuration &m_configuration;
    const WindowSettings &m_window;
    SweepTable &m_table;
};

} // namespace calvorn
