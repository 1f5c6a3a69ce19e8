// SPDX-License-Identifier: MIT
#include "controls/frequency_box.h"

#include "core/checked_arithmetic.h"
#include "core/number_text.h"

#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace calvorn {

namespace {

constexpr int kDigitMargins = 6; // logical pixels above and below the digits, in total

} // namespace

FrequencyBox::FrequencyBox(const char *suffix, const QString &title, const QString &toolTip,
                           const Configuration &configuration, std::int32_t &frequency, Messages &messages,
                           QWidget *parent)
    : QGroupBox(title, parent)
    , m_configuration(configuration)
    , m_frequency(frequency)
    , m_messages(messages)
    , m_text(new EntryBox(this))
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(6, 2, 6, 6);
    column->setSpacing(1);
    m_text->setObjectName(QStringLiteral("txt") + QString::fromLatin1(suffix));
    m_text->setToolTip(toolTip);
    m_text->setAccessibleName(title);
    m_text->setFont(DigitBars::fontOfDigits(m_text->font()));
    // Digits have no descenders, so the box needs no height for them.
    m_text->setFixedHeight(m_text->fontMetrics().ascent() + kDigitMargins);
    m_text->setMinimumWidth(m_text->fontMetrics().horizontalAdvance(DigitBars::widestText()) +
                            2 * DigitBars::kBoxPadding);
    m_bars = new DigitBars(QStringLiteral("VScroll") + QString::fromLatin1(suffix), *m_text, this);
    column->addWidget(m_bars);
    column->addWidget(m_text);
}

void FrequencyBox::showFrequency()
{
    const QString masked = NumberText().masked(m_frequency, kMaskHertz);
    if (!m_text->hasFocus()) {
        m_text->setText(masked);
    } else if (!m_text->isBeingTyped()) {
        const bool allSelected = m_text->selectedText() == m_text->text();
        m_text->setText(NumberText().generalNumber(masked));
        if (allSelected)
            m_text->selectAll();
    }
}

void FrequencyBox::setFrequency(std::int32_t hertz)
{
    m_frequency = hertz;
    showFrequency();
    emit accepted();
}

void FrequencyBox::enter()
{
    const NumberText numbers;
    if (numbers.isNumeric(m_text->text()))
        m_text->setText(numbers.generalNumber(m_text->text()));
}

// Shows the masked number even while the box still has the focus, because the user is leaving it.
void FrequencyBox::leave()
{
    const NumberText numbers;
    if (!numbers.isNumeric(m_text->text()))
        m_text->setText(NumberText::fromInteger(m_frequency));
    double value = numbers.toDouble(m_text->text());
    if (value < m_configuration.ddsMinFreq) {
        value = m_configuration.ddsMinFreq;
        m_messages.desktop().beep();
    }
    if (value > m_configuration.ddsMaxFreq) {
        value = m_configuration.ddsMaxFreq;
        m_messages.desktop().beep();
    }
    m_frequency = roundToInteger<std::int32_t>(value);
    m_text->setText(NumberText().masked(m_frequency, kMaskHertz));
    emit accepted();
}

void FrequencyBox::stepDigit(int digit)
{
    // Returning the bar to rest emits changed() again.
    if (m_scrollBusy)
        return;
    m_text->commit();
    const QScopedValueRollback guard(m_scrollBusy, true);
    std::int32_t weight = 1;
    for (int i = 0; i < digit; ++i)
        weight *= 10;
    std::int32_t frequency = m_frequency;
    const int position = m_bars->position(digit);
    m_bars->rest(digit);
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
    setFrequency(frequency);
}

} // namespace calvorn
