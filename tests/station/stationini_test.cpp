#include "config/deviceinikeys.h"
#include "station/station.h"

#include <gtest/gtest.h>

#include <QStringList>

using station::MakeIni;
using station::StationOptions;

namespace {

QStringList LinesOf(const StationOptions& options)
{
    return MakeIni(options).split('\n');
}

// Values of one parameter in all lines of the ini file.
QStringList ValuesOf(const QStringList& lines, const QString& parameter)
{
    QStringList values;
    for (const QString& line : lines) {
        const int position = line.indexOf(parameter);
        if (position >= 0)
            values << line.mid(position + parameter.size()).section(' ', 0, 0);
    }
    return values;
}

} // namespace

TEST(StationIni, DefaultsHaveAllKeys)
{
    const QStringList lines = LinesOf({});
    EXPECT_EQ(lines[0], "[Default]");
    const std::vector<DeviceKeyRule> rules = DeviceKeyRules();
    int number = 0;
    for (const DeviceKeyRule& rule : rules) {
        EXPECT_EQ(lines[++number].section('=', 0, 0), rule.key);
        EXPECT_FALSE(lines[number].section('=', 1).isEmpty());
    }
    EXPECT_EQ(lines[number + 1], "");
    EXPECT_EQ(lines[number + 2], "[Vostochnaya]");
}

TEST(StationIni, DictionaryDescribesChannelsAndBays)
{
    StationOptions options;
    options.analogChannels = 9;
    options.discreteChannels = 2;
    const QString ini = MakeIni(options);
    EXPECT_TRUE(ini.contains("\nnAnMax=9\nA01=ВЛ-110 Восточная:Ia,V_L=110 E_G=L S_G=CT VL_IND=1 CIM_ID="));
    EXPECT_TRUE(ini.contains("\nA05=ВЛ-110 Восточная:Ua,V_L=110 E_G=L S_G=VT CIM_ID="));
    EXPECT_TRUE(ini.contains("\nA09=Частота 1СШ-110:Fa,V_L=110 E_G=VTB S_G=F CIM_ID="));
    EXPECT_TRUE(
        ini.contains("\nnDiMax=2\nD01=ВЛ-110 Восточная:Пуск защит,V_L=110 E_G=L D_G=RP S_T=ID CIM_ID="));
    EXPECT_TRUE(ini.endsWith("\nnBayMax=2\n"
                             "BAY01=ВЛ-110 Восточная,ВЛ 110 кВ Восточная,ТН 1СШ-110\n"
                             "BAY02=Частота 1СШ-110,Частота 1 СШ 110 кВ\n"));
}

TEST(StationIni, EveryChannelOfARecordingHasItsEntry)
{
    StationOptions options;
    options.analogChannels = 120;
    options.seconds = 0.02;
    const QString ini = MakeIni(options);
    const auto recording = station::MakeRecording(options, station::StartKind::External).front();
    int analog = 0;
    int discrete = 0;
    for (const auto& section : recording.sections) {
        if (const auto* channel = std::get_if<recorderfile::AnalogChannel>(&section)) {
            EXPECT_TRUE(ini.contains(QString::asprintf("\nA%02d=", ++analog) + channel->name + ",V_L="));
        } else if (const auto* contact = std::get_if<recorderfile::DiscreteChannel>(&section)) {
            EXPECT_TRUE(ini.contains(QString::asprintf("\nD%02d=", ++discrete) + contact->name + ",V_L="));
        }
    }
    EXPECT_EQ(analog, 120);
    EXPECT_EQ(discrete, 64);
}

TEST(StationIni, LargeStationUsesEveryCode)
{
    StationOptions options;
    options.analogChannels = 80;
    const QStringList lines = LinesOf(options);
    const auto expectAll = [&](const char* parameter, const char* codes) {
        const QStringList values = ValuesOf(lines, parameter);
        for (const QString& code : QString(codes).split(' '))
            EXPECT_TRUE(values.contains(code)) << parameter << code.toStdString();
    };
    expectAll("E_G=", "L BPR AT T G BCT VTB CB");
    expectAll("S_G=", "VT CT PR_REC PR_BB PR_DIFF1 PR_DIFF2 F PR_RC PR_RV PR_RVG PR_IEX PR_VEX DCS_VPP "
                      "DCS_VP1G DCS_VP2G");
    expectAll("D_G=", "RP NA EA TA FR FL OC");
    expectAll("S_T=", "FD ID AL OR SS FI FE TS MS SBO SBC AB NAB SA FA VP VPG ODC1 ODC2 ODC3");
}

TEST(StationIni, IdentifiersAreUnique)
{
    StationOptions options;
    options.analogChannels = 200;
    options.discreteChannels = 300;
    QStringList identifiers = ValuesOf(LinesOf(options), "CIM_ID=");
    EXPECT_EQ(identifiers.size(), 500);
    for (const QString& identifier : identifiers)
        EXPECT_EQ(identifier.size(), 36);
    EXPECT_EQ(identifiers.removeDuplicates(), 0);
}

// The value of uuidgen --sha1 --namespace 94093c8e-13e7-4114-a382-8e4671eac728 --name 'ВЛ-110 Восточная:Ia'.
TEST(StationIni, IdentifiersAreThoseOfTheNamesEverywhere)
{
    EXPECT_EQ(ValuesOf(LinesOf({}), "CIM_ID=").first(), "18f89f7d-1c11-5bc0-af7b-4a9eac8f993e");
}

TEST(StationIni, FurtherKeysReplaceTheDevicesOwn)
{
    StationOptions options;
    options.deviceKeys = {{"Источник", "РАС-7"}, {"Тип Comtrade BIN", "1"}};
    const QString device = MakeIni(options).section("[Vostochnaya]\n", 1);
    EXPECT_TRUE(device.startsWith(
        "Номер шкафа=12\nСерийный номер=0123\nИсточник=РАС-7\nТип Comtrade BIN=1\nnAnMax="));
}
