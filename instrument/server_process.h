// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QProcess>

namespace calvorn {

// The acquisition server CalvornAsync as a child of this program, and the private connection to it.
//
// The server writes the address of its socket on its standard output. It ends, and switches its generators off, when
// the connection or its standard input closes, and when this process dies, however it dies; so none is ever left
// behind.
class ServerProcess : public QObject
{
    Q_OBJECT

public:
    // program: full path of the server's executable. settingsFile: where the server reads what concerns it; without
    // one, beside its own file.
    explicit ServerProcess(QString program, const QString &settingsFile = {}, QObject *parent = nullptr);
    ~ServerProcess() override;

    // Starts the process without waiting for it, so that its start-up overlaps with the caller's own.
    void launch();

    // Launches where necessary and connects. RuntimeError(DriverCall) when the server does not come up.
    void connectToServer();

    bool isConnected() const { return m_connected; }
    QDBusConnection connection() const { return QDBusConnection(m_connectionName); }

    // Ends a server that no longer answers; ended() follows. It is asked first, and killed when it has not closed its
    // ports by then. Blocks meanwhile.
    void kill(int patienceMs);

    // The orderly end, at shutdown: closes the connection and waits for the process. ended() is not emitted.
    void stop();

signals:
    // The server has died or was killed.
    void ended();

private:
    QByteArray readAddress();
    [[noreturn]] void notStarted(const QString &reason);
    void processFinished();
    void endWithin(int milliseconds);
    void disconnectFromServer();

    QString m_program;
    QStringList m_arguments;
    QProcess m_process;
    QString m_connectionName;
    bool m_connected = false;
};

} // namespace calvorn
