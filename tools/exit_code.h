// SPDX-License-Identifier: MIT
#pragma once

namespace calvorn {

// Exit codes of calvorn-sweep. After a signal: 128 plus the signal number.
enum ExitCode {
    kDone = 0,
    kBadArguments = 1,
    kBadSettings = 2,     // the settings file cannot be read, or names an unsupported device
    kNoPort = 3,          // the port cannot be opened, or was lost
    kRefused = 4,         // the hardware or the server refused a command
    kNoAnswer = 5,        // no sweep arrived in time
    kFileNotWritable = 6, // the sweep was taken but could not be written
    kFileNotUsable = 7,   // a specified sweep or limit file cannot be read or does not match
    kLimitsBroken = 8,    // the sweep was taken but violates the limits
    kSignalled = 128
};

} // namespace calvorn
