// SPDX-License-Identifier: MIT
#pragma once

#include "app/window_target.h"
#include "core/log.h"
#include "protocol/setting_key.h"

#include <QObject>

#include <memory>

namespace calvorn {

class ScpiServer;

// Remote control of the window by SCPI clients; off unless the user has switched it on in the preferences.
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

    RemoteControl(const WindowComponents &components, Log &log, QObject *parent = nullptr);
    ~RemoteControl() override;

    // Returns the choice in the settings file, or the default.
    static Choice choiceIn(const QString &settingsFile);

    // Opens or closes the TCP port. Returns an error message if the port cannot be opened, otherwise an empty string.
    QString follow(const Choice &choice);
    void close();

    // "SCPI: port 5025, clients: 2"; empty while remote control is off.
    QString state() const;

signals:
    void stateChanged();

private:
    WindowComponents m_components;
    Log &m_log;
    std::unique_ptr<WindowTarget> m_target; // both null while remote control is off
    std::unique_ptr<ScpiServer> m_server;
};

inline constexpr SettingKey kRemoteOn{"Remote", "On", "0"};
inline constexpr SettingKey kRemotePort{"Remote", "Port", "5025"};

} // namespace calvorn
