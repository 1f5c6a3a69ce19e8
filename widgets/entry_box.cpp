// SPDX-License-Identifier: MIT
#include "widgets/entry_box.h"

#include <QApplication>
#include <QFocusEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>

#include <utility>

namespace calvorn {

namespace {

bool isChangeOfControl(Qt::FocusReason reason)
{
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
}

// Returns whether a click on the widget moves the focus. Leaving the box then commits the entry.
bool takesFocus(const QWidget *widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (widget->isEnabled() && (widget->focusPolicy() & Qt::ClickFocus) == Qt::ClickFocus)
            return true;
        if (widget->isWindow())
            return false;
    }
    return false;
}

// Escape and the arrow keys do not activate a menu entry.
bool choosesInMenu(const QKeyEvent *key)
{
    switch (key->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        return false;
    default:
        return true;
    }
}

bool isMenu(const QObject *object)
{
    return qobject_cast<const QMenu *>(object) || qobject_cast<const QMenuBar *>(object);
}

} // namespace

EntryBox::EntryBox(QWidget *parent)
    : QLineEdit(parent)
{
    setAlignment(Qt::AlignRight);
    connect(this, &QLineEdit::returnPressed, this, [this] {
        setModified(false);
        emit lostFocus();
        emit gotFocus();
        selectAll();
    });
}

void EntryBox::commit()
{
    if (!isBeingTyped())
        return;
    setModified(false);
    emit lostFocus();
    emit gotFocus();
}

void EntryBox::commitPending()
{
    for (QWidget *widget : QApplication::allWidgets())
        if (auto *box = qobject_cast<EntryBox *>(widget))
            box->commit();
}

void EntryBox::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    m_entered = true;
    qApp->installEventFilter(this);
    if (!isChangeOfControl(event->reason()))
        return;
    emit gotFocus();
    if (event->reason() == Qt::MouseFocusReason)
        m_selectsOnRelease = true;
    else if (event->reason() != Qt::MenuBarFocusReason)
        selectAll();
}

void EntryBox::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (!isChangeOfControl(event->reason()))
        return;
    leave();
    emit lostFocus();
}

// Closing the window discards a pending entry.
void EntryBox::hideEvent(QHideEvent *event)
{
    QLineEdit::hideEvent(event);
    leave();
}

void EntryBox::leave()
{
    qApp->removeEventFilter(this);
    m_entered = false;
    m_selectsOnRelease = false;
}

void EntryBox::mousePressEvent(QMouseEvent *event)
{
    // Only the click that enters the box selects its whole text.
    m_selectsOnRelease = m_selectsOnRelease && event->button() == Qt::LeftButton;
    QLineEdit::mousePressEvent(event);
}

// The press has moved the caret. Text selected by dragging remains selected.
void EntryBox::mouseReleaseEvent(QMouseEvent *event)
{
    QLineEdit::mouseReleaseEvent(event);
    if (std::exchange(m_selectsOnRelease, false) && !hasSelectedText())
        selectAll();
}

// Selects the whole number; QLineEdit would stop at the decimal separator.
void EntryBox::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        selectAll();
}

// Commits the entry before an event elsewhere takes effect.
bool EntryBox::eventFilter(QObject *watched, QEvent *event)
{
    bool actsElsewhere = false;
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        const auto *widget = qobject_cast<QWidget *>(watched);
        actsElsewhere = widget && !takesFocus(widget);
        break;
    }
    case QEvent::MouseButtonRelease:
        actsElsewhere = isMenu(watched);
        break;
    case QEvent::KeyPress:
        actsElsewhere = isMenu(watched) && choosesInMenu(static_cast<QKeyEvent *>(event));
        break;
    case QEvent::Shortcut:
        actsElsewhere = true;
        break;
    default:
        return false;
    }
    if (actsElsewhere && !isPartOfThis(watched))
        commit();
    return false;
}

// Returns whether the object belongs to the box (its context menu, for example).
bool EntryBox::isPartOfThis(const QObject *object) const
{
    while (object && object != this)
        object = object->parent();
    return object == this;
}

} // namespace calvorn
