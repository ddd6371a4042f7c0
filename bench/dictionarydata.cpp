#include "dictionarydata.h"

#include "station/station.h"

#include <QTextStream>

// Entry number counts from 1.
static QString NameOf(int entry)
{
    return QStringLiteral("ВЛ-110 №%1:Ia").arg(entry, 4, 10, QLatin1Char('0'));
}

QString bench::LargeDictionary(int entries)
{
    station::StationOptions options;
    options.analogChannels = 0;
    options.discreteChannels = 0;
    // The last section of the ini file is the device's; of equal keys the last one counts.
    QString text = station::MakeIni(options);
    QTextStream out(&text, QIODevice::WriteOnly | QIODevice::Append);
    out << "nAnMax=" << entries << '\n';
    for (int entry = 1; entry <= entries; ++entry)
        out << QString::asprintf("A%02d=", entry) << NameOf(entry) << ",V_L=110 E_G=L S_G=CT\n";
    out.flush();
    return text;
}

void bench::AddChannelsInReverse(ZuFileFormat& file, int entries)
{
    for (int entry = entries; entry > 0; --entry) {
        auto* channel = new AnChannelData; // the file owns it
        file.AnChannels.push_back(channel);
        channel->Name = NameOf(entry);
    }
}
