// SPDX-License-Identifier: MIT
#include "core/number_text.h"
#include "tests/support/fake_server_control.h"
#include "tests/support/locales.h"
#include "tests/support/window_bench.h"

#include <QRandomGenerator>

#include <algorithm>
#include <cmath>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

constexpr char kSettings[] = "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nADC Step=0.00244\r\nADC Offset=0\r\n"
                             "[Parallel Port]\r\nLPT=0\r\n[Calvorn]\r\nStart=1000000\r\nStop=5000000\r\n";

// The window with a sweep in its table.
struct Bench : WindowBench
{
    Bench()
        : WindowBench(test::FakeServerControl::program(), kSettings)
    {
        desktop.fileChoice = folder.path() + QStringLiteral("/sweep.csv");
        deliver(1);
    }

    void deliver(int seed)
    {
        QVector<int> counts;
        QRandomGenerator random(static_cast<quint32>(seed));
        for (int i = 0; i < kSweepPoints; ++i)
            counts.append(static_cast<int>(random.bounded(1024)));
        emit window->findChild<AcquisitionDriver *>()->aVettore(counts);
    }

    void trigger(const char *action) { window->findChild<QAction *>(QString::fromLatin1(action))->trigger(); }

    QStringList cells() const
    {
        QStringList all;
        for (int row = 0; row <= kSweepPoints; ++row)
            for (int column = 0; column < kTableColumns; ++column)
                all.append(table()->text(row, column));
        return all;
    }

    QByteArray file() const
    {
        QFile csv(desktop.fileChoice);
        return csv.open(QIODevice::ReadOnly) ? csv.readAll() : QByteArray("(no file)");
    }
    void writeFile(const QByteArray &content) const
    {
        QFile csv(desktop.fileChoice);
        QVERIFY(csv.open(QIODevice::WriteOnly));
        csv.write(content);
    }
};

// A complete file: row r at 2 MHz + r kHz with the count r.
QByteArray wholeFile(const QList<int> &order)
{
    QByteArray text("\"Sample N\",\"Frequency\",\"DAC sample\",\"milliVolt\"\r\n");
    for (const int row : order)
        text += QByteArray::number(row) + ',' + QByteArray::number(2000000 + row * 1000) + ',' +
                QByteArray::number(row) + ',' + QByteArray::number(std::nearbyint(row * 2.44)) + "\r\n";
    return text;
}

QList<int> rowsFromTo(int first, int last)
{
    QList<int> rows;
    for (int row = first; row <= last; ++row)
        rows.append(row);
    return rows;
}

} // namespace

class TestSweepFiles : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void whatIsExportedComesBack();
    void pointAndCommaAreNotSymmetric();
    void linesLandInTheRowsTheyName();
    void rowFourHundredEndsTheReading();
    void rowZeroOverwritesTheHeader();
    void decibelsComeBackWithTheQuestion();
    void aDifferentCalibrationIsAskedAbout();
    void theWindowMovesToTheImportedSweep();
    void brokenFilesEndSilently_data();
    void brokenFilesEndSilently();
    void nothingChosenChangesNothing();
    void aFolderThatCannotBeWrittenKeepsTheOldFile();
    void theLastFileIsOfferedAgain();
};

void TestSweepFiles::whatIsExportedComesBack()
{
    Bench bench;
    for (int seed = 1; seed <= 20; ++seed) {
        bench.deliver(seed);
        const QStringList before = bench.cells();
        bench.trigger("mnuSaveCSV");
        bench.deliver(seed + 1000);
        bench.trigger("mnuOpenCSV");
        QCOMPARE(bench.cells(), before);
    }
    QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
    QVERIFY(bench.file().startsWith("\"Sample N\",\"Frequency\",\"DAC sample\",\"milliVolt\"\r\n1,1000000,"));
    QCOMPARE(bench.file().count("\r\n"), 401);
}

