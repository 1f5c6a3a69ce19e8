// SPDX-License-Identifier: MIT
#pragma once

#include <QRadioButton>
#include <QWidget>

namespace calvorn {

// Checks one of the options below a frame. The Tab key comes to the checked one from either side; left to itself, the
// toolkit lets it in at the first or the last until one of them has had the focus.
inline void chooseOption(QRadioButton *option)
{
    option->setChecked(true);
    for (QRadioButton *other : option->parentWidget()->findChildren<QRadioButton *>(Qt::FindDirectChildrenOnly))
        other->setFocusPolicy(other == option ? Qt::StrongFocus : Qt::ClickFocus);
}

// Checks none of the options below a frame, of which this is one.
inline void chooseNoOption(const QRadioButton *option)
{
    for (QRadioButton *each : option->parentWidget()->findChildren<QRadioButton *>(Qt::FindDirectChildrenOnly)) {
        each->setAutoExclusive(false);
        each->setChecked(false);
        each->setAutoExclusive(true);
        each->setFocusPolicy(Qt::StrongFocus);
    }
}

} // namespace calvorn
