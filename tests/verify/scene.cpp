#include "scene.h"
#include "base/chainnames.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <exception>

using namespace recorderfile;

const std::vector<Form>& AllForms()
{
    static const std::vector<Form> forms = {
        {"ascii1999", "Тип Comtrade 1999=1", false, false, false},
        {"binary1999", "Тип Comtrade 1999=1\nТип Comtrade BIN=1", false, true, false},
        {"ascii2013", "Кодировка Comtrade UTF8=1", false, false, true},
        {"binary2013", "Тип Comtrade BIN=1", false, true, true},
        {"asciiCff", "Тип Comtrade CFF=1", true, false, true},
        {"binaryCff", "Тип Comtrade CFF=1\nТип Comtrade BIN=1\nКодировка Comtrade UTF8=1", true, true, true},
    };
    return forms;
}

std::vector<Recording> SmallRecording()
{
    Recording first;
    first.comment = QStringLiteral("Пуск внешний");
    AnalogChannel current{QStringLiteral("Q1:Ia"), QStringLiteral("А"), {123, 130, -7, 32767, -32768}};
    current.primary = 1000;
    current.scale = 0.0625F;
    current.zeroCode = -3;
    current.offset = 1.5F;
    current.skewSeconds = 0.00390625F;
    AnalogChannel voltage{QStringLiteral("Q1:Ub"), QString(), {10, 11, 12, 13, 14}};
    voltage.codeRange = 4096;
    first.Add(current).Add(voltage).Add(
        AnalogChannel{QStringLiteral("Q2:3U0"), QStringLiteral("В"), {0, 1, 0, -1, 0}});
    first.Add(DiscreteChannel{QStringLiteral("Q1:вкл"), 0, {{0, 0}, {417, 1}}})
        .Add(DiscreteChannel{QStringLiteral("Q1:откл"), 1, {{0, 1}}})
        .Add(DiscreteChannel{QStringLiteral("Q2:x"), 0, {}});
    Recording second = first;
    std::get<AnalogChannel>(second.sections[0]).samples = {5, 4, 3, 2, 1};
    std::get<DiscreteChannel>(second.sections[5]).changes = {{0, 1}, {900, 0}};
    return {first, second};
}

Segments LongRecording()
{
    Recording recording;
    for (int channel = 0; channel < 4; ++channel) {
        AnalogChannel analog{QStringLiteral("Q1:I%1").arg(channel), QStringLiteral("А"), {}};
        for (int i = 0; i < 1000; ++i)
            analog.samples.push_back(static_cast<int16_t>((i * (37 + channel) + channel) % 5000));
        recording.Add(analog);
    }
    recording.Add(DiscreteChannel{QStringLiteral("Q1:x"), 0, {{0, 0}, {4000, 1}}});
    recording.Add(DiscreteChannel{QStringLiteral("Q1:y"), 0, {{0, 1}, {9000, 0}}});
    return {recording};
}

Scene::Scene(const QByteArray& deviceLines, const std::vector<recorderfile::Recording>& segments)
    : station(deviceLines)
{
    for (size_t i = 1; i < segments.size(); ++i)
        station.Directory().Write(zu::ContinuationName(QStringLiteral("rec.ZU"), static_cast<int>(i)),
                                  Encode(segments[i]));
    if (!station.Convert(Encode(segments[0])))
        qFatal("the recording is not converted: %s", qPrintable(station.Device().LastError));
    verifier = std::make_unique<verify::Verifier>(station.Directory().Path(QStringLiteral("ZuDrv.ini")),
                                                  QStringLiteral("Defaults"), QStringLiteral("Device"));
}

QString Scene::Verdict() const
{
    const TestDirectory& directory = station.Directory();
    try {
        verifier->Check(Recording(), directory.Path(QStringLiteral("out")));
    } catch (const std::exception& error) {
        QString text = QString::fromUtf8(error.what());
        return text.replace(directory.Path(QStringLiteral("out/")),
                            QString()); // the rest is the same in each run
    }
    return QString();
}

verify::Standing Scene::Find(const QString& directory) const
{
    return verifier->Find(Recording(), directory).standing;
}

// A new file each time: the system may write a truncated one to the disk at once, which takes time.
static void Replace(const QString& path, const QByteArray& bytes)
{
    if (!QFile::remove(path) || !WriteFile(path, bytes))
        qFatal("cannot write %s", qPrintable(path));
}

QString Scene::VerdictWith(const QString& extension, const QByteArray& bytes) const
{
    const QString path = Path(extension);
    const QByteArray before = ReadBytes(path);
    Replace(path, bytes);
    QString verdict = Verdict();
    Replace(path, before);
    return verdict;
}

QString Scene::Path(const QString& extension) const
{
    const QDir out(station.Directory().Path(QStringLiteral("out")));
    const QStringList names = out.entryList({QStringLiteral("*.") + extension}, QDir::Files);
    if (names.size() != 1)
        qFatal("not exactly one .%s file", qPrintable(extension));
    return out.filePath(names.first());
}

Copy::Copy(const Scene& scene)
{
    for (const QFileInfo& file : QDir(scene.Out()).entryInfoList(QDir::Files)) {
        base = file.completeBaseName();
        directory.Write(file.fileName(), ReadBytes(file.filePath()));
    }
}

void Copy::Write(const QString& extension, const QByteArray& bytes) const
{
    QFile::remove(Path(extension));
    directory.Write(base + QLatin1Char('.') + extension, bytes);
}

void Copy::Remove(const QString& extension) const
{
    if (!QFile::remove(Path(extension)))
        qFatal("cannot remove %s", qPrintable(Path(extension)));
}

verify::RecordState StateOf(const Scene& scene, const Copy& copy)
{
    return scene.Find(copy.Directory()).state;
}

bool IsThisRecordings(verify::RecordState state)
{
    using verify::RecordState;
    return state == RecordState::Same || state == RecordState::Own || state == RecordState::Unfinished;
}
