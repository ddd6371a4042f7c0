// readrecord ROUNDS FILE: the seconds that the C++ reader takes for a record with all its samples, the shortest of some
// rounds; what the Python module is measured against.
#include "comtrade/record.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>

namespace {

double Read(const QString& path)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point begin = Clock::now();
    comtrade::Record record(path);
    comtrade::Block block;
    while (record.Next(block)) {
    }
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3)
        return 2;
    try {
        double shortest = 1e9;
        for (int round = 0; round < std::atoi(arguments[1]); ++round)
            shortest = std::min(shortest, Read(QString::fromUtf8(arguments[2])));
        std::printf("%.6f\n", shortest);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
