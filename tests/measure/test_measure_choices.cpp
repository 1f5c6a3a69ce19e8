// SPDX-License-Identifier: MIT
// The Measure panel's choices in the settings file, and their documentation in settings.md.
#include "core/common_functions.h"
#include "measure/measure_choices.h"
#include "platform/profile_file.h"
#include "tests/support/locales.h"
#include "tests/support/settings_page.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace calvorn;

namespace {

struct Settings
{
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("Calvorn.ini"));

    explicit Settings(const QByteArray &content)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write the test's settings");
    }

    QByteArray content() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

} // namespace

class TestMeasureChoices : public QObject
{
    Q_OBJECT

private slots:
    void thePageHasEveryKeyAndDefault()
    {
        for (const SettingKey &key : measureKeys())
            QCOMPARE(key.section, "Measure");
        const QStringList known = test::keysOf(measureKeys());
        QCOMPARE(test::keysOfPage(QStringLiteral("Measure")), known);
        QCOMPARE(known.size(), 18);
    }

    void withoutASectionTheDefaultsHold()
    {
        const Settings settings("[Calvorn]\r\nStart=1000\r\n");
        const QByteArray before = settings.content();
        const MeasureChoices choices = readMeasureChoices(settings.path);
        QVERIFY(!choices.isOpen && !choices.maxHold && !choices.limits);
        QVERIFY(choices.legend);
        QCOMPARE(choices.averageOver, std::int16_t{10});
        QCOMPARE(choices.fixtureOhms, 50.0);
        // Saving the defaults writes nothing.
        QVERIFY(saveMeasureChoices(choices, settings.path));
        QCOMPARE(settings.content(), before);
    }

    void theyComeBackInEveryLocale_data()
    {
        QTest::addColumn<QString>("locale");
        for (const char *locale : {"en_US", "it_IT", "fr_FR", "C"})
            QTest::newRow(locale) << QString::fromLatin1(locale);
    }
    void theyComeBackInEveryLocale()
    {
        QFETCH(QString, locale);
        const QLocale before;
        QLocale::setDefault(QLocale(locale));
        const Settings settings("[Calvorn]\r\nStart=1000\r\n");
        MeasureChoices choices;
        choices.isOpen = true;
        choices.place = QStringLiteral("10 20 300 400");
        choices.averageOver = 64;
        choices.fixtureOhms = 12.5;
        choices.limitMargin = 0.5;
        choices.limitsFile = QStringLiteral("/home/somebody/limits.csv");
        QVERIFY(saveMeasureChoices(choices, settings.path));
        QVERIFY(readMeasureChoices(settings.path) == choices);
        QLocale::setDefault(before);
        // Settings written in one locale are read in another.
        QVERIFY(readMeasureChoices(settings.path) == choices);
        QVERIFY(settings.content().startsWith("[Calvorn]\r\nStart=1000\r\n"));
    }

    void whatIsNoChoiceGivesTheNearest()
    {
        const Settings settings("[Measure]\r\nPage=7\r\nAverage over=1\r\nResults=-3\r\nSource=x\r\nFixture=abc\r\n");
        const MeasureChoices choices = readMeasureChoices(settings.path);
        QCOMPARE(choices.page, std::int16_t{3});
        QCOMPARE(choices.averageOver, std::int16_t{2});
        QCOMPARE(choices.kind, std::int16_t{0});
        QCOMPARE(choices.source, std::int16_t{0});
        QCOMPARE(choices.fixtureOhms, 50.0);
    }
};

QTEST_MAIN(TestMeasureChoices)
#include "test_measure_choices.moc"
