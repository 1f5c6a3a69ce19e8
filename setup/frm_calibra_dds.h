// SPDX-License-Identifier: MIT
#pragma once

#include "core/log.h"
#include "setup/calibration_dialog.h"

namespace calvorn {

// Calibrates the generator: the user finds the offset (Hz) at which a frequency meter shows the start frequency. If the
// interface supports this, the trial offset is sent to the hardware immediately. "Apply" stores it in the
// configuration.
class FrmCalibraDDS : public CalibrationDialog
{
    Q_OBJECT

public:
    FrmCalibraDDS(Configuration &configuration, Messages &messages, Log &log, ErrorBoundary &boundary,
                  QWidget *parent = nullptr);

signals:
    // This dialog starts (true) or stops (false) reporting the driver's errors.
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
