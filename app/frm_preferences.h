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

// The preferences: the type of cursor, and the door for remote control. A choice counts at once; the cursor is written
// when the window closes.
class FrmPreferences : public QDialog
{
    Q_OBJECT

public:
    // remote: outlives it; null: there is none to choose.
    explicit FrmPreferences(Configuration &configuration, RemoteControl *remote = nullptr, QWidget *parent = nullptr);

signals:
    // The window has closed; whether the cursor lines are to be seen.
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
