// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/walk_numbers.h"
#include "tests/support/walk_step.h"
#include "tests/support/window_bench.h"

#include <QAction>
#include <QMap>
#include <QMenuBar>
#include <QSet>
#include <QTimer>

namespace calvorn::test {

// The window's state between two steps.
struct WalkState
{
    QMap<QString, QString> aspects;
    QStringList cells; // row by row, including the header

    double number(const char *aspect) const { return aspects.value(QString::fromLatin1(aspect)).toDouble(); }
    const QString &cell(int row, int column) const { return cells[row * 3 + column]; }

    QSet<QString> changesTo(const WalkState &after) const
    {
        QSet<QString> changed;
        for (auto it = aspects.begin(); it != aspects.end(); ++it)
            if (after.aspects.value(it.key()) != it.value())
                changed.insert(it.key());
        if (cells != after.cells)
            changed.insert(QStringLiteral("table"));
        return changed;
    }
};

inline constexpr std::array kWalkLines{GraphItem::M1, GraphItem::M2, GraphItem::M3, GraphItem::M4};

inline WalkState stateOf(const WindowBench &bench)
{
    WalkState state;
    const Configuration &record = bench.configuration;
    const auto put = [&](const char *aspect, const QString &value) {
        state.aspects.insert(QString::fromLatin1(aspect), value);
    };
    const auto *graph = bench.find<SweepGraph>("picSweep");
    put("start", QString::number(record.startFreq));
    put("stop", QString::number(record.stopFreq));
    put("scale", QString::number(record.scaleType));
    put("m1", QString::number(graph->line(GraphItem::M1).x1));
    put("m2", QString::number(graph->line(GraphItem::M2).x1));
    const bool linear = record.scaleType == 0;
    for (const auto &[aspect, item] : {std::pair("m3", GraphItem::M3), std::pair("m4", GraphItem::M4)})
        put(aspect, WalkNumbers(QLocale::c()).amplitude(linear, graph->line(item).y1 / (linear ? 1000.0 : -1000.0)));
    put("maxVolt", QString::number(static_cast<double>(record.maxScaleVolt), 'g', 7));
    put("maxDb", QString::number(record.maxScaleDb));
    put("aux1", QString::number(record.aux1));
    put("aux2", QString::number(record.aux2));
    put("pot", QString::number(record.pot2));
    put("speed", QString::number(record.sweepSpeed));
    put("cursor", QString::number(record.cursorMode));
    put("sweep", bench.isShown("cmdStop") ? QStringLiteral("1") : QStringLiteral("0"));
    for (int view = 0; view < 4; ++view)
        if (bench.isShown(qPrintable(QStringLiteral("frameView_%1").arg(view))))
            put("view", QString::number(view));
    const SweepTable *table = bench.table();
    state.cells.reserve(401 * 3);
    for (int row = 0; row <= 400; ++row)
        for (int column = 0; column < 3; ++column)
            state.cells.append(table->text(row, column));
    return state;
}

// Events that the window's state does not show.
struct WalkHistory
{
    bool foreignPlan = false; // the frequencies come from a file
    bool asFile = false;      // so do the amplitudes
    bool headerFromFile = false;
    bool curveBehind = false; // a truncated file has filled only the table
    bool mixedTable = false;  // the frequencies may be out of order
    bool rangeDue = false;    // the range was changed since it was last planned
};

// A violation: the broken rule and details.
struct WalkFault
{
    QString id;
    QString detail;
};

// Checks the rules that hold between any two steps.
class WalkInvariants
{
public:
    WalkInvariants(const WindowBench &bench, const WalkNumbers &numbers, const WalkHistory &history)
        : m_bench(bench)
        , m_numbers(numbers)
        , m_history(history)
        , m_record(bench.configuration)
        , m_linear(m_record.scaleType == 0)
    {
    }

    QList<WalkFault> check(const WalkState &state)
    {
        m_faults.clear();
        m_state = &state;
        boxesCanBeRead();
        range();
        plan();
        amplitudes();
        frequencyMarkers();
        amplitudeMarkers();
        axis();
        choices();
        sweepButtons();
        curve();
        outputs();
        return m_faults;
    }

private:
    // Returns whether the box has the focus and an unfinished entry, to which no rule applies yet.
    bool isPending(const QLineEdit *box) const
    {
        return box->isModified() && (box->hasFocus() || m_bench.window->menuBar()->hasFocus());
    }

