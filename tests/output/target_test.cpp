// Where the paths of output options lead.
#include "output/target.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using output::Kind;
using output::TargetOf;

namespace {

QString OfDescriptor(const char* directory, int number)
{
    return QStringLiteral("%1/%2").arg(QLatin1String(directory)).arg(number);
}

} // namespace

TEST(OutputTarget, NameWithoutAFileIsNew)
{
    const TestDirectory directory;
    EXPECT_EQ(TargetOf(directory.Path("a")).kind, Kind::NewFile);
    EXPECT_EQ(TargetOf(directory.Path("no/a")).kind, Kind::NewFile);
    EXPECT_EQ(TargetOf(QString()).kind, Kind::NewFile);
    EXPECT_EQ(TargetOf(directory.Path("a")).path, directory.Path("a"));
}

TEST(OutputTarget, ChainOfLinksLeadsToItsFile)
{
    const TestDirectory directory;
    directory.Write("below/file", "text");
    QFile::link("below/file", directory.Path("first")); // relative to the directory of the link
    QFile::link(directory.Path("first"), directory.Path("second"));
    EXPECT_EQ(TargetOf(directory.Path("second")).kind, Kind::RegularFile);
    EXPECT_EQ(QFile(TargetOf(directory.Path("second")).path).size(), 4);
    QFile::remove(directory.Path("below/file"));
    EXPECT_EQ(TargetOf(directory.Path("second")).kind, Kind::NewFile);
    EXPECT_TRUE(TargetOf(directory.Path("second")).path.endsWith("/below/file"));
}

TEST(OutputTarget, RingOfLinksIsNoFile)
{
    const TestDirectory directory;
    QFile::link("b", directory.Path("a"));
    QFile::link("a", directory.Path("b"));
    EXPECT_EQ(TargetOf(directory.Path("a")).kind, Kind::NewFile);
}

TEST(OutputTarget, PipesAndDevicesAreStreamsAlsoThroughALink)
{
    const TestDirectory directory;
    ASSERT_EQ(mkfifo(QFile::encodeName(directory.Path("pipe")).constData(), 0600), 0);
    QFile::link("pipe", directory.Path("link"));
    QFile::link("/dev/null", directory.Path("null"));
    for (const char* name : {"pipe", "link", "null"})
        EXPECT_EQ(TargetOf(directory.Path(name)).kind, Kind::Stream) << name;
    EXPECT_EQ(TargetOf(directory.Path()).kind, Kind::Directory);
}

TEST(OutputTarget, DescriptorOfARegularFileIsAStream)
{
    const TestDirectory directory;
    const QByteArray name = QFile::encodeName(directory.Write("file", "text"));
    const int file = open(name.constData(), O_WRONLY | O_CLOEXEC);
    QFile::link(OfDescriptor("/dev/fd", file), directory.Path("link"));
    for (const QString& path : {OfDescriptor("/dev/fd", file), OfDescriptor("/proc/self/fd", file),
                                OfDescriptor("/proc/thread-self/fd", file), directory.Path("link")}) {
        EXPECT_EQ(TargetOf(path).kind, Kind::Stream) << path;
        EXPECT_EQ(TargetOf(path).descriptor, file) << path;
    }
    const QString ofAnother = QStringLiteral("/proc/%1/fd/%2").arg(getppid()).arg(STDIN_FILENO);
    EXPECT_EQ(TargetOf(ofAnother).descriptor, -1);
    close(file);
}

TEST(OutputTarget, StandardOutputHasManyNames)
{
    for (const char* name : {"-", "/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"}) {
        EXPECT_EQ(TargetOf(name).descriptor, STDOUT_FILENO) << name;
        EXPECT_TRUE(output::IsStandardOutput(name)) << name;
    }
    EXPECT_FALSE(output::IsStandardOutput("/dev/full"));
    EXPECT_FALSE(output::IsStandardOutput("/dev/fd/0/x"));
    EXPECT_FALSE(output::IsStandardOutput("./-"));
}
