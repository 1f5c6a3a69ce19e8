// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"
#include "core/level_calibration.h"
#include "instrument/level_reader.h"
#include "setup/level_curve.h"
#include "widgets/real_spin_box.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>

namespace calvorn {

// Calibrates the level: the user applies known levels one after the other, and the dialog measures each of them and
// computes the detector law. "Apply" stores the law in the configuration and the settings file, and recomputes the
// table's amplitudes. Nothing changes before that.
class FrmCalibraLevel : public QDialog
{
    Q_OBJECT

public:
    // Number of readings for each point.
    static constexpr int kReadings = 64;

    FrmCalibraLevel(Configuration &configuration, Instrument &instrument, ErrorBoundary &boundary,
                    QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QLayout *buildEntries();
    QLayout *buildPoints();
    QLayout *buildButtons();
    void load();
    void cmdMeasure_Click();
    void cmdRemove_Click();
    void cmdApply_Click();
    void take(const LevelReading &reading);
    void measuringEnded(const QString &message);
    void showPoints();
    std::optional<DetectorLaw> law() const;
    QString lawText(const std::optional<DetectorLaw> &law) const;

    Configuration &m_configuration;
    Instrument &m_instrument;
    ErrorBoundary &m_boundary;
    LevelReader m_reader;
    std::vector<CalibrationPoint> m_points; // sorted by level, highest first
    double m_measured = 0.0;                // dBm, the level being measured
    RealSpinBox *m_known;
    RealSpinBox *m_attenuator;
    QPushButton *m_measure;
    QPushButton *m_remove = nullptr;
    QPushButton *m_apply = nullptr;
    QTableWidget *m_list = nullptr;
    QRadioButton *m_log = nullptr;
    QRadioButton *m_table = nullptr;
    LevelCurve *m_curve = nullptr;
    QLabel *m_result = nullptr;
    QLabel *m_message = nullptr;
};

} // namespace calvorn
