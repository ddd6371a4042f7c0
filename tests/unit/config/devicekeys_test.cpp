// The nineteen device keys, one by one: stored value, log line, absence with and without defaults.
#include "devicesection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace {

using Param = ZuCmtrDevParamDefault;

enum class Need {
    Obligatory,
    Optional,      // tagged only where defaults are in force
    OptionalTagged // tagged in every section
};

struct KeyCase
{
    const char* key;
    QString (*field)(const Param&);
    Need need;
    const char* stored;       // of SectionText::Whole
    const char* line;         // its log line, without a tag
    const char* storedBefore; // of SectionText::Other
    const char* lineBefore;
};

void PrintTo(const KeyCase& row, std::ostream* out)
{
    *out << row.key;
}

template <QString Param::* Field>
QString Text(const Param& param)
{
    return param.*Field;
}

template <quint32 Param::* Field>
QString Number(const Param& param)
{
    return QString::number(param.*Field);
}

template <bool Param::* Field>
QString Flag(const Param& param)
{
    return param.*Field ? QStringLiteral("1") : QStringLiteral("0");
}

const KeyCase Keys[] = {
    {"Энергосистема", Text<&Param::PowerSystem>, Need::Obligatory, "ЭС", "Энергосистема: ЭС ", "e",
     "Энергосистема: e "},
    {"Субъект", Text<&Param::Subject>, Need::Obligatory, "МЭС", "Субъект: МЭС ", "s", "Субъект: s "},
    {"Объект", Text<&Param::Object>, Need::Obligatory, "ПС", "Объект: ПС ", "o", "Объект: o "},
    {"Источник", Text<&Param::Source>, Need::Obligatory, "РАС", "Источник: РАС ", "i", "Источник: i "},
    {"Версия ПО", Text<&Param::SoftwareVersion>, Need::Obligatory, "3.1", "Версия ПО: 3.1 ", "9",
     "Версия ПО: 9 "},
    {"Версия аппаратной части", Text<&Param::HardwareVersion>, Need::Obligatory, "1.7",
     "Версия аппаратной части: 1.7 ", "8", "Версия аппаратной части: 8 "},
    {"Модель", Text<&Param::Model>, Need::Obligatory, "MK7.11", "Модель: MK7.11 ", "m", "Модель: m "},
    {"Версия ZU", Number<&Param::ZuVersion>, Need::Obligatory, "2", "Версия ZU: 2 (МК7.11) ", "1",
     "Версия ZU: 1 (МК7.06-МК7.08) "},
    {"Удалять исходные", Flag<&Param::DeleteSource>, Need::Obligatory, "1", "Удалять исходные: Да  ", "0",
     "Удалять исходные: Нет  "},
    {"Время ожидания", Number<&Param::WaitTime>, Need::Obligatory, "500", "Время ожидания: 500 мс ", "700",
     "Время ожидания: 700 мс "},
    {"Тип Comtrade CFF", Flag<&Param::ComtradeCff>, Need::Obligatory, "1", "Тип Comtrade CFF: Да (CFF)  ",
     "0", "Тип Comtrade CFF: Нет (cfg/dat ...)  "},
    {"Тип Comtrade BIN", Flag<&Param::ComtradeBin>, Need::Obligatory, "1", "Тип Comtrade BIN: Да (Binary)  ",
     "0", "Тип Comtrade BIN: Нет (ASCII)  "},
    {"Кодировка Comtrade UTF8", Flag<&Param::ComtradeUtf8>, Need::Obligatory, "1",
     "Кодировка Comtrade UTF8: Да (UTF8)  ", "0", "Кодировка Comtrade UTF8: Нет (CP1251)  "},
    {"Переименовать сигналы Comtrade", Flag<&Param::RenameSignals>, Need::Obligatory, "1",
     "Переименовать сигналы Comtrade: Да  ", "0", "Переименовать сигналы Comtrade: Нет  "},
    {"Идентификатор Cim", Text<&Param::CimId>, Need::Optional, "7f3a", "Идентификатор Cim: 7f3a ", "c",
     "Идентификатор Cim: c "},
    {"Номер шкафа", Text<&Param::CabinetNumber>, Need::Optional, "12", "Номер шкафа: 12 ", "n",
     "Номер шкафа: n "},
    {"Серийный номер", Text<&Param::SerialNumber>, Need::Optional, "0042", "Серийный номер: 0042 ", "r",
     "Серийный номер: r "},
    {"Доп.индексы для имен сигналов", Flag<&Param::AdditionalIndexes>, Need::Obligatory, "1",
     "Доп.индексы для имен сигналов: Да  ", "0", "Доп.индексы для имен сигналов: Нет  "},
    {"Тип Comtrade 1999", Flag<&Param::Comtrade1999>, Need::OptionalTagged, "1",
     "Тип Comtrade 1999: Да (Comtrade 1999)  ", "0", "Тип Comtrade 1999: Нет (Comtrade 2013)  "},
};

