// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QRadioButton>
#include <QSpinBox>

#include <array>

namespace calvorn {

class RemoteControl;

// The preferences dialog: cursor type and remote control. A choice takes effect immediately; the cursor type is saved
// when the dialog closes.
class FrmPreferences : public QDialog
{
    Q_OBJECT

public:
    // remote: must outlive the window; null if there is no remote control.
    explicit FrmPreferences(Configuration &configuration, RemoteControl *remote = nullptr, QWidget *parent = nullptr);

signals:
    // The window has closed. visible: whether to show the cursor lines.
    void cursorChosen(bool visible);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void load();
    void unload();
    QWidget *makeRemoteFrame();
    void loadRemote();
    void followRemote();

    Configuration &m_configuration;
    RemoteControl *m_remote;
    std::array<QRadioButton *, 2> m_optCursor{};
    QCheckBox *m_limitScales = nullptr;
    QCheckBox *m_remoteOn = nullptr;
    QSpinBox *m_remotePort = nullptr;
    QLabel *m_remoteState = nullptr;
};

} // namespace calvorn
