// The CFG file: the configuration of a COMTRADE record.
#include "service/zucmtrconverter.h"

#include "recording/zufileformat.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "resorter/bayoptionalparam.h"

#include <QFile>
#include <QStringList>
#include <QTextCodec>

#include <algorithm>
#include <functional>

namespace {

// Circuit of a channel's line: the display text of its bay, or the recording's own text.
template <class Channel>
QString ShownCircuit(const Channel& channel)
{
    const BayOptionalParam* bay = channel.BayParam;
    return bay != nullptr && !bay->DisplayName.isEmpty() ? bay->DisplayName : channel.CfgCircuit;
}

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

// A 32-bit value with eight significant digits.
QString Digits8(float value)
{
    return QString().setNum(static_cast<double>(value), 'g', 8);
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

// Writes the lines of one kind of channel in output order and keeps their texts in lines.
template <class Channel>
bool WriteChannelLines(const std::vector<Channel*>& channels, const std::vector<unsigned int>& order,
                       std::vector<QString>& lines, const std::function<bool(const QString&)>& write)
{
    for (size_t i = 0; i < channels.size(); ++i) {
        lines.push_back(channels.at(order.at(i))->DoCfgDescription(static_cast<unsigned int>(i + 1)));
        if (!write(lines.back()))
            return false;
    }
    return true;
}

// Writes the lines in order, up to the first that fails.
bool WriteLines(const QStringList& lines, const std::function<bool(const QString&)>& write)
{
    return std::all_of(lines.begin(), lines.end(), write);
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

    // One value after the other: a "%" sequence in a name is taken by the next one.
    const QString names = QStringLiteral("%1,%2,%3,%4,%5,")
                              .arg(number)
                              .arg(CfgName)
                              .arg(CfgPhase)
                              .arg(ShownCircuit(*this))
                              .arg(Unit.isEmpty() ? QStringLiteral("NONE") : Unit);
    const QString scaling = QStringLiteral("%1,%2,%3,%4,%5,")
                                .arg(Digits8(CoefA))
                                .arg(Digits8(CoefB))
                                .arg(Digits8(SkewMicroseconds))
                                .arg(limits.lowest)
                                .arg(limits.highest);
    const QString ratio =
        QStringLiteral("%1,%2,P").arg(Digits8(header.Primary)).arg(Digits8(header.Secondary));
    return names + scaling + ratio;
}

QString DiChannelData::DoCfgDescription(unsigned int number)
{
    return QStringLiteral("%1,%2,%3,%4,%5")
        .arg(number)
        .arg(CfgName)
        .arg(QString())
        .arg(ShownCircuit(*this))
        .arg(QStringLiteral("0"));
}

bool ZuCmtrConverter::WriteStringToOutFile(QFile& file, const QString& text, QTextCodec* codec)
{
    // Deliberate: a failed write gives -1 and counts as success; the conversion goes on.
    return file.write(codec->fromUnicode(text + QLatin1Char('\n'))) != 0;
}

bool ZuCmtrConverter::WriteCfg(std::vector<ZuFileFormat*>* files, ZuCmtrDevParam* dev)
{
    QFile& file = dev->FileCfg;
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;
    QTextCodec* codec = dev->ComtradeUtf8 ? codec_UTF8 : codec_CP1251;
    const auto write = [&](const QString& line) { return WriteStringToOutFile(file, line, codec); };
    ZuFileFormat& first = *files->at(0);
    const auto analog = static_cast<qulonglong>(first.AnChannels.size());
    const auto discrete = static_cast<qulonglong>(first.DiChannels.size());

    const QString revision = QString::number(dev->Comtrade1999 ? 1999 : 2013);
    const QString station = QStringLiteral("%1,%2,%3").arg(dev->Object).arg(dev->Source).arg(revision);
    const QString counts = QStringLiteral("%1,%2A,%3D").arg(analog + discrete).arg(analog).arg(discrete);
    if (!WriteLines({station, counts}, write))
        return false;

    first.CfgAnLines.clear();
    first.CfgDiLines.clear();
    const ResorterZuCmtrConv& order = *dev->Resorter;
    if (!WriteChannelLines(first.AnChannels, order.PrevFileAnIndexes, first.CfgAnLines, write) ||
        !WriteChannelLines(first.DiChannels, order.PrevFileDiIndexes, first.CfgDiLines, write))
        return false;

    first.CfgStartStamp = TimeStamp(first.StartTime, first.StartMicroseconds);
    first.CfgTrigStamp = TimeStamp(first.TrigTime, first.TrigMicroseconds);
    first.CfgDataType = dev->ComtradeBin ? QStringLiteral("Binary") : QStringLiteral("ASCII");
    const QString one = QStringLiteral("1");
    const QString rate =
        QStringLiteral("%1,%2").arg(dev->SampleRate, 0, 'g', -1, QLatin1Char(' ')).arg(dev->TotalSamples);
    if (!WriteLines({QStringLiteral("50"), one, rate, first.CfgStartStamp, first.CfgTrigStamp,
                     first.CfgDataType, one},
                    write))
        return false;
    first.CfgTimeMult = one;
    first.CfgSamples = QString::number(dev->TotalSamples);

    const QString clock = ZoneField(first.TimeZoneSeconds) + dev->TimeCode;
    if (!dev->Comtrade1999 && !WriteLines({clock, QStringLiteral("0,3")}, write))
        return false;
    file.flush();
    file.close();
    return true;
}
