// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/pic_board.h"

#include <QByteArray>

#include <vector>

namespace calvorn::test {

inline constexpr int kPicFrameBytes = 505; // docs/hardware/pic-board.md

// A simulated PIC board that records the words sent to its generator.
class ProbedPic : public PicBoard
{
public:
    using PicBoard::PicBoard;

    std::vector<std::uint32_t> words;

private:
    void generatorSet(std::uint32_t word) override { words.push_back(word); }
};

// Sends bytes to the board and returns at most this many bytes of its answer.
inline QByteArray say(PicBoard &board, const QByteArray &bytes, int atMost = 100)
{
    for (const char byte : bytes)
        board.receive(static_cast<std::uint8_t>(byte));
    QByteArray answer;
    while (answer.size() < atMost) {
        const auto byte = board.nextByte();
        if (!byte)
            break;
        answer += static_cast<char>(*byte);
    }
    return answer;
}

} // namespace calvorn::test
