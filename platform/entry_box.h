// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

namespace calvorn {

// A text box that tells when the user enters and leaves it. Return counts as leaving and entering again; another
// window or a menu coming to the front does not count.
class EntryBox : public QLineEdit
{
    Q_OBJECT

public:
    explicit EntryBox(QWidget *parent = nullptr);

    // The user is in the middle of an entry, which no news may overwrite.
    bool isBeingTyped() const { return hasFocus() && isModified(); }

signals:
    void gotFocus();
    void lostFocus();

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
};

} // namespace calvorn
