// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <unistd.h>

namespace calvorn::test {

// While an object exists, file permissions apply to this process even if the tests run as root.
class Unprivileged
{
public:
    Unprivileged()
        : m_changed(geteuid() == 0 && seteuid(kNobody) == 0)
    {
    }
    ~Unprivileged()
    {
        if (m_changed && seteuid(0) != 0)
            qFatal("root does not come back");
    }
    Unprivileged(const Unprivileged &) = delete;
    Unprivileged &operator=(const Unprivileged &) = delete;

    bool holds() const { return geteuid() != 0; }

private:
    static constexpr uid_t kNobody = 65534;

    bool m_changed = false;
};

} // namespace calvorn::test
