// SPDX-License-Identifier: MIT
#include "line.h"

#include <algorithm>
#include <cmath>

namespace bench {

namespace {

constexpr double UntilStopBit = 9.5;

} // namespace

void Receiver::set(bool level)
{
    if (level == level_)
        return;
    level_ = level;
    const std::uint64_t now = get_cycles().get();
    if (isBusy_) {
        edges_.push_back({now, level});
    } else if (!level) {
        isBusy_ = true;
        began_ = now;
        edges_.clear();
        due_ = now + static_cast<std::uint64_t>(std::ceil(UntilStopBit * bit_));
        get_cycles().set_break(due_, this);
    }
}

void Receiver::forget()
{
    isBusy_ = false;
}

bool Receiver::levelAt(double cycle) const
{
    bool level = false;
    for (const Edge &edge : edges_) {
        if (static_cast<double>(edge.cycle) > cycle)
            break;
        level = edge.level;
    }
    return level;
}

void Receiver::callback()
{
    if (!isBusy_ || get_cycles().get() != due_)
        return;
    isBusy_ = false;
    const auto start = static_cast<double>(began_);
    if (levelAt(start + bit_ / 2))
        return; // a spike
    Byte byte{began_, 0, levelAt(start + UntilStopBit * bit_)};
    for (int bit = 0; bit < 8; ++bit)
        byte.value |= static_cast<std::uint8_t>(levelAt(start + (1.5 + bit) * bit_) << bit);
    bytes_.push_back(byte);
    if (received)
        received();
}

void Sender::sendByte(std::uint8_t byte, bool isFramed)
{
    sendLevel(false, bit_);
    for (int bit = 0; bit < 8; ++bit)
        sendLevel(byte >> bit & 1, bit_);
    sendLevel(isFramed, bit_);
    if (!isFramed)
        sendLevel(true, bit_);
}

void Sender::sendLevel(bool level, double cycles)
{
    push({Item::Kind::Level, level, cycles, 0});
}

void Sender::waitForCycle(std::uint64_t cycle)
{
    push({Item::Kind::UntilCycle, true, 0, cycle});
}

void Sender::waitForBytes(std::uint64_t count)
{
    push({Item::Kind::UntilBytes, true, 0, count});
}

void Sender::sendOverrun()
{
    push({Item::Kind::Overrun, true, 0, 0});
}

void Sender::push(const Item &item)
{
    items_.push_back(item);
    if (!isArmed_) {
        time_ = std::max(time_, static_cast<double>(get_cycles().get()));
        next();
    }
}

void Sender::countReceived(std::uint64_t count)
{
    received_ = count;
    if (!isArmed_ && !items_.empty()) {
        time_ = std::max(time_, static_cast<double>(get_cycles().get()));
        next();
    }
}

void Sender::callback()
{
    isArmed_ = false;
    next();
}

// Executes items until one has to wait.
void Sender::next()
{
    while (!items_.empty()) {
        const Item item = items_.front();
        if (item.kind == Item::Kind::UntilBytes && received_ < item.target)
            return;
        items_.pop_front();
        if (item.kind == Item::Kind::Level) {
            drive(item.level);
            time_ += item.cycles;
        } else if (item.kind == Item::Kind::Overrun) {
            overrun();
        } else if (item.kind == Item::Kind::UntilCycle) {
            time_ = std::max(time_, static_cast<double>(item.target));
        } else {
            time_ = std::max(time_, static_cast<double>(get_cycles().get()));
        }
        if (time_ > static_cast<double>(get_cycles().get())) {
            arm();
            return;
        }
    }
    drive(true);
}

void Sender::arm()
{
    isArmed_ = true;
    get_cycles().set_break(static_cast<std::uint64_t>(std::ceil(time_)), this);
}

} // namespace bench
