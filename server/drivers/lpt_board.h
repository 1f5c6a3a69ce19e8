// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/sweep_speed.h"
#include "server/drivers/adc_reader.h"
#include "server/drivers/dds_loader.h"
#include "server/drivers/fair_mutex.h"
#include "server/drivers/i2c_master.h"
#include "server/links/opened_port.h"
#include "server/links/parallel_pins.h"
#include "server/links/serial_adc.h"
#include "server/synthesiser/dds_clock.h"

#include <QString>

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

namespace calvorn {

// Returns the time that a new frequency settles before the detector is sampled. Together with the loads and frames of
// 400 points, on a port with 1.25 us per access, this results in sweeps of about 0.1, 0.4 and 2 s. Never shorter than a
// conversion of the slowest converter.
std::chrono::nanoseconds settlingTime(SweepSpeed speed);

// The generator and detector board on a parallel port, with all its settings. Thread-safe: each call locks the port,
// and waiting calls are served in order, so the points of a sweep and the window's commands alternate. Without a port,
// the settings are stored until a port is attached. Calls that access the port may throw PortError; calls that compute
// a tuning word may throw FrequencyError or SettingError.
class LptBoard
{
public:
    LptBoard();
    ~LptBoard();

    // Takes over the port, sets every line to its idle level and shifts the stored bytes into the auxiliary outputs
    // once. An output that was never set gets its byte from OpenedPort.
    void attach(OpenedPort opened);
    void detach();
    bool isOpen() const;

    // When one of these values changes, the chip is restarted with the next frequency.
    void setChip(DdsChip chip);
    void setXtal(double hertz);
    void setMultiplier(int multiplier);

    void setConverter(const SerialAdcType &type);
    void setOffset(double hertz);
    void setSpeed(SweepSpeed speed);

    // Resets and starts the chip, which then generates the last frequency again, or nothing if no word can express that
    // frequency any more.
    void reset();

    void setFrequency(std::int64_t hertz);

    // Returns one sentence for the user when the frequency has a tuning word but is too high for the chip, which then
    // outputs an image or a weak and impure signal. Empty otherwise.
    QString remarkOn(std::int64_t hertz) const;

    // Switches the generator's output off before the port closes. Does nothing if the generator was never started.
    void powerDown();

    // Throws PortError when the port has gone, which makes the data since the last call invalid. Needs a port.
    void confirmPresent();

    // Throws SettingError when the chip does not support the configured multiplier. Loads nothing.
    void checkClock() const;

    // Measures one point of a sweep: sets the frequency, waits for the settling time and returns the detector count.
    // Needs a port.
    int measure(std::int64_t hertz);

    // Returns the detector count after a settling time, at the current frequency. Needs a port.
    int readDetector();

    // output: 1 or 2. Shifts and latches both outputs once.
    void setAux(std::uint8_t value, int output);

    // Returns false when a byte was not acknowledged. Needs a port.
    bool writeI2c(std::uint8_t control, std::uint8_t command, std::uint8_t data);

private:
    struct Hardware;

    void changeClock(const DdsClock &clock);
    void load(std::int64_t hertz);
    std::uint32_t wordOrNone(std::int64_t hertz) const;
    int settleAndRead();
    void shiftAux();

    mutable FairMutex m_lock;
    std::unique_ptr<Hardware> m_hardware;
    DdsClock m_clock;
    bool m_started = false;
    SerialAdcType m_converter = kTlc1549;
    double m_offsetHz = 0.0;
    std::int64_t m_hertz = 0;
    SweepSpeed m_speed = SweepSpeed::Standard;
    std::int64_t m_parkedHz = 0; // set outside a sweep
    std::array<std::optional<std::uint8_t>, 2> m_aux;
    std::array<std::uint8_t, 2> m_firstAux{}; // for outputs that were never set
};

} // namespace calvorn
