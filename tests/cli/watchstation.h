// A directory "in" and a watch of it that can be started, ended and restarted.
#pragma once

#include "child.h"
#include "program.h"
#include "sql/sqlite.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <memory>
#include <unistd.h>

constexpr int QuietMilliseconds = 100;

/// The events of the watch, and its standard error, are collected in the file "events".
class Station : public Workplace
{
public:
    explicit Station(int quiet = QuietMilliseconds) : Workplace({{"Время ожидания", QString::number(quiet)}})
    {
        MakeDirectory("in");
        output =
            open(Path("events").toLocal8Bit().constData(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    }
    ~Station() { close(output); }
    Station(const Station&) = delete;
    Station& operator=(const Station&) = delete;

    void Start(const QStringList& more = {}, const QString& retryAfter = "0.01",
               const QString& rescan = "0.05")
    {
        child = std::make_unique<Child>(
            Path(),
            QStringList{"watch", "--out", "out", "--rescan", rescan, "--retry-after", retryAfter} + more +
                QStringList{"in"},
            output, output);
    }

    /// Ends it with the signal and returns its exit code.
    int End(int signal = SIGTERM)
    {
        child->Send(signal);
        return WaitFor([&] { return child->HasEnded(); }) ? child->Code() : -2;
    }

    Child& Running() { return *child; }

    Finished Once(const QStringList& more = {}, const QMap<QString, QString>& environment = {}) const
    {
        return RunProgram(Path(), QStringList{"watch", "--once", "--out", "out"} + more + QStringList{"in"},
                          environment);
    }

    /// The values of a key in all events of a kind, in order.
    QStringList Events(const QString& kind, const QString& key = "file") const
    {
        return EventsIn(QString::fromUtf8(ReadBytes(Path("events"))), kind, key);
    }

    static QStringList EventsIn(const QString& text, const QString& kind, const QString& key = "file")
    {
        QStringList values;
        for (const QString& line : text.split('\n')) {
            const QJsonObject event = QJsonDocument::fromJson(line.toUtf8()).object();
            if (event["event"].toString() == kind)
                values << event[key].toVariant().toString();
        }
        return values;
    }

    bool Waits(const QString& kind, int count) const
    {
        return WaitFor([&] { return Events(kind).size() >= count; });
    }

    QStringList Records() const { return Names("out").filter(".cfg"); }

    /// The first column of what the command gives on the journal.
    QStringList Journal(const char* command, const QString& path = "out/.zucmtr-watch") const
    {
        QStringList values;
        sql::Sqlite(Path(path)).Run(command, {}, [&](const sql::Row& row) { values << row.Text(0); });
        return values;
    }

    /// How many recordings are in the state.
    int Count(const QString& state, const QString& path = "out/.zucmtr-watch") const
    {
        return Journal("SELECT state FROM recordings", path).count(state);
    }

    void Rename(const QString& from, const QString& to) const
    {
        EXPECT_TRUE(QFile::rename(Path(from), Path(to)));
    }

private:
    int output = -1;
    std::unique_ptr<Child> child;
};
