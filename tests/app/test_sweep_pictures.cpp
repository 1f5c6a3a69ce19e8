// SPDX-License-Identifier: MIT
#include "display/plot/sweep_picture.h"
#include "tests/support/fake_server_control.h"
#include "tests/support/locales.h"
#include "tests/support/window_bench.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QListWidget>
#include <QPainter>
#include <QPrinter>
#include <QProcess>
#include <QSvgRenderer>

#include <array>
#include <cmath>
#include <functional>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

constexpr char kSettings[] = "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nADC Step=0.00244\r\nADC Offset=0\r\n"
                             "[Debug]\r\nLog=1\r\n[Parallel Port]\r\nLPT=0\r\n"
                             "[Calvorn]\r\nStart=1000000\r\nStop=5000000\r\nMax scaleV=2.5\r\nMarker 1=2500000\r\n"
                             "Marker 2=3500000\r\nMarker 3=0.5\r\nMarker 4=1.5\r\n";

// The window with a resonance in its table: 800 counts at row 200.
struct Bench : WindowBench
{
    Bench()
        : WindowBench(test::FakeServerControl::program(), kSettings)
    {
        QVector<int> counts;
        for (int row = 1; row <= 400; ++row)
            counts.append(static_cast<int>(800.0 / (1.0 + std::pow((row - 200) / 20.0, 2))));
        emit driver()->aVettore(counts);
        const auto *graph = find<SweepGraph>("picSweep");
        if (!QTest::qWaitFor([graph] { return graph->curve().boundingRect().height() > 1000.0; }))
            qFatal("the sweep is not drawn");
    }

    QString inFolder(const char *name) const { return folder.path() + u'/' + QString::fromLatin1(name); }
    void trigger(const char *action) { window->findChild<QAction *>(QString::fromLatin1(action))->trigger(); }
    void saveAs(const char *name)
    {
        desktop.fileChoice = inFolder(name);
        trigger("mnuSavePicture");
    }
};

int countOf(const QImage &image, const std::function<bool(QColor)> &wanted)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += wanted(image.pixelColor(x, y)) ? 1 : 0;
    return count;
}

bool isYellow(QColor colour)
{
    return colour.red() > 200 && colour.green() > 200 && colour.blue() < 60;
}

// Returns the topmost picture row that the curve reaches, or -1.
int topOfCurve(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (isYellow(image.pixelColor(x, y)))
                return y;
    return -1;
}

} // namespace

class TestSweepPictures : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void aPngShowsTheSweep_data() { test::addLocaleRows(); }
    void aPngShowsTheSweep();
    void anSvgShowsTheSame();
    void theCaptionsStandAboveThePlot();
    void theClipboardGetsThePicture();
    void copyingTextStaysCopyingText();
    void aPdfIsOnLightPaper();
    void nothingChosenWritesNothing();
    void aRefusedPictureKeepsTheOldFile();
    void theLastNameIsOfferedAgain();
    void theMenuHasItsKeysAndHelp();
};

void TestSweepPictures::aPngShowsTheSweep()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    Bench bench;
    bench.saveAs("sweep.png");
    QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
    const QImage picture(bench.desktop.fileChoice);
    QCOMPARE(picture.size(), QSize(SweepPicture::kWidth, SweepPicture::kHeight));
    // 800 counts of 2.44 mV are 1.952 V of 2.5 V; the plot extends from row 112 to row 592.
    const double peak = 112 + 480 * (1.0 - (1.952 + 0.005) / 2.5);
    QVERIFY2(std::abs(topOfCurve(picture) - peak) < 4.0, qPrintable(QString::number(topOfCurve(picture))));
    // A border in the background colour shows that nothing is cut off.
    for (int x = 0; x < picture.width(); ++x)
        for (const int y : {0, 1, picture.height() - 2, picture.height() - 1})
            QCOMPARE(picture.pixel(x, y), qRgb(0, 0, 0));
    for (int y = 0; y < picture.height(); ++y)
        for (const int x : {0, 1, picture.width() - 2, picture.width() - 1})
            QCOMPARE(picture.pixel(x, y), qRgb(0, 0, 0));
}

