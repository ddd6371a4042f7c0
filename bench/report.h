// The table of results.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace bench {

/// A time with three digits and its unit.
std::string TimeText(double seconds);

/// A number of bytes in MB of 1000000 bytes.
std::string MegabyteText(double bytes);

/// One line a measurement, printed as a table that a Markdown document can take.
class Report
{
public:
    /// A measurement whose ratio to its limit shall not exceed target.
    void AtMost(double target, double ratio, const std::string& workload, const std::string& limit,
                const std::string& measured);

    /// One whose ratio shall reach target.
    void AtLeast(double target, double ratio, const std::string& workload, const std::string& limit,
                 const std::string& measured);

    /// One that explains another: it has no target.
    void Detail(const std::string& workload, const std::string& measured);

    /// Writes the lines to a file, or appends those of such a file.
    void Save(std::FILE* file) const;
    void Load(std::FILE* file);

    /// Prints all lines to the standard output, columns in line.
    void Print() const;

private:
    using Cells = std::vector<std::string>;

    std::vector<Cells> lines;
};

} // namespace bench
