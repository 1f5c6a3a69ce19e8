// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QDialog>
#include <QLabel>

namespace calvorn {

// The About window, which describes the configured hardware. A click on its background closes it.
class FrmAbout : public QDialog
{
    Q_OBJECT

public:
    explicit FrmAbout(const Configuration &configuration, QWidget *parent = nullptr);

    // Return the three descriptions; empty strings if the interface has none.
    static QString interfaceText(const Configuration &configuration);
    static QString generatorText(const Configuration &configuration);
    static QString detectorText(const Configuration &configuration);

protected:
    void showEvent(QShowEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    const Configuration &m_configuration;
    QLabel *m_interface = nullptr;
    QLabel *m_generator = nullptr;
    QLabel *m_detector = nullptr;
};

} // namespace calvorn
