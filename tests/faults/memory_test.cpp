// Recordings whose samples would need more memory than there is.
#include "recorderfile/compress.h"
#include "recorderfile/recorderfile.h"
#include "support/device.h"

#include <gtest/gtest.h>

#include <array>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace recorderfile;

namespace {

constexpr rlim_t AddressSpace = rlim_t{1} << 30;

// A channel of this many points made of copies of one block.
AnalogChannel CopyBomb(uint32_t points)
{
    constexpr uint16_t BlockSamples = 65535;
    AnalogChannel channel;
    channel.name = QStringLiteral("Q1:Ia");
    channel.points = points;
    channel.compressed = 1;
    const int controls = static_cast<int>(points / (2 * BlockSamples)) + 1;
    channel.rawData = CompressedArea(2 * points, BlockSamples, std::vector<int16_t>(BlockSamples, 1))
                          .Raw(QByteArray(controls, '\0'))
                          .Bytes();
    return channel;
}

// Converts in a child whose address space is limited; returns the device's last error, or "converted".
QString ConvertLimited(const Recording& recording)
{
    TestStation station("Тип Comtrade 1999=1\n");
    const QString path = station.Directory().Write(QStringLiteral("rec.ZU"), Encode(recording));
    int ends[2] = {};
    if (pipe(ends) != 0)
        qFatal("no pipe");
    const pid_t child = fork();
    if (child == 0) {
        const rlimit limit{AddressSpace, AddressSpace};
        setrlimit(RLIMIT_AS, &limit);
        const bool converted =
            station.Converter().ConvertToComtrade(path, station.Directory().Path(QStringLiteral("out")), 0);
        const QByteArray text = converted ? QByteArray("converted") : station.Device().LastError.toUtf8();
        _exit(write(ends[1], text.constData(), static_cast<size_t>(text.size())) == text.size() ? 0 : 1);
    }
    close(ends[1]);
    std::array<char, 4096> text{};
    const ssize_t size = read(ends[0], text.data(), text.size());
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return QStringLiteral("crashed");
    return QString::fromUtf8(text.data(), static_cast<int>(size));
}

const QString Refused =
    QStringLiteral("Ошибка загрузки параметров аналогового канала [чтение файла, ошибка выделения памяти]");

TEST(MemoryBombs, OneChannelBeyondTheAddressSpaceGivesTheAllocationText)
{
    for (const uint32_t points : {600000000U, 1000000000U, 2147483647U}) {
        Recording recording;
        EXPECT_EQ(ConvertLimited(recording.Add(CopyBomb(points))), Refused) << points;
    }
}

TEST(MemoryBombs, ManyChannelsThatFitSinglyGiveTheAllocationText)
{
    Recording recording;
    for (int i = 0; i < 40; ++i)
        recording.Add(CopyBomb(50000000));
    EXPECT_EQ(ConvertLimited(recording), Refused);
}

TEST(MemoryBombs, ALengthThatTheFileDoesNotHoldAllocatesNothing)
{
    AnalogChannel channel;
    channel.samples = {1, 2};
    channel.dataLength = 4000000000U;
    channel.points = 2000000000U;
    Recording recording;
    EXPECT_EQ(
        ConvertLimited(recording.Add(channel)),
        QStringLiteral("Ошибка загрузки параметров аналогового канала [чтение файла (данные AnChannel)]"));
}

TEST(MemoryBombs, AnAreaThatCannotReachItsPointsAllocatesNothing)
{
    AnalogChannel channel = CopyBomb(2000000000U);
    channel.rawData->chop(200);
    Recording recording;
    EXPECT_EQ(
        ConvertLimited(recording.Add(channel)),
        QStringLiteral("Ошибка загрузки параметров аналогового канала [ошибка распаковки сжатых данных]"));
}

TEST(MemoryBombs, MemoryThatRunsOutBesideTheSamplesIsAFailureToo)
{
    // The samples just fit, but what the conversion needs besides them may not: whatever happens, it is no
    // crash.
    for (uint32_t points = 440000000; points < 500000000; points += 10000000) {
        Recording recording;
        const QString text = ConvertLimited(recording.Add(CopyBomb(points)).Add(DiscreteChannel{}));
        EXPECT_NE(text, QStringLiteral("crashed")) << points;
    }
}

} // namespace
