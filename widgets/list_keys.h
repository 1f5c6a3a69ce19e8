// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace calvorn {

// Event filter for the application under Wayland. The list of a combo box acts on Escape and Return while Qt is still
// looking for a shortcut. Under Wayland, the key then goes to the window below the closed list: Escape would close the
// dialog, and Return would press its default button. The filter lets the list act on the key itself instead.
class ListKeys : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool m_forwards = false;
};

} // namespace calvorn
