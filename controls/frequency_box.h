// SPDX-License-Identifier: MIT
#pragma once

#include "controls/digit_bars.h"
#include "core/configuration.h"
#include "core/messages.h"
#include "widgets/entry_box.h"

#include <QGroupBox>

#include <cstdint>

namespace calvorn {

// The entry of a frequency within the limits of the generator: a box with a bar over each digit. Whoever owns it
// connects its events, each handler by its own name, to enter(), leave() and stepDigit().
class FrequencyBox : public QGroupBox
{
    Q_OBJECT

public:
    // suffix: "Start" names the box txtStart and its bars VScrollStart_0 to _8. frequency: Hz, outlives the box.
    FrequencyBox(const char *suffix, const QString &title, const QString &toolTip, const Configuration &configuration,
                 std::int32_t &frequency, Messages &messages, QWidget *parent = nullptr);

    EntryBox *text() const { return m_text; }
    DigitBars *bars() const { return m_bars; }

    // A frequency from elsewhere; accepted like a typed one.
    void setFrequency(std::int32_t hertz);

    // A box that has the focus keeps its plain digits, and what is being typed into it.
    void showFrequency();

    void enter();
    // What is no number gives way to the former frequency; what is beyond a limit to the limit, with a beep.
    void leave();
    void stepDigit(int digit);

signals:
    // The frequency was entered anew, by whatever way.
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
