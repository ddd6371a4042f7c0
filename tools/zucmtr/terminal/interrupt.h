// Ctrl-C and SIGTERM: the first lets the work at hand come to its end, the second ends the program at once.
#pragma once

namespace interrupt {

/// Takes the signals from here on.
void Install();

/// Whether one has come.
bool Came();

/// Number of the signal; 0 if none has come.
int Signal();

/// The exit code of a program that a signal ended: 130 for Ctrl-C, 143 for SIGTERM.
int ExitCode();

} // namespace interrupt
