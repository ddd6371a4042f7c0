#include "zucmtr/commands/catalogueoptions.h"

#include "sql/address.h"
#include "sql/permission.h"
#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QDir>
#include <QFileInfo>

namespace {

// Whether there is such a file, or may be one that this user cannot see: whoever opens it says who can help.
bool MayBeThere(const QString& file)
{
    return QFileInfo::exists(file) || !sql::MissingPermission(file, false).isEmpty();
}

// The file of the catalogue of the directory or of the nearest one above it.
QString CatalogueAbove(const QString& directory)
{
    QDir place(QFileInfo(directory).absoluteFilePath());
    do {
        const QString file = CatalogueIn(place.path());
        if (MayBeThere(file))
            return file;
    } while (place.cdUp());
    throw ConfigurationError(Tr("archive", "there is no catalogue (zucmtr-archive.db) in '%1' or above; make "
                                           "one with: zucmtr archive update %2")
                                 .arg(directory, ShellWord(directory)));
}

} // namespace

void AddCatalogueOption(CLI::App& command, std::string& address)
{
    AddValue(command, "--catalogue", address, "ADDRESS",
             HelpText("archive", "The catalogue: a file, or postgresql://user@host/database. Default: "
                                 "zucmtr-archive.db in the (first) directory"));
}

QString CatalogueIn(const QString& directory)
{
    return directory + QStringLiteral("/zucmtr-archive.db");
}

QString CatalogueOf(const std::string& address, const QString& directory)
{
    return address.empty() ? CatalogueIn(directory) : FromUtf8(address);
}

QString CatalogueToRead(const std::string& address, const std::string& directory)
{
    const QString place = directory.empty() ? QStringLiteral(".") : FromUtf8(directory);
    if (!QFileInfo(place).isDir() && !MayBeThere(CatalogueIn(place)))
        throw ConfigurationError(Tr("archive", "'%1' is no directory").arg(place));
    const QString given = FromUtf8(address);
    if (!address.empty() && !sql::IsServer(given) && !MayBeThere(given))
        throw ConfigurationError(Tr("archive", "--catalogue: there is no file '%1'").arg(given));
    return address.empty() ? CatalogueAbove(place) : given;
}

int WithCatalogue(const std::function<int()>& work)
{
    try {
        return work();
    } catch (const ConfigurationError&) {
        throw;
    } catch (const text::Error& error) {
        Complain(error.Message());
        return ExitFailed;
    }
}
