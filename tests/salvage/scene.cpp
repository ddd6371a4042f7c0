#include "scene.h"

#include "base/chainnames.h"
#include "recording/zufilelayout.h"
#include "station/station.h"

#include <QTextCodec>

#include <cstring>

std::vector<QByteArray> StationFiles(bool compressed, int segments)
{
    return StationFiles(compressed, segments, 32, 64);
}

std::vector<QByteArray> StationFiles(bool compressed, int segments, int analog, int discrete)
{
    station::StationOptions options;
    options.seconds = 1.0 / 60;
    options.analogChannels = analog;
    options.discreteChannels = discrete;
    options.compressed = compressed;
    options.segments = segments;
    std::vector<QByteArray> files;
    for (const recorderfile::Recording& segment :
         station::MakeRecording(options, station::StartKind::PositiveSequence))
        files.push_back(recorderfile::Encode(segment));
    return files;
}

std::vector<Place> PlacesIn(const QByteArray& file)
{
    std::vector<Place> places;
    for (int begin = sizeof(ZuFileHeader); begin < file.size();) {
        ZuFileSectionHeader header{};
        std::memcpy(&header, file.constData() + begin, sizeof header);
        const int end = begin + static_cast<int>(header.descrLength + header.dataLength);
        const QString name = QTextCodec::codecForName("CP866")->toUnicode(header.name);
        places.push_back({name, QString(name).replace(':', ' '), begin, end});
        begin = end;
    }
    return places;
}

Columns FirstRows(const Columns& columns, int rows)
{
    Columns first;
    for (auto column = columns.begin(); column != columns.end(); ++column) {
        int end = 0;
        for (int row = 0; row < rows; ++row)
            end = column->indexOf('\n', end) + 1;
        first[column.key()] = column->left(end);
    }
    return first;
}

QStringList Difference(const Columns& a, const Columns& b)
{
    QStringList names;
    for (const QString& name : a.keys() + b.keys()) {
        if (a.value(name, "-") != b.value(name, "-"))
            names << name;
    }
    names.removeDuplicates();
    return names;
}

QStringList Scene::Write(const std::vector<QByteArray>& files)
{
    QStringList paths;
    for (size_t i = 0; i < files.size(); ++i)
        paths << directory.Write(zu::ContinuationName("rec.ZU", static_cast<int>(i)), files[i]);
    for (size_t i = files.size(); i < 4; ++i)
        QFile::remove(directory.Path(zu::ContinuationName("rec.ZU", static_cast<int>(i))));
    return paths;
}

Columns Scene::ConvertFile(const QString& first)
{
    // The channels keep the recorder's names; the library keeps some order from one recording to the next.
    TestStation station("Переименовать сигналы Comtrade=0");
    ZuCmtrConverter& converter = station.Converter();
    if (!converter.ConvertToComtrade(first, station.Directory().MakeDirectory("out"), 0))
        qFatal("not converted: %s", qPrintable(station.Device().LastError));
    QStringList names = {QString()};
    const QTextCodec* codec = QTextCodec::codecForName("CP1251");
    for (const QByteArray& line : station.Output("cfg").split('\n')) {
        const QList<QByteArray> fields = line.split(',');
        if (fields.size() == 13 || fields.size() == 5)
            names << codec->toUnicode(fields[1]);
    }
    Columns columns;
    for (const QByteArray& line : station.Output("dat").split('\n')) {
        if (line.trimmed().isEmpty())
            continue;
        const QList<QByteArray> fields = line.trimmed().split(',');
        if (fields.size() != names.size() + 1)
            qFatal("%d values for %d channels", int(fields.size()) - 2, int(names.size()) - 1);
        columns[QString()] += fields[0] + ' ' + fields[1] + '\n';
        for (int i = 2; i < fields.size(); ++i)
            columns[names[i - 1]] += fields[i] + '\n';
    }
    return columns;
}

Columns Scene::Convert(const std::vector<QByteArray>& files)
{
    return ConvertFile(Write(files).first());
}

salvage::Examination Scene::Examine(const std::vector<QByteArray>& files)
{
    return salvage::Examine(Write(files));
}

Columns Scene::Salvage(const std::vector<QByteArray>& files)
{
    const salvage::Examination found = Examine(files);
    const TestDirectory whole;
    return ConvertFile(salvage::Write(found.plan->segments, found.plan->choice, whole.Path()));
}
