// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/walk_state.h"

#include <QCheckBox>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QWheelEvent>

namespace calvorn::test {

// A user's mouse and keyboard actions in the main window.
class WalkHands
{
public:
    explicit WalkHands(const WindowBench &bench)
        : m_bench(bench)
    {
    }

    SweepGraph *graph() const { return m_bench.find<SweepGraph>("picSweep"); }
    QLineEdit *box(WalkBox which) const { return m_bench.find<QLineEdit>(kWalkBoxes[static_cast<std::size_t>(which)]); }
    QTimer *updateTimer() const { return timer("timerUpdateSweep"); }

    void key(int code, Qt::KeyboardModifiers modifiers = {}) const
    {
        QWidget *focused = QApplication::focusWidget();
        QTest::keyClick(focused ? focused : m_bench.window.get(), static_cast<Qt::Key>(code), modifiers);
    }

    // Clicks a control unless it is in a hidden view.
    bool click(const QString &name) const
    {
        if (!m_bench.isShown(qPrintable(name)))
            return false;
        m_bench.click(qPrintable(name));
        return true;
    }

    void enter(WalkBox which) const
    {
        QLineEdit *entry = box(which);
        QTest::mouseClick(entry, Qt::LeftButton, {}, QPoint(entry->width() - 12, entry->height() / 2));
    }

    void typeOver(WalkBox which, const QString &text) const
    {
        enter(which);
        QLineEdit *entry = box(which);
        QTest::keyClick(entry, Qt::Key_A, Qt::ControlModifier);
        if (text.isEmpty())
            QTest::keyClick(entry, Qt::Key_Delete);
        QTest::keyClicks(entry, text);
    }

    void choose(const QString &name) const
    {
        auto *action = m_bench.window->findChild<QAction *>(name);
        QMenu *menu = openMenuOf(action);
        if (!menu)
            qFatal("there is no menu with %s", qPrintable(name));
        const QPoint place = menu->actionGeometry(action).center();
        QTest::mouseClick(menu, Qt::LeftButton, {}, place);
        closeMenus(menu);
    }

    // Opens a menu and closes it with Escape. A second Escape may be needed to return the focus from the menu bar.
    void lookIntoAMenu(bool leavesTheBar) const
    {
        closeMenus(openMenuOf(m_bench.window->findChild<QAction *>(QStringLiteral("mnuScalaLineare"))));
        if (leavesTheBar && m_bench.window->menuBar()->hasFocus())
            key(Qt::Key_Escape);
    }

    void arrow(const QString &bar, bool up) const
    {
        auto *target = m_bench.find<QScrollBar>(qPrintable(bar));
        QStyleOptionSlider option;
        option.initFrom(target);
        option.orientation = Qt::Vertical;
        option.minimum = target->minimum();
        option.maximum = target->maximum();
        option.sliderPosition = option.sliderValue = target->value();
        option.subControls = QStyle::SC_All;
        const QRect place = target->style()->subControlRect(
            QStyle::CC_ScrollBar, &option, up ? QStyle::SC_ScrollBarSubLine : QStyle::SC_ScrollBarAddLine, target);
        QTest::mouseClick(target, Qt::LeftButton, {}, place.center());
    }

    // Sends the event to the widget, because the real pointer would move only after the next step.
    static void moveMouse(QWidget *widget, QPoint place, Qt::MouseButton held)
    {
        QMouseEvent event(QEvent::MouseMove, place, widget->mapToGlobal(place), Qt::NoButton, held, {});
        QApplication::sendEvent(widget, &event);
    }

    // The box keeps its entry while the menu bar has the focus.
    bool isBeingTyped(WalkBox which) const
    {
        return box(which)->isModified() && (box(which)->hasFocus() || m_bench.window->menuBar()->hasFocus());
    }

    void wheel(const QString &widget, bool up) const
    {
        QWidget *target = m_bench.find(qPrintable(widget));
        const QPoint middle = target->rect().center();
        QWheelEvent event(middle, target->mapToGlobal(middle), {}, QPoint(0, up ? 120 : -120), Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(target, &event);
    }

    // Processes all events and waits until the graph is redrawn.
    void settle() const
    {
        QCoreApplication::processEvents();
        const QTimer *redraw = timer("timerGrafico");
        if (redraw->isActive() && !QTest::qWaitFor([redraw] { return !redraw->isActive(); }, 1'000))
            qFatal("the graph is never drawn");
        QCoreApplication::processEvents();
    }

    bool sweepEnds() const
    {
        return QTest::qWaitFor([this] { return m_bench.isShown("cmdStart"); }, 5'000);
    }

    // Lets the delay after a range entry expire.
    void letTimePass() const
    {
        QTimer *update = updateTimer();
        if (!update->isActive())
            return;
        update->setInterval(0);
        if (!QTest::qWaitFor([update] { return !update->isActive(); }, 5'000))
            qFatal("the range is never applied");
        QCoreApplication::processEvents();
        holdTime();
    }

    // Keeps the range timer from expiring before letTimePass().
    void holdTime() const { updateTimer()->setInterval(24 * 3600 * 1000); }

private:
    QTimer *timer(const char *name) const { return m_bench.window->findChild<QTimer *>(QString::fromLatin1(name)); }

    QMenu *openMenuOf(QAction *action) const
    {
        QMenuBar *bar = m_bench.window->menuBar();
        for (QAction *title : bar->actions()) {
            if (!title->menu()->actions().contains(action))
                continue;
            QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(title).center());
            if (title->isEnabled() && !QTest::qWaitFor([title] { return title->menu()->isVisible(); }, 2'000))
                qFatal("the menu does not open");
            return title->menu();
        }
        return nullptr;
    }

    static void closeMenus(QMenu *menu)
    {
        for (int i = 0; i < 3 && menu->isVisible(); ++i)
            QTest::keyClick(menu, Qt::Key_Escape);
        if (menu->isVisible())
            qFatal("the menu does not close");
    }

    const WindowBench &m_bench;
};

// Valid and damaged sweep files to import. Their numbers have no decimals, so every locale reads them the same way.
namespace walk_files {

enum Form {
    Good,
    OtherCalibration,
    KeepValues,
    Reversed,
    Descending,
    Narrow,
    BadField,
    CutOff,
    Empty,
    RowZero,
    Missing
};
inline constexpr int kForms = 11;

inline bool isComplete(int form)
{
    return form <= Narrow;
}

inline QByteArray content(int form, int seed, double step, double offset)
{
    QByteArray text("\"Sample N\",\"Frequency\",\"DAC sample\",\"milliVolt\"\r\n");
    if (form == Empty)
        return {};
    const int hertzStep = form == Narrow ? 0 : form == Descending ? -1500 : 1000 + seed % 5000;
    for (int line = 1; line <= 400; ++line) {
        // Row 400 must be the last line, because the import stops after it.
        const int row = form == Reversed && line < 400 ? 400 - line : line;
        const int count = (row * 7 + seed) % 1024;
        double milliVolts = std::nearbyint((count * step + offset) * 1000.0);
        if (form == OtherCalibration || form == KeepValues)
            milliVolts += 500;
        if (form == CutOff && line == 150)
            return text;
        text += QByteArray::number(form == RowZero && line == 1 ? 0 : row) + ',' +
                QByteArray::number(3'000'000 + row * hertzStep) + ',' + QByteArray::number(count) + ',' +
                (form == BadField && line == 90 ? QByteArray("many") : QByteArray::number(milliVolts)) + "\r\n";
        if (form == RowZero && line == 1)
            text += "1,x,1,1\r\n";
    }
    return text;
}

} // namespace walk_files

} // namespace calvorn::test
