// SPDX-License-Identifier: MIT
// Everything that a stranger with the simulated board comes across in a first hour, once and in one piece, the slips
// included. What has happened is read back from the clipboard, the saved pictures, the sweep files and the settings.
#include "tests/e2e/real_program.h"
#include "tests/support/program_folder.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QSet>
#include <QTest>
#include <QXmlStreamReader>

#include <algorithm>
#include <cmath>
#include <functional>

using namespace calvorn::test;

namespace {

constexpr int kRows = 400;
constexpr int kMostTabs = 16;
constexpr QRgb kMajorGrid = qRgb(0, 200, 0);
constexpr QRgb kSelectedText = qRgb(48, 140, 198);
const QString kSaveDialog = QStringLiteral("^Save As$");
const QString kOpenDialog = QStringLiteral("^Open$");
const QString kBox = QStringLiteral("^Brenik - Calvorn  v2.0$");
const QString kMainWindow = QStringLiteral("^Brenik - Calvorn  v2.0 - ");

// The smallest rectangle around every pixel of this colour.
QRect extentOf(const QImage &screen, QRgb colour)
{
    QRect extent;
    for (int y = 0; y < screen.height(); ++y)
        for (int x = 0; x < screen.width(); ++x)
            if (screen.pixel(x, y) == colour)
                extent |= QRect(x, y, 1, 1);
    return extent;
}

struct Row
{
    double hertz;
    double count;
    double millivolts;
};

// Rows 1 to 400 at the indexes 1 to 400.
QList<Row> rowsOf(const QByteArray &csv)
{
    QList<Row> rows;
    for (const QByteArray &line : csv.split('\n')) {
        const QList<QByteArray> fields = line.trimmed().split(',');
        if (fields.size() == 4)
            rows.append({fields[1].toDouble(), fields[2].toDouble(), fields[3].toDouble()});
    }
    return rows;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

// What a saved picture says beside its curve.
class PictureTexts
{
public:
    explicit PictureTexts(const QString &svg)
    {
        QXmlStreamReader reader(contentOf(svg));
        while (!reader.atEnd())
            if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == u"text")
                m_texts.append(reader.readElementText().trimmed());
    }

    // The text that follows this one, or a later one.
    QString after(const char *text, int distance = 1) const
    {
        const qsizetype at = m_texts.indexOf(QString::fromLatin1(text));
        return at < 0 ? QString() : m_texts.value(at + distance);
    }
    bool contains(const QString &text) const { return m_texts.contains(text); }
    QString all() const { return m_texts.join(u'|'); }

private:
    QStringList m_texts;
};

} // namespace

class TestFirstHour : public QObject
{
    Q_OBJECT

private:
    WindowManager m_windowManager;
    QLocale m_locale;
    QStringList m_environment;
    std::unique_ptr<RealProgram> m_program;
    QPoint m_corner;       // of the window, on the screen
    QRect m_plot;          // in the window
    QPoint m_startBoxFrom; // the middle of its digits, seen from the corner of the plot
    QByteArray m_csv;      // the first sweep that was saved
    QList<Row> m_rows;

    void press(const QStringList &keys) const
    {
        m_program->keys(keys);
        QTest::qWait(150);
    }
    // A button that is pressed by its letter stays down for a moment before it acts.
    void pressButton(const QString &key) const
    {
        m_program->keys({key});
        QTest::qWait(500);
    }
    QString path(const QString &name) const { return m_program->folder() + u'/' + name; }
    QString grouped(double hertz) const { return m_locale.toString(hertz, 'f', 0); }
    QString inHertz(double hertz) const { return grouped(hertz) + QStringLiteral(" Hz"); }
    QString inVolts(double millivolts) const
    {
        return m_locale.toString(millivolts / 1000.0, 'f', 3) + QStringLiteral(" V");
    }
    double numberOf(const QString &shown) const { return m_locale.toDouble(shown.section(u' ', 0, 0)); }

