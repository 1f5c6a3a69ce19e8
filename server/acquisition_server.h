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

// One program's acquisition server: a private D-Bus socket in a directory that only this user can enter, one
// connection, and behind it one object for each driver (/aLPT, /aPIC, /aVNA).
class AcquisitionServer : public QObject
{
    Q_OBJECT

public:
    // settingsPath: the program's settings file, read when a port is opened.
    explicit AcquisitionServer(const QString &settingsPath, QObject *parent = nullptr);
    ~AcquisitionServer() override;

    // Opens the socket. False, with the reason in errorText(), when that cannot be done.
    bool listen();
    QString errorText() const { return m_errorText; }

    // Closes the ports, which switches the generators off, and removes what lies in a folder. Takes 0.3 s, and
    // with a board that no longer answers 2 s.
    void close();

    // What the program passes to QDBusConnection::connectToPeer().
    QString address() const;

signals:
    // The program has gone, or did not come within 10 s.
    void finished();

private slots:
    void onDisconnected(); // by name: QtDBus delivers the bus library's own signals only to slots

private:
    void onConnection(const QDBusConnection &connection);
    bool listenIn(const QByteArray &parent);
    QString tryFolder(const QByteArray &parent);

    SweptFolder m_folder; // of the socket
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
