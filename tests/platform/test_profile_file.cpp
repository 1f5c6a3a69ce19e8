// SPDX-License-Identifier: MIT
#include "platform/profile_file.h"

#include "tests/support/full_disk.h"
#include "tests/support/null_device.h"
#include "tests/support/unprivileged.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <sys/stat.h>
#include <thread>

using namespace calvorn;

class TestProfileFile : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    QString path() const { return m_folder.filePath(QStringLiteral("Calvorn.ini")); }

    void write(const QByteArray &content) const
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QByteArray content() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    QString value(const char *section, const char *key) const
    {
        return readProfileString(path(), QString::fromLatin1(section), QString::fromLatin1(key));
    }

    bool put(const char *section, const char *key, const QString &text) const
    {
        return writeProfileString(path(), QString::fromLatin1(section), QString::fromLatin1(key), text);
    }

    bool clear(const char *section) const
    {
        Profile profile(path());
        profile.clear(QString::fromLatin1(section));
        return profile.save();
    }

private slots:
    void init() { QFile::remove(path()); }

    void whatIsNoFileIsNotReplaced();
    void readsValues_data();
    void readsValues();
    void missingThingsReadAsEmpty();
    void valueIsCutAtTheBuffer();
    void cutNeverSplitsACharacter();
    void writesANewFileWithCrLf();
    void keepsEverythingItDoesNotKnow();
    void keepsTheLineEndsOfTheFile();
    void keepsTheSpellingOfAKey();
    void newKeyJoinsItsSection();
    void newSectionGoesToTheEnd();
    void lineBreaksCannotSmuggleLines();
    void clearsOnlyTheKeysOfOneSection();
    void clearingAnAbsentSectionTouchesNothing();
    void aFailedWriteLeavesTheOldFile();
    void aFileThatCannotBeReadIsNotReplaced();
    void writesSeveralAtOnce();
    void aPipeIsNotWaitedFor();
    void aHugeFileIsNotRead();
    void aFileThatChangesIsRefused();
    void doubts_data();
    void doubts();
    void aSnapshotIsReadOnce();
};

void TestProfileFile::readsValues_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *file, const QString &expected) {
        QTest::newRow(name) << QByteArray(file) << expected;
    };
    row("plain", "[Config]\r\nDDS Device=AD9851\r\n", QStringLiteral("AD9851"));
    row("line feed only", "[Config]\nDDS Device=AD9851\n", QStringLiteral("AD9851"));
    row("no end of line", "[Config]\nDDS Device=AD9851", QStringLiteral("AD9851"));
    row("case of section and key", "[cONFIG]\r\ndds dEVICE=AD9851\r\n", QStringLiteral("AD9851"));
    row("blanks", "  [ Config ]  \r\n\t DDS Device \t= AD9851 \t\r\n", QStringLiteral("AD9851"));
    row("double quotes", "[Config]\r\nDDS Device=\" AD9851 \"\r\n", QStringLiteral(" AD9851 "));
    row("single quotes", "[Config]\r\nDDS Device='AD9851'\r\n", QStringLiteral("AD9851"));
    row("unequal quotes stay", "[Config]\r\nDDS Device='AD9851\"\r\n", QStringLiteral("'AD9851\""));
    row("semicolon and equals inside", "[Config]\r\nDDS Device=10dB;10=x\r\n", QStringLiteral("10dB;10=x"));
    row("comment", "[Config]\r\n;DDS Device=AD9850\r\nDDS Device=AD9851\r\n", QStringLiteral("AD9851"));
    row("first key counts", "[Config]\r\nDDS Device=A\r\nDDS Device=B\r\n", QStringLiteral("A"));
    row("first section counts", "[Config]\r\nx=1\r\n[Other]\r\n[Config]\r\nDDS Device=B\r\n", QString());
    row("key of another section", "[Other]\r\nDDS Device=A\r\n[Config]\r\nDDS Device=B\r\n", QStringLiteral("B"));
    row("key without a value", "[Config]\r\nDDS Device\r\n", QString());
    row("byte order mark", "\xEF\xBB\xBF[Config]\r\nDDS Device=AD9851\r\n", QStringLiteral("AD9851"));
    row("UTF-8", "[Config]\r\nDDS Device=\xC2\xB5V\r\n", QStringLiteral("µV"));
    row("Latin-1", "[Config]\r\nDDS Device=\xB5V\r\n", QStringLiteral("µV"));
}

