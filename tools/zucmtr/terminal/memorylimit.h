// A bound on the program's memory. A small recording can ask for many gigabytes of samples; with a bound only
// the recording fails, without one other programs on the machine may be ended.
#pragma once

#include <cstdint>

namespace CLI {
class App;
}

/// Adds --max-memory to a subcommand. bytes is set to its value: three quarters of the machine's memory
/// unless the command line says otherwise; 0 for no bound.
void AddMemoryOption(CLI::App& command, uint64_t& bytes);

/// Bounds the address space of the process; does nothing for 0.
void LimitMemory(uint64_t bytes);
