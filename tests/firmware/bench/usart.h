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

// The chip's USART, in place of gpsim's, which never gets to know that there is one. There FERR belongs to no byte, the
// second of two waiting bytes reads as the first, bytes come in after an overrun, and after some resets nothing is ever
// sent. It has no interrupts.
class Usart : public TriggerObject
{
public:
    explicit Usart(Processor &chip);

    void set(bool level); // of RC7
    void callback() override;
    void overrun();

    std::function<void(bool)> drive;          // the level of RC6
    std::function<void(const char *)> failed; // something is done to it that cannot be meant
    Stretch looks;                            // reads of RCSTA, where OERR shows
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
    void startAnew();
    void stopSending();

    PIR &flags_; // RCIF and TXIF, and their interrupts
    unsigned int rcsta_ = 0;
    unsigned int txsta_ = 0;
    unsigned int spbrg_ = 0;

    Receiver receiver_;
    std::deque<Waiting> fifo_;
    std::uint8_t last_ = 0; // what an empty RCREG still shows
    bool isOverrun_ = false;
    std::uint64_t overruns_ = 0;

    std::uint8_t waiting_ = 0; // in TXREG
    bool isWaiting_ = false;
    unsigned int shifted_ = 0; // the bits still to be sent
    int bitsLeft_ = 0;
    bool isSending_ = false;
    std::uint64_t bitClock_ = 0; // a cycle at which a bit may begin
    std::uint64_t due_ = 0;      // the next bit; a call at another cycle is of a byte that was given up

    std::unique_ptr<RegisterSpy> rcstaSpy_, txreg_, rcreg_, txstaSpy_, spbrgSpy_;
};

} // namespace bench
