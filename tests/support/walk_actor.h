// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/walk_entries.h"

namespace calvorn::test {

// Executes all kinds of steps.
class WalkActor : public WalkEntriesAndGraph
{
public:
    using WalkEntriesAndGraph::WalkEntriesAndGraph;

protected:
    void act(const WalkStep &step)
    {
        using Act = void (WalkActor::*)(const WalkStep &);
        static constexpr std::array<Act, kWalkKindNames.size()> kActs{
            &WalkActor::type,         &WalkActor::stepDigit,    &WalkActor::stepDigit,     &WalkActor::stepDigitByKey,
            &WalkActor::clickGraph,   &WalkActor::dragMarker,   &WalkActor::keysInGraph,   &WalkActor::moveMouse,
            &WalkActor::copyMarker,   &WalkActor::changeScale,  &WalkActor::changeView,    &WalkActor::testButton,
            &WalkActor::sweepOnOrOff, &WalkActor::sweepOnOrOff, &WalkActor::vectorArrives, &WalkActor::importFile,
            &WalkActor::exportFile,   &WalkActor::auxiliary,    &WalkActor::potentiometer, &WalkActor::speed,
            &WalkActor::preferences,  &WalkActor::timePasses,   &WalkActor::tabKey,        &WalkActor::intoBox,
            &WalkActor::reopen};
        (this->*kActs[static_cast<std::size_t>(step.kind)])(step);
    }

    // --- scales and views ---

    // Returns an amplitude marker's value after a scale change.
    static double converted(double value, int from, int to)
    {
        if (from == 0)
            return to == 0 ? value : walkDecibels(value, to == 3 ? 10.0 : 1.0);
        if (to == 0)
            return walkVolts(value, walkReference(from));
        return walkReference(from) == walkReference(to)
                   ? value
                   : walkDecibels(walkVolts(value, walkReference(from)), walkReference(to));
    }

    void changeScale(const WalkStep &step)
    {
        static constexpr std::array kScaleActions{"mnuScalaLineare", "mnuScalaLogaritmica1", "mnuScalaLogaritmica1dB",
                                                  "mnuScalaLogaritmica10", "mnuScalaLogaritmica10dB"};
        const int from = static_cast<int>(m_before.number("scale"));
        const int to = step.a % 5;
        allow({"scale", "table", "m3", "m4"});
        QMap<QString, QStringList> bases;
        QMap<QString, QString> entries;
        for (const char *aspect : {"m3", "m4"}) {
            bases[QString::fromLatin1(aspect)] = basesOf(aspect);
            entries[QString::fromLatin1(aspect)] = fromEntry(QString::fromLatin1(aspect));
            m_replaced.insert(QString::fromLatin1(aspect));
        }
        if (m_entry && m_entry->box() >= WalkBox::MaxVolt)
            m_mustCommit.insert(walkAspect(*m_entry));
        m_hands.choose(QString::fromLatin1(kScaleActions[static_cast<std::size_t>(to)]));
        m_history.asFile = m_history.headerFromFile = m_history.curveBehind = false;
        afterwards([=, this] {
            expect(m_state.number("scale") == to, QStringLiteral("scale not changed"), QString::number(to));
            for (auto it = bases.begin(); it != bases.end(); ++it) {
                bool right = false;
                const double found = m_state.aspects.value(it.key()).toDouble();
                for (const QString &base : it.value()) {
                    const double expected = std::clamp(converted(base.toDouble(), from, to), -1e6, 1e6);
                    right =
                        right || std::abs(found - expected) <= (to == 0 ? 0.00051 : 0.0501) + 1e-6 * std::abs(expected);
                }
                expect(right, QStringLiteral("amplitude marker converted wrongly") + entries.value(it.key()),
                       QStringLiteral("%1 is %2 after %3, scale %4 to %5")
                           .arg(it.key())
                           .arg(found)
                           .arg(it.value().join(u'|'))
                           .arg(from)
                           .arg(to));
            }
        });
    }

    void changeView(const WalkStep &step)
    {
        const int view = step.a % (isLpt() ? 4 : 2);
        allow({"view"});
        if (step.b % 2 == 0)
            m_hands.click(numbered("cmdView", view));
        else
            m_hands.choose(numbered("mnuView", view));
        afterwards([=, this] {
            expect(m_state.number("view") == view, QStringLiteral("view not shown"), QString::number(view));
        });
    }

