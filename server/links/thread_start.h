// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>
#include <stdexcept>
#include <thread>

namespace calvorn {

// The system cannot start another thread. what() is sentence() in UTF-8.
class ThreadError : public std::runtime_error
{
public:
    ThreadError();

    // One sentence for the user.
    static QString sentence();
};

// Starts a thread that runs this function. Throws ThreadError where std::thread throws std::system_error.
std::thread startThread(std::function<void()> body);

} // namespace calvorn
