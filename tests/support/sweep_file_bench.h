// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/fake_server_control.h"
#include "tests/support/window_bench.h"

#include <QAction>
#include <QRandomGenerator>

#include <cmath>

namespace calvorn::test {

inline constexpr char kSweepFileSettings[] =
    "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nADC Step=0.00244\r\nADC Offset=0\r\n[Debug]\r\nLog=1\r\n"
    "[Parallel Port]\r\nLPT=0\r\n[Calvorn]\r\nStart=1000000\r\nStop=5000000\r\n";

// The main window with a sweep in its table.
struct SweepFileBench : WindowBench
{
    SweepFileBench()
        : WindowBench(FakeServerControl::program(), kSweepFileSettings)
    {
        desktop.fileChoice = folder.path() + QStringLiteral("/sweep.csv");
        deliver(1);
    }

    void deliver(int seed)
    {
        QVector<int> counts;
        QRandomGenerator random(static_cast<quint32>(seed));
        for (int i = 0; i < 400; ++i)
            counts.append(static_cast<int>(random.bounded(1024)));
        emit driver()->aVettore(counts);
    }

    void trigger(const char *action) { window->findChild<QAction *>(QString::fromLatin1(action))->trigger(); }

    QStringList cells() const
    {
        QStringList all;
        for (int row = 0; row <= 400; ++row)
            for (int column = 0; column < 3; ++column)
                all.append(table()->text(row, column));
        return all;
    }

    QByteArray file() const
    {
        QFile csv(desktop.fileChoice);
        return csv.open(QIODevice::ReadOnly) ? csv.readAll() : QByteArray("(no file)");
    }
    void writeFile(const QByteArray &content) const
    {
        QFile csv(desktop.fileChoice);
        QVERIFY(csv.open(QIODevice::WriteOnly));
        csv.write(content);
    }
};

// Returns a complete sweep file: row r is at 2 MHz + r kHz with the count r.
inline QByteArray wholeFile(const QList<int> &order)
{
    QByteArray text("\"Sample N\",\"Frequency\",\"DAC sample\",\"milliVolt\"\r\n");
    for (const int row : order)
        text += QByteArray::number(row) + ',' + QByteArray::number(2000000 + row * 1000) + ',' +
                QByteArray::number(row) + ',' + QByteArray::number(std::nearbyint(row * 2.44)) + "\r\n";
    return text;
}

inline QList<int> rowsFromTo(int first, int last)
{
    QList<int> rows;
    for (int row = first; row <= last; ++row)
        rows.append(row);
    return rows;
}

} // namespace calvorn::test