    // --- test panel and sweep ---

    void testButton(const WalkStep &step)
    {
        static constexpr std::array kButtons{"cmdDraw",     "cmdDraw",  "cmdClear",  "cmdFreqDDS", "cmdFreqStart",
                                             "cmdFreqStep", "cmdReset", "cmdMisura", "cmdSwStop"};
        const QString button = QString::fromLatin1(kButtons[static_cast<std::size_t>(step.a % int(kButtons.size()))]);
        if (button == u"cmdDraw") {
            allow({"table"});
            m_history.asFile = m_history.curveBehind = false;
        }
        if (button == u"cmdClear") {
            allow({"table", "start", "stop"});
            m_history.rangeDue = false;
        }
        if (button == u"cmdReset" || button == u"cmdSwStop")
            allow({"sweep"});
        m_hands.click(button);
        // The real server also reports the end of the sweep after a reset; the fake server does not.
        if (button == u"cmdSwStop")
            expectTheEndOfTheSweep(button);
    }

    void expectTheEndOfTheSweep(const QString &after)
    {
        expect(m_hands.sweepEnds(), QStringLiteral("sweep never ends after ") + after);
    }

    void sweepOnOrOff(const WalkStep &step)
    {
        allow({"sweep"});
        const bool stops = isSweeping();
        if (!stops) {
            allow({"start", "stop", "table"});
            if (m_entry && m_entry->box() <= WalkBox::Stop)
                m_mustCommit.insert(walkAspect(*m_entry));
        }
        const qsizetype boxes = m_bench.desktop.boxes.size();
        if (step.kind == WalkKind::F5)
            m_hands.key(Qt::Key_F5);
        else
            m_hands.click(stops ? QStringLiteral("cmdStop") : QStringLiteral("cmdStart"));
        if (stops)
            return expectTheEndOfTheSweep(QStringLiteral("cmdStop"));
        afterwards([=, this] {
            expect(m_state.number("sweep") > 0 || (m_bench.desktop.boxes.size() > boxes &&
                                                   m_bench.desktop.lastText().contains(QStringLiteral("400 Hz"))),
                   QStringLiteral("sweep does not start"));
        });
    }

    // Sends a vector only if it fits the table's plan: the program would discard others.
    void vectorArrives(const WalkStep &step)
    {
        if (!isSweeping() || m_hands.updateTimer()->isActive() || m_history.foreignPlan)
            return;
        allow({"table"});
        QRandomGenerator random(static_cast<quint32>(step.a));
        QVector<int> counts;
        for (int i = 0; i < 400; ++i)
            counts.append(static_cast<int>(random.bounded(1024)));
        m_bench.desktop.ticks += 1 + static_cast<std::uint32_t>(step.b % 500);
        emit m_bench.driver()->aVettore(counts);
        m_history.asFile = m_history.curveBehind = false;
        const bool inverted =
            m_bench.configuration.interfaceType == kInterfaceVna && m_bench.caption("cmdMisura") == u"DUT";
        afterwards([=, this] {
            for (int row = 1; row <= 400; ++row)
                if (m_state.cell(row, 2) != QString::number(inverted ? 1024 - counts[row - 1] : counts[row - 1]))
                    return expect(false, QStringLiteral("vector not stored"), QString::number(row));
            expect(!m_hands.graph()->curve().isEmpty(), QStringLiteral("vector not drawn"));
        });
    }

    void timePasses(const WalkStep &)
    {
        if (m_history.rangeDue)
            allow({"table", "start", "stop", "sweep"});
        // Leaving a range box replans a running sweep even if the value is unchanged.
        if (isSweeping() && m_hands.updateTimer()->isActive())
            allow({"table"});
        m_history.rangeDue = false;
        m_hands.letTimePass();
    }

    // --- files ---

    void writeFile(const QByteArray &content) const
    {
        QFile file(m_bench.desktop.fileChoice);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write the file of the walk");
        file.write(content);
    }

