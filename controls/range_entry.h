// SPDX-License-Identifier: MIT
#pragma once

#include "controls/frequency_box.h"
#include "controls/frequency_readouts.h"
#include "core/error_boundary.h"
#include "data/sweep_table.h"

#include <QLabel>
#include <QWidget>

namespace calvorn {

class ReadOut;

// Entry of the frequency range: txtStart and txtStop, the resulting step, and the read-outs of the plan.
class RangeEntry : public QWidget
{
    Q_OBJECT

public:
    // readouts: the labels under the graph, which this widget updates.
    RangeEntry(Configuration &configuration, SweepTable &table, FrequencyReadouts &readouts, Messages &messages,
               ErrorBoundary &boundary, QWidget *parent = nullptr);

    // Shows the configured range in the boxes.
    void showRange();

    // Store a frequency from elsewhere (a marker) in the configuration and show it, accepted like a typed one.
    void setStart(std::int32_t hertz) { m_start->setFrequency(hertz); }
    void setStop(std::int32_t hertz) { m_stop->setFrequency(hertz); }

    // Sets both ends.
    void setRange(std::int32_t start, std::int32_t stop);

    // Corrects a range that is too small and reports that to the user, then computes stepFreq. Shows start, stop and
    // step.
    void calcolaStep();

    // Computes the step and shows the boxes for the configured range without changing the table, for an imported sweep.
    void planWithoutTable();

    // Computes the plan again: step, table and read-outs. Empties the table.
    void aggiornaLblFrequenza();

    // Whether the configured range differs from the one of the table and the read-outs.
    bool isPlanStale() const;

    QLabel *sampleCountLabel() const { return m_sampleCount; }

signals:
    // A change of the range was accepted. Receivers apply it once no further change follows.
    void rangeChanged();

    // The table now has the configured range, which was corrected if it was too small.
    void planned();

private:
    void txtStart_GotFocus() { m_start->enter(); }
    void txtStop_GotFocus() { m_stop->enter(); }
    void txtStart_LostFocus() { m_start->leave(); }
    void txtStop_LostFocus() { m_stop->leave(); }
    void VScrollStart_Change(int index) { m_start->stepDigit(index); }
    void VScrollStop_Change(int index) { m_stop->stepDigit(index); }

    Configuration &m_configuration;
    SweepTable &m_table;
    FrequencyReadouts &m_readouts;
    Messages &m_messages;
    FrequencyBox *m_start;
    FrequencyBox *m_stop;
    ReadOut *m_step;
    QLabel *m_sampleCount;
    std::int32_t m_plannedStart = 0; // Hz
    std::int32_t m_plannedStop = 0;  // Hz
};

} // namespace calvorn
