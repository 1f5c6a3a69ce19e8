// SPDX-License-Identifier: MIT
#pragma once

#include "platform/profile_file.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace calvorn::test {

// A temporary program folder that contains settings and a server under its usual name.
class ProgramFolder
{
public:
    // server: executable to copy as CalvornAsync; if empty, the folder contains no server.
    explicit ProgramFolder(const QString &server, const QByteArray &settings = {})
    {
        // Copied, not linked, because the server looks for its settings next to its executable.
        if (!server.isEmpty() && !QFile::copy(server, m_folder.filePath(QStringLiteral("CalvornAsync"))))
            qFatal("cannot copy %s", qPrintable(server));
        if (settings.isEmpty())
            return;
        QFile file(iniPath());
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write the settings file of the test");
        file.write(settings);
    }

    // Returns the path of a built file.
    static QString builtFile(const QString &name) { return qEnvironmentVariable("CALVORN_BIN") + u'/' + name; }

    static QByteArray preparedSettings()
    {
        QFile file(QStringLiteral(CALVORN_SOURCE_DIR "/packaging/Calvorn.ini"));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("the prepared settings are missing");
        return file.readAll();
    }

    QString path() const { return m_folder.path(); }
    QString iniPath() const { return m_folder.filePath(QStringLiteral("Calvorn.ini")); }

    QString setting(const char *section, const char *key) const
    {
        return readProfileString(iniPath(), QString::fromLatin1(section), QString::fromLatin1(key));
    }

    void set(const char *section, const char *key, const QString &value) const
    {
        writeProfileString(iniPath(), QString::fromLatin1(section), QString::fromLatin1(key), value);
    }

private:
    QTemporaryDir m_folder;
};

} // namespace calvorn::test
