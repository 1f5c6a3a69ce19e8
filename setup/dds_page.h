// SPDX-License-Identifier: MIT
#pragma once

#include "setup/number_entry.h"
#include "setup/set_up_page.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QScrollBar>

#include <array>

namespace calvorn {

// The synthesiser: chip, reference clock, multiplier and frequency limits.
class DdsPage : public SetUpPage
{
    Q_OBJECT

public:
    explicit DdsPage(const SetUpContext &context);

    void fill() override;

private:
    QWidget *buildChips();
    QWidget *buildChipFrames();
    QGroupBox *makeChipFrame(std::size_t chip);
    QWidget *buildMultiplier9951();
    QWidget *buildLimits();
    void addClock(std::size_t chip, QGroupBox *frame);
    NumberEntry *addLimit(const char *name, const QString &toolTip, const QString &accessibleName,
                          const NumberEntry::Binding &binding);

    void optDDSselect_Click(std::size_t chip);
    void multiplierChosen();
    void HScroll1_Change();
    std::int16_t chosenMultiplier() const;
    void showChipFrame();
    void showMultiplier();
    void showClock();

    std::array<QRadioButton *, kDdsDevices.size()> m_optChip{};
    std::array<QGroupBox *, kDdsDevices.size()> m_chipFrames{};
    std::array<NumberEntry *, kDdsDevices.size()> m_clocks{};
    QCheckBox *m_timesSix = nullptr;
    std::array<QRadioButton *, 2> m_optMultiplier{};
    QScrollBar *m_multiplier = nullptr;
    QLabel *m_multiplierText = nullptr;
    NumberEntry *m_maximum = nullptr;
    NumberEntry *m_minimum = nullptr;
    QLabel *m_systemClock = nullptr;
    QLabel *m_verdict = nullptr;
    QLabel *m_offset = nullptr;
};

} // namespace calvorn
