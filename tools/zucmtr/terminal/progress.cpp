#include "zucmtr/terminal/progress.h"

#include "text/texts.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr int BarWidth = 24;
constexpr std::chrono::milliseconds Pause{100};
constexpr double ShortestTold = 0.05; // s, of which there is a rate

int Columns()
{
    winsize size = {};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

// Whether standard error is a terminal that knows how to clear a line.
bool CanRewriteLines()
{
    const QByteArray terminal = qgetenv("TERM");
    return isatty(STDERR_FILENO) != 0 && !terminal.isEmpty() && terminal != "dumb";
}

QString Bar(size_t done, size_t total)
{
    const int full = total == 0 ? BarWidth : static_cast<int>(done * BarWidth / total);
    return QLatin1Char('[') + QString(full, QLatin1Char('#')) + QString(BarWidth - full, QLatin1Char('.')) +
           QLatin1Char(']');
}

} // namespace

QString DurationText(double seconds)
{
    const auto whole = std::llround(seconds);
    if (whole < 3600)
        return QString::asprintf("%lld:%02lld", whole / 60, whole % 60);
    return QString::asprintf("%lld:%02lld:%02lld", whole / 3600, whole / 60 % 60, whole % 60);
}

QString ProgressText(size_t done, size_t total, double seconds, int columns)
{
    QString text = Bar(done, total) + QString::asprintf(" %zu/%zu", done, total);
    if (done > 0 && seconds >= ShortestTold) {
        const double rate = static_cast<double>(done) / seconds;
        text += QLatin1String("  ") + Tr("progress", "%1 a second, %2 left")
                                          .arg(rate, 0, 'f', rate < 10 ? 1 : 0)
                                          .arg(DurationText(static_cast<double>(total - done) / rate));
    }
    return text.left(std::max(columns - 1, 0));
}

Progress::Progress(size_t total_, bool wanted) : total(total_), shows(wanted && CanRewriteLines()) {}

Progress::~Progress()
{
    Hide();
}

void Progress::Show(size_t done)
{
    if (!shows)
        return;
    const Clock::time_point now = Clock::now();
    if (visible && now < next)
        return;
    next = now + Pause;
    const double seconds = std::chrono::duration<double>(now - start).count();
    const QByteArray text = ProgressText(done, total, seconds, Columns()).toUtf8();
    std::fprintf(stderr, "\r\033[K%s", text.constData());
    std::fflush(stderr);
    visible = true;
}

void Progress::Hide()
{
    if (!visible)
        return;
    std::fputs("\r\033[K", stderr);
    std::fflush(stderr);
    visible = false;
}
