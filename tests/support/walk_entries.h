// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/acquisition_driver.h"
#include "tests/support/fake_server_control.h"
#include "tests/support/own_plot.h"
#include "tests/support/walk_hands.h"
#include "tests/support/while_modal.h"

#include <functional>
#include <optional>

namespace calvorn::test {

inline QByteArray walkSettings(int interfaceType)
{
    return "[Config]\r\nInterface=" + QByteArray::number(interfaceType) +
           "\r\nDDS Device=AD9851\r\nADC Step=0.00244\r\nADC Offset=-0.012\r\nADC Channel=1\r\n"
           "[Debug]\r\nLog=1\r\n[Parallel Port]\r\nLPT=0\r\n[Serial Port]\r\nCommPort=100\r\n"
           "[Calvorn]\r\nStart=1000000\r\nStop=5000000\r\n"
           "[Aux1]\r\nEnabled=1\r\n[Aux2]\r\nEnabled=1\r\nPotMax=255\r\nPotMin=0\r\n";
}

inline QString walkAspect(const WalkStep &entry)
{
    return QString::fromLatin1(kWalkAspects[static_cast<std::size_t>(entry.a)]);
}

// Executes the steps on number boxes and the graph. Each step notes which aspects of the window it may change, and adds
// checks for later.
class WalkEntriesAndGraph
{
public:
    WalkEntriesAndGraph(const QLocale &locale, int interfaceType)
        : m_numbers(locale)
        , m_bench(FakeServerControl::program(), walkSettings(interfaceType))
        , m_hands(m_bench)
    {
        if (!m_bench.started)
            qFatal("the window does not start");
        m_bench.desktop.fileChoice = m_bench.folder.path() + QStringLiteral("/sweep.csv");
        opened();
    }

protected:
    void opened()
    {
        m_hands.holdTime();
        m_history = WalkHistory();
        m_entry.reset();
        QObject::connect(m_bench.table(), &SweepTable::rebuilt, m_bench.table(), [this] {
            m_history.foreignPlan = m_history.asFile = m_history.headerFromFile = m_history.curveBehind =
                m_history.mixedTable = false;
        });
        m_hands.settle();
        m_state = stateOf(m_bench);
    }

    void expect(bool holds, const QString &id, const QString &detail = {})
    {
        if (!holds)
            m_faults.append({id, detail});
    }
    void allow(std::initializer_list<const char *> aspects)
    {
        for (const char *aspect : aspects)
            m_allowed.insert(QString::fromLatin1(aspect));
    }
    // The step sets this aspect itself and overrides any entry for it.
    void replace(const char *aspect)
    {
        allow({aspect});
        m_replaced.insert(QString::fromLatin1(aspect));
    }
    void afterwards(std::function<void()> look) { m_later.append(std::move(look)); }

    static QString numbered(const char *name, int number)
    {
        return QStringLiteral("%1_%2").arg(QString::fromLatin1(name)).arg(number);
    }
    bool isLpt() const { return m_bench.configuration.interfaceType == kInterfaceLpt; }
    bool isSweeping() const { return m_before.number("sweep") > 0; }

    // Returns the values that an entry may produce, given the state when it was accepted.
    QStringList taken(const WalkStep &entry, const WalkState &state) const
    {
        const QString old = state.aspects.value(walkAspect(entry));
        if (std::isnan(entry.value))
            return {old};
        switch (entry.box()) {
        case WalkBox::Start:
        case WalkBox::Stop:
            return {QString::number(std::clamp(std::nearbyint(entry.value), double(m_bench.configuration.ddsMinFreq),
                                               double(m_bench.configuration.ddsMaxFreq)),
                                    'f', 0)};
        case WalkBox::M1X:
        case WalkBox::M2X:
            return entry.huge ? QStringList{old, QStringLiteral("400")} : QStringList{rowOf(entry.value, state)};
        case WalkBox::M3Y:
        case WalkBox::M4Y: {
            const bool linear = state.number("scale") == 0.0;
            const WalkNumbers plain(QLocale::c());
            // The graph limits the value.
            const double value = entry.huge ? 1e6 : entry.value;
            return {plain.amplitude(linear, value - 1e-6), plain.amplitude(linear, value + 1e-6)};
        }
        case WalkBox::MaxVolt:
            return {entry.value <= 0.0 ? old : QString::number(std::min(entry.value, 10.0), 'g', 7)};
        default:
            return {QString::number(-std::abs(std::nearbyint(std::min(std::abs(entry.value), 90.0))) + 0.0, 'f', 0)};
        }
    }

