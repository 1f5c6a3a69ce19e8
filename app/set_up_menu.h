// SPDX-License-Identifier: MIT
#pragma once

#include "app/driver_events.h"
#include "core/log.h"
#include "instrument/instrument.h"
#include "setup/frm_set_up.h"

#include <QAction>
#include <QObject>

namespace calvorn {

class FrmCalibraADC;
class FrmCalibraDDS;
class FrmCalibraLevel;

// The "SetUp" menu entries for the configuration and the three calibrations. Each dialog is created on first use and
// reused.
class SetUpMenu : public QObject
{
    Q_OBJECT

public:
    struct Components
    {
        Configuration &configuration;
        Instrument &instrument;
        DriverEvents &events;
        Messages &messages;
        Log &log;
        ErrorBoundary &boundary;
    };

    SetUpMenu(const Components &components, QWidget *window);

    const QList<QAction *> &actions() const { return m_actions; }
    void setDriver(AcquisitionDriver *driver) { m_driver = driver; }

    // Opens the configuration. Returns true if it was written; the program must then exit.
    bool configure(const SetUpOpening &opening = {});
    // Does the same before anything has been configured. If there is no settings file, first creates one with the
    // prepared sections.
    bool configureAtFirstStart(bool noSettings);

signals:
    void configured();

private:
    void addAction(const char *name, const QString &text, const QString &toolTip, void (SetUpMenu::*handler)());
    void mnuConfig_Click();
    void mnuCalibraDDS_Click();
    void mnuCalibraDetector_Click();
    void mnuCalibraLevel_Click();

    Components m_components;
    QWidget *m_window;
    QList<QAction *> m_actions;
    AcquisitionDriver *m_driver = nullptr;
    FrmSetUp *m_setUp = nullptr;
    FrmCalibraDDS *m_calibraDds = nullptr;
    FrmCalibraADC *m_calibraAdc = nullptr;
    FrmCalibraLevel *m_calibraLevel = nullptr;
};

} // namespace calvorn
