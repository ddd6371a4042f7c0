#include "scene.h"

#include "zucmtr/files/archivecopies.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <sys/wait.h>
#include <unistd.h>

const std::vector<Way>& Ways()
{
    static const std::vector<Way> ways = {
        {"removal", false, {}},
        {"removal without renameat2", false, {{"renameat2", EINVAL}}},
        {"removal without renameat2 and links", false, {{"renameat2", EINVAL}, {"link", EPERM}}},
        {"archive", true, {}},
        {"archive on another file system", true, {{"linkat", EXDEV}}},
        {"archive on another file system without renameat2",
         true,
         {{"linkat", EXDEV}, {"renameat2", EINVAL}}},
        {"archive without links", true, {{"linkat", EPERM}}},
    };
    return ways;
}

void PrintTo(const Way& way, std::ostream* out)
{
    *out << way.name;
}

QString TextOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const text::Error& error) {
        return error.Message();
    }
    return QString();
}

Scene::Scene(int continuations) : names(QStringLiteral("a.ZU"))
{
    for (int number = 1; number <= continuations; ++number)
        names << QStringLiteral("a.Z0%1").arg(number);
    for (const QString& name : names)
        directory.Write("in/" + name, Content(name));
    directory.MakeDirectory("done");
}

QByteArray Scene::Content(const QString& name)
{
    return "content of " + name.toUtf8() + QByteArray(5000, 'x'); // more than a word, no whole number of them
}

void Scene::PutAway(const Way& way, const calls::Hook& hook) const
{
    const ChainFiles chain(Source("a.ZU"));
    const calls::Watch watch([&](const calls::Call& call) {
        for (const auto& unknown : way.unknown) {
            if (call.name == unknown.first)
                return unknown.second;
        }
        return hook ? hook(call) : 0;
    });
    if (way.archive)
        sourcefiles::Archive(chain, directory.Path("done"));
    else
        sourcefiles::Remove(chain);
}

QString Scene::TextOfPutAway(const Way& way, const calls::Hook& hook) const
{
    return TextOf([&] { PutAway(way, hook); });
}

bool Scene::PutAwayAndKill(const Way& way, long nth) const
{
    constexpr int killed = 3;
    const pid_t child = fork();
    if (child == 0) {
        long count = 0;
        const QString text = TextOfPutAway(way, [&](const calls::Call& call) {
            if (call.Writes() && ++count == nth)
                _exit(killed);
            return 0;
        });
        _exit(text.isEmpty() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && (WEXITSTATUS(status) == 0 || WEXITSTATUS(status) == killed));
    return WEXITSTATUS(status) == killed;
}

sourcefiles::Recovered Scene::Recover() const
{
    sourcefiles::RemoveParts(directory.Path("done"));
    return sourcefiles::Recover(directory.Path("in"));
}

bool Scene::IsComplete(const QString& folder) const
{
    QStringList sorted = names;
    sorted.sort();
    if (directory.Names(folder) != sorted)
        return false;
    for (const QString& name : names) {
        if (ReadBytes(directory.Path(folder + '/' + name)) != Content(name))
            return false;
    }
    return true;
}

bool Scene::IsPutAway(const Way& way) const
{
    return Sources().isEmpty() && (way.archive ? IsComplete("done") : Archived().isEmpty());
}
