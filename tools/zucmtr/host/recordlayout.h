// Where records go below the directory of --out and what they are called, if the command line decides it.
#pragma once

#include <QString>
#include <QStringList>

namespace verify {
struct RecordHead;
}

/// A place below a directory.
struct RecordPlace
{
    QString below; ///< directory, without slashes at the ends; may be empty
    QString name;  ///< of the record's files, without extension; empty: not known
};

/// A pattern such as "{station}/{year}/{name}": each part between slashes but the last is a directory.
class RecordLayout
{
public:
    /// The library's own names, in the directory itself.
    RecordLayout() = default;

    /// Throws ConfigurationError for a pattern that is none.
    explicit RecordLayout(const QString& pattern);

    bool IsGiven() const { return !parts.isEmpty(); }

    /// The place of a recording's record. file is its first file, folder its directory below the one that the
    /// command line names. Characters that file names cannot have become "_".
    RecordPlace PlaceOf(const verify::RecordHead& head, const QString& file, const QString& folder) const;

private:
    QStringList parts;
};
