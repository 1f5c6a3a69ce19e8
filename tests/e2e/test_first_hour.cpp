// SPDX-License-Identifier: MIT
// Tests what a new user does in the first hour with the simulated board, including mistakes. Each stage starts from a
// separate state, so that a failure does not hide failures of later stages.
#include "tests/e2e/first_hour.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTest>

#include <cmath>
#include <memory>

using namespace calvorn::test;

namespace {

const QStringList kLeftClick{QStringLiteral("click"), QStringLiteral("1")};
const QStringList kRightClick{QStringLiteral("click"), QStringLiteral("3")};

QStringList shifted(const QStringList &click)
{
    return QStringList{QStringLiteral("keydown"), QStringLiteral("shift")} + click +
           QStringList{QStringLiteral("keyup"), QStringLiteral("shift")};
}

} // namespace

class TestFirstHour : public QObject
{
    Q_OBJECT

private:
    WindowManager m_windowManager;
    std::unique_ptr<FirstHour> m_hour;

    static void addCountries();
    // Prepares a new folder with these settings, for the test row's country.
    void begin(const QByteArray &settings);
    // Does the same, then runs a sweep and saves it as first.csv.
    void beginWithSweep(const QByteArray &settings = FirstHour::settingsWithRange());
    void configure();
    RealProgram &program() { return m_hour->program(); }

    QByteArray m_csv;        // the sweep of beginWithSweep()
    QList<SavedRow> m_saved; // its rows

private slots:
    void measures_data() { addCountries(); }
    void measures();
    void entersARange_data() { addCountries(); }
    void entersARange();
    void turnsTheWheel_data() { addCountries(); }
    void turnsTheWheel();
    void putsMarkers_data() { addCountries(); }
    void putsMarkers();
    void goesThroughTheScales_data() { addCountries(); }
    void goesThroughTheScales();
    void readsTheTable_data() { addCountries(); }
    void readsTheTable();
    void opensAFileThatIsNone_data() { addCountries(); }
    void opensAFileThatIsNone();
    void opensTheFileAgain_data() { addCountries(); }
    void opensTheFileAgain();
    void looksForHelp_data() { addCountries(); }
    void looksForHelp();
    void comesBackToWhatWasLeft_data() { addCountries(); }
    void comesBackToWhatWasLeft();
    void changesTheSetUp_data() { addCountries(); }
    void changesTheSetUp();
    void readsTheLog_data() { addCountries(); }
    void readsTheLog();
    void findsPlacesThatCannotBeWritten_data() { addCountries(); }
    void findsPlacesThatCannotBeWritten();
    void closesWhileSweeping_data() { addCountries(); }
    void closesWhileSweeping();
    void leavesSaneSettings_data() { addCountries(); }
    void leavesSaneSettings();
    void cleanup();
};

void TestFirstHour::addCountries()
{
    QTest::addColumn<QString>("country");
    QTest::newRow("decimal point") << QStringLiteral("en_US");
    QTest::newRow("decimal comma") << QStringLiteral("it_IT");
}

void TestFirstHour::begin(const QByteArray &settings)
{
    QFETCH(QString, country);
    m_hour = std::make_unique<FirstHour>(country, settings);
}

void TestFirstHour::beginWithSweep(const QByteArray &settings)
{
    begin(settings);
    QVERIFY(m_hour->start("AD9851"));
    QVERIFY(m_hour->sweep());
    m_csv = m_hour->savedSweep(QStringLiteral("first.csv"));
    m_saved = rowsOf(m_csv);
    QCOMPARE(m_saved.size(), kRows + 1);
}

void TestFirstHour::cleanup()
{
    if (QTest::currentTestFailed() && m_hour)
        qWarning("seen: %s", qPrintable(m_hour->seen()));
    m_hour.reset();
}

void TestFirstHour::measures()
{
    begin(FirstHour::preparedSettings());
    QVERIFY(m_hour->start("AD9851"));
    QVERIFY(!m_hour->curveIsHigh());
    QVERIFY(m_hour->sweep());
}

