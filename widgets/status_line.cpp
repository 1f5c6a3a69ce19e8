// SPDX-License-Identifier: MIT
#include "widgets/status_line.h"

#include <QTextDocument>

namespace calvorn {

StatusLine::StatusLine(QWidget *parent)
    : ElidedLabel(parent)
{
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    // A click selects, and leaves the focus where one was typing.
    setFocusPolicy(Qt::NoFocus);
    setContentsMargins(6, 0, 6, 0);
}

void StatusLine::showMessage(const QString &text)
{
    const QString line = text.simplified();
    setText(line);
    // A tip is plain text unless it looks like something else.
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
