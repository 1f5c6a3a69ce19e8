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

// Does what CalvornAsync does around its drivers: prints its socket address, accepts one program after another, and
// exits when standard input is closed. "welcome" registers the objects on a connection. Returns the exit code.
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
