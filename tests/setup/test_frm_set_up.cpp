// SPDX-License-Identifier: MIT
#include "core/settings.h"
#include "tests/support/locales.h"
#include "tests/support/set_up_bench.h"

#include <QScopeGuard>
#include <QScrollBar>

using namespace calvorn;
using calvorn::test::SetUpBench;

namespace {

constexpr char kConfigured[] = "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nDDS Multiplier=6\r\n"
                               "DDS Xtal freq=30000000\r\nDDS Max freq=70000000\r\nDDS Min freq=1000\r\n"
                               "DDS Offset=1.25\r\nADC Device=8bit\r\nADC Offset=0.125\r\nADC Step=0.00244\r\n"
                               "ADC Channel=3\r\n[Parallel Port]\r\nLPT=&H278\r\n[Serial Port]\r\nCommPort=4\r\n";

constexpr char kDefaultPic[] = "[Interface1]\r\nDDS Device=AD9850\r\nDDS Multiplier=1\r\nDDS Xtal freq=125000000\r\n"
                               "DDS Max freq=40000000\r\nDDS Min freq=1000\r\nDDS Offset=2.5\r\nADC Device=10bit\r\n"
                               "ADC Offset=0.5\r\nADC Step=0.005\r\nADC Channel=1\r\n";

constexpr char kDefaultVna[] = "[Interface3]\r\nDDS Device=AD9951\r\nDDS Multiplier=20\r\nDDS Xtal freq=20000000\r\n"
                               "DDS Max freq=180000000\r\nDDS Min freq=100000\r\nDDS Offset=0\r\nADC Device=10bit\r\n"
                               "ADC Offset=0\r\nADC Step=0.001\r\nADC Channel=3\r\n";

// The auxiliary outputs as "Apply" writes them to a file that does not mention them.
constexpr char kPlainOutputs[] =
    "[Aux1]\r\nEnabled=0\r\nStep 0=10dB;10\r\nStep 1=20dB;20\r\nStep 2=30dB;30\r\nStep 3=40dB;40\r\n"
    "Step 4=50dB;50\r\nStep 5=60dB;60\r\nStep 6=70dB;70\r\nStep 7=80dB;80\r\nInverse Logic=0\r\nTitle=Aux 1\r\n"
    "[Aux2]\r\nEnabled=0\r\nStep 0=10dB;10\r\nStep 1=20dB;20\r\nStep 2=30dB;30\r\nStep 3=40dB;40\r\n"
    "Step 4=50dB;50\r\nStep 5=60dB;60\r\nStep 6=70dB;70\r\nStep 7=80dB;80\r\nInverse Logic=0\r\nTitle=Aux 2\r\n"
    "PotMax=\r\nPotMin=\r\n";

// Opens every page and returns "name value" for each control.
QStringList everyField(const SetUpBench &bench)
{
    QStringList fields;
    for (const char *page : {"cmdInterface", "cmdDDS", "cmdADC", "cmdAux", "cmdPort"})
        bench.click(page);
    for (const auto *box : bench.dialog->findChildren<QLineEdit *>())
        fields.append(box->objectName() + u' ' + box->text());
    for (const auto *button : bench.dialog->findChildren<QAbstractButton *>())
        fields.append(button->objectName() + (button->isChecked() ? QStringLiteral(" on") : QStringLiteral(" off")));
    for (const auto *bar : bench.dialog->findChildren<QScrollBar *>())
        fields.append(bar->objectName() + u' ' + QString::number(bar->value()));
    for (const auto *label : bench.dialog->findChildren<QLabel *>())
        fields.append(label->objectName() + u' ' + label->text());
    return fields;
}

} // namespace

