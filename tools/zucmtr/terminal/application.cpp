#include "zucmtr/terminal/application.h"

#include "output/temporarydirectory.h"
#include "picture/module.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

// Closes standard error to others while it lives: the font library writes things there that no user of this
// program can do anything about, such as a missing directory for its cache.
class NoStandardError
{
public:
    NoStandardError() : saved(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1))
    {
        const int nothing = open("/", O_PATH | O_CLOEXEC); // takes no writing
        if (saved >= 0 && nothing >= 0)
            dup2(nothing, STDERR_FILENO);
        if (nothing >= 0)
            close(nothing);
    }
    ~NoStandardError()
    {
        std::clearerr(stderr);
        if (saved < 0)
            return;
        dup2(saved, STDERR_FILENO);
        close(saved);
    }
    NoStandardError(const NoStandardError&) = delete;
    NoStandardError& operator=(const NoStandardError&) = delete;

private:
    const int saved;
};

// While the application object is made, Qt searches for files of a session, and makes a directory for them if
// there is no session, as for root or a service. The directory is removed again.
class OwnSession
{
public:
    OwnSession()
        : directory(QDir::tempPath()), before(qgetenv(variable)), wasSet(qEnvironmentVariableIsSet(variable))
    {
        qputenv(variable, QFile::encodeName(directory.Path()));
    }
    ~OwnSession()
    {
        if (wasSet)
            qputenv(variable, before);
        else
            qunsetenv(variable);
    }
    OwnSession(const OwnSession&) = delete;
    OwnSession& operator=(const OwnSession&) = delete;

private:
    static constexpr const char* variable = "XDG_RUNTIME_DIR";
    const output::TemporaryDirectory directory;
    const QByteArray before;
    const bool wasSet;
};

// What can paint, with its fonts found while nothing else has to be reported.
std::unique_ptr<QCoreApplication> MakePainter(const picture::Module& module, int& count, char** arguments)
{
    // This platform has no screen, no input methods and no services of a desktop. A theme would have the
    // desktop's libraries look for a display.
    qputenv("QT_QPA_PLATFORM", "minimal:enable_fonts");
    for (const char* variable : {"QT_QPA_PLATFORMTHEME", "QT_QPA_GENERIC_PLUGINS"})
        qunsetenv(variable);
    std::unique_ptr<QCoreApplication> application;
    {
        const OwnSession session;
        application = module.MakeApplication(count, arguments);
    }
    const NoStandardError quiet;
    module.FindFonts();
    return application;
}

} // namespace

std::unique_ptr<QCoreApplication> MakeApplication(char** arguments, bool paints)
{
    static int count = 1; // Qt would remove its own options from the command line
    if (paints) {
        try {
            return MakePainter(picture::Loaded(), count, arguments);
        } catch (const picture::ModuleError&) {
            // It is reported, in the user's language, when the picture is to be drawn.
        }
    }
    return std::make_unique<QCoreApplication>(count, arguments);
}
