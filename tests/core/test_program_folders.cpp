// SPDX-License-Identifier: MIT
#include "core/program_folders.h"
#include "tests/support/unprivileged.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace calvorn;

namespace {

void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(path));
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

} // namespace

// Tests where the settings are stored if the program folder is writable and if it is not.
class TestProgramFolders : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<test::Unprivileged> m_unprivileged;
    std::unique_ptr<QTemporaryDir> m_folder;

    QString path(const char *name) const { return m_folder->filePath(QString::fromLatin1(name)); }
    QString programs() const { return path("programs"); }
    ProgramFolders folders() const { return programFolders(programs()); }
    void protectPrograms() const { QVERIFY(QFile::setPermissions(programs(), QFile::ReadOwner | QFile::ExeOwner)); }

private slots:
    void init();
    void cleanup();
    void programsThatCanBeWritten();
    void theConfigurationFolderOfTheUser();
    void theFirstUseCopiesThePreparedSettings();
    void theFirstUseTakesTheSettingsOfVersionTwo();
    void withoutPreparedSettingsNothingIsCopied();
    void aFolderThatCannotBeMade();
    void anInstallation();
    void aServerBesideTheProgramsComesFirst();
};

void TestProgramFolders::init()
{
    m_unprivileged = std::make_unique<test::Unprivileged>();
    QVERIFY(m_unprivileged->holds());
    m_folder = std::make_unique<QTemporaryDir>();
    qputenv("HOME", path("home").toUtf8());
    qunsetenv("XDG_CONFIG_HOME");
    qunsetenv("XDG_DATA_HOME");
    QVERIFY(QDir().mkpath(path("home")));
    write(path("programs/Calvorn.ini"), "prepared");
}

void TestProgramFolders::cleanup()
{
    QFile::setPermissions(programs(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_folder.reset();
    m_unprivileged.reset();
}

void TestProgramFolders::programsThatCanBeWritten()
{
    write(path("home/.config/calvorn/Calvorn.ini"), "elsewhere");
    write(path("home/.local/share/calvorn/Calvorn.ini"), "elsewhere");
    QCOMPARE(programFolders(programs()).settings, programs());
    QCOMPARE(settingsToRead(folders()), path("programs/Calvorn.ini"));
    QVERIFY(QFile::remove(path("programs/Calvorn.ini")));
    QVERIFY(makeSettingsFolder(folders()));
    copySettingsOnFirstUse(folders());
    QCOMPARE(settingsToRead(folders()), path("programs/Calvorn.ini"));
    QVERIFY(!QFile::exists(path("programs/Calvorn.ini")));
}

void TestProgramFolders::theConfigurationFolderOfTheUser()
{
    protectPrograms();
    QCOMPARE(programFolders(programs()).settings, path("home/.config/calvorn"));
    qputenv("XDG_CONFIG_HOME", path("elsewhere").toUtf8());
    QCOMPARE(programFolders(programs()).settings, path("elsewhere/calvorn"));
    // Querying the folder does not create anything.
    QVERIFY(!QFile::exists(path("home/.config")));
    QVERIFY(!QFile::exists(path("elsewhere")));
}

void TestProgramFolders::theFirstUseCopiesThePreparedSettings()
{
    protectPrograms();
    QCOMPARE(settingsToRead(folders()), path("programs/Calvorn.ini"));
    QVERIFY(makeSettingsFolder(folders()));
    copySettingsOnFirstUse(folders());
    const QString mine = path("home/.config/calvorn/Calvorn.ini");
    QCOMPARE(contents(mine), QByteArray("prepared"));
    QCOMPARE(QDir(path("home/.config/calvorn")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList(QStringLiteral("Calvorn.ini")));
    QCOMPARE(settingsToRead(folders()), mine);
    // The copy is writable, and the next start does not overwrite it.
    write(mine, "mine");
    copySettingsOnFirstUse(folders());
    QCOMPARE(contents(mine), QByteArray("mine"));
    QCOMPARE(contents(path("programs/Calvorn.ini")), QByteArray("prepared"));
}

void TestProgramFolders::theFirstUseTakesTheSettingsOfVersionTwo()
{
    protectPrograms();
    write(path("home/.local/share/calvorn/Calvorn.ini"), "of 2.0");
    QCOMPARE(settingsToRead(folders()), path("home/.local/share/calvorn/Calvorn.ini"));
    QVERIFY(makeSettingsFolder(folders()));
    copySettingsOnFirstUse(folders());
    QCOMPARE(contents(path("home/.config/calvorn/Calvorn.ini")), QByteArray("of 2.0"));
}

void TestProgramFolders::withoutPreparedSettingsNothingIsCopied()
{
    QVERIFY(QFile::remove(path("programs/Calvorn.ini")));
    protectPrograms();
    QCOMPARE(settingsToRead(folders()), path("home/.config/calvorn/Calvorn.ini"));
    QVERIFY(makeSettingsFolder(folders()));
    copySettingsOnFirstUse(folders());
    QVERIFY(QDir(path("home/.config/calvorn")).isEmpty());
}

void TestProgramFolders::aFolderThatCannotBeMade()
{
    protectPrograms();
    write(path("home/.config"), "in the way");
    QVERIFY(!makeSettingsFolder(folders()));
}

// An installed program stores its settings in the user's folder, even if its own folder is writable, as it is for root.
void TestProgramFolders::anInstallation()
{
    write(path("usr/bin/Calvorn"), "program");
    write(path("usr/libexec/calvorn/CalvornAsync"), "server");
    write(path("usr/share/calvorn/Calvorn.ini"), "prepared");
    const ProgramFolders installed = programFolders(path("usr/bin"));
    QCOMPARE(installed.serverFile(), path("usr/libexec/calvorn/CalvornAsync"));
    QCOMPARE(installed.manualFile(), path("usr/share/calvorn/Calvorn.qch"));
    QCOMPARE(installed.settingsFile(), path("home/.config/calvorn/Calvorn.ini"));
    QCOMPARE(settingsToRead(installed), path("usr/share/calvorn/Calvorn.ini"));
    QVERIFY(makeSettingsFolder(installed));
    copySettingsOnFirstUse(installed);
    QCOMPARE(contents(path("home/.config/calvorn/Calvorn.ini")), QByteArray("prepared"));
    QCOMPARE(settingsToRead(installed), path("home/.config/calvorn/Calvorn.ini"));
}

void TestProgramFolders::aServerBesideTheProgramsComesFirst()
{
    write(path("usr/bin/CalvornAsync"), "server");
    write(path("usr/libexec/calvorn/CalvornAsync"), "server of an installation");
    const ProgramFolders portable = programFolders(path("usr/bin"));
    QCOMPARE(portable.serverFile(), path("usr/bin/CalvornAsync"));
    QCOMPARE(portable.manualFile(), path("usr/bin/Calvorn.qch"));
    QCOMPARE(portable.settingsFile(), path("usr/bin/Calvorn.ini"));
}

QTEST_GUILESS_MAIN(TestProgramFolders)
#include "test_program_folders.moc"
