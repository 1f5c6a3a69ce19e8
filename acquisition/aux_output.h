// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "core/error_boundary.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QScrollBar>

#include <array>
#include <functional>

namespace calvorn {

// What an auxiliary output does to the hardware. A write that fails throws RuntimeError; it is left to failed(), and
// not told to the user.
struct AuxHardware
{
    std::function<void(std::uint8_t value, std::int16_t output)> setAux;
    // control, command, data; false when nothing acknowledged.
    std::function<bool(std::uint8_t, std::uint8_t, std::uint8_t)> writeI2c;
    std::function<void(const QString &reason)> failed;
};

// One auxiliary 8-bit output of the parallel-port board: eight boxes, their total and, on Aux2, a potentiometer.
class AuxOutput : public QGroupBox
{
    Q_OBJECT

public:
    // number: 1 or 2. value: the record's field of this output; bit i is box i.
    AuxOutput(std::int16_t number, std::int16_t &value, Configuration &configuration, AuxHardware hardware,
              ErrorBoundary &boundary, QWidget *parent = nullptr);

    // Reads captions, weights and ranges from the section "Aux1" or "Aux2" and shows what is enabled.
    void setUp();

    // Sends the stored value, and for Aux2 the stored potentiometer position, to freshly configured hardware.
    void restore();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Step
    {
        QCheckBox *box = nullptr;
        std::int16_t weight = 0;
    };

    void buildPotentiometer();
    void setUpSteps();
    void setUpPotentiometer();
    void setUpStep(int index);
    void mouseDown(int index);
    void showTotal();
    void sendValue() const;
    void VScrollPot2_Change();
    QString readOwn(const char *key) const;
    double readOwnNumber(const char *key) const;
    // The word True or a number other than 0; no text is an error.
    bool readOwnBoolean(const char *key) const;

    std::int16_t m_number;
    std::int16_t &m_value;
    Configuration &m_configuration;
    AuxHardware m_hardware;
    ErrorBoundary &m_boundary;
    std::array<Step, 8> m_steps;
    QLabel *m_total;
    QLabel *m_disabledNote;
    QScrollBar *m_potentiometer = nullptr;
    QLabel *m_potentiometerValue = nullptr;
    bool m_enabled = false;
    bool m_inverse = false;
    bool m_busy = false;
    bool m_hasPotentiometer = false;
    std::uint8_t m_i2cControl = 0;
    std::uint8_t m_i2cCommand = 0;
};

} // namespace calvorn
