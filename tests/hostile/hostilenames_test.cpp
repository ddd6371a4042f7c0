// Identity texts and channel names that try to leave the output directory or to break the writers.
#include "recorderfile/recorderfile.h"
#include "support/device.h"

#include <gtest/gtest.h>

#include <QDirIterator>

using namespace recorderfile;

namespace {

Recording SmallRecording(const QString& channelName = QStringLiteral("Q1:Ia"))
{
    AnalogChannel current;
    current.name = channelName;
    current.samples = {1, 2, 3};
    Recording recording;
    return recording.Add(current).Add(DiscreteChannel{QStringLiteral("Q1:x"), 0, {{0, 1}}});
}

// Files below a directory that are not in its subdirectory out.
QStringList FilesOutside(const QString& root)
{
    QStringList outside;
    QDirIterator files(root, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next().mid(root.length() + 1);
        if (!path.startsWith(QStringLiteral("out/")))
            outside.append(path);
    }
    outside.sort();
    return outside;
}

class HostileIdentity : public testing::TestWithParam<const char*>
{};

TEST_P(HostileIdentity, WritesInsideTheOutputDirectoryOrFails)
{
    const QByteArray text(GetParam());
    for (const char* key : {"Объект", "Источник", "Субъект"}) {
        TestStation station(QByteArray(key) + "=" + text + "\n");
        const bool converted = station.Convert(Encode(SmallRecording()));
        EXPECT_EQ(FilesOutside(station.Directory().Path()),
                  QStringList({QStringLiteral("ZuDrv.ini"), QStringLiteral("rec.ZU")}));
        if (!converted) {
            EXPECT_TRUE(station.Device().LastError.startsWith(QStringLiteral("Ошибка записи в [")));
        } else {
            EXPECT_EQ(station.Directory().Names(QStringLiteral("out")).size(), 4);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, HostileIdentity,
                         testing::Values("../../up", "/etc/passwd", "..", ".", "a/../../b", "\\..\\x",
                                         "%1%2%3%4%5", "%99 %0 %L1", "tab\there", "\x01\x02\x1b[31m",
                                         "\xef\xbb\xbf bom", "C:\\x", "~root", "-rf", "$(x)`y`",
                                         "\xf0\x9f\x98\x80", "\xff\xfe\x80"));

TEST(HostileNames, AnIdentityOf300CharactersIsAFailureThatNamesTheFile)
{
    TestStation station("Объект=" + QByteArray(300, 'x') + "\n");
    EXPECT_FALSE(station.Convert(Encode(SmallRecording())));
    EXPECT_EQ(station.Device().LastError,
              QStringLiteral("Ошибка записи в [240131,120000.2,+3t,%1,Source.Subject.cfgtmp]")
                  .arg(QString(300, QLatin1Char('x'))));
    EXPECT_TRUE(station.Directory().Names(QStringLiteral("out")).isEmpty());
}

TEST(HostileNames, ANulInAnIdentityTextIsAFailureAndWritesNothing)
{
    TestStation station(QByteArray("Объект=a\0b\n", 18));
    EXPECT_FALSE(station.Convert(Encode(SmallRecording())));
    EXPECT_TRUE(
        station.Device().LastError.startsWith(QStringLiteral("Ошибка записи в [240131,120000.2,+3t,a")));
    EXPECT_TRUE(station.Directory().Names(QStringLiteral("out")).isEmpty());
}

TEST(HostileNames, ChannelNamesOfAnyBytesConvert)
{
    for (const char* name : {"%1:%2", ":", "::", "a,b:c,d", "\r\n:x", "\x1b[0m:\x07", "Q1:", ":Ia"}) {
        TestStation station;
        EXPECT_TRUE(station.Convert(Encode(SmallRecording(QString::fromUtf8(name))))) << name;
        EXPECT_EQ(station.Directory().Names(QStringLiteral("out")).size(), 4);
    }
}

} // namespace
