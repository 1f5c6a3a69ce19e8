// SPDX-License-Identifier: MIT
#include "platform/program_lock.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace calvorn;

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
        QVERIFY(!ProgramLock(folder.path()).isOurs());
        // The same folder by another name is the same folder.
        QVERIFY(!ProgramLock(folder.path() + QStringLiteral("/../") + QDir(folder.path()).dirName()).isOurs());
        QVERIFY(ProgramLock(other.path()).isOurs());
        first.reset();
        QVERIFY(ProgramLock(folder.path()).isOurs());
    }

    void nothingIsWritten()
    {
        QTemporaryDir folder;
        const ProgramLock lock(folder.path());
        QVERIFY(QDir(folder.path()).isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestProgramLock)
#include "test_program_lock.moc"
