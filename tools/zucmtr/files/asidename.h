// Names of recorder files while a program puts them away: ".NAME.zucmtr-XXXXXX", in the directory of the
// file. X is a letter or a digit; the files of one recording have the same six. "-done" at the end marks
// continuation files of a recording that is put away once its first file is gone.
#pragma once

#include <QString>

class AsideName
{
public:
    /// Takes apart a file name without directory.
    explicit AsideName(const QString& name);

    bool IsOne() const { return !original.isEmpty(); }
    const QString& Original() const { return original; } // the file's own name
    const QString& Token() const { return token; }       // the six letters and digits
    bool IsDone() const { return done; }

    /// Six random letters and digits.
    static QString NewToken();

    /// The path that the file at this path has while it is aside.
    static QString PathOf(const QString& path, const QString& token, bool done = false);

private:
    QString original;
    QString token;
    bool done = false;
};
