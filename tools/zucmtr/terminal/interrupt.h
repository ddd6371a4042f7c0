// Ctrl-C and SIGTERM: the first signal lets the current work finish, the second ends the program at once.
//
// A reader of standard output that goes away, as in 'zucmtr events *.ZU | head', ends every command without a
// word, and the shell has 141 as its exit code. By default the system does that; a command that has to clear
// something away first has the signal count as an interruption.
#pragma once

namespace interrupt {

/// Handles the signals from here on.
void Install();

/// The same, but a second signal does nothing: for a process whose parent decides when to wait no longer.
void InstallPatiently();

/// A reader of standard output that goes away counts as a signal from here on, too.
void InstallForClosedPipe();

/// Whether a signal has arrived.
bool Came();

/// Number of the signal; 0 if none has arrived.
int Signal();

/// The exit code of a program that a signal ended: 130 for Ctrl-C, 143 for SIGTERM, 141 if
/// nobody reads standard output any more.
int ExitCode();

} // namespace interrupt
