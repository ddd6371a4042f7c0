// Names of recorder files while a program puts them away: ".NAME.zucmtr-XXXXXX", in the directory of the
// file. X is a letter or a digit; the files of one recording have the same six. "-done" at the end marks
// continuation files of a recording that is put away once its first file is gone.
#pragma once

#include <QString>

class AsideName
{
public:
    /// Takes a file's name, without directory, apart.
    explicit AsideName(const QString& name);

    bool IsOne() const { return !original.isEmpty(); }
    const QString& Original() const { return original; } // the file's own name
    const QString& Token() const { return token; }       // the six
    bool IsDone() const { return done; }

    /// Six letters and digits by chance.
    static QString NewToken();

    /// The path under which the file of this path is put aside.
    static QString PathOf(const QString& path, const QString& token, bool done = false);

private:
    QString original;
    QString token;
    bool done = false;
};
