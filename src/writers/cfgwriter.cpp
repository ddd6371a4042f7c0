// The CFG file: the configuration of a COMTRADE record.
#include "service/zucmtrconverter.h"

#include "base/filledtext.h"
#include "recording/zufileformat.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "resorter/bayoptionalparam.h"
#include "writers/shortnumber.h"
#include "writers/textlines.h"

#include <QFile>
#include <QTextCodec>

namespace {

// Circuit of a channel's line: the display text of its bay, or the recording's own text.
template <class Channel>
QString ShownCircuit(const Channel& channel)
{
    const BayOptionalParam* bay = channel.BayParam;
    return bay != nullptr && !bay->DisplayName.isEmpty() ? bay->DisplayName : channel.CfgCircuit;
}

constexpr int LongestNumbers = 7 * 16; // characters of a channel's line after its texts

struct CodeLimits
{
    int lowest, highest;
};

CodeLimits LimitsOf(quint16 codeRange)
{
    // Deliberate: only the 12-bit range is halved, every other one is the limit itself.
    if (codeRange == 4096)
        return {-2048, 2048};
    if (codeRange <= 32767)
        return {-int(codeRange), codeRange};
    return {-32768, 32768};
}

QString TimeStamp(const QDateTime& time, qint32 microseconds)
{
    return time.toString(QStringLiteral("dd/MM/yyyy,hh:mm:ss.")) + QString::asprintf("%06d", microseconds);
}

// The zone field of the time-code line, comma included.
QString ZoneField(qint32 zoneSeconds)
{
    const int minutes = zoneSeconds / 60;
    if (minutes == 0)
        return QStringLiteral("0,");
    if (minutes % 60 == 0)
        return QString::asprintf("%+d,", zoneSeconds / 3600);
    const int size = std::abs(minutes);
    // Deliberate: the letter between hours and minutes is Cyrillic.
    return QLatin1String(minutes > 0 ? "+" : "-") + QString::asprintf("%02d", size / 60) +
           QStringLiteral("ч") + QString::asprintf("%02d", size % 60) + QLatin1Char(',');
}

// Adds the lines of one kind of channel in output order and keeps their texts in texts.
template <class Channel>
bool AddChannelLines(const std::vector<Channel*>& channels, const std::vector<unsigned int>& order,
                     std::vector<QString>& texts, zu::TextLines& lines)
{
    texts.reserve(channels.size());
    for (size_t i = 0; i < channels.size(); ++i) {
        texts.push_back(channels.at(order.at(i))->DoCfgDescription(static_cast<unsigned int>(i + 1)));
        if (!lines.Add(texts.back()))
            return false;
    }
    return true;
}

// Four texts of a line and the number of the channel before them, with commas between.
QString FirstFields(unsigned int number, const QString& name, const QString& phase, const QString& circuit,
                    const QString& last)
{
    if (zu::IsPlainValue(name) && zu::IsPlainValue(phase) && zu::IsPlainValue(circuit)) {
        constexpr QLatin1Char Comma(',');
        return QString::number(number) % Comma % name % Comma % phase % Comma % circuit % Comma % last;
    }
    // One value after the other: a "%" sequence in a name is taken by the next one.
    return QStringLiteral("%1,%2,%3,%4,%5").arg(number).arg(name).arg(phase).arg(circuit).arg(last);
}

} // namespace

