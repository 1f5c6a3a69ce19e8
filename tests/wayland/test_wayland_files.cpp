// SPDX-License-Identifier: MIT
// Tests files, pictures, printing and the clipboard in a Wayland session.
#include "tests/wayland/wayland_bench.h"

#include <QDate>
#include <QDir>

using namespace calvorn::test;

namespace {

const QString kDialog = QStringLiteral("QFileDialog");
const QString kName = QStringLiteral("fileNameEdit");
const QString kQuestion = QStringLiteral("QMessageBox"); // its class
const QString kPrint = QStringLiteral("Print");
const QString kBox = QStringLiteral("messageBox");
const QStringList kEscape{QStringLiteral("Escape")};
const QStringList kReturn{QStringLiteral("Return")};
const QString kCurve = QStringLiteral("curve.csv");

constexpr int kLines = 401;   // of an exported sweep, with its heading
constexpr int kInCurve = 200; // pixels; a curve has more

} // namespace

class TestWaylandFiles : public WaylandBench
{
    Q_OBJECT

private:
    QByteArray contents(const QString &file) const;
    int lines(const QString &file) const { return static_cast<int>(contents(file).count('\n')); }
    // Opens a file dialog by its key and waits until a name can be typed.
    bool open(const char *key);
    bool enterName(const QString &name);
    bool shows(const QString &message) const { return text("lblStatus").contains(message); }
    // Exports a sweep and ends the program.
    bool leaveAnExportedSweep();
    // Returns the contents of the clipboard.
    QByteArray pasted(const QString &type) const;

private slots:
    void aSweepIsExported();
    void aSweepIsImported();
    void anExistingFileIsReplacedOnRequest();
    void theDialogRemembersItsFolder();
    void aDamagedFileIsReported();
    void anotherCalibrationIsOffered();
    void aPictureIsSaved();
    void listsOpenInTheFileDialog();
    void thePictureIsCopied();
    void textIsCopiedAndPasted();
    void aPdfFileIsPrinted();
    void theLogIsSaved();
    void aTraceIsSavedFromTheFloatingPanel();
};

QByteArray TestWaylandFiles::contents(const QString &file) const
{
    QFile opened(program().path(file));
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
}

bool TestWaylandFiles::open(const char *key)
{
    Compositor::keys({QString::fromLatin1(key)});
    return program().waitForWindow(kDialog) &&
           WaylandProgram::waitFor("the box for the name", [this] { return program().focus() == kName; });
}

bool TestWaylandFiles::enterName(const QString &name)
{
    Compositor::keys({QStringLiteral("ctrl+a")});
    Compositor::typeText(name);
    if (!WaylandProgram::waitFor("the typed name", [&] { return program().textOf(kDialog, kName) == name; }))
        return false;
    Compositor::keys(kReturn);
    return true;
}

// wl-paste takes the keyboard for a moment.
QByteArray TestWaylandFiles::pasted(const QString &type) const
{
    const QByteArray contents = compositor().output(QStringLiteral("wl-paste"),
                                                    {QStringLiteral("--no-newline"), QStringLiteral("--type"), type});
    return program().waitForWindow(kMain) ? contents : QByteArray();
}

bool TestWaylandFiles::leaveAnExportedSweep()
{
    if (!program().start() || !sweep() || !open("ctrl+s") || !enterName(kCurve) || !program().waitUntilGone(kDialog))
        return false;
    Compositor::keys({QStringLiteral("ctrl+q")});
    return program().waitForEnd() && lines(kCurve) == kLines;
}

void TestWaylandFiles::aSweepIsExported()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(sweep());
    QVERIFY(open("ctrl+s"));
    QVERIFY(screen().contains(program().placeOf(kDialog)));
    QVERIFY(isOnTop(kDialog));
    QVERIFY(moveByTitle(kDialog));
    QVERIFY(enterName(kCurve));
    QVERIFY(program().waitUntilGone(kDialog));
    QTRY_VERIFY2(shows(QStringLiteral("400 rows written to curve.csv")), qPrintable(text("lblStatus")));
    QCOMPARE(lines(kCurve), kLines);
    QVERIFY(program().waitForWindow(kMain));
    QTRY_COMPARE(program().focus(), QStringLiteral("cmdStart"));
}