    void expect(bool holds, const char *id, const QString &detail)
    {
        if (!holds)
            m_faults.append({QString::fromLatin1(id), detail});
    }
    void same(const QString &found, const QString &expected, const char *id)
    {
        expect(found == expected, id, QStringLiteral("\"%1\", not \"%2\"").arg(found, expected));
    }
    const QLineEdit *box(WalkBox which) const
    {
        return m_bench.find<QLineEdit>(kWalkBoxes[static_cast<std::size_t>(which)]);
    }
    QString text(const char *name) const { return m_bench.text(name); }
    bool planPending() const
    {
        return m_bench.window->findChild<QTimer *>(QStringLiteral("timerUpdateSweep"))->isActive();
    }
    static QString numbered(const char *name, int number)
    {
        return QStringLiteral("%1_%2").arg(QString::fromLatin1(name)).arg(number);
    }
    double hertzOfRow(int row) const { return m_numbers.number(m_state->cell(row, 0)); }

    void boxesCanBeRead()
    {
        for (const char *name : kWalkBoxes) {
            const auto *entry = m_bench.find<QLineEdit>(name);
            if (!isPending(entry))
                expect(m_numbers.read(entry->text()).has_value(), "box cannot be read",
                       QString::fromLatin1(name) + u' ' + entry->text());
        }
    }

    // A box with the focus may show plain digits.
    void showsHertz(WalkBox which, double hertz, const char *id)
    {
        const QLineEdit *entry = box(which);
        if (isPending(entry) || (entry->hasFocus() && entry->text() == m_numbers.plain(hertz, 0)))
            return;
        same(entry->text(), m_numbers.hertz(hertz), id);
    }

    void range()
    {
        showsHertz(WalkBox::Start, m_record.startFreq, "txtStart shows another start");
        showsHertz(WalkBox::Stop, m_record.stopFreq, "txtStop shows another stop");
    }

    void plan()
    {
        if (planPending() || m_history.foreignPlan)
            return;
        const double span = double(m_record.stopFreq) - double(m_record.startFreq);
        if (std::abs(span) < 400.0)
            return expect(false, "range below 400 Hz", QString::number(span));
        const double step = std::nearbyint(span / 400.0);
        expect(m_record.stepFreq == static_cast<std::int32_t>(step), "step",
               QStringLiteral("%1, not %2").arg(m_record.stepFreq).arg(step));
        same(text("txtStep"), m_numbers.hertz(step), "txtStep");
        for (int row = 1; row <= 400; ++row)
            if (m_state->cell(row, 0) != m_numbers.hertz(m_record.startFreq + (row - 1) * step))
                return expect(false, "row off the plan",
                              QStringLiteral("row %1 %2, start %3 step %4")
                                  .arg(row)
                                  .arg(m_state->cell(row, 0))
                                  .arg(m_record.startFreq)
                                  .arg(step));
        same(text("lblStart"), m_state->cell(1, 0), "lblStart");
        same(text("lblCentro"), m_state->cell(200, 0), "lblCentro");
        same(text("lblStop"), m_state->cell(400, 0), "lblStop");
        const double samples = std::nearbyint((hertzOfRow(400) - hertzOfRow(1)) / step);
        same(text("lblCampioni"), QStringLiteral("N.Campioni %1").arg(samples), "lblCampioni");
    }

    void amplitudes()
    {
        if (!m_history.headerFromFile)
            same(m_state->cell(0, 1), m_linear ? QStringLiteral("Volt") : QStringLiteral("dB"), "header");
        if (m_history.asFile)
            return;
        const bool rebuilt = m_state->cell(1, 1) == u"0";
        for (int row = 1; row <= 400; ++row) {
            const QString &amplitude = m_state->cell(row, 1);
            const QString &count = m_state->cell(row, 2);
            if (rebuilt ? amplitude == u"0" && count == u"0" : belongs(amplitude, count))
                continue;
            return expect(false, "amplitude off its count",
                          QStringLiteral("row %1: %2 for %3").arg(row).arg(amplitude, count));
        }
    }

    bool belongs(const QString &amplitude, const QString &count) const
    {
        const double volts =
            std::nearbyint((count.toDouble() * double(m_record.adcStep) + double(m_record.adcOffset)) * 1000.0) /
            1000.0;
        const double expected = m_linear ? volts : walkDecibels(volts, walkReference(m_record.scaleType));
        const double shown = m_numbers.number(amplitude);
        return std::abs(shown - expected) < (m_linear ? 0.0006 : 0.056) &&
               amplitude == m_numbers.amplitude(m_linear, shown);
    }

