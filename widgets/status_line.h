// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/elided_label.h"

namespace calvorn {

// Shows the last message on one line, which uses the available width but has no minimum width. The tool tip shows the
// full text. The user can select the text with the mouse; while part of it is selected, the line is shown from its
// beginning.
class StatusLine : public ElidedLabel
{
    Q_OBJECT

public:
    explicit StatusLine(QWidget *parent = nullptr);

    // Shows a message, with line breaks replaced by spaces.
    void showMessage(const QString &text);

    // Shows an ongoing activity before the message; an empty string removes it.
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
