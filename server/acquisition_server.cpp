// SPDX-License-Identifier: MIT
#include "server/acquisition_server.h"

#include "lpt_adaptor.h"
#include "pic_adaptor.h"
#include "vna_adaptor.h"

#include <QDBusError>
#include <QDBusServer>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <initializer_list>

namespace calvorn {

namespace {

constexpr int kPatienceMs = 10'000;

const QString kLptPath = QStringLiteral("/aLPT");
const QString kPicPath = QStringLiteral("/aPIC");
const QString kVnaPath = QStringLiteral("/aVNA");
const QString kSocketName = QStringLiteral("socket");

// The user's own run-time directory where there is one: it is in memory, and emptied at log-out.
QString socketParent()
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return QFileInfo(runtime).isWritable() ? runtime : QDir::tempPath();
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
            [settingsPath] { return readConfiguredClock(settingsPath); })
{
    new LptAdaptor(&m_lpt);
    new VnaAdaptor(&m_vna);
    new PicAdaptor(&m_pic);
    m_patience.setSingleShot(true);
    m_patience.setInterval(kPatienceMs);
    connect(&m_patience, &QTimer::timeout, this, &AcquisitionServer::finished);
}

// However the server has been asked to end: no generator stays on and no board sweeps for nobody. The program is told
// nothing more; it sees the process go.
AcquisitionServer::~AcquisitionServer()
{
    for (QObject *driver : std::initializer_list<QObject *>{&m_lpt, &m_vna, &m_pic})
        driver->blockSignals(true);
    m_lpt.ClosePort();
    m_vna.ClosePort();
    m_pic.ClosePort();
    removeDirectory();
}

bool AcquisitionServer::listen()
{
    // QTemporaryDir makes the directory with mode 0700.
    m_directory = std::make_unique<QTemporaryDir>(socketParent() + QStringLiteral("/calvorn-XXXXXX"));
    if (!m_directory->isValid()) {
        m_errorText = m_directory->errorString();
        return false;
    }
    m_server = std::make_unique<QDBusServer>(QStringLiteral("unix:path=") + m_directory->filePath(kSocketName));
    if (!m_server->isConnected()) {
        m_errorText = m_server->lastError().message();
        return false;
    }
    connect(m_server.get(), &QDBusServer::newConnection, this, &AcquisitionServer::onConnection);
    m_patience.start();
    return true;
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
    // One program, one connection: nobody else can find the socket, and nothing stays behind even if this
    // process is killed.
    removeDirectory();
}

// The socket goes first and by name: the bus library may be removing it in its own thread, and a file that
// vanishes under QTemporaryDir::remove() makes it leave the directory.
void AcquisitionServer::removeDirectory()
{
    if (!m_directory)
        return;
    QFile::remove(m_directory->filePath(kSocketName));
    m_directory->remove();
}

void AcquisitionServer::onDisconnected()
{
    emit finished();
}

} // namespace calvorn
