#include "zucmtr/host/host.h"

#include "text/error.h"
#include "text/texts.h"
#include "zucmtr/terminal/checks.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/console.h"

#include "explain/file.h"
#include "explain/library.h"
#include <zucmtrlib.h>

#include <QFile>

#include <algorithm>
#include <exception>
#include <new>
#include <stdexcept>

namespace {

// The note about a converted recording; the output name follows.
QString SuccessNote()
{
    return QStringLiteral("Преобразование в Comtrade выполнено успешно, файл ");
}

// The library does not check the results of its last renames. A temporary file that is still there shows that
// the record is not in place. Returns its path, or an empty text.
QString TemporaryLeft(const QString& outDirectory, const QString& outputName)
{
    for (const char* extension : {".cfftmp", ".cfgtmp", ".dattmp", ".hdrtmp", ".inftmp"}) {
        QString path = outDirectory + QLatin1Char('/') + outputName + QLatin1String(extension);
        if (QFile::exists(path))
            return path;
    }
    return QString();
}

void TakeOutputName(Outcome& outcome)
{
    if (outcome.notes.isEmpty() || !outcome.notes.last().startsWith(SuccessNote()))
        return;
    outcome.outputName = outcome.notes.takeLast().mid(SuccessNote().size());
}

void CheckCommitted(Outcome& outcome, const QString& outDirectory)
{
    const QString left = TemporaryLeft(outDirectory, outcome.outputName);
    if (left.isEmpty())
        return;
    outcome.converted = false;
    outcome.couldNotWrite = true;
    outcome.reason = reason::RecordNotInPlace;
    outcome.error = Tr("host", "the record could not be put in place, '%1' is left; free the final name and "
                               "the disk, then convert again")
                        .arg(left);
}

} // namespace

Host::Host(const QString& logPath) : log(logPath)
{
    if (!ZuCmtrConverterInit())
        throw std::runtime_error("the library did not start its converter");
}

Host::~Host()
{
    ZuCmtrConverterExit();
}

void Host::LoadDefaults(const QString& iniPath, const QString& section)
{
    CheckSection(QStringLiteral("--defaults"), iniPath, section);
    if (!ZuCmtrLoadFromIniDefault(iniPath, section))
        FailToLoad(Tr("host", "--defaults: section [%1] of '%2' does not load").arg(section, iniPath),
                   iniPath);
    log.TakeNewLines();
}

unsigned int Host::LoadDevice(const QString& iniPath, const QString& section)
{
    CheckSection(QStringLiteral("--device"), iniPath, section);
    unsigned int device = 0;
    if (!ZuCmtrLoadFromIni(iniPath, section, &device))
        FailToLoad(Tr("host", "--device: section [%1] of '%2' does not load").arg(section, iniPath), iniPath);
    log.TakeNewLines();
    return device;
}

void Host::FailToLoad(const QString& what, const QString& iniPath)
{
    QStringList lines(what);
    const QStringList logged = log.TakeNewLines();
    if (!logged.isEmpty())
        lines << Tr("host", "The log says:");
    for (const QString& line : logged)
        lines << QStringLiteral("  ") + line;
    lines << Tr("host", "'zucmtr check --ini %1' explains it line by line.").arg(ShellWord(iniPath));
    throw ConfigurationError(lines);
}

unsigned int Host::WaitTime(unsigned int device)
{
    return ZuCmtrGetDevWaitTime(device);
}

Outcome Host::Convert(const QString& file, const QString& outDirectory, unsigned int device)
{
    const std::shared_lock<std::shared_mutex> lock(converting);
    Outcome outcome;
    try {
        outcome.converted = ZuCmtrConvertToComtrade(file, outDirectory, device);
        if (!outcome.converted) {
            const QString text = ZuCmtrGetDevLastError(device);
            outcome.error = explain::NotLoaded(file, text);
            outcome.reason = reason::OfLibrary(text, reason::NotConverted);
            outcome.couldNotWrite = text.startsWith(QStringLiteral("Ошибка записи в "));
        }
    } catch (const std::out_of_range&) {
        outcome.reason = reason::ConverterException;
        outcome.error = Tr("host", "the start comment has too few values, or the segments have analog but no "
                                   "discrete channels; the library gives up such a recording");
    } catch (const std::bad_alloc&) {
        outcome.reason = reason::OutOfMemory;
        outcome.error = text::MemoryMessage();
    } catch (const std::exception& failure) {
        outcome.reason = reason::ConverterException;
        outcome.error = Tr("host", "exception in the library: %1").arg(text::MessageOf(failure));
    }
    outcome.notes = TakeNotes(device);
    outcome.lackedMemory = std::any_of(outcome.notes.begin(), outcome.notes.end(), [](const QString& note) {
        return qstrcmp(reason::OfLibrary(note, reason::NotConverted), reason::OutOfMemory) == 0;
    });
    if (outcome.converted) {
        TakeOutputName(outcome);
        CheckCommitted(outcome, outDirectory);
    }
    for (QString& note : outcome.notes)
        note = explain::LibraryText(note);
    return outcome;
}

QStringList Host::TakeNotes(unsigned int device)
{
    QStringList notes;
    while (ZuCmtrGetDevMsgCount(device) > 0)
        notes << ZuCmtrPopDevMessage(device);
    return notes;
}