void TestSweepFiles::pointAndCommaAreNotSymmetric()
{
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    Bench bench;
    QByteArray text = wholeFile(rowsFromTo(1, 400));
    text.replace("1,2001000,1,2\r\n", "1,2001000,1,1234.5\r\n");
    bench.writeFile(text);
    bench.desktop.answers.enqueue(kBoxCancel);
    bench.trigger("mnuOpenCSV");
    // The point groups here: 12345 thousandths.
    QCOMPARE(bench.table()->text(1, 1), QStringLiteral("12,345"));
}

void TestSweepFiles::linesLandInTheRowsTheyName()
{
    Bench bench;
    QList<int> order = rowsFromTo(1, 399);
    std::reverse(order.begin(), order.end());
    order.append(400);
    bench.writeFile(wholeFile(order));
    bench.desktop.answers.enqueue(kBoxCancel);
    bench.trigger("mnuOpenCSV");
    for (int row = 1; row <= kSweepPoints; ++row) {
        QCOMPARE(bench.table()->text(row, 2), QString::number(row));
        QCOMPARE(NumberText().toInt32(bench.table()->text(row, 0)), 2000000 + row * 1000);
    }
}

void TestSweepFiles::rowFourHundredEndsTheReading()
{
    Bench bench;
    const QString second = bench.table()->text(2, 2);
    bench.writeFile(wholeFile({1, 400, 2}));
    bench.desktop.answers.enqueue(kBoxCancel);
    bench.trigger("mnuOpenCSV");
    QCOMPARE(bench.table()->text(400, 2), QStringLiteral("400"));
    QCOMPARE(bench.table()->text(2, 2), second);
    QCOMPARE(bench.configuration.stopFreq, 2400000);
}

void TestSweepFiles::rowZeroOverwritesTheHeader()
{
    Bench bench;
    bench.writeFile(wholeFile({0, 1, 400}));
    bench.desktop.answers.enqueue(kBoxCancel);
    bench.trigger("mnuOpenCSV");
    QCOMPARE(bench.table()->text(0, 0), QStringLiteral("2,000,000"));
}

void TestSweepFiles::decibelsComeBackWithTheQuestion()
{
    Bench bench;
    bench.trigger("mnuScalaLogaritmica1");
    const double db = NumberText().toDouble(bench.table()->text(7, 1));
    bench.trigger("mnuSaveCSV");
    bench.desktop.answers.enqueue(kBoxCancel);
    bench.trigger("mnuOpenCSV");
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QCOMPARE(bench.table()->text(7, 1), NumberText().masked(db, kMaskVolt));
    QCOMPARE(bench.table()->text(0, 1), QStringLiteral("dB"));
}

void TestSweepFiles::aDifferentCalibrationIsAskedAbout()
{
    Bench bench;
    bench.trigger("mnuSaveCSV");
    const QStringList before = bench.cells();
    bench.configuration.adcOffset = 0.5F;
    bench.desktop.answers.enqueue(kBoxCancel);
    bench.trigger("mnuOpenCSV");
    QCOMPARE(bench.cells(), before);
    const auto box = bench.desktop.boxes.first();
    QCOMPARE(box.text, QStringLiteral("This file was created with a different ADC step or offset.\r"
                                      "Press OK to adjust amplitude to the current configuration,\r"
                                      "CANCEL to keep the original values."));
    QCOMPARE(box.title, bench.desktop.fileChoice);
    QCOMPARE(box.icon, BoxIcon::Warning);
    QCOMPARE(box.buttons, BoxButtons::OkCancel);
    bench.trigger("mnuOpenCSV");
    const NumberText numbers;
    for (int row = 1; row <= kSweepPoints; ++row) {
        const double count = numbers.toDouble(bench.table()->text(row, 2));
        QVERIFY(std::abs(numbers.toDouble(bench.table()->text(row, 1)) - (count * 0.00244 + 0.5)) < 0.0006);
    }
}

