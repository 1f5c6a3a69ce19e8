// SPDX-License-Identifier: MIT
#pragma once

#include "setup/number_entry.h"
#include "setup/set_up_page.h"

#include <QComboBox>
#include <QLabel>

namespace calvorn {

// The law that converts detector volts to the input level: linear, logarithmic with slope and intercept, or a
// calibration table. Part of the detector page.
class DetectorLawBox : public SetUpPage
{
    Q_OBJECT

public:
    explicit DetectorLawBox(const SetUpContext &context);

    void fill() override;

private:
    void buildEntries();
    void cboLaw_Click(int index);
    void cboPreset_Click(int index);
    void showLaw();
    void showPreset();
    void takeTyped(double &number, double typed);

    QComboBox *m_law = nullptr;
    QComboBox *m_preset = nullptr;
    NumberEntry *m_slope = nullptr;
    NumberEntry *m_intercept = nullptr;
    QLabel *m_meaning = nullptr;
};

} // namespace calvorn
