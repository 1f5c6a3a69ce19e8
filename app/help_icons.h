// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace calvorn {

enum class HelpIcon { Back, Forward, FirstPage, Close };

// Returns an icon for the help tool bar. It is drawn in the desktop's button-text colour, so it is also visible on dark
// desktops and follows colour changes.
QIcon helpIcon(HelpIcon icon);

} // namespace calvorn
