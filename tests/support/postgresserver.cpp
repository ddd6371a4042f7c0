#include "support/postgresserver.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <QUrl>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace {

constexpr int LongestStart = 60000; // ms

[[noreturn]] void Fail(const QString& reason)
{
    std::fprintf(stderr, "PostgreSQL: %s\n", qPrintable(reason));
    std::exit(2);
}

QString Programs()
{
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    for (const QString& version :
         versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed)) {
        const QString programs = versions.filePath(version + QStringLiteral("/bin"));
        if (QFileInfo::exists(programs + QStringLiteral("/initdb")))
            return programs;
    }
    Fail(QStringLiteral("no server is installed; run scripts/install-packages.sh test"));
}

// A server does not run as root.
QString ServerUser()
{
    return geteuid() == 0 ? QStringLiteral("postgres") : QString();
}

} // namespace

PostgresServer& PostgresServer::Own()
{
    static PostgresServer own;
    return own;
}

PostgresServer::PostgresServer() : user(ServerUser())
{
    if (!user.isEmpty()) {
        const passwd* account = getpwnam(qPrintable(user));
        if (account == nullptr ||
            chown(QFile::encodeName(directory.path()).constData(), account->pw_uid, account->pw_gid) != 0)
            Fail(QStringLiteral("no user 'postgres'"));
    }
    Run(Programs() + QStringLiteral("/initdb"), {"-D", directory.filePath("data"), "-U", "zucmtr", "-A",
                                                 "trust", "-E", "UTF8", "--locale=C.UTF-8", "-N"});
    Start();
}

PostgresServer::~PostgresServer()
{
    Stop();
}

// With this program's end, however it comes, the server ends too.
QStringList PostgresServer::Privileges() const
{
    QStringList command = {"setpriv", "--pdeathsig", "INT"};
    if (!user.isEmpty())
        command << "--reuid" << user << "--regid" << user << "--clear-groups";
    return command;
}

QString PostgresServer::Run(const QString& program, const QStringList& arguments,
                            const QByteArray& input) const
{
    const QStringList command = Privileges() + QStringList{program} + arguments;
    QProcess process;
    process.setWorkingDirectory(directory.path());
    process.start(command.first(), command.mid(1));
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(LongestStart) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        Fail(program + ": " + QString::fromUtf8(process.readAllStandardError()));
    return QString::fromUtf8(process.readAllStandardOutput());
}

void PostgresServer::Start()
{
    const QStringList command = Privileges() + QStringList{Programs() + "/postgres",
                                                           "-D",
                                                           directory.filePath("data"),
                                                           "-k",
                                                           directory.path(),
                                                           "-c",
                                                           "listen_addresses=",
                                                           "-c",
                                                           "fsync=off",
                                                           "-c",
                                                           "max_connections=40",
                                                           "-c",
                                                           "shared_buffers=16MB"};
    server.setStandardErrorFile(directory.filePath("log"));
    server.setWorkingDirectory(directory.path());
    server.start(command.first(), command.mid(1));
    QElapsedTimer timer;
    timer.start();
    while (QProcess::execute(Programs() + "/pg_isready", {"-q", "-h", directory.path()}) != 0) {
        if (timer.elapsed() > LongestStart || server.state() == QProcess::NotRunning) {
            QFile log(directory.filePath("log"));
            log.open(QIODevice::ReadOnly);
            Fail(QString::fromUtf8(log.readAll()));
        }
        QThread::msleep(20);
    }
}

void PostgresServer::Stop()
{
    kill(static_cast<pid_t>(server.processId()), SIGINT);
    server.waitForFinished(LongestStart);
}

QString PostgresServer::FreshDatabase(const QString& more)
{
    const QString name = QStringLiteral("test%1").arg(++databases);
    Psql(QStringLiteral("CREATE DATABASE %1 %2").arg(name, more));
    return AddressOf(name);
}

QString PostgresServer::FreshSchema()
{
    const QString name = QStringLiteral("test%1").arg(++databases);
    Psql(QStringLiteral("CREATE SCHEMA %1").arg(name));
    return AddressOf("postgres") + QStringLiteral("&options=-csearch_path%3D") + name;
}

QString PostgresServer::AddressOf(const QString& database, const QString& as) const
{
    return QStringLiteral("postgresql://%1@/%2?host=%3")
        .arg(as.isEmpty() ? "zucmtr" : as, database, directory.path());
}

QString PostgresServer::Psql(const QString& commands, const QString& database) const
{
    return Run(Programs() + "/psql",
               {"-X", "-q", "-A", "-t", "-v", "ON_ERROR_STOP=1", "-h", directory.path(), "-U", "zucmtr", "-d",
                database},
               commands.toUtf8())
        .trimmed();
}

void PostgresServer::Disconnect() const
{
    Psql("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE pid <> pg_backend_pid() AND "
         "backend_type = "
         "'client backend'");
}
