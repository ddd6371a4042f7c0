#include "archivepage/rows.h"

#include "sql/address.h"
#include "text/texts.h"

#include <QCryptographicHash>
#include <QFileInfo>

namespace archivepage {

namespace {

constexpr int NameLength = 16; // of a page, hexadecimal digits

// In the order of Row's members; RowOf reads them in this order.
const char* const Columns =
    "e.id, e.kind, e.path, e.print, e.bytes, e.gone, e.reason, e.error, e.station, e.recorder, "
    "e.trigger_time, "
    "e.utc_offset, e.moment, e.circuit, e.cause, e.setting, e.duration, e.samples, e.rates, e.analog, "
    "e.digital, "
    "e.events, e.verified, e.forgiven, e.fault_kind, e.fault_circuit, e.fault_direction, e.fault_duration, "
    "e.fault_current, e.distance_km, e.distance_percent, e.fault_resistance, e.start_after, e.trip_after, "
    "e.breaker_after, e.dead_time, e.reclosed, p.from_time, p.to_time, p.peak_current, p.peak_voltage, "
    "p.waves";

// Takes the columns of a row one after another.
class Reader
{
public:
    explicit Reader(const sql::Row& row_) : row(row_) {}

    void Take(QString& text) { text = row.Text(column++); }
    void Take(qint64& number) { number = row.Integer(column++); }
    void Take(std::optional<qint64>& number)
    {
        number = row.IsNull(column) ? std::nullopt : std::optional<qint64>(row.Integer(column));
        ++column;
    }
    void Take(std::optional<double>& number)
    {
        number = row.IsNull(column) ? std::nullopt : std::optional<double>(row.Real(column));
        ++column;
    }

    template <class... Values>
    void TakeAll(Values&... values)
    {
        (Take(values), ...);
    }

private:
    const sql::Row& row;
    int column = 0;
};

Row RowOf(const sql::Row& from)
{
    Row row;
    QString kind;
    Reader(from).TakeAll(
        row.id, kind, row.path, row.print, row.bytes, row.gone, row.reason, row.error, row.station,
        row.recorder, row.trigger, row.offset, row.moment, row.circuit, row.cause, row.setting, row.duration,
        row.samples, row.rates, row.analog, row.digital, row.events, row.verified, row.forgiven,
        row.faultKind, row.faultCircuit, row.direction, row.clearing, row.current, row.kilometres,
        row.percent, row.resistance, row.startAfter, row.tripAfter, row.breakerAfter, row.deadTime,
        row.reclosed, row.pictureFrom, row.pictureTo, row.peakCurrent, row.peakVoltage, row.waves);
    row.isRecord = kind == QLatin1String(catalogue::NameOf(catalogue::Kind::Record));
    return row;
}

} // namespace

QString Row::PageName() const
{
    const QString what = print + QLatin1Char('\n') + QFileInfo(path).fileName();
    const QByteArray hash = QCryptographicHash::hash(what.toUtf8(), QCryptographicHash::Sha256).toHex();
    return QString::fromLatin1(hash.left(NameLength)) + QStringLiteral(".html");
}

void ForEachRow(catalogue::Catalogue& catalogue, const std::function<void(const Row& row)>& take)
{
    const QString all =
        QStringLiteral("SELECT %1 FROM entries e LEFT JOIN pictures p ON p.entry = e.id WHERE e.moment IS "
                       "%2NULL ORDER BY e.moment, e.path, e.id");
    for (const char* negation : {"NOT ", ""})
        catalogue.Database().Run(all.arg(QLatin1String(Columns), QLatin1String(negation)), {},
                                 [&](const sql::Row& row) { take(RowOf(row)); });
}

QHash<qint64, QStringList> ChangedChannels(catalogue::Catalogue& catalogue)
{
    QHash<qint64, QStringList> names;
    QHash<qint64, QString> channels; // their texts are shared by the lists
    catalogue.Database().Run(QStringLiteral("SELECT id, name FROM channels"), {},
                             [&](const sql::Row& row) { channels[row.Integer(0)] = row.Text(1); });
    catalogue.Database().Run(
        QStringLiteral("SELECT entry, channel FROM changes ORDER BY entry, channel"), {},
        [&](const sql::Row& row) { names[row.Integer(0)] << channels.value(row.Integer(1)); });
    return names;
}

namespace {

// What is read in it is of one state of the database.
void InTransaction(sql::Database& database, const std::function<void()>& work)
{
    const bool isServer = database.Kind() == sql::Dialect::Postgres;
    database.RunScript(isServer ? QStringLiteral("BEGIN ISOLATION LEVEL REPEATABLE READ")
                                : QStringLiteral("BEGIN"));
    try {
        work();
        database.RunScript(QStringLiteral("ROLLBACK"));
    } catch (...) {
        try {
            database.RunScript(QStringLiteral("ROLLBACK"));
        } catch (const sql::Failure&) { // the connection is gone, and the transaction with it
        }
        throw;
    }
}

} // namespace

void AtOneMoment(catalogue::Catalogue& catalogue, const std::function<void()>& work)
{
    try {
        InTransaction(catalogue.Database(), work);
    } catch (const sql::Failure& failure) {
        throw text::Error(Tr("catalogue", "the catalogue '%1': %2")
                              .arg(sql::Shown(catalogue.Address()), failure.Message()));
    }
}

} // namespace archivepage
