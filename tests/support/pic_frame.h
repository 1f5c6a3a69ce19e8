// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>

#include <cstdint>

namespace calvorn::test {

// Computes CRC-16/CCITT-FALSE bit by bit, straight from its definition.
inline std::uint16_t crcOf(const QByteArray &bytes, unsigned crc = 0xFFFF)
{
    for (const char byte : bytes) {
        for (int bit = 7; bit >= 0; --bit) {
            const unsigned in = static_cast<unsigned char>(byte) >> bit & 1U;
            const unsigned out = crc >> 15 & 1U;
            crc = crc << 1 & 0xFFFFU;
            if (in != out)
                crc ^= 0x1021U;
        }
    }
    return static_cast<std::uint16_t>(crc);
}

// Start and step (Hz) of a sweep: 8.98 MHz in steps of 100 Hz. Each frame's checksum begins with these bytes.
inline const QByteArray kPicFramePlan = QByteArray::fromHex("00890620 00000064");

// Builds a frame as described in docs/hardware/pic-board.md: A5 5A, the sequence number, the samples as one string of
// ten bits each, and the checksum over the plan and all bytes after the sync bytes.
inline QByteArray picFrame(std::uint8_t sequence, const QList<int> &samples, const QByteArray &plan = kPicFramePlan)
{
    QByteArray bits;
    for (const int sample : samples)
        for (int bit = 9; bit >= 0; --bit)
            bits += (sample >> bit & 1) != 0 ? '1' : '0';
    QByteArray body(1, static_cast<char>(sequence));
    for (qsizetype at = 0; at < bits.size(); at += 8)
        body += static_cast<char>(bits.mid(at, 8).toInt(nullptr, 2));
    const std::uint16_t crc = crcOf(plan + body);
    return QByteArray::fromHex("A55A") + body + static_cast<char>(crc >> 8) + static_cast<char>(crc & 0xFF);
}

} // namespace calvorn::test
