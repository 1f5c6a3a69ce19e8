// SPDX-License-Identifier: MIT
#include "server/acquisition_server.h"

#include "lpt_adaptor.h"
#include "pic_adaptor.h"
#include "protocol/object_paths.h"
#include "vna_adaptor.h"

#include <QDBusError>
#include <QDBusServer>

#include <cerrno>
#include <cstring>
#include <initializer_list>

namespace calvorn {

namespace {

constexpr int kPatienceMs = 10'000;

constexpr qsizetype kLongestSocket = 99; // bytes in its path; the D-Bus library rejects longer paths

// Returns true if a D-Bus address can contain this byte; other bytes are written as % and two hexadecimal digits.
bool standsForItself(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
           byte == '-' || byte == '_' || byte == '/' || byte == '.';
}

QByteArray addressOf(const QByteArray &socket)
{
    QByteArray address("unix:path=");
    for (const char byte : socket)
        address += standsForItself(byte) ? QByteArray(1, byte) : '%' + QByteArray(1, byte).toHex();
    return address;
}

} // namespace

AcquisitionServer::AcquisitionServer(const QString &settingsPath, QObject *parent)
    : QObject(parent)
    , m_connection(QString())
    , m_parallel(settingsPath)
    , m_serial(settingsPath)
    , m_lpt([this](int address) { return m_parallel.open(address); })
    , m_vna([this](int port, const LineSettings &line) { return m_serial.openVna(port, line); })
    , m_pic([this](int port, const LineSettings &line) { return m_serial.openPic(port, line); },
            [settingsPath] { return readPicSettings(settingsPath); })
{
    new LptAdaptor(&m_lpt);
    new VnaAdaptor(&m_vna);
    new PicAdaptor(&m_pic);
    m_patience.setSingleShot(true);
    m_patience.setInterval(kPatienceMs);
    connect(&m_patience, &QTimer::timeout, this, &AcquisitionServer::finished);
}

AcquisitionServer::~AcquisitionServer()
{
    close();
}

// Switches the generators off and stops the boards, whatever the reason for the shutdown. Sends no further events: the
// program detects that the server process has exited.
void AcquisitionServer::close()
{
    for (QObject *driver : std::initializer_list<QObject *>{&m_lpt, &m_vna, &m_pic})
        driver->blockSignals(true);
    m_lpt.ClosePort();
    m_vna.ClosePort();
    m_pic.ClosePort();
    m_folder.remove();
}

bool AcquisitionServer::listen()
{
    for (const QByteArray &parent : SweptFolder::parents()) {
        if (!listenIn(parent))
            continue;
        connect(m_server.get(), &QDBusServer::newConnection, this, &AcquisitionServer::onConnection);
        m_patience.start();
        return true;
    }
    return false;
}

// Stores only the reason for the first failure, because the first folder is the preferred one.
bool AcquisitionServer::listenIn(const QByteArray &parent)
{
    const QString reason = tryFolder(parent);
    if (!reason.isEmpty() && m_errorText.isEmpty())
        m_errorText = tr("cannot create a socket in %1: %2").arg(QString::fromLocal8Bit(parent), reason);
    return reason.isEmpty();
}

// Returns the reason for a failure; empty if the server is listening.
QString AcquisitionServer::tryFolder(const QByteArray &parent)
{
    if (!m_folder.make(parent))
        return QString::fromLocal8Bit(std::strerror(m_folder.error()));
    const QByteArray socket = m_folder.path() + "/socket";
    if (socket.size() > kLongestSocket) {
        m_folder.remove();
        return QString::fromLocal8Bit(std::strerror(ENAMETOOLONG));
    }
    m_server = std::make_unique<QDBusServer>(QString::fromLatin1(addressOf(socket)));
    if (m_server->isConnected())
        return {};
    m_folder.remove();
    return m_server->lastError().message();
}

QString AcquisitionServer::address() const
{
    return m_server ? m_server->address() : QString();
}

void AcquisitionServer::onConnection(const QDBusConnection &connection)
{
    if (m_connection.isConnected()) {
        QDBusConnection::disconnectFromPeer(connection.name());
        return;
    }
    m_patience.stop();
    m_connection = connection;
    m_connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                         QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                         SLOT(onDisconnected()));
    m_connection.registerObject(kLptPath, &m_lpt, QDBusConnection::ExportAdaptors);
    m_connection.registerObject(kPicPath, &m_pic, QDBusConnection::ExportAdaptors);
    m_connection.registerObject(kVnaPath, &m_vna, QDBusConnection::ExportAdaptors);
    // The program is connected, so the socket is no longer needed. Removing it now prevents other connections, and
    // nothing is left behind if this process is killed.
    m_folder.remove();
}

void AcquisitionServer::onDisconnected()
{
    emit finished();
}

} // namespace calvorn
