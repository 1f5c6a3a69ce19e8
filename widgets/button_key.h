// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>

namespace calvorn {

// Assigns a shortcut to a button whose caption has no free letter, and appends it to the tool tip, which must already
// be set.
inline void giveKey(QAbstractButton &button, const QKeySequence &key)
{
    button.setShortcut(key);
    button.setToolTip(button.toolTip() + QStringLiteral(" (") + key.toString(QKeySequence::NativeText) + u')');
}

} // namespace calvorn