void TestSweepPictures::anSvgShowsTheSame()
{
    Bench bench;
    bench.saveAs("sweep.png");
    const QImage png(bench.desktop.fileChoice);
    bench.saveAs("sweep.SVG");
    QSvgRenderer renderer(bench.desktop.fileChoice);
    QVERIFY(renderer.isValid());
    QCOMPARE(renderer.viewBox(), QRect(0, 0, SweepPicture::kWidth, SweepPicture::kHeight));
    QImage drawn(png.size(), QImage::Format_RGB32);
    QPainter painter(&drawn);
    renderer.render(&painter);
    painter.end();
    int different = 0;
    for (int y = 0; y < png.height(); ++y)
        for (int x = 0; x < png.width(); ++x) {
            const QColor a = png.pixelColor(x, y);
            const QColor b = drawn.pixelColor(x, y);
            different += std::abs(a.red() - b.red()) < 40 && std::abs(a.green() - b.green()) < 40 ? 0 : 1;
        }
    // Letters and the slanted curve are antialiased slightly differently.
    QVERIFY2(different < png.width() * png.height() / 100, qPrintable(QString::number(different)));
}

void TestSweepPictures::theCaptionsStandAboveThePlot()
{
    Bench bench;
    bench.saveAs("sweep.png");
    const QImage picture(bench.desktop.fileChoice);
    const QRect plot(112, 112, 1056, 480);
    const auto columnOf = [&](double row) { return plot.left() + 0.5 + row / 400.0 * (plot.width() - 1); };
    std::array<int, 2> inked{};
    for (int y = 60; y < plot.bottom(); ++y)
        for (int x = plot.left(); x <= plot.right(); ++x) {
            const QColor colour = picture.pixelColor(x, y);
            if (colour.blue() <= colour.red() + 50 || colour.blue() <= 100)
                continue;
            // Light blue pixels: M1 is at row 151, M2 at row 251.
            const bool second = x > columnOf(200);
            const double line = columnOf(second ? 251 : 151);
            if (y >= plot.top()) {
                QVERIFY2(std::abs(x + 0.5 - line) <= 1.0, qPrintable(QStringLiteral("%1, %2").arg(x).arg(y)));
                continue;
            }
            ++inked[second ? 1 : 0];
            QVERIFY2(x >= columnOf(second ? 253 : 153) - 1 && x < line + 50 && y > plot.top() - 35,
                     qPrintable(QStringLiteral("%1, %2").arg(x).arg(y)));
        }
    QVERIFY2(inked[0] > 15 && inked[1] > 15, qPrintable(QStringLiteral("%1 %2").arg(inked[0]).arg(inked[1])));
}

void TestSweepPictures::theClipboardGetsThePicture()
{
    Bench bench;
    QGuiApplication::clipboard()->clear();
    bench.find<SweepGraph>("picSweep")->setFocus();
    bench.window->setFocus();
    QTest::keyClick(bench.window.get(), Qt::Key_C, Qt::ControlModifier);
    const QImage copied = QGuiApplication::clipboard()->image();
    QCOMPARE(copied.size(), QSize(SweepPicture::kWidth, SweepPicture::kHeight));
    QVERIFY(countOf(copied, isYellow) > 500);
}

void TestSweepPictures::copyingTextStaysCopyingText()
{
    Bench bench;
    QClipboard *clipboard = QGuiApplication::clipboard();
    for (const char *name : {"txtStart", "txtM1X", "txtRX"}) {
        clipboard->clear();
        auto *box = bench.find<QLineEdit>(name);
        box->setText(QStringLiteral("4711"));
        box->setFocus();
        box->selectAll();
        QTest::keyClick(box, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(clipboard->text(), QStringLiteral("4711"));
        QVERIFY(clipboard->image().isNull());
    }
    auto *log = bench.find<QListWidget>("lstLOG");
    log->addItem(QStringLiteral("a line of the log"));
    log->setCurrentRow(log->count() - 1);
    log->setFocus();
    QTest::keyClick(log, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard->text(), QStringLiteral("a line of the log"));
    QVERIFY(clipboard->image().isNull());
}

void TestSweepPictures::aPdfIsOnLightPaper()
{
    Bench bench;
    const QString pdf = bench.inFolder("sweep.pdf");
    bench.desktop.whenPrinting = [&pdf](QPrinter &printer) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdf);
    };
    bench.trigger("mnuPrint");
    QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
    QProcess process;
    process.start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
    QVERIFY(process.waitForFinished());
    const QString words = QString::fromUtf8(process.readAllStandardOutput());
    for (const QString &wanted :
         {QStringLiteral("1,000,000 Hz"), QStringLiteral("4,990,000 Hz"), QStringLiteral("2.50"),
          bench.text("txtM1X") + QStringLiteral(" Hz"), bench.text("txtM2Y") + QStringLiteral(" V"),
          QStringLiteral("0.500 V"), QStringLiteral("M4 - M3"), QDate::currentDate().toString(Qt::ISODate)})
        QVERIFY2(words.contains(wanted), qPrintable(wanted + QStringLiteral(" in ") + words));
    process.start(QStringLiteral("pdftoppm"),
                  {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("100"), pdf, bench.inFolder("page")});
    QVERIFY(process.waitForFinished());
    const QImage page(bench.inFolder("page-1.png"));
    QVERIFY2(page.width() > page.height(), "the page is not landscape");
    const int white = countOf(page, [](QColor colour) { return colour.lightness() > 250; });
    QVERIFY(white > page.width() * page.height() * 8 / 10);
    QVERIFY(countOf(page, [](QColor colour) { return colour.blue() > colour.red() + 80; }) > 300);
    QVERIFY(!QFile::exists(bench.inFolder("page-2.png")));
}

