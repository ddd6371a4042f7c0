// Files and folders for tests.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <ostream>

/// A fresh directory, removed with the object.
class TestDirectory
{
public:
    /// Path of name inside the directory; the directory itself for an empty name.
    QString Path(const QString& name = QString()) const;

    /// Writes a file of these bytes and returns its path. A failure ends the test program.
    QString Write(const QString& name, const QByteArray& bytes) const;

    /// Makes a subdirectory and returns its path.
    QString MakeDirectory(const QString& name) const;

    /// Names of the files in a subdirectory (the directory itself for an empty name), sorted.
    QStringList Names(const QString& subdirectory = QString()) const;

private:
    QTemporaryDir directory;
};

/// The bytes of a file; a failure ends the test program.
QByteArray ReadBytes(const QString& path);

/// A text file's lines without their line feeds, decoded as UTF-8.
QStringList ReadLines(const QString& path);

// How GoogleTest prints Qt's texts.
std::ostream& operator<<(std::ostream& out, const QString& text);
void PrintTo(const QString& text, std::ostream* out);
void PrintTo(const QStringList& texts, std::ostream* out);
