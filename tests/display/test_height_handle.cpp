// SPDX-License-Identifier: MIT
#include "display/height_handle.h"

#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace calvorn;

// The handle between two widgets, one above the other.
class TestHeightHandle : public QObject
{
    Q_OBJECT

private:
    struct Bench
    {
        QWidget window;
        QVBoxLayout column{&window};
        QWidget upper;
        QWidget lower;
        HeightHandle *handle;

        Bench()
        {
            window.resize(300, 300);
            column.setSpacing(8);
            column.addWidget(&upper, 1);
            column.addWidget(&lower);
            upper.setMinimumHeight(50);
            lower.setFixedHeight(100);
            handle = new HeightHandle(upper, lower);
            window.show();
            if (!QTest::qWaitForWindowExposed(&window))
                qFatal("the window is not shown");
        }
        ~Bench()
        {
            for (QWidget *widget : {&upper, &lower})
                widget->setParent(nullptr);
        }

        QRect gap() const { return {lower.x(), upper.geometry().bottom() + 1, lower.width(), 8}; }
    };

private slots:
    void itStaysBetweenTheTwo()
    {
        Bench bench;
        QTRY_COMPARE(bench.handle->geometry(), bench.gap());
        bench.lower.setFixedHeight(150);
        QTRY_COMPARE(bench.lower.height(), 150);
        QTRY_COMPARE(bench.handle->geometry(), bench.gap());
    }

    void itShowsItselfUnderTheMouse()
    {
        Bench bench;
        QTest::mouseMove(&bench.upper, QPoint(20, 20));
        QTRY_VERIFY(!bench.handle->underMouse());
        const QImage away = bench.handle->grab().toImage();
        QTest::mouseMove(bench.handle);
        QTRY_VERIFY(bench.handle->underMouse());
        QVERIFY(bench.handle->grab().toImage() != away);
        // While the mouse is elsewhere, the handle shows only the background.
        QImage plain = away;
        plain.fill(away.pixel(0, 0));
        QCOMPARE(away, plain);
    }

    void draggingAsksForAHeight()
    {
        Bench bench;
        QTRY_COMPARE(bench.handle->geometry(), bench.gap());
        QSignalSpy wanted(bench.handle, &HeightHandle::heightWanted);
        QTest::mousePress(bench.handle, Qt::LeftButton, {}, QPoint(50, 4));
        QMouseEvent move(QEvent::MouseMove, QPointF(50.0, -26.0), bench.handle->mapToGlobal(QPointF(50.0, -26.0)),
                         Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(bench.handle, &move);
        QCOMPARE(wanted.takeLast().first().toInt(), 130);
        QTest::mouseDClick(bench.handle, Qt::LeftButton);
        QCOMPARE(wanted.takeLast().first().toInt(), 0);
    }
};

QTEST_MAIN(TestHeightHandle)
#include "test_height_handle.moc"