    // Returns whether the program corrects an entry instead of accepting it as typed.
    bool isCorrected(const WalkStep &entry) const
    {
        switch (entry.box()) {
        case WalkBox::Start:
        case WalkBox::Stop:
            return entry.value < m_bench.configuration.ddsMinFreq || entry.value > m_bench.configuration.ddsMaxFreq;
        case WalkBox::MaxVolt:
            return !(entry.value > 0.0 && entry.value <= 10.0);
        case WalkBox::MaxDb:
            return !(std::abs(entry.value) <= 90.0);
        default:
            return std::isnan(entry.value);
        }
    }

    QString rowOf(double hertz, const WalkState &state) const
    {
        int row = 1;
        while (row < 400 && m_numbers.number(state.cell(row, 0)) < std::nearbyint(hertz))
            ++row;
        return QString::number(row);
    }

    // Returns the possible values of an aspect before the step, including the effect of an unfinished entry.
    QStringList basesOf(const char *aspect) const
    {
        const QString name = QString::fromLatin1(aspect);
        if (m_entry && walkAspect(*m_entry) == name)
            return taken(*m_entry, m_before);
        return {m_before.aspects.value(name)};
    }

    // Names the unfinished entry for the aspect as a possible cause of the fault.
    QString fromEntry(const QString &aspect) const
    {
        return m_entry && walkAspect(*m_entry) == aspect ? QStringLiteral(" from the entry ") + kindOf(*m_entry)
                                                         : QString();
    }

    // --- entries ---

    void type(const WalkStep &step)
    {
        if (!m_hands.box(step.box())->isVisible())
            return;
        const char *aspect = kWalkAspects[static_cast<std::size_t>(step.a)];
        allow({aspect});
        m_hands.typeOver(step.box(), step.text);
        m_typed = step;
        const int beeps = m_bench.desktop.beeps;
        leave(step);
        if (step.leave() > WalkLeave::OtherBox)
            return;
        afterwards([this, step, beeps, aspect] {
            if (m_replaced.contains(QString::fromLatin1(aspect)))
                return;
            const QString found = m_state.aspects.value(walkAspect(step));
            expect(taken(step, m_before).contains(found) || taken(step, m_state).contains(found),
                   QStringLiteral("entry taken wrongly: ") + kindOf(step),
                   QStringLiteral("%1 is %2, not %3").arg(walkAspect(step), found, taken(step, m_before).join(u'|')));
            const bool quiet = step.huge || (step.box() <= WalkBox::Stop && std::isnan(step.value));
            if (!quiet)
                expect((m_bench.desktop.beeps > beeps) == isCorrected(step),
                       QStringLiteral("beep after ") + kindOf(step), QString::number(m_bench.desktop.beeps - beeps));
        });
    }

    static QString kindOf(const WalkStep &entry)
    {
        const bool fraction = entry.value != std::nearbyint(entry.value);
        return QString::fromLatin1(kWalkBoxes[static_cast<std::size_t>(entry.a)]) +
               (std::isnan(entry.value)                 ? QStringLiteral(" (no number)")
                : entry.text.contains(u',') && fraction ? QStringLiteral(" (decimal comma)")
                : entry.text.contains(u'.') && fraction ? QStringLiteral(" (decimal point)")
                                                        : QString());
    }

    void leave(const WalkStep &step)
    {
        SweepGraph *graph = m_hands.graph();
        const QPoint place(20 + step.c % (graph->width() - 40), 20 + step.c / 7 % (graph->height() - 40));
        switch (step.leave()) {
        case WalkLeave::Tab:
            return m_hands.key(Qt::Key_Tab);
        case WalkLeave::Return:
            return m_hands.key(Qt::Key_Return);
        case WalkLeave::OtherBox:
            return m_hands.enter(step.box() == WalkBox::Stop ? WalkBox::Start : WalkBox::Stop);
        case WalkLeave::GraphMiddle:
            return QTest::mouseClick(graph, Qt::MiddleButton, {}, place);
        case WalkLeave::GraphLeft:
            replace("m1");
            return QTest::mouseClick(graph, Qt::LeftButton, {}, place);
        case WalkLeave::GraphShift:
            replace("m4");
            return QTest::mouseClick(graph, Qt::RightButton, Qt::ShiftModifier, place);
        case WalkLeave::MenuSeen:
            return m_hands.lookIntoAMenu(step.c % 2 == 0);
        case WalkLeave::Export:
            return m_hands.key(Qt::Key_S, Qt::ControlModifier);
        case WalkLeave::Stay:
            return;
        }
    }

