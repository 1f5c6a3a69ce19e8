// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

namespace calvorn {

// A text box that reports when the user enters and leaves it. Return counts as leaving and re-entering; moving to the
// menu bar with the keyboard counts as leaving. Another window or a menu in front of the box has no effect.
//
// A pending entry is always committed, as if the user had left the box, before any other user action. Clicks elsewhere,
// shortcuts and menu commands commit it even if the focus stays in the box.
class EntryBox : public QLineEdit
{
    Q_OBJECT

public:
    explicit EntryBox(QWidget *parent = nullptr);

    // Returns whether an entry is pending, which updates must not overwrite.
    bool isBeingTyped() const { return m_entered && isModified(); }

    // Commits a pending entry, if there is one: emits lostFocus() and gotFocus() and keeps the focus.
    void commit();

    // Commits the pending entry of any box. For commands that are not preceded by a click or key press.
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

    bool m_entered = false;          // has the focus within its window, even if another window is in front
    bool m_selectsOnRelease = false; // the mouse button that was pressed to enter the box is still down
};

} // namespace calvorn
