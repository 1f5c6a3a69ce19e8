// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"
#include "instrument/instrument.h"

#include <QActionGroup>
#include <QMenu>
#include <QObject>

namespace calvorn {

// What is chosen at the board itself: the device that a simulated one measures, and the mode of the MiniVNA. Each is a
// menu inside another, and hidden where the configured hardware has no such choice.
class BoardMenus : public QObject
{
    Q_OBJECT

public:
    BoardMenus(const Configuration &configuration, Instrument &instrument, ErrorBoundary &boundary, QWidget *window);

    void addTo(QMenu &menu) const;

    // Shows what the instrument's driver has a choice of.
    void followDriver();

    // The port of a simulated board is opened again with the next device, which needs an idle board.
    void setIdle(bool idle);

signals:
    // What has been chosen, in words.
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
