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

// Entry fields for the frequency range: txtStart and txtStop, the resulting step, and the plan's read-outs.
class RangeEntry : public QWidget
{
    Q_OBJECT

public:
    // readouts: the labels below the graph, which this widget updates.
    RangeEntry(Configuration &configuration, SweepTable &table, FrequencyReadouts &readouts, Messages &messages,
               ErrorBoundary &boundary, QWidget *parent = nullptr);

    // Shows the configured range in the boxes.
    void showRange();

    // Store a frequency (a marker's, for example) in the configuration and show it, as if it had been typed.
    void setStart(std::int32_t hertz) { m_start->setFrequency(hertz); }
    void setStop(std::int32_t hertz) { m_stop->setFrequency(hertz); }

    // Sets both start and stop.
    void setRange(std::int32_t start, std::int32_t stop);

    // Corrects a range that is too small, with a message to the user, then computes stepFreq. Shows the start and stop
    // frequencies and the step.
    void calcolaStep();

    // Computes and shows the step for the configured range without changing the table, for an imported sweep.
    void planWithoutTable();

    // Recomputes the plan: the step, the frequencies in the table, and the read-outs. Clears the table.
    void aggiornaLblFrequenza();

    // Whether the configured range differs from that of the table and the read-outs.
    bool isPlanStale() const;

    QLabel *sampleCountLabel() const { return m_sampleCount; }

signals:
    // The range has changed. Receivers wait until no further change follows, then apply the range.
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
