// A log path that leads to something without an end to seek.
#include "base/log.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

TEST(LogPipe, GetsNoLines)
{
    const TestDirectory directory;
    const QByteArray path = QFile::encodeName(directory.Path("pipe"));
    ASSERT_EQ(mkfifo(path.constData(), 0600), 0);
    const int reader = open(path.constData(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    zu::LogFilePath = directory.Path("pipe");
    zu::WriteToLog(QStringLiteral("one"));
    zu::WriteToLog(std::vector<QString>{QStringLiteral("two"), QStringLiteral("three")});
    zu::LogFilePath = QString();
    char bytes[16] = {};
    EXPECT_EQ(read(reader, bytes, sizeof bytes), 0);
    close(reader);
}
