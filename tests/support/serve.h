// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusServer>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTextStream>

#include <unistd.h>

#include <functional>

namespace calvorn::test {

// Does the work of CalvornAsync around its drivers: prints the address of its socket, accepts one program after the
// other, and ends when standard input ends. "welcome" registers the objects on a connection. Returns the exit code.
inline int serve(const QCoreApplication &application, const std::function<void(QDBusConnection &)> &welcome)
{
    const QTemporaryDir folder;
    QDBusServer server(QStringLiteral("unix:path=") + folder.filePath(QStringLiteral("socket")));
    QDBusConnection client(QString{});
    QObject::connect(&server, &QDBusServer::newConnection, &application, [&](const QDBusConnection &connection) {
        client = connection;
        welcome(client);
    });
    const QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [] { QCoreApplication::exit(0); });
    QTextStream(stdout) << server.address() << Qt::endl;
    return QCoreApplication::exec();
}

} // namespace calvorn::test
