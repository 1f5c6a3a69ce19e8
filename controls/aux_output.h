// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"
#include "instrument/aux_hardware.h"
#include "protocol/aux_settings.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QScrollBar>

#include <array>
#include <optional>

namespace calvorn {

class Profile;

// An auxiliary 8-bit output of the parallel-port board: eight check boxes, their total and, on Aux2, a potentiometer.
class AuxOutput : public QGroupBox
{
    Q_OBJECT

public:
    // number: 1 or 2. value: the configuration's field for this output; bit i belongs to box i.
    AuxOutput(std::int16_t number, std::int16_t &value, Configuration &configuration, AuxHardware hardware,
              ErrorBoundary &boundary, QWidget *parent = nullptr);

    // Set the output byte, as if its boxes had been clicked, or the potentiometer position. Return false if the output
    // or the potentiometer is disabled, or if there is no hardware.
    bool setValue(std::uint8_t value);
    bool setPosition(std::uint8_t position);

    // Reads captions, weights and ranges from section [Aux1] or [Aux2] and shows the enabled controls.
    void setUp();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Step
    {
        QCheckBox *box = nullptr;
        std::int16_t weight = 0;
        Qt::CheckState state = Qt::Unchecked; // of the box and of the output
    };

    void buildPotentiometer();
    void setUpSteps(const Profile &profile);
    void setUpPotentiometer();
    void setUpStep(int index, const QString &text);
    void boxChanged(int index);
    static void showStep(const Step &step);
    void advance(int index);
    void mouseDown(int index);
    void showTotal();
    void sendValue() const;
    void VScrollPot2_Change();
    const AuxKeys &keys() const;

    std::int16_t m_number;
    std::int16_t &m_value;
    Configuration &m_configuration;
    AuxHardware m_hardware;
    ErrorBoundary &m_boundary;
    std::array<Step, 8> m_steps;
    QLabel *m_total;
    QLabel *m_totalCaption;
    QLabel *m_disabledNote;
    QScrollBar *m_potentiometer = nullptr;
    QLabel *m_potentiometerCaption = nullptr;
    QLabel *m_potentiometerValue = nullptr;
    AuxSettings m_settings;
    std::optional<PotSettings> m_potSettings;
    bool m_busy = false;
};

} // namespace calvorn
