// INF files that cannot be written.
#include "config/QSettingsRu.h"
#include "inftext.h"

#include <gtest/gtest.h>

#include <csignal>
#include <stdexcept>
#include <sys/resource.h>

namespace {

const QStringList WriteFailure{"\"No space left on device\"", "WriteString error!"};

QStringList* debugLog = nullptr;

void KeepMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (debugLog != nullptr && type == QtDebugMsg && QByteArray(context.category) == "default")
        *debugLog << message.trimmed();
}

// Keeps what goes to the debug log.
class DebugLog
{
public:
    DebugLog() : previous(qInstallMessageHandler(KeepMessage)) { debugLog = &Messages; }
    ~DebugLog()
    {
        debugLog = nullptr;
        qInstallMessageHandler(previous);
    }
    DebugLog(const DebugLog&) = delete;
    DebugLog& operator=(const DebugLog&) = delete;

    QStringList Messages;

private:
    QtMessageHandler previous;
};

// Lets no file of this process grow beyond some bytes, as a full disk would.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    void (*handler)(int);
    rlimit before{};
};

// A device whose INF file is longer than the buffer of a QFile, with its re-sorter.
class InfWriteFailure : public testing::Test
{
protected:
    InfWriteFailure()
    {
        const TestDirectory ini;
        device.LoadFromIni(ini.Write(QStringLiteral("ZuDrv.ini"), "[Dev]\n" + Entries("A", ManyLines())),
                           QStringLiteral("Dev"));
        device.PreResort();
        full.setFileName(QStringLiteral("/dev/full"));
        full.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        device.Resorter->PrevFileAnIndexes = {0};
        device.Resorter->PrevFileDiIndexes = {0};
        file.CfgAnLines = {"1,b,,,,f,g,h,i,j,k,l,m"};
        file.CfgDiLines = {"1,x,,Q1,0"};
        log.Messages.clear();
    }
    ~InfWriteFailure() override
    {
        device.Clear();
        QSettingsRu::Clear();
    }

    static std::vector<QByteArray> ManyLines()
    {
        std::vector<QByteArray> lines;
        for (int i = 0; i < 200; ++i)
            lines.push_back("W" + QByteArray::number(i) + ":Ua,V_L=110 E_G=L S_G=VT");
        return lines;
    }

    ZuCmtrDevParam device;
    ZuCmtrConverter converter;
    ZuFileFormat file;
    std::vector<ZuFileFormat*> files{&file};
    QFile full;
    DebugLog log;
};

} // namespace

TEST_F(InfWriteFailure, EachFormSetsTheFlagAndThrows)
{
    const auto expectFailure = [&](const auto& write) {
        bool err = false;
        log.Messages.clear();
        try {
            write(err);
            ADD_FAILURE() << "nothing was thrown";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "WriteString error!");
        }
        EXPECT_TRUE(err);
        EXPECT_EQ(log.Messages, WriteFailure.mid(0, 1));
    };
    ResorterZuCmtrConv& resorter = *device.Resorter;
    expectFailure([&](bool& err) { resorter.WriteString(full, QStringLiteral("x"), err); });
    expectFailure([&](bool& err) { resorter.WriteString(full, "x", err); });
    expectFailure([&](bool& err) { resorter.WriteStringUtf8(full, "x", err); });
}

TEST_F(InfWriteFailure, EachPublicPartGivesFalse)
{
    EXPECT_FALSE(device.Resorter->DoInfSec_File_Description(full, &file));
    EXPECT_EQ(log.Messages, WriteFailure);
    EXPECT_FALSE(device.Resorter->DoInfSec_Analog_Channels(full, &file));
    EXPECT_EQ(log.Messages, WriteFailure + WriteFailure);
    EXPECT_FALSE(device.Resorter->DoInfSec_Status_Channels(full, &file));
    EXPECT_EQ(log.Messages, WriteFailure + WriteFailure + WriteFailure);
}

TEST_F(InfWriteFailure, WholeFileGivesFalse)
{
    EXPECT_FALSE(device.Resorter->WriteInf(full, &file));
    EXPECT_EQ(log.Messages, WriteFailure);
}

TEST_F(InfWriteFailure, FileThatIsOpenForReadingGivesFalse)
{
    const TestDirectory directory;
    QFile inf(directory.Write(QStringLiteral("inf"), "as it was"));
    ASSERT_TRUE(inf.open(QIODevice::ReadOnly));
    EXPECT_FALSE(device.Resorter->WriteInf(inf, &file));
    inf.close();
    EXPECT_EQ(ReadBytes(inf.fileName()), "as it was");
}

TEST_F(InfWriteFailure, FullDeviceClosesTheFileAndGivesFalse)
{
    device.FileInf.setFileName(QStringLiteral("/dev/full"));
    EXPECT_FALSE(converter.WriteInf(&files, &device));
    EXPECT_FALSE(device.FileInf.isOpen());
    EXPECT_EQ(log.Messages, WriteFailure);
}

TEST_F(InfWriteFailure, DiskThatFillsUpLeavesWhatWasWritten)
{
    const TestDirectory directory;
    device.FileInf.setFileName(directory.Path(QStringLiteral("whole")));
    ASSERT_TRUE(converter.WriteInf(&files, &device));
    EXPECT_FALSE(device.FileInf.isOpen());
    const QByteArray whole = ReadBytes(directory.Path(QStringLiteral("whole")));

    device.FileInf.setFileName(directory.Path(QStringLiteral("cut")));
    bool written = true;
    {
        const FileSizeLimit limit(20000);
        written = converter.WriteInf(&files, &device);
    }
    EXPECT_FALSE(written);
    EXPECT_FALSE(device.FileInf.isOpen());
    EXPECT_EQ(ReadBytes(directory.Path(QStringLiteral("cut"))), whole.left(20000));
}

TEST_F(InfWriteFailure, FileThatCannotBeOpenedGivesFalse)
{
    const TestDirectory directory;
    device.FileInf.setFileName(directory.Path(QStringLiteral("none/inf")));
    EXPECT_FALSE(converter.WriteInf(&files, &device));
    EXPECT_EQ(directory.Names(), QStringList());
}

TEST_F(InfWriteFailure, NoSegmentIsAnOutOfRangeException)
{
    const TestDirectory directory;
    device.FileInf.setFileName(directory.Path(QStringLiteral("inf")));
    files.clear();
    EXPECT_THROW(converter.WriteInf(&files, &device), std::out_of_range);
    EXPECT_TRUE(device.FileInf.isOpen());
}

TEST_F(InfWriteFailure, SecondWritingOfTheSameSegmentIsTheSame)
{
    const TestDirectory directory;
    device.FileInf.setFileName(directory.Path(QStringLiteral("inf")));
    ASSERT_TRUE(converter.WriteInf(&files, &device));
    const QByteArray first = ReadBytes(device.FileInf.fileName());
    ASSERT_TRUE(converter.WriteInf(&files, &device));
    EXPECT_EQ(ReadBytes(device.FileInf.fileName()), first);
}
