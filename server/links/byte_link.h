// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

namespace calvorn {

// A serial line as a driver sees it: bytes out, bytes in, and one clean end when the port is lost. When that comes to
// light in write(), waitForBytes() or discard(), lost() is emitted before the call returns. Used on the server's main
// thread only.
class ByteLink : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual bool isOpen() const = 0;

    // Queues the bytes; they leave as fast as the line takes them.
    virtual void write(const QByteArray &bytes) = 0;

    // Takes all bytes that have arrived.
    virtual QByteArray read() = 0;

    // Waits, delivering no events, until bytes can be read. False when the time runs out or the line is lost.
    virtual bool waitForBytes(int milliseconds) = 0;

    // Throws away what has arrived and what has not left yet.
    virtual void discard() = 0;

    virtual void close() = 0;

signals:
    void bytesArrived();
    // The device is gone or refuses to work; the line is closed. Emitted once. reason: one sentence for the user.
    void lost(const QString &reason);
};

} // namespace calvorn
