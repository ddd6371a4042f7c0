#include "verify/agreement.h"

#include "comtrade/mark.h"
#include "comtrade/text.h"
#include "text/texts.h"
#include "verify/stamp.h"
#include "verify/wholeness.h"

#include <QFile>
#include <QMap>

#include <algorithm>
#include <vector>

namespace verify {

namespace {

QString StampOf(const comtrade::TimeStamp& stamp)
{
    return StampText({stamp.date, stamp.nanoseconds / 1000});
}

// The sections of an INF file, each with its keys and their values.
class Information
{
public:
    explicit Information(const QByteArray& bytes)
    {
        QString section;
        for (const QString& line : comtrade::DecodedText(bytes).split(QLatin1Char('\n'))) {
            const QString text = line.trimmed();
            const int sign = text.indexOf(QLatin1Char('='));
            if (text.startsWith(QLatin1Char('[')) && text.endsWith(QLatin1Char(']')))
                section = text.mid(1, text.size() - 2);
            else if (sign > 0)
                sections[section][text.left(sign)] = text.mid(sign + 1).trimmed();
        }
    }

    // Null if there is no such key.
    QString Value(const QString& section, const QString& key) const
    {
        return sections.value(section).value(key, QString());
    }

    int CountOf(const QString& beginning) const
    {
        const QStringList names = sections.keys();
        return static_cast<int>(std::count_if(
            names.begin(), names.end(), [&](const QString& name) { return name.startsWith(beginning); }));
    }

    bool Has(const QString& section) const { return sections.contains(section); }

private:
    QMap<QString, QMap<QString, QString>> sections;
};

const char* const RecorderSection = "Russian_Comtrade_Edition Recording_Device_#1_#1";

bool IsConvertersInformation(const QByteArray& bytes)
{
    return bytes.contains("[Russian_Comtrade_Edition Recording_Device");
}

bool IsConvertersReport(const QByteArray& bytes)
{
    const QByteArray firstLine = bytes.left(std::max(0, static_cast<int>(bytes.indexOf('\n'))));
    return comtrade::DecodedText(firstLine).startsWith(QString::fromUtf8("Территориальная"));
}

// Compares and collects.
class Agreement
{
public:
    Agreement(const QString& path_, const comtrade::Record& record_, Wholeness& result_)
        : path(path_), configuration(record_.Config()), information(record_.Information()),
          report(comtrade::DecodedText(record_.Header()).split(QLatin1Char('\n'))), result(result_)
    {}

    void CheckInformation()
    {
        CheckDescription();
        for (size_t i = 0; i < configuration.analog.size(); ++i)
            CheckAnalog(configuration.analog[i], i + 1);
        for (size_t i = 0; i < configuration.states.size(); ++i)
            CheckState(configuration.states[i], i + 1);
        CheckEquipment();
    }

    void CheckReport()
    {
        constexpr int lines = 53;
        const QString separator(58, QLatin1Char('-'));
        // The start condition may have line ends of its own; the last line has one that is no line's start.
        if (report.size() < lines + 1 || !report.last().isEmpty() || report[report.size() - 2] != separator)
            Wrong(Tr("verify", "the fault report is not whole"));
        ReportLine(2, "Объект электроэнергетики:", configuration.station);
        ReportLine(3, "Источник:", configuration.device);
        ReportLine(6, "Дата и время:", StampOf(configuration.trigger));
        ReportLine(7, "Временной код:", configuration.localCode);
        const auto start = std::find_if(report.begin(), report.end(), [](const QString& line) {
            return line.startsWith(QString::fromUtf8("Дата и время пуска:"));
        });
        ReportLine(static_cast<int>(start - report.begin()),
                   "Дата и время пуска:", StampOf(configuration.trigger));
    }

    // What only the report and the INF file have in common.
    void CheckBoth()
    {
        ReportLine(4, "Версия ПО:", Recorder("Software_Revision"));
        ReportLine(5, "Наименование файла:", Recorder("Comtrade_File_Name"));
    }

    void Lacks(const QString& text) { Wrong(text, reason::PieceMissing); }

private:
    void Wrong(const QString& text, const char* word = reason::PiecesDiffer)
    {
        comtrade::Finding finding;
        finding.file = path;
        finding.severity = Severity::Error;
        finding.reason = word;
        finding.text = text;
        result.wrong.Add(finding);
    }

    QString Recorder(const char* key) const
    {
        return information.Value(QLatin1String(RecorderSection), QLatin1String(key));
    }

    void Text(const QString& section, const char* key, const QString& expected)
    {
        const QString found = information.Value(section, QLatin1String(key));
        if (found.isNull())
            Wrong(Tr("verify", "the INF file has no %1 in [%2]").arg(QLatin1String(key), section));
        else if (found != expected)
            Wrong(Tr("verify", "the INF file has '%1' for %2 in [%3], the configuration '%4'")
                      .arg(found, QLatin1String(key), section, expected));
    }

    void Number(const QString& section, const char* key, double expected)
    {
        const QString found = information.Value(section, QLatin1String(key));
        bool isNumber = false;
        const bool isSame = found.toDouble(&isNumber) == expected;
        if (!isNumber || !isSame)
            Text(section, key, QString::number(expected, 'g', 9));
    }

