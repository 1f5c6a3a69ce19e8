// SPDX-License-Identifier: MIT
// The program's windows in each language.
#include "translations/language.h"

#include "app/frm_about.h"
#include "app/frm_preferences.h"
#include "core/number_text.h"
#include "tests/support/cut_off_texts.h"
#include "tests/support/fake_server_control.h"
#include "tests/support/overlaps.h"
#include "tests/support/set_up_bench.h"
#include "tests/support/walk_numbers.h"
#include "tests/support/while_modal.h"
#include "tests/support/window_bench.h"

#include <QListWidget>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>

using namespace calvorn;
using calvorn::test::cutOffTexts;
using calvorn::test::overlaps;
using calvorn::test::SetUpBench;
using calvorn::test::WindowBench;

namespace {

QByteArray settings(int interfaceType)
{
    return "[Config]\r\nInterface=" + QByteArray::number(interfaceType) +
           "\r\nDDS Device=AD9851\r\nDDS Multiplier=6\r\nDDS Xtal freq=30000000\r\nADC Step=0.00244\r\nADC Offset=0\r\n"
           "[Debug]\r\nLog=1\r\n[Parallel Port]\r\nLPT=&H278\r\n[Serial Port]\r\nCommPort=100\r\n"
           "[Calvorn]\r\nStart=1000000\r\nStop=60000000\r\nScale=0\r\nMax scaleV=1.5\r\n"
           "[Aux1]\r\nEnabled=1\r\n[Aux2]\r\nEnabled=1\r\nPotMax=255\r\nPotMin=0\r\n";
}

constexpr QSize kRoom(1000, 560); // for a dialog on a 1024 x 600 screen

// Collects the mnemonic letters that are available at the same time, and reports those used twice.
class Mnemonics
{
public:
    void add(const QString &text)
    {
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (!key.isEmpty() && m_texts.contains(key))
            m_clashes.append(m_texts[key] + QStringLiteral(" / ") + text);
        m_texts[key] = text;
    }
    void addVisibleIn(const QWidget &window)
    {
        for (const QWidget *widget : window.findChildren<QWidget *>())
            if (widget->isVisible() && widget->window() == &window)
                add(test::textOf(widget));
    }
    QString clashes() const { return m_clashes.join(u'\n'); }

private:
    QMap<QKeySequence, QString> m_texts;
    QStringList m_clashes;
};

void checkDialog(const QWidget &dialog)
{
    QCoreApplication::processEvents();
    QCOMPARE(cutOffTexts(dialog), QString());
    QCOMPARE(overlaps(dialog), QString());
    Mnemonics mnemonics;
    mnemonics.addVisibleIn(dialog);
    QCOMPARE(mnemonics.clashes(), QString());
    // A label's mnemonic moves the focus to its box.
    for (const QLabel *label : dialog.findChildren<const QLabel *>())
        QVERIFY2(QKeySequence::mnemonic(label->text()).isEmpty() || label->buddy(), qPrintable(label->text()));
}

} // namespace

class TestTranslatedWindows : public QObject
{
    Q_OBJECT

    test::FakeServerControl m_server;
    std::unique_ptr<Language> m_language;

    static void addLanguages()
    {
        QTest::addColumn<QLocale>("desktop");
        QTest::addColumn<QString>("file"); // title of the first menu
        QTest::newRow("English") << QLocale(QLocale::English) << QStringLiteral("&File");
        QTest::newRow("Italian") << QLocale(QLocale::Italian, QLocale::Switzerland) << QStringLiteral("&File");
        QTest::newRow("German") << QLocale(QLocale::German, QLocale::Austria) << QStringLiteral("&Datei");
        QTest::newRow("French") << QLocale(QLocale::French) << QStringLiteral("&File");
    }
    void speak()
    {
        QFETCH(QLocale, desktop);
        m_language = std::make_unique<Language>(desktop);
    }

private slots:
    void cleanup() { m_language.reset(); }

