// SPDX-License-Identifier: MIT
#include "app/set_up_menu.h"

#include "setup/frm_calibra_adc.h"
#include "setup/frm_calibra_dds.h"
#include "setup/frm_calibra_level.h"
#include "setup/prepared_settings.h"

#include <QScreen>

namespace calvorn {

SetUpMenu::SetUpMenu(const Components &components, QWidget *window)
    : QObject(window)
    , m_components(components)
    , m_window(window)
{
    addAction("mnuConfig", tr("&Configuration"), tr("Interface, chips, outputs and ports"),
              &SetUpMenu::mnuConfig_Click);
    addAction("mnuCalibraDDS", tr("Calibrate &generator"), tr("Adjust the frequency with a frequency meter"),
              &SetUpMenu::mnuCalibraDDS_Click);
    addAction("mnuCalibraDetector", tr("Calibrate &detector"), tr("Adjust the detector with a known voltage"),
              &SetUpMenu::mnuCalibraDetector_Click);
    addAction("mnuCalibraLevel", tr("Calibrate &level"), tr("Determine the detector's law from known levels"),
              &SetUpMenu::mnuCalibraLevel_Click);
}

void SetUpMenu::addAction(const char *name, const QString &text, const QString &toolTip, void (SetUpMenu::*handler)())
{
    auto *action = new QAction(text, this);
    action->setObjectName(QString::fromLatin1(name));
    action->setToolTip(toolTip);
    m_components.boundary.connect(action, &QAction::triggered, this, name, [this, handler] { (this->*handler)(); });
    m_actions.append(action);
}

bool SetUpMenu::configure(const SetUpOpening &opening)
{
    if (!m_setUp)
        m_setUp = new FrmSetUp(m_components.configuration, m_components.messages, m_components.boundary, m_window);
    if (!m_window->isVisible()) {
        // At the first start, no window is visible yet on which to centre the dialog.
        const QRect free = m_window->screen()->availableGeometry();
        m_setUp->move(free.center() - QRect(QPoint(), m_setUp->sizeHint()).center());
    }
    m_setUp->setOpening(opening);
    return m_setUp->exec() == QDialog::Accepted;
}

bool SetUpMenu::configureAtFirstStart(bool noSettings)
{
    if (noSettings)
        writePreparedSections(m_components.configuration.iniPath);
    return configure({noSettings, {}});
}

void SetUpMenu::mnuConfig_Click()
{
    if (configure())
        emit configured();
}

void SetUpMenu::mnuCalibraDDS_Click()
{
    if (!m_calibraDds) {
        m_calibraDds = new FrmCalibraDDS(m_components.configuration, m_components.messages, m_components.log,
                                         m_components.boundary, m_window);
        connect(m_calibraDds, &FrmCalibraDDS::takesErrors, &m_components.events,
                &DriverEvents::setErrorsReportedElsewhere);
    }
    m_calibraDds->setDriver(m_driver);
    m_calibraDds->exec();
}

void SetUpMenu::mnuCalibraDetector_Click()
{
    if (!m_calibraAdc) {
        m_calibraAdc = new FrmCalibraADC(m_components.configuration, m_components.instrument.table(),
                                         m_components.messages, m_components.boundary, m_window);
    }
    m_calibraAdc->setDriver(m_driver);
    m_calibraAdc->exec();
}

void SetUpMenu::mnuCalibraLevel_Click()
{
    if (!m_calibraLevel)
        m_calibraLevel =
            new FrmCalibraLevel(m_components.configuration, m_components.instrument, m_components.boundary, m_window);
    m_calibraLevel->exec();
}

} // namespace calvorn
