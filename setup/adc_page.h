// SPDX-License-Identifier: MIT
#pragma once

#include "setup/detector_law_box.h"
#include "setup/number_entry.h"
#include "setup/set_up_page.h"

#include <QLabel>
#include <QRadioButton>

#include <array>

namespace calvorn {

// The detector: converter, volts per count and channel.
class AdcPage : public SetUpPage
{
    Q_OBJECT

public:
    explicit AdcPage(const SetUpContext &context);

    void fill() override;

private:
    QWidget *buildConverters();
    void buildEntries();
    void txtADCchannel_Change();

    std::array<QRadioButton *, kAdcDevices.size()> m_optAdc{};
    NumberEntry *m_step = nullptr;
    NumberEntry *m_channel = nullptr;
    QLabel *m_channelMeaning = nullptr;
    QLabel *m_offset = nullptr;
    DetectorLawBox *m_law = nullptr;
};

} // namespace calvorn
