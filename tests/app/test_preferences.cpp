// SPDX-License-Identifier: MIT
#include "app/frm_preferences.h"

#include "tests/support/fake_server_control.h"
#include "tests/support/locales.h"
#include "tests/support/program_folder.h"
#include "tests/support/while_modal.h"
#include "tests/support/window_bench.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace calvorn;

class TestPreferences : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

private slots:
    void theCaptionNamesTheLowestLevel_data() { test::addLocaleRows(); }
    void theCaptionNamesTheLowestLevel()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        const auto back = qScopeGuard([] { QLocale::setDefault(QLocale::c()); });
        Configuration configuration;
        configuration.adcOffset = 5.0F;
        configuration.adcStep = 0.0F;
        configuration.scaleType = 3;
        configuration.dbReference = 10.0;
        FrmPreferences preferences(configuration);
        preferences.show();
        QCOMPARE(preferences.findChild<QCheckBox *>(QStringLiteral("chkScalaLogaritmica"))->text(),
                 test::inLocale(locale, QStringLiteral("Limit the Logaritmic Scales to the range of the ADC (13.98)")));
        QCOMPARE(configuration.scaleType, std::int16_t{3});
        QCOMPARE(configuration.dbReference, 1.0);
    }

    void theBoxSaysThatItHasNoEffect()
    {
        Configuration configuration;
        FrmPreferences preferences(configuration);
        preferences.show();
        const auto *box = preferences.findChild<QCheckBox *>(QStringLiteral("chkScalaLogaritmica"));
        QVERIFY2(box->toolTip().startsWith(QStringLiteral("No effect.")), qPrintable(box->toolTip()));
        const auto *note = preferences.findChild<QLabel *>(QStringLiteral("lblNoEffect"));
        QVERIFY(note && note->isVisible());
        QVERIFY(note->text().contains(QStringLiteral("no effect")));
        // The note is below the box, in the same frame, and not cut off.
        QCOMPARE(note->parentWidget(), box->parentWidget());
        QVERIFY(note->y() >= box->geometry().bottom());
        QVERIFY(note->height() >= note->heightForWidth(note->width()));
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

    void theTabKeyComesToTheChosenCursor()
    {
        Configuration configuration;
        FrmPreferences preferences(configuration);
        preferences.show();
        preferences.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&preferences));
        auto *limit = preferences.findChild<QCheckBox *>(QStringLiteral("chkScalaLogaritmica"));
        limit->setFocus();
        QTest::keyClick(limit, Qt::Key_Backtab);
        QVERIFY(preferences.findChild<QRadioButton *>(QStringLiteral("optCursor_0"))->hasFocus());
    }

    void theLinesOfTheCursorAppearAtOnce()
    {
        const test::WindowBench bench(m_server.program(),
                                      "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\n[Calvorn]\r\nCursor mode=0\r\n");
        const SweepGraph &graph = *bench.window->findChild<SweepGraph *>();
        const auto shown = [&] {
            return std::pair(graph.line(GraphItem::CursorH).visible, graph.line(GraphItem::CursorV).visible);
        };
        QCOMPARE(shown(), std::pair(false, false));
        const auto choose = [&](const char *option) {
            test::whileModal([option](QWidget &dialog) {
                auto *button = dialog.findChild<QRadioButton *>(QString::fromLatin1(option));
                QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(10, button->height() / 2));
                QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("cmdExit")), Qt::LeftButton);
            });
            bench.window->findChild<QAction *>(QStringLiteral("mnuPreferences"))->trigger();
        };
        choose("optCursor_1");
        QCOMPARE(shown(), std::pair(true, true));
        QCOMPARE(bench.folder.setting("Calvorn", "Cursor mode"), QStringLiteral("1"));
        choose("optCursor_0");
        QCOMPARE(shown(), std::pair(false, false));
        QCOMPARE(bench.folder.setting("Calvorn", "Cursor mode"), QStringLiteral("0"));
    }
};

QTEST_MAIN(TestPreferences)
#include "test_preferences.moc"