    void tabKey(const WalkStep &step)
    {
        for (int i = step.a % 3; i >= 0; --i)
            m_hands.key(step.b % 2 == 0 ? Qt::Key_Tab : Qt::Key_Backtab,
                        step.b % 2 == 0 ? Qt::NoModifier : Qt::ShiftModifier);
    }

    // Enters a box and leaves it without typing.
    void intoBox(const WalkStep &step)
    {
        const auto which = static_cast<WalkBox>(step.a % int(kWalkBoxes.size()));
        if (!m_hands.box(which)->isVisible())
            return;
        m_hands.enter(which);
        if (step.b % 2 == 0)
            m_hands.key(step.c % 2 == 0 ? Qt::Key_Tab : Qt::Key_Return);
    }

    // --- single digits ---

    double stepped(double base, int digit, bool up) const
    {
        const double weight = std::pow(10.0, digit);
        const double moved = up ? base + weight : weight < base ? base - weight : base;
        return std::clamp(moved, double(m_bench.configuration.ddsMinFreq), double(m_bench.configuration.ddsMaxFreq));
    }

    void expectStepped(const char *aspect, const QStringList &bases, bool up, int firstDigit, int lastDigit)
    {
        replace(aspect);
        m_history.rangeDue = true;
        const QString entry = fromEntry(QString::fromLatin1(aspect));
        afterwards([=, this] {
            const double found = m_state.number(aspect);
            bool right = false;
            for (const QString &base : bases)
                for (int digit = firstDigit; digit <= lastDigit; ++digit)
                    right = right || found == stepped(base.toDouble(), digit, up);
            expect(right, QStringLiteral("digit stepped wrongly") + entry,
                   QStringLiteral("%1 is %2 after %3, digit %4, %5")
                       .arg(QString::fromLatin1(aspect))
                       .arg(found, 0, 'f', 0)
                       .arg(bases.join(u'|'))
                       .arg(firstDigit)
                       .arg(up ? QStringLiteral("up") : QStringLiteral("down")));
        });
    }

    void stepDigit(const WalkStep &step)
    {
        const bool start = step.a % 2 == 0;
        const int digit = step.b % 9;
        const bool up = step.c % 2 == 0;
        const QString bar = numbered(start ? "VScrollStart" : "VScrollStop", digit);
        expectStepped(start ? "start" : "stop", basesOf(start ? "start" : "stop"), up, digit, digit);
        if (step.kind == WalkKind::Wheel)
            m_hands.wheel(bar, up);
        else
            m_hands.arrow(bar, up);
    }

    // Steps the digit to the left of the caret.
    void stepDigitByKey(const WalkStep &step)
    {
        const bool start = step.a % 2 == 0;
        const WalkBox which = start ? WalkBox::Start : WalkBox::Stop;
        QLineEdit *box = m_hands.box(which);
        const QStringList bases = basesOf(start ? "start" : "stop");
        if (!box->hasFocus())
            m_hands.enter(which);
        m_hands.key(Qt::Key_End);
        const int back = step.b % 5;
        for (int i = 0; i < back; ++i)
            m_hands.key(Qt::Key_Left);
        const bool pending = m_entry && m_entry->box() == which;
        expectStepped(start ? "start" : "stop", bases, step.c % 2 == 0, pending ? 0 : std::max(0, back - 2),
                      pending ? 8 : back); // there may be separators
        if (!pending && back >= box->text().size()) {
            m_later.clear(); // no digit there
            m_replaced.clear();
        }
        m_hands.key(step.c % 2 == 0 ? Qt::Key_Up : Qt::Key_Down);
    }

    // --- the graph ---

