// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>

#include <gpsim/pic-processor.h>

namespace bench {

// Replaces a chip register, forwards every access to it, and reports the access.
class RegisterSpy : public Register
{
public:
    RegisterSpy(Processor *chip, unsigned int place);

    std::function<void(unsigned int before, unsigned int after)> written; // called after the value has been stored
    std::function<void(unsigned int)> replaces; // receives written values instead of the register
    std::function<void()> aboutToRead;
    std::function<void()> wasReset;
    std::function<unsigned int(unsigned int)> readAs; // returns the value that the firmware reads
    std::function<unsigned int()> takes;              // the same, for a read with side effects

    Register *spied() { return spied_; }

    unsigned int get() override;
    void put(unsigned int content) override;
    unsigned int get_value() override; // called by BCF and BSF
    void put_value(unsigned int content) override { spied_->put_value(content); }
    RegisterValue getRV() override;
    void putRV(RegisterValue content) override;
    RegisterValue getRV_notrace() override { return spied_->getRV_notrace(); }
    void putRV_notrace(RegisterValue content) override { spied_->putRV_notrace(content); }
    REGISTER_TYPES isa() override { return spied_->isa(); }
    Register *getReg() override { return spied_; }
    void reset(RESET_TYPE kind) override;
    void setbit(unsigned int bit, bool isSet) override { spied_->setbit(bit, isSet); }
    bool get_bit(unsigned int bit) override { return spied_->get_bit(bit); }

private:
    Register *spied_;
};

// The chip's eight-level stack. Records the deepest and the shallowest level in use.
class StackSpy : public Stack
{
public:
    explicit StackSpy(Processor *chip)
        : Stack(chip)
    {
        stack_mask = 7;
    }

    bool push(unsigned int address) override
    {
        deepest_ = std::max(deepest_, ++depth_);
        return Stack::push(address);
    }
    unsigned int pop() override
    {
        --depth_;
        shallowest_ = std::min(shallowest_, depth_);
        return Stack::pop();
    }
    void reset(RESET_TYPE kind) override
    {
        depth_ = 0;
        Stack::reset(kind);
    }

    int deepest() const { return deepest_; }
    int shallowest() const { return shallowest_; }

private:
    int depth_ = 0;
    int deepest_ = 0;
    int shallowest_ = 0;
};

// Measures the longest time between two events, in cycles.
class Stretch
{
public:
    void event(std::uint64_t cycle)
    {
        if (isRunning_)
            longest_ = std::max(longest_, cycle - last_);
        isRunning_ = true;
        last_ = cycle;
    }
    void restart()
    {
        isRunning_ = false;
        longest_ = 0;
    }
    std::uint64_t longest() const { return longest_; }

private:
    bool isRunning_ = false;
    std::uint64_t last_ = 0;
    std::uint64_t longest_ = 0;
};

} // namespace bench
