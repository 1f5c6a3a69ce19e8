// SPDX-License-Identifier: MIT
#include "core/settings_folder.h"
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

// Where the settings are, beside programs that can be written and programs that cannot.
class TestSettingsFolder : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<test::Unprivileged> m_unprivileged;
    std::unique_ptr<QTemporaryDir> m_folder;

    QString path(const char *name) const { return m_folder->filePath(QString::fromLatin1(name)); }
    QString programs() const { return path("programs"); }
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
};

void TestSettingsFolder::init()
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

void TestSettingsFolder::cleanup()
{
    QFile::setPermissions(programs(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_folder.reset();
    m_unprivileged.reset();
}

void TestSettingsFolder::programsThatCanBeWritten()
{
    write(path("home/.config/calvorn/Calvorn.ini"), "elsewhere");
    write(path("home/.local/share/calvorn/Calvorn.ini"), "elsewhere");
    QCOMPARE(settingsFolder(programs()), programs());
    QCOMPARE(settingsToRead(programs()), path("programs/Calvorn.ini"));
    QVERIFY(QFile::remove(path("programs/Calvorn.ini")));
    QVERIFY(makeSettingsFolder(programs()));
    copySettingsOnFirstUse(programs());
    QCOMPARE(settingsToRead(programs()), path("programs/Calvorn.ini"));
    QVERIFY(!QFile::exists(path("programs/Calvorn.ini")));
}

void TestSettingsFolder::theConfigurationFolderOfTheUser()
{
    protectPrograms();
    QCOMPARE(settingsFolder(programs()), path("home/.config/calvorn"));
    qputenv("XDG_CONFIG_HOME", path("elsewhere").toUtf8());
    QCOMPARE(settingsFolder(programs()), path("elsewhere/calvorn"));
    // To find out writes nothing.
    QVERIFY(!QFile::exists(path("home/.config")));
    QVERIFY(!QFile::exists(path("elsewhere")));
}

void TestSettingsFolder::theFirstUseCopiesThePreparedSettings()
{
    protectPrograms();
    QCOMPARE(settingsToRead(programs()), path("programs/Calvorn.ini"));
    QVERIFY(makeSettingsFolder(programs()));
    copySettingsOnFirstUse(programs());
    const QString mine = path("home/.config/calvorn/Calvorn.ini");
    QCOMPARE(contents(mine), QByteArray("prepared"));
    QCOMPARE(QDir(path("home/.config/calvorn")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList(QStringLiteral("Calvorn.ini")));
    QCOMPARE(settingsToRead(programs()), mine);
    // The second use leaves it alone, and it can be written like any other.
    write(mine, "mine");
    copySettingsOnFirstUse(programs());
    QCOMPARE(contents(mine), QByteArray("mine"));
    QCOMPARE(contents(path("programs/Calvorn.ini")), QByteArray("prepared"));
}

void TestSettingsFolder::theFirstUseTakesTheSettingsOfVersionTwo()
{
    protectPrograms();
    write(path("home/.local/share/calvorn/Calvorn.ini"), "of 2.0");
    QCOMPARE(settingsToRead(programs()), path("home/.local/share/calvorn/Calvorn.ini"));
    QVERIFY(makeSettingsFolder(programs()));
    copySettingsOnFirstUse(programs());
    QCOMPARE(contents(path("home/.config/calvorn/Calvorn.ini")), QByteArray("of 2.0"));
}

void TestSettingsFolder::withoutPreparedSettingsNothingIsCopied()
{
    QVERIFY(QFile::remove(path("programs/Calvorn.ini")));
    protectPrograms();
    QCOMPARE(settingsToRead(programs()), path("home/.config/calvorn/Calvorn.ini"));
    QVERIFY(makeSettingsFolder(programs()));
    copySettingsOnFirstUse(programs());
    QVERIFY(QDir(path("home/.config/calvorn")).isEmpty());
}

void TestSettingsFolder::aFolderThatCannotBeMade()
{
    protectPrograms();
    write(path("home/.config"), "in the way");
    QVERIFY(!makeSettingsFolder(programs()));
}

QTEST_GUILESS_MAIN(TestSettingsFolder)
#include "test_settings_folder.moc"
