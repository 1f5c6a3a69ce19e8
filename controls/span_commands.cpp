// SPDX-License-Identifier: MIT
#include "controls/span_commands.h"

#include "controls/frm_span.h"

#include <cmath>
#include <cstdlib>
#include <utility>

namespace calvorn {

SpanCommands::SpanCommands(const Configuration &configuration, RangeEntry &range, Desktop &desktop,
                           ErrorBoundary &boundary, QWidget *window)
    : QObject(window)
    , m_configuration(configuration)
    , m_range(range)
    , m_desktop(desktop)
    , m_boundary(boundary)
    , m_window(window)
{
    addAction("mnuSpan", tr("&Centre and span…"), {}, tr("Enter the range as centre and span"),
              &SpanCommands::mnuSpan_Click);
    addAction("mnuSpanBack", tr("&Previous span"), QKeySequence(Qt::ALT | Qt::Key_Left),
              tr("Return to the previous range"), &SpanCommands::mnuSpanBack_Click);
    addAction("mnuSpanForth", tr("&Next span"), QKeySequence(Qt::ALT | Qt::Key_Right), tr("Go to the next range"),
              &SpanCommands::mnuSpanForth_Click);
    addAction("mnuFullRange", tr("&Full range"), {}, tr("Sweep the generator's full range"),
              &SpanCommands::mnuFullRange_Click);
    connect(&range, &RangeEntry::rangeChanged, this, [this] { m_changed = true; });
    connect(&range, &RangeEntry::planned, this, &SpanCommands::notePlan);
}

void SpanCommands::addAction(const char *name, const QString &caption, const QKeySequence &key, const QString &toolTip,
                             void (SpanCommands::*handler)())
{
    auto *action = new QAction(caption, this);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(key);
    action->setToolTip(toolTip);
    m_boundary.connect(action, &QAction::triggered, this, name, [this, handler] {
        // Commit a pending entry first, regardless of how the command was triggered.
        EntryBox::commitPending();
        (this->*handler)();
    });
    m_actions.append(action);
}

void SpanCommands::zoom(double around, int notches)
{
    EntryBox::commitPending();
    setSpan(scaledSpan(m_configuration, current(), around, std::pow(2.0, -notches)));
}

void SpanCommands::take(double left, double right)
{
    EntryBox::commitPending();
    setSpan(boundedSpan(m_configuration, left, right));
}

void SpanCommands::mnuSpan_Click()
{
    if (!m_dialog) {
        m_dialog = new FrmSpan(m_configuration, m_desktop, m_window);
        connect(m_dialog, &FrmSpan::spanEntered, this, &SpanCommands::setSpan);
    }
    m_dialog->load();
    m_dialog->exec();
}

void SpanCommands::mnuSpanBack_Click()
{
    settle();
    setSpanOrBeep(isElsewhere() ? m_history.current() : m_history.back());
}

void SpanCommands::mnuSpanForth_Click()
{
    settle();
    setSpanOrBeep(m_history.forth());
}

void SpanCommands::mnuFullRange_Click()
{
    const bool falls = m_configuration.startFreq > m_configuration.stopFreq;
    const std::int32_t low = m_configuration.ddsMinFreq;
    const std::int32_t high = m_configuration.ddsMaxFreq;
    setSpan(falls ? Span{high, low} : Span{low, high});
}

Span SpanCommands::current() const
{
    return {m_configuration.startFreq, m_configuration.stopFreq};
}

void SpanCommands::setSpan(const Span &span)
{
    if (span != current())
        m_range.setRange(span.start, span.stop);
}

void SpanCommands::setSpanOrBeep(const std::optional<Span> &span)
{
    if (span)
        setSpan(*span);
    else
        m_desktop.beep();
}

// Whether the user has set a span that is not yet in the history. Ignores a range that the plan would correct.
bool SpanCommands::isAhead() const
{
    const Span span = current();
    return m_changed && std::abs(static_cast<double>(span.stop) - span.start) >= kMinSweepRange &&
           m_history.current() != span;
}

// Whether the range was read from a file; "back" then returns to the user's last span.
bool SpanCommands::isElsewhere() const
{
    return !m_changed && !m_history.isEmpty() && m_history.current() != current();
}

// Adds the range to the history now, because the user may continue before the range is planned.
void SpanCommands::settle()
{
    if (isAhead())
        m_history.visit(current());
    m_changed = false;
}

// Adds the planned range to the history if the user has set it (not read it from a file) or if the history is empty.
void SpanCommands::notePlan()
{
    if (std::exchange(m_changed, false) || m_history.isEmpty())
        m_history.visit(current());
}

} // namespace calvorn
