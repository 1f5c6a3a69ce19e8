// SPDX-License-Identifier: MIT
#include "server/links/wake_up.h"

#include <QSocketNotifier>

#include <cerrno>
#include <cstdint>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>

namespace calvorn {

WakeUp::WakeUp(QObject *parent)
    : QObject(parent)
    , m_event(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (m_event < 0)
        throw std::system_error(errno, std::generic_category(), "eventfd");
    auto *notifier = new QSocketNotifier(m_event, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &WakeUp::clear);
}

WakeUp::~WakeUp()
{
    close(m_event);
}

void WakeUp::knock() const
{
    const std::uint64_t one = 1;
    // This fails only if 2^64 - 2 knocks are pending, in which case the owner wakes up anyway.
    [[maybe_unused]] const ssize_t written = write(m_event, &one, sizeof one);
}

void WakeUp::clear()
{
    std::uint64_t knocks = 0;
    if (read(m_event, &knocks, sizeof knocks) == static_cast<ssize_t>(sizeof knocks))
        emit knocked();
}

} // namespace calvorn
