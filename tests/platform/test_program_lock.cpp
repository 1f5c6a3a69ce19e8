// SPDX-License-Identifier: MIT
#include "platform/program_lock.h"

#include "tests/support/other_user.h"
#include "tests/support/unprivileged.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <sys/stat.h>

using namespace calvorn;

namespace {

const QString kFile = QStringLiteral(".Calvorn.lock");

QStringList filesIn(const QTemporaryDir &folder)
{
    return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden);
}

void setMode(const QString &path, mode_t mode)
{
    QCOMPARE(chmod(QFile::encodeName(path).constData(), mode), 0);
}

} // namespace

class TestProgramLock : public QObject
{
    Q_OBJECT

private slots:
    void oneInstanceForEachFolder()
    {
        QTemporaryDir folder;
        QTemporaryDir other;
        auto first = std::make_unique<ProgramLock>(folder.path());
        QVERIFY(first->isOurs());
        const ProgramLock second(folder.path());
        QVERIFY(!second.isOurs());
        QCOMPARE(second.holder(), QString());
        // A different path to the same folder leads to the same lock.
        QVERIFY(!ProgramLock(folder.path() + QStringLiteral("/../") + QDir(folder.path()).dirName()).isOurs());
        QVERIFY(ProgramLock(other.path()).isOurs());
        first.reset();
        QVERIFY(ProgramLock(folder.path()).isOurs());
    }

    void nothingIsLeft()
    {
        const QTemporaryDir folder;
        {
            const ProgramLock lock(folder.path());
            QCOMPARE(filesIn(folder), QStringList(kFile));
            // A failed attempt to lock the folder leaves the file unchanged.
            QVERIFY(!ProgramLock(folder.path()).isOurs());
            QCOMPARE(filesIn(folder), QStringList(kFile));
        }
        QCOMPARE(filesIn(folder), QStringList());
    }

    // A killed instance leaves its lock file behind.
    void aFileThatNobodyHoldsIsTaken()
    {
        const QTemporaryDir folder;
        QFile left(folder.filePath(kFile));
        QVERIFY(left.open(QIODevice::WriteOnly));
        left.close();
        const ProgramLock lock(folder.path());
        QVERIFY(lock.isOurs());
        QVERIFY(!ProgramLock(folder.path()).isOurs());
    }

    void aFolderThatIsNotThereCountsAsOurs()
    {
        const QTemporaryDir folder;
        QVERIFY(ProgramLock(folder.path() + QStringLiteral("/missing")).isOurs());
    }

    // Another user can open and lock the folder, which has no effect, but cannot open the lock file.
    void anotherUserCannotKeepTheOwnerOut()
    {
        if (!test::isRoot())
            QSKIP("only root can act as another user");
        const QTemporaryDir folder;
        setMode(folder.path(), 0755);
        const test::ForeignLock other(folder.path(), O_RDONLY | O_DIRECTORY, LOCK_SH);
        QVERIFY(other.holds());
        const ProgramLock lock(folder.path());
        QVERIFY(lock.isOurs());
        for (const int mode : {O_RDONLY, O_RDWR})
            QVERIFY(!test::ForeignLock(folder.filePath(kFile), mode, LOCK_SH).holds());
    }

    // In a folder that both users can write to, another user's lock is respected, and a leftover file is removed.
    void aFileOfAnotherUser()
    {
        if (!test::isRoot())
            QSKIP("only root can act as another user");
        const QTemporaryDir folder;
        setMode(folder.path(), 0777);
        {
            const ProgramLock lock(folder.path());
            const test::Unprivileged user;
            QVERIFY(user.holds());
            QVERIFY(!ProgramLock(folder.path()).isOurs());
            QCOMPARE(filesIn(folder), QStringList(kFile));
        }
        QFile left(folder.filePath(kFile));
        QVERIFY(left.open(QIODevice::WriteOnly));
        QVERIFY(left.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
        left.close();
        const test::Unprivileged user;
        QVERIFY(user.holds());
        QVERIFY(ProgramLock(folder.path()).isOurs());
        QCOMPARE(filesIn(folder), QStringList());
    }

    // The second instance can identify the process and the user that hold the lock.
    void anotherUserIsNamed()
    {
        if (!test::isRoot())
            QSKIP("only root can act as another user");
        const QTemporaryDir folder;
        setMode(folder.path(), 0777);
        {
            const test::ForeignLock other(folder.filePath(kFile), O_RDWR | O_CREAT, LOCK_EX);
            QVERIFY(other.holds());
            const ProgramLock lock(folder.path());
            QVERIFY(!lock.isOurs());
            QCOMPARE(lock.holder(), QStringLiteral("It is process %1 of user nobody.").arg(other.process()));
        }
        QVERIFY(ProgramLock(folder.path()).isOurs());
    }
};

QTEST_APPLESS_MAIN(TestProgramLock)
#include "test_program_lock.moc"
