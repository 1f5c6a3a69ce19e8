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

// The entry of the frequency range: txtStart and txtStop, the resulting step, and the read-outs of the plan.
class RangeEntry : public QWidget
{
    Q_OBJECT

public:
    // readouts: the labels under the graph, which this widget keeps.
    RangeEntry(Configuration &configuration, SweepTable &table, FrequencyReadouts &readouts, Messages &messages,
               ErrorBoundary &boundary, QWidget *parent = nullptr);

    // Puts the range of the record into the boxes.
    void showRange();

    // Takes a frequency from elsewhere (a marker) into the record and its box; applied like a typed one.
    void setStart(std::int32_t hertz) { m_start->setFrequency(hertz); }
    void setStop(std::int32_t hertz) { m_stop->setFrequency(hertz); }

    // Both at once.
    void setRange(std::int32_t start, std::int32_t stop);

    // Corrects a range that is too small and tells the user, then derives stepFreq; shows all three.
    void calcolaStep();

    // Step and boxes for the range of the record, while the table stays as it is: the plan of a sweep from elsewhere.
    void planWithoutTable();

    // Plans anew: step, table, read-outs. The table is empty then.
    void aggiornaLblFrequenza();

    // Whether the range of the record is another one than the table and the read-outs were made for.
    bool isPlanStale() const;

    QLabel *sampleCountLabel() const { return m_sampleCount; }

signals:
    // An accepted change of the range, to be applied after the last one.
    void rangeChanged();

    // The table stands for the range of the record, which was corrected where it was too small.
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
