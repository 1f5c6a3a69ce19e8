// SPDX-License-Identifier: MIT
#include "platform/swept_folder.h"

#include "tests/support/other_user.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <sys/stat.h>

using namespace calvorn;

namespace {

QByteArray bytes(const QTemporaryDir &folder)
{
    return QFile::encodeName(folder.path());
}

QStringList entries(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

} // namespace

class TestSweptFolder : public QObject
{
    Q_OBJECT

private slots:
    void itIsPrivateAndGoes()
    {
        const QTemporaryDir parent;
        {
            SweptFolder folder;
            QVERIFY(folder.make(bytes(parent)));
            struct stat status = {};
            QCOMPARE(stat(folder.path().constData(), &status), 0);
            QCOMPARE(status.st_mode & 07777u, 0700u);
            QVERIFY(QDir(QFile::decodeName(folder.path())).mkpath(QStringLiteral("a/b")));
        }
        QVERIFY(entries(parent.path()).isEmpty());
    }

    void whatIsInUseStays()
    {
        const QTemporaryDir parent;
        SweptFolder first;
        SweptFolder second;
        QVERIFY(first.make(bytes(parent)));
        QVERIFY(second.make(bytes(parent)));
        QCOMPARE(entries(parent.path()).size(), 2);
    }

    void whatAKilledProcessLeftIsRemoved()
    {
        const QTemporaryDir parent;
        QVERIFY(QDir(parent.path()).mkpath(QStringLiteral("calvorn-run-abc123/deep")));
        SweptFolder folder;
        QVERIFY(folder.make(bytes(parent)));
        QCOMPARE(entries(parent.path()).size(), 1);
        QVERIFY(QFile::exists(QFile::decodeName(folder.path())));
    }

    void whatIsNotOursStays()
    {
        const QTemporaryDir parent;
        const QTemporaryDir elsewhere;
        QFile kept(elsewhere.filePath(QStringLiteral("kept")));
        QVERIFY(kept.open(QIODevice::WriteOnly));
        QDir here(parent.path());
        for (const char *name : {"calvorn-sweep", "calvorn-abc123", "calvorn-run-abc12", "other-run-abc123"})
            QVERIFY(here.mkdir(QString::fromLatin1(name)));
        // Adds a link named like such a folder, and a link inside a folder that will be removed.
        QVERIFY(QFile::link(elsewhere.path(), here.filePath(QStringLiteral("calvorn-run-link00"))));
        QVERIFY(here.mkdir(QStringLiteral("calvorn-run-left00")));
        QVERIFY(QFile::link(elsewhere.path(), here.filePath(QStringLiteral("calvorn-run-left00/link"))));
        QStringList expected = entries(parent.path());
        expected.removeOne(QStringLiteral("calvorn-run-left00"));
        if (test::isRoot()) {
            QVERIFY(here.mkdir(QStringLiteral("calvorn-run-user00")));
            QCOMPARE(
                chown(QFile::encodeName(here.filePath(QStringLiteral("calvorn-run-user00"))).constData(), 65534, 65534),
                0);
            expected.append(QStringLiteral("calvorn-run-user00"));
        }
        {
            SweptFolder folder;
            QVERIFY(folder.make(bytes(parent)));
        }
        expected.sort();
        QStringList found = entries(parent.path());
        found.sort();
        QCOMPARE(found, expected);
        QVERIFY(kept.exists());
    }

    void aFolderThatCannotBeMade()
    {
        const QTemporaryDir parent;
        SweptFolder folder;
        QVERIFY(!folder.make(bytes(parent) + "/missing"));
        QCOMPARE(folder.error(), ENOENT);
        folder.remove();
    }
};

QTEST_APPLESS_MAIN(TestSweptFolder)
#include "test_swept_folder.moc"
