// SPDX-License-Identifier: MIT
//
// Simulates a vector analyser behind a pseudo-terminal, for tests. The board answers as the manual describes, but its
// counts do not come from a signal: each is a hash of the tuning word, the path and the quantity. Commands on standard
// input cause faults.
//
// Behaviour that the manual does not define:
//  - Four carriage returns complete a command. Any other byte that is not a digit invalidates the command; its four
//    numbers are still consumed, so that the next command is read correctly. Incomplete commands wait forever.
//  - An invalid command gets no reply and changes nothing. A command with 0 samples sets the word and gets no reply.
//  - mute, late, latenext and lateeach apply to commands that are completed after the setting was changed.
//  - Settings, the list of received commands and the reply count survive unplug and plug.

#include "tests/boards/terminal_board.h"
#include "tests/boards/vna_instrument.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace boards;
using namespace boards::vna;

// Commands on standard input

std::optional<Bytes> fromHex(const std::string &text)
{
    Bytes bytes;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        std::uint8_t byte = 0;
        const char *end = text.data() + std::min(i + 2, text.size());
        if (i + 2 > text.size() || std::from_chars(text.data() + i, end, byte, 16).ptr != end)
            return std::nullopt;
        bytes.push_back(byte);
    }
    return bytes;
}

std::string controlTerminal(Board &board, const std::string &name)
{
    if (board.plugged() == (name == "plug"))
        return board.plugged() ? "? is plugged" : "? is unplugged";
    if (name == "unplug")
        board.unplug();
    else if (!board.plug())
        return std::string("? ") + std::strerror(errno);
    return "ok";
}

std::string controlStray(Board &board, const std::string &name, std::istringstream &input)
{
    std::string hex;
    for (std::string part; input >> part;)
        hex += part;
    const auto bytes = fromHex(hex);
    if (!bytes || (name == "stray" && bytes->empty()))
        return "? hex digits in pairs expected";
    if (name == "stray" && !board.plugged())
        return "? is unplugged";
    if (name == "stray")
        board.sendFirst(*bytes, Clock::now());
    else
        (name == "strayopen" ? board.faults.strayOpen : board.faults.strayOnce) = *bytes;
    return "ok";
}

std::string controlNumbers(Board &board, const std::string &name, std::istringstream &input)
{
    Faults &f = board.faults;
    const std::map<std::string, std::vector<int *>> settings{
        {"mute", {&f.mute}},
        {"late", {&f.late}},
        {"chatter", {&f.chatter}},
        {"drop", {&f.drop}},
        {"add", {&f.add}},
        {"gap", {&f.gap}},
        {"latenext", {&f.lateNextCount, &f.lateNext}},
        {"lateeach", {&f.lateMin, &f.lateMax}},
    };
    const auto setting = settings.find(name);
    if (setting == settings.end())
        return "? unknown command";
    std::vector<int> numbers;
    for (int number = 0; input >> number;)
        numbers.push_back(number);
    if (!input.eof() || numbers.size() != setting->second.size())
        return "? whole numbers expected: " + std::to_string(setting->second.size());
    const bool inOrder = name != "lateeach" || numbers[0] <= numbers[1];
    if (*std::min_element(numbers.begin(), numbers.end()) < (name == "mute" ? -1 : 0) || !inOrder)
        return "? out of range";
    for (std::size_t i = 0; i < numbers.size(); ++i)
        *setting->second[i] = numbers[i];
    board.settingChanged(name);
    return "ok";
}

std::string control(Board &board, const std::string &line)
{
    std::istringstream input(line);
    std::string name;
    input >> name;
    if (name == "heard")
        return board.takeHeard();
    if (name == "state")
        return board.state();
    if (name == "plug" || name == "unplug")
        return controlTerminal(board, name);
    if (name == "stray" || name == "strayopen" || name == "strayonce")
        return controlStray(board, name, input);
    return controlNumbers(board, name, input);
}

void run(Board &board)
{
    sigset_t unmasked;
    sigemptyset(&unmasked);
    ControlInput lines;
    while (stopRequested == 0) {
        const Time now = Clock::now();
        board.advance(now);
        const auto readable = waitForInput(board.fd(), board.wakeAt(now) - Clock::now(), &unmasked);
        if (!readable)
            continue;
        board.receive();
        board.advance(Clock::now());
        if (readable->control && !lines.serve([&](const std::string &line) { return control(board, line); }))
            return;
    }
}

} // namespace

int main(int argc, char **argv)
{
    const bool paced = argc == 3 && std::string_view(argv[2]) == "--paced";
    if (argc != 2 && !paced)
        return std::cerr << "usage: vna_board_by_the_page LINK [--paced]\n", 2;
    stopOnSignals();
    sigset_t ends;
    sigemptyset(&ends);
    for (const int number : EndSignals)
        sigaddset(&ends, number);
    sigprocmask(SIG_BLOCK, &ends, nullptr);

    Board board(argv[1], paced);
    if (!board.plug())
        return std::cerr << std::string("no terminal: ") + std::strerror(errno) + '\n', 1;
    std::cout << "ready" << std::endl;
    run(board);
    return 0;
}