    void importFile(const WalkStep &step)
    {
        namespace files = walk_files;
        const int form = step.a % files::kForms;
        if (form == files::Missing)
            QFile::remove(m_bench.desktop.fileChoice);
        else
            writeFile(files::content(form, step.b % 5000, double(m_bench.configuration.adcStep),
                                     double(m_bench.configuration.adcOffset)));
        if (isSweeping())
            return m_hands.key(Qt::Key_O, Qt::ControlModifier);
        allow({"table"});
        if (files::isComplete(form)) {
            replace("start");
            replace("stop");
        }
        m_bench.desktop.answers.clear();
        if (form == files::KeepValues)
            m_bench.desktop.answers.enqueue(kBoxCancel);
        const qsizetype boxes = m_bench.desktop.boxes.size();
        m_hands.key(Qt::Key_O, Qt::ControlModifier);
        m_bench.desktop.answers.clear();
        if (form != files::Missing && form != files::Empty)
            m_history.foreignPlan = m_history.asFile = true;
        m_history.headerFromFile = m_history.headerFromFile || form == files::RowZero;
        m_history.curveBehind = m_history.mixedTable = !files::isComplete(form);
        if (!files::isComplete(form))
            return;
        m_history.rangeDue = false;
        const bool corrected =
            m_bench.desktop.boxes.size() > boxes && m_bench.desktop.lastText().startsWith(QStringLiteral("Minimum"));
        afterwards([this, corrected] { judgeImport(corrected); });
    }

    void judgeImport(bool corrected)
    {
        if (corrected)
            return;
        const double first = m_numbers.number(m_state.cell(1, 0));
        const double last = m_numbers.number(m_state.cell(400, 0));
        const auto shows = [this](const char *name, double hertz) {
            const bool plain = m_bench.find(name)->hasFocus() && m_bench.text(name) == m_numbers.plain(hertz, 0);
            expect(plain || m_bench.text(name) == m_numbers.hertz(hertz),
                   QStringLiteral("after an import: ") + QString::fromLatin1(name),
                   QStringLiteral("%1, not %2").arg(m_bench.text(name), m_numbers.hertz(hertz)));
        };
        expect(m_state.number("start") == first && m_state.number("stop") == last,
               QStringLiteral("range after an import"), QString());
        shows("txtStart", first);
        shows("txtStop", last);
        shows("lblStart", first);
        shows("lblStop", last);
        shows("lblCentro", std::nearbyint((last - first) / 2.0 + first));
        shows("txtStep", std::nearbyint((last - first) / 400.0));
        expect(!m_hands.graph()->curve().isEmpty(), QStringLiteral("import not drawn"));
    }

    void exportFile(const WalkStep &)
    {
        QFile::remove(m_bench.desktop.fileChoice);
        m_hands.key(Qt::Key_S, Qt::ControlModifier);
        const bool sweeping = isSweeping();
        afterwards([=, this] {
            QFile file(m_bench.desktop.fileChoice);
            if (sweeping)
                return expect(!file.exists(), QStringLiteral("export while it sweeps"));
            if (!file.open(QIODevice::ReadOnly))
                return expect(false, QStringLiteral("no file after an export"));
            const QList<QByteArray> lines = file.readAll().split('\n');
            expect(lines.size() == 402, QStringLiteral("lines of an export"), QString::number(lines.size()));
            for (int row = 1; row <= 400 && row < lines.size(); ++row) {
                const QList<QByteArray> fields = lines[row].trimmed().split(',');
                if (fields.size() == 4 && fields[0].toInt() == row &&
                    fields[1].toDouble() == m_numbers.number(m_state.cell(row, 0)) &&
                    fields[2].toDouble() == m_numbers.number(m_state.cell(row, 2)) &&
                    std::abs(fields[3].toDouble() - 1000.0 * m_numbers.number(m_state.cell(row, 1))) < 1e-6)
                    continue;
                return expect(false, QStringLiteral("export beside the table"), QString::fromLatin1(lines[row]));
            }
        });
    }

    // --- the rest ---

