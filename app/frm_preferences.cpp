// SPDX-License-Identifier: MIT
#include "app/frm_preferences.h"

#include "app/remote_control.h"
#include "core/common_functions.h"
#include "core/detector_calibration.h"
#include "core/number_text.h"
#include "core/scale_type.h"
#include "core/settings_table.h"
#include "widgets/option_choice.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <limits>

namespace calvorn {

FrmPreferences::FrmPreferences(Configuration &configuration, RemoteControl *remote, QWidget *parent)
    : QDialog(parent)
    , m_configuration(configuration)
    , m_remote(remote)
{
    setObjectName(QStringLiteral("frmPreferences"));
    setWindowTitle(tr("Preferences"));
    auto *column = new QVBoxLayout(this);
    auto *cursorFrame = new QGroupBox(tr("Cursor type"), this);
    cursorFrame->setObjectName(QStringLiteral("Frame1"));
    auto *cursorColumn = new QVBoxLayout(cursorFrame);
    const std::array<QString, 2> captions{tr("&Linked"), tr("&Floating cross")};
    const std::array<QString, 2> toolTips{tr("The read-out follows the mouse"),
                                          tr("A cross follows the curve under the mouse")};
    for (std::size_t i = 0; i < m_optCursor.size(); ++i) {
        auto *option = new QRadioButton(captions[i], cursorFrame);
        option->setObjectName(QStringLiteral("optCursor_%1").arg(i));
        option->setToolTip(toolTips[i]);
        cursorColumn->addWidget(option);
        m_optCursor[i] = option;
        connect(option, &QRadioButton::clicked, this,
                [this, i] { m_configuration.cursorMode = static_cast<std::int16_t>(i); });
    }
    auto *scaleFrame = new QGroupBox(this);
    scaleFrame->setObjectName(QStringLiteral("Frame2"));
    m_limitScales = new QCheckBox(scaleFrame);
    m_limitScales->setObjectName(QStringLiteral("chkScalaLogaritmica"));
    m_limitScales->setToolTip(
        tr("No effect. The number is the minimum level that the converter can distinguish from zero, in dB"));
    auto *note = new QLabel(tr("This box has no effect: the scales keep their full range."), scaleFrame);
    note->setObjectName(QStringLiteral("lblNoEffect"));
    note->setWordWrap(true);
    auto *scaleColumn = new QVBoxLayout(scaleFrame);
    scaleColumn->addWidget(m_limitScales);
    scaleColumn->addWidget(note);
    auto *exit = new QPushButton(tr("EXIT"), this);
    exit->setObjectName(QStringLiteral("cmdExit"));
    exit->setToolTip(tr("Close this window"));
    exit->setDefault(true);
    column->addWidget(cursorFrame);
    column->addWidget(scaleFrame);
    if (m_remote)
        column->addWidget(makeRemoteFrame());
    column->addWidget(exit, 0, Qt::AlignRight);
    connect(exit, &QPushButton::clicked, this, &QDialog::accept);
    connect(this, &QDialog::finished, this, &FrmPreferences::unload);
}

QWidget *FrmPreferences::makeRemoteFrame()
{
    auto *frame = new QGroupBox(tr("Remote control"), this);
    m_remoteOn = new QCheckBox(tr("Allow &SCPI clients on this computer"), frame);
    m_remoteOn->setObjectName(QStringLiteral("chkRemote"));
    m_remoteOn->setToolTip(tr("Let your own programs on this computer control the window"));
    m_remotePort = new QSpinBox(frame);
    m_remotePort->setObjectName(QStringLiteral("spinRemotePort"));
    m_remotePort->setToolTip(tr("TCP port for the clients"));
    m_remotePort->setAccessibleName(tr("TCP port"));
    m_remotePort->setRange(1, std::numeric_limits<quint16>::max());
    auto *port = new QLabel(tr("&Port"), frame);
    port->setBuddy(m_remotePort);
    m_remoteState = new QLabel(frame);
    m_remoteState->setObjectName(QStringLiteral("lblRemote"));
    m_remoteState->setWordWrap(true);
    auto *grid = new QGridLayout(frame);
    grid->addWidget(m_remoteOn, 0, 0, 1, 2);
    grid->addWidget(port, 1, 0);
    grid->addWidget(m_remotePort, 1, 1);
    grid->addWidget(m_remoteState, 2, 0, 1, 2);
    connect(m_remoteOn, &QCheckBox::clicked, this, &FrmPreferences::followRemote);
    connect(m_remotePort, &QSpinBox::editingFinished, this, &FrmPreferences::followRemote);
    return frame;
}

void FrmPreferences::loadRemote()
{
    m_remoteOn->setChecked(!m_remote->state().isEmpty());
    m_remotePort->setValue(RemoteControl::choiceIn(m_configuration.iniPath).port);
    m_remoteState->hide();
}

// If the port is already in use, remote control stays off and the dialog shows the reason.
void FrmPreferences::followRemote()
{
    const RemoteControl::Choice choice{m_remoteOn->isChecked(), static_cast<quint16>(m_remotePort->value())};
    if (choice == RemoteControl::choiceIn(m_configuration.iniPath) && choice.isOn == !m_remote->state().isEmpty())
        return;
    const QString refusal = m_remote->follow(choice);
    m_remoteState->setText(refusal);
    m_remoteState->setVisible(!refusal.isEmpty());
    m_remoteOn->setChecked(choice.isOn && refusal.isEmpty());
    if (!refusal.isEmpty())
        return;
    writeSetting(kRemoteOn, QString::number(choice.isOn ? 1 : 0), m_configuration.iniPath);
    writeSetting(kRemotePort, QString::number(choice.port), m_configuration.iniPath);
}

void FrmPreferences::showEvent(QShowEvent *event)
{
    load();
    // The note may wrap to a second line.
    resize(sizeHint().width(), layout()->totalHeightForWidth(sizeHint().width()));
    QDialog::showEvent(event);
}

void FrmPreferences::load()
{
    const std::int16_t mode = m_configuration.cursorMode;
    if (mode >= 0 && mode < static_cast<std::int16_t>(m_optCursor.size()))
        chooseOption(m_optCursor[static_cast<std::size_t>(mode)]);
    if (m_remote)
        loadRemote();
    // Use dB relative to 1 V, regardless of the display scale.
    const QScopedValueRollback scale(m_configuration.scaleType, kScaleDb1VHeadroom);
    const DetectorCalibration detector = detectorOf(m_configuration);
    const double lowest = detector.law.isRising() ? detector.volts(1.0) : detector.volts(detector.highestCount - 1);
    m_limitScales->setText(tr("Limit the Logaritmic Scales to the range of the ADC (%1)")
                               .arg(NumberText().fromDouble(voltsToDb(m_configuration, lowest))));
}

void FrmPreferences::unload()
{
    writeSetting(kCursorMode, settingText(NumberText(), m_configuration.cursorMode), m_configuration.iniPath);
    emit cursorChosen(m_configuration.cursorMode != 0);
}

} // namespace calvorn
