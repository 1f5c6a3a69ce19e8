// SPDX-License-Identifier: MIT
#include "core/runtime_error.h"

#include <QCoreApplication>

namespace calvorn {

namespace {

QString nameOf(RuntimeError::Kind kind)
{
    switch (kind) {
    case RuntimeError::Kind::Overflow:
        return QCoreApplication::translate("RuntimeError", "Overflow");
    case RuntimeError::Kind::TypeMismatch:
        return QCoreApplication::translate("RuntimeError", "Type mismatch");
    case RuntimeError::Kind::SubscriptOutOfRange:
        return QCoreApplication::translate("RuntimeError", "Subscript out of range");
    case RuntimeError::Kind::File:
        return QCoreApplication::translate("RuntimeError", "File error");
    case RuntimeError::Kind::DriverCall:
    case RuntimeError::Kind::NoAnswer:
        return QCoreApplication::translate("RuntimeError", "The acquisition server did not carry out a command");
    case RuntimeError::Kind::NoDriver:
        return QCoreApplication::translate("RuntimeError", "There is no driver for this interface");
    case RuntimeError::Kind::Closing:
        return QStringLiteral("The program is closing"); // never shown
    }
    return {};
}

} // namespace

RuntimeError::RuntimeError(Kind kind, const QString &detail)
    : m_kind(kind)
    , m_detail(detail)
    , m_message(detail.isEmpty() ? nameOf(kind) + u'.' : nameOf(kind) + QStringLiteral(": ") + detail)
    , m_what(m_message.toUtf8())
{
}

} // namespace calvorn
