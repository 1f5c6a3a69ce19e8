// SPDX-License-Identifier: MIT
#pragma once

namespace calvorn {

// Has the kernel send SIGTERM to this process when its parent dies, however that happens (prctl(2),
// PR_SET_PDEATHSIG). To be called first thing in main(). Returns false when the parent died just before the kernel was
// told, in which case the caller ends by itself.
bool endWithParent();

// Has the kernel wake this process when its parent dies, if it has been stopped: it would not come to that SIGTERM. A
// thread has one such signal, so this is for another thread than the one that called endWithParent().
void wakeWithParent();

// Leaves the process group of the terminal: Ctrl+C and Ctrl+Z reach the parent alone, which ends or stops in order.
void leaveTerminalGroup();

// SIGTERM, SIGINT and SIGHUP no longer kill the process, but wait until they are read from terminationSignals(). To be
// called in main() before the first thread starts: every thread inherits the mask.
void holdTerminationBack();

// A vanished reader is seen as a failed write, and SIGPIPE does not kill the process.
void ignoreBrokenPipes();

// A descriptor that gets readable when one of those signals waits (signalfd(2)); it does not block. The caller closes
// it. Negative where the system has none left. Signals that this process was started with as ignored stay so, as
// nohup(1) wants it.
int terminationSignals();

// Whether the process was started with this signal ignored.
bool isIgnored(int signal);

// Ctrl+Z stops a program at once, also in the middle of a call whose time limit runs on. Once held back, such a stop
// waits until letStop() is called, which returns when the program has been told to go on. To be called in main() before
// the first thread starts.
void holdStopBack();
void letStop();

// A descriptor that gets readable when a stop waits; as terminationSignals().
int heldStop();

// A program that was started without standard input, output or error would find another file of its own under their
// numbers. To be called first thing in main(): they become /dev/null, and writing to the output then fails.
void keepStandardDescriptors();

// Ends the process as it is. For a process that uses the bus: the exit handlers of the libraries run beside the thread
// of the bus, and can wait for it for ever. What stands in the streams is written.
[[noreturn]] void endAtOnce(int code);

} // namespace calvorn
