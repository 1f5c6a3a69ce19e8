// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"

#include <QListWidget>

namespace calvorn {

// lstLOG: the log lines; the newest line is current. Lines can be copied, and the whole log can be saved as a text
// file.
class LogList : public QListWidget
{
    Q_OBJECT

public:
    LogList(Messages &messages, ErrorBoundary &boundary, QWidget *parent = nullptr);

    // Appends a line and scrolls to it. Keeps a selection of several lines, so that the user can copy it. Throws
    // RuntimeError(Overflow) if the number of lines would not fit into 16 bits.
    void appendLine(const QString &text);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void copy() const;
    void save();

    Messages &m_messages;
    QString m_lastFile;
};

} // namespace calvorn