void TestWaylandFiles::aSweepIsImported()
{
    begin();
    QVERIFY(leaveAnExportedSweep());
    QVERIFY(program().start());
    QVERIFY(!showsAPeak());
    QVERIFY(open("ctrl+o"));
    QVERIFY(isOnTop(kDialog));
    // A name that does not exist leaves the dialog open.
    QVERIFY(enterName(QStringLiteral("missing.csv")));
    QVERIFY(program().waitForWindow(kQuestion));
    QVERIFY(isOnTop(kQuestion));
    Compositor::keys(kReturn);
    QVERIFY(program().waitUntilGone(kQuestion));
    QVERIFY(program().waitForWindow(kDialog));
    QVERIFY(enterName(kCurve));
    QVERIFY(program().waitUntilGone(kDialog));
    QTRY_VERIFY2(shows(QStringLiteral("400 rows imported from curve.csv")), qPrintable(text("lblStatus")));
    QTRY_VERIFY(showsAPeak());
}

void TestWaylandFiles::anExistingFileIsReplacedOnRequest()
{
    begin();
    QVERIFY(leaveAnExportedSweep());
    QFile file(program().path(kCurve));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("old\n") == 4);
    file.close();
    QVERIFY(program().start());
    QVERIFY(sweep());
    QVERIFY(open("ctrl+s"));
    QVERIFY(enterName(kCurve));
    QVERIFY(program().waitForWindow(kQuestion));
    QVERIFY(isOnTop(kQuestion) && screen().contains(program().placeOf(kQuestion)));
    Compositor::keys(kEscape);
    QVERIFY(program().waitUntilGone(kQuestion));
    QVERIFY(program().waitForWindow(kDialog));
    QCOMPARE(contents(kCurve), QByteArray("old\n"));
    QVERIFY(program().click(kDialog, QStringLiteral("Save")));
    QVERIFY(program().waitForWindow(kQuestion));
    QVERIFY(program().click(kQuestion, QStringLiteral("Yes")));
    QVERIFY(program().waitUntilGone(kDialog));
    QTRY_COMPARE(lines(kCurve), kLines);
}

void TestWaylandFiles::theDialogRemembersItsFolder()
{
    begin();
    const QString folder = QStringLiteral("shelf");
    QVERIFY(QDir(program().folder()).mkdir(folder));
    QVERIFY(program().start());
    QVERIFY(sweep());
    QVERIFY(open("ctrl+s"));
    QVERIFY(enterName(folder + u'/' + kCurve));
    QVERIFY(program().waitUntilGone(kDialog));
    QTRY_COMPARE(lines(folder + u'/' + kCurve), kLines);
    QVERIFY(open("ctrl+s"));
    QCOMPARE(program().textOf(kDialog, QStringLiteral("lookInCombo")), program().path(folder));
    Compositor::keys(kEscape);
    QVERIFY(program().waitUntilGone(kDialog));

    // Import proposes the same file. Then it is chosen with the mouse.
    QVERIFY(open("ctrl+o"));
    QCOMPARE(program().textOf(kDialog, kName), kCurve);
    QVERIFY(program().click(kDialog, QStringLiteral("toParentButton")));
    QTRY_COMPARE(program().textOf(kDialog, QStringLiteral("lookInCombo")), program().folder());
    const QPoint shelf = program().placeOf(kDialog, folder).center();
    compositor().mouseAt(shelf, kDoubleClick);
    QTRY_COMPARE(program().textOf(kDialog, QStringLiteral("lookInCombo")), program().path(folder));
    const QPoint file = program().placeOf(kDialog, QStringLiteral("row0")).center();
    compositor().mouseAt(file, kDoubleClick);
    QVERIFY(program().waitUntilGone(kDialog));
    QTRY_VERIFY2(shows(QStringLiteral("400 rows imported")), qPrintable(text("lblStatus")));
}

void TestWaylandFiles::aDamagedFileIsReported()
{
    begin();
    QFile file(program().path(kCurve));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no sweep\n") > 0);
    file.close();
    QVERIFY(program().start());
    QVERIFY(open("ctrl+o"));
    QVERIFY(enterName(kCurve));
    QVERIFY(program().waitUntilGone(kDialog));
    QTRY_VERIFY2(shows(QStringLiteral("curve.csv not imported")), qPrintable(text("lblStatus")));
    QVERIFY(program().waitForWindow(kMain));
}

