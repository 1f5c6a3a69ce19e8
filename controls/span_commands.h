// SPDX-License-Identifier: MIT
#pragma once

#include "controls/range_entry.h"
#include "controls/span.h"
#include "controls/span_history.h"
#include "core/error_boundary.h"
#include "platform/desktop.h"

#include <QAction>
#include <QList>
#include <QObject>

namespace calvorn {

class FrmSpan;

// Commands for the range as a whole: zooming and selecting with the mouse, entering a centre and a span, and going back
// and forth through the user's previous spans. Each result is applied as if start and stop had been typed.
class SpanCommands : public QObject
{
    Q_OBJECT

public:
    // window: the parent of the dialog.
    SpanCommands(const Configuration &configuration, RangeEntry &range, Desktop &desktop, ErrorBoundary &boundary,
                 QWidget *window);

    // For menus: centre and span, back, forth, full range of the generator. Back and forth beep if there is no such
    // span. They are never disabled, because this can depend on a number still being typed.
    QList<QAction *> actions() const { return m_actions; }

    // Halves the span for each notch, doubles it for each negative one, and keeps the frequency "around" (Hz) in place.
    void zoom(double around, int notches);

    // Sets the span from the left to the right frequency, in Hz.
    void take(double left, double right);

private:
    void addAction(const char *name, const QString &caption, const QKeySequence &key, const QString &toolTip,
                   void (SpanCommands::*handler)());
    void mnuSpan_Click();
    void mnuSpanBack_Click();
    void mnuSpanForth_Click();
    void mnuFullRange_Click();
    Span current() const;
    bool isAhead() const;
    bool isElsewhere() const;
    void settle();
    void notePlan();
    void setSpan(const Span &span);
    void setSpanOrBeep(const std::optional<Span> &span);

    const Configuration &m_configuration;
    RangeEntry &m_range;
    Desktop &m_desktop;
    ErrorBoundary &m_boundary;
    QWidget *m_window;
    SpanHistory m_history;
    bool m_changed = false; // changed by the user since the last plan
    QList<QAction *> m_actions;
    FrmSpan *m_dialog = nullptr;
};

} // namespace calvorn
