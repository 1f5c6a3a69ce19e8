// SPDX-License-Identifier: MIT
#pragma once

#include <QRadioButton>
#include <QWidget>

namespace calvorn {

// Checks one of the options in a frame and makes it the only one reachable with the Tab key. By default, Qt lets Tab
// enter a group at its first or last button until one of them has had the focus.
inline void chooseOption(QRadioButton *option)
{
    option->setChecked(true);
    for (QRadioButton *other : option->parentWidget()->findChildren<QRadioButton *>(Qt::FindDirectChildrenOnly))
        other->setFocusPolicy(other == option ? Qt::StrongFocus : Qt::ClickFocus);
}

// Unchecks all options in the frame of `option`.
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
