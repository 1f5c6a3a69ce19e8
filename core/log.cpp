// SPDX-License-Identifier: MIT
#include "core/log.h"

#include <utility>

namespace calvorn {

Log::Log(const Configuration &configuration, QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
{
}

void Log::writeLog(const QString &text)
{
    if (!m_configuration.logDebug)
        return;
    if (!m_taken)
        m_earlyLines.append(text);
    emit lineWritten(text);
}

QStringList Log::takeEarlyLines()
{
    m_taken = true;
    return std::exchange(m_earlyLines, {});
}

} // namespace calvorn
