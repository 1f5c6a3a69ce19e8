// SPDX-License-Identifier: MIT
#pragma once

#include <QDoubleSpinBox>

namespace calvorn {

// A spin box for real numbers that accepts both "0.5" and "0,5" in every locale.
class RealSpinBox : public QDoubleSpinBox
{
    Q_OBJECT

public:
    using QDoubleSpinBox::QDoubleSpinBox;

    QValidator::State validate(QString &text, int &position) const override;
};

} // namespace calvorn
