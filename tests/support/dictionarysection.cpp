#include "support/dictionarysection.h"

#include "config/QSettingsRu.h"

DictionarySection::DictionarySection(const QByteArray& lines) : Resorter(&Device)
{
    ZuCmtrConverter::LogFilePath = directory.Path(QStringLiteral("log"));
    Loaded = Resorter.LoadFromIni(directory.Write(QStringLiteral("ZuDrv.ini"), "[Dev]\n" + lines + "\n"),
                                  QStringLiteral("Dev"));
}

DictionarySection::~DictionarySection()
{
    ZuCmtrConverter::LogFilePath = QString();
    QSettingsRu::Clear();
}

QStringList DictionarySection::Log() const
{
    return ReadLines(directory.Path(QStringLiteral("log")));
}

QStringList DictionarySection::Queue() const
{
    QStringList queue;
    for (const QString& message : Device.LogMessages)
        queue << message;
    return queue;
}

SortedDictionary::SortedDictionary(const QByteArray& lines) : DictionarySection(lines)
{
    if (!Loaded || !Resorter.PreResort())
        qFatal("the test dictionary does not load");
}

QStringList SortedDictionary::AnNames() const
{
    QStringList names;
    for (const DictionaryZuCmtrAn* entry : Resorter.AnResorted)
        names << entry->FullName;
    return names;
}

QStringList SortedDictionary::DiNames() const
{
    QStringList names;
    for (const DictionaryZuCmtrDi* entry : Resorter.DiResorted)
        names << entry->FullName;
    return names;
}

QByteArray Entries(const char* letter, const std::vector<QByteArray>& values)
{
    const QString count = QString::number(values.size());
    QByteArray lines = QStringLiteral("n%1Max=%2\n")
                           .arg(QLatin1Char(*letter) == QLatin1Char('A') ? "An" : "Di")
                           .arg(count)
                           .toUtf8();
    for (size_t i = 0; i < values.size(); ++i)
        lines += letter + QString::asprintf("%02zu=", i + 1).toUtf8() + values[i] + "\n";
    return lines;
}

NamedChannels::NamedChannels(const QStringList& analog, const QStringList& discrete)
{
    for (const QString& name : analog) {
        File.AnChannels.push_back(new AnChannelData);
        File.AnChannels.back()->Name = name;
    }
    for (const QString& name : discrete) {
        File.DiChannels.push_back(new DiChannelData);
        File.DiChannels.back()->Name = name;
    }
}

NamedChannels::~NamedChannels()
{
    File.Clear();
}