void TestProfileFile::readsValues()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, expected);
    write(file);
    QCOMPARE(value("Config", "DDS Device"), expected);
}

void TestProfileFile::missingThingsReadAsEmpty()
{
    QCOMPARE(value("Config", "DDS Device"), QString());
    write("[Config]\r\nInterface=2\r\n");
    QCOMPARE(value("Config", "DDS Device"), QString());
    QCOMPARE(value("Nowhere", "Interface"), QString());
    // A folder has the file's name.
    QFile::remove(path());
    QVERIFY(QDir().mkdir(path()));
    QCOMPARE(value("Config", "Interface"), QString());
    QVERIFY(QDir().rmdir(path()));
}

void TestProfileFile::valueIsCutAtTheBuffer()
{
    write("[a]\r\nb=" + QByteArray(300, 'x') + "\r\n");
    QCOMPARE(value("a", "b"), QString(254, u'x'));
}

void TestProfileFile::cutNeverSplitsACharacter()
{
    write("[a]\r\nb=" + QByteArray(253, 'x') + "\xC2\xB5\r\n");
    QCOMPARE(value("a", "b"), QString(253, u'x'));
}

void TestProfileFile::writesANewFileWithCrLf()
{
    QVERIFY(put("Config", "DDS Device", QStringLiteral("AD9850")));
    QCOMPARE(content(), QByteArray("[Config]\r\nDDS Device=AD9850\r\n"));
}

void TestProfileFile::keepsEverythingItDoesNotKnow()
{
    const QByteArray before =
        "; mine\r\n\r\n[Config]\r\n ; note\r\nUnknown = 1\r\nInterface=1\r\n\r\njunk line\r\n[Tail]\r\nz=\xB5\r\n";
    write(before);
    QVERIFY(put("config", "interface", QStringLiteral("3")));
    QCOMPARE(content(), QByteArray(before).replace("Interface=1", "Interface=3"));
}

void TestProfileFile::keepsTheLineEndsOfTheFile()
{
    write("[a]\nb=1\n");
    QVERIFY(put("a", "c", QStringLiteral("2")));
    QCOMPARE(content(), QByteArray("[a]\nb=1\nc=2\n"));
}

void TestProfileFile::keepsTheSpellingOfAKey()
{
    write("[Config]\r\nDDS Max freq=1\r\n");
    QVERIFY(put("Config", "DDS Max Freq", QStringLiteral("2")));
    QCOMPARE(content(), QByteArray("[Config]\r\nDDS Max freq=2\r\n"));
}

void TestProfileFile::newKeyJoinsItsSection()
{
    write("[a]\r\nb=1\r\n\r\n[c]\r\nd=1\r\n");
    QVERIFY(put("A", "x", QStringLiteral("2")));
    QCOMPARE(content(), QByteArray("[a]\r\nb=1\r\nx=2\r\n\r\n[c]\r\nd=1\r\n"));
}

void TestProfileFile::newSectionGoesToTheEnd()
{
    write("[a]\r\nb=1\r\n");
    QVERIFY(put("new", "x", QStringLiteral("2")));
    QCOMPARE(content(), QByteArray("[a]\r\nb=1\r\n[new]\r\nx=2\r\n"));
}

void TestProfileFile::lineBreaksCannotSmuggleLines()
{
    QVERIFY(put("a", "b", QStringLiteral("1\r\n[evil]\nx=2")));
    QCOMPARE(value("a", "b"), QStringLiteral("1  [evil] x=2"));
    QCOMPARE(value("evil", "x"), QString());
}

