// SPDX-License-Identifier: MIT
#pragma once

#include "server/links/parallel_port.h"

#include <vector>

namespace calvorn {

// A port that records all writes and returns a fixed status.
class RecordingPort : public ParallelPort
{
public:
    void writeData(std::uint8_t value) override { data.push_back(value); }
    void writeControl(std::uint8_t value) override { control.push_back(value); }
    void confirmPresent() override {}
    std::uint8_t readStatus() override { return status; }
    void wait(std::chrono::nanoseconds duration) override { waited += duration; }

    std::vector<std::uint8_t> data;
    std::vector<std::uint8_t> control;
    std::uint8_t status = 0;
    std::chrono::nanoseconds waited{};
};

} // namespace calvorn
