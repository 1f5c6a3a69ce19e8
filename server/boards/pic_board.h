// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/detector_model.h"
#include "server/boards/serial_board.h"
#include "server/boards/simulator_settings.h"

#include <QByteArray>

#include <cstdint>

namespace calvorn {

// The PIC board described in docs/hardware/pic-board.md. Like the real board, it computes tuning words from hertz and
// does not store a sweep: it packs four samples at a time into five bytes.
class PicBoard : public SerialBoard
{
public:
    // settings.clockHz: the generator's system clock. settings.fault: the board itself supports only Refuse and Stale.
    explicit PicBoard(const SimulatorSettings &settings);

    void receive(std::uint8_t byte) override;
    std::optional<std::uint8_t> nextByte() override;
    std::chrono::nanoseconds idleTime() const override;

protected:
    // Called when the generator has been loaded with this tuning word (0: off). Tests override it to observe the
    // generator.
    virtual void generatorSet(std::uint32_t /*word*/) {}

    // Returns the converter's count after the signal has settled at this word.
    virtual int countAt(std::uint32_t word);

private:
    void execute();
    bool accept(char letter, std::int64_t value, bool hasValue);
    bool prepare();
    QByteArray identity() const;
    std::uint16_t planCrc() const;
    std::uint64_t product(std::int64_t hertz) const;
    static std::uint32_t rounded(std::uint64_t phase);
    void answer(char letter, bool accepted, const QByteArray &text = {});
    void startFrame();
    void refill();
    int measure();
    std::chrono::nanoseconds sampleTime() const;

    SimulatorSettings m_settings;
    DetectorModel m_detector;
    DetectorModel::Time m_now{};
    std::uint64_t m_factor; // K: 2^64 / clock
    QByteArray m_line;
    QByteArray m_out;
    qsizetype m_sent = 0;

    std::int64_t m_startHz = 0;
    std::int64_t m_stepHz = 0;
    std::int64_t m_settlingUs;
    bool m_prepared = false;
    bool m_isStale = false; // accepts another plan, but keeps using this one
    std::uint16_t m_crcOfPlan = 0;
    bool m_sweeping = false;
    int m_point = 0;
    std::uint8_t m_sequence = 0;
    std::uint16_t m_crc = 0;
    std::uint64_t m_phase = 0; // the point's tuning word with 32 fraction bits
};

} // namespace calvorn
