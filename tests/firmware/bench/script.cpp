// SPDX-License-Identifier: MIT
#include "script.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <sstream>
#include <thread>

#include <sys/socket.h>
#include <unistd.h>

namespace bench {

namespace {

constexpr std::uint64_t Never = std::numeric_limits<std::uint64_t>::max();
constexpr double SlicesPerSecond = 5000;
constexpr std::chrono::milliseconds Hopeless{50}; // after a longer lag the clock is adjusted

std::uint64_t now()
{
    return get_cycles().get();
}

// Lists the items, starting at the index read from `words`.
template <typename List, typename Show>
std::string listFrom(std::istringstream &words, const List &list, Show show)
{
    std::size_t first = 0;
    words >> first;
    std::ostringstream text;
    text << "ok";
    for (; first < list.size(); ++first) {
        text << ' ';
        show(text, list[first]);
    }
    return text.str();
}

} // namespace

Script::Script(Circuit &circuit, int socket)
    : circuit_(circuit)
    , socket_(socket)
{
    addMotion();
    addCircuit();
    addReports();
    circuit_.receiver.received = [this] { received(); };
    callAt(now() + 1);
}

void Script::addMotion()
{
    commands_["run"] = [this](auto &words) { return startRun(words); };
    commands_["expect"] = [this](auto &words) { return startExpecting(words); };
    commands_["line"] = [this](auto &words) { return sendLine(words); };
    commands_["time"] = [](auto &) { return "ok " + std::to_string(now()); };
    commands_["plug"] = [this](auto &words) {
        std::string link;
        words >> link;
        return terminal_.plug(link) ? "ok" : "error";
    };
    commands_["unplug"] = [this](auto &) {
        terminal_.unplug();
        return "ok";
    };
    commands_["damage"] = [this](auto &words) {
        words >> damageEvery_; // damages every n-th byte to the program; 0: none
        return "ok";
    };
    commands_["realtime"] = [this](auto &) {
        isRealTime_ = true;
        wallStart_ = std::chrono::steady_clock::now();
        cycleStart_ = now();
        return "ok";
    };
    commands_["virtual"] = [this](auto &) {
        isRealTime_ = false;
        return "ok " + std::to_string(std::chrono::duration<double>(largestLag_).count());
    };
}

void Script::addCircuit()
{
    commands_["baud"] = [this](auto &words) {
        double cycles = 0; // per bit
        words >> cycles;
        circuit_.receiver.setBit(cycles);
        circuit_.sender.setBit(cycles);
        return "ok";
    };
    commands_["jumpers"] = [this](auto &words) {
        bool one = false;
        bool two = false;
        words >> one >> two;
        circuit_.setJumpers(one, two);
        return "ok";
    };
    commands_["device"] = [this](auto &words) {
        std::string model;
        words >> model;
        const std::vector<double> numbers{std::istream_iterator<double>(words), {}};
        return circuit_.device.choose(model, numbers) ? "ok" : "error";
    };
    commands_["settle"] = [this](auto &words) {
        double cycles = 0;
        words >> cycles;
        circuit_.device.setTimeConstant(cycles);
        return "ok";
    };
    commands_["reset"] = [this](auto &words) {
        static const std::map<std::string, RESET_TYPE> kinds{
            {"power", POR_RESET}, {"mclr", MCLR_RESET}, {"watchdog", WDT_RESET}, {"brownout", BOD_RESET}};
        std::string kind;
        words >> kind;
        circuit_.reset(kinds.at(kind));
        return "ok";
    };
    commands_["ram"] = [this](auto &words) {
        std::uint32_t seed = 0;
        words >> seed;
        circuit_.fillRam(seed);
        return "ok";
    };
    commands_["disturb"] = [this](auto &) {
        circuit_.generator.disturb();
        return "ok";
    };
    commands_["poke"] = [this](auto &words) { return poke(words); };
}

void Script::addReports()
{
    commands_["words"] = [this](auto &words) {
        return listFrom(words, circuit_.generator.words(), [](auto &text, const Generator::Word &word) {
            text << word.cycle << ':' << word.tuning << ':' << static_cast<unsigned>(word.control);
        });
    };
    commands_["faults"] = [this](auto &words) {
        std::vector<Generator::Fault> all = circuit_.generator.faults();
        all.insert(all.end(), circuit_.faults.begin(), circuit_.faults.end());
        return listFrom(words, all, [](auto &text, const Generator::Fault &fault) {
            text << fault.cycle << ':' << fault.what << ';';
        });
    };
    commands_["bytes"] = [this](auto &words) {
        return listFrom(words, circuit_.receiver.bytes(), [](auto &text, const Receiver::Byte &byte) {
            text << byte.began << ':' << static_cast<unsigned>(byte.value) << ':' << byte.isFramed;
        });
    };
    commands_["conversions"] = [this](auto &words) {
        return listFrom(words, circuit_.conversions, [](auto &text, const Circuit::Conversion &conversion) {
            text << conversion.cycle << ':' << conversion.adcon0 << ':' << conversion.adcon1 << ':' << conversion.word;
        });
    };
    commands_["counts"] = [this](auto &) {
        return "ok " + std::to_string(circuit_.receiver.bytes().size()) + ' ' +
               std::to_string(circuit_.generator.words().size()) + ' ' + std::to_string(circuit_.conversions.size()) +
               ' ' + std::to_string(circuit_.generator.resets()) + ' ' + std::to_string(circuit_.usart.overruns());
    };
    commands_["pins"] = [this](auto &) { return "ok " + circuit_.pinStates(); };
    commands_["pc"] = [this](auto &) { return "ok " + std::to_string(circuit_.chip.pc->get_value()); };
    commands_["register"] = [this](auto &words) {
        unsigned int address = 0;
        words >> address;
        return "ok " + std::to_string(circuit_.chip.registers[address]->get_value());
    };
    commands_["stretches"] = [this](auto &) { return stretches(); };
}

std::string Script::stretches()
{
    std::ostringstream text;
    text << "ok " << circuit_.usart.looks.longest() << ' ' << circuit_.clearsWatchdog.longest() << ' '
         << circuit_.stack().deepest() << ' ' << circuit_.stack().shallowest();
    circuit_.usart.looks.restart();
    circuit_.clearsWatchdog.restart();
    return text.str();
}

// Returns an empty string: stop() sends the answer later.
std::string Script::startRun(std::istringstream &words)
{
    std::uint64_t cycles = 0;
    if (!(words >> cycles) || isRealTime_)
        return "error";
    wantedBytes_ = Never;
    moveUntil(now() + std::max<std::uint64_t>(cycles, 1));
    return {};
}

std::string Script::startExpecting(std::istringstream &words)
{
    std::uint64_t cycles = 0;
    if (!(words >> wantedBytes_ >> cycles) || isRealTime_)
        return "error";
    if (circuit_.receiver.bytes().size() >= wantedBytes_)
        return "ok " + std::to_string(circuit_.receiver.bytes().size());
    moveUntil(now() + std::max<std::uint64_t>(cycles, 1));
    return {};
}

// Queues items for the line to the chip. b41: the byte 41; f41: the byte 41 with a low stop bit; o: a byte lost in an
// overrun; l100 and h100: a low or high level for 100 cycles; @100: wait for cycle 100; n3: wait for the chip's third
// byte.
std::string Script::sendLine(std::istringstream &words)
{
    for (std::string word; words >> word;) {
        const std::string rest = word.substr(1);
        switch (word[0]) {
        case 'b':
        case 'f':
            circuit_.sender.sendByte(static_cast<std::uint8_t>(std::stoul(rest, nullptr, 16)), word[0] == 'b');
            break;
        case 'l':
        case 'h':
            circuit_.sender.sendLevel(word[0] == 'h', std::stod(rest));
            break;
        case 'o':
            circuit_.sender.sendOverrun();
            break;
        case '@':
            circuit_.sender.waitForCycle(std::stoull(rest));
            break;
        case 'n':
            circuit_.sender.waitForBytes(std::stoull(rest));
            break;
        default:
            return "error";
        }
    }
    return "ok";
}

// Replaces the instruction at an address, permanently or until the next reset, and returns the previous instruction.
std::string Script::poke(std::istringstream &words)
{
    unsigned int address = 0;
    unsigned int opcode = 0;
    bool isUntilReset = false;
    if (!(words >> address >> opcode >> isUntilReset))
        return "error";
    return "ok " + std::to_string(circuit_.poke(address, opcode, isUntilReset));
}

void Script::moveUntil(std::uint64_t cycle)
{
    isMoving_ = true;
    callAt(cycle);
}

void Script::callAt(std::uint64_t cycle)
{
    deadline_ = cycle;
    get_cycles().set_break(cycle, this);
}

void Script::received()
{
    circuit_.sender.countReceived(circuit_.receiver.bytes().size());
    if (terminal_.isPlugged()) {
        const bool isHit = damageEvery_ > 0 && circuit_.receiver.bytes().size() % damageEvery_ == 0;
        terminal_.write(circuit_.receiver.bytes().back().value ^ (isHit ? 0x10 : 0));
    }
    if (!isRealTime_ && isMoving_ && circuit_.receiver.bytes().size() >= wantedBytes_)
        stop();
}

void Script::callback()
{
    if (now() != deadline_)
        return; // the deadline of a command that has already been answered
    if (isRealTime_)
        realTimeSlice();
    else if (isMoving_)
        stop();
    else
        serve();
}

void Script::stop()
{
    isMoving_ = false;
    answer("ok " + std::to_string(circuit_.receiver.bytes().size()));
    serve();
}

// Executes commands until one of them advances time.
void Script::serve()
{
    std::string line;
    while (!isMoving_ && !isRealTime_ && takeLine(line))
        carryOut(line);
    if (isRealTime_)
        callAt(now() + 1);
}

void Script::realTimeSlice()
{
    const double cyclesPerSecond = circuit_.chip.get_frequency() / 4;
    for (const std::uint8_t byte : terminal_.read())
        circuit_.sender.sendByte(byte);
    const auto passed = std::chrono::duration<double>(static_cast<double>(now() - cycleStart_) / cyclesPerSecond);
    const auto due = wallStart_ + std::chrono::duration_cast<std::chrono::nanoseconds>(passed);
    const auto wall = std::chrono::steady_clock::now();
    if (due > wall)
        std::this_thread::sleep_until(due);
    else if (largestLag_ = std::max<std::chrono::nanoseconds>(largestLag_, wall - due); wall - due > Hopeless)
        wallStart_ += wall - due;
    std::string line;
    while (isRealTime_ && takeLine(line))
        carryOut(line);
    if (isRealTime_)
        callAt(now() + static_cast<std::uint64_t>(cyclesPerSecond / SlicesPerSecond));
    else
        serve();
}

// In virtual time, waits for a line. In real time, returns false if no line is pending.
bool Script::takeLine(std::string &line)
{
    std::size_t end = input_.find('\n');
    while (end == std::string::npos) {
        std::array<char, 4096> bytes{};
        const ssize_t count = ::recv(socket_, bytes.data(), bytes.size(), isRealTime_ ? MSG_DONTWAIT : 0);
        if (count < 0 && isRealTime_)
            return false;
        if (count <= 0) {
            terminal_.unplug();
            ::_exit(0); // the test has exited
        }
        input_.append(bytes.data(), static_cast<std::size_t>(count));
        end = input_.find('\n');
    }
    line = input_.substr(0, end);
    input_.erase(0, end + 1);
    return true;
}

void Script::carryOut(const std::string &line)
{
    std::istringstream words(line);
    std::string name;
    words >> name;
    const auto found = commands_.find(name);
    std::string result = "error";
    try {
        if (found != commands_.end())
            result = found->second(words);
    } catch (const std::exception &) {
        result = "error";
    }
    if (!result.empty())
        answer(result);
}

void Script::answer(const std::string &line) const
{
    const std::string text = line + '\n';
    for (std::size_t sent = 0; sent < text.size();) {
        const ssize_t count = ::send(socket_, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
        if (count <= 0)
            ::_exit(0);
        sent += static_cast<std::size_t>(count);
    }
}

} // namespace bench
