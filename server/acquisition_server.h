// SPDX-License-Identifier: MIT
#pragma once

#include "platform/swept_folder.h"
#include "server/drivers/lpt_driver.h"
#include "server/drivers/parallel_opener.h"
#include "server/drivers/pic_driver.h"
#include "server/drivers/serial_opener.h"
#include "server/drivers/vna_driver.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>

class QDBusServer;

namespace calvorn {

// The acquisition server for one program: a private D-Bus socket in a folder that only this user can enter, one
// connection, and one object for each driver (/aLPT, /aPIC, /aVNA).
class AcquisitionServer : public QObject
{
    Q_OBJECT

public:
    // settingsPath: the program's settings file, read whenever a port is opened.
    explicit AcquisitionServer(const QString &settingsPath, QObject *parent = nullptr);
    ~AcquisitionServer() override;

    // Opens the socket. On failure, returns false; errorText() then returns the reason.
    bool listen();
    QString errorText() const { return m_errorText; }

    // Switches the generators off, closes the ports and removes the socket's folder. Takes 0.3 s, or 2 s if a board no
    // longer responds.
    void close();

    // Returns the address for the program to pass to QDBusConnection::connectToPeer().
    QString address() const;

signals:
    // Emitted when the program has disconnected, or has failed to connect within 10 s.
    void finished();

private slots:
    void onDisconnected(); // connected by name, because QtDBus delivers the D-Bus library's own signals only to slots

private:
    void onConnection(const QDBusConnection &connection);
    bool listenIn(const QByteArray &parent);
    QString tryFolder(const QByteArray &parent);

    SweptFolder m_folder; // contains the socket
    std::unique_ptr<QDBusServer> m_server;
    QDBusConnection m_connection;
    QTimer m_patience;
    QString m_errorText;
    ParallelOpener m_parallel;
    SerialOpener m_serial;
    LptDriver m_lpt;
    VnaDriver m_vna;
    PicDriver m_pic;
};

} // namespace calvorn