    QPoint placeIn(const SweepGraph *graph, const WalkStep &step) const
    {
        return {step.b % graph->width(), step.c % graph->height()};
    }
    OwnPlot plotOf(const SweepGraph *graph) const { return {m_bench.configuration, graph->size()}; }
    int rowAt(const SweepGraph *graph, QPoint place) const
    {
        const double row = plotOf(graph).rowAt(place.x());
        return std::clamp(static_cast<int>(std::nearbyint(row)), 1, 400);
    }

    void clickGraph(const WalkStep &step)
    {
        static constexpr std::array kButtons{Qt::LeftButton, Qt::RightButton, Qt::MiddleButton};
        static constexpr std::array kPlain{"m1", "m2"};
        static constexpr std::array kShifted{"m3", "m4"};
        SweepGraph *graph = m_hands.graph();
        const auto button = static_cast<std::size_t>(step.a % 7 == 0 ? 2 : step.a % 2);
        const bool shift = step.a / 7 % 3 == 0;
        const QPoint place = placeIn(graph, step);
        const int row = rowAt(graph, place);
        const double y = plotOf(graph).yAt(place.y());
        const double pixel = std::abs(plotOf(graph).height()) / 1000.0 / graph->height();
        if (button < 2)
            replace(shift ? kShifted[button] : kPlain[button]);
        QTest::mouseClick(graph, kButtons[button], shift ? Qt::ShiftModifier : Qt::NoModifier, place);
        if (button == 2)
            return;
        afterwards([=, this] {
            if (!shift)
                return expect(std::abs(m_state.number(kPlain[button]) - row) <= 1.0,
                              QStringLiteral("click puts the marker elsewhere"), QString::number(row));
            const bool linear = m_state.number("scale") == 0.0;
            const double aimed = y / (linear ? 1000.0 : -1000.0);
            const double found = m_state.number(kShifted[button]);
            if (m_state.number("cursor") == 0.0)
                expect(std::abs(found - aimed) < pixel * 1.01 + (linear ? 0.0006 : 0.06),
                       QStringLiteral("Shift click puts the marker elsewhere"),
                       QStringLiteral("%1, not %2").arg(found).arg(aimed));
        });
    }

    void dragMarker(const WalkStep &step)
    {
        static constexpr std::array kMarkers{"m1", "m2", "m3", "m4"};
        SweepGraph *graph = m_hands.graph();
        const GraphLine &line = graph->line(kWalkLines[static_cast<std::size_t>(step.a % 4)]);
        const bool vertical = step.a % 4 < 2;
        const QPoint to = placeIn(graph, step);
        QPoint from = QPointF(plotOf(graph).x(line.x1), plotOf(graph).y(line.y1)).toPoint();
        (vertical ? from.ry() : from.rx()) = vertical ? to.y() : to.x();
        if (!graph->rect().contains(from) || (to - from).manhattanLength() < 40)
            return;
        const int row = rowAt(graph, to);
        QTest::mousePress(graph, Qt::LeftButton, {}, from);
        m_hands.moveMouse(graph, (from + to) / 2, Qt::LeftButton);
        m_hands.moveMouse(graph, to, Qt::LeftButton);
        QTest::mouseRelease(graph, Qt::LeftButton, {}, to);
        // Where lines cross, either may have moved.
        const QSet<QString> changed = m_before.changesTo(stateOf(m_bench));
        const char *moved = kMarkers[static_cast<std::size_t>(step.a % 4)];
        for (const char *marker : kMarkers)
            if (!changed.contains(QString::fromLatin1(moved)) && changed.contains(QString::fromLatin1(marker)))
                moved = marker;
        replace(moved);
        if (QByteArray(moved) < "m3" && changed.contains(QString::fromLatin1(moved)))
            afterwards([=, this] {
                expect(std::abs(m_state.number(moved) - row) <= 1.0, QStringLiteral("drag leaves the marker elsewhere"),
                       QStringLiteral("%1 is %2, not %3")
                           .arg(QString::fromLatin1(moved))
                           .arg(m_state.number(moved))
                           .arg(row));
            });
    }

