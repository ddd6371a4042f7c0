// The service of 'zucmtr watch --config' and '--status': a process for each recorder, and this one, which
// starts them, starts them again, and writes how they are doing. A recorder that crashes, hangs or lacks
// memory stops no other one; and the library has one set of defaults in a process, which recorders need not
// share.
#pragma once

#include "zucmtr/files/systemfile.h"
#include "zucmtr/watch/watchtrouble.h"

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <map>
#include <sys/types.h>
#include <vector>

struct ServiceRecorder
{
    QString name;
    QByteArray settings;       // if they change, the recorder is started again
    std::function<int()> work; // of its process; returns its exit code
};

/// What the settings say.
struct ServicePlan
{
    std::vector<ServiceRecorder> recorders;
    QMap<QString, QStringList> mistakes; // by recorder, in its settings; it is not among the others
};

struct ServiceOrder
{
    bool isNamed = true;      // the recorders are many: their names are in all lines
    bool ends = false;        // when the recorders have ended; no recorder is started again
    QString status;           // path of the file; empty: none
    double everySeconds = 15; // at most between two writings of it
};

class Service
{
public:
    /// read: the settings as they are now; throws ConfigurationError.
    Service(ServiceOrder order_, std::function<ServicePlan()> read_);

    /// Returns the exit code: after a signal 0; else the worst one of the recorders.
    int Run();

private:
    using Clock = std::chrono::steady_clock;

    enum class State { Waiting, Running, Misconfigured, Ended };

    struct One
    {
        QByteArray settings;
        std::function<int()> work;
        State state = State::Waiting;
        bool isLeaving = false;    // its file is gone
        bool isStopping = false;   // it was told to end, to be started again with other settings
        Clock::time_point start{}; // of its process, or when it is to start
        int failures = 0;          // in a row
        pid_t process = -1;
        systemfile::Descriptor channel;
        QJsonObject status; // as it was last reported
        QDateTime seen;
    };

    void Begin();
    void Reload();
    QStringList EndMissing(const ServicePlan& plan);
    QStringList Follow(const ServicePlan& plan);
    void TakeMistakes(const ServicePlan& plan, bool isFirst);
    void StartDue();
    void Start(const QString& name, One& one);
    [[noreturn]] void Become(const QString& name, const std::function<int()>& work, int channel,
                             pid_t service);
    void TakeEnds();
    void TakeEnd(const QString& name, One& one, int status);
    void Down(const QString& name, One& one, const char* reason, const QString& text, bool isTriedAgain);
    void TakeReports();
    void Wait() const;
    bool HasWork() const;
    void EndAll();
    QJsonObject Status() const;
    void WriteStatus(bool now);
    void TellManager() const;

    const ServiceOrder order;
    const std::function<ServicePlan()> read;
    const QDateTime since;
    std::map<QString, One> recorders; // by name
    Clock::time_point written{};
    bool hasNews = true;
    bool isStatusLost = false; // it could not be written
    int worst = 0;             // exit code of a recorder that has ended
};
