// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <map>
#include <string>

#include <gpsim/trigger.h>

#include "circuit.h"
#include "terminal.h"

namespace bench {

// Executes commands from a socket. Each command is a line and is answered with a line: "ok" and the result, or "error".
// In virtual time the simulator runs only when a command lets it. In real time it follows the wall clock, and the
// serial line is a pseudo-terminal.
class Script : public TriggerObject
{
public:
    Script(Circuit &circuit, int socket);

    void callback() override;

private:
    using Command = std::function<std::string(std::istringstream &)>;

    void addMotion();
    void addCircuit();
    void addReports();
    void serve();
    bool takeLine(std::string &line);
    void answer(const std::string &line) const;
    void carryOut(const std::string &line);
    void received();

    std::string startRun(std::istringstream &words);
    std::string startExpecting(std::istringstream &words);
    std::string sendLine(std::istringstream &words);
    std::string poke(std::istringstream &words);
    std::string stretches();

    void moveUntil(std::uint64_t cycle);
    void callAt(std::uint64_t cycle);
    void stop();
    void realTimeSlice();

    Circuit &circuit_;
    int socket_;
    std::string input_;
    std::map<std::string, Command> commands_;
    bool isMoving_ = false; // time passes while a command awaits its answer
    std::uint64_t wantedBytes_ = 0;
    std::uint64_t deadline_ = 0;

    Terminal terminal_;
    std::size_t damageEvery_ = 0;
    bool isRealTime_ = false;
    std::chrono::steady_clock::time_point wallStart_;
    std::uint64_t cycleStart_ = 0;
    std::chrono::nanoseconds largestLag_{0};
};

} // namespace bench
