// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace calvorn {

enum class HelpIcon { Back, Forward, FirstPage, Close };

// An icon for the tool bar of the help. It is drawn in the colour that the desktop has for the text of buttons, so that
// it is seen on dark desktops, too, and changes with the desktop's colours.
QIcon helpIcon(HelpIcon icon);

} // namespace calvorn
