// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace calvorn {

enum class HelpIcon { Back, Forward, FirstPage, Close };

// Returns an icon for the tool bar of the help. It is drawn in the desktop's colour of button text, so that it is
// visible on dark desktops, too, and follows changes of the desktop's colours.
QIcon helpIcon(HelpIcon icon);

} // namespace calvorn