class TestFrmSetUp : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void onePageShowsAtATime();
    void thePressedPageButtonIsSeen_data();
    void thePressedPageButtonIsSeen();
    void everyPageShowsWhatTheFileSays();
    void cancelWritesNothingAndKeepsTheDialogOpen();
    void exitWritesNothing();
    void exitForgetsWhatWasTyped_data();
    void exitForgetsWhatWasTyped();
    void exitForgetsAChoice();
    void openingWritesNothing();
    void applyOnAnEmptyFileWritesTheDefaultsInOrder();
    void applyForThePic();
    void applyForTheParallelPort();
    void applyForTheMiniVna();
    void keysKeepTheirSpellingAndTheirPlace();
    void theWholeFileWithADecimalComma();
    void whatIsAppliedIsReadBack_data() { test::addLocaleRows(); }
    void whatIsAppliedIsReadBack();
    void anEntryStillBeingTypedIsApplied();
    void aFileThatCannotBeWrittenIsTold();
    void aMissingDefaultChangesNothing_data();
    void aMissingDefaultChangesNothing();
    void choosingAnInterfaceLoadsItsDefault();
    void choosingAnInterfaceWithoutADefaultKeepsTheValues();
    void theChosenInterfaceIsNotLoadedAgain();
    void anUnknownInterfaceHasNoPages();
    void badValuesAreNamed();
    void everyControlIsNamedAndExplained();
    void theKeyboardFollowsTheEye();
};

void TestFrmSetUp::onePageShowsAtATime()
{
    SetUpBench bench(kConfigured);
    const QStringList buttons{"cmdInterface", "cmdDDS", "cmdADC", "cmdAux", "cmdPort"};
    const QSize size = bench.dialog->size();
    const auto *frame = bench.find("frameSetUp");
    for (const QString &button : buttons) {
        bench.click(button.toUtf8().constData());
        for (int page = 0; page < 5; ++page) {
            const QString name = QStringLiteral("frameSetUp_%1").arg(page);
            QCOMPARE(bench.isShown(name.toUtf8().constData()), buttons[page] == button);
            QCOMPARE(bench.isChecked(buttons[page].toUtf8().constData()), buttons[page] == button);
            QVERIFY(frame->isAncestorOf(bench.find(name.toUtf8().constData())));
        }
        QVERIFY(frame->isVisible());
        QCOMPARE(bench.dialog->size(), size);
    }
}

void TestFrmSetUp::thePressedPageButtonIsSeen_data()
{
    QTest::addColumn<QPalette>("colours");
    QTest::newRow("light") << QPalette(QColor(239, 239, 239));
    QTest::newRow("dark") << QPalette(QColor(49, 54, 59), QColor(42, 46, 50));
}

void TestFrmSetUp::thePressedPageButtonIsSeen()
{
    QFETCH(QPalette, colours);
    colours.setColor(QPalette::Highlight, QColor(61, 174, 233));
    colours.setColor(QPalette::HighlightedText, Qt::white);
    const QPalette usual = QApplication::palette();
    const auto back = qScopeGuard([usual] { QApplication::setPalette(usual); });
    QApplication::setPalette(colours);
    const SetUpBench bench(kConfigured);
    // Samples the colour halfway down the left edge, where a button has no text.
    const auto face = [&bench](const char *name) {
        QWidget *button = bench.find(name);
        return button->grab().toImage().pixelColor(4, button->height() / 2);
    };
    const auto distance = [](const QColor &a, const QColor &b) {
        return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
    };
    bench.click("cmdADC");
    QVERIFY(distance(face("cmdADC"), face("cmdPort")) > 120);
    bench.click("cmdPort");
    QVERIFY(distance(face("cmdADC"), face("cmdPort")) > 120);
    QVERIFY(distance(face("cmdADC"), face("cmdDDS")) < 10);
}

