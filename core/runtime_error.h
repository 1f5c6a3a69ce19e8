// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <exception>

namespace calvorn {

// A run-time error ends the procedure in which it happens. One that no procedure handles ends at the boundary of
// the control's handler (ErrorBoundary), is shown once, and the program goes on. Closing is not shown: the program
// ends.
class RuntimeError : public std::exception
{
public:
    enum class Kind { Overflow, TypeMismatch, SubscriptOutOfRange, File, DriverCall, NoAnswer, NoDriver, Closing };

    // detail: what exactly failed, for the reader of the message; may be empty.
    explicit RuntimeError(Kind kind, const QString &detail = {});

    Kind kind() const { return m_kind; }
    // What exactly failed, as it was given.
    const QString &detail() const { return m_detail; }
    // One sentence for the user.
    const QString &message() const { return m_message; }
    const char *what() const noexcept override { return m_what.constData(); }

private:
    Kind m_kind;
    QString m_detail;
    QString m_message;
    QByteArray m_what;
};

} // namespace calvorn
