// SPDX-License-Identifier: MIT
#include "usart.h"

namespace bench {

namespace {

constexpr unsigned int Pir1 = 0x0C;
constexpr unsigned int Rcsta = 0x18;
constexpr unsigned int Oerr = 2;
constexpr unsigned int Ferr = 4;
constexpr unsigned int Cren = 0x10;
constexpr unsigned int Spen = 0x80;
constexpr unsigned int Txreg = 0x19;
constexpr unsigned int Rcreg = 0x1A;
constexpr unsigned int Txsta = 0x98;
constexpr unsigned int Trmt = 2;
constexpr unsigned int Brgh = 4;
constexpr unsigned int Txen = 0x20;
constexpr unsigned int Spbrg = 0x99;

constexpr std::size_t Places = 2;
constexpr int BitsOfByte = 10;

std::uint64_t now()
{
    return get_cycles().get();
}

} // namespace

Usart::Usart(Processor &chip)
    : flags_(dynamic_cast<PIR &>(*chip.registers[Pir1]))
    , rcstaSpy_(std::make_unique<RegisterSpy>(&chip, Rcsta))
    , txreg_(std::make_unique<RegisterSpy>(&chip, Txreg))
    , rcreg_(std::make_unique<RegisterSpy>(&chip, Rcreg))
    , txstaSpy_(std::make_unique<RegisterSpy>(&chip, Txsta))
    , spbrgSpy_(std::make_unique<RegisterSpy>(&chip, Spbrg))
{
    spy();
}

void Usart::spy()
{
    receiver_.received = [this] { take(); };
    rcstaSpy_->aboutToRead = [this] { looks.event(now()); };
    rcstaSpy_->readAs = [this](unsigned int) { return status(); };
    rcstaSpy_->replaces = [this](unsigned int value) {
        rcsta_ = value & ~(Oerr | Ferr);
        control();
    };
    rcstaSpy_->wasReset = [this] { reset(); };
    rcreg_->takes = [this] { return next(); };
    txreg_->replaces = [this](unsigned int value) { load(static_cast<std::uint8_t>(value)); };
    txstaSpy_->readAs = [this](unsigned int) { return txsta_ | (isSending_ ? 0 : Trmt); };
    txstaSpy_->replaces = [this](unsigned int value) {
        txsta_ = value & ~Trmt;
        control();
    };
    spbrgSpy_->readAs = [this](unsigned int) { return spbrg_; };
    spbrgSpy_->replaces = [this](unsigned int value) { spbrg_ = value; };
}

std::uint64_t Usart::bitCycles() const
{
    return std::uint64_t{spbrg_ + 1} * (txsta_ & Brgh ? 4 : 16);
}

void Usart::set(bool level)
{
    receiver_.setBit(static_cast<double>(bitCycles()));
    receiver_.set(level);
}

void Usart::take()
{
    const Receiver::Byte byte = receiver_.bytes().back();
    if (!(rcsta_ & Cren) || isOverrun_)
        return;
    if (fifo_.size() < Places) {
        fifo_.push_back({byte.value, byte.isFramed});
        flags_.set_rcif();
    } else {
        overrun();
    }
}

void Usart::overrun()
{
    if (rcsta_ & Cren) {
        isOverrun_ = true;
        ++overruns_;
    }
}

unsigned int Usart::status() const
{
    const bool isDamaged = !fifo_.empty() && !fifo_.front().isFramed;
    return rcsta_ | (isOverrun_ ? Oerr : 0) | (isDamaged ? Ferr : 0);
}

unsigned int Usart::next()
{
    if (!fifo_.empty()) {
        last_ = fifo_.front().value;
        fifo_.pop_front();
    }
    if (fifo_.empty())
        flags_.clear_rcif();
    return last_;
}

void Usart::load(std::uint8_t value)
{
    if (isWaiting_)
        failed("TXREG is written while it is full");
    waiting_ = value;
    isWaiting_ = true;
    flags_.clear_txif();
    if (isSending_ || !canSend())
        return;
    // The bit clock keeps running while nothing is sent.
    begin(now() + bitCycles() - (now() - bitClock_) % bitCycles());
}

void Usart::begin(std::uint64_t cycle)
{
    shifted_ = 1U << (BitsOfByte - 1) | static_cast<unsigned int>(waiting_) << 1;
    bitsLeft_ = BitsOfByte;
    isWaiting_ = false;
    isSending_ = true;
    flags_.set_txif();
    callAt(cycle);
}

void Usart::callAt(std::uint64_t cycle)
{
    due_ = cycle;
    get_cycles().set_break(cycle, this);
}

// Starts the next bit.
void Usart::callback()
{
    if (!isSending_ || now() != due_)
        return;
    bitClock_ = now();
    if (bitsLeft_ == 0 && isWaiting_) {
        begin(now() + bitCycles());
    } else if (bitsLeft_ == 0) {
        isSending_ = false;
        return;
    } else {
        callAt(now() + bitCycles());
    }
    drive(shifted_ & 1);
    shifted_ >>= 1;
    --bitsLeft_;
}

bool Usart::canSend() const
{
    return rcsta_ & Spen && txsta_ & Txen;
}

void Usart::control()
{
    if (!(rcsta_ & Cren)) {
        isOverrun_ = false;
        receiver_.forget();
    }
    if (!canSend())
        stopSending();
    else if (!isWaiting_)
        flags_.set_txif();
}

void Usart::reset()
{
    rcsta_ = txsta_ = spbrg_ = 0;
    fifo_.clear();
    isOverrun_ = false;
    receiver_.forget();
    flags_.clear_rcif();
    stopSending();
}

void Usart::stopSending()
{
    isSending_ = isWaiting_ = false;
    flags_.clear_txif();
    drive(true);
}

} // namespace bench