void TestProfileFile::clearsOnlyTheKeysOfOneSection()
{
    write("[a]\r\nb=1\r\n[Attenuator]\r\n; note\r\nx=1\r\ny=2\r\n\r\n[c]\r\nd=1\r\n");
    QVERIFY(clear("attenuator"));
    QCOMPARE(content(), QByteArray("[a]\r\nb=1\r\n[Attenuator]\r\n; note\r\n\r\n[c]\r\nd=1\r\n"));
}

void TestProfileFile::clearingAnAbsentSectionTouchesNothing()
{
    QVERIFY(clear("Attenuator"));
    QVERIFY(!QFile::exists(path()));
}

void TestProfileFile::aFailedWriteLeavesTheOldFile()
{
    const QString nowhere = m_folder.filePath(QStringLiteral("missing/Calvorn.ini"));
    QVERIFY(!writeProfileString(nowhere, QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")));
    QVERIFY(!QFile::exists(nowhere));

    const QByteArray before = "[a]\r\nb=" + QByteArray(3000, '1') + "\r\nc=2\r\n";
    write(before);
    {
        const test::FullDisk full(1024);
        QVERIFY(!put("a", "c", QStringLiteral("3")));
    }
    QCOMPARE(content(), before);
    QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList(QStringLiteral("Calvorn.ini")));
}

void TestProfileFile::aFileThatCannotBeReadIsNotReplaced()
{
    const QByteArray before = "[a]\r\nb=1\r\n";
    write(before);
    const QByteArray file = QFile::encodeName(path());
    const QByteArray folder = QFile::encodeName(m_folder.path());
    QCOMPARE(chmod(file.constData(), 0222), 0);
    QCOMPARE(chmod(folder.constData(), 0777), 0);
    {
        const test::Unprivileged user;
        QVERIFY(user.holds());
        QCOMPARE(value("a", "b"), QString());
        QVERIFY(!put("a", "c", QStringLiteral("2")));
    }
    QCOMPARE(chmod(folder.constData(), 0700), 0);
    QCOMPARE(chmod(file.constData(), 0644), 0);
    QCOMPARE(content(), before);
}

void TestProfileFile::writesSeveralAtOnce()
{
    QVERIFY(writeProfileStrings(path(), {{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("1")},
                                         {QStringLiteral("c"), QStringLiteral("d"), QStringLiteral("2")},
                                         {QStringLiteral("A"), QStringLiteral("e"), QStringLiteral("3")}}));
    QCOMPARE(content(), QByteArray("[a]\r\nb=1\r\ne=3\r\n[c]\r\nd=2\r\n"));
}

// A link to a file is followed; a device or a folder is not replaced.
void TestProfileFile::whatIsNoFileIsNotReplaced()
{
    const QString device = test::nullDevice(m_folder.path());
    QVERIFY(QFile::link(device, path()));
    QVERIFY(!put("Config", "Interface", QStringLiteral("2")));
    QCOMPARE(QFile::symLinkTarget(path()), device);
    QVERIFY(QFileInfo::exists(device) && !QFileInfo(device).isFile());
    QVERIFY(QFile::remove(path()));
    const QString target = m_folder.filePath(QStringLiteral("target.ini"));
    QVERIFY(writeProfileString(target, QStringLiteral("Config"), QStringLiteral("Interface"), QStringLiteral("3")));
    QVERIFY(QFile::link(target, path()));
    for (const char *value : {"1", "2"}) {
        QVERIFY(put("Config", "Interface", QString::fromLatin1(value)));
        QVERIFY(QFileInfo(path()).isSymLink());
        QCOMPARE(readProfileString(target, QStringLiteral("Config"), QStringLiteral("Interface")),
                 QString::fromLatin1(value));
    }
    QVERIFY(QFile::remove(target));
    QVERIFY(QFile::remove(path()) && QDir().mkdir(path()));
    QVERIFY(!put("Config", "Interface", QStringLiteral("2")));
    QVERIFY(QDir().rmdir(path()));
}

void TestProfileFile::aPipeIsNotWaitedFor()
{
    QCOMPARE(mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    const Profile profile(path());
    QVERIFY(profile.isRefused());
    QCOMPARE(profile.reason(), QStringLiteral("it is not a file"));
    QVERIFY(!put("a", "b", QStringLiteral("1")));
}

// Uses a sparse 3 GB file.
void TestProfileFile::aHugeFileIsNotRead()
{
    write("[a]\r\nb=1\r\n");
    const qint64 size = qint64(3) << 30;
    QVERIFY(QFile::resize(path(), size));
    const Profile profile(path());
    QCOMPARE(profile.reason(), QStringLiteral("it is larger than 16 MB"));
    QCOMPARE(profile.value(QStringLiteral("a"), QStringLiteral("b")), QString());
    QVERIFY(!put("a", "b", QStringLiteral("2")));
    QCOMPARE(QFileInfo(path()).size(), size);
}

void TestProfileFile::aFileThatChangesIsRefused()
{
    write("[a]\r\nb=1\r\n" + QByteArray(8 << 20, ';'));
    std::atomic<bool> done = false;
    std::thread writer([&] {
        QFile file(path());
        if (file.open(QIODevice::Append | QIODevice::Unbuffered))
            while (!done)
                file.write(";");
    });
    bool seen = false;
    for (int attempt = 0; attempt < 1000 && !seen; ++attempt)
        seen = Profile(path()).reason() == u"it changed while being read";
    done = true;
    writer.join();
    QVERIFY(seen);
    QVERIFY(!Profile(path()).isRefused());
}

void TestProfileFile::doubts_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("doubt");
    const auto row = [](const char *name, const QByteArray &file, const char *doubt) {
        QTest::newRow(name) << file << QString::fromLatin1(doubt);
    };
    row("settings", "[Config]\nInterface=2\n", "");
    row("with the mark of UTF-8", "\xEF\xBB\xBF[Config]\r\nInterface=2\r\n", "");
    row("without a last line end", "[Config]\nInterface=2", "");
    row("empty", "", "it contains no settings");
    row("comments only", "; nothing\n\n", "it contains no settings");
    row("keys without values", "[Config]\nInterface=\n", "it contains no settings");
    row("UTF-16", QByteArray("\xFF\xFE[\0C\0]\0\n\0", 10), "it is not UTF-8 text");
    row("UTF-16, the other way round", QByteArray("\xFE\xFF\0[\0C\0]", 8), "it is not UTF-8 text");
    row("UTF-16 without a mark", QByteArray("[\0C\0]\0\n\0", 8), "it is not UTF-8 text");
    row("one CR alone", "[Config]\nInterface=1\rDDS Device=AD9951\r\n", "its line endings are not supported (CR only)");
    row("CR alone", "[Config]\rInterface=2\r", "its line endings are not supported (CR only)");
}

void TestProfileFile::doubts()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, doubt);
    write(file);
    const Profile profile(path());
    QVERIFY(!profile.isRefused());
    QCOMPARE(profile.doubt(), doubt);
    QVERIFY(QFile::remove(path()));
    QCOMPARE(Profile(path()).doubt(), QStringLiteral("it does not exist"));
    QVERIFY(!Profile(path()).isRefused());
}

void TestProfileFile::aSnapshotIsReadOnce()
{
    write("[a]\nb=1\n");
    Profile profile(path());
    write("[a]\nb=2\n");
    QCOMPARE(profile.value(QStringLiteral("a"), QStringLiteral("b")), QStringLiteral("1"));
    QVERIFY(profile.save());
    QCOMPARE(value("a", "b"), QStringLiteral("2"));
    profile.set({QStringLiteral("a"), QStringLiteral("c"), QStringLiteral("3")});
    QVERIFY(profile.save());
    QCOMPARE(content(), QByteArray("[a]\nb=1\nc=3\n"));
}

QTEST_APPLESS_MAIN(TestProfileFile)
#include "test_profile_file.moc"
