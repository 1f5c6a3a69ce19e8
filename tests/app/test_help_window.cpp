// SPDX-License-Identifier: MIT
#include "app/help_icons.h"
#include "app/help_results.h"
#include "app/help_window.h"
#include "platform/qt_desktop.h"
#include "tests/support/fake_server_control.h"
#include "tests/support/quiet_time.h"
#include "tests/support/while_modal.h"
#include "tests/support/window_bench.h"

#include <QHelpContentWidget>
#include <QHelpIndexWidget>
#include <QHelpSearchEngine>
#include <QHelpSearchQueryWidget>
#include <QMenuBar>
#include <QRegularExpression>
#include <QShortcut>
#include <QTabWidget>
#include <QTextBrowser>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

const QByteArray kSettings = "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nADC Step=0.001\r\nADC Offset=0\r\n"
                             "[Parallel Port]\r\nLPT=0\r\n[Calvorn]\r\nStart=1000000\r\nStop=60000000\r\n";

HelpWindow *helpWindow()
{
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (auto *help = qobject_cast<HelpWindow *>(widget))
            return help;
    return nullptr;
}

template <typename Widget>
Widget *inHelp(const char *name)
{
    return helpWindow()->findChild<Widget *>(QString::fromLatin1(name));
}

// Returns the current page, for example "setup.html#ports", or an empty string while the help window is closed.
QString shownPage()
{
    if (!helpWindow() || !helpWindow()->isVisible())
        return {};
    const QUrl url = inHelp<QTextBrowser>("txtHelp")->source();
    return url.fileName() + (url.hasFragment() ? u'#' + url.fragment() : QString());
}

} // namespace

class TestHelpWindow : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

    std::unique_ptr<WindowBench> bench() const
    {
        auto made = std::make_unique<WindowBench>(m_server.program(), kSettings);
        if (!QFile::copy(test::ProgramFolder::builtFile(QStringLiteral("Calvorn.qch")), helpFile(*made)))
            qFatal("cannot copy the help file");
        return made;
    }
    static QString helpFile(const WindowBench &bench) { return bench.folder.path() + QStringLiteral("/Calvorn.qch"); }
    static void choose(const WindowBench &bench, const char *entry)
    {
        bench.window->findChild<QAction *>(QString::fromLatin1(entry))->trigger();
    }

private slots:
    void theMenuOpensTheContents();
    void f1OpensThePageOfTheMainWindow();
    void f1OpensThePageOfADialog_data();
    void f1OpensThePageOfADialog();
    void f1OpensTheMessages_data();
    void f1OpensTheMessages();
    void theIndexFindsAPage();
    void theSearchFindsAWord();
    void aFoundPageIsOpened();
    void excerptsHaveWholeEntities_data();
    void excerptsHaveWholeEntities();
    void theContentsFollowThePage();
    void theIconsAreSeen_data();
    void theIconsAreSeen();
    void theArrowsAreMirrorImages();
    void nothingLeadsOutside();
    void backAndForward();
    void theProgramFolderStaysAsItIs();
    void aMissingOrDamagedFileIsTold();
    void theHelpClosesWithTheProgram();
    void everyShortcutIsInTheManual();
};

void TestHelpWindow::theMenuOpensTheContents()
{
    const auto main = bench();
    QVERIFY(!helpWindow());
    choose(*main, "mnuHelpContent");
    QCOMPARE(shownPage(), QStringLiteral("index.html"));
    QCOMPARE(inHelp<QTabWidget>("tabHelp")->currentIndex(), 0);
    auto *contents = inHelp<QHelpContentWidget>("lstHelpContents");
    QTRY_COMPARE(contents->model()->rowCount(), 1);
    const QModelIndex manual = contents->model()->index(0, 0);
    QTRY_VERIFY(contents->isExpanded(manual));
    QVERIFY(contents->model()->rowCount(manual) >= 9);
    // A click on an entry shows its page.
    const QModelIndex first = contents->model()->index(0, 0, manual);
    QTest::mouseClick(contents->viewport(), Qt::LeftButton, {}, contents->visualRect(first).center());
    QTest::keyClick(contents, Qt::Key_Return);
    QCOMPARE(shownPage(), QStringLiteral("first-sweep.html"));
    QVERIFY(main->desktop.boxes.isEmpty());
}

void TestHelpWindow::f1OpensThePageOfTheMainWindow()
{
    const auto main = bench();
    QTest::keyClick(main->window.get(), Qt::Key_F1);
    QCOMPARE(shownPage(), QStringLiteral("main-window.html"));
    // The browser finds the page's pictures.
    const auto *browser = inHelp<QTextBrowser>("txtHelp");
    const QVariant picture =
        browser->document()->resource(QTextDocument::ImageResource, QUrl(QStringLiteral("main-window.png")));
    QVERIFY(!picture.isNull());
}