    void theProgramSpeaksTheLanguageOfTheDesktop_data() { addLanguages(); }
    void theProgramSpeaksTheLanguageOfTheDesktop();
    void nothingIsCutOffInTheMainWindow_data() { addLanguages(); }
    void nothingIsCutOffInTheMainWindow();
    void everyMenuEntryHasALetterOfItsOwn_data() { addLanguages(); }
    void everyMenuEntryHasALetterOfItsOwn();
    void theMeasurePanelHasRoomAndLetters_data() { addLanguages(); }
    void theMeasurePanelHasRoomAndLetters();
    void theSetUpHasRoomForItsTexts_data() { addLanguages(); }
    void theSetUpHasRoomForItsTexts();
    void theOtherDialogsHaveRoomForTheirTexts_data() { addLanguages(); }
    void theOtherDialogsHaveRoomForTheirTexts();
    void theSettingsFileKnowsNothingOfIt();
};

void TestTranslatedWindows::theProgramSpeaksTheLanguageOfTheDesktop()
{
    speak();
    QFETCH(QString, file);
    const WindowBench bench(m_server.program(), settings(2));
    QCOMPARE(bench.window->menuBar()->actions().first()->text(), file);
    const QString ofItaly = QStringLiteral("Avvia sweep");
    QCOMPARE(bench.caption("cmdStart") == ofItaly, m_language->code() == u"it");
    // Numbers follow the locale, not the user-interface language.
    QCOMPARE(bench.text("txtStart"), test::shownHertz(1000000));
}

void TestTranslatedWindows::nothingIsCutOffInTheMainWindow()
{
    speak();
    for (const int interfaceType : {1, 2, 3}) {
        const WindowBench bench(m_server.program(), settings(interfaceType));
        for (const QSize size : {QSize(800, 600), QSize(1024, 570), QSize(1900, 1050)}) {
            bench.window->resize(size);
            QCoreApplication::processEvents();
            QCOMPARE(bench.window->size(), size);
            for (auto *button :
                 bench.window->findChildren<QPushButton *>(QRegularExpression(QStringLiteral("^cmdView_")))) {
                if (button->isVisible())
                    button->click();
                QCoreApplication::processEvents();
                QCOMPARE(cutOffTexts(*bench.window), QString());
            }
        }
        // The three modes of the MiniVNA.
        for (int mode = 0; mode < 3; ++mode) {
            bench.click("cmdMisura");
            QCoreApplication::processEvents();
            QCOMPARE(cutOffTexts(*bench.window), QString());
            QCOMPARE(bench.window->width(), 1900);
        }
        // The "Sweep ON" and "Sweep OFF" buttons occupy the same place.
        bench.click("cmdStart");
        QCoreApplication::processEvents();
        QVERIFY(bench.isShown("cmdStop"));
        QCOMPARE(cutOffTexts(*bench.window), QString());
    }
}

void TestTranslatedWindows::everyMenuEntryHasALetterOfItsOwn()
{
    speak();
    const WindowBench bench(m_server.program(), settings(2));
    Mnemonics outside;
    outside.addVisibleIn(*bench.window);
    for (const QAction *title : bench.window->menuBar()->actions()) {
        outside.add(title->text());
        Mnemonics inside;
        for (const QAction *entry : title->menu()->actions()) {
            inside.add(entry->text());
            QVERIFY2(entry->isSeparator() || !QKeySequence::mnemonic(entry->text()).isEmpty(),
                     qPrintable(entry->text()));
        }
        QCOMPARE(inside.clashes(), QString());
    }
    QCOMPARE(outside.clashes(), QString());
    Mnemonics log;
    for (const QAction *entry : bench.find<QListWidget>("lstLOG")->actions())
        log.add(entry->text());
    QCOMPARE(log.clashes(), QString());
}

