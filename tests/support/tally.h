// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QFile>
#include <QList>
#include <QTemporaryDir>

namespace calvorn::test {

// FNV-1a. Because of the detector's noise, no two vectors have the same sum.
inline quint64 vectorSum(const QList<int> &vector)
{
    quint64 sum = 0xcbf29ce484222325U;
    for (const int count : vector)
        sum = (sum ^ static_cast<quint64>(count)) * 0x100000001b3U;
    return sum;
}

// The log of the tallying server (tally_server.cpp), one event per line:
//   plan <start> <step>    PrepareSweep, Hz
//   vector <sum>           the driver has emitted a vector; sum: vectorSum()
//   complete               a sweep has completed
//   error <code>
class Tally
{
public:
    // haste: factor by which a paced board's clock runs faster than real time.
    explicit Tally(int haste)
        : m_file(m_folder.filePath(QStringLiteral("tally")))
    {
        if (!m_file.open(QIODevice::ReadWrite))
            qFatal("cannot make the tally");
        qputenv("CALVORN_TALLY", QFile::encodeName(m_file.fileName()));
        qputenv("CALVORN_TALLY_HASTE", QByteArray::number(haste));
    }

    static QString program() { return QCoreApplication::applicationDirPath() + QStringLiteral("/tally_server"); }

    // Returns the lines since the last call.
    QList<QByteArray> news()
    {
        QList<QByteArray> lines = m_file.readAll().split('\n');
        lines.removeAll(QByteArray());
        return lines;
    }

private:
    QTemporaryDir m_folder;
    QFile m_file;
};

} // namespace calvorn::test