void TestHelpWindow::f1OpensThePageOfADialog_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("page");
    QTest::newRow("configuration") << QStringLiteral("mnuConfig") << QStringLiteral("setup.html");
    QTest::newRow("generator") << QStringLiteral("mnuCalibraDDS") << QStringLiteral("calibration.html#generator");
    QTest::newRow("detector") << QStringLiteral("mnuCalibraDetector") << QStringLiteral("calibration.html#detector");
    QTest::newRow("level") << QStringLiteral("mnuCalibraLevel") << QStringLiteral("calibration.html#level");
    QTest::newRow("preferences") << QStringLiteral("mnuPreferences") << QStringLiteral("preferences.html");
    QTest::newRow("about") << QStringLiteral("mnuAbout") << QStringLiteral("about.html");
}

void TestHelpWindow::f1OpensThePageOfADialog()
{
    QFETCH(QString, entry);
    QFETCH(QString, page);
    const auto main = bench();
    QString shown;
    bool above = false;
    test::whileModal([&](QWidget &dialog) {
        QTest::keyClick(&dialog, Qt::Key_F1);
        shown = shownPage();
        // The help window is above the dialog, so it remains usable while the dialog is open.
        above = helpWindow() && helpWindow()->parentWidget() == &dialog;
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    choose(*main, entry.toLatin1().constData());
    QCOMPARE(shown, page);
    QVERIFY(above);
    // The help window stays open when the dialog closes.
    QCOMPARE(shownPage(), page);
    QCOMPARE(helpWindow()->parentWidget(), main->window.get());
}

void TestHelpWindow::f1OpensTheMessages_data()
{
    QTest::addColumn<bool>("reading");
    QTest::newRow("the main window in front") << false;
    QTest::newRow("the manual in front") << true;
}

void TestHelpWindow::f1OpensTheMessages()
{
    QFETCH(bool, reading);
    const auto main = bench();
    if (reading) {
        choose(*main, "mnuHelpContent");
        QVERIFY(QTest::qWaitForWindowActive(helpWindow()));
    }
    QString shown;
    bool above = false;
    QWidget *owner = nullptr;
    test::whileModal([&](QWidget &dialog) {
        owner = dialog.parentWidget();
        QTest::keyClick(&dialog, Qt::Key_F1);
        shown = shownPage();
        above = helpWindow()->parentWidget() == &dialog;
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    QtDesktop desktop;
    QCOMPARE(desktop.messageBox(BoxIcon::Warning, BoxButtons::Ok, QStringLiteral("told"), QStringLiteral("title")),
             kBoxOk);
    QCOMPARE(shown, QStringLiteral("messages.html"));
    QVERIFY(above);
    // The box belongs to the main window, and so does the manual after the box closes.
    QCOMPARE(owner, main->window.get());
    QCOMPARE(shownPage(), shown);
    QCOMPARE(helpWindow()->parentWidget(), main->window.get());
    QVERIFY(helpWindow()->isVisible());
}

void TestHelpWindow::theIndexFindsAPage()
{
    const auto main = bench();
    choose(*main, "mnuHelpContent");
    inHelp<QTabWidget>("tabHelp")->setCurrentIndex(1);
    auto *index = inHelp<QHelpIndexWidget>("lstHelpIndex");
    QTRY_VERIFY(index->model()->rowCount() > 30);
    auto *word = inHelp<QLineEdit>("txtHelpIndex");
    QTest::keyClicks(word, QStringLiteral("Potentiometer"));
    QTest::keyClick(word, Qt::Key_Return);
    QCOMPARE(shownPage(), QStringLiteral("main-window.html#outputs"));
}

void TestHelpWindow::theSearchFindsAWord()
{
    const auto main = bench();
    choose(*main, "mnuHelpContent");
    inHelp<QTabWidget>("tabHelp")->setCurrentIndex(2);
    auto *engine = helpWindow()->findChild<QHelpSearchEngine *>();
    auto *query = inHelp<QHelpSearchQueryWidget>("frameHelpQuery");
    // The user can type as soon as the search tab opens.
    QVERIFY(query->isAncestorOf(helpWindow()->focusWidget()));
    const auto hits = [&] {
        query->setSearchInput(QStringLiteral("ModemManager"));
        emit query->search();
        (void)QTest::qWaitFor([engine] { return engine->searchResultCount() > 0; }, 200);
        return engine->searchResultCount();
    };
    QTRY_COMPARE_WITH_TIMEOUT(hits(), 2, 20000);
    QStringList pages;
    for (const QHelpSearchResult &result : engine->searchResults(0, 2))
        pages.append(result.url().fileName());
    pages.sort();
    QCOMPARE(pages, (QStringList{QStringLiteral("messages.html"), QStringLiteral("minivna.html")}));
}

void TestHelpWindow::aFoundPageIsOpened()
{
    const auto main = bench();
    choose(*main, "mnuHelpContent");
    QVERIFY(QTest::qWaitForWindowActive(helpWindow()));
    inHelp<QTabWidget>("tabHelp")->setCurrentIndex(2);
    auto *results = inHelp<QTextBrowser>("lstHelpResults");
    // Types immediately, before the search index exists.
    QTest::keyClicks(helpWindow()->focusWidget(), QStringLiteral("start"));
    QTest::keyClick(helpWindow()->focusWidget(), Qt::Key_Return);
    QTRY_VERIFY_WITH_TIMEOUT(results->toPlainText().contains(QStringLiteral("First sweep in five minutes")), 20000);
    const QString found = results->toPlainText();
    QVERIFY2(found.contains(QStringLiteral("\"Apply\", and start")), qPrintable(found));
    // No HTML entity remains, complete or truncated.
    static const QRegularExpression entity(QStringLiteral("&(quot|amp|lt|gt)|\\b(quot|amp|lt|gt);"));
    QVERIFY2(!found.contains(entity), qPrintable(found));
    QVERIFY2(!found.contains(QChar::ObjectReplacementCharacter), qPrintable(found));
    results->moveCursor(QTextCursor::Start);
    results->setFocus();
    // Tab selects the first link, Return follows it.
    QTest::keyClick(results, Qt::Key_Tab);
    const QUrl link(results->textCursor().charFormat().anchorHref());
    QVERIFY(!link.isEmpty());
    QTest::keyClick(results, Qt::Key_Return);
    QCOMPARE(inHelp<QTextBrowser>("txtHelp")->source(), link);
    QVERIFY(shownPage() != QStringLiteral("index.html"));

    auto *word = inHelp<QHelpSearchQueryWidget>("frameHelpQuery");
    word->setSearchInput(QStringLiteral("xylophone"));
    emit word->search();
    QTRY_COMPARE(results->toPlainText(), QStringLiteral("No page contains these words."));
}

void TestHelpWindow::excerptsHaveWholeEntities_data()
{
    QTest::addColumn<QString>("excerpt");
    QTest::addColumn<QString>("mended");
    const auto row = [](const char *name, const char *excerpt, const char *mended) {
        QTest::newRow(name) << QString::fromUtf8(excerpt) << QString::fromUtf8(mended);
    };
    row("whole", "...Press M1 -&gt; <b>Start</b>. The...", "...Press M1 -&gt; <b>Start</b>. The...");
    row("cut at the end", "...and press <b>M1</b> -&gt...", "...and press <b>M1</b> -&gt;...");
    row("cut at the very end", "press <b>M1</b> -&gt", "press <b>M1</b> -&gt;");
    row("cut at the beginning", "...quot;Apply&quot;, and <b>start</b>...",
        "...&quot;Apply&quot;, and <b>start</b>...");
    row("the word looked for", "M1 -&<b>gt</b>; Start", "M1 -&gt; Start");
    row("a picture", "The generator\n\xEF\xBF\xBC\nSelect", "The generator\n\nSelect");
    row("nothing to mend", "...Auto quota...", "...Auto quota...");
}

void TestHelpWindow::excerptsHaveWholeEntities()
{
    QFETCH(QString, excerpt);
    QFETCH(QString, mended);
    QCOMPARE(mendedExcerpt(excerpt), mended);
}

void TestHelpWindow::theContentsFollowThePage()
{
    const auto main = bench();
    QTest::keyClick(main->window.get(), Qt::Key_F1);
    auto *contents = inHelp<QHelpContentWidget>("lstHelpContents");
    // Only a visible entry counts.
    const auto entry = [contents] {
        const QRect place = contents->visualRect(contents->currentIndex());
        const bool isSeen = !place.isEmpty() && contents->viewport()->rect().intersects(place);
        return isSeen ? contents->currentIndex().data().toString() : QString();
    };
    // The contents may load after the page.
    QTRY_COMPARE(entry(), QStringLiteral("The main window"));
    auto *browser = inHelp<QTextBrowser>("txtHelp");
    // Follows a link on the page with the keyboard.
    browser->setFocus();
    QTest::keyClick(browser, Qt::Key_Tab);
    QTest::keyClick(browser, Qt::Key_Return);
    QCOMPARE(shownPage(), QStringLiteral("keys.html#graph"));
    QCOMPARE(entry(), QStringLiteral("Keyboard and mouse"));
    helpWindow()->showPage(QStringLiteral("files.html#settings"));
    QCOMPARE(entry(), QStringLiteral("The settings file"));
    // An anchor without an entry selects its page's entry.
    helpWindow()->showPage(QStringLiteral("files.html#pictures"));
    QCOMPARE(entry(), QStringLiteral("Files, pictures and printing"));
    QVERIFY(QTest::qWaitForWindowActive(helpWindow()));
    QTest::keyClick(helpWindow()->focusWidget(), Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(shownPage(), QStringLiteral("files.html#settings"));
    QCOMPARE(entry(), QStringLiteral("The settings file"));
    QTest::keyClick(helpWindow()->focusWidget(), Qt::Key_Home, Qt::AltModifier);
    QCOMPARE(entry(), QStringLiteral("Calvorn"));
}

void TestHelpWindow::theIconsAreSeen_data()
{
    QTest::addColumn<QPalette>("colours");
    QTest::newRow("light") << QPalette(QColor(239, 239, 239));
    QTest::newRow("dark") << QPalette(QColor(49, 54, 59), QColor(42, 46, 50));
}

void TestHelpWindow::theIconsAreSeen()
{
    QFETCH(QPalette, colours);
    const auto main = bench();
    choose(*main, "mnuHelpContent");
    // Qt's indexer reads the palette in a separate thread; once a search succeeds, indexing is complete.
    auto *query = inHelp<QHelpSearchQueryWidget>("frameHelpQuery");
    const auto *engine = helpWindow()->findChild<QHelpSearchEngine *>();
    const auto isIndexed = [&] {
        query->setSearchInput(QStringLiteral("ModemManager"));
        emit query->search();
        (void)QTest::qWaitFor([engine] { return engine->searchResultCount() > 0; }, 200);
        return engine->searchResultCount() > 0;
    };
    QTRY_VERIFY_WITH_TIMEOUT(isIndexed(), 20000);
    // The desktop changes its colours while the help window is open.
    const QPalette usual = QApplication::palette();
    const auto back = qScopeGuard([usual] { QApplication::setPalette(usual); });
    QApplication::setPalette(colours);
    const int ground = colours.color(QPalette::Window).lightness();
    QList<QImage> seen;
    for (const char *name : {"mnuHelpFirst", "mnuHelpClose"}) {
        const QImage icon = inHelp<QAction>(name)->icon().pixmap(QSize(24, 24)).toImage();
        int clear = 0;
        for (int y = 0; y < icon.height(); ++y)
            for (int x = 0; x < icon.width(); ++x) {
                const QColor pixel = icon.pixelColor(x, y);
                clear += pixel.alpha() > 200 && std::abs(pixel.lightness() - ground) > 100 ? 1 : 0;
            }
        QVERIFY2(clear > 40, qPrintable(QStringLiteral("%1: %2").arg(QString::fromLatin1(name)).arg(clear)));
        seen.append(icon);
    }
    QVERIFY(seen[0] != seen[1]);
}

void TestHelpWindow::theArrowsAreMirrorImages()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    const auto picture = [](HelpIcon icon) { return helpIcon(icon).pixmap(32, 32).toImage(); };
    const QImage back = picture(HelpIcon::Back);
    QCOMPARE(picture(HelpIcon::Forward), back.mirrored(true, false));
    QCOMPARE(back, back.mirrored(false, true));
}

void TestHelpWindow::nothingLeadsOutside()
{
    const auto main = bench();
    choose(*main, "mnuHelpContent");
    auto *browser = inHelp<QTextBrowser>("txtHelp");
    browser->setSource(QUrl(QStringLiteral("http://127.0.0.1/")));
    QCOMPARE(shownPage(), QStringLiteral("index.html"));
    browser->setSource(QUrl::fromLocalFile(main->folder.iniPath()));
    QCOMPARE(shownPage(), QStringLiteral("index.html"));
    QVERIFY(browser->loadResource(QTextDocument::HtmlResource, QUrl::fromLocalFile(main->folder.iniPath()))
                .toByteArray()
                .isEmpty());
}

void TestHelpWindow::backAndForward()
{
    const auto main = bench();
    choose(*main, "mnuHelpContent");
    auto *back = inHelp<QAction>("mnuHelpBack");
    QVERIFY(!back->isEnabled());
    helpWindow()->showPage(QStringLiteral("keys.html"));
    QVERIFY(QTest::qWaitForWindowActive(helpWindow()));
    // The main window's activation may still be pending.
    QCoreApplication::processEvents();
    helpWindow()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(helpWindow()));
    QTest::keyClick(helpWindow()->focusWidget(), Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(shownPage(), QStringLiteral("index.html"));
    QTest::keyClick(helpWindow()->focusWidget(), Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(shownPage(), QStringLiteral("keys.html"));
    QTest::keyClick(helpWindow()->focusWidget(), Qt::Key_Home, Qt::AltModifier);
    QCOMPARE(shownPage(), QStringLiteral("index.html"));
    // F1 in the manual itself does not change the page.
    QTest::keyClick(helpWindow(), Qt::Key_F1);
    QCOMPARE(shownPage(), QStringLiteral("index.html"));
    QTest::keyClick(helpWindow(), Qt::Key_Escape);
    QCOMPARE(shownPage(), QString());
    choose(*main, "mnuHelpContent");
    QCOMPARE(shownPage(), QStringLiteral("index.html"));
}

void TestHelpWindow::theProgramFolderStaysAsItIs()
{
    const auto main = bench();
    const QDir folder(main->folder.path());
    const QStringList before = folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
    choose(*main, "mnuHelpContent");
    test::nothingHappensFor(200);
    QCOMPARE(folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System), before);
}

void TestHelpWindow::aMissingOrDamagedFileIsTold()
{
    const auto main = bench();
    for (const QByteArray &content : {QByteArray(), QByteArray("this is no help file")}) {
        QFile file(helpFile(*main));
        QVERIFY(file.remove());
        if (!content.isEmpty()) {
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(content);
            file.close();
        }
        main->desktop.boxes.clear();
        choose(*main, "mnuHelpContent");
        QCOMPARE(main->desktop.boxes.size(), 1);
        QCOMPARE(main->desktop.lastText(),
                 QStringLiteral("The help file %1 is missing or damaged.").arg(helpFile(*main)));
        QVERIFY(!helpWindow());
        QVERIFY(file.exists() || file.open(QIODevice::WriteOnly));
    }
}

void TestHelpWindow::theHelpClosesWithTheProgram()
{
    const auto main = bench();
    choose(*main, "mnuHelpContent");
    QVERIFY(helpWindow());
    QVERIFY(main->window->close());
    QVERIFY(!helpWindow());
}

// Also checks that every shortcut named in the manual exists.
void TestHelpWindow::everyShortcutIsInTheManual()
{
    const auto main = bench();
    choose(*main, "mnuMeasure"); // the panel adds its keys
    choose(*main, "mnuHelpContent");
    helpWindow()->showPage(QStringLiteral("keys.html"));
    const QString page = inHelp<QTextBrowser>("txtHelp")->toPlainText();
    QSet<QString> shortcuts;
    for (const QWidget *window : {static_cast<QWidget *>(main->window.get()), static_cast<QWidget *>(helpWindow())}) {
        for (const QAction *action : window->findChildren<QAction *>())
            shortcuts.insert(action->shortcut().toString());
        for (const QAbstractButton *button : window->findChildren<QAbstractButton *>())
            shortcuts.insert(button->shortcut().toString());
        for (const QShortcut *shortcut : window->findChildren<QShortcut *>())
            shortcuts.insert(shortcut->key().toString());
    }
    // Letters used with Alt are underlined in the captions; a control without a shortcut has an empty key sequence.
    static const QRegularExpression mnemonic(QStringLiteral("^(Alt\\+.)?$"));
    shortcuts.removeIf([](const QString &keys) { return keys.contains(mnemonic); });
    QVERIFY(shortcuts.size() > 10);
    for (const QString &keys : shortcuts)
        QVERIFY2(page.contains(keys == u"Esc" ? QStringLiteral("Escape") : keys), qPrintable(keys));
    static const QRegularExpression named(
        QStringLiteral(R"(\b(?:(?:Ctrl|Alt|Shift)\+(?:Shift\+)?(?:[A-Z]|\w{4,5})|F\d+)\b)"));
    for (auto match = named.globalMatch(page); match.hasNext();) {
        const QString keys = match.next().captured();
        // The toolkit handles the Tab key itself.
        QVERIFY2(shortcuts.contains(keys) || keys == u"Shift+Tab", qPrintable(keys));
    }
}

QTEST_MAIN(TestHelpWindow)
#include "test_help_window.moc"