// The box follows the file dialog without a visit to the main window.
void TestWaylandFiles::anotherCalibrationIsOffered()
{
    begin();
    QVERIFY(leaveAnExportedSweep());
    QFile settings(program().path(QStringLiteral("Calvorn.ini")));
    QVERIFY(settings.open(QIODevice::ReadWrite));
    const QByteArray changed = settings.readAll()
                                   .replace("ADC Step=0.00244\r\nADC Channel=3", "ADC Step=0.00122\r\nADC Channel=3")
                                   .replace("ADC Step=0.00244\nADC Channel=3", "ADC Step=0.00122\nADC Channel=3");
    QVERIFY(changed.contains("0.00122"));
    settings.seek(0);
    QCOMPARE(settings.write(changed), changed.size());
    settings.close();
    QVERIFY(program().start());
    QVERIFY(open("ctrl+o"));
    QVERIFY(enterName(kCurve));
    QVERIFY(program().waitForWindow(kBox));
    QVERIFY(isOnTop(kBox) && screen().contains(program().placeOf(kBox)));
    QVERIFY(program().click(kBox, QStringLiteral("Cancel")));
    QVERIFY(program().waitUntilGone(kBox));
    QTRY_VERIFY(showsAPeak());
}

void TestWaylandFiles::aPictureIsSaved()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(sweep());
    QVERIFY(open("ctrl+shift+s"));
    const QString name = program().textOf(kDialog, kName);
    QVERIFY2(name.startsWith(QStringLiteral("sweep 20")) && name.endsWith(QStringLiteral(" Hz.png")), qPrintable(name));
    QVERIFY(enterName(QStringLiteral("curve")));
    QVERIFY(program().waitUntilGone(kDialog));
    QImage png;
    QTRY_VERIFY(png.load(program().path(QStringLiteral("curve.png"))));
    QVERIFY(curvePixels(png) > kInCurve);

    QVERIFY(open("ctrl+shift+s"));
    QVERIFY(chooseInList(kDialog, QStringLiteral("fileTypeCombo"), QStringLiteral("SVG drawing (*.svg)")));
    QVERIFY(program().click(kDialog, kName));
    QVERIFY(enterName(QStringLiteral("drawing")));
    QVERIFY(program().waitUntilGone(kDialog));
    QTRY_VERIFY(contents(QStringLiteral("drawing.svg")).contains("<svg"));
}

void TestWaylandFiles::listsOpenInTheFileDialog()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(open("ctrl+shift+s"));
    for (const char *list : {"fileTypeCombo", "lookInCombo"}) {
        QVERIFY(program().click(kDialog, QString::fromLatin1(list)));
        QVERIFY2(program().waitForPopup(), list);
        Compositor::keys(kEscape);
        QVERIFY(program().waitForNoPopup());
        QVERIFY2(program().waitForWindow(kDialog), list);
    }
    Compositor::keys(kEscape);
    QVERIFY(program().waitUntilGone(kDialog));
    QVERIFY(program().waitForWindow(kMain));
}

void TestWaylandFiles::thePictureIsCopied()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(sweep());
    Compositor::keys({QStringLiteral("ctrl+c")});
    QImage copied;
    QTRY_VERIFY(copied.loadFromData(pasted(QStringLiteral("image/png"))));
    QVERIFY(curvePixels(copied) > kInCurve);
    QVERIFY(open("ctrl+shift+s"));
    QVERIFY(enterName(QStringLiteral("curve.png")));
    QVERIFY(program().waitUntilGone(kDialog));
    QImage saved;
    QTRY_VERIFY(saved.load(program().path(QStringLiteral("curve.png"))));
    QCOMPARE(copied.size(), saved.size());
}

