// SPDX-License-Identifier: MIT
#include "tests/e2e/real_program.h"
#include "tests/support/program_folder.h"

#include <QTest>

using namespace calvorn::test;

namespace {

const QString kMainWindow = QStringLiteral("^Brenik - Calvorn  v2.0 - ");
const QString kConfiguration = QStringLiteral("^Configuration$");

// Returns the delivered settings without the configuration: only the interface defaults remain.
QByteArray defaultsOnly()
{
    const QByteArray prepared = ProgramFolder::preparedSettings();
    return prepared.mid(prepared.indexOf("[Interface1]"));
}

} // namespace

// Tests a new user's first start, without hardware and using only the keyboard.
class TestNewcomer : public QObject
{
    Q_OBJECT

private:
    WindowManager m_windowManager;

    // Presses "Apply" and confirms with Return, which makes the program exit.
    static void apply(RealProgram &program)
    {
        program.keys({QStringLiteral("alt+a")});
        QVERIFY(!program.waitForBox().isEmpty());
        program.keys({QStringLiteral("Return")});
        QVERIFY(program.waitForEnd());
        QCOMPARE(program.serversRunning(), 0);
    }

    // Sweeps until the simulated filter's pass band appears.
    static void sweep(RealProgram &program)
    {
        QVERIFY(program.start({}, kMainWindow));
        const int before = highestCurveRow(program.screenshot());
        program.keys({QStringLiteral("F5")});
        QTRY_VERIFY_WITH_TIMEOUT(highestCurveRow(program.screenshot()) < before - 80, 10000);
        program.keys({QStringLiteral("F5"), QStringLiteral("ctrl+q")});
        QVERIFY(program.waitForEnd());
        QCOMPARE(program.serversRunning(), 0);
    }

private slots:
    void noSettingsAtAll();
    void serialBoards_data();
    void serialBoards();
};

void TestNewcomer::noSettingsAtAll()
{
    RealProgram program({});
    QVERIFY(QFile::remove(program.folder() + QStringLiteral("/Calvorn.ini")));
    QVERIFY(program.start({}, kConfiguration));
    // The dialog suggests the simulated board.
    apply(program);
    QCOMPARE(program.setting("Parallel Port", "LPT"), QStringLiteral("&H0"));
    QCOMPARE(program.setting("Config", "ADC Step"), QStringLiteral("0.00244"));
    QCOMPARE(program.setting("Config", "ADC Offset"), QStringLiteral("0"));
    QCOMPARE(program.setting("Config", "DDS Device"), QStringLiteral("AD9851"));
    QCOMPARE(program.setting("Simulator", "Device"), QStringLiteral("bandpass"));
    sweep(program);
}

void TestNewcomer::serialBoards_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("interfaceType");
    QTest::newRow("PIC") << QStringLiteral("alt+c") << QStringLiteral("1");
    QTest::newRow("MiniVNA") << QStringLiteral("alt+m") << QStringLiteral("3");
}

void TestNewcomer::serialBoards()
{
    QFETCH(QString, option);
    QFETCH(QString, interfaceType);
    RealProgram program(defaultsOnly());
    QVERIFY(program.start({}, kConfiguration));
    QVERIFY(program.keysChange({option}));
    QVERIFY(program.keysChange({QStringLiteral("alt+p")}));
    // COM6 is the default. The entry below it is the free number, for which the dialog suggests the simulated board.
    QVERIFY(program.keysChange({QStringLiteral("Tab"), QStringLiteral("Down")}));
    apply(program);
    QCOMPARE(program.setting("Config", "Interface"), interfaceType);
    QCOMPARE(program.setting("Serial Port", "CommPort"), QStringLiteral("100"));
    sweep(program);
}

QTEST_MAIN(TestNewcomer)
#include "test_newcomer.moc"