    void keysInGraph(const WalkStep &step)
    {
        static constexpr std::array kMarkers{"m1", "m2", "m3", "m4"};
        static constexpr std::array kKeys{Qt::Key_Left, Qt::Key_Right, Qt::Key_Up,
                                          Qt::Key_Down, Qt::Key_Home,  Qt::Key_End};
        SweepGraph *graph = m_hands.graph();
        graph->setFocus(Qt::TabFocusReason);
        for (int i = 0, moves = step.b; i < 3; ++i, moves /= 12)
            m_hands.key(kKeys[static_cast<std::size_t>(moves % 6)],
                        moves / 6 % 2 == 0 ? Qt::NoModifier : Qt::ControlModifier);
        const int marker = step.a % 4;
        replace(kMarkers[static_cast<std::size_t>(marker)]);
        m_hands.key(Qt::Key_1 + marker);
        if (marker < 2)
            afterwards([=, this] {
                const int row = static_cast<int>(m_state.number(kMarkers[static_cast<std::size_t>(marker)]));
                expect(m_bench.text("txtX") == m_state.cell(row, 0), QStringLiteral("key puts the marker elsewhere"),
                       QStringLiteral("%1, not %2").arg(m_state.cell(row, 0), m_bench.text("txtX")));
            });
    }

    void moveMouse(const WalkStep &step)
    {
        SweepGraph *graph = m_hands.graph();
        const QPoint place = placeIn(graph, step);
        m_hands.moveMouse(graph, place, Qt::NoButton);
        afterwards([=, this] {
            const int row = rowAt(graph, place);
            int found = 0;
            for (const int near : {row, std::max(1, row - 1), std::min(400, row + 1)})
                if (found == 0 && m_bench.text("txtX") == m_state.cell(near, 0))
                    found = near;
            expect(found > 0, QStringLiteral("txtX under the mouse"),
                   QStringLiteral("%1, not %2").arg(m_bench.text("txtX"), m_state.cell(row, 0)));
            if (m_bench.configuration.cursorMode != 0 && found > 0 && !m_history.foreignPlan)
                expect(m_numbers.number(m_bench.text("txtY")) == m_numbers.number(m_state.cell(found, 1)),
                       QStringLiteral("txtY of the floating cross"), m_bench.text("txtY"));
        });
    }

    void copyMarker(const WalkStep &step)
    {
        const bool first = step.a % 2 == 0;
        const char *button = first ? "cmdCopyM1" : "cmdCopyM2";
        if (!m_bench.isShown(button))
            return;
        const QStringList rows = basesOf(first ? "m1" : "m2");
        const char *aspect = first ? "start" : "stop";
        replace(aspect);
        m_history.rangeDue = true;
        if (m_entry && walkAspect(*m_entry) == (first ? QStringLiteral("m1") : QStringLiteral("m2")))
            m_mustCommit.insert(walkAspect(*m_entry));
        const QString entry = fromEntry(first ? QStringLiteral("m1") : QStringLiteral("m2"));
        const QString caption = m_bench.caption(button);
        const qsizetype mnemonic = caption.indexOf(u'&') + 1;
        if (step.b % 2 == 0 || mnemonic == 0) {
            m_hands.click(QString::fromLatin1(button));
        } else {
            m_hands.key(caption[mnemonic].toUpper().unicode(), Qt::AltModifier);
            // Wait until the button is released.
            const auto *pressed = m_bench.find<QAbstractButton>(button);
            static_cast<void>(QTest::qWaitFor([pressed] { return !pressed->isDown(); }));
        }
        // After a truncated file, the boxes still show the previous data.
        if (m_history.curveBehind)
            return;
        afterwards([=, this] {
            QStringList expected;
            for (const QString &row : rows)
                expected.append(QString::number(m_numbers.number(m_before.cell(row.toInt(), 0)), 'f', 0));
            expect(expected.contains(m_state.aspects.value(QString::fromLatin1(aspect))),
                   QStringLiteral("marker copied wrongly") + entry,
                   QStringLiteral("%1, not %2")
                       .arg(m_state.aspects.value(QString::fromLatin1(aspect)), expected.join(u'|')));
        });
    }

    WalkNumbers m_numbers;
    WindowBench m_bench;
    WalkHands m_hands;
    WalkHistory m_history;
    WalkState m_before;
    WalkState m_state;
    std::optional<WalkStep> m_entry; // the entry whose box the user has not left yet
    std::optional<WalkStep> m_typed; // the entry typed in this step
    QSet<QString> m_allowed;
    QSet<QString> m_replaced;
    QSet<QString> m_mustCommit;
    QList<std::function<void()>> m_later;
    QList<WalkFault> m_faults;
};

} // namespace calvorn::test
