// SPDX-License-Identifier: MIT
// Accessibility clients find the graph's lines and captions by name, at their painted positions.
#include "tests/display/display_bench.h"

#include <QAccessible>

using namespace calvorn;
using calvorn::test::DisplayBench;

class TestGraphParts : public QObject
{
    Q_OBJECT

private:
    static QAccessibleInterface *childNamed(const QAccessibleInterface *parent, const QString &name)
    {
        for (int i = 0; i < parent->childCount(); ++i)
            if (parent->child(i)->text(QAccessible::Name) == name)
                return parent->child(i);
        return nullptr;
    }

private slots:
    void everyPartIsFoundByItsName_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name :
             {"lineM1", "lineM2", "lineM3", "lineM4", "lblM1", "lblM2", "lblM3", "lblM4", "LineCV", "LineCH"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void everyPartIsFoundByItsName()
    {
        QFETCH(QString, name);
        DisplayBench bench;
        bench.show();
        SweepGraph &graph = bench.panel.graph();
        QVERIFY(graph.findChild<QObject *>(name));
        QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(&graph);
        QCOMPARE(spoken->childCount(), 10);
        QAccessibleInterface *part = childNamed(spoken, name);
        QVERIFY(part);
        QCOMPARE(part->parent(), spoken);
        QCOMPARE(spoken->child(spoken->indexOfChild(part)), part);
        // The cross is hidden unless it is selected as the cursor.
        QCOMPARE(part->state().invisible != 0, name.startsWith(QStringLiteral("LineC")));
    }

    void partsLieWhereTheyArePainted()
    {
        DisplayBench bench;
        bench.show();
        SweepGraph &graph = bench.panel.graph();
        graph.moveLine(GraphItem::M1, 100.0);
        graph.moveLine(GraphItem::M3, 1000.0); // 1 V of 2 V
        const QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(&graph);
        const QRect plot = spoken->rect();
        const QRect m1 = childNamed(spoken, QStringLiteral("lineM1"))->rect();
        QVERIFY(std::abs(m1.center().x() - (plot.left() + plot.width() / 4)) <= 2);
        QCOMPARE(m1.height(), plot.height());
        const QRect m3 = childNamed(spoken, QStringLiteral("lineM3"))->rect();
        QVERIFY(std::abs(m3.center().y() - plot.center().y()) <= 2);
        const QRect caption = childNamed(spoken, QStringLiteral("lblM1"))->rect();
        QVERIFY(caption.bottom() <= plot.top());
        QVERIFY(caption.left() > m1.center().x());
        QCOMPARE(childNamed(spoken, QStringLiteral("LineCV"))->rect(), QRect());
        graph.markers().setVisible(GraphItem::CursorV, true);
        QVERIFY(!childNamed(spoken, QStringLiteral("LineCV"))->rect().isEmpty());
    }

    void aLineThatWasNeverMovedLiesAtZeroDecibels()
    {
        DisplayBench bench(2); // 10 to -40 dB
        bench.show();
        SweepGraph &graph = bench.panel.graph();
        graph.markers().setVisible(GraphItem::CursorH, true);
        const QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(&graph);
        const int zero = spoken->rect().top() + spoken->rect().height() / 5;
        for (const char *name : {"lineM3", "lineM4", "LineCH"})
            QVERIFY(std::abs(childNamed(spoken, QString::fromLatin1(name))->rect().center().y() - zero) <= 2);
    }
};

QTEST_MAIN(TestGraphParts)
#include "test_graph_parts.moc"