    void CheckDescription()
    {
        const QString section = QStringLiteral("Public File_Description");
        const auto analog = static_cast<double>(configuration.analog.size());
        const auto states = static_cast<double>(configuration.states.size());
        Text(section, "Station_Name", configuration.station);
        Text(section, "Recording_Device_ID", configuration.device);
        Number(section, "Revision_Year", static_cast<double>(configuration.revision));
        Number(section, "Total_Channel_Count", analog + states);
        Number(section, "Analog_Channel_Count", analog);
        Number(section, "Status_Channel_Count", states);
        Number(section, "Line_Frequency", configuration.lineFrequency);
        Number(section, "Sample_Rate_Count", static_cast<double>(configuration.rates.size()));
        Number(section, "Sample_Rate_#1", configuration.rates.front().hertz);
        Number(section, "End_Sample_Rate_#1", static_cast<double>(configuration.rates.front().lastSample));
        Text(section, "File_Start_Time", StampOf(configuration.start));
        Text(section, "Trigger_Time", StampOf(configuration.trigger));
        Text(section, "File_Type",
             configuration.dataType == comtrade::DataType::Binary ? QStringLiteral("Binary")
                                                                  : comtrade::NameOf(configuration.dataType));
        Number(section, "Time_Multiplier", configuration.timeMultiplier);
    }

    void CheckNumber(int found, size_t expected)
    {
        if (found != static_cast<int>(expected))
            Wrong(Tr("verify", "the configuration numbers its channel %1 as %2").arg(expected).arg(found));
    }

    void CheckAnalog(const comtrade::AnalogChannel& channel, size_t number)
    {
        const QString section = QStringLiteral("Public Analog_Channel_#%1").arg(number);
        CheckNumber(channel.number, number);
        Text(section, "Channel_ID", channel.name);
        Text(section, "Phase_ID", channel.phase);
        Text(section, "Monitored_Component", channel.circuit);
        Text(section, "Channel_Units", channel.unit);
        Number(section, "Channel_Multiplier", channel.a);
        Number(section, "Channel_Offset", channel.b);
        Number(section, "Channel_Skew", channel.skew);
        Number(section, "Range_Minimum_Limit_Value", channel.min);
        Number(section, "Range_Maximum_Limit_Value", channel.max);
        Number(section, "Channel_Ratio_Primary", channel.primary);
        Number(section, "Channel_Ratio_Secondary", channel.secondary);
        Text(section, "Data_Primary_Secondary", QLatin1String(channel.primaryValues ? "P" : "S"));
    }

    void CheckState(const comtrade::StateChannel& channel, size_t number)
    {
        const QString section = QStringLiteral("Public Status_Channel_#%1").arg(number);
        CheckNumber(channel.number, number);
        Text(section, "Channel_ID", channel.name);
        Text(section, "Phase_ID", channel.phase);
        Text(section, "Monitored_Component", channel.circuit);
        Number(section, "Normal_State", channel.normalState ? 1 : 0);
    }

    void CheckEquipment()
    {
        const QString section = QLatin1String(RecorderSection);
        Text(section, "Recording_Device_ID", configuration.device);
        Number(
            section, "EquipmentCount",
            information.CountOf(QStringLiteral("Russian_Comtrade_Edition Equipment_Analog_Channel_#1_#1_#")));
        for (const char* name : {"Russian_Comtrade_Edition Description",
                                 "Russian_Comtrade_Edition Power_Object_#1", "Public Record_Information"})
            if (!information.Has(QLatin1String(name)))
                Wrong(Tr("verify", "the INF file has no section [%1]").arg(QLatin1String(name)));
    }

    void ReportLine(int index, const char* label, const QString& expected)
    {
        const QString line = report.value(index);
        const QString name = QString::fromUtf8(label);
        if (!line.startsWith(name)) {
            Wrong(Tr("verify", "the fault report has no line '%1' where it should").arg(name));
            return;
        }
        const QString found = line.mid(name.size()).trimmed();
        if (found != expected.trimmed())
            Wrong(Tr("verify", "the fault report has '%1' for '%2', the record's other files '%3'")
                      .arg(found, name, expected));
    }

    const QString path;
    const comtrade::Configuration& configuration;
    const Information information;
    const QStringList report;
    Wholeness& result;
};

} // namespace

bool HasConvertersLines(const QString& path)
{
    constexpr qint64 step = 4096;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    int lines = 0;
    int others = 0;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine(step);
        const std::optional<comtrade::Mark> mark = comtrade::MarkOf(line);
        if (mark && mark->kind != QLatin1String("CFG"))
            break;
        lines += mark ? 0 : 1;
        others += !mark && line.endsWith("\r\n") ? 1 : 0;
    }
    return others * 2 < lines;
}

void CheckAgreement(const QString& path, const comtrade::Record& record, Wholeness& result)
{
    const bool hasInformation = IsConvertersInformation(record.Information());
    const bool hasReport = IsConvertersReport(record.Header());
    result.isConverters = hasInformation || hasReport;
    if (!result.isConverters || record.Config().rates.empty())
        return;
    result.isConverters = HasConvertersLines(path);
    if (!result.isConverters)
        return;
    Agreement agreement(path, record, result);
    if (hasInformation)
        agreement.CheckInformation();
    if (hasReport)
        agreement.CheckReport();
    if (hasInformation && hasReport)
        agreement.CheckBoth();
    else if (hasReport)
        agreement.Lacks(record.Information().isEmpty()
                            ? Tr("verify", "its INF file is missing")
                            : Tr("verify", "its INF file is not that of this converter"));
    else
        agreement.Lacks(record.Header().isEmpty()
                            ? Tr("verify", "its fault report (HDR) is missing")
                            : Tr("verify", "its HDR file is not the fault report of this converter"));
}

} // namespace verify