void TestFrmSetUp::everyPageShowsWhatTheFileSays()
{
    SetUpBench bench(QByteArray(kConfigured) +
                     "[Aux1]\r\nEnabled=1\r\nInverse Logic=1\r\nTitle=Attenuator\r\nStep 0=3 dB;3\r\nStep 1=25\r\n"
                     "[Aux2]\r\nPotMax=200\r\nPotMin=20\r\n");
    QVERIFY(bench.isShown("frameSetUp_0"));
    QVERIFY(bench.isChecked("optInterface_2"));
    bench.click("cmdDDS");
    QVERIFY(bench.isChecked("optDDSselect_2"));
    QVERIFY(bench.isShown("frmAD9851"));
    QVERIFY(!bench.isShown("frmAD9951"));
    QCOMPARE(bench.text("txtClk9851"), QStringLiteral("30,000,000"));
    QVERIFY(bench.isChecked("optDDSx6"));
    QCOMPARE(bench.text("txtMaxFreq"), QStringLiteral("70,000,000"));
    QCOMPARE(bench.text("txtMinFreq"), QStringLiteral("1,000"));
    QCOMPARE(bench.label("lblOffsetDDS"), QStringLiteral("Frequency offset: 1.250 Hz"));
    QCOMPARE(bench.label("Label4"), QStringLiteral("180,000,000"));
    bench.click("cmdADC");
    QVERIFY(bench.isChecked("optADC_1"));
    QCOMPARE(bench.text("txtADCstep"), QStringLiteral("2.440"));
    QCOMPARE(bench.text("txtADCchannel"), QStringLiteral("3"));
    QCOMPARE(bench.label("lblOffset"), QStringLiteral("Offset: 0.125 Volt"));
    bench.click("cmdAux");
    QVERIFY(bench.isChecked("chkBoxEnableAux1"));
    QVERIFY(bench.isChecked("chkBoxLogicaAux1"));
    QVERIFY(!bench.isChecked("chkBoxEnableAux2"));
    QCOMPARE(bench.text("txtTitoloAux1"), QStringLiteral("Attenuator"));
    QCOMPARE(bench.text("txtTitoloAux2"), QStringLiteral("Aux 2"));
    QCOMPARE(bench.text("txtAux1_0"), QStringLiteral("3 dB"));
    QCOMPARE(bench.text("txtAux1Val_0"), QStringLiteral("3"));
    QCOMPARE(bench.text("txtAux1_1"), QStringLiteral("25"));
    QCOMPARE(bench.text("txtAux1Val_1"), QStringLiteral("25"));
    QCOMPARE(bench.text("txtAux2_7"), QStringLiteral("80dB"));
    QCOMPARE(bench.text("txtVscrollMax"), QStringLiteral("200"));
    QCOMPARE(bench.find<QScrollBar>("VScroll1")->minimum(), 20);
    QCOMPARE(bench.find<QScrollBar>("VScroll1")->maximum(), 200);
    QCOMPARE(bench.desktop.boxes.size(), 0);
    QCOMPARE(bench.desktop.beeps, 0);
}

void TestFrmSetUp::cancelWritesNothingAndKeepsTheDialogOpen()
{
    SetUpBench bench(kConfigured);
    bench.click("cmdADC");
    bench.click("optADC_2");
    bench.desktop.answers.enqueue(kBoxCancel);
    bench.click("cmdApply");
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QCOMPARE(bench.desktop.lastText(), QStringLiteral("Please confirm, now program will exit.\rPlease restart."));
    QCOMPARE(bench.desktop.boxes.first().buttons, BoxButtons::OkCancel);
    QCOMPARE(bench.desktop.boxes.first().title, QStringLiteral("Brenik - Calvorn  v2.0"));
    QCOMPARE(bench.file(), QByteArray(kConfigured));
    QVERIFY(bench.dialog->isVisible());
    QVERIFY(bench.isChecked("optADC_2"));
}

void TestFrmSetUp::exitWritesNothing()
{
    SetUpBench bench(kConfigured);
    bench.click("cmdDDS");
    bench.type("txtMaxFreq", QStringLiteral("50000000"));
    bench.click("cmdExit");
    QVERIFY(!bench.dialog->isVisible());
    QCOMPARE(bench.dialog->result(), static_cast<int>(QDialog::Rejected));
    QCOMPARE(bench.file(), QByteArray(kConfigured));
    QCOMPARE(bench.desktop.boxes.size(), 0);
    // When reopened, the dialog shows the stored settings.
    bench.open();
    bench.click("cmdDDS");
    QCOMPARE(bench.text("txtMaxFreq"), QStringLiteral("70,000,000"));
}

