#include "zucmtr/terminal/messages.h"

#include "text/error.h"
#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/console.h"

#include <QStringList>
#include <QtGlobal>

#include <exception>
#include <mutex>

namespace messages {

namespace {

constexpr int MostKept = 20; // until there is a log

struct Store
{
    std::mutex mutex;
    std::function<void(const QString&)> log;
    QStringList kept;
};

Store& TheStore()
{
    static Store store;
    return store;
}

[[noreturn]] void End(const QString& text, int code)
{
    Complain(Tr("main", "stopped by an unexpected error: %1").arg(text));
    std::_Exit(code);
}

[[noreturn]] void EndByException()
{
    try {
        if (std::current_exception() != nullptr)
            std::rethrow_exception(std::current_exception());
    } catch (const std::exception& error) {
        End(text::MessageOf(error), ExitFailed);
    } catch (...) { // of a type without a text
    }
    End(QStringLiteral("std::terminate"), ExitFailed);
}

void Note(const QString& text)
{
    thread_local bool isNoting = false; // writing the log may itself cause a message of Qt
    if (isNoting)
        return;
    isNoting = true;
    Store& store = TheStore();
    const std::lock_guard<std::mutex> lock(store.mutex);
    if (store.log)
        store.log(text);
    else if (store.kept.size() < MostKept)
        store.kept << text;
    isNoting = false;
}

// Qt 6 warns of a locale that is not UTF-8, and takes its names for UTF-8 all the same, as this program does
// with Qt 5.
bool IsOfLocale(const QString& text)
{
    return text.contains(QLatin1String("Qt depends on a UTF-8 locale"));
}

void Handle(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    static const bool fails = qgetenv("ZUCMTR_QT_MESSAGES") == "fail";
    if (type == QtFatalMsg)
        End(text, ExitFailed);
    if (IsOfLocale(text))
        return;
    if (fails && type != QtDebugMsg && type != QtInfoMsg)
        End(text, ExitUnexpected);
    Note(text);
}

} // namespace

void Take()
{
    std::set_terminate(EndByException);
    qInstallMessageHandler(Handle);
}

void GoTo(std::function<void(const QString&)> log)
{
    Store& store = TheStore();
    const std::lock_guard<std::mutex> lock(store.mutex);
    store.log = std::move(log);
    for (const QString& text : qAsConst(store.kept))
        if (store.log)
            store.log(text);
    if (store.log)
        store.kept.clear();
}

} // namespace messages
