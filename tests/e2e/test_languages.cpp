// SPDX-License-Identifier: MIT
// Tests the programs under different language settings.
#include "tests/e2e/real_program.h"
#include "tests/support/program_folder.h"

#include <QTest>

using namespace calvorn::test;

class TestLanguages : public QObject
{
    Q_OBJECT

    WindowManager m_windowManager;

private slots:
    void theWindowSpeaksTheLanguageOfTheDesktop_data();
    void theWindowSpeaksTheLanguageOfTheDesktop();
    void theToolAndItsServerSpeakItToo_data();
    void theToolAndItsServerSpeakItToo();
};

void TestLanguages::theWindowSpeaksTheLanguageOfTheDesktop_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("keys"); // open the About window
    QTest::addColumn<QString>("title");
    const auto alt = [](char menu, char entry) {
        return QStringList{QStringLiteral("alt+%1").arg(QLatin1Char(menu)), QString(QLatin1Char(entry))};
    };
    QTest::newRow("it_IT") << QStringLiteral("it_IT.UTF-8") << alt('a', 'i')
                           << QStringLiteral("^Informazioni su Calvorn");
    QTest::newRow("de_DE") << QStringLiteral("de_DE.UTF-8") << alt('h', 'b') << QStringLiteral("ber Calvorn$");
    QTest::newRow("fr_FR") << QStringLiteral("fr_FR.UTF-8") << alt('h', 'a') << QStringLiteral("^About Calvorn");
}

void TestLanguages::theWindowSpeaksTheLanguageOfTheDesktop()
{
    QFETCH(QString, locale);
    QFETCH(QStringList, keys);
    QFETCH(QString, title);
    RealProgram program(ProgramFolder::preparedSettings());
    QVERIFY(program.start({QStringLiteral("LC_ALL="), QStringLiteral("LANGUAGE="), QStringLiteral("LANG=") + locale}));
    program.keys(keys);
    QVERIFY(!program.waitForWindow(title, 10000).isEmpty());
    program.keys({QStringLiteral("Escape"), QStringLiteral("ctrl+q")});
    QVERIFY(program.waitForEnd());
}

void TestLanguages::theToolAndItsServerSpeakItToo_data()
{
    // First the server's message, then the message from calvorn-sweep.
    const QString english = QStringLiteral("The simulated parallel port is set to refuse.\n"
                                           "calvorn-sweep: The parallel port 0x000 could not be opened.");
    const QString italian = QStringLiteral("La porta parallela simulata è impostata per rifiutare.\n"
                                           "calvorn-sweep: Non è stato possibile aprire la porta parallela 0x000.");
    const QString german = QStringLiteral("Der simulierte Parallelport ist auf Ablehnen eingestellt.\n"
                                          "calvorn-sweep: Nicht zu öffnen: Parallelport 0x000.");
    QTest::addColumn<QString>("all");       // LC_ALL
    QTest::addColumn<QString>("languages"); // LANGUAGE
    QTest::addColumn<QString>("sentences");
    QTest::newRow("C") << QStringLiteral("C.UTF-8") << QString() << english;
    QTest::newRow("en_GB") << QStringLiteral("en_GB.UTF-8") << QString() << english;
    QTest::newRow("fr_FR") << QStringLiteral("fr_FR.UTF-8") << QString() << english;
    QTest::newRow("it_IT") << QStringLiteral("it_IT.UTF-8") << QString() << italian;
    QTest::newRow("it_CH") << QStringLiteral("it_CH.UTF-8") << QString() << italian;
    QTest::newRow("de_AT") << QStringLiteral("de_AT.UTF-8") << QString() << german;
    QTest::newRow("English preferred") << QStringLiteral("it_IT.UTF-8") << QStringLiteral("en:it") << english;
    QTest::newRow("French, then German") << QStringLiteral("fr_FR.UTF-8") << QStringLiteral("fr:de") << german;
}

void TestLanguages::theToolAndItsServerSpeakItToo()
{
    QFETCH(QString, all);
    QFETCH(QString, languages);
    QFETCH(QString, sentences);
    const ProgramFolder folder(ProgramFolder::builtFile(QStringLiteral("CalvornAsync")),
                               "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\n[Parallel Port]\r\nLPT=0\r\n"
                               "[Simulator]\r\nFault=refuse\r\n");
    const QString tool = folder.path() + QStringLiteral("/calvorn-sweep");
    QVERIFY(QFile::copy(ProgramFolder::builtFile(QStringLiteral("calvorn-sweep")), tool));
    QProcess process;
    process.setEnvironment(QProcess::systemEnvironment() +
                           QStringList{QStringLiteral("LC_ALL=") + all, QStringLiteral("LANGUAGE=") + languages});
    process.start(tool, {});
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()).trimmed(), sentences);
}

QTEST_MAIN(TestLanguages)
#include "test_languages.moc"