void TestFrmSetUp::exitForgetsWhatWasTyped_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("button") << false;
    QTest::newRow("Escape") << true;
}

// The box still has the focus.
void TestFrmSetUp::exitForgetsWhatWasTyped()
{
    QFETCH(bool, byKey);
    const std::array<std::pair<const char *, const char *>, 9> boxes{{{"cmdDDS", "txtClk9851"},
                                                                      {"cmdDDS", "txtMaxFreq"},
                                                                      {"cmdADC", "txtADCstep"},
                                                                      {"cmdADC", "txtADCchannel"},
                                                                      {"cmdAux", "txtTitoloAux1"},
                                                                      {"cmdAux", "txtAux2Val_7"},
                                                                      {"cmdAux", "txtVscrollMax"},
                                                                      {"cmdPort", "txtAddressRS232"},
                                                                      {"cmdPort", "txtAddressLPT"}}};
    SetUpBench bench(kConfigured);
    for (const auto &[page, name] : boxes) {
        bench.click(page);
        const QString before = bench.text(name);
        auto *box = bench.find<QLineEdit>(name);
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("78"));
        if (byKey)
            QTest::keyClick(box, Qt::Key_Escape);
        else
            bench.click("cmdExit");
        QVERIFY(!bench.dialog->isVisible());
        bench.open();
        bench.click(page);
        QVERIFY2(bench.text(name) == before, name);
    }
    QCOMPARE(bench.label("lblAddressRS232"), QString());
    QCOMPARE(bench.label("txtLPTHex"), QString());
    bench.click("cmdApply");
    QVERIFY(!bench.file().contains("=78\r"));
}

void TestFrmSetUp::exitForgetsAChoice()
{
    const SetUpBench bench("[Config]\r\nInterface=7\r\nDDS Device=AD9851\r\n[Serial Port]\r\nCommPort=0\r\n");
    bench.click("optInterface_1");
    bench.click("cmdPort");
    bench.click("optSerialPort_3");
    bench.click("cmdExit");
    bench.open();
    QVERIFY(!bench.isChecked("optInterface_1"));
    bench.click("cmdPort");
    QVERIFY(!bench.isChecked("optSerialPort_3"));
    // As before, only one option is checked at a time.
    bench.click("optSerialPort_3");
    bench.click("optSerialPort_4");
    QVERIFY(!bench.isChecked("optSerialPort_3"));
}

void TestFrmSetUp::openingWritesNothing()
{
    SetUpBench bench({});
    QCOMPARE(bench.file(), QByteArray("(no file)"));
}

void TestFrmSetUp::applyOnAnEmptyFileWritesTheDefaultsInOrder()
{
    SetUpBench bench({});
    bench.click("cmdApply");
    QVERIFY(!bench.dialog->isVisible());
    QCOMPARE(bench.dialog->result(), static_cast<int>(QDialog::Accepted));
    QCOMPARE(bench.file(), "[Config]\r\nInterface=2\r\nDDS Device=AD9850\r\nDDS Xtal freq=80000000\r\n"
                           "DDS Multiplier=1\r\nDDS Max Freq=60000000\r\nDDS Min Freq=10\r\nDDS Offset=0\r\n"
                           "ADC Device=10bit\r\nADC Step=0\r\nADC Offset=5\r\nADC Channel=1\r\n"
                           "[Serial Port]\r\nCommPort=6\r\n[Parallel Port]\r\nLPT=&H378\r\n" +
                               QByteArray(kPlainOutputs));
}

