// SPDX-License-Identifier: MIT
#include "app/remote_control.h"

#include "core/setting_reader.h"
#include "remote/scpi_door.h"

#include <limits>

namespace calvorn {

RemoteControl::RemoteControl(const WindowRooms &rooms, Log &log, QObject *parent)
    : QObject(parent)
    , m_rooms(rooms)
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
    return {isOn, isPort ? static_cast<quint16>(port) : ScpiDoor::kUsualPort};
}

QString RemoteControl::follow(const Choice &choice)
{
    close();
    if (!choice.isOn)
        return {};
    auto target = std::make_unique<WindowTarget>(m_rooms);
    auto door = std::make_unique<ScpiDoor>(*target);
    connect(door.get(), &ScpiDoor::logged, this, [this](const QString &text) { m_log.writeLog(text); });
    connect(door.get(), &ScpiDoor::clientsChanged, this, &RemoteControl::stateChanged);
    const QString refusal = door->open(choice.port);
    if (!refusal.isEmpty())
        return refusal;
    m_target = std::move(target);
    m_door = std::move(door);
    emit stateChanged();
    return {};
}

void RemoteControl::close()
{
    if (!m_door)
        return;
    m_door.reset();
    m_target.reset();
    emit stateChanged();
}

QString RemoteControl::state() const
{
    if (!m_door)
        return {};
    return m_door->clients() > 0 ? tr("SCPI: port %1, clients: %2").arg(m_door->port()).arg(m_door->clients())
                                 : tr("SCPI: port %1").arg(m_door->port());
}

} // namespace calvorn
