// Channels whose data cannot be read although the file is long enough: a failing disk, or a file that
// shrinks.
#include "recording/anchanneldata.h"
#include "recording/dichanneldata.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTextCodec>

namespace {

constexpr qint64 ReadFails = -1;

// A file whose first read succeeds and whose later ones return a fixed count.
class FailingFile : public QFile
{
public:
    FailingFile(const QString& name, qint64 laterCount_) : QFile(name), laterCount(laterCount_)
    {
        EXPECT_TRUE(open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    }

protected:
    qint64 readData(char* data, qint64 size) override
    {
        if (reads++ == 0)
            return QFile::readData(data, size);
        return laterCount == ReadFails ? ReadFails : QFile::readData(data, laterCount);
    }

private:
    const qint64 laterCount;
    int reads = 0;
};

template <class Header>
QByteArray BytesOf(const Header& header)
{
    return {reinterpret_cast<const char*>(&header), static_cast<int>(sizeof header)};
}

// The text that a channel of these bytes, 20 of them data, leaves when the read of its data returns count.
template <class Channel>
QString TextOf(ZuFileSectionHeader section, const QByteArray& bytes, qint64 count)
{
    const TestDirectory directory;
    FailingFile file(directory.Write(QStringLiteral("channel"), bytes), count);
    Channel channel;
    EXPECT_FALSE(channel.Load(file, &section, QTextCodec::codecForName("CP866")));
    channel.Clear();
    return channel.ErrorText;
}

QString AnalogText(uint16_t compressed, qint64 count)
{
    ZuAnChannelHeader header{};
    header.points = 10;
    header.compressed = compressed;
    return TextOf<AnChannelData>({ZuSectionAnalog, "Q1:Ia", 130, 20}, BytesOf(header) + QByteArray(20, '\0'),
                                 count);
}

QString DiscreteText(qint64 count)
{
    return TextOf<DiChannelData>({ZuSectionDiscrete, "Q1:x", 81, 20},
                                 BytesOf(ZuDiChannelHeader{4, 0}) + QByteArray(20, '\0'), count);
}

} // namespace

TEST(FailingRead, OfAnalogDataIsReported)
{
    EXPECT_EQ(AnalogText(0, ReadFails), "чтение файла (данные AnChannel)");
    EXPECT_EQ(AnalogText(1, ReadFails), "чтение файла (данные AnChannel)");
}

TEST(FailingRead, OfAnalogDataThatEndEarlyIsReported)
{
    EXPECT_EQ(AnalogText(0, 19), "чтение файла (данные AnChannel)");
    EXPECT_EQ(AnalogText(1, 19), "чтение файла (данные AnChannel)");
}

TEST(FailingRead, OfDiscreteRecordsIsReported)
{
    EXPECT_EQ(DiscreteText(ReadFails), "чтение файла (данные DiChannel)");
}

TEST(FailingRead, OfDiscreteRecordsThatEndEarlyIsReported)
{
    EXPECT_EQ(DiscreteText(19), "чтение файла (данные DiChannel)");
}
