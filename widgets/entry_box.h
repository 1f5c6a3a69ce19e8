// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

namespace calvorn {

// A text box that reports when the user enters and leaves it. Return counts as leaving and entering again, and so does
// the keyboard's way into the menu bar; another window or a menu that comes to the front does not count.
//
// One rule holds for what is being typed: it is taken, as leaving the box would take it, before the user does anything
// else. A click elsewhere, a shortcut and a choice in a menu do that by themselves, even when the focus stays here.
class EntryBox : public QLineEdit
{
    Q_OBJECT

public:
    explicit EntryBox(QWidget *parent = nullptr);

    // The user is in the middle of an entry, which no update may overwrite.
    bool isBeingTyped() const { return m_entered && isModified(); }

    // Takes what is being typed: lostFocus() and gotFocus(), while the focus stays. Nothing without such an entry.
    void commit();

    // The same for the box that is being typed into, if there is one: for commands that no click or key precedes.
    static void commitPending();

signals:
    void gotFocus();
    void lostFocus();

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isPartOfThis(const QObject *object) const;
    void leave();

    bool m_entered = false;          // has the focus of its window, whatever window is in front
    bool m_selectsOnRelease = false; // the click that entered the box is still held
};

} // namespace calvorn
