#include "zucmtr/watch/watchtrouble.h"

#include "explain/system.h"
#include "text/texts.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/watch/servicemanager.h"
#include "zucmtr/watch/watchevents.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds ShortestPause{10};
constexpr std::chrono::milliseconds LongestPause{60000};

double Seconds(WatchTrouble::Clock::duration time)
{
    return std::chrono::duration<double>(time).count();
}

} // namespace

WatchTrouble::WatchTrouble(std::chrono::milliseconds firstPause_)
    : firstPause(std::max(firstPause_, ShortestPause)), pause(firstPause)
{}

void WatchTrouble::Meet(const char* word_, const QString& text_, Cure cure_, const QString& file)
{
    const bool isKnown = on && word == QLatin1String(word_);
    if (!on) {
        begin = Clock::now();
        since = QDateTime::currentDateTime();
        pause = firstPause;
    } else {
        pause = std::min(pause * 2, std::max(LongestPause, firstPause));
    }
    on = true;
    cure = cure_;
    word = QLatin1String(word_);
    text = text_;
    next = Clock::now() + pause;
    if (isKnown)
        return;
    QJsonObject event{{"reason", word}, {"text", text}, {"retrySeconds", Seconds(pause)}};
    if (!file.isEmpty())
        event["file"] = file;
    watchevents::Emit("trouble", event);
    Complain(text);
    servicemanager::SetStatus(text);
}

void WatchTrouble::Checked()
{
    if (on && cure == Cure::Check)
        End();
}

void WatchTrouble::Worked()
{
    if (on)
        End();
}

void WatchTrouble::NobodyWaits()
{
    if (on && cure == Cure::Work)
        End();
}

void WatchTrouble::End()
{
    on = false;
    watchevents::Emit("recovered", {{"reason", word}, {"seconds", Seconds(Clock::now() - begin)}});
}

void CheckPlace(const char* word, const QString& option, const QString& directory)
{
    const QByteArray path = QFile::encodeName(directory);
    struct stat status = {};
    int error = stat(path.constData(), &status) == 0 ? 0 : errno;
    if (error == 0 && !S_ISDIR(status.st_mode))
        error = ENOTDIR;
    if (error == 0 && access(path.constData(), W_OK | X_OK) != 0)
        error = errno;
    if (error != 0)
        throw WatchPlaceError(
            word, Tr("watch", "%1: '%2' cannot be written to: %3; the work goes on once that is put right")
                      .arg(option, directory, explain::SystemText(error)));
}
