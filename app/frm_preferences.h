// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QCheckBox>
#include <QDialog>
#include <QRadioButton>

#include <array>

namespace calvorn {

// The preferences: the type of cursor. A choice counts at once and is written when the window closes.
class FrmPreferences : public QDialog
{
    Q_OBJECT

public:
    explicit FrmPreferences(Configuration &configuration, QWidget *parent = nullptr);

signals:
    // The window has closed; whether the cursor lines are to be seen.
    void cursorChosen(bool visible);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void load();
    void unload();

    Configuration &m_configuration;
    std::array<QRadioButton *, 2> m_optCursor{};
    QCheckBox *m_limitScales = nullptr;
};

} // namespace calvorn
