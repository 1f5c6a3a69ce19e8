// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/level_reader.h"
#include "widgets/real_spin_box.h"

#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include <deque>
#include <optional>

namespace calvorn {

// The level meter: shows the detector's current level in dBm, volts and watts into 50 ohms, corrected for the loss of
// an attenuator in front of the detector, and the minimum and maximum since the last reset.
class LevelBox : public QGroupBox
{
    Q_OBJECT

public:
    explicit LevelBox(const Configuration &configuration, QWidget *parent = nullptr);

    void show(const LevelReading &reading);

    // Shows why there are no readings, and clears the numbers unless they are held. An empty reason only removes the
    // note.
    void showPause(const QString &reason);

    bool isHeld() const { return m_hold->isChecked(); }

    double attenuator() const { return m_attenuator->value(); } // dB
    void setAttenuator(double decibels) { m_attenuator->setValue(decibels); }

signals:
    void held(bool on);

private:
    void buildNumbers();
    void buildButtons();
    void showLevel(double dBm);
    void showExtremes();
    // Returns the mean of the last readings; restarts it when the level changes.
    double smoothed(const LevelReading &reading);
    QString warningOf(double count) const;
    void cmdRelative_Click(bool on);
    void cmdExtremes_Click();

    const Configuration &m_configuration;
    QLabel *m_level;
    QLabel *m_volts;
    QLabel *m_watts;
    QLabel *m_relative;
    QLabel *m_extremes;
    QLabel *m_warning;
    QProgressBar *m_bar;
    QPushButton *m_hold;
    QPushButton *m_zero;
    RealSpinBox *m_attenuator;
    std::deque<double> m_recent;       // counts
    std::optional<double> m_last;      // dBm
    std::optional<double> m_reference; // dBm
    std::optional<double> m_lowest;    // dBm
    std::optional<double> m_highest;   // dBm
};

} // namespace calvorn
