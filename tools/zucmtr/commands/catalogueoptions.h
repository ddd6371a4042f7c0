// The option that names the catalogue of an archive.
#pragma once

#include <QString>

#include <string>

namespace CLI {
class App;
}

/// Adds --catalogue to a subcommand; address must live as long as it.
void AddCatalogueOption(CLI::App& command, std::string& address);

/// The file of the catalogue of a directory.
QString CatalogueIn(const QString& directory);

/// The address that the option gives or, without it, the catalogue of the directory.
QString CatalogueOf(const std::string& address, const QString& directory);
