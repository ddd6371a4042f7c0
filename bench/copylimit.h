// The limit of a whole conversion: one pass of reading its inputs and `cp` of its outputs.
#pragma once

#include <QStringList>

namespace bench {

/// Reads the files from end to end. Throws std::runtime_error for a file that cannot be read.
void ReadThrough(const QStringList& files);

/// Runs the program cp with the files and an existing directory. Throws std::runtime_error if it fails.
void CopyWithCp(const QStringList& files, const QString& directory);

} // namespace bench
