// Tests that run on a catalogue in a file and on one of a server, and the entries that they put into it.
#pragma once

#include "catalogue/catalogue.h"
#include "sql/address.h"
#include "support/files.h"
#include "support/postgresserver.h"

#include <gtest/gtest.h>

class AnyCatalogue : public testing::TestWithParam<sql::Dialect>
{
protected:
    AnyCatalogue()
        : address(GetParam() == sql::Dialect::Sqlite ? directory.Path("zucmtr-archive.db")
                                                     : PostgresServer::Own().FreshSchema())
    {}

    bool IsServer() const { return GetParam() == sql::Dialect::Postgres; }

    /// The rows of a result, values separated by "|", NULL as "-".
    QStringList Rows(const QString& command, const sql::Values& values = {}) const
    {
        const auto database = sql::Open(address);
        return RowsOf(*database, command, values);
    }
    static QStringList RowsOf(sql::Database& database, const QString& command, const sql::Values& values = {})
    {
        QStringList rows;
        database.Run(command, values, [&](const sql::Row& row) {
            QStringList texts;
            for (int i = 0; i < row.Columns(); ++i)
                texts << (row.IsNull(i) ? QStringLiteral("-") : row.Text(i));
            rows << texts.join('|');
        });
        return rows;
    }

    QString Path(const QString& name = QString()) const { return directory.Path(name); }

    /// As in the column.
    QString Stored(const QString& name) const { return IsServer() ? Path(name) : name; }

    TestDirectory directory;
    const QString address;
};

#define FOR_BOTH(Fixture)                                                                                    \
    INSTANTIATE_TEST_SUITE_P(                                                                                \
        Catalogue, Fixture, testing::Values(sql::Dialect::Sqlite, sql::Dialect::Postgres),                   \
        [](const auto& one) { return one.param == sql::Dialect::Sqlite ? "Sqlite" : "Postgres"; })

/// A recording whose contents are these, started at a second of 1 March 2024.
inline catalogue::Entry RecordingAt(const QString& path, const QByteArray& contents, int second = 0)
{
    catalogue::Entry entry;
    entry.path = path;
    entry.pieces = {{QFileInfo(path).fileName(), contents.size(), 1000 + second, contents.toHex()}};
    entry.station = QString::fromUtf8("Восточная");
    entry.recorder = "R1";
    entry.start = entry.trigger =
        QStringLiteral("2024-03-01T10:00:%1+03:00").arg(second, 2, 10, QLatin1Char('0'));
    entry.utcOffset = 180;
    entry.moment = (qint64{1709276400} + second) * 1000000;
    entry.circuit = QString::fromUtf8("ВЛ-110 кВ Южная");
    entry.duration = 1.5;
    entry.samples = 3600;
    entry.rates = "2400";
    entry.frequency = 50;
    entry.analog = {{entry.circuit, "Ia", "A", "A", -10.5, 20.25},
                    {entry.circuit, "3U0", "N", "kV", std::nullopt, std::nullopt}};
    entry.digital = {{entry.circuit, QString::fromUtf8("Откл. Q1"), "", 2, 0.125},
                     {entry.circuit, "KQC", "", 0, std::nullopt}};
    entry.events = {{0.125, 0, "trip", true, true}, {0.25, 0, "trip", false, false}};
    return entry;
}

inline catalogue::Entry UnreadAt(const QString& path, const QByteArray& contents)
{
    catalogue::Entry entry;
    entry.path = path;
    entry.pieces = {{QFileInfo(path).fileName(), contents.size(), 1000, contents.toHex()}};
    entry.reason = "recordingUnreadable";
    entry.error = QString::fromUtf8("нет данных");
    return entry;
}

inline catalogue::Entry FaultAt(const QString& path, const QByteArray& contents, int second,
                                const QString& kind, double duration)
{
    catalogue::Entry entry = RecordingAt(path, contents, second);
    entry.fault = catalogue::FaultFacts{entry.circuit, kind, "forward", 0.125, 0.125 + duration,
                                        "takagi",      42.5, 21.25,     0.5,  1234.5};
    entry.operating.trip = 0.03;
    return entry;
}
