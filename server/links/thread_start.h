// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>
#include <stdexcept>
#include <thread>

namespace calvorn {

// The system cannot start another thread. what() returns sentence() in UTF-8.
class ThreadError : public std::runtime_error
{
public:
    ThreadError();

    // Returns the message for the user.
    static QString sentence();
};

// Starts a thread that runs this function. Throws ThreadError if the system cannot start a thread.
std::thread startThread(std::function<void()> body);

} // namespace calvorn
