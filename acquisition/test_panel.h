// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"
#include "core/log.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace calvorn {

// frameTest, shown while the log is on: the log list, the receive box, the error counter and the forced stop.
class TestPanel : public QGroupBox
{
    Q_OBJECT

public:
    TestPanel(Log &log, ErrorBoundary &boundary, QWidget *parent = nullptr);

    // Shows a sample as it arrives: "index:value".
    void echoSample(int index, int value);

    // Raises txtErrori by one.
    void countError();

signals:
    void forcedStop();

private:
    // RuntimeError(Overflow) when the list would have more lines than a 16-bit number counts.
    void appendLine(const QString &text);

    QListWidget *m_log;
    QLineEdit *m_received;
    QLineEdit *m_errors;
    QPushButton *m_forcedStop;
};

} // namespace calvorn
