#include "child.h"

#include <QByteArray>

#include <sys/wait.h>
#include <unistd.h>
#include <vector>

Child::Child(const QString& directory, const QStringList& arguments, int output, int error)
{
    std::vector<QByteArray> bytes = {ZUCMTR_PROGRAM};
    for (const QString& argument : arguments)
        bytes.push_back(argument.toUtf8());
    std::vector<char*> pointers;
    for (QByteArray& argument : bytes)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const QByteArray place = directory.toUtf8();
    process = fork();
    if (process == 0) {
        dup2(output, STDOUT_FILENO);
        dup2(error, STDERR_FILENO);
        if (chdir(place.constData()) == 0)
            execv(pointers[0], pointers.data());
        _exit(127);
    }
}

Child::~Child()
{
    if (!ended) {
        kill(process, SIGKILL);
        waitpid(process, &status, 0);
    }
}

bool Child::HasEnded()
{
    ended = ended || waitpid(process, &status, WNOHANG) == process;
    return ended;
}

int Child::Code() const
{
    return ended && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
