// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/walk_actor.h"

namespace calvorn::test {

// Walks through the window step by step and checks: aspects unrelated to the step stay the same, no unfinished entry is
// lost or overwritten, no unexpected box opens, and everything shown is correct.
class WalkScene : public WalkActor
{
public:
    using WalkActor::WalkActor;

    QList<WalkFault> walk(const WalkStep &step)
    {
        m_faults.clear();
        m_allowed.clear();
        m_replaced.clear();
        m_mustCommit.clear();
        m_later.clear();
        m_typed.reset();
        m_before = m_state;
        const std::optional<WalkStep> entry = m_entry;
        const qsizetype boxes = m_bench.desktop.boxes.size();
        act(step);
        m_hands.settle();
        m_state = stateOf(m_bench);
        noteRangeEntry(step);
        if (step.kind != WalkKind::Reopen) {
            judgeChanges(step, entry);
            if (entry && !(m_typed && m_typed->a == entry->a))
                judgeEntry(*entry, step, m_bench.desktop.boxes.size() > boxes);
            if (m_typed)
                judgeTyped(*m_typed);
        }
        for (const auto &look : m_later)
            look();
        rememberEntry();
        judgeBoxes(step.kind, boxes);
        m_faults += WalkInvariants(m_bench, m_numbers, m_history).check(m_state);
        return m_faults;
    }

private:
    static QString nameOf(const WalkStep &step)
    {
        if (step.kind == WalkKind::Type && step.leave() == WalkLeave::GraphShift)
            return QStringLiteral("Shift click");
        if (step.kind == WalkKind::GraphClick && step.a % 7 != 0 && step.a / 7 % 3 == 0)
            return QStringLiteral("Shift click");
        return QString::fromLatin1(kWalkKindNames[static_cast<std::size_t>(step.kind)]);
    }
    bool isBeingTyped(const WalkStep &entry) const { return m_hands.isBeingTyped(entry.box()); }

    // Remembers that an entered range will be planned after a delay.
    void noteRangeEntry(const WalkStep &step)
    {
        if (step.kind == WalkKind::Import || step.kind == WalkKind::Reopen || step.kind == WalkKind::Time)
            return;
        const QSet<QString> changed = m_before.changesTo(m_state);
        if (changed.contains(QStringLiteral("start")) || changed.contains(QStringLiteral("stop")))
            m_history.rangeDue = m_history.rangeDue || m_hands.updateTimer()->isActive();
    }

    void judgeChanges(const WalkStep &step, const std::optional<WalkStep> &entry)
    {
        QSet<QString> changed = m_before.changesTo(m_state) - m_allowed;
        if (entry)
            changed.remove(walkAspect(*entry));
        // Planning corrects a range that is too small.
        if (step.kind == WalkKind::Time && std::abs(m_before.number("stop") - m_before.number("start")) < 400.0)
            changed -= {QStringLiteral("start"), QStringLiteral("stop"), QStringLiteral("table")};
        // If the table mixes frequencies from a file and from the plan, a marker's row is ambiguous.
        if (m_history.mixedTable)
            changed -= {QStringLiteral("m1"), QStringLiteral("m2")};
        const bool falling = m_numbers.number(m_before.cell(1, 0)) > m_numbers.number(m_before.cell(400, 0));
        for (const QString &aspect : changed)
            expect(false,
                   aspect +
                       (falling && m_state.aspects.value(aspect) == u"1"
                            ? QStringLiteral(" jumps in a falling sweep, by ")
                            : QStringLiteral(" changed by ")) +
                       nameOf(step) + (isSweeping() ? QStringLiteral(" while it sweeps") : QString()),
                   QStringLiteral("%1, then %2").arg(m_before.aspects.value(aspect), m_state.aspects.value(aspect)));
    }

    // Checks an entry that was unfinished when this step began.
    void judgeEntry(const WalkStep &entry, const WalkStep &step, bool told)
    {
        const QString aspect = walkAspect(entry);
        const QString name = QString::fromLatin1(kWalkBoxes[static_cast<std::size_t>(entry.a)]);
        const QLineEdit *box = m_hands.box(entry.box());
        if (isBeingTyped(entry)) {
            expect(box->text() == entry.text, QStringLiteral("entry overwritten in ") + name, nameOf(step));
            expect(!m_replaced.contains(aspect), QStringLiteral("entry survives its replacement in ") + name,
                   nameOf(step));
            expect(!m_mustCommit.contains(aspect), QStringLiteral("entry not taken in ") + name, nameOf(step));
            return;
        }
        if (m_replaced.contains(aspect) || told)
            return;
        const QString found = m_state.aspects.value(aspect);
        expect(taken(entry, m_before).contains(found) || taken(entry, m_state).contains(found),
               QStringLiteral("entry lost: %1 by %2").arg(kindOf(entry), nameOf(step)),
               QStringLiteral("%1 is %2, not %3").arg(aspect, found, taken(entry, m_before).join(u'|')));
    }

    // Checks the entry typed in this step.
    void judgeTyped(const WalkStep &entry)
    {
        const QString name = QString::fromLatin1(kWalkBoxes[static_cast<std::size_t>(entry.a)]);
        const bool left = entry.leave() <= WalkLeave::OtherBox;
        expect(!(left && isBeingTyped(entry)), QStringLiteral("entry not left in ") + name,
               m_hands.box(entry.box())->text());
        if (!left && isBeingTyped(entry))
            expect(m_hands.box(entry.box())->text() == entry.text, QStringLiteral("entry overwritten in ") + name, {});
        if (!left && !isBeingTyped(entry) && !m_replaced.contains(walkAspect(entry))) {
            const QString found = m_state.aspects.value(walkAspect(entry));
            expect(taken(entry, m_before).contains(found),
                   QStringLiteral("entry lost: %1 by %2").arg(kindOf(entry), nameOf(entry)), found);
        }
        if (!left && isBeingTyped(entry))
            expect(!m_replaced.contains(walkAspect(entry)), QStringLiteral("entry survives its replacement in ") + name,
                   nameOf(entry));
    }

    void rememberEntry()
    {
        if (m_typed)
            m_entry = m_typed;
        if (m_entry && !isBeingTyped(*m_entry))
            m_entry.reset();
    }

    // Checks that only expected boxes have opened.
    void judgeBoxes(WalkKind kind, qsizetype first)
    {
        const bool plans = kind == WalkKind::Time || kind == WalkKind::TestButton || kind == WalkKind::SweepButton ||
                           kind == WalkKind::F5 || kind == WalkKind::Import || kind == WalkKind::Reopen;
        for (qsizetype i = first; i < m_bench.desktop.boxes.size(); ++i) {
            const QString &text = m_bench.desktop.boxes[i].text;
            const bool known = (plans && text.startsWith(QStringLiteral("Minimum sweeping range is 400 Hz."))) ||
                               (plans && text == u"The minimum sweep range is 400 Hz") ||
                               (kind == WalkKind::Import &&
                                text.startsWith(QStringLiteral("This file was created with a different ADC")));
            expect(known, QStringLiteral("box: ") + text.section(u'\r', 0, 0), text);
        }
    }
};

} // namespace calvorn::test
