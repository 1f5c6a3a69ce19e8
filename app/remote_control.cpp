// SPDX-License-Identifier: MIT
#include "app/remote_control.h"

#include "core/setting_reader.h"
#include "remote/scpi_server.h"

#include <limits>

namespace calvorn {

RemoteControl::RemoteControl(const WindowComponents &components, Log &log, QObject *parent)
    : QObject(parent)
    , m_components(components)
    , m_log(log)
{
}

// Disconnects its signals first, because the receivers may already be destroyed.
RemoteControl::~RemoteControl()
{
    disconnect();
    close();
}

RemoteControl::Choice RemoteControl::choiceIn(const QString &settingsFile)
{
    SettingReader reader(settingsFile, SettingReader::Defaults::KeepOut);
    bool isOn = false;
    std::int32_t port = 0;
    reader.read(isOn, kRemoteOn);
    reader.read(port, kRemotePort);
    const bool isPort = port > 0 && port <= std::numeric_limits<quint16>::max();
    return {isOn, isPort ? static_cast<quint16>(port) : ScpiServer::kUsualPort};
}

QString RemoteControl::follow(const Choice &choice)
{
    close();
    if (!choice.isOn)
        return {};
    auto target = std::make_unique<WindowTarget>(m_components);
    auto server = std::make_unique<ScpiServer>(*target);
    connect(server.get(), &ScpiServer::logged, this, [this](const QString &text) { m_log.writeLog(text); });
    connect(server.get(), &ScpiServer::clientsChanged, this, &RemoteControl::stateChanged);
    const QString refusal = server->open(choice.port);
    if (!refusal.isEmpty())
        return refusal;
    m_target = std::move(target);
    m_server = std::move(server);
    emit stateChanged();
    return {};
}

void RemoteControl::close()
{
    if (!m_server)
        return;
    m_server.reset();
    m_target.reset();
    emit stateChanged();
}

QString RemoteControl::state() const
{
    if (!m_server)
        return {};
    return m_server->clients() > 0 ? tr("SCPI: port %1, clients: %2").arg(m_server->port()).arg(m_server->clients())
                                   : tr("SCPI: port %1").arg(m_server->port());
}

} // namespace calvorn
