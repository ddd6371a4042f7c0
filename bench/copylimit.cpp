#include "copylimit.h"

#include "plaincopy.h"

#include <QFile>

#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

void bench::ReadThrough(const QStringList& files)
{
    for (const QString& file : files) {
        if (PlainRead(QFile::encodeName(file).constData()) != 0)
            throw std::runtime_error("cannot read " + file.toStdString());
    }
}

void bench::CopyWithCp(const QStringList& files, const QString& directory)
{
    std::vector<QByteArray> words = {"cp", "--"};
    for (const QString& file : files)
        words.push_back(QFile::encodeName(file));
    words.push_back(QFile::encodeName(directory));
    std::vector<char*> arguments;
    for (QByteArray& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    pid_t child = 0;
    int status = 0;
    if (posix_spawnp(&child, "cp", nullptr, nullptr, arguments.data(), environ) != 0 ||
        waitpid(child, &status, 0) != child || status != 0)
        throw std::runtime_error("cp into " + directory.toStdString() + " failed");
}
