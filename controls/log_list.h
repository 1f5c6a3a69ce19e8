// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"

#include <QListWidget>

namespace calvorn {

// lstLOG: the lines of the log, the newest one current. Lines can be copied, and the whole log saved as a text file.
class LogList : public QListWidget
{
    Q_OBJECT

public:
    LogList(Messages &messages, ErrorBoundary &boundary, QWidget *parent = nullptr);

    // Several selected lines stay selected, for whoever is about to copy them; the list follows all the same.
    // RuntimeError(Overflow) when there would be more lines than a 16-bit number counts.
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