    void frequencyMarkers()
    {
        if (m_history.curveBehind)
            return;
        const auto *graph = m_bench.find<SweepGraph>("picSweep");
        std::array<double, 2> hertz{};
        for (const int i : {0, 1}) {
            const double x = graph->line(kWalkLines[std::size_t(i)]).x1;
            expect(x >= 1.0 && x <= 400.0 && x == std::nearbyint(x), "marker beside the rows", QString::number(x));
            const int row = std::clamp(static_cast<int>(x), 1, 400);
            hertz[std::size_t(i)] = hertzOfRow(row);
            showsHertz(i == 0 ? WalkBox::M1X : WalkBox::M2X, hertz[std::size_t(i)],
                       i == 0 ? "txtM1X shows another row" : "txtM2X shows another row");
            same(text(i == 0 ? "txtM1Y" : "txtM2Y"), m_state->cell(row, 1),
                 i == 0 ? "txtM1Y shows another amplitude" : "txtM2Y shows another amplitude");
        }
        same(text("txtM2M1"), m_numbers.hertz(std::abs(hertz[1] - hertz[0])), "txtM2M1");
    }

    double difference(double m3, double m4) const
    {
        if (m_linear)
            return std::abs(m4 - m3);
        return (m3 > 0.0 && m4 > 0.0) || (m3 < 0.0 && m4 < 0.0) ? m4 - m3 : std::abs(m3) + std::abs(m4);
    }

    void amplitudeMarkers()
    {
        const auto *graph = m_bench.find<SweepGraph>("picSweep");
        const double factor = m_linear ? 1000.0 : -1000.0;
        const double unit = m_linear ? 0.001 : 0.1;
        const double m3 = graph->line(GraphItem::M3).y1 / factor;
        const double m4 = graph->line(GraphItem::M4).y1 / factor;
        const auto shows = [&](WalkBox which, double value, const char *id) {
            const QLineEdit *entry = box(which);
            if (isPending(entry))
                return;
            const double shown = m_numbers.number(entry->text());
            // A tie may round either way.
            expect(std::abs(shown - value) <= unit * 0.5001 + 1e-9 * std::abs(value) &&
                       entry->text() == m_numbers.amplitude(m_linear, shown),
                   id, QStringLiteral("\"%1\", line at %2").arg(entry->text()).arg(value));
        };
        shows(WalkBox::M3Y, m3, "txtM3Y beside its line");
        shows(WalkBox::M4Y, m4, "txtM4Y beside its line");
        const double shown = m_numbers.number(text("txtM4M3"));
        const double fromBoxes = difference(m_numbers.number(text("txtM3Y")), m_numbers.number(text("txtM4Y")));
        const double slack = unit * 1.1 + 1e-9 * std::abs(shown);
        expect(std::abs(shown - difference(m3, m4)) < slack || std::abs(shown - fromBoxes) < slack, "txtM4M3",
               QStringLiteral("%1 for %2 and %3").arg(text("txtM4M3")).arg(m3).arg(m4));
        same(text("txtM4M3"), m_numbers.amplitude(m_linear, shown), "mask of txtM4M3");
    }

    void axis()
    {
        const QString unit = m_linear ? QStringLiteral("Volt") : QStringLiteral("dB");
        same(text("Label5"), unit, "Label5");
        same(text("Label15"), unit, "Label15");
        expect(m_bench.isShown("txtMaxVolt") == m_linear, "txtMaxVolt is on the wrong scale", {});
        expect(m_bench.isShown("txtMaxDb") != m_linear, "txtMaxDb is on the wrong scale", {});
        if (m_linear && !isPending(box(WalkBox::MaxVolt)))
            same(text("txtMaxVolt"), m_numbers.plain(double(m_record.maxScaleVolt), 2), "txtMaxVolt");
        if (!m_linear && !isPending(box(WalkBox::MaxDb))) {
            const double shown = m_numbers.number(text("txtMaxDb"));
            expect(std::abs(shown - m_record.maxScaleDb) <= 0.5 && text("txtMaxDb") == m_numbers.plain(shown, 1),
                   "txtMaxDb", QStringLiteral("%1 for %2").arg(text("txtMaxDb")).arg(m_record.maxScaleDb));
        }
        const bool headroom = m_record.scaleType == 2 || m_record.scaleType == 4;
        for (int i = 0; i <= 10; ++i) {
            const QString name = numbered("lblVolt", i);
            const auto *label = m_bench.find<QLabel>(qPrintable(name));
            if (m_linear)
                expect(label->isVisible() == (i >= 1 && i <= 4), "axis labels shown", name);
            if (!label->isVisible())
                continue;
            const double volt = double(m_record.maxScaleVolt);
            QString expected = m_linear ? m_numbers.plain(volt - volt * i / 4.0, 2)
                                        : m_numbers.plain(-10.0 * (i - (headroom ? 1 : 0)), 1);
            if (i == 10)
                expected = m_record.scaleType >= 3 ? QStringLiteral("(Vref 10V)") : QStringLiteral("(Vref 1V)");
            const double tie = std::abs(m_numbers.number(label->text()) - m_numbers.number(expected));
            if (!(tie < (m_linear ? 0.0101 : 0.001)))
                same(label->text(), expected, "axis label");
        }
    }

