// SPDX-License-Identifier: MIT
#include "controls/range_entry.h"

#include "core/checked_arithmetic.h"
#include "core/number_text.h"
#include "instrument/frequency_plan.h"
#include "widgets/read_out.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace calvorn {

namespace {

constexpr int kDigitMargins = 6; // logical pixels above and below the digits of a box, together

} // namespace

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
    m_start =
        makeBox("Start", tr("Start Frequency - Hz"), tr("Enter the start frequency in Hz"), configuration.startFreq);
    m_stop = makeBox("Stop", tr("Stop Frequency - Hz"), tr("Enter the stop frequency in Hz"), configuration.stopFreq);

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

    boundary.connect(m_start.text, &EntryBox::gotFocus, this, "txtStart_GotFocus", [this] { txtStart_GotFocus(); });
    boundary.connect(m_stop.text, &EntryBox::gotFocus, this, "txtStop_GotFocus", [this] { txtStop_GotFocus(); });
    boundary.connect(m_start.text, &EntryBox::lostFocus, this, "txtStart_LostFocus", [this] { txtStart_LostFocus(); });
    boundary.connect(m_stop.text, &EntryBox::lostFocus, this, "txtStop_LostFocus", [this] { txtStop_LostFocus(); });
    boundary.connect(m_start.bars, &DigitBars::changed, this, "VScrollStart_Change",
                     [this](int index) { VScrollStart_Change(index); });
    boundary.connect(m_stop.bars, &DigitBars::changed, this, "VScrollStop_Change",
                     [this](int index) { VScrollStop_Change(index); });
}

RangeEntry::Box RangeEntry::makeBox(const char *suffix, const QString &frameTitle, const QString &toolTip,
                                    std::int32_t &frequency)
{
    auto *frame = new QGroupBox(frameTitle, this);
    auto *column = new QVBoxLayout(frame);
    column->setContentsMargins(6, 2, 6, 6);
    column->setSpacing(1);
    auto *box = new EntryBox(frame);
    box->setObjectName(QStringLiteral("txt") + QString::fromLatin1(suffix));
    box->setToolTip(toolTip);
    box->setAccessibleName(frameTitle);
    box->setFont(DigitBars::fontOfDigits(box->font()));
    // Digits have no descenders: the box needs no more than they do.
    box->setFixedHeight(box->fontMetrics().ascent() + kDigitMargins);
    box->setMinimumWidth(box->fontMetrics().horizontalAdvance(DigitBars::widestText()) + 2 * DigitBars::kBoxPadding);
    auto *bars = new DigitBars(QStringLiteral("VScroll") + QString::fromLatin1(suffix), *box, frame);
    column->addWidget(bars);
    column->addWidget(box);
    layout()->addWidget(frame);
    return {box, bars, &frequency};
}

void RangeEntry::showRange()
{
    for (const Box &box : {m_start, m_stop})
        showFrequency(box);
}

// A box that has the focus keeps its plain digits, and what is being typed into it.
void RangeEntry::showFrequency(const Box &box)
{
    const QString masked = NumberText().masked(*box.frequency, kMaskHertz);
    if (!box.text->hasFocus()) {
        box.text->setText(masked);
    } else if (!box.text->isBeingTyped()) {
        const bool allSelected = box.text->selectedText() == box.text->text();
        box.text->setText(NumberText().generalNumber(masked));
        if (allSelected)
            box.text->selectAll();
    }
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
    // A step of zero, which no valid plan has, would have no count.
    const double samples = m_configuration.stepFreq != 0 ? roundHalfEven(shownRange / m_configuration.stepFreq) : 0.0;
    m_sampleCount->setText(tr("N.Campioni ") + numbers.fromDouble(samples));
    emit planned();
}

bool RangeEntry::isPlanStale() const
{
    return m_configuration.startFreq != m_plannedStart || m_configuration.stopFreq != m_plannedStop;
}

void RangeEntry::setFrequency(const Box &box, std::int32_t hertz)
{
    *box.frequency = hertz;
    box.text->setModified(false);
    showFrequency(box);
    emit rangeChanged();
}

void RangeEntry::setRange(std::int32_t start, std::int32_t stop)
{
    setStart(start);
    setStop(stop);
}

void RangeEntry::enterBox(const Box &box)
{
    const NumberText numbers;
    if (numbers.isNumeric(box.text->text()))
        box.text->setText(numbers.generalNumber(box.text->text()));
}

// The box shows the mask even while it still has the focus: it is being left.
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
    box.text->setText(NumberText().masked(*box.frequency, kMaskHertz));
    emit rangeChanged();
}

void RangeEntry::stepDigit(const Box &box, int index)
{
    // Putting the bar back raises the event again.
    if (m_scrollBusy)
        return;
    box.text->commit();
    const QScopedValueRollback guard(m_scrollBusy, true);
    std::int32_t weight = 1;
    for (int i = 0; i < index; ++i)
        weight *= 10;
    std::int32_t frequency = *box.frequency;
    const int position = box.bars->position(index);
    box.bars->rest(index);
    if (position == DigitBars::kUp)
        frequency = checkedAdd(frequency, weight);
    else if (position == DigitBars::kDown && weight < frequency)
        frequency -= weight;
    if (frequency <= m_configuration.ddsMinFreq) {
        frequency = m_configuration.ddsMinFreq;
        m_messages.desktop().beep();
    }
    if (frequency > m_configuration.ddsMaxFreq) {
        frequency = m_configuration.ddsMaxFreq;
        m_messages.desktop().beep();
    }
    setFrequency(box, frequency);
}

} // namespace calvorn
