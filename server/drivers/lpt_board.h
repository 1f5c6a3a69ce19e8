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

// Returns the settling time between setting a frequency and sampling the detector. On a port with 1.25 us per access,
// a sweep, including loading and reading 400 points, takes about 0.1, 0.4 or 2 s. The settling time is never shorter
// than the longest conversion time of any converter.
std::chrono::nanoseconds settlingTime(SweepSpeed speed);

// The generator and detector board on a parallel port, with all its settings. Thread-safe: each call locks the port,
// and blocked calls are served in order, so sweep points and commands from the window alternate. Without a port, the
// settings are stored until a port is attached. Calls that access the port may throw PortError; calls that compute a
// tuning word may throw FrequencyError or SettingError.
class LptBoard
{
public:
    LptBoard();
    ~LptBoard();

    // Takes ownership of the port, sets every line to its idle level and shifts the stored bytes into the auxiliary
    // outputs once. For an output that was never set, OpenedPort supplies the byte.
    void attach(OpenedPort opened);
    void detach();
    bool isOpen() const;

    // Changing any of these values restarts the chip when the next frequency is set.
    void setChip(DdsChip chip);
    void setXtal(double hertz);
    void setMultiplier(int multiplier);

    void setConverter(const SerialAdcType &type);
    void setOffset(double hertz);
    void setSpeed(SweepSpeed speed);

    // Resets and starts the chip, which then generates the last frequency again, or nothing if that frequency no longer
    // has a tuning word.
    void reset();

    void setFrequency(std::int64_t hertz);

    // Returns a message for the user if the frequency has a tuning word but is too high, so that the chip outputs an
    // image or a weak and impure signal; otherwise an empty string.
    QString remarkOn(std::int64_t hertz) const;

    // Switches the generator output off before the port is closed. Does nothing if the generator was never started.
    void powerDown();

    // Throws PortError if the port has disappeared; all data read since the last call is then invalid. Requires a port.
    void confirmPresent();

    // Throws SettingError if the chip does not support the configured multiplier. Does not load the chip.
    void checkClock() const;

    // Measures one point of a sweep: sets the frequency, waits for the settling time and returns the detector count.
    // Requires a port.
    int measure(std::int64_t hertz);

    // Waits for the settling time and returns the detector count at the current frequency. Requires a port.
    int readDetector();

    // output: 1 or 2. Shifts and latches both outputs once.
    void setAux(std::uint8_t value, int output);

    // Returns false if a byte was not acknowledged. Requires a port.
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
    std::int64_t m_parkedHz = 0; // the frequency set outside sweeps
    std::array<std::optional<std::uint8_t>, 2> m_aux;
    std::array<std::uint8_t, 2> m_firstAux{}; // for outputs that were never set
};

} // namespace calvorn
