// readrecord ROUNDS FILE: the seconds of the processor that the C++ reader takes for a record, from opening
// it to the last block of its samples, the shortest of some rounds. A recording is converted into a temporary
// record first. That is what the Python module is measured against; nothing is kept of the blocks.
#include "comtrade/record.h"
#include "zucmtr/host/recordsource.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <stdexcept>

namespace {

double SecondsToRead(const QString& path)
{
    const std::clock_t start = std::clock();
    const RecordSource source(path, {}, false);
    comtrade::Record record(source.Path());
    comtrade::Block block;
    qint64 count = 0;
    while (record.Next(block))
        count += static_cast<qint64>(block.count);
    if (count != record.Config().SampleCount())
        throw std::runtime_error("samples are lacking");
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3)
        return 2;
    try {
        double shortest = 1e9;
        for (int round = 0; round < std::atoi(arguments[1]); ++round)
            shortest = std::min(shortest, SecondsToRead(QString::fromUtf8(arguments[2])));
        std::printf("%.6f\n", shortest);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
