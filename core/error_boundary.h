// SPDX-License-Identifier: MIT
#pragma once

#include "core/log.h"
#include "core/messages.h"
#include "core/runtime_error.h"

#include <QObject>
#include <QSet>

#include <type_traits>
#include <utility>

namespace calvorn {

// Where a run-time error that no procedure handles ends: it ends that procedure, is shown in one message box that
// says what failed and where, and the program goes on. While the box of a procedure is open, further errors of
// the same procedure only go to the log, so that an error in a timer cannot pile up boxes.
class ErrorBoundary
{
public:
    ErrorBoundary(Messages &messages, Log &log);

    // Runs the procedure; true when it ended without an error.
    template <typename Procedure>
    bool run(const char *procedureName, Procedure &&procedure)
    {
        try {
            std::forward<Procedure>(procedure)();
            return true;
        } catch (const RuntimeError &error) {
            report(procedureName, error);
            return false;
        }
    }

    // The same for steps that follow one that failed: what fails now is a consequence, and only goes to the log.
    template <typename Procedure>
    void runAfterFailure(const char *procedureName, Procedure &&procedure)
    {
        try {
            std::forward<Procedure>(procedure)();
        } catch (const RuntimeError &error) {
            log(procedureName, error);
        }
    }

    // Connects a signal to a handler inside the boundary. Every control's handler is connected this way.
    template <typename Sender, typename Signal, typename Handler>
    QMetaObject::Connection connect(const Sender *sender, Signal signal, const QObject *context, const char *name,
                                    Handler handler)
    {
        return QObject::connect(sender, signal, context, Guarded<Handler>{*this, name, handler});
    }

    void report(const char *procedureName, const RuntimeError &error);

private:
    // Takes as many of the signal's arguments as the handler does.
    template <typename Handler>
    struct Guarded
    {
        ErrorBoundary &boundary;
        const char *name;
        Handler handler;

        template <typename... Arguments>
        requires std::is_invocable_v<Handler, Arguments...>
        void operator()(Arguments &&...arguments)
        {
            boundary.run(name, [&] { handler(std::forward<Arguments>(arguments)...); });
        }
    };

    static QString textOf(const char *procedureName, const RuntimeError &error);
    void log(const char *procedureName, const RuntimeError &error);

    Messages &m_messages;
    Log &m_log;
    QSet<QByteArray> m_openBoxes;
    bool m_logging = false;
};

} // namespace calvorn
