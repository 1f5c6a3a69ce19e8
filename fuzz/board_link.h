// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/serial_board.h"
#include "server/links/byte_link.h"

#include <utility>

namespace calvorn::fuzz {

// An in-memory serial line to a board, without delays. waitForBytes() and pump() fetch the board's bytes.
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

    // Delivers up to this many bytes from the board, followed by the extra bytes.
    void pump(int most, const QByteArray &extra = {})
    {
        if (!m_open)
            return;
        fetch(most);
        m_arrived += extra;
        if (!m_arrived.isEmpty())
            emit bytesArrived();
    }

    // Flips these bits in the next byte from the board; 0xFF discards the byte.
    void damageNext(std::uint8_t bits) { m_damage = bits; }

    void unplug()
    {
        if (!std::exchange(m_open, false))
            return;
        emit lost(QStringLiteral("The device is gone."));
    }

    // Removes the device; the next write() or discard() detects the loss.
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
