// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// Gives a control its name, for scripts and assistive programs, and its tool tip.
template <typename Control>
Control *named(Control *control, const char *name, const QString &toolTip)
{
    control->setObjectName(QString::fromLatin1(name));
    control->setToolTip(toolTip);
    return control;
}

} // namespace calvorn
