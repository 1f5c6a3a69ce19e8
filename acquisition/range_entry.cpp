// SPDX-License-Identifier: MIT
#include "acquisition/range_entry.h"

#include "acquisition/frequency_plan.h"
#include "core/checked_arithmetic.h"
#include "core/number_text.h"

#include <QFormLayout>
#include <QGroupBox>
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
    m_start = makeBox("txtStart", tr("Start Frequency - Hz"), tr("Enter the start frequency in Hz"));
    m_stop = makeBox("txtStop", tr("Stop Frequency - Hz"), tr("Enter the stop frequency in Hz"));

    m_step = new EntryBox(this);
    m_step->setObjectName(QStringLiteral("txtStep"));
    m_step->setReadOnly(true);
    m_step->setFocusPolicy(Qt::NoFocus);
    m_step->setToolTip(tr("Distance between two samples in Hz"));
    m_step->setAccessibleName(tr("Step in Hz"));
    auto *form = new QFormLayout;
    form->addRow(tr("Step - Hz"), m_step);
    column->addLayout(form);

    m_sampleCount = new QLabel(this);
    m_sampleCount->setObjectName(QStringLiteral("lblCampioni"));
    m_sampleCount->setToolTip(tr("Number of samples in the range"));

    boundary.connect(m_start, &EntryBox::gotFocus, this, "txtStart_GotFocus", [this] { txtStart_GotFocus(); });
    boundary.connect(m_stop, &EntryBox::gotFocus, this, "txtStop_GotFocus", [this] { txtStop_GotFocus(); });
    boundary.connect(m_start, &EntryBox::lostFocus, this, "txtStart_LostFocus", [this] { txtStart_LostFocus(); });
    boundary.connect(m_stop, &EntryBox::lostFocus, this, "txtStop_LostFocus", [this] { txtStop_LostFocus(); });
}

EntryBox *RangeEntry::makeBox(const char *name, const QString &frameTitle, const QString &toolTip)
{
    auto *frame = new QGroupBox(frameTitle, this);
    auto *row = new QVBoxLayout(frame);
    auto *box = new EntryBox(frame);
    box->setObjectName(QString::fromLatin1(name));
    box->setToolTip(toolTip);
    box->setAccessibleName(frameTitle);
    QFont font = box->font();
    font.setPointSizeF(font.pointSizeF() * 1.25);
    box->setFont(font);
    row->addWidget(box);
    layout()->addWidget(frame);
    return box;
}

void RangeEntry::showRange()
{
    const NumberText numbers;
    m_start->setText(numbers.masked(m_configuration.startFreq, kMaskHertz));
    m_stop->setText(numbers.masked(m_configuration.stopFreq, kMaskHertz));
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

void RangeEntry::aggiornaLblFrequenza()
{
    calcolaStep();
    m_plannedStart = m_configuration.startFreq;
    m_plannedStop = m_configuration.stopFreq;
    m_table.inizializzaGrid();
    m_readouts.show(m_table.text(1, SweepTable::FrequencyColumn),
                    m_table.text(kSweepPoints / 2, SweepTable::FrequencyColumn),
                    m_table.text(kSweepPoints, SweepTable::FrequencyColumn));
    const NumberText numbers;
    const double shownRange = numbers.toDouble(m_readouts.stopText()) - numbers.toDouble(m_readouts.startText());
    // A step of zero, which no valid plan has, would have no count.
    const double samples = m_configuration.stepFreq != 0 ? roundHalfEven(shownRange / m_configuration.stepFreq) : 0.0;
    m_sampleCount->setText(tr("N.Campioni ") + numbers.fromDouble(samples));
    emit curveStale();
}

bool RangeEntry::isPlanStale() const
{
    return m_configuration.startFreq != m_plannedStart || m_configuration.stopFreq != m_plannedStop;
}

void RangeEntry::enterBox(const Box &box)
{
    const NumberText numbers;
    if (numbers.isNumeric(box.text->text()))
        box.text->setText(numbers.generalNumber(box.text->text()));
}

void RangeEntry::leaveBox(const Box &box)
{
    const NumberText numbers;
    if (!numbers.isNumeric(box.text->text()))
        box.text->setText(NumberText::fromInteger(*box.frequency));
    double value = numbers.toDouble(box.text->text());
    if (value < m_configuration.ddsMinFreq) {
        value = m_configuration.ddsMinFreq;
        m_messages.desktop().beep();
    }
    if (value > m_configuration.ddsMaxFreq) {
        value = m_configuration.ddsMaxFreq;
        m_messages.desktop().beep();
    }
    *box.frequency = roundToInteger<std::int32_t>(value);
    box.text->setText(numbers.masked(*box.frequency, kMaskHertz));
    emit rangeChanged();
}

} // namespace calvorn
