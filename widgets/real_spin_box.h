// SPDX-License-Identifier: MIT
#pragma once

#include <QDoubleSpinBox>

namespace calvorn {

// A box for a real number with arrows. It takes "0.5" and "0,5" alike, whatever the locale.
class RealSpinBox : public QDoubleSpinBox
{
    Q_OBJECT

public:
    using QDoubleSpinBox::QDoubleSpinBox;

    QValidator::State validate(QString &text, int &position) const override;
};

} // namespace calvorn
