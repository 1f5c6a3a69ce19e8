// SPDX-License-Identifier: MIT
#include "platform/entry_box.h"

#include <QFocusEvent>
#include <QMouseEvent>

namespace calvorn {

namespace {

bool isChangeOfControl(Qt::FocusReason reason)
{
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason;
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

void EntryBox::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    if (!isChangeOfControl(event->reason()))
        return;
    emit gotFocus();
    if (event->reason() != Qt::MouseFocusReason)
        selectAll();
}

// The whole number: a line of text would end a word at its decimal separator.
void EntryBox::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        selectAll();
}

void EntryBox::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (isChangeOfControl(event->reason()))
        emit lostFocus();
}

} // namespace calvorn