void TestFrmSetUp::applyForThePic()
{
    SetUpBench bench(kDefaultPic);
    bench.click("optInterface_1");
    bench.click("cmdPort");
    bench.click("optSerialPort_7");
    bench.type("txtAddressRS232", QStringLiteral("100"));
    bench.click("cmdApply");
    QCOMPARE(bench.file(), QByteArray(kDefaultPic) +
                               "[Config]\r\nInterface=1\r\nDDS Device=AD9850\r\nDDS Xtal freq=125000000\r\n"
                               "DDS Multiplier=1\r\nDDS Max Freq=40000000\r\nDDS Min Freq=1000\r\nDDS Offset=2.5\r\n"
                               "ADC Device=10bit\r\nADC Step=0.005\r\nADC Offset=0.5\r\nADC Channel=1\r\n"
                               "[Serial Port]\r\nCommPort=100\r\n[Parallel Port]\r\nLPT=&H378\r\n" +
                               kPlainOutputs);
}

void TestFrmSetUp::applyForTheParallelPort()
{
    SetUpBench bench({});
    bench.click("cmdDDS");
    bench.click("optDDSselect_2");
    bench.type("txtClk9851", QStringLiteral("30000000"));
    bench.click("optDDSx6");
    bench.type("txtMaxFreq", QStringLiteral("70000000"));
    bench.type("txtMinFreq", QStringLiteral("1000"));
    bench.click("cmdADC");
    bench.click("optADC_1");
    bench.type("txtADCstep", QStringLiteral("9.766"));
    bench.click("cmdAux");
    bench.click("chkBoxEnableAux1");
    bench.click("chkBoxLogicaAux1");
    bench.type("txtTitoloAux1", QStringLiteral("Filters"));
    bench.type("txtAux1_0", QStringLiteral("160 m"));
    bench.type("txtAux1Val_0", QStringLiteral("1"));
    bench.type("txtAux1_7", QStringLiteral(" "));
    bench.click("chkBoxEnableAux2");
    bench.type("txtVscrollMax", QStringLiteral("200"));
    bench.type("txtVScrollMin", QStringLiteral("20"));
    bench.click("cmdPort");
    bench.click("optParallelPort_0");
    bench.click("cmdApply");
    QCOMPARE(bench.desktop.beeps, 0);
    QCOMPARE(bench.file(),
             QByteArray("[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nDDS Xtal freq=30000000\r\n"
                        "DDS Multiplier=6\r\nDDS Max Freq=70000000\r\nDDS Min Freq=1000\r\nDDS Offset=0\r\n"
                        "ADC Device=8bit\r\nADC Step=0.009766\r\nADC Offset=5\r\nADC Channel=1\r\n"
                        "[Serial Port]\r\nCommPort=6\r\n[Parallel Port]\r\nLPT=&H0\r\n") +
                 QByteArray(kPlainOutputs)
                     .replace("[Aux1]\r\nEnabled=0\r\nStep 0=10dB;10", "[Aux1]\r\nEnabled=1\r\nStep 0=160 m;1")
                     .replace("Step 7=80dB;80\r\nInverse Logic=0\r\nTitle=Aux 1",
                              "Step 7=;80\r\nInverse Logic=1\r\nTitle=Filters")
                     .replace("[Aux2]\r\nEnabled=0", "[Aux2]\r\nEnabled=1")
                     .replace("PotMax=\r\nPotMin=", "PotMax=200\r\nPotMin=20"));
}

void TestFrmSetUp::applyForTheMiniVna()
{
    SetUpBench bench(kDefaultVna);
    bench.click("cmdDefault3");
    QVERIFY(bench.isChecked("optInterface_3"));
    bench.click("cmdADC");
    bench.type("txtADCchannel", QStringLiteral("2"));
    bench.click("cmdPort");
    bench.click("optSerialPort_5");
    bench.click("cmdApply");
    QCOMPARE(bench.file(), QByteArray(kDefaultVna) +
                               "[Config]\r\nInterface=3\r\nDDS Device=AD9951\r\nDDS Xtal freq=20000000\r\n"
                               "DDS Multiplier=20\r\nDDS Max Freq=180000000\r\nDDS Min Freq=100000\r\nDDS Offset=0\r\n"
                               "ADC Device=10bit\r\nADC Step=0.001\r\nADC Offset=0\r\nADC Channel=2\r\n"
                               "[Serial Port]\r\nCommPort=5\r\n[Parallel Port]\r\nLPT=&H378\r\n" +
                               kPlainOutputs);
}

