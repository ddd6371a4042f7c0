// New sections of defaults, and the one that the document shows.
#include "config/deviceinikeys.h"
#include "devicesection.h"

#include <gtest/gtest.h>

namespace {

// The lines of the document's section on device keys.
QStringList DocumentLines()
{
    const QStringList lines = ReadLines(ZUCMTR_INI_DOCUMENT);
    const int first = lines.indexOf("## Keys of a device");
    return lines.mid(first, lines.indexOf("## Sorting dictionary") - first);
}

// The document's column of values for a key.
QString ValuesOf(const DeviceKeyRule& rule)
{
    QString values = "text";
    if (!rule.isText && rule.highest - rule.lowest == 1)
        values = QString("%1, %2").arg(rule.lowest).arg(rule.highest);
    else if (!rule.isText)
        values = QString("%1 and above").arg(rule.lowest);
    return rule.obligatory ? values : values + ", optional";
}

} // namespace

TEST(DefaultsLines, AreASectionThatLoadsAlone)
{
    const TestDirectory directory;
    ZuCmtrDevParamDefault param;
    param.PowerSystem.clear();
    param.ComtradeUtf8 = false;
    const QByteArray text = DefaultsLines("A B", {}).join('\n').toUtf8();
    EXPECT_TRUE(param.LoadFromIniDef(directory.Write("a.ini", text), "A B", false)) << param.LastError;
    EXPECT_EQ(param.PowerSystem, "PowerSystem");
    EXPECT_TRUE(param.ComtradeUtf8);
    QSettingsRu::Clear();
}

TEST(DefaultsLines, GivenValuesTakeThePlaceOfSamples)
{
    QStringList expected = DefaultsLines("S", {});
    expected.replaceInStrings("Объект=Object", "Объект=");
    EXPECT_EQ(DefaultsLines("S", {{"Объект", ""}, {"no such key", "1"}}), expected);
}

TEST(DefaultsLines, KeyWithoutASampleStandsInItsPlaceIfAValueIsGiven)
{
    QStringList expected = DefaultsLines("S", {});
    EXPECT_TRUE(expected.filter("Номер шкафа").isEmpty());
    expected.insert(expected.indexOf("Переименовать сигналы Comtrade=1") + 1, "Номер шкафа=7");
    EXPECT_EQ(DefaultsLines("S", {{"Номер шкафа", "7"}}), expected);
}

TEST(IniDocument, HasARowForEachKey)
{
    QStringList expected;
    for (const DeviceKeyRule& rule : DeviceKeyRules())
        expected << QString("| `%1` | %2 ").arg(rule.key, ValuesOf(rule));
    QStringList rows;
    for (const QString& line : DocumentLines().filter("| `"))
        rows << line.section('|', 0, 2);
    EXPECT_EQ(rows, expected);
}

TEST(IniDocument, ShowsANewSectionOfDefaults)
{
    QStringList shown = DocumentLines().replaceInStrings(" = ", "=");
    shown = shown.mid(shown.indexOf("[Default]"));
    shown = shown.mid(0, shown.indexOf(QString()));
    QMap<QString, QString> texts; // of an example station
    for (const DeviceKeyRule& rule : DeviceKeyRules()) {
        const QString key = QString(rule.key) + '=';
        for (const QString& line : shown.filter(key))
            if (rule.isText && line.startsWith(key))
                texts.insert(rule.key, line.mid(key.size()));
    }
    EXPECT_EQ(shown, DefaultsLines("Default", texts));
}
