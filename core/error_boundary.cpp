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

void ErrorBoundary::report(const char *procedureName, const RuntimeError &error)
{
    const QByteArray name(procedureName);
    const QString text = error.message() + u'\r' +
                         QCoreApplication::translate("ErrorBoundary", "(in %1)").arg(QString::fromLatin1(name));
    if (m_openBoxes.contains(name)) {
        // The log itself may be what fails.
        if (m_logging)
            return;
        const QScopedValueRollback guard(m_logging, true);
        m_log.writeLog(QString(text).replace(u'\r', u' '));
        return;
    }
    m_openBoxes.insert(name);
    m_messages.show(BoxIcon::Critical, BoxButtons::Ok, text);
    m_openBoxes.remove(name);
}

} // namespace calvorn
