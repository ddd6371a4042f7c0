// The process-wide cache of ini files.
#include "base/codecs.h"
#include "config/QSettingsRu.h"
#include "support/files.h"

#include <QDir>
#include <QTextCodec>

#include <gtest/gtest.h>

class IniCache : public testing::Test
{
protected:
    ~IniCache() override { QSettingsRu::Clear(); }

    QString Write(const QByteArray& bytes) const { return directory.Write(QStringLiteral("a.ini"), bytes); }

    static QString ValueOf(const QString& path)
    {
        return QSettingsRu(path, zu::CodecIni).value(QStringLiteral("A/x"), "none").toString();
    }

    TestDirectory directory;
};

TEST_F(IniCache, ReadsAFileOnce)
{
    const QString path = Write("[A]\nx=1\n");
    const QSettingsRu first(path, zu::CodecIni);
    Write("[A]\nx=2\n");
    const QSettingsRu second(path, zu::CodecCP1251);
    EXPECT_EQ(first.settings, second.settings);
    EXPECT_EQ(second.value(QStringLiteral("A/x"), QString()).toString(), "1");
    EXPECT_EQ(second.status, 0);
    EXPECT_EQ(second.fileName, path);
}

TEST_F(IniCache, CodecIsKeptByTheObjectThatReadTheFile)
{
    const QString path = Write("[A]\nx=1\n");
    const QSettingsRu first(path, zu::CodecIni);
    const QSettingsRu second(path, zu::CodecIni);
    EXPECT_EQ(first.codec, zu::CodecIni);
    EXPECT_EQ(second.codec, nullptr);
}

TEST_F(IniCache, MapOutlivesTheObject)
{
    const QString path = Write("[A]\nx=1\n");
    const QMap<QString, QVariant>* map = QSettingsRu(path, nullptr).settings;
    EXPECT_EQ(QSettingsRu::Maps.value(path), map);
    EXPECT_EQ(map->size(), 1);
}

TEST_F(IniCache, TwoSpellingsOfAPathAreTwoEntries)
{
    const QString path = Write("[A]\nx=1\n");
    const QString other = directory.Path() + QStringLiteral("/./a.ini");
    EXPECT_EQ(ValueOf(path), "1");
    Write("[A]\nx=2\n");
    EXPECT_EQ(ValueOf(other), "2");
    EXPECT_EQ(ValueOf(path), "1");
    EXPECT_EQ(QSettingsRu::Maps.size(), 2);
}

TEST_F(IniCache, MissingFileIsTriedAgain)
{
    const QString path = directory.Path(QStringLiteral("a.ini"));
    const QSettingsRu missing(path, zu::CodecIni);
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.settings, nullptr);
    EXPECT_TRUE(QSettingsRu::Maps.isEmpty());
    EXPECT_EQ(directory.Names(), QStringList());
    Write("[A]\nx=1\n");
    const QSettingsRu present(path, zu::CodecIni);
    EXPECT_EQ(present.status, 0);
    EXPECT_EQ(present.value(QStringLiteral("A/x"), QString()).toString(), "1");
}

TEST_F(IniCache, DirectoryIsNoIniFile)
{
    EXPECT_EQ(QSettingsRu(directory.Path(), nullptr).status, 1);
}

TEST_F(IniCache, ClearOneKeyForgetsThatFileAlone)
{
    const QString path = Write("[A]\nx=1\n");
    const QString other = directory.Write(QStringLiteral("b.ini"), "[A]\nx=3\n");
    EXPECT_EQ(ValueOf(path), "1");
    EXPECT_EQ(ValueOf(other), "3");
    QSettingsRu::ClearOneKey(path);
    EXPECT_EQ(QSettingsRu::Maps.keys(), QStringList{other});
    Write("[A]\nx=2\n");
    EXPECT_EQ(ValueOf(path), "2");
}

TEST_F(IniCache, ClearOneKeyOfAnUnknownFileDoesNothing)
{
    EXPECT_EQ(ValueOf(Write("[A]\nx=1\n")), "1");
    QSettingsRu::ClearOneKey(QStringLiteral("A/x"));
    EXPECT_EQ(QSettingsRu::Maps.size(), 1);
}

TEST_F(IniCache, ClearForgetsAllFiles)
{
    const QString path = Write("[A]\nx=1\n");
    EXPECT_EQ(ValueOf(path), "1");
    EXPECT_EQ(ValueOf(directory.Write(QStringLiteral("b.ini"), "[A]\nx=3\n")), "3");
    QSettingsRu::Clear();
    EXPECT_TRUE(QSettingsRu::Maps.isEmpty());
    Write("[A]\nx=2\n");
    EXPECT_EQ(ValueOf(path), "2");
}
