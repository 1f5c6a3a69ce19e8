// SPDX-License-Identifier: MIT
#pragma once

namespace calvorn {

// Makes the kernel send SIGTERM to this process when its parent dies for any reason (prctl(2), PR_SET_PDEATHSIG).
// Call it first in main(). Returns false if the parent died just before the call; the process must then exit
// immediately.
bool endWithParent();

// Makes the kernel resume this process when its parent dies, because a stopped process would not handle that SIGTERM.
// Each thread has only one such signal, so call this from a different thread than endWithParent().
void wakeWithParent();

// Leaves the terminal's process group, so that Ctrl+C and Ctrl+Z reach only the parent, which shuts down or stops this
// process in an orderly way.
void leaveTerminalGroup();

// Blocks SIGTERM, SIGINT and SIGHUP until they are read from terminationSignals(), so that they no longer kill the
// process. Call it in main() before the first thread starts, because threads inherit the mask.
void holdTerminationBack();

// Ignores SIGPIPE, so that writing to a closed pipe fails instead of killing the process.
void ignoreBrokenPipes();

// Returns a non-blocking descriptor that becomes readable when a termination signal is pending (signalfd(2)); the
// caller closes it. Returns a negative number if the system is out of descriptors. Signals that were ignored when the
// process started remain ignored, as nohup(1) requires.
int terminationSignals();

// Returns whether the process was started with this signal ignored.
bool isIgnored(int signal);

// Ctrl+Z stops a process immediately, even in the middle of a call with a time limit. holdStopBack() blocks such a
// stop until letStop(), which returns after the process has been resumed. Call holdStopBack() in main() before the
// first thread starts.
void holdStopBack();
void letStop();

// Like terminationSignals(), but for a pending stop.
int heldStop();

// Opens /dev/null in place of a standard input, output or error that was closed when the program started; otherwise
// another file could reuse its descriptor. Writing to such a standard output fails. Call it first in main().
void keepStandardDescriptors();

// Flushes the streams and exits without running exit handlers. Required in a process that uses D-Bus: the libraries'
// exit handlers run in parallel with the bus thread and can wait for it forever.
[[noreturn]] void endAtOnce(int code);

} // namespace calvorn