    void choices()
    {
        static constexpr std::array kScaleActions{"mnuScalaLineare", "mnuScalaLogaritmica1", "mnuScalaLogaritmica1dB",
                                                  "mnuScalaLogaritmica10", "mnuScalaLogaritmica10dB"};
        for (int scale = 0; scale < int(kScaleActions.size()); ++scale) {
            const QString name = QString::fromLatin1(kScaleActions[std::size_t(scale)]);
            expect(m_bench.window->findChild<QAction *>(name)->isChecked() == (scale == m_record.scaleType),
                   "checked scale", name);
        }
        int shown = 0;
        for (int view = 0; view < 4; ++view) {
            const bool here = m_bench.isShown(qPrintable(numbered("frameView", view)));
            shown += here ? 1 : 0;
            expect(m_bench.find(qPrintable(numbered("cmdView", view)))->isEnabled() != here, "button of the view",
                   QString::number(view));
            expect(m_bench.window->findChild<QAction *>(numbered("mnuView", view))->isChecked() == here, "checked view",
                   QString::number(view));
        }
        expect(shown == 1, "views shown", QString::number(shown));
        if (m_record.interfaceType == kInterfaceLpt)
            for (int i = 0; i < 3; ++i)
                expect(m_bench.isChecked(qPrintable(numbered("optSpeed", i))) == (i == m_record.sweepSpeed),
                       "option of the speed", QString::number(i));
        expect(m_bench.isShown("frmSpeed") == (m_record.interfaceType == kInterfaceLpt), "frmSpeed", {});
        const auto *graph = m_bench.find<SweepGraph>("picSweep");
        for (const GraphItem item : {GraphItem::CursorV, GraphItem::CursorH})
            expect(graph->line(item).visible == (m_record.cursorMode != 0), "cursor lines", {});
    }

    void sweepButtons()
    {
        const bool sweeping = m_bench.isShown("cmdStop");
        expect(m_bench.isShown("cmdStart") != sweeping, "cmdStart and cmdStop", {});
        for (const char *name : {"mnuSaveCSV", "mnuOpenCSV", "mnuSetUp"}) {
            const auto *action = m_bench.window->findChild<QAction *>(QString::fromLatin1(name));
            expect(action->isEnabled() != sweeping, "menu entries while sweeping", QString::fromLatin1(name));
        }
    }

    void curve()
    {
        if (m_history.curveBehind)
            return;
        const QPolygonF points = m_bench.find<SweepGraph>("picSweep")->curve();
        if (points.isEmpty())
            return expect(m_state->cell(1, 2) == u"0" || m_history.foreignPlan, "no curve for the samples", {});
        expect(points.size() == 400, "points of the curve", QString::number(points.size()));
        for (int row = 1; row <= points.size(); ++row) {
            const double y = m_numbers.number(m_state->cell(row, 1)) * (m_linear ? 1000.0 : -1000.0);
            if (points[row - 1].x() != row || std::abs(points[row - 1].y() - y) > 1e-6)
                return expect(
                    false, "curve off the table",
                    QStringLiteral("row %1: %2, cell %3").arg(row).arg(points[row - 1].y()).arg(m_state->cell(row, 1)));
        }
    }

    void outputs()
    {
        if (m_record.interfaceType != kInterfaceLpt)
            return;
        for (const int output : {1, 2}) {
            int value = 0;
            int total = 0;
            for (int bit = 0; bit < 8; ++bit) {
                const auto *check =
                    m_bench.find<QCheckBox>(qPrintable(QStringLiteral("chkAux%1_%2").arg(output).arg(bit)));
                if (check->checkState() != Qt::Checked)
                    continue;
                value |= 1 << bit;
                total += (bit + 1) * 10;
            }
            expect(value == (output == 1 ? m_record.aux1 : m_record.aux2), "value of an output",
                   QString::number(value));
            same(text(output == 1 ? "lblAux1" : "lblAux2"), QString::number(total), "total of an output");
        }
        same(text("lblPot2"), QString::number(m_record.pot2), "lblPot2");
    }

    const WindowBench &m_bench;
    const WalkNumbers &m_numbers;
    const WalkHistory &m_history;
    const Configuration &m_record;
    bool m_linear;
    const WalkState *m_state = nullptr;
    QList<WalkFault> m_faults;
};

} // namespace calvorn::test
