// The tests start processes, for which Qt wants an application object. What must hold for all of them is
// checked at the end: they leave nothing among the temporary files, and do not touch the machine's null
// device.
#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTextCodec>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

class Surroundings : public testing::Environment
{
public:
    explicit Surroundings(const QString& temporary_) : temporary(temporary_) {}

    void TearDown() override
    {
        EXPECT_TRUE(
            QDir(temporary).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
            << QDir(temporary)
                   .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::Hidden | QDir::System)
                   .join(' ')
                   .toStdString();
        struct stat status = {};
        EXPECT_EQ(stat("/dev/null", &status), 0);
        EXPECT_TRUE(S_ISCHR(status.st_mode)) << "rm /dev/null && mknod -m 666 /dev/null c 1 3";
    }

private:
    const QString temporary;
};

} // namespace

int main(int count, char** arguments)
{
    const QCoreApplication application(count, arguments);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8")); // of arguments and file names
    const QTemporaryDir temporary;
    qputenv("TMPDIR", temporary.path().toUtf8());
    qputenv("ZUCMTR_QT_MESSAGES", "fail"); // a message of Qt fails the test that causes it
    testing::InitGoogleTest(&count, arguments);
    testing::AddGlobalTestEnvironment(new Surroundings(temporary.path())); // GoogleTest owns it
    return RUN_ALL_TESTS();
}
