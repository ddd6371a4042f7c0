// A bound on the program's memory. A small recording can ask for many gigabytes of samples; with a bound that
// is a failure of the recording, without one it may be the end of other programs on the machine.
#pragma once

#include <cstdint>
#include <string>

namespace CLI {
class App;
}

/// Adds --max-memory to a subcommand. bytes gets the value: three quarters of the machine's memory unless the
/// command line says otherwise; 0 for no bound.
void AddMemoryOption(CLI::App& command, uint64_t& bytes);

/// Bounds the address space of the process; does nothing for 0.
void LimitMemory(uint64_t bytes);
