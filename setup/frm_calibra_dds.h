// SPDX-License-Identifier: MIT
#pragma once

#include "core/log.h"
#include "setup/calibration_dialog.h"

namespace calvorn {

// The calibration of the generator: the offset (Hz) that makes a frequency meter show the start frequency. It acts on
// the hardware at once where that can be; the record takes it on "Apply".
class FrmCalibraDDS : public CalibrationDialog
{
    Q_OBJECT

public:
    FrmCalibraDDS(Configuration &configuration, Messages &messages, Log &log, ErrorBoundary &boundary,
                  QWidget *parent = nullptr);

signals:
    // From now on this window tells the errors of the driver, or not any more.
    void takesErrors(bool takes);

protected:
    void load() override;
    void unload() override;
    void offsetChanged() override;
    void nudged(int direction) override;
    void cmdApply_Click() override;

private:
    void send();
    void aErrore(std::int16_t tipoErrore, const QString &descrizione);

    Log &m_log;
    QLabel *m_start;
    QMetaObject::Connection m_errors;
    AlertQueue m_alerts;
};

} // namespace calvorn