void TestSweepPictures::nothingChosenWritesNothing()
{
    Bench bench;
    const QStringList before = QDir(bench.folder.path()).entryList(QDir::Files);
    bench.trigger("mnuSavePicture");
    bench.trigger("mnuPrint");
    QVERIFY(bench.desktop.boxes.isEmpty());
    QCOMPARE(QDir(bench.folder.path()).entryList(QDir::Files), before);
}

void TestSweepPictures::aRefusedPictureKeepsTheOldFile()
{
    Bench bench;
    bench.saveAs("missing/sweep.png");
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QVERIFY(bench.desktop.lastText().contains(QStringLiteral("missing/sweep.png")));
    // An unsupported format is rejected, not written with the wrong extension.
    bench.saveAs("sweep.jpg");
    QCOMPARE(bench.desktop.boxes.size(), 2);
    QVERIFY(!QFile::exists(bench.inFolder("sweep.jpg")));
    bench.desktop.whenPrinting = [&bench](QPrinter &printer) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(bench.inFolder("missing/sweep.pdf"));
    };
    bench.trigger("mnuPrint");
    QCOMPARE(bench.desktop.boxes.size(), 3);
    QVERIFY(bench.desktop.lastText().contains(QStringLiteral("missing/sweep.pdf")));
}

void TestSweepPictures::theLastNameIsOfferedAgain()
{
    Bench bench;
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    bench.trigger("mnuSavePicture"); // nothing chosen
    bench.type("txtStop", QStringLiteral("7250000"));
    bench.saveAs("first.png");
    bench.saveAs("second.svg");
    bench.saveAs("third.png");
    QCOMPARE(bench.desktop.suggestions, (QStringList{QStringLiteral("sweep %1 1000000-5000000 Hz.png").arg(today),
                                                     QStringLiteral("sweep %1 1000000-7250000 Hz.png").arg(today),
                                                     bench.inFolder("first.png"), bench.inFolder("second.svg")}));
    // The printed page suggests the same name.
    QString page;
    bench.desktop.whenPrinting = [&page, &bench](QPrinter &printer) {
        page = printer.docName();
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(bench.inFolder("sweep.pdf"));
    };
    bench.trigger("mnuPrint");
    QCOMPARE(page, QStringLiteral("sweep %1 1000000-7250000 Hz").arg(today));
}

void TestSweepPictures::theMenuHasItsKeysAndHelp()
{
    Bench bench;
    const QList<std::pair<const char *, QString>> keys{{"mnuSaveCSV", QStringLiteral("Ctrl+S")},
                                                       {"mnuOpenCSV", QStringLiteral("Ctrl+O")},
                                                       {"mnuSavePicture", QStringLiteral("Ctrl+Shift+S")},
                                                       {"mnuCopyPicture", QStringLiteral("Ctrl+C")},
                                                       {"mnuPrint", QStringLiteral("Ctrl+P")}};
    for (const auto &[name, key] : keys) {
        const auto *action = bench.window->findChild<QAction *>(QString::fromLatin1(name));
        QVERIFY2(action, name);
        QCOMPARE(action->shortcut().toString(), key);
        QVERIFY2(action->toolTip().size() > 15, name);
    }
}

QTEST_MAIN(TestSweepPictures)
#include "test_sweep_pictures.moc"