const QString Tag = QStringLiteral("[принято по умолчанию]");

} // namespace

class DeviceKey : public testing::TestWithParam<KeyCase>
{
protected:
    DeviceKey() : row(GetParam()), key(QString::fromUtf8(row.key)) {}

    // Parameters that hold the values of SectionText::Other.
    void LoadOther() { ASSERT_TRUE(loader.LoadParam(param, SectionText::Other(), false)); }

    const KeyCase& row;
    const QString key;
    Param param;
    SectionLoader loader;
};

TEST_P(DeviceKey, IsStoredAndLoggedWithoutTag)
{
    LoadOther();
    EXPECT_EQ(row.field(param), row.storedBefore);
    for (const bool useDefaults : {false, true}) {
        ASSERT_TRUE(loader.LoadParam(param, SectionText::Whole(), useDefaults));
        EXPECT_EQ(row.field(param), row.stored);
        EXPECT_EQ(loader.LogLine(key), row.line);
        EXPECT_EQ(param.LastError, QString());
    }
}

TEST_P(DeviceKey, OtherValueIsStoredAndLogged)
{
    ASSERT_TRUE(loader.LoadParam(param, SectionText::Whole(), false));
    SectionText section = SectionText::Whole();
    ASSERT_TRUE(loader.LoadParam(param, section.Set(key, QString::fromUtf8(row.storedBefore)), true));
    EXPECT_EQ(row.field(param), row.storedBefore);
    EXPECT_EQ(loader.LogLine(key), row.lineBefore);
}

TEST_P(DeviceKey, AbsentKeepsTheDefaultAndIsTagged)
{
    LoadOther();
    ASSERT_TRUE(loader.LoadParam(param, SectionText::Whole().Drop(key), true));
    EXPECT_EQ(row.field(param), row.storedBefore);
    EXPECT_EQ(loader.LogLine(key), QString::fromUtf8(row.lineBefore) + Tag);
}

TEST_P(DeviceKey, AbsentWithoutDefaultsFailsOrKeepsTheField)
{
    LoadOther();
    const bool loaded = loader.LoadParam(param, SectionText::Whole().Drop(key), false);
    EXPECT_EQ(row.field(param), row.storedBefore);
    EXPECT_EQ(loaded, row.need != Need::Obligatory);
    const QString failure = QStringLiteral("Отсутствует необходимый параметр: ") + key;
    if (row.need == Need::Obligatory) {
        EXPECT_EQ(param.LastError, failure);
        EXPECT_EQ(loader.Log().last(), failure);
    } else {
        EXPECT_EQ(loader.LogLine(key),
                  QString::fromUtf8(row.lineBefore) + (row.need == Need::OptionalTagged ? Tag : QString()));
    }
}

TEST_P(DeviceKey, BuiltInValueStandsInTheDocument)
{
    const QString value = row.field(Param());
    const QStringList rows = ReadLines(ZUCMTR_INI_DOCUMENT).filter("| `" + key + "` |");
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0].section('|', 3, 3).trimmed().remove('`'), value.isEmpty() ? "none" : value);
}

class ObligatoryDeviceKey : public DeviceKey
{};

TEST_P(ObligatoryDeviceKey, FailureIsLoggedAfterTheLinesOfTheEarlierKeys)
{
    ASSERT_FALSE(loader.LoadParam(param, SectionText::Whole().Drop(key), false));
    QStringList expected;
    for (const KeyCase& earlier : Keys) {
        if (QString::fromUtf8(earlier.key) == key)
            break;
        expected << QString::fromUtf8(earlier.line);
        EXPECT_EQ(earlier.field(param), earlier.stored) << "fields read before the failure stay";
    }
    expected << QStringLiteral("Отсутствует необходимый параметр: ") + key;
    EXPECT_EQ(loader.Log(), expected);
}

