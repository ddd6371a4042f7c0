#include "forms.h"

#include "recorderfile/recorderfile.h"

#include <QDir>

using namespace recorderfile;

std::vector<Form> AllForms()
{
    const QByteArray binary = "Тип Comtrade BIN=1\n";
    const QByteArray old = "Тип Comtrade 1999=1\n";
    const QByteArray container = "Тип Comtrade CFF=1\n";
    const QByteArray remove = "Удалять исходные=1\n";
    return {{"1999 ASCII", old},
            {"1999 binary", old + binary},
            {"2013 ASCII", ""},
            {"2013 binary, sources deleted", binary + remove},
            {"CFF ASCII, sources deleted", container + remove},
            {"CFF binary", container + binary}};
}

bool IsTemporary(const QString& name)
{
    return name.endsWith(QStringLiteral("tmp"));
}

// A segment whose values depend on seed; large enough that the DAT file does not fit into one buffer.
static QByteArray Segment(int seed)
{
    Recording recording;
    recording.comment = QStringLiteral("Пуск ДЗ (Q1:Ia,2,1.5,t) y");
    for (const char* name : {"Q1:Ia", "Q1:Ib", "Q1:Ic", "Q1:Ua"}) {
        AnalogChannel channel;
        channel.name = QString::fromLatin1(name);
        channel.unit = QStringLiteral("А");
        for (int i = 0; i < 1500; ++i)
            channel.samples.push_back(static_cast<int16_t>((i * 37 + seed) % 20000));
        channel.compressed = seed % 2 == 0 ? 1 : 0;
        recording.Add(channel);
    }
    DiscreteChannel trip;
    trip.name = QStringLiteral("Q1:x");
    trip.changes = {{0, 0}, {5000U + static_cast<uint32_t>(seed), 1}};
    return Encode(recording.Add(trip));
}

Scene::Scene(const Form& form)
    : station("nAnMax=1\nA01=Q1:Ia,V_L=110 E_G=L S_G=CT\n" + form.deviceLines),
      root(station.Directory().Path())
{
    const Tree before = ConvertWith(Segment(1), QByteArray());
    ofFirst = ConvertWith(Segment(2), QByteArray());
    whole = ConvertWith(Segment(2), Segment(3));
    earlier = before;
    Reset();
}

Tree Scene::ConvertWith(const QByteArray& first, const QByteArray& second)
{
    firstFile = first;
    secondFile = second;
    earlier.clear();
    Reset();
    if (!Convert())
        qFatal("the scene does not convert: %s", qPrintable(Device().LastError));
    return Output();
}

void Scene::Reset()
{
    const QString out = root + QStringLiteral("/out");
    QDir(out).removeRecursively();
    QDir().mkpath(out);
    for (auto file = earlier.begin(); file != earlier.end(); ++file)
        station.Directory().Write(QStringLiteral("out/") + file.key(), file.value());
    ResetSources();
}

void Scene::ResetSources()
{
    QDir(root + QStringLiteral("/in")).removeRecursively();
    station.Directory().Write(QStringLiteral("in/rec.ZU"), firstFile);
    if (!secondFile.isEmpty())
        station.Directory().Write(QStringLiteral("in/rec.Z01"), secondFile);
}

bool Scene::Convert()
{
    return station.Converter().ConvertToComtrade(root + QStringLiteral("/in/rec.ZU"),
                                                 root + QStringLiteral("/out"), 0);
}

Tree Scene::Output() const
{
    Tree tree;
    for (const QString& name : station.Directory().Names(QStringLiteral("out")))
        tree.insert(name, ReadBytes(root + QStringLiteral("/out/") + name));
    return tree;
}

QStringList Scene::Sources() const
{
    return station.Directory().Names(QStringLiteral("in"));
}
