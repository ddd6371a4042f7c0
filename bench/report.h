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

class Contest;

/// One line per measurement, printed as a table for a Markdown document.
class Report
{
public:
    /// A measurement whose ratio to its limit shall not exceed target.
    void AtMost(double target, double ratio, const std::string& workload, const std::string& limit,
                const std::string& measured);

    /// A measurement whose ratio shall reach target.
    void AtLeast(double target, double ratio, const std::string& workload, const std::string& limit,
                 const std::string& measured);

    /// The same for a contest, whose limit has a name. The result says so if it is not steady.
    void AtMost(double target, const Contest& contest, const std::string& workload, const std::string& limit);

    /// The speed of a contest's measured side against its limit, likewise.
    void SpeedAtLeast(double target, const Contest& contest, const std::string& workload,
                      const std::string& limit);

    /// A contest without a target.
    void Ratio(const Contest& contest, const std::string& workload, const std::string& limit);

    /// A measurement without a target, which explains another one.
    void Detail(const std::string& workload, const std::string& measured);

    /// Writes the lines to a file, or appends those of a file written so.
    void Save(std::FILE* file) const;
    void Load(std::FILE* file);

    /// Prints all lines to the standard output, with aligned columns.
    void Print() const;

private:
    using Cells = std::vector<std::string>;

    std::vector<Cells> lines;
};

} // namespace bench
