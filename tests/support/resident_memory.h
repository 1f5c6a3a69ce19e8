// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QString>

namespace calvorn::test {

// Returns a line of /proc/<pid>/status in kB (proc(5)): "VmRSS" is the memory in use, "VmHWM" its peak. -1 if there is
// no such process.
inline qint64 memoryKilobytes(qint64 pid, const QByteArray &line = "VmRSS")
{
    QFile file(QStringLiteral("/proc/%1/status").arg(pid));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &entry : file.readAll().split('\n'))
        if (entry.startsWith(line + ':'))
            return entry.mid(line.size() + 1).trimmed().split(' ').first().toLongLong();
    return -1;
}

} // namespace calvorn::test
