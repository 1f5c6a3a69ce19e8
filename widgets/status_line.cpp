// SPDX-License-Identifier: MIT
#include "widgets/status_line.h"

#include <QTextDocument>

namespace calvorn {

StatusLine::StatusLine(QWidget *parent)
    : ElidedLabel(parent)
{
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    // A click selects text but must not take the focus from a text box.
    setFocusPolicy(Qt::NoFocus);
    setContentsMargins(6, 0, 6, 0);
}

void StatusLine::showMessage(const QString &text)
{
    m_message = text.simplified();
    showBoth();
}

void StatusLine::setMark(const QString &text)
{
    if (text == m_mark)
        return;
    m_mark = text;
    showBoth();
}

void StatusLine::showBoth()
{
    const QString between = m_mark.isEmpty() || m_message.isEmpty() ? QString() : QStringLiteral(" - ");
    const QString line = m_mark + between + m_message;
    setText(line);
    // Escape text that Qt would treat as rich text.
    setToolTip(Qt::mightBeRichText(line) ? Qt::convertFromPlainText(line) : line);
}

void StatusLine::paintEvent(QPaintEvent *event)
{
    if (hasSelectedText())
        QLabel::paintEvent(event);
    else
        ElidedLabel::paintEvent(event);
}

} // namespace calvorn
