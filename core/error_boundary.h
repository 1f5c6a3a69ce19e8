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

// Handles run-time errors that no procedure handles. Such an error aborts its procedure and is shown in a message box
// that names the error and the procedure; the program then continues. While that box is open, further errors from the
// same procedure are only logged, so a failing timer cannot open more boxes.
class ErrorBoundary
{
public:
    ErrorBoundary(Messages &messages, Log &log);

    // Runs the procedure. Returns true if it completes without an error.
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

    // Runs a step after another step has failed. An error is treated as a consequence and only logged.
    template <typename Procedure>
    void runAfterFailure(const char *procedureName, Procedure &&procedure)
    {
        try {
            std::forward<Procedure>(procedure)();
        } catch (const RuntimeError &error) {
            log(procedureName, error);
        }
    }

    // Connects a signal to a handler that runs inside the boundary. All control handlers are connected this way.
    template <typename Sender, typename Signal, typename Handler>
    QMetaObject::Connection connect(const Sender *sender, Signal signal, const QObject *context, const char *name,
                                    Handler handler)
    {
        return QObject::connect(sender, signal, context, Guarded<Handler>{*this, name, handler});
    }

    void report(const char *procedureName, const RuntimeError &error);

private:
    // Accepts as many signal arguments as the handler does.
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
