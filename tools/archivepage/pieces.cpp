#include "archivepage/pieces.h"

#include "archivepage/jsontext.h"

#include <QFileInfo>

#include <cmath>
#include <utility>

namespace archivepage {

namespace {

constexpr int Digits = 6; // significant, of measured values: what is shown of them is rounded once more
constexpr int TimeDigits = 6;

// Bits of an entry's state; web/pieces.js has the same.
enum State { Record = 1, Gone = 2, Unread = 4, Right = 8, Wrong = 16, Again = 32 };

int StateOf(const Row& row, const Standing& standing)
{
    int state = 0;
    state |= row.isRecord ? Record : 0;
    state |= row.gone.isEmpty() ? 0 : Gone;
    state |= row.reason.isEmpty() ? 0 : Unread;
    state |= row.verified == QLatin1String("right") ? Right : 0;
    state |= row.verified == QLatin1String("wrong") ? Wrong : 0;
    state |= standing.isAgain ? Again : 0;
    return state;
}

QByteArray Whole(const std::optional<qint64>& number)
{
    return number ? QByteArray::number(*number) : QByteArray("null");
}

QByteArray Milliseconds(const std::optional<double>& seconds)
{
    return JsonNumber(seconds ? std::optional<double>(std::round(*seconds * 1e4) / 10) : std::nullopt, 12);
}

// {"name": value, ...}
class Object
{
public:
    Object& Put(const char* name, const QByteArray& json)
    {
        text += QByteArray(text.isEmpty() ? "" : ",\n") + "\"" + name + "\":" + json;
        return *this;
    }
    Object& Put(const char* name, int number) { return Put(name, QByteArray::number(number)); }
    template <class Values>
    Object& Put(const char* name, const Values& values)
    {
        return Put(name, values.Json());
    }
    QByteArray Json() const { return "{" + text + "}"; }

private:
    QByteArray text;
};

QByteArray Script(const Object& object)
{
    return "zuView.take(" + object.Json() + ");\n";
}

qint64 FloorMilliseconds(qint64 microseconds)
{
    const qint64 milliseconds = microseconds / 1000;
    return milliseconds * 1000 > microseconds ? milliseconds - 1 : milliseconds;
}

} // namespace

void PieceBuilder::Add(const Row& row, const Standing& standing, const QStringList& changed)
{
    if (row.moment)
        times.Add(FloorMilliseconds(*row.moment));
    offsets.Add(Whole(row.offset));
    states.Add(StateOf(row, standing));
    names.Add(JsonText(QFileInfo(row.path).fileName()));
    stations.Add(row.station);
    recorders.Add(row.recorder);
    circuits.Add(row.circuit);
    lengths.Add(Milliseconds(row.duration));
    if (standing.hasPage) {
        pageAt.Add(piece.count);
        pageNames.Add(JsonText(row.PageName()));
    }
    if (row.IsFault())
        AddFault(row);
    AddDetails(row);
    AddWords(row, changed);
    ++piece.count;
}

void PieceBuilder::AddFault(const Row& row)
{
    faultAt.Add(piece.count);
    kinds.Add(row.faultKind);
    faultCircuits.Add(row.faultCircuit);
    directions.Add(row.direction);
    durations.Add(Milliseconds(row.clearing));
    currents.Add(JsonNumber(row.current, Digits));
    kilometres.Add(JsonNumber(row.kilometres, Digits));
    percents.Add(JsonNumber(row.percent, Digits));
    reclosed.Add(Whole(row.reclosed));
    pictured.Add(row.pictureFrom ? 1 : 0);
    resistances.Add(JsonNumber(row.resistance, Digits));
    starts.Add(Milliseconds(row.startAfter));
    trips.Add(Milliseconds(row.tripAfter));
    breakers.Add(Milliseconds(row.breakerAfter));
    deadTimes.Add(Milliseconds(row.deadTime));
    AddPicture(row);
    ++faults;
}

// A fault without a picture has an empty one, so that a fault's number says where its picture is.
void PieceBuilder::AddPicture(const Row& row)
{
    pictureFrom.Add(JsonNumber(row.pictureFrom, TimeDigits));
    pictureTo.Add(JsonNumber(row.pictureTo, TimeDigits));
    peakCurrents.Add(JsonNumber(row.peakCurrent, Digits));
    peakVoltages.Add(JsonNumber(row.peakVoltage, Digits));
    waves.Add(JsonText(row.waves));
    if (++pictures == mostPictures)
        FinishPictures();
}

void PieceBuilder::FinishPictures()
{
    if (pictures == 0)
        return;
    Object object;
    object.Put("count", pictures).Put("from", pictureFrom).Put("to", pictureTo).Put("current", peakCurrents);
    piece.pictures.push_back(Script(object.Put("voltage", peakVoltages).Put("waves", waves)));
    pictures = 0;
    for (Column* column : {&pictureFrom, &pictureTo, &peakCurrents, &peakVoltages, &waves})
        *column = Column();
}

void PieceBuilder::AddDetails(const Row& row)
{
    folders.Add(QFileInfo(row.path).path());
    triggers.Add(JsonText(row.trigger));
    goneTimes.Add(row.gone);
    reasons.Add(row.reason);
    errors.Add(row.error);
    causes.Add(row.cause);
    settings.Add(row.setting);
    samples.Add(Whole(row.samples));
    rates.Add(row.rates);
    analog.Add(row.analog);
    digital.Add(row.digital);
    events.Add(row.events);
    bytes.Add(row.bytes);
    forgiven.Add(row.forgiven);
}

void PieceBuilder::AddWords(const Row& row, const QStringList& changed)
{
    QStringList all = changed;
    all << row.cause << row.setting;
    all.removeAll(QString());
    all.removeDuplicates();
    foundCounts.Add(all.size());
    for (const QString& one : qAsConst(all))
        foundPlaces.Add(found.Place(one));
}

Piece PieceBuilder::Finish()
{
    FinishPictures();
    Object fault;
    fault.Put("count", faults).Put("at", faultAt).Put("kind", kinds).Put("circuit", faultCircuits);
    fault.Put("direction", directions).Put("duration", durations).Put("current", currents);
    fault.Put("km", kilometres).Put("percent", percents).Put("reclosed", reclosed).Put("picture", pictured);
    Object page;
    page.Put("at", pageAt).Put("name", pageNames);
    Object entries;
    entries.Put("count", piece.count).Put("time", times).Put("offset", offsets).Put("state", states);
    entries.Put("name", names).Put("station", stations).Put("recorder", recorders).Put("circuit", circuits);
    piece.entries = Script(entries.Put("length", lengths).Put("fault", fault).Put("page", page));
    Object faultDetails;
    faultDetails.Put("resistance", resistances)
        .Put("start", starts)
        .Put("trip", trips)
        .Put("breaker", breakers);
    faultDetails.Put("deadTime", deadTimes);
    Object details;
    details.Put("count", piece.count).Put("folder", folders).Put("trigger", triggers).Put("gone", goneTimes);
    details.Put("reason", reasons).Put("error", errors).Put("cause", causes).Put("setting", settings);
    details.Put("samples", samples).Put("rates", rates).Put("analog", analog).Put("digital", digital);
    details.Put("events", events).Put("bytes", bytes).Put("forgiven", forgiven);
    piece.details = Script(details.Put("fault", faultDetails));
    Object words;
    words.Put("count", piece.count).Put("words", found.WordsJson()).Put("counts", foundCounts);
    piece.words = Script(words.Put("of", foundPlaces));
    return std::move(piece);
}

} // namespace archivepage
