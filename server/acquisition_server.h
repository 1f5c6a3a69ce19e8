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

// The acquisition server of one program: a private D-Bus socket in a folder that only this user can enter, one
// connection, and one object for each driver (/aLPT, /aPIC, /aVNA).
class AcquisitionServer : public QObject
{
    Q_OBJECT

public:
    // settingsPath: the program's settings file, which is read whenever a port is opened.
    explicit AcquisitionServer(const QString &settingsPath, QObject *parent = nullptr);
    ~AcquisitionServer() override;

    // Opens the socket. Returns false, with the reason in errorText(), on failure.
    bool listen();
    QString errorText() const { return m_errorText; }

    // Closes the ports, which switches the generators off, and removes the socket's folder. Takes 0.3 s, or 2 s with a
    // board that no longer answers.
    void close();

    // The address that the program passes to QDBusConnection::connectToPeer().
    QString address() const;

signals:
    // The program has disconnected, or did not connect within 10 s.
    void finished();

private slots:
    void onDisconnected(); // connected by name: QtDBus delivers the bus library's own signals only to slots

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
