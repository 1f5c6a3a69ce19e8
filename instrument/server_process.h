// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QProcess>

namespace calvorn {

// Runs the acquisition server, CalvornAsync, as a child process and manages the private connection to it.
//
// The server writes its socket address to its standard output. It switches its generators off and exits when the
// connection or its standard input closes, or when this process exits for any reason, so no server is ever left
// running.
class ServerProcess : public QObject
{
    Q_OBJECT

public:
    // program: full path of the server's executable. settingsFile: the settings that the server reads; the default is
    // the file beside the server.
    explicit ServerProcess(QString program, const QString &settingsFile = {}, QObject *parent = nullptr);
    ~ServerProcess() override;

    // Starts the process without waiting for it, so that both programs start up in parallel.
    void launch();

    // Starts the server if necessary and connects to it. Throws RuntimeError(DriverCall) if the server does not start.
    void connectToServer();

    bool isConnected() const { return m_connected; }
    QDBusConnection connection() const { return QDBusConnection(m_connectionName); }

    // Terminates a server that no longer answers; ended() follows. Sends SIGTERM, then kills the server if it is still
    // running after this time. Blocks meanwhile.
    void kill(int patienceMs);

    // Stops the server at shutdown: closes the connection and waits for the process to exit. Does not emit ended().
    void stop();

signals:
    // The server has died or has been killed.
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
