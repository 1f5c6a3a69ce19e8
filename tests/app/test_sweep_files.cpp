// SPDX-License-Identifier: MIT
#include "tests/support/locales.h"
#include "tests/support/quiet_time.h"
#include "tests/support/sweep_file_bench.h"
#include "tests/support/walk_numbers.h"

#include <QListWidget>

#include <algorithm>
#include <cmath>

using namespace calvorn;
using calvorn::test::inLocale;
using calvorn::test::rowsFromTo;
using calvorn::test::wholeFile;
using Bench = calvorn::test::SweepFileBench;

class TestSweepFiles : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void whatIsExportedComesBack_data() { test::addLocaleRows(); }
    void whatIsExportedComesBack();
    void aPointIsReadByTheLocale_data();
    void aPointIsReadByTheLocale();
    void okReplacesEveryRow_data() { test::addLocaleRows(); }
    void okReplacesEveryRow();
    void linesLandInTheRowsTheyName_data() { test::addLocaleRows(); }
    void linesLandInTheRowsTheyName();
    void rowFourHundredEndsTheReading_data() { test::addLocaleRows(); }
    void rowFourHundredEndsTheReading();
    void rowZeroOverwritesTheHeader_data() { test::addLocaleRows(); }
    void rowZeroOverwritesTheHeader();
    void decibelsComeBackWithTheQuestion_data() { test::addLocaleRows(); }
    void decibelsComeBackWithTheQuestion();
    void aDifferentCalibrationIsAskedAbout_data() { test::addLocaleRows(); }
    void aDifferentCalibrationIsAskedAbout();
    void theWindowMovesToTheImportedSweep_data() { test::addLocaleRows(); }
    void theWindowMovesToTheImportedSweep();
    void voltsOnAScaleInDecibelsAreNoted_data() { test::addLocaleRows(); }
    void voltsOnAScaleInDecibelsAreNoted();
    void nothingChosenChangesNothing();
    void aCellThatIsNoNumberKeepsTheOldFile();
    void theLastFileIsOfferedAgain();
};

void TestSweepFiles::whatIsExportedComesBack()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
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

void TestSweepFiles::aPointIsReadByTheLocale_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("amplitude"); // of the field "1234.5"; empty if it is not a number
    QTest::newRow("en_US") << QLocale(QLocale::English, QLocale::UnitedStates) << QStringLiteral("1.234");
    QTest::newRow("C") << QLocale::c() << QStringLiteral("1.234");
    // The point is a group separator here, so the field is read as 12345 thousandths.
    QTest::newRow("it_IT") << QLocale(QLocale::Italian, QLocale::Italy) << QStringLiteral("12,345");
    QTest::newRow("fr_FR") << QLocale(QLocale::French, QLocale::France) << QString();
}

void TestSweepFiles::aPointIsReadByTheLocale()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, amplitude);
    QLocale::setDefault(locale);
    Bench bench;
    const QString before = bench.table()->text(1, 1);
    QByteArray text = wholeFile(rowsFromTo(1, 400));
    text.replace("1,2001000,1,2\r\n", "1,2001000,1,1234.5\r\n");
    bench.writeFile(text);
    bench.desktop.answers.enqueue(kBoxCancel);
    bench.trigger("mnuOpenCSV");
    QCOMPARE(bench.table()->text(1, 1), amplitude.isEmpty() ? before : amplitude);
    QCOMPARE(bench.configuration.startFreq, amplitude.isEmpty() ? 1000000 : 2001000);
}

void TestSweepFiles::linesLandInTheRowsTheyName()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    Bench bench;
    QList<int> order = rowsFromTo(1, 399);
    std::reverse(order.begin(), order.end());
    order.append(400);
    bench.writeFile(wholeFile(order));
    bench.desktop.answers.enqueue(kBoxCancel);
    bench.trigger("mnuOpenCSV");
    for (int row = 1; row <= 400; ++row) {
        QCOMPARE(bench.table()->text(row, 2), QString::number(row));
        QCOMPARE(bench.table()->text(row, 0), test::shownHertz(2000000 + row * 1000));
    }
}

void TestSweepFiles::rowFourHundredEndsTheReading()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
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
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    Bench bench;
    bench.writeFile(wholeFile({0, 1, 400}));
    bench.desktop.answers.enqueue(kBoxCancel);
    bench.trigger("mnuOpenCSV");
    QCOMPARE(bench.table()->text(0, 0), inLocale(locale, QStringLiteral("2,000,000")));
    QCOMPARE(bench.table()->text(0, 1), inLocale(locale, QStringLiteral("0.000")));
    QCOMPARE(bench.table()->text(0, 2), QStringLiteral("0"));
}

void TestSweepFiles::decibelsComeBackWithTheQuestion()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    Bench bench;
    bench.trigger("mnuScalaLogaritmica1");
    QList<double> decibels;
    for (int row = 1; row <= 400; ++row)
        decibels.append(test::readNumber(bench.table()->text(row, 1)));
    bench.trigger("mnuSaveCSV");
    const QList<QByteArray> lines = bench.file().split('\n');
    QVERIFY(lines[0].contains("\"milliVolt\""));
    bench.desktop.answers.enqueue(kBoxCancel);
    bench.trigger("mnuOpenCSV");
    QCOMPARE(bench.desktop.boxes.size(), 1);
    for (int row = 1; row <= 400; ++row) {
        QCOMPARE(lines[row].trimmed().split(',').last().toDouble(), decibels[row - 1] * 1000.0);
        QCOMPARE(bench.table()->text(row, 1), test::shownAmplitude(true, decibels[row - 1]));
    }
    QCOMPARE(bench.table()->text(0, 1), QStringLiteral("dB"));
}

