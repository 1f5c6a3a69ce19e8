// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// Sets the object name of a control, for scripts and assistive technology, and its tool tip.
template <typename Control>
Control *named(Control *control, const char *name, const QString &toolTip)
{
    control->setObjectName(QString::fromLatin1(name));
    control->setToolTip(toolTip);
    return control;
}

} // namespace calvorn
