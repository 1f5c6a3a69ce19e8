// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>

#include <gpsim/pir.h>

#include "line.h"
#include "spies.h"

namespace bench {

// Replaces gpsim's USART, which has these faults: it does not store FERR with its byte, returns the second of two
// pending bytes first, continues to receive after an overrun, sends nothing after some resets, and has no interrupts.
class Usart : public TriggerObject
{
public:
    explicit Usart(Processor &chip);

    void set(bool level); // the level of RC7
    void callback() override;
    void overrun();

    std::function<void(bool)> drive;          // sets the level of RC6
    std::function<void(const char *)> failed; // reports misuse by the firmware
    Stretch looks;                            // reads of RCSTA, which contains OERR
    std::uint64_t overruns() const { return overruns_; }

private:
    struct Waiting
    {
        std::uint8_t value;
        bool isFramed;
    };

    void spy();
    std::uint64_t bitCycles() const;

    void take();
    unsigned int status() const;
    unsigned int next();

    void load(std::uint8_t value);
    void begin(std::uint64_t cycle);
    void callAt(std::uint64_t cycle);
    bool canSend() const;
    void control();
    void reset();
    void stopSending();

    PIR &flags_; // RCIF, TXIF and their interrupts
    unsigned int rcsta_ = 0;
    unsigned int txsta_ = 0;
    unsigned int spbrg_ = 0;

    Receiver receiver_;
    std::deque<Waiting> fifo_;
    std::uint8_t last_ = 0; // an empty RCREG still returns this byte
    bool isOverrun_ = false;
    std::uint64_t overruns_ = 0;

    std::uint8_t waiting_ = 0; // in TXREG
    bool isWaiting_ = false;
    unsigned int shifted_ = 0; // bits left to send
    int bitsLeft_ = 0;
    bool isSending_ = false;
    std::uint64_t bitClock_ = 0; // a cycle in which a bit may start
    std::uint64_t due_ = 0;      // cycle of the next bit; callback() in any other cycle belongs to a discarded byte

    std::unique_ptr<RegisterSpy> rcstaSpy_, txreg_, rcreg_, txstaSpy_, spbrgSpy_;
};

} // namespace bench
