#include "info/facts.h"

#include "info/values.h"

#include "text/texts.h"

#include <QJsonArray>

#include <limits>

namespace info {

namespace {

QString RateText(const Rate& rate, bool isOnly)
{
    const QString hertz = NumberCell(rate.hertz).text;
    if (isOnly)
        return rate.IsConstant() ? Tr("info", "%1 Hz").arg(hertz)
                                 : Tr("info", "not constant, the samples have time stamps");
    return rate.IsConstant() ? Tr("info", "%1 Hz up to sample %2").arg(hertz).arg(rate.lastSample)
                             : Tr("info", "not constant up to sample %1").arg(rate.lastSample);
}

QJsonValue ValueOf(const Rate& rate)
{
    return rate.IsConstant() ? NumberCell(rate.hertz).value : QJsonValue();
}

void AddRates(Description& description, const std::vector<Rate>& rates)
{
    QStringList texts;
    QJsonArray values;
    for (const Rate& rate : rates) {
        texts << RateText(rate, rates.size() == 1);
        values.append(QJsonObject{{"rate", ValueOf(rate)}, {"lastSample", rate.lastSample}});
    }
    description.AddForPrograms("rate", rates.size() == 1 ? ValueOf(rates.front()) : QJsonValue());
    description.Add("rates", Tr("info", "Sampling rate"), values, texts.join(QLatin1String("; ")));
}

} // namespace

double SecondsOfRates(const std::vector<Rate>& rates)
{
    double seconds = 0;
    qint64 before = 0; // last sample of the stretch before
    for (const Rate& rate : rates) {
        if (rate.IsConstant() && !(rate.hertz > 0)) // only in a damaged recording
            return std::numeric_limits<double>::quiet_NaN();
        if (rate.IsConstant())
            seconds += static_cast<double>(rate.lastSample - before) / rate.hertz;
        before = rate.lastSample;
    }
    return seconds;
}

void AddSampling(Description& description, const Sampling& sampling)
{
    description.Add("seconds", Tr("info", "Duration"), SecondsCell(sampling.seconds));
    AddRates(description, sampling.rates);
    description.Add("samples", Tr("info", "Samples"), CountCell(sampling.Samples()));
}

void AddChannelCount(Description& description, size_t analog, size_t discrete)
{
    description.Add("channels", Tr("info", "Channels"), static_cast<qint64>(analog + discrete),
                    Tr("info", "%1 analog, %2 discrete").arg(analog).arg(discrete));
}

} // namespace info
