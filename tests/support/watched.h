// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

namespace calvorn::test {

// Reads the board log of the watched server (watched_server.cpp).
class Watched
{
public:
    Watched() { qputenv("CALVORN_WATCHED", path().toUtf8()); }

    static QString program() { return QCoreApplication::applicationDirPath() + QStringLiteral("/watched_server"); }

    // Returns the events since the last forget(), all or of one kind: "Hz", "outputs", "pot" or "said".
    QStringList events(const QString &kind = {}) const
    {
        QFile file(path());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        const QStringList all = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
        return kind.isEmpty() ? all : all.filter(kind + u' ');
    }

    void forget() const { QFile::remove(path()); }

    // The generator's current frequency, Hz.
    double last() const
    {
        const QStringList made = events(QStringLiteral("Hz"));
        return made.isEmpty() ? 0.0 : made.last().section(u' ', 1).toDouble();
    }

private:
    QString path() const { return m_folder.filePath(QStringLiteral("events")); }

    QTemporaryDir m_folder;
};

} // namespace calvorn::test
