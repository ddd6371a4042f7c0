// The option that names the catalogue of an archive.
#pragma once

#include <QString>

#include <functional>
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

/// That of a catalogue to be read: the one that the option gives, or that of the directory (empty: the
/// current one) or of the nearest one above it. Throws ConfigurationError if there is no such directory or
/// catalogue.
QString CatalogueToRead(const std::string& address, const std::string& directory);

/// Does the work of a command on a catalogue and returns its exit code; if the catalogue fails, that is
/// reported and the exit code is ExitFailed.
int WithCatalogue(const std::function<int()>& work);
