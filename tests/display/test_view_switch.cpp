// SPDX-License-Identifier: MIT
#include "display/table_view.h"
#include "display/view_switch.h"
#include "tests/display/display_bench.h"

using namespace calvorn;
using calvorn::test::DisplayBench;

class TestViewSwitch : public QObject
{
    Q_OBJECT

private:
    struct Views
    {
        DisplayBench bench;
        WindowSettings settings;
        QWidget aux1;
        QWidget aux2;
        SweepTableView table{bench.configuration, bench.table};
        ViewSwitch views{settings, bench.markers, &table, &aux1, &aux2, bench.boundary};

        Views()
        {
            views.selectView(0);
            views.show();
        }
        ~Views()
        {
            for (QWidget *content :
                 {static_cast<QWidget *>(&table), &aux1, &aux2, static_cast<QWidget *>(&bench.markers)})
                content->setParent(nullptr);
        }

        QWidget *element(const char *name, int i)
        {
            return views.findChild<QWidget *>(QStringLiteral("%1_%2").arg(QString::fromLatin1(name)).arg(i));
        }
        void verifyShown(int shown) { verifyShown(shown, shown); }
        void verifyShown(int shown, int stored)
        {
            for (int i = 0; i < 4; ++i) {
                QCOMPARE(element("frameView", i)->isVisible(), i == shown);
                QCOMPARE(element("cmdView", i)->isEnabled(), i != shown);
                QCOMPARE(views.actions().at(i)->isChecked(), i == shown);
            }
            QCOMPARE(settings.markerIndex, static_cast<std::int16_t>(stored));
        }
    };

private slots:
    void buttonsAndMenuSwitch()
    {
        Views views;
        views.verifyShown(0);
        for (const int i : {1, 3, 2, 0}) {
            QTest::mouseClick(views.element("cmdView", i), Qt::LeftButton);
            views.verifyShown(i);
        }
        views.views.actions().at(1)->trigger();
        views.verifyShown(1);
        // Selecting the current view again has no effect.
        views.views.actions().at(1)->trigger();
        views.verifyShown(1);
        QCOMPARE(views.views.actions().at(1)->objectName(), QStringLiteral("mnuView_1"));
    }

    void switchingRefreshesTheReadouts()
    {
        Views views;
        views.bench.panel.graph().moveLine(GraphItem::M1, 41);
        views.bench.panel.graph().moveLine(GraphItem::M3, 500);
        views.views.selectView(1);
        const auto text = [&](const char *name) {
            return views.bench.markers.findChild<QLineEdit *>(QString::fromLatin1(name))->text();
        };
        QCOMPARE(text("txtM1X"), QStringLiteral("2,000,000"));
        QCOMPARE(text("txtM3Y"), QStringLiteral("0.500"));
    }

    // The invalid index is retained until the user selects a view.
    void damagedIndexFallsToTheFirst()
    {
        Views views;
        for (const int index : {-1, 4, 32767, -32768}) {
            views.views.selectView(3);
            views.settings.markerIndex = static_cast<std::int16_t>(index);
            views.views.selectView(index);
            views.verifyShown(0, index);
            views.views.actions().at(0)->trigger();
            views.verifyShown(0);
        }
    }

    void otherInterfacesHaveTwoViews()
    {
        Views views;
        views.views.selectView(3);
        views.views.setOutputViews(false);
        views.verifyShown(0);
        for (const int i : {2, 3}) {
            QVERIFY(!views.element("cmdView", i)->isVisible());
            QVERIFY(!views.views.actions().at(i)->isVisible());
            views.views.selectView(i);
            views.verifyShown(0);
        }
        views.views.setOutputViews(true);
        QVERIFY(views.element("cmdView", 2)->isVisible());
        views.views.selectView(2);
        views.verifyShown(2);
    }
};

QTEST_MAIN(TestViewSwitch)
#include "test_view_switch.moc"
