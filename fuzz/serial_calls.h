// SPDX-License-Identifier: MIT
#pragma once

#include "fuzz/board_link.h"
#include "fuzz/driver_calls.h"
#include "server/links/line_settings.h"

#include <QThread>

#include <memory>
#include <stdexcept>

namespace calvorn::fuzz {

// Opens ports for a driver: even port numbers connect to the board, odd ones do not exist.
class LinkSource
{
public:
    explicit LinkSource(SerialBoard &board)
        : m_board(board)
    {
    }

    std::shared_ptr<ByteLink> open(int port)
    {
        if (port % 2 != 0)
            throw std::runtime_error("There is no such port.");
        auto opened = std::make_shared<BoardLink>(m_board);
        m_link = opened;
        return opened;
    }

    std::shared_ptr<BoardLink> link() const { return m_link.lock(); }

private:
    SerialBoard &m_board;
    std::weak_ptr<BoardLink> m_link;
};

// Runs driver calls, received bytes and line faults in arbitrary order.
template <typename Driver>
void playSerial(Driver &driver, LinkSource &source, FuzzedDataProvider &data)
{
    constexpr int kMostSteps = 64;
    constexpr int kMostWaits = 8;
    DriverCalls<Driver> calls(driver);
    int waits = 0;
    for (int step = 0; step < kMostSteps && data.remaining_bytes() > 0; ++step) {
        const auto kind = data.ConsumeIntegralInRange<int>(0, 9);
        const std::shared_ptr<BoardLink> link = source.link();
        if (kind == 0 && link)
            link->damageNext(data.ConsumeIntegral<std::uint8_t>());
        else if (kind == 1 && link)
            link->pump(0, QByteArray::fromStdString(data.ConsumeRandomLengthString(64)));
        else if (kind == 2 && link)
            link->unplug();
        else if (kind == 6 && link)
            link->unplugUnnoticed();
        else if (kind <= 4 && link)
            link->pump(data.ConsumeIntegralInRange<int>(1, 4000));
        else if (kind == 5 && ++waits < kMostWaits)
            QThread::msleep(2); // verifying that a reply is not too long takes 1 ms
        else
            calls.call(data);
        QCoreApplication::processEvents();
    }
    calls.end();
}

} // namespace calvorn::fuzz