// "DDS Max Freq" and "DDS Max freq" are the same key.
void TestFrmSetUp::keysKeepTheirSpellingAndTheirPlace()
{
    SetUpBench bench("; mine\r\n[Config]\r\nDDS Max freq=50000000\r\nOther=1\r\nDDS Device=AD9850\r\n"
                     "[Aux2]\r\ni2c_control=80\r\n");
    bench.click("cmdApply");
    const QByteArray file = bench.file();
    QVERIFY(file.startsWith("; mine\r\n[Config]\r\nDDS Max freq=50000000\r\nOther=1\r\nDDS Device=AD9850\r\n"));
    QVERIFY(!file.contains("DDS Max Freq"));
    QVERIFY(file.contains("[Aux2]\r\ni2c_control=80\r\nEnabled=0\r\n"));
}

void TestFrmSetUp::theWholeFileWithADecimalComma()
{
    QLocale::setDefault(QLocale(QStringLiteral("it_IT")));
    SetUpBench bench(kConfigured);
    bench.click("cmdApply");
    QCOMPARE(bench.file(), "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nDDS Multiplier=6\r\n"
                           "DDS Xtal freq=30000000\r\nDDS Max freq=70000000\r\nDDS Min freq=1000\r\n"
                           "DDS Offset=1,25\r\nADC Device=8bit\r\nADC Offset=0,125\r\nADC Step=0,00244\r\n"
                           "ADC Channel=3\r\n[Parallel Port]\r\nLPT=&H278\r\n[Serial Port]\r\nCommPort=4\r\n" +
                               QByteArray(kPlainOutputs));
}

void TestFrmSetUp::whatIsAppliedIsReadBack()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    SetUpBench bench(kConfigured);
    bench.click("cmdDDS");
    QCOMPARE(bench.text("txtMaxFreq"), test::inLocale(locale, QStringLiteral("70,000,000")));
    QCOMPARE(bench.label("lblOffsetDDS"), test::inLocale(locale, QStringLiteral("Frequency offset: 1.250 Hz")));
    bench.click("cmdADC");
    bench.type("txtADCstep", QStringLiteral("4.883"));
    QCOMPARE(bench.text("txtADCstep"), test::inLocale(locale, QStringLiteral("4.883")));
    bench.click("cmdPort");
    bench.type("txtAddressLPT", QStringLiteral("57360"));
    bench.click("optParallelPort_4");
    bench.click("cmdApply");
    QCOMPARE(bench.folder.setting("Parallel Port", "LPT"), QStringLiteral("&HE010"));

    Configuration read;
    read.iniPath = bench.folder.iniPath();
    WindowSettings window;
    SettingsLoader loader(read, window);
    QCOMPARE(loader.load(), LoadOutcome::Loaded);
    QVERIFY(loader.faults().isEmpty());
    QCOMPARE(read.ddsMaxFreq, 70000000);
    QCOMPARE(read.ddsMinFreq, 1000);
    QCOMPARE(read.ddsOffset, 1.25);
    QCOMPARE(read.adcStep, 0.004883F);
    QCOMPARE(read.adcOffset, 0.125F);
    QCOMPARE(static_cast<int>(static_cast<std::uint16_t>(read.lptAddress)), 57360);
    QCOMPARE(read.commPort, std::int16_t{4});
    QCOMPARE(read.measuringMode, std::int16_t{3});
}

void TestFrmSetUp::anEntryStillBeingTypedIsApplied()
{
    SetUpBench bench(kConfigured);
    bench.click("cmdDDS");
    auto *box = bench.find<QLineEdit>("txtMaxFreq");
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("65000000"));
    QTest::keyClick(bench.dialog.get(), Qt::Key_A, Qt::AltModifier);
    QTRY_VERIFY(!bench.dialog->isVisible());
    QCOMPARE(bench.folder.setting("Config", "DDS Max freq"), QStringLiteral("65000000"));
}

