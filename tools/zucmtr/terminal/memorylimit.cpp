#include "zucmtr/terminal/memorylimit.h"

#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <sys/resource.h>
#include <unistd.h>

// With less than this the program itself, with the libraries that it loads, has no room.
static constexpr uint64_t SmallestLimit = uint64_t{128} << 20;

static uint64_t ThreeQuartersOfMemory()
{
    const auto pages = static_cast<uint64_t>(sysconf(_SC_PHYS_PAGES));
    return pages * static_cast<uint64_t>(sysconf(_SC_PAGESIZE)) / 4 * 3;
}

void AddMemoryOption(CLI::App& command, uint64_t& bytes)
{
    bytes = ThreeQuartersOfMemory();
    AddValue(command, "--max-memory", bytes, "SIZE",
             HelpText("memory", "Memory that the program may take, as 800M or 2G; 0: no limit. A recording "
                                "that needs more fails. Default: three quarters of the machine's memory"))
        ->transform(values::Size());
}

void LimitMemory(uint64_t bytes)
{
    if (bytes == 0)
        return;
    if (bytes < SmallestLimit)
        throw ConfigurationError(
            Tr("memory", "--max-memory: %1 bytes are too few; give 128M or more, or 0 for no limit")
                .arg(bytes));
    const rlimit limit{bytes, RLIM_INFINITY};
    if (setrlimit(RLIMIT_AS, &limit) != 0)
        throw ConfigurationError(
            Tr("memory", "--max-memory: the system does not take a limit of %1 bytes; give less").arg(bytes));
}
