// Names that are not what they look like: directories, pipes, sockets and links.
#include "recorderfile/recorderfile.h"
#include "support/device.h"

#include <gtest/gtest.h>

#include <QDir>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace recorderfile;

namespace {

QByteArray SmallRecording()
{
    AnalogChannel current;
    current.name = QStringLiteral("Q1:Ia");
    current.samples = {1, 2, 3};
    Recording recording;
    return Encode(recording.Add(current).Add(DiscreteChannel{QStringLiteral("Q1:x"), 0, {{0, 1}}}));
}

void MakeDirectoryAt(const QByteArray& path)
{
    ASSERT_EQ(mkdir(path.constData(), 0755), 0);
}

void MakePipeAt(const QByteArray& path)
{
    ASSERT_EQ(mkfifo(path.constData(), 0644), 0);
}

void MakeSocketAt(const QByteArray& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(static_cast<size_t>(path.size()), sizeof address.sun_path);
    qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(descriptor);
}

void MakeLinkToItselfAt(const QByteArray& path)
{
    ASSERT_EQ(symlink(path.constData(), path.constData()), 0);
}

void MakeDanglingLinkAt(const QByteArray& path)
{
    ASSERT_EQ(symlink("no-such-file", path.constData()), 0);
}

struct Thing
{
    const char* name;
    void (*make)(const QByteArray& path);
    bool isThere; // counts as an existing file
};

const Thing Things[] = {{"directory", MakeDirectoryAt, true},
                        {"pipe", MakePipeAt, true},
                        {"socket", MakeSocketAt, true},
                        {"link to itself", MakeLinkToItselfAt, false},
                        {"dangling link", MakeDanglingLinkAt, false}};

class HostileFile : public testing::TestWithParam<Thing>
{
protected:
    void Make(const QString& name) const
    {
        GetParam().make(QFile::encodeName(station.Directory().Path(name)));
    }

    TestStation station{"Тип Comtrade 1999=1\n"};
};

TEST_P(HostileFile, AsAContinuationEndsTheChain)
{
    Make(QStringLiteral("rec.Z01"));
    EXPECT_TRUE(station.Convert(SmallRecording()));
    EXPECT_EQ(station.Device().LogMessages.size(), GetParam().isThere ? 2U : 1U);
    if (GetParam().isThere) {
        EXPECT_TRUE(station.Device().LogMessages[0].contains(QStringLiteral("[Ошибка открытия файла]")));
    }
}

TEST_P(HostileFile, AsTheFirstFileIsAFailure)
{
    Make(QStringLiteral("a.ZU"));
    const QString path = station.Directory().Path(QStringLiteral("a.ZU"));
    EXPECT_FALSE(
        station.Converter().ConvertToComtrade(path, station.Directory().Path(QStringLiteral("out")), 0));
    EXPECT_EQ(station.Device().LastError, GetParam().isThere
                                              ? QStringLiteral("Ошибка открытия файла")
                                              : QStringLiteral("Файл не существует [%1]").arg(path));
}

TEST_P(HostileFile, AsATemporaryFileIsReplacedOrAFailure)
{
    Make(QStringLiteral("out/240131,120000.2,+3t,Object,Source.Subject.dattmp"));
    const bool isDirectory = GetParam().make == MakeDirectoryAt;
    EXPECT_EQ(station.Convert(SmallRecording()), !isDirectory);
    EXPECT_EQ(station.Directory().Names().contains(QStringLiteral("no-such-file")), false);
    EXPECT_EQ(station.Directory().Names(QStringLiteral("out")).contains(QStringLiteral("no-such-file")),
              false);
}

TEST_P(HostileFile, AsAFinalNameIsReplacedUnlessItIsADirectory)
{
    const QString name = QStringLiteral("out/240131,120000.2,+3t,Object,Source.Subject.dat");
    Make(name);
    EXPECT_TRUE(station.Convert(SmallRecording()));
    const bool isDirectory = GetParam().make == MakeDirectoryAt;
    EXPECT_EQ(QFileInfo(station.Directory().Path(name)).isFile(), !isDirectory);
}

INSTANTIATE_TEST_SUITE_P(Things, HostileFile, testing::ValuesIn(Things), [](const auto& thing) {
    return QString::fromLatin1(thing.param.name).remove(QLatin1Char(' ')).toStdString();
});

TEST(HostileDirectory, AFileAsTheOutputDirectoryIsAFailure)
{
    TestStation station;
    const QString file = station.Directory().Write(QStringLiteral("file"), "x");
    const QString recording = station.Directory().Write(QStringLiteral("rec.ZU"), SmallRecording());
    EXPECT_FALSE(station.Converter().ConvertToComtrade(recording, file, 0));
    EXPECT_EQ(ReadBytes(file), QByteArray("x"));
}

TEST(HostileDirectory, ADirectoryThatTakesNoFilesIsAFailure)
{
    TestStation station;
    const QString recording = station.Directory().Write(QStringLiteral("rec.ZU"), SmallRecording());
    // Nobody can make files here, not even root.
    EXPECT_FALSE(station.Converter().ConvertToComtrade(recording, QStringLiteral("/proc/self/fdinfo"), 0));
    EXPECT_EQ(station.Device().LastError,
              QStringLiteral("Ошибка записи в [240131,120000.2,+3t,Object,Source.Subject.cfgtmp]"));
}

} // namespace
