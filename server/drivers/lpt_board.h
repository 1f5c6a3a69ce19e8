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

// How long a new frequency is left to settle before the detector is sampled. With the loads and frames of
// 400 points on a port with 1.25 us an access this makes sweeps of about 0.1, 0.4 and 2 s. Never shorter than a
// conversion of the slowest converter.
std::chrono::nanoseconds settlingTime(SweepSpeed speed);

// The generator and detector board on a parallel port, with all that it has been told. Thread-safe: each call is
// one undivided use of the port, in the order of asking, so a sweep's points and the window's commands alternate.
// Without a port the values are kept for the time when there is one. Calls that reach the port may throw
// PortError, those that make a tuning word FrequencyError or SettingError.
class LptBoard
{
public:
    LptBoard();
    ~LptBoard();

    // Takes the port over, brings every line to rest and puts the remembered bytes on the auxiliary outputs with one
    // shift; those that come with the port where none have been set.
    void attach(OpenedPort opened);
    void detach();
    bool isOpen() const;

    // The chip is started again with its next frequency when one of these changes.
    void setChip(DdsChip chip);
    void setXtal(double hertz);
    void setMultiplier(int multiplier);

    void setConverter(const SerialAdcType &type);
    void setOffset(double hertz);
    void setSpeed(SweepSpeed speed);

    // Reset and start-up of the chip; it then makes the last frequency again, or nothing when that one cannot be
    // expressed any more.
    void reset();

    void setFrequency(std::int64_t hertz);

    // One sentence when this frequency has a tuning word, but is more than the chip is good for: its image, or a
    // weak and impure signal, is what comes out. Empty otherwise.
    QString remarkOn(std::int64_t hertz) const;

    // Switches the generator's output off, for the end; nothing when it was never started.
    void powerDown();

    // Throws PortError when what was measured since the last call is void, because the port has gone. Needs a port.
    void confirmPresent();

    // Throws SettingError when the chip cannot multiply its clock as it was told. Nothing is loaded then.
    void checkClock() const;

    // One point of a sweep: frequency, settling, detector count. Needs a port.
    int measure(std::int64_t hertz);

    // The detector count after a settling time, at whatever frequency there is. Needs a port.
    int readDetector();

    // output: 1 or 2. Both outputs are shifted and latched once.
    void setAux(std::uint8_t value, int output);

    // False when a byte was not acknowledged. Needs a port.
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
    std::array<std::uint8_t, 2> m_firstAux{}; // where none has been set
};

} // namespace calvorn
