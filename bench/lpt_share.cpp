// SPDX-License-Identifier: MIT
// Computes the share of a parallel-port sweep that is spent on port accesses and required waits. The driver's own time
// is measured on this machine with a port that takes no time; the board's time comes from the simulated board, which
// counts 1.25 us per access. Prints one line for each loading mode: name,board ms,driver ms,share.
#include "server/boards/simulated_parallel_port.h"
#include "server/drivers/lpt_board.h"
#include "server/drivers/sweep_thread.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

using namespace calvorn;

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int kRounds = 50;

// A port without a board.
class FreePort : public ParallelPort
{
public:
    void writeData(std::uint8_t) override {}
    void writeControl(std::uint8_t) override {}
    void confirmPresent() override {}
    std::uint8_t readStatus() override { return 0x40; }
    void wait(std::chrono::nanoseconds) override {}
};

void sweepOnce(LptBoard &board)
{
    for (int point = 0; point < kSweepPoints; ++point)
        board.measure(1'000'000 + 22'557 * point);
}

// Uses the fastest of many rounds, because slower ones include time used by other processes.
double driverMs(const BoardWiring &wiring)
{
    LptBoard board;
    board.attach({std::make_unique<FreePort>(), wiring});
    double fastest = 1e9;
    for (int round = 0; round < kRounds; ++round) {
        const auto before = std::chrono::steady_clock::now();
        sweepOnce(board);
        fastest = std::min(fastest, Milliseconds(std::chrono::steady_clock::now() - before).count());
    }
    return fastest;
}

double boardMs(const BoardWiring &wiring)
{
    SimulatorSettings settings;
    settings.paced = false;
    auto port = std::make_unique<SimulatedParallelPort>(settings, wiring);
    const SimulatedParallelPort &simulated = *port;
    LptBoard board;
    board.attach({std::move(port), wiring});
    board.measure(1'000'000);
    const auto before = simulated.boardTime();
    sweepOnce(board);
    return Milliseconds(simulated.boardTime() - before).count();
}

} // namespace

int main()
{
    const BoardWiring byteWide{kByteWideLptWiring, DdsLoading::Bytes};
    for (const auto &[name, wiring] : {std::pair{"serial loading", BoardWiring()}, {"byte-wide loading", byteWide}}) {
        const double driver = driverMs(wiring);
        const double board = boardMs(wiring);
        std::printf("%s,%.2f,%.3f,%.4f\n", name, board, driver, board / (board + driver));
    }
    return 0;
}
