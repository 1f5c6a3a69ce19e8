// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/elided_label.h"

namespace calvorn {

// The last message, on one line that takes what room there is and asks for none. The tip has the whole text. It can be
// selected with the mouse: while a part of it is, it is shown from its beginning.
class StatusLine : public ElidedLabel
{
    Q_OBJECT

public:
    explicit StatusLine(QWidget *parent = nullptr);

    // A text of several lines becomes one.
    void showMessage(const QString &text);

    // What goes on, ahead of the message, until it is over: an empty text.
    void setMark(const QString &text);

    QSize minimumSizeHint() const override { return {0, fontMetrics().height()}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void showBoth();

    QString m_mark;
    QString m_message;
};

} // namespace calvorn
