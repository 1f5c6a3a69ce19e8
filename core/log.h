// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QObject>
#include <QStringList>

namespace calvorn {

// The diagnostic log. The test panel shows its lines in the list lstLOG; lines written before the panel exists are
// stored for it.
class Log : public QObject
{
    Q_OBJECT

public:
    explicit Log(const Configuration &configuration, QObject *parent = nullptr);

    // Appends a line if logging is on. Callers include their own prefix in the text ("P> ", "L> ", "V> ").
    void writeLog(const QString &text);

    // Returns the lines written so far and stops storing new ones; later calls return nothing.
    QStringList takeEarlyLines();

signals:
    void lineWritten(const QString &text);

private:
    const Configuration &m_configuration;
    QStringList m_earlyLines;
    bool m_taken = false;
};

} // namespace calvorn
