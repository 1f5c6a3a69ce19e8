// SPDX-License-Identifier: MIT
#pragma once

#include "controls/digit_bars.h"
#include "core/configuration.h"
#include "core/messages.h"
#include "widgets/entry_box.h"

#include <QGroupBox>

#include <cstdint>

namespace calvorn {

// An entry field for a frequency within the generator's limits: a box with a bar over each digit. The owner connects
// the events to enter(), leave() and stepDigit(), each through a separately named handler.
class FrequencyBox : public QGroupBox
{
    Q_OBJECT

public:
    // suffix: "Start" names the box txtStart and its bars VScrollStart_0 to _8. frequency: Hz, must outlive the box.
    FrequencyBox(const char *suffix, const QString &title, const QString &toolTip, const Configuration &configuration,
                 std::int32_t &frequency, Messages &messages, QWidget *parent = nullptr);

    EntryBox *text() const { return m_text; }
    DigitBars *bars() const { return m_bars; }

    // Sets the frequency as if the user had typed it.
    void setFrequency(std::int32_t hertz);

    // Shows the frequency. A focused box shows plain digits; text that is still being typed is not overwritten.
    void showFrequency();

    void enter();
    // Replaces text that is not a number with the previous frequency. Replaces a number beyond a limit with that limit,
    // and beeps.
    void leave();
    void stepDigit(int digit);

signals:
    // A frequency was accepted, regardless of how it was entered.
    void accepted();

private:
    const Configuration &m_configuration;
    std::int32_t &m_frequency;
    Messages &m_messages;
    EntryBox *m_text;
    DigitBars *m_bars;
    bool m_scrollBusy = false;
};

} // namespace calvorn
