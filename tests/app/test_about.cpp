// SPDX-License-Identifier: MIT
#include "app/frm_about.h"
#include "tests/support/locales.h"

#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace calvorn;

class TestAbout : public QObject
{
    Q_OBJECT

private:
    static Configuration defaults(std::int16_t interfaceType)
    {
        Configuration c;
        c.interfaceType = interfaceType;
        c.lptAddress = 888;
        c.commPort = 6;
        c.ddsDevice = QStringLiteral("AD9850");
        c.ddsXtalFreq = 80000000;
        c.ddsMultiplier = 1;
        c.ddsMaxFreq = 60000000;
        c.adcDevice = QStringLiteral("10bit");
        return c;
    }

    static QString label(const FrmAbout &about, const char *name)
    {
        return about.findChild<QLabel *>(QString::fromLatin1(name))->text();
    }

private slots:
    void describesTheParallelPort()
    {
        const Configuration c = defaults(kInterfaceLpt);
        FrmAbout about(c);
        about.show();
        QVERIFY(label(about, "lblInterfaccia")
                    .startsWith(QStringLiteral("DDS Generator/Detector connected to the parallel port LPT 0378\n")));
        QCOMPARE(label(about, "lblInterfaccia").count(u'\n'), 2);
        QCOMPARE(label(about, "lblDAC"), QStringLiteral("10bit, step: 0.000mV"));
        QCOMPARE(label(about, "lblDDS"),
                 QStringLiteral("AD9850, ClockRef: 80MHz, Multiplier: 1, Max frequency: 60MHz"));
    }

    void describesTheSerialInterfaces()
    {
        Configuration c = defaults(kInterfacePic);
        c.adcStep = 0.0048F;
        QCOMPARE(FrmAbout::interfaceText(c), QStringLiteral("PIC connected to the USB port COM6\r(Project by Brenik)"));
        QCOMPARE(FrmAbout::detectorText(c), QStringLiteral("10bitby PIC 16F877, step: 4.800mV"));
        c.interfaceType = kInterfaceVna;
        QVERIFY(FrmAbout::interfaceText(c).startsWith(QStringLiteral("MiniVNA connected to the USB port COM6\r")));
        QCOMPARE(FrmAbout::detectorText(c), QStringLiteral("10bit, step: 4.800mV"));
    }

    void megahertzAreCutNotRounded()
    {
        Configuration c = defaults(kInterfaceLpt);
        c.ddsXtalFreq = 125000000;
        QVERIFY(FrmAbout::generatorText(c).contains(QStringLiteral("ClockRef: 125MHz")));
        c.ddsXtalFreq = 12500000;
        QVERIFY(FrmAbout::generatorText(c).contains(QStringLiteral("ClockRef: 12MHz")));
    }

    void theStepHasTheSeparatorOfTheLocale_data() { test::addLocaleRows(); }
    void theStepHasTheSeparatorOfTheLocale()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        const auto back = qScopeGuard([] { QLocale::setDefault(QLocale::c()); });
        Configuration c = defaults(kInterfaceLpt);
        c.adcStep = 0.00244F;
        QCOMPARE(FrmAbout::detectorText(c),
                 test::inLocale(locale, QStringLiteral("10bit; step: 2.440mV")).replace(u';', u','));
    }

    void theVersionIsShown()
    {
        QCoreApplication::setApplicationVersion(QStringLiteral("7.8.9"));
        const Configuration c = defaults(kInterfaceLpt);
        const FrmAbout about(c);
        QVERIFY2(label(about, "Label1").contains(QStringLiteral("Calvorn 7.8.9")), qPrintable(label(about, "Label1")));
    }

    void theReferencesArePagesOfTheManual_data()
    {
        QTest::addColumn<std::int16_t>("interfaceType");
        QTest::addColumn<QString>("page");
        QTest::newRow("parallel port") << kInterfaceLpt << QStringLiteral("lpt-board.html");
        QTest::newRow("MiniVNA") << kInterfaceVna << QStringLiteral("minivna.html");
    }
    void theReferencesArePagesOfTheManual()
    {
        QFETCH(std::int16_t, interfaceType);
        QFETCH(QString, page);
        const QStringList lines = FrmAbout::interfaceText(defaults(interfaceType)).split(u'\r');
        QCOMPARE(lines.size(), 3);
        // F1 opens the page about this window, which links to the named page.
        const auto read = [](const QString &name) {
            QFile file(QStringLiteral(CALVORN_SOURCE_DIR "/help/") + name);
            return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
        };
        const QString title = lines[2].section(u'"', 1, 1);
        QVERIFY2(!title.isEmpty(), qPrintable(lines[2]));
        QVERIFY(read(page).contains(QStringLiteral("<title>%1</title>").arg(title)));
        QVERIFY(read(QStringLiteral("about.html")).contains(QStringLiteral("href=\"%1\"").arg(page)));
    }

    void closesByButtonAndByItsBackground()
    {
        const Configuration c = defaults(kInterfaceLpt);
        FrmAbout about(c);
        about.show();
        QTest::mouseClick(about.findChild<QPushButton *>(QStringLiteral("cmdExit")), Qt::LeftButton);
        QVERIFY(!about.isVisible());
        about.show();
        QTest::mouseClick(&about, Qt::LeftButton, {}, QPoint(3, 3));
        QVERIFY(!about.isVisible());
    }
};

QTEST_MAIN(TestAbout)
#include "test_about.moc"
