// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

namespace calvorn {

// A serial line as a driver sees it: bytes out, bytes in, and a signal when the port is lost. If write(),
// waitForBytes() or discard() detects the loss, it emits lost() before it returns. Used only on the server's main
// thread.
class ByteLink : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual bool isOpen() const = 0;

    // Queues the bytes, which are sent as fast as the line allows.
    virtual void write(const QByteArray &bytes) = 0;

    // Returns all bytes received since the last call.
    virtual QByteArray read() = 0;

    // Waits until bytes can be read, without processing events. Returns false on a timeout or if the line is lost.
    virtual bool waitForBytes(int milliseconds) = 0;

    // Discards all received bytes that have not been read, and all queued bytes that have not been sent.
    virtual void discard() = 0;

    virtual void close() = 0;

signals:
    void bytesArrived();
    // Emitted once, when the device has disappeared or failed and the line is closed. reason: a message for the user.
    void lost(const QString &reason);
};

} // namespace calvorn
