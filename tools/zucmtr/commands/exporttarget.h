// Where an export goes: files that appear whole or not at all.
#pragma once

#include "forms/requestwords.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

/// The names that an export of a file has.
struct ExportTarget
{
    QString file; ///< that is exported
    QString directory;
    QString base;   ///< of the names, without the ending
    QString stream; ///< in place of both: standard output, a device or a pipe, as --out names it

    /// The path of the file that stands for the whole, or the stream.
    QString Path(forms::Form form) const;
};

/// The targets of the files. out: the path of --out, empty if it is not given: then each goes beside its
/// file. names: for texts. Throws ConfigurationError for targets that are the file itself or that of another,
/// or that cannot be written, forms::WordError for several files to one stream.
std::vector<ExportTarget> TargetsOf(const QStringList& files, const QString& out, forms::Form form,
                                    const forms::OptionNames& names);

/// The files that a record or file of this name replaces, so far as they are there.
QStringList PresentFiles(const ExportTarget& target, forms::Form form);
