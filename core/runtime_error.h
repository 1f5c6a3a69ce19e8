// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <exception>

namespace calvorn {

// A run-time error aborts the procedure in which it occurs. If no procedure handles it, the ErrorBoundary around the
// control's handler shows it once and the program continues. Closing is not shown, because the program is shutting
// down.
class RuntimeError : public std::exception
{
public:
    enum class Kind { Overflow, TypeMismatch, SubscriptOutOfRange, File, DriverCall, NoAnswer, NoDriver, Closing };

    // detail: describes the failure and is included in the message; may be empty.
    explicit RuntimeError(Kind kind, const QString &detail = {});

    Kind kind() const { return m_kind; }
    // The detail passed to the constructor.
    const QString &detail() const { return m_detail; }
    // The error message for the user.
    const QString &message() const { return m_message; }
    const char *what() const noexcept override { return m_what.constData(); }

private:
    Kind m_kind;
    QString m_detail;
    QString m_message;
    QByteArray m_what;
};

} // namespace calvorn
