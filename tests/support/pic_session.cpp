// SPDX-License-Identifier: MIT
// Records how the simulated PIC board answers random commands, as a reference for other boards. Usage: pic_session
// <seed> <number of commands>. Writes a line for each command, in hexadecimal: bytes sent, bytes received, and the
// generator's word after the answer (0: off). "-" stands for no bytes, and for a word left by a sweep. A sweep is
// recorded as its first frame, followed by the answer to "!", which aborts the sweep. Its counts do not come from a
// signal: each is the upper ten bits of the word times 2654435761, modulo 2^32.
#include "tests/support/pic_probe.h"

#include <cstdio>
#include <cstdlib>
#include <random>

using namespace calvorn;

namespace {

constexpr double kClockHz = 125e6;
constexpr int kLongestAnswer = 100;

class Board : public test::ProbedPic
{
public:
    using ProbedPic::ProbedPic;

private:
    int countAt(std::uint32_t value) override { return static_cast<int>(value * 2'654'435'761U >> 22); }
};

class Speaker
{
public:
    explicit Speaker(std::uint32_t seed)
        : m_random(seed)
    {
    }

    // Returns a command with its carriage return; some commands are invalid.
    QByteArray command()
    {
        switch (below(16)) {
        case 0:
        case 1:
        case 2:
            return 'A' + hertz() + '\r';
        case 3:
        case 4:
            return 'B' + hertz() + '\r';
        case 5:
        case 6:
            return 'D' + step() + '\r';
        case 7:
        case 8:
        case 9:
            return "P\r";
        case 10:
            return "G\r";
        case 11:
            return 'S' + QByteArray::number(below(11'000)) + '\r';
        case 12:
            return below(3) == 0 ? "*\r" : "?\r";
        case 13:
            return "!";
        case 14:
            return spoken() + "!"; // cancels the command
        default:
            return spoken() + '\r';
        }
    }

private:
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(m_random() % limit); }

    QByteArray hertz()
    {
        switch (below(8)) {
        case 0:
            return QByteArray::number(124'999'990 + below(20));
        case 1:
            return QByteArray::number(qulonglong{below(1'000'000'000)} * (1 + below(10)));
        case 2:
            return QByteArray(static_cast<qsizetype>(below(5)), '0') + QByteArray::number(below(1'000'000));
        default:
            return QByteArray::number(below(125'000'000));
        }
    }

    QByteArray step()
    {
        const auto limit = below(4) == 0 ? 130'000'000U : 200'000U;
        return (below(2) == 0 ? "-" : "") + QByteArray::number(below(limit));
    }

    // Returns random characters that a terminal can send, including line feeds but neither "!" nor carriage returns.
    QByteArray spoken()
    {
        static const QByteArray kKeys("ABDPGS*?abz0123456789-+. \nZ\x7f");
        QByteArray text;
        for (auto count = below(16); count > 0; --count)
            text += kKeys.at(static_cast<qsizetype>(below(static_cast<std::uint32_t>(kKeys.size()))));
        return text;
    }

    std::mt19937 m_random;
};

QByteArray written(const QByteArray &bytes)
{
    return bytes.isEmpty() ? QByteArray("-") : bytes.toHex();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    SimulatorSettings settings;
    settings.clockHz = kClockHz;
    Board board(settings);
    QByteArray word("0"); // the generator's tuning word
    Speaker speaker(static_cast<std::uint32_t>(std::strtoul(argv[1], nullptr, 10)));
    for (long count = std::strtol(argv[2], nullptr, 10); count > 0; --count) {
        const QByteArray sent = speaker.command();
        const bool sweeps = QByteArray(sent).replace('\n', "") == "G\r";
        board.words.clear();
        QByteArray answer = test::say(board, sent, sweeps ? 3 + test::kPicFrameBytes : kLongestAnswer);
        if (!board.words.empty())
            word = QByteArray::number(board.words.back(), 16);
        const bool hasFrame = answer.size() > kLongestAnswer;
        if (hasFrame) {
            answer += test::say(board, "!");
            word = "-"; // how far the sweep has progressed by then is undefined
        }
        std::printf("%s %s %s\n", written(hasFrame ? sent + '!' : sent).constData(), written(answer).constData(),
                    word.constData());
    }
    return 0;
}
