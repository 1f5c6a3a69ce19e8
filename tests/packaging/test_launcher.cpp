// SPDX-License-Identifier: MIT
// The script behind the commands of an installed package, with stand-ins for the programs that tell how they were
// started.
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(path));
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

} // namespace

class TestLauncher : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_errors;

    QString path(const char *name) const { return m_folder->filePath(QString::fromLatin1(name)); }

    // What the program was started with: its name, then its arguments.
    QStringList started(const char *command, const QStringList &arguments = {}, const QStringList &environment = {})
    {
        QProcess process;
        process.setEnvironment(
            QStringList{QStringLiteral("PATH=/usr/bin:/bin"), QStringLiteral("HOME=") + path("home")} + environment);
        process.start(path("usr/bin/") + QString::fromLatin1(command), arguments);
        process.waitForFinished();
        m_errors = QString::fromUtf8(process.readAllStandardError());
        return QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    }

private slots:
    void init();
    void theFirstStartPreparesAFolder();
    void settingsThatAreThereStay();
    void theDataFolderOfTheEnvironment();
    void aFolderThatCannotBeMadeStillStarts();
    void theToolOnlyReads();
};

void TestLauncher::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    for (const char *folder : {"usr/bin", "usr/lib/calvorn", "home"})
        QVERIFY(QDir().mkpath(path(folder)));
    for (const char *program : {"usr/lib/calvorn/Calvorn", "usr/lib/calvorn/calvorn-sweep"}) {
        write(path(program), "#!/bin/sh\necho \"${0##*/}\"\nprintf '%s\\n' \"$@\"\n");
        QFile::setPermissions(path(program), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    write(path("usr/lib/calvorn/Calvorn.ini"), "prepared");
    QVERIFY(QFile::copy(QStringLiteral(CALVORN_SOURCE_DIR "/packaging/launcher"), path("usr/bin/Calvorn")));
    for (const char *link : {"usr/bin/calvorn", "usr/bin/calvorn-sweep"})
        QVERIFY(QFile::link(QStringLiteral("Calvorn"), path(link)));
}

void TestLauncher::theFirstStartPreparesAFolder()
{
    for (const char *command : {"Calvorn", "calvorn"}) {
        const QString folder = path("home/.local/share/calvorn");
        QCOMPARE(
            started(command, {QStringLiteral("two words")}),
            (QStringList{QStringLiteral("Calvorn"), QStringLiteral("--folder"), folder, QStringLiteral("two words")}));
        QCOMPARE(QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList(QStringLiteral("Calvorn.ini")));
        QCOMPARE(contents(folder + QStringLiteral("/Calvorn.ini")), QByteArray("prepared"));
        QVERIFY(QDir(folder).removeRecursively());
    }
}

void TestLauncher::settingsThatAreThereStay()
{
    started("Calvorn");
    const QString settings = path("home/.local/share/calvorn/Calvorn.ini");
    write(settings, "mine");
    write(path("usr/lib/calvorn/Calvorn.ini"), "of a later version");
    started("Calvorn");
    QCOMPARE(contents(settings), QByteArray("mine"));
    QCOMPARE(m_errors, QString());
}

void TestLauncher::theDataFolderOfTheEnvironment()
{
    QCOMPARE(started("Calvorn", {}, {QStringLiteral("XDG_DATA_HOME=") + path("data")}).value(2), path("data/calvorn"));
    QCOMPARE(contents(path("data/calvorn/Calvorn.ini")), QByteArray("prepared"));
    QVERIFY(!QFileInfo::exists(path("home/.local")));
    // One that is not absolute does not count.
    QCOMPARE(started("Calvorn", {}, {QStringLiteral("XDG_DATA_HOME=data")}).value(2),
             path("home/.local/share/calvorn"));
}

void TestLauncher::aFolderThatCannotBeMadeStillStarts()
{
    write(path("file"), "in the way");
    QCOMPARE(started("Calvorn", {}, {QStringLiteral("XDG_DATA_HOME=") + path("file")}),
             (QStringList{QStringLiteral("Calvorn"), QStringLiteral("--folder"), path("file/calvorn")}));
    QVERIFY(!m_errors.isEmpty());
}

void TestLauncher::theToolOnlyReads()
{
    const QStringList options{QStringLiteral("--sweeps"), QStringLiteral("2")};
    const QStringList call{QStringLiteral("calvorn-sweep"), QStringLiteral("--settings")};
    QCOMPARE(started("calvorn-sweep", options), call + QStringList(path("usr/lib/calvorn/Calvorn.ini")) + options);
    QVERIFY(!QFileInfo::exists(path("home/.local")));
    started("Calvorn");
    QCOMPARE(started("calvorn-sweep", options),
             call + QStringList(path("home/.local/share/calvorn/Calvorn.ini")) + options);
}

QTEST_GUILESS_MAIN(TestLauncher)
#include "test_launcher.moc"
