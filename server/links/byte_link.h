// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

namespace calvorn {

// A serial line as a driver sees it: bytes out, bytes in, and one signal when the port is lost. If write(),
// waitForBytes() or discard() detects the loss, it emits lost() before it returns. Used only on the server's main
// thread.
class ByteLink : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual bool isOpen() const = 0;

    // Queues the bytes; they are sent as fast as the line allows.
    virtual void write(const QByteArray &bytes) = 0;

    // Returns all bytes that have arrived.
    virtual QByteArray read() = 0;

    // Waits until bytes can be read, without delivering events. Returns false on a timeout or when the line is lost.
    virtual bool waitForBytes(int milliseconds) = 0;

    // Discards the bytes that have arrived and those that have not been sent yet.
    virtual void discard() = 0;

    virtual void close() = 0;

signals:
    void bytesArrived();
    // The device is gone or does not work, and the line is closed. Emitted once. reason: one sentence for the user.
    void lost(const QString &reason);
};

} // namespace calvorn
