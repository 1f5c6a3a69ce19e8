// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"
#include "instrument/instrument.h"

#include <QActionGroup>
#include <QMenu>
#include <QObject>

namespace calvorn {

// Choices about the board itself: the device that a simulated board measures, and the mode of the MiniVNA. Each is a
// submenu, hidden if the configured hardware has no such choice.
class BoardMenus : public QObject
{
    Q_OBJECT

public:
    BoardMenus(const Configuration &configuration, Instrument &instrument, ErrorBoundary &boundary, QWidget *window);

    void addTo(QMenu &menu) const;

    // Shows the menus for which the instrument's driver has a choice.
    void followDriver();

    // Enables the choice of a simulated device, which reopens the port and therefore needs an idle board.
    void setIdle(bool idle);

signals:
    // The user's choice, in words.
    void reported(const QString &text);

private:
    void buildDevices();
    void buildModes();
    void checkDevice();
    void checkMode();
    void mnuSimulated_Click(const QString &name, const QString &caption);
    void mnuVnaMode_Click(int index);
    bool isSimulated() const;

    const Configuration &m_configuration;
    Instrument &m_instrument;
    ErrorBoundary &m_boundary;
    QMenu *m_simulated;
    QMenu *m_mode;
    QActionGroup *m_devices;
    QActionGroup *m_modes;
};

} // namespace calvorn
