// SPDX-License-Identifier: MIT
#pragma once

namespace calvorn {

// Makes the kernel send SIGTERM to this process when its parent dies for any reason (prctl(2), PR_SET_PDEATHSIG).
// Call it first in main(). Returns false if the parent died just before the call; the caller must then end the
// process.
bool endWithParent();

// Makes the kernel resume this process when its parent dies; a stopped process would not handle that SIGTERM. A
// thread has only one such signal, so call this from a thread other than that of endWithParent().
void wakeWithParent();

// Leaves the process group of the terminal, so that Ctrl+C and Ctrl+Z reach only the parent, which ends or stops this
// process in order.
void leaveTerminalGroup();

// Blocks SIGTERM, SIGINT and SIGHUP until they are read from terminationSignals(), so that they no longer kill the
// process. Call it in main() before the first thread starts, because threads inherit the mask.
void holdTerminationBack();

// Ignores SIGPIPE, so that a closed pipe is reported as a failed write.
void ignoreBrokenPipes();

// Returns a non-blocking descriptor that becomes readable when one of those signals is pending (signalfd(2)); the
// caller closes it. Returns a negative number if the system is out of descriptors. Signals that were ignored when the
// process started stay ignored, as nohup(1) requires.
int terminationSignals();

// Returns whether the process was started with this signal ignored.
bool isIgnored(int signal);

// Ctrl+Z stops a process immediately, even during a call whose time limit keeps running. holdStopBack() blocks such a
// stop until letStop(), which returns after the process has been resumed. Call holdStopBack() in main() before the
// first thread starts.
void holdStopBack();
void letStop();

// Like terminationSignals(), for a pending stop.
int heldStop();

// Opens /dev/null for a standard input, output or error that was closed when the program started; otherwise another
// file could get its number. Writing to such an output fails. Call it first in main().
void keepStandardDescriptors();

// Flushes the streams and ends the process without exit handlers. Required in a process that uses the bus: the exit
// handlers of the libraries run in parallel with the bus thread and can wait for it forever.
[[noreturn]] void endAtOnce(int code);

} // namespace calvorn
