#include "zucmtr/commands/catalogueoptions.h"

#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

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