// Enters letters, a number that is too large, and a number with the locale's group separators.
void TestFirstHour::entersARange()
{
    begin(FirstHour::preparedSettings());
    QVERIFY(m_hour->start("AD9851"));
    QVERIFY(m_hour->sweep());
    QVERIFY(m_hour->backTo(QStringLiteral("1000000")));
    m_hour->type(QStringLiteral("six"));
    QCOMPARE(m_hour->copied({QStringLiteral("Tab"), QStringLiteral("ctrl+c")}), QStringLiteral("15000000"));
    QVERIFY(m_hour->backTo(QStringLiteral("1000000")));
    m_hour->type(QStringLiteral("6000000"));
    m_hour->press({QStringLiteral("Tab")});
    m_hour->type(QStringLiteral("99999999999"));
    m_hour->press({QStringLiteral("Tab")});
    QVERIFY(m_hour->backTo(QStringLiteral("70000000")));
    m_hour->type(m_hour->grouped(8200000));
    m_hour->press({QStringLiteral("Tab")});
    QVERIFY(m_hour->backTo(QStringLiteral("8200000")));
    // A new range removes the old curve.
    QTRY_COMPARE(m_hour->curvePixelsShown(), 0);
}

void TestFirstHour::turnsTheWheel()
{
    begin(FirstHour::settingsWithRange());
    QVERIFY(m_hour->start("AD9851"));
    const QRect digits = m_hour->startDigits(QStringLiteral("6000000"));
    QVERIFY(!digits.isEmpty());
    const double width = digits.width() / 7.0;
    const QPoint hundreds(digits.right() - static_cast<int>(2.5 * width), digits.center().y());
    const auto turn = [&](const char *button) {
        m_hour->mouseAt(hundreds, {QStringLiteral("click"), QString::fromLatin1(button)});
    };
    const auto shown = [&] { return m_hour->copied({QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c")}); };
    // At first the new number has group separators. Once the range is planned, the focused box shows it without them.
    turn("4");
    QCOMPARE(shown().remove(m_hour->locale().groupSeparator()), QStringLiteral("6000100"));
    turn("5");
    QCOMPARE(shown().remove(m_hour->locale().groupSeparator()), QStringLiteral("6000000"));
    QTRY_COMPARE(shown(), QStringLiteral("6000000"));
    QVERIFY(m_hour->sweep());
}

void TestFirstHour::putsMarkers()
{
    beginWithSweep();
    if (QTest::currentTestFailed())
        return;
    const FirstHour &hour = *m_hour;
    hour.mouseAt(hour.placeOf(100, 0.6), kLeftClick);
    hour.mouseAt(hour.placeOf(300, 0.6), kRightClick);
    hour.mouseAt(hour.placeOf(350, 0.25), shifted(kLeftClick));
    hour.mouseAt(hour.placeOf(350, 0.75), shifted(kRightClick));
    // Drags M2.
    hour.mouseAt(hour.placeOf(300, 0.6),
                 {QStringLiteral("mousedown"), QStringLiteral("1"), QStringLiteral("mousemove_relative"),
                  QStringLiteral("--sync"), QStringLiteral("--"), QStringLiteral("-20"), QStringLiteral("0")});
    hour.mouseAt(hour.placeOf(240, 0.6), {QStringLiteral("mouseup"), QStringLiteral("1")});

    QCOMPARE(m_saved[1].hertz, 6e6);
    const double peak = highestOf(m_saved).hertz;
    QVERIFY2(std::abs(peak - 7.1e6) < 300e3, qPrintable(QString::number(peak)));

    const PictureTexts texts = hour.savedPicture(QStringLiteral("markers.svg"));
    QCOMPARE(texts.after("M1"), hour.inHertz(m_saved[100].hertz));
    QCOMPARE(texts.after("M1", 2), hour.inVolts(m_saved[100].millivolts));
    QCOMPARE(texts.after("M2"), hour.inHertz(m_saved[240].hertz));
    QCOMPARE(texts.after("M2", 2), hour.inVolts(m_saved[240].millivolts));
    QCOMPARE(texts.after("M2 - M1"), hour.inHertz(m_saved[240].hertz - m_saved[100].hertz));
    // The plot ranges from 0.998 V at the top to -0.002 V at the bottom.
    const double m3 = hour.numberOf(texts.after("M3"));
    const double m4 = hour.numberOf(texts.after("M4"));
    QVERIFY2(std::abs(m3 - 0.748) < 0.004 && std::abs(m4 - 0.248) < 0.004, qPrintable(texts.all()));
    QCOMPARE(texts.after("M4 - M3"), hour.inVolts(std::round((m3 - m4) * 1000.0)));
    hour.savedPicture(QStringLiteral("sweep.png"));
    const QImage picture(hour.path(QStringLiteral("sweep.png")));
    QVERIFY(picture.width() >= 600 && curvePixels(picture) > 100);
}

void TestFirstHour::goesThroughTheScales()
{
    beginWithSweep();
    if (QTest::currentTestFailed())
        return;
    const FirstHour &hour = *m_hour;
    hour.mouseAt(hour.placeOf(100, 0.6), kLeftClick);
    hour.mouseAt(hour.placeOf(350, 0.25), shifted(kLeftClick));
    const auto number = [&](double value, int decimals) { return hour.locale().toString(value, 'f', decimals); };
    const double volts = m_saved[100].millivolts / 1000.0;
    for (const int scale : {1, 2, 3, 4}) {
        hour.press(QStringList{QStringLiteral("alt+c")} + QStringList(scale, QStringLiteral("Down")) +
                   QStringList{QStringLiteral("Return")});
        const PictureTexts texts = hour.savedPicture(QStringLiteral("%1.svg").arg(scale));
        const int reference = scale < 3 ? 1 : 10;
        const QString expected = QStringLiteral("Logarithmic scale, %1 to %2 dB, 0 dB is %3 V")
                                     .arg(number(scale % 2 == 0 ? 10.0 : 0.0, 1), number(-60.0, 1))
                                     .arg(reference);
        QVERIFY2(texts.contains(expected), qPrintable(texts.all()));
        const QString m1 = texts.after("M1", 2);
        QVERIFY2(std::abs(hour.numberOf(m1) - 20.0 * std::log10(volts / reference)) < 0.06, qPrintable(m1));
        QVERIFY2(m1.endsWith(QStringLiteral(" dB")), qPrintable(m1));
    }
    hour.press({QStringLiteral("alt+c"), QStringLiteral("Return")});
    const PictureTexts texts = hour.savedPicture(QStringLiteral("0.svg"));
    QVERIFY2(texts.contains(QStringLiteral("Linear scale, 0 to %1 V").arg(number(1.0, 2))), qPrintable(texts.all()));
    QCOMPARE(texts.after("M1", 2), hour.inVolts(m_saved[100].millivolts));
    // The dB scales round M3 to a tenth of a dB, so some accuracy is lost.
    QVERIFY2(std::abs(hour.numberOf(texts.after("M3")) - 0.748) < 0.02, qPrintable(texts.after("M3")));
}

void TestFirstHour::readsTheTable()
{
    beginWithSweep();
    if (QTest::currentTestFailed())
        return;
    m_hour->press({QStringLiteral("alt+v"), QStringLiteral("t")});
    const auto line = [this](const SavedRow &row) {
        return QStringList{m_hour->grouped(row.hertz), m_hour->inVolts(row.millivolts).section(u' ', 0, 0),
                           QString::number(row.count)}
            .join(u'\t');
    };
    QVERIFY(m_hour->tabTo([&](const QString &text) { return text == line(m_saved[1]); }));
    QCOMPARE(m_hour->copied({QStringLiteral("ctrl+End"), QStringLiteral("ctrl+c")}), line(m_saved[kRows]));
    QCOMPARE(m_hour->copied({QStringLiteral("shift+Up"), QStringLiteral("ctrl+c")}),
             line(m_saved[kRows - 1]) + u'\n' + line(m_saved[kRows]));
}

// The program silently ignores a file that is not a sweep.
void TestFirstHour::opensAFileThatIsNone()
{
    beginWithSweep();
    if (QTest::currentTestFailed())
        return;
    QFile file(m_hour->path(QStringLiteral("letter.csv")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("Dear reader,\r\nthis is no sweep, but a letter.\r\n");
    file.close();
    QVERIFY(m_hour->chooseFile(QStringLiteral("ctrl+o"), kOpenDialog, QStringLiteral("letter.csv")));
    QVERIFY(program().waitForWindow(kBox, 300).isEmpty());
    QCOMPARE(m_hour->savedSweep(QStringLiteral("unchanged.csv")), m_csv);
}

void TestFirstHour::opensTheFileAgain()
{
    beginWithSweep();
    if (QTest::currentTestFailed())
        return;
    // A new range removes the sweep.
    const QRect startBox = m_hour->startDigits(QStringLiteral("6000000"));
    QVERIFY(!startBox.isEmpty());
    m_hour->type(QStringLiteral("2000000"));
    m_hour->press({QStringLiteral("Tab")});
    QTRY_COMPARE(m_hour->curvePixelsShown(), 0);
    QVERIFY(m_hour->chooseFile(QStringLiteral("ctrl+o"), kOpenDialog, QStringLiteral("first.csv")));
    QTRY_VERIFY(m_hour->curveIsHigh());
    QCOMPARE(m_hour->savedSweep(QStringLiteral("again.csv")), m_csv);
    QCOMPARE(m_hour->clickedText(startBox.center()), QStringLiteral("6000000"));
}

void TestFirstHour::looksForHelp()
{
    begin(FirstHour::preparedSettings());
    QVERIFY(m_hour->start("AD9851"));
    m_hour->press({QStringLiteral("F1")});
    const QString title = QStringLiteral("^Calvorn Help$");
    const QString help = program().waitForWindow(title);
    QVERIFY(!help.isEmpty() && RealProgram::activate(help));
    // The page may appear later than its window.
    QString page;
    const bool isShown = QTest::qWaitFor(
        [&] {
            program().mouseAt(program().cornerOf(help) + QPoint(500, 300), kLeftClick);
            page = program().copied({QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c")}, 1'000);
            return page.contains(QStringLiteral("main window"), Qt::CaseInsensitive);
        },
        20'000);
    QVERIFY2(isShown, qPrintable(page));
    program().keys({QStringLiteral("Escape")});
    QVERIFY(program().waitUntilGone(title));
}

void TestFirstHour::comesBackToWhatWasLeft()
{
    beginWithSweep();
    if (QTest::currentTestFailed())
        return;
    m_hour->mouseAt(m_hour->placeOf(100, 0.6), kLeftClick);
    m_hour->mouseAt(m_hour->placeOf(350, 0.25), shifted(kLeftClick));
    // Opening a file sets the range to its first and last row.
    QVERIFY(m_hour->chooseFile(QStringLiteral("ctrl+o"), kOpenDialog, QStringLiteral("first.csv")));
    m_hour->press({QStringLiteral("alt+v"), QStringLiteral("t")});
    const double m1 = m_saved[100].hertz;
    const double last = m_saved[kRows].hertz;
    m_hour->press({QStringLiteral("ctrl+q")});
    QVERIFY(program().waitForEnd());
    QCOMPARE(program().serversRunning(), 0);
    QCOMPARE(program().setting("Calvorn", "Start"), QStringLiteral("6000000"));
    QCOMPARE(program().setting("Calvorn", "Stop"), QString::number(last, 'f', 0));
    QCOMPARE(program().setting("Calvorn", "Marker 1"), QString::number(m1, 'f', 0));
    QCOMPARE(program().setting("Calvorn", "Marker 0"), QStringLiteral("1"));
    const double m3 = m_hour->locale().toDouble(program().setting("Calvorn", "Marker 3"));
    QVERIFY2(std::abs(m3 - 0.748) < 0.004, qPrintable(QString::number(m3)));

    QVERIFY(m_hour->start("AD9851"));
    const PictureTexts texts = m_hour->savedPicture(QStringLiteral("back.svg"));
    QVERIFY2(texts.contains(QStringLiteral("Linear scale, 0 to %1 V").arg(m_hour->locale().toString(1.0, 'f', 2))),
             qPrintable(texts.all()));
    QVERIFY2(texts.contains(m_hour->inHertz(6e6)), qPrintable(texts.all()));
    QCOMPARE(m_hour->numberOf(texts.after("M3")), m3);
    // The reloaded range has a slightly smaller step, so M1 moves to the next row.
    const double step = std::nearbyint((last - 6e6) / kRows);
    QCOMPARE(texts.after("M1"), m_hour->inHertz(6e6 + step * std::ceil((m1 - 6e6) / step)));
    // The table is visible again.
    QVERIFY(m_hour->tabTo([&](const QString &text) { return text.section(u'\t', 0, 0) == m_hour->grouped(6e6); }));
    QVERIFY(m_hour->backTo(QStringLiteral("6000000")));
    QCOMPARE(m_hour->copied({QStringLiteral("Tab"), QStringLiteral("ctrl+c")}), QString::number(last, 'f', 0));
}

// Selects another chip and its clock, enters an invalid limit and corrects it, and selects another port.
void TestFirstHour::configure()
{
    m_hour->press({QStringLiteral("alt+s"), QStringLiteral("c")});
    const QString dialog = program().waitForWindow(kConfigurationDialog);
    QVERIFY(!dialog.isEmpty() && RealProgram::activate(dialog));
    // A button pressed by its mnemonic stays down for a moment before it acts.
    QVERIFY(program().keysChange({QStringLiteral("alt+t")}, dialog));
    QVERIFY(program().keysChange({QStringLiteral("alt+0")}, dialog));
    program().keys({QStringLiteral("alt+r"), QStringLiteral("ctrl+a")});
    program().typeText(QStringLiteral("125000000"));
    program().keys({QStringLiteral("alt+x")});
    program().typeText(QStringLiteral("fast"));
    program().keys({QStringLiteral("Tab")});
    QCOMPARE(program().copied({QStringLiteral("alt+x"), QStringLiteral("ctrl+c")}), QStringLiteral("70000000"));
    program().typeText(QStringLiteral("40000000"));
    // On the ports page, selects the entry above the free number.
    QVERIFY(program().keysChange({QStringLiteral("alt+p")}, dialog));
    program().keys({QStringLiteral("Tab"), QStringLiteral("Up"), QStringLiteral("alt+a")});
    const QString question = program().waitForBox();
    QVERIFY(!question.isEmpty());
    QCOMPARE(program().lineOfBox(question), QStringLiteral("Please confirm, now program will exit."));
    program().keys({QStringLiteral("Return")});
    QVERIFY(program().waitForEnd());
    QCOMPARE(program().serversRunning(), 0);
}

void TestFirstHour::changesTheSetUp()
{
    begin(FirstHour::settingsWithRange());
    QVERIFY(m_hour->start("AD9851"));
    configure();
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(program().setting("Config", "DDS Device"), QStringLiteral("AD9850"));
    QCOMPARE(program().setting("Config", "DDS Xtal freq"), QStringLiteral("125000000"));
    QCOMPARE(program().setting("Config", "DDS Multiplier"), QStringLiteral("1"));
    QCOMPARE(program().setting("Config", "DDS Max freq"), QStringLiteral("40000000"));
    QCOMPARE(program().setting("Serial Port", "CommPort"), QStringLiteral("6"));
    QCOMPARE(program().setting("Parallel Port", "LPT"), QStringLiteral("&H0"));
    // The manual tells users to change this line to switch on the log.
    QCOMPARE(contentOf(m_hour->path(QStringLiteral("Calvorn.ini"))).count("Log=0"), 1);
}

void TestFirstHour::readsTheLog()
{
    begin(FirstHour::settingsWithOtherChip());
    QVERIFY(m_hour->start("AD9850"));
    QVERIFY(m_hour->sweep());
    QVERIFY(m_hour->tabTo([](const QString &text) { return text == QStringLiteral("L> Stop sweep"); }));
    const QString log = m_hour->copied({QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c")});
    QCOMPARE(log, QStringLiteral("L> Start sweep\nL> Stop sweep"));
    const QList<SavedRow> rows = rowsOf(m_hour->savedSweep(QStringLiteral("other-chip.csv")));
    QCOMPARE(rows.size(), kRows + 1);
    const double peak = highestOf(rows).hertz;
    QVERIFY2(std::abs(peak - 7.1e6) < 300e3, qPrintable(QString::number(peak)));
}

// Not even root can create a file in /sys.
void TestFirstHour::findsPlacesThatCannotBeWritten()
{
    begin(FirstHour::settingsWithOtherChip());
    QVERIFY(m_hour->start("AD9850"));
    QVERIFY(m_hour->sweep());
    QVERIFY(m_hour->tabTo([](const QString &text) { return text == QStringLiteral("L> Stop sweep"); }));
    // The log keeps the focus.
    QVERIFY(m_hour->chooseFile(QStringLiteral("ctrl+s"), kSaveDialog, QStringLiteral("/sys/sweep.csv")));
    const QString line = m_hour->copied({QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c")}).section(u'\n', -1);
    QVERIFY2(line.startsWith(QStringLiteral("Export: ")) && line.contains(QStringLiteral("/sys/sweep.csv")),
             qPrintable(line));
    QVERIFY(m_hour->chooseFile(QStringLiteral("ctrl+shift+s"), kSaveDialog, QStringLiteral("/sys/sweep.png")));
    const QString box = program().waitForBox();
    QVERIFY(!box.isEmpty());
    const QString text = program().lineOfBox(box);
    QVERIFY2(text.contains(QStringLiteral("/sys/sweep.png")), qPrintable(text));
    program().keys({QStringLiteral("Return")});
    QVERIFY(program().waitUntilGone(kBox));
}

void TestFirstHour::closesWhileSweeping()
{
    begin(FirstHour::settingsWithRange());
    QVERIFY(m_hour->start("AD9851"));
    m_hour->press({QStringLiteral("F5")});
    QTRY_VERIFY_WITH_TIMEOUT(m_hour->curveIsHigh(), 10'000);
    QCOMPARE(program().serversRunning(), 1);
    // Clicks the last button in the window frame, above the right edge of the 800-pixel-wide window.
    m_hour->mouseAt({790, -10}, kLeftClick);
    QVERIFY(program().waitForEnd());
    QCOMPARE(program().serversRunning(), 0);
}

// Checks the settings file after a new range, a marker, another configuration and a restart.
void TestFirstHour::leavesSaneSettings()
{
    const QByteArray prepared = FirstHour::preparedSettings();
    begin(prepared);
    QVERIFY(m_hour->start("AD9851"));
    QVERIFY(m_hour->backTo(QStringLiteral("1000000")));
    m_hour->type(QStringLiteral("6000000"));
    m_hour->press({QStringLiteral("Tab")});
    m_hour->type(QStringLiteral("8200000"));
    m_hour->press({QStringLiteral("Tab")});
    QVERIFY(m_hour->backTo(QStringLiteral("8200000")));
    m_hour->mouseAt(m_hour->placeOf(350, 0.25), shifted(kLeftClick));
    m_hour->press({QStringLiteral("ctrl+q")});
    QVERIFY(program().waitForEnd());
    QVERIFY(m_hour->start("AD9851"));
    configure();
    if (QTest::currentTestFailed())
        return;
    QVERIFY(m_hour->start("AD9850"));
    m_hour->press({QStringLiteral("ctrl+q")});
    QVERIFY(program().waitForEnd());

    const QByteArray settings = contentOf(m_hour->path(QStringLiteral("Calvorn.ini")));
    // Unchanged sections are preserved exactly.
    QVERIFY2(settings.startsWith(prepared.left(prepared.indexOf("[Config]"))), settings.constData());
    QVERIFY2(settings.contains(prepared.mid(prepared.indexOf("[Interface1]"))), settings.constData());
    QSet<QByteArray> keys;
    QByteArray section;
    for (const QByteArray &line : settings.split('\n')) {
        const QByteArray text = line.trimmed();
        if (text.isEmpty() || text.startsWith(';'))
            continue;
        const bool opens = text.startsWith('[');
        QVERIFY2(opens ? text.endsWith(']') : text.contains('='), text.constData());
        if (opens)
            section = text;
        const QByteArray key = opens ? text : section + text.split('=').first().toLower();
        QVERIFY2(!keys.contains(key), key.constData());
        keys.insert(key);
    }
    QCOMPARE(program().setting("Calvorn", "Start"), QStringLiteral("6000000"));
    QCOMPARE(program().setting("Config", "DDS Device"), QStringLiteral("AD9850"));
    QCOMPARE(program().setting("Calvorn", "Max scaleV"), QStringLiteral("1"));
    const QString m3 = program().setting("Calvorn", "Marker 3");
    QVERIFY2(m3.startsWith(QStringLiteral("0") + m_hour->locale().decimalPoint()), qPrintable(m3));
    // No temporary files are left in the folder.
    const QStringList files = QDir(program().folder()).entryList(QDir::Files | QDir::Hidden);
    for (const QString &name : files)
        QVERIFY2(!name.contains(QStringLiteral("tmp"), Qt::CaseInsensitive), qPrintable(files.join(u' ')));
}

QTEST_MAIN(TestFirstHour)
#include "test_first_hour.moc"
