// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QObject>
#include <QStringList>

namespace calvorn {

// The diagnostic log. Its lines are shown by the list lstLOG of the test panel; those written before the panel
// is there are kept for it.
class Log : public QObject
{
    Q_OBJECT

public:
    explicit Log(const Configuration &configuration, QObject *parent = nullptr);

    // Appends a line when the log is on, otherwise does nothing. Callers put their own prefix ("P> ", "L> ",
    // "V> ") into the text.
    void writeLog(const QString &text);

    // The lines that came before anybody listened; they are handed out once.
    QStringList takeEarlyLines();

signals:
    void lineWritten(const QString &text);

private:
    const Configuration &m_configuration;
    QStringList m_earlyLines;
    bool m_taken = false;
};

} // namespace calvorn