void TestFrmSetUp::aFileThatCannotBeWrittenIsTold()
{
    SetUpBench bench({});
    QVERIFY(QDir().mkdir(bench.folder.iniPath()));
    bench.click("cmdApply");
    QCOMPARE(bench.desktop.boxes.size(), 2);
    QVERIFY(bench.desktop.lastText().startsWith(QStringLiteral("File error: the configuration could not be written")));
    QVERIFY(bench.desktop.lastText().contains(bench.folder.iniPath()));
    QVERIFY(bench.dialog->isVisible());
}

void TestFrmSetUp::aMissingDefaultChangesNothing_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("message");
    QTest::newRow("PIC") << QByteArray("cmdDefault1") << QStringLiteral("Default value for PIC not found.");
    QTest::newRow("parallel port") << QByteArray("cmdDefault2")
                                   << QStringLiteral("Default value for DDS/DAC connencted to LPT not found.");
    QTest::newRow("MiniVNA") << QByteArray("cmdDefault3") << QStringLiteral("Default value for MiniVNA not found.");
}

void TestFrmSetUp::aMissingDefaultChangesNothing()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, message);
    // A section without a device name contains no defaults.
    SetUpBench bench(QByteArray(kConfigured) + "[Interface1]\r\nDDS Max freq=1\r\n[Interface2]\r\n[Interface3]\r\n");
    bench.click("cmdDDS");
    bench.type("txtMaxFreq", QStringLiteral("55000000"));
    const QStringList before = everyField(bench);
    QVERIFY(before.contains(QStringLiteral("txtMaxFreq 55,000,000")));
    QVERIFY(before.contains(QStringLiteral("optInterface_2 on")));
    bench.click("cmdInterface");
    bench.click(button.constData());
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QCOMPARE(bench.desktop.lastText(), message);
    QCOMPARE(everyField(bench), before);
}

void TestFrmSetUp::choosingAnInterfaceLoadsItsDefault()
{
    SetUpBench bench(QByteArray(kConfigured) + kDefaultVna);
    bench.click("optInterface_3");
    QCOMPARE(bench.desktop.boxes.size(), 0);
    bench.click("cmdDDS");
    QVERIFY(bench.isChecked("optDDSselect_3"));
    QVERIFY(bench.isShown("frmAD9951"));
    QVERIFY(!bench.isShown("frmAD9851"));
    QCOMPARE(bench.text("txtClk9951"), QStringLiteral("20,000,000"));
    QCOMPARE(bench.find<QScrollBar>("HScroll1")->value(), 20);
    QCOMPARE(bench.label("Label4"), QStringLiteral("400,000,000"));
    QCOMPARE(bench.text("txtMinFreq"), QStringLiteral("100,000"));
    bench.click("cmdPort");
    QVERIFY(bench.isChecked("optSerialPort_4"));
}

void TestFrmSetUp::choosingAnInterfaceWithoutADefaultKeepsTheValues()
{
    SetUpBench bench(kConfigured);
    bench.click("optInterface_1");
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QCOMPARE(bench.desktop.lastText(), QStringLiteral("Sorry, default value not found."));
    QVERIFY(bench.isChecked("optInterface_1"));
    bench.click("cmdDDS");
    QCOMPARE(bench.text("txtMaxFreq"), QStringLiteral("70,000,000"));
    bench.click("cmdApply");
    QCOMPARE(bench.folder.setting("Config", "Interface"), QStringLiteral("1"));
}

void TestFrmSetUp::theChosenInterfaceIsNotLoadedAgain()
{
    SetUpBench bench(QByteArray(kConfigured) + QByteArray(kDefaultVna).replace("Interface3", "Interface2"));
    bench.click("optInterface_2");
    bench.click("cmdDDS");
    QVERIFY(bench.isChecked("optDDSselect_2"));
}

