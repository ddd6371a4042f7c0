// What is lost of a recording, in words.
#include "salvage/plan.h"

#include "text/texts.h"

#include <QFileInfo>
#include <QJsonArray>

namespace salvage {

namespace {

constexpr int MostNames = 10; // in a note

QJsonValue Number(const std::optional<size_t>& number)
{
    return number ? QJsonValue(static_cast<qint64>(*number)) : QJsonValue();
}

QString ChannelsNote(const Loss& loss)
{
    QStringList names;
    for (const QString& name : loss.lost.mid(0, MostNames))
        names << QLatin1Char('\'') + name + QLatin1Char('\'');
    const size_t others = loss.nameless + static_cast<size_t>(loss.lost.size() - names.size());
    if (names.isEmpty())
        return Tr("salvage", "channels lost with their names: %1").arg(others);
    const QString list = names.join(QLatin1String(", "));
    return others == 0 ? Tr("salvage", "lost channels: %1").arg(list)
                       : Tr("salvage", "lost channels: %1 and %2 others").arg(list).arg(others);
}

} // namespace

QString TextOf(const Loss& loss)
{
    const QString analog = QString::number(loss.analog);
    const QString discrete = QString::number(loss.discrete);
    QString text =
        loss.allAnalog && loss.allDiscrete
            ? Tr("salvage", "%1 of %2 analog, %3 of %4 discrete channels")
                  .arg(analog, QString::number(*loss.allAnalog), discrete, QString::number(*loss.allDiscrete))
            : Tr("salvage", "%1 analog and %2 discrete of %3 channels")
                  .arg(analog, discrete, QString::number(loss.channels));
    if (!loss.lostFiles.isEmpty())
        text += Tr("salvage", ", %1 of %2 files").arg(loss.files).arg(loss.files + loss.lostFiles.size());
    return text;
}

QStringList NotesOf(const Loss& loss)
{
    QStringList notes;
    if (loss.LosesChannels())
        notes << ChannelsNote(loss);
    if (loss.analog == 0)
        notes << Tr("salvage", "no analog channel is whole: the states are sampled 2400 times a second");
    QStringList files;
    for (const QString& file : loss.lostFiles)
        files << QFileInfo(file).fileName();
    if (!files.isEmpty())
        notes << Tr("salvage", "not in the record: %1").arg(files.join(QLatin1String(", ")));
    return notes;
}

QJsonObject JsonOf(const Loss& loss)
{
    QJsonObject object;
    object["analog"] = static_cast<qint64>(loss.analog);
    object["discrete"] = static_cast<qint64>(loss.discrete);
    object["allAnalog"] = Number(loss.allAnalog);
    object["allDiscrete"] = Number(loss.allDiscrete);
    object["channels"] = static_cast<qint64>(loss.channels);
    object["lost"] = QJsonArray::fromStringList(loss.lost);
    object["nameless"] = static_cast<qint64>(loss.nameless);
    object["lostFiles"] = QJsonArray::fromStringList(loss.lostFiles);
    return object;
}

} // namespace salvage
