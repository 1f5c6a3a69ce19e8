// SPDX-License-Identifier: MIT
// The bars that step a number: each kind of input makes exactly one step.
#include "tests/support/fake_server_control.h"
#include "tests/support/while_modal.h"
#include "tests/support/window_bench.h"

#include <QAction>
#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QWheelEvent>

#include <cmath>
#include <functional>
#include <utility>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

constexpr char kSettings[] = "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nDDS Multiplier=6\r\n"
                             "DDS Xtal freq=30000000\r\nDDS Offset=1.5\r\nADC Step=0.001\r\nADC Offset=0.1\r\n"
                             "[Parallel Port]\r\nLPT=0\r\n[Calvorn]\r\nStart=1000000\r\nStop=10000000\r\n";

constexpr int kHeight = 200; // leaves every style room for a handle between the arrows
constexpr int kRest = 2;

QRect partOf(const QScrollBar &bar, QStyle::SubControl part)
{
    QStyleOptionSlider option;
    option.initFrom(&bar);
    option.orientation = bar.orientation();
    option.state.setFlag(QStyle::State_Horizontal, false);
    option.minimum = bar.minimum();
    option.maximum = bar.maximum();
    option.singleStep = bar.singleStep();
    option.pageStep = bar.pageStep();
    option.sliderPosition = option.sliderValue = bar.value();
    option.subControls = QStyle::SC_All;
    return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, part, &bar);
}

void moveTo(QScrollBar &bar, const QPoint &at)
{
    QMouseEvent move(QEvent::MouseMove, at, bar.mapToGlobal(QPointF(at)), Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&bar, &move);
}

void turnWheel(QWidget &widget, int angle)
{
    const QPointF at(widget.rect().center());
    QWheelEvent wheel(at, widget.mapToGlobal(at), {}, QPoint(0, angle), {}, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &wheel);
}

// Drags the handle of an idle bar past the end and optionally back to the middle.
void drag(QScrollBar &bar, int direction, bool back, const std::function<void()> &whileHeld)
{
    const QRect handle = partOf(bar, QStyle::SC_ScrollBarSlider);
    QVERIFY(handle.height() > 4);
    const QPoint start = handle.center();
    QTest::mousePress(&bar, Qt::LeftButton, {}, start);
    for (int y = 10; y < kHeight / 2; y += 10) {
        moveTo(bar, start + QPoint(0, direction * y));
        whileHeld();
    }
    QVERIFY(bar.sliderPosition() != kRest);
    if (back)
        moveTo(bar, start);
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, back ? start : start + QPoint(0, direction * kHeight / 2));
}

} // namespace

class TestNudgeBars : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

    void oneStepEach(QScrollBar &bar, const std::function<double()> &value, double step) const;

private slots:
    void theDigitsOfAFrequency();
    void theOffsetsOfTheCalibrations_data();
    void theOffsetsOfTheCalibrations();
};

// Steps up and down with every kind of input.
void TestNudgeBars::oneStepEach(QScrollBar &bar, const std::function<double()> &value, double step) const
{
    const double before = value();
    const auto isAt = [&](int steps) {
        QCOMPARE(value(), before + steps * step);
        QCOMPARE(bar.value(), kRest);
        QCOMPARE(bar.sliderPosition(), kRest);
    };
    const auto nothingYet = [&](double held) { return [&value, held] { QCOMPARE(value(), held); }; };
    drag(bar, -1, false, nothingYet(before));
    isAt(1);
    drag(bar, -1, true, nothingYet(before + step));
    isAt(1);
    drag(bar, 1, false, nothingYet(before + step));
    isAt(0);
    for (const auto &[part, steps] : {std::pair(QStyle::SC_ScrollBarSubLine, 1), {QStyle::SC_ScrollBarAddLine, 0}}) {
        const QPoint arrow = partOf(bar, part).center();
        QTest::mousePress(&bar, Qt::LeftButton, {}, arrow);
        isAt(steps); // on the press
        QTest::mouseRelease(&bar, Qt::LeftButton, {}, arrow);
        isAt(steps);
    }
    turnWheel(bar, 120);
    isAt(1);
    turnWheel(bar, -120);
    isAt(0);
    QTest::keyClick(&bar, Qt::Key_Up);
    isAt(1);
    QTest::keyClick(&bar, Qt::Key_Down);
    isAt(0);
}

void TestNudgeBars::theDigitsOfAFrequency()
{
    WindowBench bench(test::FakeServerControl::program(), kSettings);
    for (const int digit : {0, 3, 5}) {
        auto *bar = bench.find<QScrollBar>(qPrintable(QStringLiteral("VScrollStart_%1").arg(digit)));
        bar->raise();
        bar->resize(bar->width(), kHeight);
        oneStepEach(
            *bar, [&] { return double(bench.configuration.startFreq); }, std::pow(10.0, digit));
    }
}

void TestNudgeBars::theOffsetsOfTheCalibrations_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("box");
    QTest::addColumn<double>("step");
    QTest::newRow("generator") << QStringLiteral("mnuCalibraDDS") << QStringLiteral("txtOffset") << 0.01;
    QTest::newRow("detector") << QStringLiteral("mnuCalibraDetector") << QStringLiteral("txtOffsetVolt") << 0.001;
}

void TestNudgeBars::theOffsetsOfTheCalibrations()
{
    QFETCH(QString, entry);
    QFETCH(QString, box);
    QFETCH(double, step);
    WindowBench bench(test::FakeServerControl::program(), kSettings);
    bool done = false;
    test::whileModal([&](QWidget &dialog) {
        auto *bar = dialog.findChild<QScrollBar *>(QStringLiteral("VScrollOffset"));
        bar->setMinimumHeight(kHeight);
        QTRY_VERIFY(bar->height() >= kHeight);
        oneStepEach(
            *bar, [&] { return dialog.findChild<QLineEdit *>(box)->text().toDouble(); }, step);
        done = true;
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    bench.window->findChild<QAction *>(entry)->trigger();
    QVERIFY(done);
}

QTEST_MAIN(TestNudgeBars)
#include "test_nudge_bars.moc"