void TestFrmSetUp::anUnknownInterfaceHasNoPages()
{
    SetUpBench bench("[Config]\r\nInterface=7\r\nDDS Device=AD9850\r\n" + QByteArray(kDefaultPic));
    for (const char *option : {"optInterface_1", "optInterface_2", "optInterface_3"})
        QVERIFY(!bench.isChecked(option));
    for (const char *button : {"cmdDDS", "cmdADC", "cmdAux"})
        QVERIFY(!bench.find(button)->isEnabled());
    QVERIFY(bench.find("cmdPort")->isEnabled());
    bench.click("optInterface_1");
    for (const char *button : {"cmdDDS", "cmdADC", "cmdAux"})
        QVERIFY(bench.find(button)->isEnabled());
}

void TestFrmSetUp::badValuesAreNamed()
{
    SetUpBench bench("[Config]\r\nInterface=2\r\nDDS Device=ad9851\r\nDDS Max freq=1e400\r\nADC Device=12bit\r\n"
                     "ADC Step=much\r\n");
    QCOMPARE(bench.desktop.boxes.size(), 1);
    const QString text = bench.desktop.lastText();
    for (const char *part : {"[Config] \"DDS Max freq\"", "\"1e400\"", "[Config] \"ADC Device\"", "\"12bit\"",
                             "[Config] \"ADC Step\"", "\"much\""})
        QVERIFY2(text.contains(QLatin1String(part)), part);
    // The dialog accepts a device name in any letter case.
    QVERIFY(!text.contains(QStringLiteral("DDS Device")));
    bench.click("cmdDDS");
    QVERIFY(bench.isChecked("optDDSselect_2"));
    QCOMPARE(bench.text("txtMaxFreq"), QStringLiteral("60,000,000"));
    bench.click("cmdADC");
    QVERIFY(bench.isChecked("optADC_2"));
}

void TestFrmSetUp::everyControlIsNamedAndExplained()
{
    SetUpBench bench(kConfigured);
    bench.click("cmdPort"); // sets the ports' tool tips
    int controls = 0;
    for (const QWidget *control : bench.dialog->findChildren<QWidget *>()) {
        const bool entry = qobject_cast<const QLineEdit *>(control) || qobject_cast<const QScrollBar *>(control);
        if (!entry && !qobject_cast<const QAbstractButton *>(control))
            continue;
        ++controls;
        QVERIFY2(!control->objectName().isEmpty(), control->metaObject()->className());
        QVERIFY2(!control->toolTip().isEmpty(), qPrintable(control->objectName()));
        if (entry)
            QVERIFY2(!control->accessibleName().isEmpty(), qPrintable(control->objectName()));
    }
    QVERIFY(controls > 60);
}

void TestFrmSetUp::theKeyboardFollowsTheEye()
{
    SetUpBench bench(kConfigured);
    bench.click("cmdADC");
    bench.find("cmdInterface")->setFocus();
    QStringList visited;
    for (int i = 0; i < 12; ++i) {
        visited.append(bench.dialog->focusWidget()->objectName());
        QTest::keyClick(bench.dialog->focusWidget(), Qt::Key_Tab);
    }
    QVERIFY2(visited.indexOf(QStringLiteral("optADC_1")) < visited.indexOf(QStringLiteral("txtADCstep")),
             qPrintable(visited.join(u' ')));
    QVERIFY2(visited.indexOf(QStringLiteral("txtADCstep")) < visited.indexOf(QStringLiteral("txtADCchannel")),
             qPrintable(visited.join(u' ')));
    QVERIFY2(visited.indexOf(QStringLiteral("txtADCchannel")) < visited.indexOf(QStringLiteral("cmdApply")),
             qPrintable(visited.join(u' ')));
    QVERIFY2(visited.contains(QStringLiteral("optADC_1")) && visited.contains(QStringLiteral("cmdExit")),
             qPrintable(visited.join(u' ')));
}

QTEST_MAIN(TestFrmSetUp)
#include "test_frm_set_up.moc"
