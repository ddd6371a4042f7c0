// A COMTRADE record to work on, whatever the user has: the record itself, or a recording that is converted
// into a temporary directory. The recording stays as it is, even if its ini file says that sources are
// deleted.
#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>
#include <stdexcept>

/// A recording that does not convert; what() is UTF-8.
class SourceError : public std::runtime_error
{
public:
    explicit SourceError(const QString& text) : std::runtime_error(text.toStdString()) {}
};

class RecordSource
{
public:
    /// The ini file and its sections; without one, a plain conversion.
    struct Settings
    {
        QString ini;
        QString defaults;
        QString device;
    };

    /// Throws SourceError, or ConfigurationError if the settings do not load.
    RecordSource(const QString& file, const Settings& settings);

    /// The record's .cfg or .cff, as long as this object lives.
    const QString& Path() const { return path; }

private:
    void Convert(const QString& file, const Settings& settings);

    std::unique_ptr<QTemporaryDir> directory;
    QString path;
};
