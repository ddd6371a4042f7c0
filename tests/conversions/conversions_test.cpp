// Whole conversions as data: each folder beside this file is a test (see README.md).
#include "service/zucmtrlib.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>

#include <stdexcept>

namespace {

const QString Root = QStringLiteral(ZUCMTR_CONVERSIONS);

std::vector<std::string> Cases()
{
    std::vector<std::string> names;
    for (const QString& name : QDir(Root).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
        names.push_back(name.toStdString());
    return names;
}

// Relative paths of all files below a directory, sorted.
QStringList FilesBelow(const QString& directory)
{
    QStringList paths;
    QDirIterator files(directory, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (files.hasNext())
        paths.append(QDir(directory).relativeFilePath(files.next()));
    paths.sort();
    return paths;
}

void CopyTree(const QString& from, const QString& to)
{
    for (const QString& path : FilesBelow(from)) {
        QDir().mkpath(QFileInfo(to + QLatin1Char('/') + path).path());
        if (!QFile::copy(from + QLatin1Char('/') + path, to + QLatin1Char('/') + path))
            qFatal("cannot copy %s", qPrintable(path));
    }
}

class Conversion : public testing::TestWithParam<std::string>
{
protected:
    void SetUp() override
    {
        folder = Root + QLatin1Char('/') + QString::fromStdString(GetParam());
        CopyTree(folder + QStringLiteral("/inputs"), work.Path());
        work.MakeDirectory(QStringLiteral("out"));
        // With relative paths, the name of the directory is not in the texts.
        before = QDir::currentPath();
        QDir::setCurrent(work.Path());
    }

    void TearDown() override
    {
        ZuCmtrConverterExit();
        ZuCmtrSetLogFilePath(QString());
        QDir::setCurrent(before);
    }

    void Say(const QString& what, const QString& text)
    {
        transcript.append(what + QStringLiteral(": ") + text);
    }
    void Say(const QString& what, bool result)
    {
        Say(what, result ? QStringLiteral("true") : QStringLiteral("false"));
    }

    void SayNotes()
    {
        while (ZuCmtrGetDevMsgCount(0) > 0)
            Say(QStringLiteral("note"), ZuCmtrPopDevMessage(0));
    }

    void Load()
    {
        const QString ini = QStringLiteral("ZuDrv.ini");
        unsigned int device = 0;
        ZuCmtrSetLogFilePath(QStringLiteral("log.txt"));
        ZuCmtrConverterInit();
        Say(QStringLiteral("defaults"), ZuCmtrLoadFromIniDefault(ini, QStringLiteral("Defaults")));
        Say(QStringLiteral("device"), ZuCmtrLoadFromIni(ini, QStringLiteral("Device"), &device));
        for (const QString& line : ReadLines(work.Path(QStringLiteral("log.txt"))))
            Say(QStringLiteral("log"), line);
        SayNotes();
        QFile::remove(QStringLiteral("log.txt"));
    }

    void Convert(const QString& name)
    {
        try {
            Say(QStringLiteral("convert ") + name, ZuCmtrConvertToComtrade(name, QStringLiteral("out"), 0));
        } catch (const std::out_of_range&) {
            Say(QStringLiteral("exception"), QStringLiteral("out of range"));
        }
        const QString error = ZuCmtrGetDevLastError(0);
        if (!error.isEmpty())
            Say(QStringLiteral("error"), error);
        SayNotes();
    }

    void Run()
    {
        Load();
        for (const QString& name : work.Names()) {
            if (name.endsWith(QStringLiteral(".zu"), Qt::CaseInsensitive))
                Convert(name);
        }
        for (const QString& name : work.Names())
            Say(QStringLiteral("left"), name);
    }

    // Makes the present output the expected one.
    void Accept() const
    {
        QDir(folder + QStringLiteral("/expected")).removeRecursively();
        CopyTree(work.Path(QStringLiteral("out")), folder + QStringLiteral("/expected"));
        QFile file(folder + QStringLiteral("/transcript.txt"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write((transcript.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8());
    }

    QString folder;
    QString before;
    TestDirectory work;
    QStringList transcript;
};

TEST_P(Conversion, GivesTheExpectedFilesAndTexts)
{
    Run();
    if (qgetenv("ZUCMTR_ACCEPT") == GetParam().c_str()) {
        Accept();
        return;
    }
    EXPECT_EQ(transcript, ReadLines(folder + QStringLiteral("/transcript.txt")));
    const QString out = work.Path(QStringLiteral("out"));
    const QString expected = folder + QStringLiteral("/expected");
    ASSERT_EQ(FilesBelow(out), FilesBelow(expected));
    for (const QString& path : FilesBelow(expected)) {
        EXPECT_TRUE(ReadBytes(out + QLatin1Char('/') + path) == ReadBytes(expected + QLatin1Char('/') + path))
            << path << " differs";
    }
}

INSTANTIATE_TEST_SUITE_P(Folders, Conversion, testing::ValuesIn(Cases()),
                         [](const auto& folder) { return folder.param; });

} // namespace