void TestWaylandFiles::textIsCopiedAndPasted()
{
    begin({1280, 900}, 1, settingsWith("Log=0", "Log=1"));
    QVERIFY(program().start());
    QVERIFY(sweep());
    const QPoint log = program().placeOf(kMain, QStringLiteral("lstLOG")).center();
    compositor().mouseAt(log, kRightClick);
    QVERIFY(program().chooseInPopup(QStringLiteral("mnuSelectLog")));
    compositor().mouseAt(log, kRightClick);
    QVERIFY(program().chooseInPopup(QStringLiteral("mnuCopyLog")));
    QTRY_VERIFY(pasted(QStringLiteral("text/plain")).contains("Start sweep"));

    // From one box to another.
    QVERIFY(program().click(kMain, QStringLiteral("txtM1X")));
    QTRY_COMPARE(program().focus(), QStringLiteral("txtM1X"));
    Compositor::keys({QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c")});
    QTRY_COMPARE(pasted(QStringLiteral("text/plain")), QByteArray("6810000"));
    QVERIFY(program().click(kMain, QStringLiteral("txtStart")));
    QTRY_COMPARE(program().focus(), QStringLiteral("txtStart"));
    Compositor::keys({QStringLiteral("ctrl+a"), QStringLiteral("ctrl+v"), QStringLiteral("Tab")});
    QTRY_COMPARE(text("txtStart"), QStringLiteral("6,810,000"));
}

void TestWaylandFiles::aPdfFileIsPrinted()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(sweep());
    Compositor::keys({QStringLiteral("ctrl+p")});
    QVERIFY(program().waitForWindow(kPrint));
    QVERIFY(isOnTop(kPrint) && screen().contains(program().placeOf(kPrint)));
    const QString file = QStringLiteral("filename");
    const QString proposed = QDir::homePath() + QStringLiteral("/sweep ") + QDate::currentDate().toString(Qt::ISODate) +
                             QStringLiteral(" 1000000-15000000 Hz.pdf");
    QCOMPARE(program().textOf(kPrint, file), proposed);
    // Return in the list of printers chooses one and does not print yet.
    QVERIFY(program().click(kPrint, QStringLiteral("printers")));
    QVERIFY(program().waitForPopup());
    Compositor::keys(kReturn);
    QVERIFY(program().waitForNoPopup());
    QVERIFY(program().waitForWindow(kPrint));
    QVERIFY(program().click(kPrint, file));
    Compositor::keys({QStringLiteral("ctrl+a")});
    Compositor::typeText(program().path(QStringLiteral("page.pdf")));
    QVERIFY(program().click(kPrint, kPrint));
    QVERIFY(program().waitUntilGone(kPrint));
    QTRY_VERIFY(contents(QStringLiteral("page.pdf")).startsWith("%PDF"));
    const QByteArray facts =
        compositor().output(QStringLiteral("pdfinfo"), {program().path(QStringLiteral("page.pdf"))});
    QVERIFY2(facts.contains("Pages:           1\n"), facts.constData());
    const QByteArray words = compositor().output(QStringLiteral("pdftotext"),
                                                 {program().path(QStringLiteral("page.pdf")), QStringLiteral("-")});
    QVERIFY2(words.contains("1,000,000"), words.constData());
    QVERIFY(program().waitForWindow(kMain));
}

void TestWaylandFiles::theLogIsSaved()
{
    begin({1280, 900}, 1, settingsWith("Log=0", "Log=1"));
    QVERIFY(program().start());
    QVERIFY(sweep());
    compositor().mouseAt(program().placeOf(kMain, QStringLiteral("lstLOG")).center(), kRightClick);
    QVERIFY(program().chooseInPopup(QStringLiteral("mnuSaveLog")));
    QVERIFY(program().waitForWindow(kDialog));
    QVERIFY(isOnTop(kDialog));
    QVERIFY(enterName(QStringLiteral("notes.txt")));
    QVERIFY(program().waitUntilGone(kDialog));
    QTRY_VERIFY(contents(QStringLiteral("notes.txt")).contains("Start sweep"));
}

void TestWaylandFiles::aTraceIsSavedFromTheFloatingPanel()
{
    begin();
    QVERIFY(program().start());
    QVERIFY(sweep());
    QVERIFY(floatPanel());
    QVERIFY(program().click(kPanel, QStringLiteral("Traces")));
    QVERIFY(program().click(kPanel, QStringLiteral("cmdStore_1")));
    QVERIFY(program().click(kPanel, QStringLiteral("cmdTrace_1")));
    QVERIFY(program().chooseInPopup(QStringLiteral("mnuSaveTrace_1")));
    QVERIFY(program().waitForWindow(kDialog));
    QVERIFY(isOnTop(kDialog) && screen().contains(program().placeOf(kDialog)));
    QVERIFY(enterName(QStringLiteral("trace.csv")));
    QVERIFY(program().waitUntilGone(kDialog));
    QTRY_COMPARE(lines(QStringLiteral("trace.csv")), kLines);
    QVERIFY(program().window(kPanel));
}

QTEST_MAIN(TestWaylandFiles)
#include "test_wayland_files.moc"
