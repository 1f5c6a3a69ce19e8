// SPDX-License-Identifier: MIT
#include "app/frm_preferences.h"

#include "tests/support/program_folder.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace calvorn;

class TestPreferences : public QObject
{
    Q_OBJECT

private slots:
    void theCaptionNamesTheLowestLevel()
    {
        Configuration configuration;
        configuration.adcOffset = 5.0F;
        configuration.adcStep = 0.0F;
        configuration.scaleType = 3;
        FrmPreferences preferences(configuration);
        preferences.show();
        QCOMPARE(preferences.findChild<QCheckBox *>(QStringLiteral("chkScalaLogaritmica"))->text(),
                 QStringLiteral("Limit the Logaritmic Scales to the range of the ADC (13.98)"));
        QCOMPARE(configuration.scaleType, std::int16_t{3});
        QCOMPARE(configuration.dbReference, 1.0);
    }

    void theChoiceCountsAtOnceAndIsStored()
    {
        test::ProgramFolder folder({}, "[Calvorn]\r\nCursor mode=0\r\n");
        Configuration configuration;
        configuration.iniPath = folder.iniPath();
        FrmPreferences preferences(configuration);
        QSignalSpy chosen(&preferences, &FrmPreferences::cursorChosen);
        preferences.show();
        QVERIFY(preferences.findChild<QRadioButton *>(QStringLiteral("optCursor_0"))->isChecked());
        auto *cross = preferences.findChild<QRadioButton *>(QStringLiteral("optCursor_1"));
        QTest::mouseClick(cross, Qt::LeftButton, {}, QPoint(10, cross->height() / 2));
        QCOMPARE(configuration.cursorMode, std::int16_t{1});
        QCOMPARE(folder.setting("Calvorn", "Cursor mode"), QStringLiteral("0"));
        QTest::mouseClick(preferences.findChild<QPushButton *>(QStringLiteral("cmdExit")), Qt::LeftButton);
        QVERIFY(!preferences.isVisible());
        QCOMPARE(folder.setting("Calvorn", "Cursor mode"), QStringLiteral("1"));
        QCOMPARE(chosen.count(), 1);
        QCOMPARE(chosen.first().first().toBool(), true);
    }
};

QTEST_MAIN(TestPreferences)
#include "test_preferences.moc"
