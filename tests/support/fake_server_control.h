// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

namespace calvorn::test {

// Controls the fake acquisition server (fake_server.cpp) and reads its call log.
class FakeServerControl
{
public:
    FakeServerControl() { qputenv("CALVORN_FAKE_CONTROL", controlFile().toUtf8()); }

    static QString program() { return QCoreApplication::applicationDirPath() + QStringLiteral("/fake_server"); }

    void setRules(const QStringList &rules) const
    {
        QFile file(controlFile());
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write the rules of the fake server");
        file.write(rules.join(u'\n').toUtf8());
    }

    // Returns the calls since the last takeCalls(), such as "aLPT.SetSpeed(0)".
    QStringList takeCalls() const
    {
        QFile file(controlFile() + QStringLiteral(".log"));
        QStringList calls;
        if (file.open(QIODevice::ReadOnly))
            calls = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
        file.close();
        file.remove();
        return calls;
    }

private:
    QString controlFile() const { return m_folder.filePath(QStringLiteral("rules")); }

    QTemporaryDir m_folder;
};

} // namespace calvorn::test
