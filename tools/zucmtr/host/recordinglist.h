// The files and directories of a command line as recordings. Shell patterns also match continuation files
// (rec.Z01 ... rec.Z0f), which the library takes by itself when it converts their first file (rec.ZU).
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// The absolute path, in one spelling for each way to write it; links stay.
QString Normalised(const QString& path);

/// Why a continuation file is not converted by itself, and what to give instead.
QString ContinuationText(const QString& path);

/// A first file to convert.
struct Recording
{
    QString path;
    QString top;   // the directory given on the command line; empty if the recording itself was given
    QString below; // its directory relative to top, without slashes at the ends; may be empty
};

/// An argument, or a path below it, from which nothing is converted.
struct Refusal
{
    QString path;
    QString text;       // why, and what to do
    bool failed;        // false: no recording is lost by it
    const char* reason; // if failed: a word of reasons.h
};

struct RecordingList
{
    std::vector<Recording> recordings; // each once, in the order of the arguments, within a directory by path
    std::vector<Refusal> refusals;
    QStringList directories; // that were searched, absolute
};

/// Checks every argument. Names that cannot be a recorder file's stay in the list, for the library to refuse.
/// From a directory the first files are taken, with `recursive` also those below it, but never anything in
/// one of the `excluded` directories. Directories that cannot be read and names that are not valid text are
/// refused.
RecordingList CollectRecordings(const QStringList& arguments, bool recursive, const QStringList& excluded);
