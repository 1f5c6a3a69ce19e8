// SPDX-License-Identifier: MIT
#pragma once

#include "app/window_target.h"
#include "core/log.h"
#include "protocol/setting_key.h"

#include <QObject>

#include <memory>

namespace calvorn {

class ScpiDoor;

// The window's door for SCPI clients, closed unless the user has opened it in the preferences.
class RemoteControl : public QObject
{
    Q_OBJECT

public:
    struct Choice
    {
        bool isOn = false;
        quint16 port = 0;

        bool operator==(const Choice &) const = default;
    };

    RemoteControl(const WindowRooms &rooms, Log &log, QObject *parent = nullptr);
    ~RemoteControl() override;

    // The choice of the settings file, or the usual one.
    static Choice choiceIn(const QString &settingsFile);

    // Opens or closes the door. Empty, or why it stays closed, in a sentence.
    QString follow(const Choice &choice);
    void close();

    // "SCPI: port 5025, 2 clients"; empty while the door is closed.
    QString state() const;

signals:
    void stateChanged();

private:
    WindowRooms m_rooms;
    Log &m_log;
    std::unique_ptr<WindowTarget> m_target; // both null while it is closed
    std::unique_ptr<ScpiDoor> m_door;
};

inline constexpr SettingKey kRemoteOn{"Remote", "On", "0"};
inline constexpr SettingKey kRemotePort{"Remote", "Port", "5025"};

} // namespace calvorn
