#include "zucmtr/watch/journalcopier.h"

#include "catalogue/catalogue.h"
#include "catalogue/schema.h"
#include "zucmtr/watch/journaltables.h"

#include <QDataStream>
#include <QSysInfo>

namespace journalcopier {

namespace {

using Verdict = WatchJournal::Verdict;
using State = WatchJournal::Task::State;

WatchJournal::Contents Unpacked(QDataStream& stream)
{
    WatchJournal::Contents contents;
    qint32 count = 0;
    stream >> count;
    for (int i = 0; i < count; ++i) {
        QString file;
        WatchJournal::Entry entry;
        quint8 verdict = 0;
        stream >> file >> entry.print >> verdict >> entry.record >> entry.access >> entry.noted >>
            entry.unended >> entry.failures >> entry.kills;
        entry.verdict = static_cast<Verdict>(verdict);
        contents.entries[file] = entry;
    }
    stream >> count;
    for (int i = 0; i < count; ++i) {
        qint64 number = 0;
        WatchJournal::Task task;
        quint8 state = 0;
        stream >> number >> task.file >> task.input >> task.noted >> task.failures >> state;
        task.state = static_cast<State>(state);
        contents.tasks[number] = task;
    }
    return contents;
}

class Copier : public SideProcess::Clerk
{
public:
    Copier(QString address_, Name name_) : address(std::move(address_)), name(std::move(name_)) {}

    QByteArray Answer(const QByteArray& message) override
    {
        QDataStream stream(message);
        quint8 request = 0;
        stream >> request;
        try {
            if (!catalogue || static_cast<Request>(request) == Request::Open)
                Open();
            if (static_cast<Request>(request) != Request::Open)
                Write(static_cast<Request>(request), Unpacked(stream));
            return {};
        } catch (const std::exception& error) {
            catalogue.reset();
            return text::MessageOf(error).toUtf8();
        }
    }

private:
    void Open()
    {
        catalogue.reset();
        auto opened = std::make_unique<catalogue::Catalogue>(address);
        sql::Database& database = opened->Database();
        opened->Guard([&] {
            database.Together([&] {
                catalogue::CheckVersion(database);
                number =
                    database
                        .Number(QStringLiteral(
                                    "INSERT INTO journals (host, file, directory, recorder, process, since) "
                                    "VALUES (?, ?, ?, ?, ?, ?) ON CONFLICT (host, file) DO UPDATE SET "
                                    "directory = excluded.directory, recorder = excluded.recorder, process = "
                                    "excluded.process, since = excluded.since RETURNING id"),
                                {QSysInfo::machineHostName(), name.file, name.directory, name.recorder,
                                 name.process, since})
                        .value_or(0);
            });
        });
        catalogue = std::move(opened);
    }

    void Write(Request request, const WatchJournal::Contents& contents)
    {
        sql::Database& database = catalogue->Database();
        catalogue->Guard([&] {
            database.Together([&] {
                catalogue::CheckVersion(database); // a newer program may have come
                const journaltables::Home home{database, number};
                if (request == Request::All)
                    journaltables::Replace(home, contents);
                else
                    journaltables::Write(home, contents);
                database.Run(QStringLiteral("UPDATE journals SET copied = ? WHERE id = ?"),
                             {journaltables::Now(), number});
            });
        });
    }

    const QString address;
    const Name name;
    const QString since = journaltables::Now();
    qint64 number = 0; // of the journal
    std::unique_ptr<catalogue::Catalogue> catalogue;
};

} // namespace

// The type of a count is written out: Qt's own for sizes differs between its versions.
QByteArray Packed(Request request, const WatchJournal::Contents& contents)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << static_cast<quint8>(request) << static_cast<qint32>(contents.entries.size());
    for (auto one = contents.entries.begin(); one != contents.entries.end(); ++one)
        stream << one.key() << one->print << static_cast<quint8>(one->verdict) << one->record << one->access
               << one->noted << one->unended << one->failures << one->kills;
    stream << static_cast<qint32>(contents.tasks.size());
    for (auto one = contents.tasks.begin(); one != contents.tasks.end(); ++one)
        stream << one.key() << one->file << one->input << one->noted << one->failures
               << static_cast<quint8>(one->state);
    return bytes;
}

std::unique_ptr<SideProcess::Clerk> New(const QString& catalogue, const Name& name)
{
    return std::make_unique<Copier>(catalogue, name);
}

} // namespace journalcopier
