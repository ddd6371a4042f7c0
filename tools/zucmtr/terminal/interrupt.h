// Ctrl-C and SIGTERM: the first signal lets the current work finish, the second ends the program at once.
#pragma once

namespace interrupt {

/// Handles the signals from here on.
void Install();

/// The same, but a second signal does nothing: for a process whose parent decides when to wait no longer.
void InstallPatiently();

/// Whether a signal has arrived.
bool Came();

/// Number of the signal; 0 if none has arrived.
int Signal();

/// The exit code of a program that a signal ended: 130 for Ctrl-C, 143 for SIGTERM.
int ExitCode();

} // namespace interrupt