void TestSweepFiles::aDifferentCalibrationIsAskedAbout()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    Bench bench;
    bench.trigger("mnuSaveCSV");
    const QStringList before = bench.cells();
    bench.configuration.adcOffset = 0.5F;
    bench.deliver(2);
    QVERIFY(bench.cells() != before);
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
    for (int row = 1; row <= 400; ++row) {
        const double count = test::readNumber(bench.table()->text(row, 2));
        QVERIFY(std::abs(test::readNumber(bench.table()->text(row, 1)) - (count * 0.00244 + 0.5)) < 0.0006);
    }
}

void TestSweepFiles::theWindowMovesToTheImportedSweep()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    Bench bench;
    bench.type("txtM2X", QStringLiteral("3000000"));
    bench.writeFile(wholeFile(rowsFromTo(1, 400)));
    bench.trigger("mnuOpenCSV");
    QCOMPARE(bench.configuration.startFreq, 2001000);
    QCOMPARE(bench.configuration.stopFreq, 2400000);
    QCOMPARE(bench.text("txtStart"), inLocale(locale, QStringLiteral("2,001,000")));
    QCOMPARE(bench.text("txtStop"), inLocale(locale, QStringLiteral("2,400,000")));
    QCOMPARE(bench.text("txtStep"), QStringLiteral("998"));
    QCOMPARE(bench.label("lblStart"), inLocale(locale, QStringLiteral("2,001,000")));
    QCOMPARE(bench.label("lblCentro"), inLocale(locale, QStringLiteral("2,200,500")));
    QCOMPARE(bench.label("lblStop"), inLocale(locale, QStringLiteral("2,400,000")));
    // The markers stay in their rows and show the new values there.
    QCOMPARE(bench.text("txtM1X"), inLocale(locale, QStringLiteral("2,001,000")));
    QCOMPARE(bench.text("txtM1Y"), bench.table()->text(1, 1));
    QCOMPARE(bench.text("txtM2X"), inLocale(locale, QStringLiteral("2,201,000")));
    QCOMPARE(bench.text("txtM2Y"), bench.table()->text(201, 1));
    QCOMPARE(bench.text("txtM2M1"), inLocale(locale, QStringLiteral("200,000")));
    QCOMPARE(bench.find<SweepGraph>("picSweep")->curve().last(), QPointF(400, 976));
    // The imported sweep remains, although its frequencies differ from those of the last sweep.
    test::nothingHappensFor(700);
    QCOMPARE(bench.table()->text(400, 2), QStringLiteral("400"));
}

void TestSweepFiles::okReplacesEveryRow()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    Bench bench;
    // The first import fails after two rows; the second file has only the first and the last row.
    bench.writeFile(wholeFile({1, 2}));
    bench.trigger("mnuOpenCSV");
    bench.configuration.adcOffset = 0.25F;
    bench.writeFile(wholeFile({1, 400}));
    bench.trigger("mnuOpenCSV");
    QCOMPARE(bench.desktop.boxes.size(), 1);
    for (int row = 1; row <= 400; ++row) {
        const double count = test::readNumber(bench.table()->text(row, 2));
        QVERIFY(std::abs(test::readNumber(bench.table()->text(row, 1)) - (count * 0.00244 + 0.25)) < 0.0006);
    }
    QCOMPARE(bench.table()->text(2, 2), QStringLiteral("2"));
}

void TestSweepFiles::voltsOnAScaleInDecibelsAreNoted()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    const QString note = QStringLiteral("Import: the amplitudes are in volts, but the scale is in dB");
    const auto notes = [&](const Bench &bench) {
        return bench.find<QListWidget>("lstLOG")->findItems(note, Qt::MatchExactly).size();
    };
    Bench volts;
    volts.trigger("mnuSaveCSV");
    const QByteArray file = volts.file();
    volts.trigger("mnuOpenCSV");
    QCOMPARE(notes(volts), 0);
    for (const char *scale : {"mnuScalaLogaritmica1", "mnuScalaLogaritmica10dB"}) {
        Bench decibels;
        decibels.trigger(scale);
        decibels.writeFile(file);
        decibels.trigger("mnuOpenCSV");
        QCOMPARE(notes(decibels), 1);
        QVERIFY2(decibels.desktop.boxes.isEmpty(), qPrintable(decibels.desktop.lastText()));
        QCOMPARE(decibels.table()->text(0, 1), QStringLiteral("dB"));

        // A file in dB, imported without conversion.
        Bench other;
        other.trigger(scale);
        other.trigger("mnuSaveCSV");
        other.desktop.answers.enqueue(kBoxCancel);
        other.trigger("mnuOpenCSV");
        QCOMPARE(notes(other), 0);
        // "OK" converts it to volts.
        other.trigger("mnuOpenCSV");
        QCOMPARE(notes(other), 1);
    }
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

void TestSweepFiles::aCellThatIsNoNumberKeepsTheOldFile()
{
    Bench bench;
    bench.trigger("mnuSaveCSV");
    const QByteArray before = bench.file();
    bench.deliver(2);
    bench.table()->setText(9, 1, QStringLiteral("x"));
    bench.trigger("mnuSaveCSV");
    QCOMPARE(bench.file(), before);
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
