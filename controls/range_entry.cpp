// SPDX-License-Identifier: MIT
#include "controls/range_entry.h"

#include "core/checked_arithmetic.h"
#include "core/number_text.h"
#include "instrument/frequency_plan.h"
#include "widgets/read_out.h"

#include <QFormLayout>
#include <QVBoxLayout>

namespace calvorn {

RangeEntry::RangeEntry(Configuration &configuration, SweepTable &table, FrequencyReadouts &readouts, Messages &messages,
                       ErrorBoundary &boundary, QWidget *parent)
    : QWidget(parent)
    , m_configuration(configuration)
    , m_table(table)
    , m_readouts(readouts)
    , m_messages(messages)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    m_start = new FrequencyBox("Start", tr("Start Frequency - Hz"), tr("Enter the start frequency in Hz"),
                               configuration, configuration.startFreq, messages, this);
    m_stop = new FrequencyBox("Stop", tr("Stop Frequency - Hz"), tr("Enter the stop frequency in Hz"), configuration,
                              configuration.stopFreq, messages, this);
    for (FrequencyBox *box : {m_start, m_stop}) {
        column->addWidget(box);
        connect(box, &FrequencyBox::accepted, this, &RangeEntry::rangeChanged);
    }

    m_step = new ReadOut(this);
    m_step->setObjectName(QStringLiteral("txtStep"));
    m_step->setToolTip(tr("Distance between two samples in Hz"));
    m_step->setAccessibleName(tr("Step in Hz"));
    auto *form = new QFormLayout;
    form->addRow(tr("Step - Hz"), m_step);
    column->addLayout(form);

    m_sampleCount = new QLabel(this);
    m_sampleCount->setObjectName(QStringLiteral("lblCampioni"));
    m_sampleCount->setToolTip(tr("Number of samples in the range"));

    boundary.connect(m_start->text(), &EntryBox::gotFocus, this, "txtStart_GotFocus", [this] { txtStart_GotFocus(); });
    boundary.connect(m_stop->text(), &EntryBox::gotFocus, this, "txtStop_GotFocus", [this] { txtStop_GotFocus(); });
    boundary.connect(m_start->text(), &EntryBox::lostFocus, this, "txtStart_LostFocus",
                     [this] { txtStart_LostFocus(); });
    boundary.connect(m_stop->text(), &EntryBox::lostFocus, this, "txtStop_LostFocus", [this] { txtStop_LostFocus(); });
    boundary.connect(m_start->bars(), &DigitBars::changed, this, "VScrollStart_Change",
                     [this](int index) { VScrollStart_Change(index); });
    boundary.connect(m_stop->bars(), &DigitBars::changed, this, "VScrollStop_Change",
                     [this](int index) { VScrollStop_Change(index); });
}

void RangeEntry::showRange()
{
    for (FrequencyBox *box : {m_start, m_stop})
        box->showFrequency();
}

void RangeEntry::calcolaStep()
{
    if (correctRange(m_configuration)) {
        m_messages.beepAndWarn(tr("Minimum sweeping range is ") + NumberText::fromInteger(kMinSweepRange) +
                               QStringLiteral(" Hz.\r") + m_configuration.startNotice + u'\r' +
                               m_configuration.stopNotice);
    }
    showRange();
    m_configuration.stepFreq = stepOfRange(m_configuration.startFreq, m_configuration.stopFreq);
    m_step->setText(NumberText().masked(m_configuration.stepFreq, kMaskHertz));
}

void RangeEntry::planWithoutTable()
{
    calcolaStep();
    m_plannedStart = m_configuration.startFreq;
    m_plannedStop = m_configuration.stopFreq;
}

void RangeEntry::aggiornaLblFrequenza()
{
    planWithoutTable();
    m_table.inizializzaGrid();
    m_readouts.show(m_table.text(1, SweepTable::FrequencyColumn),
                    m_table.text(kSweepPoints / 2, SweepTable::FrequencyColumn),
                    m_table.text(kSweepPoints, SweepTable::FrequencyColumn));
    const NumberText numbers;
    const double shownRange = numbers.toDouble(m_readouts.stopText()) - numbers.toDouble(m_readouts.startText());
    // A valid plan never has a step of zero; the check only prevents a division by zero.
    const double samples = m_configuration.stepFreq != 0 ? roundHalfEven(shownRange / m_configuration.stepFreq) : 0.0;
    m_sampleCount->setText(tr("N.Campioni ") + numbers.fromDouble(samples));
    emit planned();
}

bool RangeEntry::isPlanStale() const
{
    return m_configuration.startFreq != m_plannedStart || m_configuration.stopFreq != m_plannedStop;
}

void RangeEntry::setRange(std::int32_t start, std::int32_t stop)
{
    setStart(start);
    setStop(stop);
}

} // namespace calvorn