INSTANTIATE_TEST_SUITE_P(DeviceIniKeys, DeviceKey, testing::ValuesIn(Keys));

namespace {

std::vector<KeyCase> ObligatoryKeys()
{
    std::vector<KeyCase> obligatory;
    std::copy_if(std::begin(Keys), std::end(Keys), std::back_inserter(obligatory),
                 [](const KeyCase& row) { return row.need == Need::Obligatory; });
    return obligatory;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(DeviceIniKeys, ObligatoryDeviceKey, testing::ValuesIn(ObligatoryKeys()));

struct ValueCase
{
    const char* key;
    const char* value;
    const char* stored; // null: refused
};

void PrintTo(const ValueCase& testCase, std::ostream* out)
{
    *out << testCase.key << "=" << testCase.value;
}

class DeviceKeyValue : public testing::TestWithParam<ValueCase>
{};

TEST_P(DeviceKeyValue, IsAcceptedOrRefused)
{
    const QString key = QString::fromUtf8(GetParam().key);
    for (const bool useDefaults : {false, true}) {
        SectionLoader loader;
        Param param;
        SectionText section = SectionText::Whole();
        section.Set(key, QString::fromUtf8(GetParam().value));
        const bool loaded = loader.LoadParam(param, section, useDefaults);
        ASSERT_EQ(loaded, GetParam().stored != nullptr);
        if (!loaded) {
            EXPECT_EQ(param.LastError, QStringLiteral("Ошибка значения параметра: ") + key);
            EXPECT_EQ(loader.Log().last(), param.LastError);
            continue;
        }
        for (const KeyCase& row : Keys) {
            if (QString::fromUtf8(row.key) == key) {
                EXPECT_EQ(row.field(param), GetParam().stored);
            }
        }
    }
}

namespace {

const char* const Switches[] = {"Удалять исходные",
                                "Тип Comtrade CFF",
                                "Тип Comtrade BIN",
                                "Кодировка Comtrade UTF8",
                                "Переименовать сигналы Comtrade",
                                "Доп.индексы для имен сигналов",
                                "Тип Comtrade 1999"};

std::vector<ValueCase> SwitchCases()
{
    std::vector<ValueCase> cases;
    for (const char* key : Switches) {
        cases.push_back({key, "0", "0"});
        cases.push_back({key, "1", "1"});
        cases.push_back({key, "1 ; yes", "1"});
        for (const char* refused : {"2", "-2", "3", "да", "", "1 0", "0.0"})
            cases.push_back({key, refused, nullptr});
    }
    return cases;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Switches, DeviceKeyValue, testing::ValuesIn(SwitchCases()));

INSTANTIATE_TEST_SUITE_P(
    Numbers, DeviceKeyValue,
    testing::Values(ValueCase{"Версия ZU", "1", "1"}, ValueCase{"Версия ZU", "2", "2"},
                    ValueCase{"Версия ZU", "0", nullptr}, ValueCase{"Версия ZU", "3", nullptr},
                    ValueCase{"Версия ZU", "-2", nullptr}, ValueCase{"Версия ZU", "", nullptr},
                    ValueCase{"Версия ZU", "два", nullptr}, ValueCase{"Время ожидания", "0", "0"},
                    ValueCase{"Время ожидания", "2147483647", "2147483647"},
                    ValueCase{"Время ожидания", "+5", "5"}, ValueCase{"Время ожидания", "-2", nullptr},
                    ValueCase{"Время ожидания", "", nullptr}, ValueCase{"Время ожидания", "1e3", nullptr},
                    ValueCase{"Время ожидания", "60000 мс", nullptr}));

INSTANTIATE_TEST_SUITE_P(Texts, DeviceKeyValue,
                         testing::Values(ValueCase{"Модель", "a b ; c", "a b"},
                                         ValueCase{"Объект", "%1 %2", "%1 %2"},
                                         ValueCase{"Источник", "\"x\"", "\"x\""},
                                         ValueCase{"Субъект", "-1", "-1"}));
