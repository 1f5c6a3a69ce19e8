// SPDX-License-Identifier: MIT
#pragma once

namespace calvorn {

// How calvorn-sweep ends. After a signal it is 128 plus the signal's number.
enum ExitCode {
    kDone = 0,
    kBadArguments = 1,
    kBadSettings = 2,     // the settings file cannot be read, or names a device that is not supported
    kNoPort = 3,          // the port cannot be opened, or was lost
    kRefused = 4,         // the hardware or the server does not do what it was told
    kNoAnswer = 5,        // nothing came in time
    kFileNotWritable = 6, // the sweep was taken, and could not be kept
    kFileNotUsable = 7,   // a sweep or limits cannot be read from the file that was named, or do not fit
    kLimitsBroken = 8,    // the sweep was taken, and lies outside the limits
    kSignalled = 128
};

} // namespace calvorn