    // Names a file in the dialog that these keys open, which is in the program's folder.
    void chooseFile(const QString &keys, const QString &title, const QString &file) const
    {
        // The dialog before may still be on its way out, and would take the keys.
        for (const QString &other : {kSaveDialog, kOpenDialog})
            waitUntilGone(other);
        // On a busy machine the window may not have the focus again when the keys come; the dialog minds them no more.
        QString dialog;
        for (int attempt = 0; attempt < 5 && dialog.isEmpty(); ++attempt) {
            RealProgram::activate(m_program->mainWindow());
            m_program->keys({keys});
            dialog = m_program->waitForWindow(title, 5'000);
        }
        QVERIFY(!dialog.isEmpty());
        RealProgram::activate(dialog);
        m_program->typeText(file);
        m_program->keys({QStringLiteral("Return")});
    }
    // In pixels from the corner of the main window, as in its screenshot.
    void mouseAt(QPoint place, const QStringList &actions) const { m_program->mouseAt(m_corner + place, actions); }
    void waitUntilGone(const QString &title) const { QTRY_VERIFY(m_program->waitForWindow(title, 0).isEmpty()); }
    void saveAs(const QString &keys, const QString &file) const { chooseFile(keys, kSaveDialog, file); }
    QByteArray savedSweep(const QString &name) const
    {
        saveAs(QStringLiteral("ctrl+s"), name);
        (void)QTest::qWaitFor([&] { return QFile::exists(path(name)); });
        return contentOf(path(name));
    }
    PictureTexts savedPicture(const QString &name) const
    {
        saveAs(QStringLiteral("ctrl+shift+s"), name);
        (void)QTest::qWaitFor([&] { return QFile::exists(path(name)); });
        return PictureTexts(path(name));
    }

    // Goes on with Tab, or back, until what has the focus gives away such a text.
    bool tabTo(const std::function<bool(const QString &)> &wanted, const char *key = "Tab") const
    {
        for (int i = 0; i < kMostTabs; ++i)
            if (wanted(m_program->copied({QString::fromLatin1(key), QStringLiteral("ctrl+c")})))
                return true;
        return false;
    }
    bool backTo(const QString &text) const
    {
        return tabTo([&](const QString &copied) { return copied == text; }, "shift+Tab");
    }

    void start(const QString &chip)
    {
        QVERIFY(m_program->start(m_environment, kMainWindow + chip + u'$'));
        m_corner = m_program->cornerOf(m_program->mainWindow());
        QTRY_VERIFY(!(m_plot = extentOf(m_program->screenshot(), kMajorGrid)).isEmpty());
    }
    QPoint placeOf(double row, double height) const
    {
        return {m_plot.left() + static_cast<int>(std::lround(row / kRows * (m_plot.width() - 1))),
                m_plot.top() + static_cast<int>(std::lround(height * (m_plot.height() - 1)))};
    }
    QString startBoxByMouse() const
    {
        mouseAt(m_plot.topLeft() + m_startBoxFrom, {QStringLiteral("click"), QStringLiteral("1")});
        return m_program->copied({QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c")});
    }
    bool curveIsHigh() const { return highestCurveRow(m_program->screenshot()) < m_plot.center().y(); }

    void sweep() const
    {
        press({QStringLiteral("F5")});
        // A range that was entered just before is planned once more.
        QTest::qWait(700);
        QTRY_VERIFY_WITH_TIMEOUT(curveIsHigh(), 10000);
        press({QStringLiteral("F5")});
    }

    void measures();
    void entersARange();
    void turnsTheWheel();
    void putsMarkers();
    void goesThroughTheScales();
    void readsTheTable();
    void opensAFileThatIsNone();
    void opensTheFileAgain();
    void looksForHelp();
    void comesBackToWhatWasLeft();
    void changesTheSetUp();
    void readsTheLog();
    void findsPlacesThatCannotBeWritten();
    void closesWhileSweeping();
    void settingsAreSane();

private slots:
    void everythingOnce_data();
    void everythingOnce();
};

void TestFirstHour::everythingOnce_data()
{
    QTest::addColumn<QString>("numbers");
    QTest::newRow("decimal point") << QStringLiteral("en_US");
    QTest::newRow("decimal comma") << QStringLiteral("it_IT");
}

void TestFirstHour::everythingOnce()
{
    QFETCH(QString, numbers);
    m_locale = QLocale(numbers);
    // English texts either way.
    m_environment = {QStringLiteral("LC_ALL="), QStringLiteral("LANGUAGE="), QStringLiteral("LANG=en_US.UTF-8"),
                     QStringLiteral("LC_MESSAGES=en_US.UTF-8"), QStringLiteral("LC_NUMERIC=%1.UTF-8").arg(numbers)};
    m_program = std::make_unique<RealProgram>(ProgramFolder::preparedSettings());
    m_program->bring("Calvorn.qch");
    for (const auto stage :
         {&TestFirstHour::measures, &TestFirstHour::entersARange, &TestFirstHour::turnsTheWheel,
          &TestFirstHour::putsMarkers, &TestFirstHour::goesThroughTheScales, &TestFirstHour::readsTheTable,
          &TestFirstHour::opensAFileThatIsNone, &TestFirstHour::opensTheFileAgain, &TestFirstHour::looksForHelp,
          &TestFirstHour::comesBackToWhatWasLeft, &TestFirstHour::changesTheSetUp, &TestFirstHour::readsTheLog,
          &TestFirstHour::findsPlacesThatCannotBeWritten, &TestFirstHour::closesWhileSweeping,
          &TestFirstHour::settingsAreSane}) {
        (this->*stage)();
        if (QTest::currentTestFailed())
            break;
    }
    m_program.reset();
}

void TestFirstHour::measures()
{
    start(QStringLiteral("AD9851"));
    QVERIFY(!curveIsHigh());
    sweep();
}

// Letters, too much, and what the locale groups.
void TestFirstHour::entersARange()
{
    QVERIFY(backTo(QStringLiteral("1000000")));
    m_program->typeText(QStringLiteral("six"));
    QCOMPARE(m_program->copied({QStringLiteral("Tab"), QStringLiteral("ctrl+c")}), QStringLiteral("15000000"));
    QVERIFY(backTo(QStringLiteral("1000000")));
    m_program->typeText(QStringLiteral("6000000"));
    press({QStringLiteral("Tab")});
    m_program->typeText(QStringLiteral("99999999999"));
    press({QStringLiteral("Tab")});
    QVERIFY(backTo(QStringLiteral("70000000")));
    m_program->typeText(grouped(8200000));
    press({QStringLiteral("Tab")});
    QVERIFY(backTo(QStringLiteral("8200000")));
    // The old curve goes with the old range.
    QTRY_COMPARE(curvePixels(m_program->screenshot()), 0);
}

void TestFirstHour::turnsTheWheel()
{
    QVERIFY(backTo(QStringLiteral("6000000")));
    QRect digits;
    QTRY_VERIFY(!(digits = extentOf(m_program->screenshot(), kSelectedText)).isEmpty());
    const double width = digits.width() / 7.0;
    m_startBoxFrom = digits.center() - m_plot.topLeft();
    const QPoint hundreds(digits.right() - static_cast<int>(2.5 * width), digits.center().y());
    // Grouped at once; the box of the focus is plain again when the range has been planned.
    const auto shownAfter = [&](const char *turn) {
        mouseAt(hundreds, {QStringLiteral("click"), QString::fromLatin1(turn)});
        return m_program->copied({QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c")})
            .remove(m_locale.groupSeparator());
    };
    QCOMPARE(shownAfter("4"), QStringLiteral("6000100"));
    QCOMPARE(shownAfter("5"), QStringLiteral("6000000"));
    sweep();
}

void TestFirstHour::putsMarkers()
{
    const QStringList left{QStringLiteral("click"), QStringLiteral("1")};
    const QStringList right{QStringLiteral("click"), QStringLiteral("3")};
    const auto shifted = [](const QStringList &click) {
        return QStringList{QStringLiteral("keydown"), QStringLiteral("shift")} + click +
               QStringList{QStringLiteral("keyup"), QStringLiteral("shift")};
    };
    mouseAt(placeOf(100, 0.6), left);
    mouseAt(placeOf(300, 0.6), right);
    mouseAt(placeOf(350, 0.25), shifted(left));
    mouseAt(placeOf(350, 0.75), shifted(right));
    const QPoint goal = placeOf(240, 0.6);
    mouseAt(placeOf(300, 0.6),
            {QStringLiteral("mousedown"), QStringLiteral("1"), QStringLiteral("mousemove_relative"),
             QStringLiteral("--sync"), QStringLiteral("--"), QStringLiteral("-20"), QStringLiteral("0")});
    mouseAt(goal, {QStringLiteral("sleep"), QStringLiteral("0.2"), QStringLiteral("mouseup"), QStringLiteral("1")});

    m_csv = savedSweep(QStringLiteral("first.csv"));
    m_rows = rowsOf(m_csv);
    QCOMPARE(m_rows.size(), kRows + 1);
    QCOMPARE(m_rows[1].hertz, 6e6);
    const auto peak = std::max_element(m_rows.begin() + 1, m_rows.end(),
                                       [](const Row &a, const Row &b) { return a.millivolts < b.millivolts; });
    QVERIFY2(std::abs(peak->hertz - 7.1e6) < 300e3, qPrintable(QString::number(peak->hertz)));

    const PictureTexts texts = savedPicture(QStringLiteral("markers.svg"));
    QCOMPARE(texts.after("M1"), inHertz(m_rows[100].hertz));
    QCOMPARE(texts.after("M1", 2), inVolts(m_rows[100].millivolts));
    QCOMPARE(texts.after("M2"), inHertz(m_rows[240].hertz));
    QCOMPARE(texts.after("M2", 2), inVolts(m_rows[240].millivolts));
    QCOMPARE(texts.after("M2 - M1"), inHertz(m_rows[240].hertz - m_rows[100].hertz));
    // From 0.998 V down to -0.002 V.
    const double m3 = numberOf(texts.after("M3"));
    const double m4 = numberOf(texts.after("M4"));
    QVERIFY2(std::abs(m3 - 0.748) < 0.004 && std::abs(m4 - 0.248) < 0.004, qPrintable(texts.all()));
    QCOMPARE(texts.after("M4 - M3"), inVolts(std::round((m3 - m4) * 1000.0)));
    savedPicture(QStringLiteral("sweep.png"));
    const QImage picture(path(QStringLiteral("sweep.png")));
    QVERIFY(picture.width() >= 600 && curvePixels(picture) > 100);
}

void TestFirstHour::goesThroughTheScales()
{
    const auto decibels = [&](double value) { return m_locale.toString(value, 'f', 1); };
    for (const int scale : {1, 2, 3, 4, 0}) {
        press(QStringList{QStringLiteral("alt+c")} + QStringList(scale, QStringLiteral("Down")) +
              QStringList{QStringLiteral("Return")});
        const PictureTexts texts = savedPicture(QStringLiteral("%1.svg").arg(scale));
        const double volts = m_rows[100].millivolts / 1000.0;
        if (scale == 0) {
            QVERIFY2(texts.contains(QStringLiteral("Linear scale, 0 to %1 V").arg(m_locale.toString(1.0, 'f', 2))),
                     qPrintable(texts.all()));
            QCOMPARE(texts.after("M1", 2), inVolts(m_rows[100].millivolts));
            // The tenth of a dB at which it was shown on the way costs a little.
            QVERIFY(std::abs(numberOf(texts.after("M3")) - 0.748) < 0.02);
            break;
        }
        const int reference = scale < 3 ? 1 : 10;
        const QString expected = QStringLiteral("Logarithmic scale, %1 to %2 dB, 0 dB is %3 V")
                                     .arg(decibels(scale % 2 == 0 ? 10.0 : 0.0), decibels(-60.0))
                                     .arg(reference);
        QVERIFY2(texts.contains(expected), qPrintable(texts.all()));
        QVERIFY2(std::abs(numberOf(texts.after("M1", 2)) - 20.0 * std::log10(volts / reference)) < 0.06,
                 qPrintable(texts.after("M1", 2)));
        QVERIFY(texts.after("M1", 2).endsWith(QStringLiteral(" dB")));
    }
}

void TestFirstHour::readsTheTable()
{
    press({QStringLiteral("alt+v"), QStringLiteral("t")});
    const auto line = [this](const Row &row) {
        return QStringList{grouped(row.hertz), inVolts(row.millivolts).section(u' ', 0, 0), QString::number(row.count)}
            .join(u'\t');
    };
    QVERIFY(tabTo([&](const QString &text) { return text == line(m_rows[1]); }));
    QCOMPARE(m_program->copied({QStringLiteral("ctrl+End"), QStringLiteral("ctrl+c")}), line(m_rows[kRows]));
    QCOMPARE(m_program->copied({QStringLiteral("shift+Up"), QStringLiteral("ctrl+c")}),
             line(m_rows[kRows - 1]) + u'\n' + line(m_rows[kRows]));
}

// A text that is no sweep is passed over without a word.
void TestFirstHour::opensAFileThatIsNone()
{
    QFile file(path(QStringLiteral("letter.csv")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("Dear reader,\r\nthis is no sweep, but a letter.\r\n");
    file.close();
    chooseFile(QStringLiteral("ctrl+o"), kOpenDialog, QStringLiteral("letter.csv"));
    waitUntilGone(kOpenDialog);
    QVERIFY(m_program->waitForWindow(kBox, 300).isEmpty());
    QCOMPARE(savedSweep(QStringLiteral("unchanged.csv")), m_csv);
}

void TestFirstHour::opensTheFileAgain()
{
    // Another range takes the sweep away.
    QCOMPARE(startBoxByMouse(), QStringLiteral("6000000"));
    m_program->typeText(QStringLiteral("2000000"));
    press({QStringLiteral("Tab")});
    QTRY_COMPARE(curvePixels(m_program->screenshot()), 0);
    chooseFile(QStringLiteral("ctrl+o"), kOpenDialog, QStringLiteral("first.csv"));
    waitUntilGone(kOpenDialog);
    QTRY_VERIFY(curveIsHigh());
    QCOMPARE(savedSweep(QStringLiteral("again.csv")), m_csv);
    QCOMPARE(startBoxByMouse(), QStringLiteral("6000000"));
}

void TestFirstHour::looksForHelp()
{
    press({QStringLiteral("F1")});
    const QString title = QStringLiteral("^Calvorn Help$");
    const QString help = m_program->waitForWindow(title);
    QVERIFY(!help.isEmpty());
    QTest::qWait(500);
    m_program->mouseAt(m_program->cornerOf(help) + QPoint(500, 300), {QStringLiteral("click"), QStringLiteral("1")});
    const QString page = m_program->copied({QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c")});
    QVERIFY2(page.contains(QStringLiteral("main window"), Qt::CaseInsensitive), qPrintable(page));
    press({QStringLiteral("Escape")});
    waitUntilGone(title);
}

void TestFirstHour::comesBackToWhatWasLeft()
{
    const double m1 = m_rows[100].hertz;
    const double last = m_rows[kRows].hertz;
    press({QStringLiteral("ctrl+q")});
    QVERIFY(m_program->waitForEnd());
    QCOMPARE(m_program->serversRunning(), 0);
    QCOMPARE(m_program->setting("Calvorn", "Start"), QStringLiteral("6000000"));
    QCOMPARE(m_program->setting("Calvorn", "Stop"), QString::number(last, 'f', 0));
    QCOMPARE(m_program->setting("Calvorn", "Marker 1"), QString::number(m1, 'f', 0));
    QCOMPARE(m_program->setting("Calvorn", "Marker 0"), QStringLiteral("1"));

    start(QStringLiteral("AD9851"));
    const PictureTexts texts = savedPicture(QStringLiteral("back.svg"));
    QVERIFY(texts.contains(QStringLiteral("Linear scale, 0 to %1 V").arg(m_locale.toString(1.0, 'f', 2))));
    QVERIFY(texts.contains(inHertz(6e6)));
    QCOMPARE(numberOf(texts.after("M3")), m_locale.toDouble(m_program->setting("Calvorn", "Marker 3")));
    // The next row of a range with a slightly smaller step.
    const double step = std::nearbyint((last - 6e6) / kRows);
    QCOMPARE(texts.after("M1"), inHertz(6e6 + step * std::ceil((m1 - 6e6) / step)));
    // The table shows.
    QVERIFY(tabTo([&](const QString &text) { return text.section(u'\t', 0, 0) == grouped(6e6); }));
    QCOMPARE(startBoxByMouse(), QStringLiteral("6000000"));
    QCOMPARE(m_program->copied({QStringLiteral("Tab"), QStringLiteral("ctrl+c")}), QString::number(last, 'f', 0));
}

void TestFirstHour::changesTheSetUp()
{
    press({QStringLiteral("alt+s"), QStringLiteral("c")});
    QVERIFY(!m_program->waitForWindow(QStringLiteral("^Configuration$")).isEmpty());
    pressButton(QStringLiteral("alt+t"));
    pressButton(QStringLiteral("alt+0"));
    press({QStringLiteral("alt+r"), QStringLiteral("ctrl+a")});
    m_program->typeText(QStringLiteral("125000000"));
    press({QStringLiteral("alt+x")});
    m_program->typeText(QStringLiteral("fast"));
    press({QStringLiteral("Tab")});
    QCOMPARE(m_program->copied({QStringLiteral("alt+x"), QStringLiteral("ctrl+c")}), QStringLiteral("70000000"));
    m_program->typeText(QStringLiteral("40000000"));
    // To the serial ports, there one up from the free number.
    pressButton(QStringLiteral("alt+p"));
    press({QStringLiteral("Tab"), QStringLiteral("Up")});
    pressButton(QStringLiteral("alt+a"));
    const QString question = m_program->waitForBox();
    QVERIFY(!question.isEmpty());
    QCOMPARE(m_program->lineOfBox(question), QStringLiteral("Please confirm, now program will exit."));
    press({QStringLiteral("Return")});
    QVERIFY(m_program->waitForEnd());
    QCOMPARE(m_program->serversRunning(), 0);
    QCOMPARE(m_program->setting("Config", "DDS Device"), QStringLiteral("AD9850"));
    QCOMPARE(m_program->setting("Config", "DDS Xtal freq"), QStringLiteral("125000000"));
    QCOMPARE(m_program->setting("Config", "DDS Multiplier"), QStringLiteral("1"));
    QCOMPARE(m_program->setting("Config", "DDS Max freq"), QStringLiteral("40000000"));
    QCOMPARE(m_program->setting("Serial Port", "CommPort"), QStringLiteral("6"));
    QCOMPARE(m_program->setting("Parallel Port", "LPT"), QStringLiteral("&H0"));
}

void TestFirstHour::readsTheLog()
{
    // By hand, as the manual says.
    QByteArray settings = contentOf(path(QStringLiteral("Calvorn.ini")));
    QCOMPARE(settings.count("Log=0"), 1);
    QFile file(path(QStringLiteral("Calvorn.ini")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(settings.replace("Log=0", "Log=1"));
    file.close();

    start(QStringLiteral("AD9850"));
    sweep();
    QVERIFY(tabTo([](const QString &text) { return text == QStringLiteral("L> Stop sweep"); }));
    const QString log = m_program->copied({QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c")});
    QCOMPARE(log, QStringLiteral("L> Start sweep\nL> Stop sweep"));
    const QList<Row> rows = rowsOf(savedSweep(QStringLiteral("other-chip.csv")));
    QCOMPARE(rows.size(), kRows + 1);
    const auto peak = std::max_element(rows.begin() + 1, rows.end(),
                                       [](const Row &a, const Row &b) { return a.millivolts < b.millivolts; });
    QVERIFY2(std::abs(peak->hertz - 7.1e6) < 300e3, qPrintable(QString::number(peak->hertz)));
}

// Nobody can make a file in /sys, not even root. The log has the focus.
void TestFirstHour::findsPlacesThatCannotBeWritten()
{
    saveAs(QStringLiteral("ctrl+s"), QStringLiteral("/sys/sweep.csv"));
    waitUntilGone(kSaveDialog);
    const QString line = m_program->copied({QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c")}).section(u'\n', -1);
    QVERIFY2(line.startsWith(QStringLiteral("Export: ")) && line.contains(QStringLiteral("/sys/sweep.csv")),
             qPrintable(line));
    saveAs(QStringLiteral("ctrl+shift+s"), QStringLiteral("/sys/sweep.png"));
    const QString box = m_program->waitForBox();
    QVERIFY(!box.isEmpty());
    const QString text = m_program->lineOfBox(box);
    QVERIFY2(text.contains(QStringLiteral("/sys/sweep.png")), qPrintable(text));
    press({QStringLiteral("Return")});
    waitUntilGone(kBox);
}

void TestFirstHour::closesWhileSweeping()
{
    press({QStringLiteral("F5")});
    QTest::qWait(500);
    QCOMPARE(m_program->serversRunning(), 1);
    // The last button in the frame of the window manager, over the right edge of an 800 pixels wide window.
    mouseAt({790, -10}, {QStringLiteral("click"), QStringLiteral("1")});
    QVERIFY(m_program->waitForEnd());
    QCOMPARE(m_program->serversRunning(), 0);
}

void TestFirstHour::settingsAreSane()
{
    const QByteArray prepared = ProgramFolder::preparedSettings();
    const QByteArray settings = contentOf(path(QStringLiteral("Calvorn.ini")));
    // What nobody has touched is there to the letter.
    QVERIFY(settings.startsWith(prepared.left(prepared.indexOf("[Config]"))));
    QVERIFY(settings.contains(prepared.mid(prepared.indexOf("[Interface1]"))));
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
    QCOMPARE(m_program->setting("Calvorn", "Start"), QStringLiteral("6000000"));
    QCOMPARE(m_program->setting("Config", "DDS Device"), QStringLiteral("AD9850"));
    QCOMPARE(m_program->setting("Calvorn", "Max scaleV"), QStringLiteral("1"));
    QVERIFY(m_program->setting("Calvorn", "Marker 3").startsWith(QStringLiteral("0") + m_locale.decimalPoint()));
    // And nothing else was left in the folder.
    const QStringList files = QDir(m_program->folder()).entryList(QDir::Files | QDir::Hidden);
    for (const QString &name : files)
        QVERIFY2(!name.contains(QStringLiteral("tmp"), Qt::CaseInsensitive), qPrintable(files.join(u' ')));
}

QTEST_MAIN(TestFirstHour)
#include "test_first_hour.moc"
