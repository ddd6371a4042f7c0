// Prints what the reader gives for each channel of records: "A 0 SHA-256" of its codes, "D 0 SHA-256" of its states. The
// codes are hashed as doubles in the order of the samples, missing ones as 1e300.
#include "comtrade/record.h"

#include <QCryptographicHash>

#include <cmath>
#include <cstdio>
#include <exception>
#include <vector>

namespace {

QByteArray Hash(const char* bytes, size_t count)
{
    return QCryptographicHash::hash(QByteArray::fromRawData(bytes, static_cast<int>(count)),
                                    QCryptographicHash::Sha256)
        .toHex();
}

void Print(const char* path)
{
    comtrade::Record record(QString::fromUtf8(path));
    std::vector<std::vector<double>> codes(record.Config().analog.size());
    std::vector<std::vector<quint8>> states(record.Config().states.size());
    comtrade::Row row;
    while (record.Next(row)) {
        for (size_t i = 0; i < codes.size(); ++i)
            codes[i].push_back(std::isnan(row.analog[i]) ? 1e300 : row.analog[i]);
        for (size_t i = 0; i < states.size(); ++i)
            states[i].push_back(row.states[i]);
    }
    std::printf("%s\n", path);
    for (size_t i = 0; i < codes.size(); ++i)
        std::printf("A %zu %s\n", i,
                    Hash(reinterpret_cast<const char*>(codes[i].data()), codes[i].size() * sizeof(double))
                        .constData());
    for (size_t i = 0; i < states.size(); ++i)
        std::printf("D %zu %s\n", i,
                    Hash(reinterpret_cast<const char*>(states[i].data()), states[i].size()).constData());
}

} // namespace

int main(int count, char** arguments)
{
    try {
        for (int i = 1; i < count; ++i)
            Print(arguments[i]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