void TestTranslatedWindows::theMeasurePanelHasRoomAndLetters()
{
    speak();
    const WindowBench bench(m_server.program(), settings(2).replace("Log=1", "Log=0"));
    bench.window->findChild<QAction *>(QStringLiteral("mnuMeasure"))->trigger();
    auto *pages = bench.find<QTabWidget>("tabMeasure");
    QStringList clashes;
    for (const QSize size : {QSize(1024, 570), QSize(1900, 1050)}) {
        bench.window->resize(size);
        QTRY_COMPARE(bench.window->size(), size);
        for (int page = 0; page < pages->count(); ++page) {
            pages->setCurrentIndex(page);
            QTest::qWait(0);
            QCOMPARE(cutOffTexts(*bench.window), QString());
            QCOMPARE(overlaps(*pages->currentWidget()), QString());
            const auto *area = qobject_cast<const QScrollArea *>(pages->currentWidget());
            QVERIFY(area && !area->horizontalScrollBar()->isVisible());
            Mnemonics letters;
            letters.addVisibleIn(*bench.window);
            for (const QAction *title : bench.window->menuBar()->actions())
                letters.add(title->text());
            clashes.append(letters.clashes());
        }
    }
    clashes.removeAll(QString());
    QCOMPARE(clashes.join(u'\n'), QString());
}

void TestTranslatedWindows::theSetUpHasRoomForItsTexts()
{
    speak();
    const SetUpBench bench(settings(2));
    for (const char *page : {"cmdInterface", "cmdDDS", "cmdADC", "cmdAux", "cmdPort"}) {
        bench.click(page);
        checkDialog(*bench.dialog);
        QCOMPARE(bench.dialog->size().boundedTo(kRoom), bench.dialog->size());
    }
    // A port's caption includes its address.
    QVERIFY(bench.caption("optParallelPort_3").contains(QStringLiteral("(0x3BC)")));
    QVERIFY(bench.isChecked("optParallelPort_2"));
    bench.click("optParallelPort_3");
    bench.click("cmdApply");
    QVERIFY(bench.file().contains("LPT=&H3BC"));

    const SetUpBench other(settings(2));
    other.click("cmdDDS");
    for (const char *chip : {"optDDSselect_1", "optDDSselect_2", "optDDSselect_3"}) {
        other.click(chip);
        checkDialog(*other.dialog);
    }
    other.click("cmdPort");
    test::whileModal([](QWidget &pins) {
        checkDialog(pins);
        QTest::keyClick(&pins, Qt::Key_Escape);
    });
    other.click("cmdLPTpin");
}

void TestTranslatedWindows::theOtherDialogsHaveRoomForTheirTexts()
{
    speak();
    for (const int interfaceType : {1, 2, 3}) {
        const WindowBench bench(m_server.program(), settings(interfaceType));
        for (const char *entry :
             {"mnuCalibraDDS", "mnuCalibraDetector", "mnuCalibraLevel", "mnuPreferences", "mnuAbout"}) {
            QSize size;
            test::whileModal([&size](QWidget &dialog) {
                checkDialog(dialog);
                size = dialog.size();
                QTest::keyClick(&dialog, Qt::Key_Escape);
            });
            bench.window->findChild<QAction *>(QString::fromLatin1(entry))->trigger();
            QVERIFY2(!size.isEmpty(), entry);
            QCOMPARE(size.boundedTo(kRoom), size);
        }
    }
}

void TestTranslatedWindows::theSettingsFileKnowsNothingOfIt()
{
    QList<QByteArray> files;
    for (const QLocale &desktop : {QLocale(QLocale::English), QLocale(QLocale::Italian), QLocale(QLocale::German)}) {
        const Language language(desktop);
        WindowBench bench(m_server.program(), settings(2));
        bench.window->close();
        QFile file(bench.folder.iniPath());
        QVERIFY(file.open(QIODevice::ReadOnly));
        files.append(file.readAll());
    }
    QVERIFY(files[0].contains("Step 0="));
    QCOMPARE(files[1], files[0]);
    QCOMPARE(files[2], files[0]);
}

QTEST_MAIN(TestTranslatedWindows)
#include "test_translated_windows.moc"