void TestSweepFiles::theWindowMovesToTheImportedSweep()
{
    Bench bench;
    bench.writeFile(wholeFile(rowsFromTo(1, 400)));
    bench.trigger("mnuOpenCSV");
    QCOMPARE(bench.configuration.startFreq, 2001000);
    QCOMPARE(bench.configuration.stopFreq, 2400000);
    QCOMPARE(bench.text("txtStart"), QStringLiteral("2,001,000"));
    QCOMPARE(bench.text("txtStop"), QStringLiteral("2,400,000"));
    QCOMPARE(bench.text("txtStep"), QStringLiteral("998"));
    QCOMPARE(bench.label("lblStart"), QStringLiteral("2,001,000"));
    QCOMPARE(bench.label("lblCentro"), QStringLiteral("2,200,500"));
    QCOMPARE(bench.label("lblStop"), QStringLiteral("2,400,000"));
    QCOMPARE(bench.text("txtM1Y"), bench.table()->text(1, 1));
    QCOMPARE(bench.find<SweepGraph>("picSweep")->curve().last(), QPointF(400, 976));
    // The imported sweep stays, though its plan is another one than that of the last sweep.
    QTest::qWait(700);
    QCOMPARE(bench.table()->text(400, 2), QStringLiteral("400"));
}

void TestSweepFiles::brokenFilesEndSilently_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("header only") << wholeFile({});
    QTest::newRow("too few lines") << wholeFile(rowsFromTo(1, 399));
    QTest::newRow("row -1") << wholeFile({-1, 400});
    QTest::newRow("row 401") << wholeFile({401});
    QTest::newRow("row 65536") << wholeFile({65536});
    QTest::newRow("no number") << wholeFile({1}) + "2,x,3,4\r\n";
    QTest::newRow("too large a number") << wholeFile({1}) + "2,1e400,3,4\r\n";
    QTest::newRow("NUL bytes") << QByteArray(4096, '\0');
    QTest::newRow("one long line") << QByteArray(1 << 20, '9');
    QTest::newRow("Latin-1") << QByteArray("\"\xE9\",\"\xE8\",c,d\r\n\xB5,1,2,3\r\n");
}

void TestSweepFiles::brokenFilesEndSilently()
{
    QFETCH(QByteArray, content);
    Bench bench;
    const QString start = bench.text("txtStart");
    const auto curve = bench.find<SweepGraph>("picSweep")->curve();
    bench.writeFile(content);
    bench.trigger("mnuOpenCSV");
    QVERIFY(bench.desktop.boxes.isEmpty());
    QCOMPARE(bench.text("txtStart"), start);
    QCOMPARE(bench.configuration.startFreq, 1000000);
    QCOMPARE(bench.find<SweepGraph>("picSweep")->curve(), curve);
}

void TestSweepFiles::nothingChosenChangesNothing()
{
    Bench bench;
    const QStringList before = bench.cells();
    bench.desktop.fileChoice.clear();
    bench.trigger("mnuSaveCSV");
    bench.trigger("mnuOpenCSV");
    QCOMPARE(bench.cells(), before);
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestSweepFiles::aFolderThatCannotBeWrittenKeepsTheOldFile()
{
    Bench bench;
    bench.trigger("mnuSaveCSV");
    const QByteArray before = bench.file();
    bench.deliver(2);
    // A cell that is no number refuses the export before the file is touched.
    bench.table()->setText(9, 1, QStringLiteral("x"));
    bench.trigger("mnuSaveCSV");
    QCOMPARE(bench.file(), before);
    bench.desktop.fileChoice = bench.folder.path() + QStringLiteral("/missing/sweep.csv");
    bench.table()->setText(9, 1, QStringLiteral("0"));
    bench.trigger("mnuSaveCSV");
    QCOMPARE(bench.file(), QByteArray("(no file)"));
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestSweepFiles::theLastFileIsOfferedAgain()
{
    Bench bench;
    bench.trigger("mnuSaveCSV");
    bench.trigger("mnuOpenCSV");
    bench.trigger("mnuSaveCSV");
    QCOMPARE(bench.desktop.suggestions, (QStringList{QString(), bench.desktop.fileChoice, bench.folder.path()}));
}

QTEST_MAIN(TestSweepFiles)
#include "test_sweep_files.moc"
