// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/serial_board.h"
#include "server/links/byte_link.h"

#include <utility>

namespace calvorn::fuzz {

// A line in memory with a board at its end, on which no time passes. Bytes come when they are waited for or pumped.
class BoardLink : public ByteLink
{
public:
    explicit BoardLink(SerialBoard &board)
        : m_board(board)
    {
    }

    bool isOpen() const override { return m_open; }

    void write(const QByteArray &bytes) override
    {
        if (m_gone)
            return unplug();
        for (const char byte : bytes)
            m_board.receive(static_cast<std::uint8_t>(byte));
    }

    QByteArray read() override { return std::exchange(m_arrived, QByteArray()); }

    bool waitForBytes(int /*milliseconds*/) override
    {
        if (m_arrived.isEmpty())
            fetch(kPiece);
        return !m_arrived.isEmpty();
    }

    void discard() override
    {
        m_arrived.clear();
        if (m_gone)
            unplug();
    }
    void close() override { m_open = false; }

    // The line delivers up to this many bytes of the board, and the extra ones behind them.
    void pump(int most, const QByteArray &extra = {})
    {
        if (!m_open)
            return;
        fetch(most);
        m_arrived += extra;
        if (!m_arrived.isEmpty())
            emit bytesArrived();
    }

    // The next byte from the board has these bits flipped; 0xFF loses it.
    void damageNext(std::uint8_t bits) { m_damage = bits; }

    void unplug()
    {
        if (!std::exchange(m_open, false))
            return;
        emit lost(QStringLiteral("The device is gone."));
    }

    // The device goes, and nobody notices before something is written or discarded.
    void unplugUnnoticed() { m_gone = true; }

private:
    static constexpr int kPiece = 512;
    static constexpr std::uint8_t kLose = 0xFF;

    void fetch(int most)
    {
        for (int count = 0; m_open && count < most; ++count) {
            const auto byte = m_board.nextByte();
            if (!byte)
                return;
            const std::uint8_t damage = std::exchange(m_damage, std::uint8_t{0});
            if (damage != kLose)
                m_arrived += static_cast<char>(*byte ^ damage);
        }
    }

    SerialBoard &m_board;
    QByteArray m_arrived;
    bool m_open = true;
    bool m_gone = false;
    std::uint8_t m_damage = 0;
};

} // namespace calvorn::fuzz
