// SPDX-License-Identifier: MIT
#include "display/table_view.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QTest>

using namespace calvorn;

class TestTableView : public QObject
{
    Q_OBJECT

private slots:
    void widthsOfTheNormalLayout()
    {
        Configuration configuration;
        SweepTable table(configuration);
        SweepTableView view(configuration, table);
        view.resize(534, 90);
        view.setColumnWidth(2, 77);
        table.inizializzaGrid();
        QCOMPARE(view.columnWidth(0), 267);
        QCOMPARE(view.columnWidth(1), 89 * 2);
        QCOMPARE(view.columnWidth(2), 77);
    }

    void widthsOfTheDiagnosticLayout()
    {
        Configuration configuration;
        configuration.logDebug = true;
        SweepTable table(configuration);
        SweepTableView view(configuration, table);
        view.resize(535, 90);
        table.inizializzaGrid();
        QCOMPARE(view.columnWidth(0), 214);
        QCOMPARE(view.columnWidth(1), 119); // 118.9
        QCOMPARE(view.columnWidth(2), 119);
    }

    void halvesRoundToEven()
    {
        Configuration configuration;
        SweepTable table(configuration);
        SweepTableView view(configuration, table);
        view.resize(533, 90);
        table.inizializzaGrid();
        QCOMPARE(view.columnWidth(0), 266); // 266.5
        view.resize(535, 90);
        table.inizializzaGrid();
        QCOMPARE(view.columnWidth(0), 268); // 267.5
    }

    void theColumnsFollowTheWidth()
    {
        Configuration configuration;
        SweepTable table(configuration);
        SweepTableView view(configuration, table);
        table.inizializzaGrid();
        view.resize(534, 90);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        view.resize(634, 90);
        QTRY_COMPARE(view.columnWidth(0), 317);
    }

    void headerAndKeyboard()
    {
        Configuration configuration;
        configuration.scaleType = 3;
        SweepTable table(configuration);
        SweepTableView view(configuration, table);
        table.inizializzaGrid();
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QVERIFY(view.horizontalHeader()->font().bold());
        QCOMPARE(view.horizontalHeader()->defaultAlignment(), Qt::AlignCenter);
        QCOMPARE(view.model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("dB"));
        QVERIFY(view.verticalHeader()->isHidden());
        view.setCurrentIndex(view.model()->index(0, 0));
        QTest::keyClick(&view, Qt::Key_Down);
        QCOMPARE(view.currentIndex().row(), 1);
        QTest::keyClick(&view, Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(view.currentIndex().row(), 399);
        QCOMPARE(view.rowHeight(0), view.fontMetrics().height() + 2);
    }

    void theSelectedRowsAreCopiedWhole()
    {
        Configuration configuration;
        configuration.startFreq = 1000000;
        configuration.stepFreq = 25000;
        SweepTable table(configuration);
        table.inizializzaGrid();
        SweepTableView view(configuration, table);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        table.setText(2, SweepTable::AmplitudeColumn, QStringLiteral("0.987"));
        table.setText(2, SweepTable::SampleColumn, QStringLiteral("405"));
        const QString first = table.text(1, 0) + QStringLiteral("\t0\t0");
        const QString second = table.text(2, 0) + QStringLiteral("\t0.987\t405");
        // Without a selection, the focused row is copied.
        view.selectionModel()->setCurrentIndex(table.index(1, 0), QItemSelectionModel::NoUpdate);
        QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), second);
        view.setCurrentIndex(table.index(0, 0));
        QTest::keyClick(&view, Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), first + u'\n' + second);
        QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text().count(u'\n'), 399);
    }

    void whatChangedBehindItsBackIsThereWhenItIsShown()
    {
        Configuration configuration;
        SweepTable table(configuration);
        table.inizializzaGrid();
        SweepTableView view(configuration, table);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        const QImage before = view.viewport()->grab().toImage();
        view.hide();
        table.setText(1, SweepTable::AmplitudeColumn, QStringLiteral("0.987"));
        table.cellsWritten();
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        const QImage after = view.viewport()->grab().toImage();
        QVERIFY(after != before);
        SweepTableView fresh(configuration, table);
        fresh.resize(view.size());
        fresh.show();
        QVERIFY(QTest::qWaitForWindowExposed(&fresh));
        QCOMPARE(after.size(), fresh.viewport()->size() * after.devicePixelRatio());
        const QRect firstCell = view.visualRect(table.index(0, SweepTable::AmplitudeColumn));
        QCOMPARE(after.copy(firstCell), fresh.viewport()->grab().toImage().copy(firstCell));
    }
};

QTEST_MAIN(TestTableView)
#include "test_table_view.moc"
