// SPDX-License-Identifier: MIT
#include "core/error_boundary.h"

#include <QCoreApplication>
#include <QScopedValueRollback>

namespace calvorn {

ErrorBoundary::ErrorBoundary(Messages &messages, Log &log)
    : m_messages(messages)
    , m_log(log)
{
}

QString ErrorBoundary::textOf(const char *procedureName, const RuntimeError &error)
{
    return error.message() + u'\r' +
           QCoreApplication::translate("ErrorBoundary", "(in %1)").arg(QString::fromLatin1(procedureName));
}

void ErrorBoundary::log(const char *procedureName, const RuntimeError &error)
{
    // Prevents recursion if logging itself fails.
    if (m_logging)
        return;
    const QScopedValueRollback guard(m_logging, true);
    m_log.writeLog(textOf(procedureName, error).replace(u'\r', u' '));
}

void ErrorBoundary::report(const char *procedureName, const RuntimeError &error)
{
    if (error.kind() == RuntimeError::Kind::Closing)
        return;
    const QByteArray name(procedureName);
    const QString text = textOf(procedureName, error);
    if (m_openBoxes.contains(name)) {
        log(procedureName, error);
        return;
    }
    m_openBoxes.insert(name);
    m_messages.show(BoxIcon::Critical, BoxButtons::Ok, text);
    m_openBoxes.remove(name);
}

} // namespace calvorn
