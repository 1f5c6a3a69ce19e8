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

} // namespace calvorn
