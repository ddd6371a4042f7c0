#include "ugly.h"

#include "comtrade/moment.h"

#include <QFileInfo>
#include <QTextCodec>

#include <cmath>

UglyRecord::UglyRecord()
    : lines({"Station,Recorder,1999", "3,2A,1D", "1,Ia,A,Q1,A,0.5,-1,2.5,-32767,32767,1000,5,P",
             "2,Ub,B,Q2,kV,0.001,0,0,-99999,99998,1,1,S", "1,Trip,,Q1,1", "50", "1", "2400,4",
             "31/01/2024,11:59:59.750000", "31/01/2024,12:00:00.250000", "ASCII", "1"}),
      data("1,0,-5,32767,1\r\n2,417,6,7,0\r\n3,833,,8,1\r\n4,1250,1,2,0\r\n")
{}

void UglyRecord::Line(int number, const QByteArray& text)
{
    lines[number - 1] = text;
}

void UglyRecord::Insert(int before_, const QByteArray& text)
{
    lines.insert(before_ - 1, text);
}

void UglyRecord::Remove(int number)
{
    lines.removeAt(number - 1);
}

QString UglyRecord::Write(const TestDirectory& directory) const
{
    if (!container.isEmpty())
        return directory.Write("rec.cff", container);
    QByteArray text = ConfigurationText();
    if (!encoding.isEmpty())
        text = QTextCodec::codecForName(encoding)->fromUnicode(QString::fromUtf8(text));
    directory.Write(dataName, data);
    return directory.Write(configurationName, text);
}

namespace {

QString Number(double number)
{
    return std::isnan(number) ? QStringLiteral("-") : QString::number(number, 'g', 12);
}

QString MomentOf(const comtrade::TimeStamp& stamp)
{
    return comtrade::MomentText(stamp, {});
}

QStringList ConfigurationLines(const comtrade::Configuration& config)
{
    QStringList lines{config.station + '|' + config.device + '|' +
                      QString::number(static_cast<int>(config.revision))};
    for (const comtrade::AnalogChannel& one : config.analog) {
        QStringList texts{QString::number(one.number), one.name, one.phase, one.circuit, one.unit};
        for (const double number : {one.a, one.b, one.skew, one.min, one.max, one.primary, one.secondary})
            texts << Number(number);
        lines << "A" + texts.join('|') + (one.primaryValues ? "|P" : "|S");
    }
    for (const comtrade::StateChannel& one : config.states)
        lines << "D" + QStringList({QString::number(one.number), one.name, one.phase, one.circuit,
                                    QString::number(one.normalState ? 1 : 0)})
                           .join('|');
    QString rates = Number(config.lineFrequency) + " Hz:";
    for (const comtrade::SampleRate& rate : config.rates)
        rates += ' ' + Number(rate.hertz) + '/' + QString::number(rate.lastSample);
    lines << rates << MomentOf(config.start) << MomentOf(config.trigger);
    lines << comtrade::NameOf(config.dataType) + " x" + Number(config.timeMultiplier);
    if (config.revision == comtrade::Revision::R2013 || !config.timeCode.isEmpty())
        lines << QStringList({config.timeCode, config.localCode, config.timeQuality, config.leapSecond})
                     .join('|');
    return lines;
}

} // namespace

QString ReadAll(const QString& path, const comtrade::ReadingOptions& options)
{
    comtrade::Record record(path, options);
    QStringList lines = ConfigurationLines(record.Config());
    comtrade::Row row;
    while (record.Next(row)) {
        QStringList values{QString::number(row.number), row.hasTime ? QString::number(row.time) : "-"};
        for (const double code : row.analog)
            values << Number(code);
        for (const quint8 state : row.states)
            values << QString::number(state);
        lines << values.join(' ');
    }
    return lines.join('\n');
}

QString GoodReading()
{
    return "Station|Recorder|1999\n"
           "A1|Ia|A|Q1|A|0.5|-1|2.5|-32767|32767|1000|5|P\n"
           "A2|Ub|B|Q2|kV|0.001|0|0|-99999|99998|1|1|S\n"
           "D1|Trip||Q1|1\n"
           "50 Hz: 2400/4\n"
           "2024-01-31T11:59:59.750000\n"
           "2024-01-31T12:00:00.250000\n"
           "ASCII x1\n"
           "1 0 -5 32767 1\n"
           "2 417 6 7 0\n"
           "3 833 - 8 1\n"
           "4 1250 1 2 0";
}

QStringList FindingsOf(const QString& path)
{
    static const char* const severities[] = {"note", "warning", "error"};
    comtrade::Record record(path);
    comtrade::Row row;
    while (record.Next(row)) {
    }
    QStringList findings;
    for (const comtrade::Finding& one : record.Forgiven().All())
        findings << QStringLiteral("%1:%2:%3 %4 %5")
                        .arg(QFileInfo(one.file).fileName(), QString::number(one.line),
                             QString::number(one.column), severities[static_cast<int>(one.severity)],
                             QLatin1String(one.reason));
    return findings;
}
