#include "verify/wholeness.h"

#include "comtrade/mark.h"
#include "comtrade/record.h"
#include "explain/file.h"
#include "text/texts.h"
#include "verify/agreement.h"
#include "verify/forgivendamage.h"
#include "verify/recordfiles.h"
#include "verify/timecheck.h"

#include <QFileInfo>

#include <cmath>
#include <vector>

namespace verify {

namespace {

// Values beyond the limits of one channel.
struct Beyond
{
    qint64 count = 0;
    qint64 sample = 0; // the first one, with its value
    double value = 0;
};

class Reading
{
public:
    Reading(const QString& path_, Wholeness& result_)
        : path(path_), result(result_), record(path), configuration(record.Config()), times(configuration),
          beyond(configuration.analog.size())
    {
        result.samples = configuration.SampleCount();
        result.analog = configuration.analog.size();
        result.states = configuration.states.size();
    }

    void Run()
    {
        ReadData();
        CheckCount();
        CheckNearlyRightTimes();
        CheckLimits();
        CheckContainer();
        CheckAgreement(path, record, result);
        AddForgivenDamage(record.Forgiven(), result.isConverters, result.wrong);
    }

private:
    void Wrong(qint64 sample, const char* word, const QString& text)
    {
        comtrade::Finding finding;
        finding.file = path;
        finding.line = sample;
        finding.severity = Severity::Error;
        finding.reason = word;
        finding.text = text;
        result.wrong.Add(finding);
    }

    void ReadData()
    {
        comtrade::Row row;
        try {
            while (record.Next(row)) {
                ++count;
                Take(row);
            }
        } catch (const comtrade::Error& error) {
            isCut = true;
            Wrong(count + 1, reason::DataUnreadable, error.Message());
        }
    }

    void Take(const comtrade::Row& row)
    {
        if (count == 1)
            firstNumber = row.number == 0 ? 0 : 1; // some writers count from 0
        const auto number = static_cast<quint32>(firstNumber + count - 1);
        if (row.number != number)
            Wrong(count, reason::SampleNumbering,
                  Tr("verify", "sample %1 has the number %2 in place of %3")
                      .arg(count)
                      .arg(row.number)
                      .arg(number));
        if (!times.Take(row))
            Wrong(count, reason::TimesDisagree,
                  Tr("verify", "sample %1 has the time %2; by the rates it should be %3")
                      .arg(count)
                      .arg(row.time)
                      .arg(times.Expected(), 0, 'f', 0));
        for (size_t i = 0; i < row.analog.size(); ++i) {
            if (IsWithin(configuration.analog[i], row.analog[i]))
                continue;
            if (++beyond[i].count == 1)
                beyond[i] = {1, count, row.analog[i]};
        }
    }

    // A missing value has none; in ASCII data of this converter it is the lowest number of 16 bits.
    bool IsWithin(const comtrade::AnalogChannel& channel, double code) const
    {
        constexpr double missing = -32768;
        if (std::isnan(code) || (configuration.dataType == comtrade::DataType::Ascii && code == missing))
            return true;
        return code >= channel.min && code <= channel.max;
    }

    void CheckCount()
    {
        const qint64 told = configuration.SampleCount();
        if (count < told && !isCut)
            Wrong(0, reason::SamplesLacking,
                  Tr("verify", "there are %1 samples, but the configuration says %2").arg(count).arg(told));
        if (count > told)
            Wrong(0, reason::SamplesLeftOver,
                  Tr("verify", "there are %1 samples, but the configuration says %2").arg(count).arg(told));
    }

    void CheckNearlyRightTimes()
    {
        const TimeCheck::Inexact inexact = times.NearlyRight();
        if (inexact.count > 0)
            Wrong(inexact.sample, reason::TimesDisagree,
                  Tr("verify", "sample %1 has the time %2; by the rates it should be %3")
                      .arg(inexact.sample)
                      .arg(inexact.found)
                      .arg(inexact.expected));
    }

    void CheckLimits()
    {
        for (size_t i = 0; i < beyond.size(); ++i) {
            const comtrade::AnalogChannel& channel = configuration.analog[i];
            if (beyond[i].count > 0)
                Wrong(beyond[i].sample, reason::SamplesOutsideLimits,
                      Tr("verify", "analog channel %1 (%2) has values beyond its limits %3 and %4: %5, the "
                                   "first is %6 in sample %7")
                          .arg(QString::number(i + 1), channel.name, QString::number(channel.min),
                               QString::number(channel.max), QString::number(beyond[i].count),
                               QString::number(beyond[i].value), QString::number(beyond[i].sample)));
        }
    }

    // After the data of a container only another section may follow.
    void CheckContainer()
    {
        QFile file(path);
        if (QFileInfo(path).suffix().compare(QLatin1String("cff"), Qt::CaseInsensitive) != 0 ||
            !file.open(QIODevice::ReadOnly))
            return;
        constexpr qint64 step = 4096;
        while (!file.atEnd()) {
            const std::optional<comtrade::Mark> mark = comtrade::MarkOf(file.readLine(step));
            if (!mark || mark->kind != QLatin1String("DAT") || mark->dataBytes < 0)
                continue;
            const qint64 end = file.pos() + mark->dataBytes;
            QByteArray rest;
            if (file.seek(end))
                rest = file.read(step);
            const QByteArray first = rest.trimmed();
            if (!first.isEmpty() && first != "\x1a" && !first.startsWith("---"))
                Wrong(0, reason::SamplesLeftOver,
                      Tr("verify", "%1 bytes follow the data").arg(file.size() - end));
            return;
        }
    }

    const QString path;
    Wholeness& result;
    comtrade::Record record;
    const comtrade::Configuration& configuration;
    TimeCheck times;
    std::vector<Beyond> beyond; // by channel
    qint64 count = 0;           // samples read
    qint64 firstNumber = 1;
    bool isCut = false;
};

} // namespace

Wholeness WholenessOf(const QString& path)
{
    Wholeness result;
    comtrade::Finding finding;
    finding.file = path;
    finding.severity = Severity::Error;
    finding.reason = reason::RecordUnreadable;
    finding.text = explain::NotARecord(path);
    if (!finding.text.isEmpty()) {
        finding.reason = explain::WordOf(path, reason::RecordUnreadable);
        result.wrong.Add(finding);
        return result;
    }
    try {
        Reading(path, result).Run();
    } catch (const text::Error& error) {
        finding.text = error.Message();
        result.wrong.Add(finding);
    }
    return result;
}

} // namespace verify