    void auxiliary(const WalkStep &step)
    {
        const int output = 1 + step.a % 2;
        const auto *check =
            m_bench.find<QCheckBox>(qPrintable(QStringLiteral("chkAux%1_%2").arg(output).arg(step.b % 8)));
        if (!isLpt() || !check->isVisible())
            return;
        allow({output == 1 ? "aux1" : "aux2"});
        const Qt::CheckState expected = check->checkState() == Qt::Unchecked          ? Qt::PartiallyChecked
                                        : check->checkState() == Qt::PartiallyChecked ? Qt::Checked
                                                                                      : Qt::Unchecked;
        auto *hit = const_cast<QCheckBox *>(check);
        if (step.c % 2 == 0) {
            QTest::mouseClick(hit, Qt::LeftButton, {}, QPoint(10, hit->height() / 2));
        } else {
            hit->setFocus(Qt::TabFocusReason);
            QTest::keyClick(hit, Qt::Key_Space);
        }
        afterwards([=, this] {
            expect(check->checkState() == expected, QStringLiteral("state of an output's box"), check->objectName());
        });
    }

    void potentiometer(const WalkStep &step)
    {
        if (!isLpt() || !m_bench.isShown("VScrollPot2"))
            return;
        allow({"pot"});
        if (step.a % 2 == 0)
            return m_hands.wheel(QStringLiteral("VScrollPot2"), step.b % 2 == 0);
        static constexpr std::array kKeys{Qt::Key_Up,       Qt::Key_Down, Qt::Key_PageUp,
                                          Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End};
        m_bench.find("VScrollPot2")->setFocus(Qt::TabFocusReason);
        m_hands.key(kKeys[static_cast<std::size_t>(step.b % int(kKeys.size()))]);
    }

    void speed(const WalkStep &step)
    {
        if (!isLpt())
            return;
        const int index = step.a % 3;
        allow({"speed"});
        m_hands.click(numbered("optSpeed", index));
        afterwards([=, this] {
            expect(m_state.number("speed") == index, QStringLiteral("speed not taken"), QString::number(index));
        });
    }

    void preferences(const WalkStep &step)
    {
        if (isSweeping())
            return;
        const int mode = step.a % 2;
        allow({"cursor"});
        whileModal([mode](QWidget &dialog) {
            auto *option = dialog.findChild<QAbstractButton *>(numbered("optCursor", mode));
            QTest::mouseClick(option, Qt::LeftButton, {}, QPoint(10, option->height() / 2));
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        m_bench.window->findChild<QAction *>(QStringLiteral("mnuPreferences"))->trigger();
        m_bench.window->activateWindow();
        if (!QTest::qWaitForWindowActive(m_bench.window.get()))
            qFatal("the window is not active again");
        afterwards([=, this] {
            expect(m_state.number("cursor") == mode, QStringLiteral("cursor not taken"), QString::number(mode));
        });
    }

    // Closes the program and starts it again.
    void reopen(const WalkStep &)
    {
        const bool falling = m_numbers.number(m_before.cell(1, 0)) > m_numbers.number(m_before.cell(400, 0));
        const bool samePlan = !m_history.foreignPlan && !m_hands.updateTimer()->isActive();
        const std::optional<WalkStep> entry = m_entry;
        QMap<QString, QStringList> expected;
        for (const char *aspect : kWalkAspects)
            expected[QString::fromLatin1(aspect)] = basesOf(aspect);
        for (const char *aspect : {"scale", "view", "aux1", "aux2", "pot", "speed", "cursor"})
            expected[QString::fromLatin1(aspect)] = {m_before.aspects.value(QString::fromLatin1(aspect))};
        if (!samePlan)
            for (const char *aspect : {"m1", "m2", "start", "stop"})
                expected.remove(QString::fromLatin1(aspect));
        // In a falling sweep, row 1 is the first row that is not below a marker's frequency.
        for (const char *aspect : {"m1", "m2"})
            if (falling && expected.contains(QString::fromLatin1(aspect)))
                expected[QString::fromLatin1(aspect)].append(QStringLiteral("1"));
        m_bench.window->close();
        m_bench.window.reset();
        m_bench.open();
        if (!m_bench.started)
            qFatal("the window does not start again");
        opened();
        for (auto it = expected.begin(); it != expected.end(); ++it) {
            const QString found = m_state.aspects.value(it.key());
            expect(it.value().contains(found),
                   QStringLiteral("not kept over a restart: ") + it.key() +
                       (entry && walkAspect(*entry) == it.key() ? QStringLiteral(" being typed, ") + kindOf(*entry)
                                                                : QString()),
                   QStringLiteral("%1, not %2").arg(found, it.value().join(u'|')));
        }
    }
};

} // namespace calvorn::test
