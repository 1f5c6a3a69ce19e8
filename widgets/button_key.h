// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>

namespace calvorn {

// A key for a button whose caption has no letter to spare; the tool tip, which must be there already, names it.
inline void giveKey(QAbstractButton &button, const QKeySequence &key)
{
    button.setShortcut(key);
    button.setToolTip(button.toolTip() + QStringLiteral(" (") + key.toString(QKeySequence::NativeText) + u')');
}

} // namespace calvorn
