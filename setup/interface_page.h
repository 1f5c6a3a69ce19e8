// SPDX-License-Identifier: MIT
#pragma once

#include "setup/set_up_page.h"

#include <QRadioButton>

#include <array>

namespace calvorn {

// The interface, and the prepared configuration for each interface.
class InterfacePage : public SetUpPage
{
    Q_OBJECT

public:
    explicit InterfacePage(const SetUpContext &context);

    void fill() override;
    void forget() override;

signals:
    // The other pages have new values, or can now be shown.
    void interfaceChosen();

private:
    void optInterface_Click(std::int16_t index);
    void cmdDefault_Click(std::int16_t index);
    void takeDefaults(std::int16_t index);

    std::array<QRadioButton *, 3> m_optInterface{};
};

} // namespace calvorn
