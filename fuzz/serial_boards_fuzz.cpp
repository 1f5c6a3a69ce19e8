// SPDX-License-Identifier: MIT
// Sends arbitrary bytes to the simulated serial boards and reads their replies. Nothing may crash, and the PIC board
// must always confirm an abort.
#include "server/boards/pic_board.h"
#include "server/boards/vna_board.h"

#include <cstdlib>

using namespace calvorn;

namespace {

// Reads and discards up to this many bytes from the board.
template <typename Board>
void listen(Board &board, int most)
{
    for (int count = 0; count < most && board.nextByte(); ++count) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr double kClocks[] = {1.0, 80e6, 180e6, 400e6};
    if (size == 0)
        return 0;
    SimulatorSettings settings;
    settings.clockHz = kClocks[data[0] & 3U];
    settings.fault = (data[0] & 4U) != 0 ? SimulatorFault::Refuse : SimulatorFault::None;
    PicBoard pic(settings);
    VnaBoard vna(settings);
    for (std::size_t at = 1; at < size; ++at) {
        pic.receive(data[at]);
        vna.receive(data[at]);
        if (data[at] == '\r') {
            listen(pic, 600);
            listen(vna, 1700);
        }
    }
    listen(pic, 600);
    pic.receive('!');
    // If the board did not stop sweeping, it would send bytes forever.
    constexpr int kMostAnswers = 1'000'000;
    QByteArray last;
    auto byte = pic.nextByte();
    for (int count = 0; byte && count < kMostAnswers; ++count, byte = pic.nextByte())
        last += static_cast<char>(*byte);
    if (byte || !last.endsWith("!+\r"))
        std::abort();
    return 0;
}