QString AnChannelData::DoCfgDescription(unsigned int number)
{
    const ZuAnChannelHeader header = m_HeaderAn;
    const float primaryTimesSecondary = header.Primary * header.Secondary;
    CoefA = primaryTimesSecondary * header.Scale;
    const float zero = static_cast<float>(header.ZeroCode) * CoefA;
    CoefB = zero + header.Offset;
    SkewMicroseconds = 1000000.0F * header.SkewSeconds;
    const CodeLimits limits = LimitsOf(header.CodeRange);

    QString line = FirstFields(number, CfgName, CfgPhase, ShownCircuit(*this),
                               Unit.isEmpty() ? QStringLiteral("NONE") : Unit);
    line.reserve(line.size() + LongestNumbers);
    const auto add = [&](QLatin1String digits) { line.append(QLatin1Char(',')).append(digits); };
    add(zu::Digits8(CoefA).Text());
    add(zu::Digits8(CoefB).Text());
    add(zu::Digits8(SkewMicroseconds).Text());
    line += QLatin1Char(',') % QString::number(limits.lowest) % QLatin1Char(',') %
            QString::number(limits.highest);
    add(zu::Digits8(header.Primary).Text());
    add(zu::Digits8(header.Secondary).Text());
    add(QLatin1String("P"));
    return line;
}

QString DiChannelData::DoCfgDescription(unsigned int number)
{
    return FirstFields(number, CfgName, QString(), ShownCircuit(*this), QStringLiteral("0"));
}

bool ZuCmtrConverter::WriteStringToOutFile(QFile& file, const QString& text, QTextCodec* codec)
{
    // Deliberate: a failed write gives -1 and counts as success; the conversion goes on.
    return file.write(codec->fromUnicode(text + QLatin1Char('\n'))) != 0;
}

// Adds all lines of the file, up to one that has no bytes. The texts that the INF file repeats stay on first.
static bool AddLines(ZuFileFormat& first, const ZuCmtrDevParam* dev, zu::TextLines& lines)
{
    const auto analog = static_cast<qulonglong>(first.AnChannels.size());
    const auto discrete = static_cast<qulonglong>(first.DiChannels.size());

    const QString revision = QString::number(dev->Comtrade1999 ? 1999 : 2013);
    const QString station = QStringLiteral("%1,%2,%3").arg(dev->Object).arg(dev->Source).arg(revision);
    const QString counts = QStringLiteral("%1,%2A,%3D").arg(analog + discrete).arg(analog).arg(discrete);
    if (!lines.Add(station) || !lines.Add(counts))
        return false;

    first.CfgAnLines.clear();
    first.CfgDiLines.clear();
    const ResorterZuCmtrConv& order = *dev->Resorter;
    if (!AddChannelLines(first.AnChannels, order.PrevFileAnIndexes, first.CfgAnLines, lines) ||
        !AddChannelLines(first.DiChannels, order.PrevFileDiIndexes, first.CfgDiLines, lines))
        return false;

    first.CfgStartStamp = TimeStamp(first.StartTime, first.StartMicroseconds);
    first.CfgTrigStamp = TimeStamp(first.TrigTime, first.TrigMicroseconds);
    first.CfgDataType = dev->ComtradeBin ? QStringLiteral("Binary") : QStringLiteral("ASCII");
    const QString one = QStringLiteral("1");
    const QString rate =
        QStringLiteral("%1,%2").arg(dev->SampleRate, 0, 'g', -1, QLatin1Char(' ')).arg(dev->TotalSamples);
    if (!lines.AddAll(std::initializer_list<QString>{QStringLiteral("50"), one, rate, first.CfgStartStamp,
                                                     first.CfgTrigStamp, first.CfgDataType, one}))
        return false;
    first.CfgTimeMult = one;
    first.CfgSamples = QString::number(dev->TotalSamples);

    return dev->Comtrade1999 ||
           (lines.Add(ZoneField(first.TimeZoneSeconds) + dev->TimeCode) && lines.Add(QStringLiteral("0,3")));
}

bool ZuCmtrConverter::WriteCfg(std::vector<ZuFileFormat*>* files, ZuCmtrDevParam* dev)
{
    QFile& file = dev->FileCfg;
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;
    {
        zu::TextLines lines(file, dev->ComtradeUtf8 ? codec_UTF8 : codec_CP1251);
        if (!AddLines(*files->at(0), dev, lines))
            return false;
    }
    file.flush();
    file.close();
    return true;
}
