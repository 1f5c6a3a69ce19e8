// SPDX-License-Identifier: MIT
#include "server/links/thread_start.h"

#include <QCoreApplication>

#include <system_error>
#include <utility>

namespace calvorn {

ThreadError::ThreadError()
    : std::runtime_error(sentence().toStdString())
{
}

QString ThreadError::sentence()
{
    return QCoreApplication::translate("ThreadStart",
                                       "The computer cannot start another thread; close other programs and try again.");
}

std::thread startThread(std::function<void()> body)
{
    try {
        return std::thread(std::move(body));
    } catch (const std::system_error &) {
        throw ThreadError();
    }
}

} // namespace calvorn
