// SPDX-License-Identifier: MIT
#pragma once

#include "setup/calibration_dialog.h"

#include <QTimer>

namespace calvorn {

// Calibrates the detector: the user finds the offset (volts) at which the detector shows a known voltage. "Apply"
// stores the offset in the configuration and recomputes the table's amplitudes from the counts.
class FrmCalibraADC : public CalibrationDialog
{
    Q_OBJECT

public:
    FrmCalibraADC(Configuration &configuration, SweepTable &table, Messages &messages, ErrorBoundary &boundary,
                  QWidget *parent = nullptr);

protected:
    void load() override;
    void unload() override;
    void numberTyped() override;
    void nudged(int direction) override;
    void cmdApply_Click() override;
    // Typing a decimal separator in front of the existing one moves the cursor past it.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void TimerDetector_Timer();
    void showOffset(double volts);

    SweepTable &m_table;
    QLabel *m_volts;
    QLabel *m_hint;
    QTimer m_timer;
};

} // namespace calvorn
