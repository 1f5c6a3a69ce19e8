// SPDX-License-Identifier: MIT
#include "app/board_menus.h"

#include "core/runtime_error.h"
#include "platform/profile_file.h"
#include "platform/serial_ports.h"
#include "protocol/simulator_keys.h"
#include "widgets/entry_box.h"

#include <array>

namespace calvorn {

BoardMenus::BoardMenus(const Configuration &configuration, Instrument &instrument, ErrorBoundary &boundary,
                       QWidget *window)
    : QObject(window)
    , m_configuration(configuration)
    , m_instrument(instrument)
    , m_boundary(boundary)
    , m_simulated(new QMenu(tr("&Simulated board"), window))
    , m_mode(new QMenu(tr("M&iniVNA mode"), window))
    , m_devices(new QActionGroup(this))
    , m_modes(new QActionGroup(this))
{
    m_simulated->menuAction()->setObjectName(QStringLiteral("mnuSimulated"));
    m_mode->menuAction()->setObjectName(QStringLiteral("mnuVnaMode"));
    buildDevices();
    connect(m_simulated, &QMenu::aboutToShow, this, &BoardMenus::checkDevice);
    connect(m_mode, &QMenu::aboutToShow, this, &BoardMenus::checkMode);
    followDriver();
}

void BoardMenus::buildDevices()
{
    const std::array<QString, kSimulatedDevices.size()> captions{tr("&Band-pass filter, 7.1 MHz"),
                                                                 tr("&Low-pass filter, 7 MHz"),
                                                                 tr("&Notch, 7 MHz"),
                                                                 tr("&Crystal, 9 MHz"),
                                                                 tr("&Antenna at a bridge, 7.05 MHz"),
                                                                 tr("&Through, a piece of cable"),
                                                                 tr("From a &file")};
    for (std::size_t i = 0; i < captions.size(); ++i) {
        const QString name = QString::fromLatin1(kSimulatedDevices[i]);
        QAction *action = m_devices->addAction(captions[i]);
        action->setObjectName(QStringLiteral("mnuSimulated_") + name);
        action->setData(name);
        action->setCheckable(true);
        const QString caption = QString(captions[i]).remove(u'&');
        m_boundary.connect(action, &QAction::triggered, this, "mnuSimulated_Click",
                           [this, name, caption] { mnuSimulated_Click(name, caption); });
    }
    m_simulated->addActions(m_devices->actions());
}

void BoardMenus::buildModes()
{
    const AcquisitionDriver *driver = m_instrument.driver();
    const QStringList captions = driver ? driver->modeCaptions() : QStringList();
    if (m_modes->actions().size() == captions.size())
        return;
    for (int i = 0; i < captions.size(); ++i) {
        QAction *action = m_modes->addAction(QStringLiteral("&%1  %2").arg(i + 1).arg(captions[i]));
        action->setObjectName(QStringLiteral("mnuVnaMode_%1").arg(i + 1));
        action->setCheckable(true);
        m_boundary.connect(action, &QAction::triggered, this, "mnuVnaMode_Click", [this, i] { mnuVnaMode_Click(i); });
    }
    m_mode->addActions(m_modes->actions());
}

void BoardMenus::addTo(QMenu &menu) const
{
    menu.addSeparator();
    for (QMenu *submenu : {m_simulated, m_mode}) {
        // Under Wayland, a popup must be a child of the popup that is already open.
        submenu->setParent(&menu, submenu->windowFlags());
        menu.addMenu(submenu);
    }
}

void BoardMenus::followDriver()
{
    buildModes();
    m_simulated->menuAction()->setVisible(isSimulated());
    m_mode->menuAction()->setVisible(!m_modes->actions().isEmpty());
}

void BoardMenus::setIdle(bool idle)
{
    m_simulated->menuAction()->setEnabled(idle);
}

bool BoardMenus::isSimulated() const
{
    const AcquisitionDriver *driver = m_instrument.driver();
    if (!driver)
        return false;
    return driver->kind().isOnParallelPort ? m_configuration.lptAddress == kSimulatedLptAddress
                                           : m_configuration.commPort == kSimulatedComPort;
}

// Checks the entry of the configured device. Like the server, treats an unknown name as the first device. The entry for
// a device from a file is shown only if the settings name a file.
void BoardMenus::checkDevice()
{
    const QString name = readTextOrDefault(m_configuration.iniPath, kSimulatedDevice).trimmed().toLower();
    const QList<QAction *> devices = m_devices->actions();
    devices.first()->setChecked(true);
    devices.last()->setVisible(!readText(m_configuration.iniPath, kSimulatedCurve).isEmpty());
    for (QAction *device : devices)
        if (device->data().toString() == name)
            device->setChecked(true);
}

void BoardMenus::checkMode()
{
    const AcquisitionDriver *driver = m_instrument.driver();
    const QList<QAction *> modes = m_modes->actions();
    for (int i = 0; i < modes.size(); ++i)
        if (driver && driver->modeCaptions().value(i) == driver->modeCaption())
            modes[i]->setChecked(true);
}

void BoardMenus::mnuSimulated_Click(const QString &name, const QString &caption)
{
    EntryBox::commitPending();
    if (!writeProfileString(m_configuration.iniPath, QString::fromLatin1(kSimulatedDevice.section),
                            QString::fromLatin1(kSimulatedDevice.name), name))
        throw RuntimeError(RuntimeError::Kind::File, m_configuration.iniPath);
    emit reported(tr("Simulated board: %1").arg(caption));
    // After a forced stop, a sweep may still be running; the device then takes effect when the port is next opened.
    if (!m_instrument.isSweeping())
        m_instrument.connectHardware();
}

void BoardMenus::mnuVnaMode_Click(int index)
{
    EntryBox::commitPending();
    AcquisitionDriver *driver = m_instrument.driver();
    driver->chooseMode(index);
    driver->sendMode();
}

} // namespace calvorn
