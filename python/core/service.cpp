#include "core/service.h"

#include "inicheck/inicheck.h"
#include "text/texts.h"
#include "zucmtr/terminal/command.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>
#include <thread>

namespace core {

namespace {

constexpr unsigned int MostWorkers = 32;

unsigned int WorkerCount()
{
    return std::clamp(std::thread::hardware_concurrency(), 1U, MostWorkers);
}

// What a set of workers is made from. A file that was changed since is another one.
struct Key
{
    DeviceChoice choice;
    QString keys; // that precede those of the ini file
    qint64 size = 0;
    QDateTime changed;

    Key(const DeviceChoice& choice_, const QString& keys_) : choice(choice_), keys(keys_)
    {
        const QFileInfo info(choice.ini);
        size = info.size();
        changed = info.lastModified();
    }

    bool operator==(const Key& other) const
    {
        return choice.ini == other.choice.ini && choice.defaults == other.choice.defaults &&
               choice.device == other.choice.device && keys == other.keys && size == other.size &&
               changed == other.changed;
    }
};

} // namespace

struct Service::Setup
{
    Setup(const Key& key_, const WorkOrder& order) : key(key_), ini(key.choice, key.keys), host(QString())
    {
        const DeviceChoice& loaded = ini.Choice();
        host.LoadDefaults(loaded.ini, loaded.defaults);
        for (const inicheck::Finding& finding :
             inicheck::SpoilsEveryRecord(loaded.ini, loaded.defaults, loaded.device))
            throw ConfigurationError(
                QStringLiteral("%1:%2: %3").arg(key.choice.ini).arg(finding.line).arg(finding.text));
        for (unsigned int i = 0; i < WorkerCount(); ++i) {
            const unsigned int device = host.LoadDevice(loaded.ini, loaded.device);
            Host::TakeNotes(device);
            idle.push_back(std::make_unique<Worker>(host, device, loaded, key.choice, order));
        }
        if (idle.front()->LibraryDeletes())
            throw ConfigurationError(
                Tr("python", "'%1' has the library delete recordings before their records are verified; set "
                             "'Удалять исходные' to 0 in [%2]")
                    .arg(key.choice.ini, key.choice.device));
    }

    const Key key;
    const ChangedIni ini;
    Host host;
    std::vector<std::unique_ptr<Worker>> idle;
};

// A worker that was taken for a conversion, and that goes back.
class Service::Running
{
public:
    explicit Running(Service& service_) : service(service_), worker(std::move(service.setup->idle.back()))
    {
        service.setup->idle.pop_back();
        ++service.running;
    }
    ~Running()
    {
        const std::lock_guard lock(service.mutex);
        service.setup->idle.push_back(std::move(worker));
        --service.running;
        service.changed.notify_all();
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    Worker& Own() const { return *worker; }

private:
    Service& service;
    std::unique_ptr<Worker> worker;
};

Service& Service::Instance()
{
    static Service service;
    return service;
}

std::unique_lock<std::mutex> Service::Lock()
{
    std::unique_lock lock(mutex);
    if (isBroken)
        throw ConfigurationError(Tr("python",
                                    "this process was forked while a recording was converted; start it when "
                                    "none is, or by 'spawn'"));
    return lock;
}

// A conversion without the lock is one that runs.
void Service::BeforeFork()
{
    isLockedForFork = mutex.try_lock();
}

void Service::InParent()
{
    if (isLockedForFork)
        mutex.unlock();
}

void Service::InChild()
{
    isBroken = isBroken || !isLockedForFork || running > 0;
    waiting = 0; // the threads that did are not here
    if (isLockedForFork)
        mutex.unlock();
    else
        new (&mutex) std::mutex;
    new (&changed) std::condition_variable;
}

// Returns with the lock when no conversion runs.
void Service::WaitForOthers(std::unique_lock<std::mutex>& lock)
{
    ++waiting;
    changed.wait(lock, [this] { return running == 0; });
    --waiting;
    changed.notify_all(); // once the lock is free
}

BatchItem Service::Convert(const DeviceChoice& choice, const WorkOrder& order, const Recording& recording)
{
    const Key key(choice, order.form.Keys());
    std::unique_lock lock = Lock();
    for (;;) {
        changed.wait(lock, [this] { return waiting == 0; });
        const bool isMine = setup && setup->key == key;
        if (isMine && !setup->idle.empty())
            break;
        if (isMine) {
            changed.wait(lock); // for a worker, or for whatever else has come
            continue;
        }
        WaitForOthers(lock);
        if (!setup || !(setup->key == key)) {
            setup.reset(); // there is one converter at a time
            setup = std::make_unique<Setup>(key, order);
        }
    }
    const Running mine(*this);
    lock.unlock();
    mine.Own().Follow(order);
    return mine.Own().Work(recording);
}

void Service::Alone(const std::function<void()>& work)
{
    std::unique_lock lock = Lock();
    changed.wait(lock, [this] { return waiting == 0; });
    WaitForOthers(lock);
    setup.reset();
    work();
}

} // namespace core
