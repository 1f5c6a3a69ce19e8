// SPDX-License-Identifier: MIT
#include "widgets/real_spin_box.h"

namespace calvorn {

QValidator::State RealSpinBox::validate(QString &text, int &position) const
{
    const QString separator = locale().decimalPoint();
    for (const QChar other : {u'.', u','})
        text.replace(other, separator);
    return QDoubleSpinBox::validate(text, position);
}

} // namespace calvorn
