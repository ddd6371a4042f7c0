// The files and directories of a command line as recordings. Shell patterns hand in continuation files
// (rec.Z01
// ... rec.Z0f) too, which the library takes by itself when it converts their first file (rec.ZU).
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// Why a continuation file is not taken alone, and what to give instead.
QString ContinuationText(const QString& path);

/// A first file to convert.
struct Recording
{
    QString path;
    QString top;   // the directory of the command line in which it was found; empty if it was named itself
    QString below; // its own directory below top, without slashes at the ends; may be empty
};

/// An argument, or something below it, of which nothing is converted.
struct Refusal
{
    QString path;
    QString text;       // why, and what to do
    bool failed;        // false: nothing is lost by it
    const char* reason; // of a failed one, one of reasons.h
};

struct RecordingList
{
    std::vector<Recording> recordings; // each once, in the order of the arguments, within a directory by path
    std::vector<Refusal> refusals;
    QStringList directories; // that were looked into, absolute
};

/// Looks at every argument. Names that are no recorder file's stay in the list, for the library to refuse. In
/// a directory the first files are taken, with `recursive` also those below it, but never what lies in one of
/// the `excluded` directories. Directories that cannot be read and names that no program text can hold are
/// refused.
RecordingList CollectRecordings(const QStringList& arguments, bool recursive, const QStringList& excluded);
