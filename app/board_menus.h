// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"
#include "instrument/instrument.h"

#include <QActionGroup>
#include <QMenu>
#include <QObject>

namespace calvorn {

// Submenus for the board itself: the device that a simulated board measures, and the MiniVNA mode. A submenu is hidden
// if the configured hardware does not offer the choice.
class BoardMenus : public QObject
{
    Q_OBJECT

public:
    BoardMenus(const Configuration &configuration, Instrument &instrument, ErrorBoundary &boundary, QWidget *window);

    void addTo(QMenu &menu) const;

    // Shows the submenus that the instrument's driver supports.
    void followDriver();

    // Enables or disables the device submenu. Changing the device reopens the port, so the board must be idle.
    void setIdle(bool idle);

signals:
    // A message that describes the user's choice.
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
