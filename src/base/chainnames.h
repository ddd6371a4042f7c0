// Names of the files of one recording: rec.ZU continues in rec.Z01 to rec.Z09 and rec.Z0a to rec.Z0f, rec.zu
// in rec.z01 and so on. A header alone, so that programs may use it without the library's classes.
#pragma once

#include <QStringList>

#include <iterator>

namespace zu {

/// Ends of the continuation files' names, in the order of the chain.
inline constexpr char ChainExtensions[15][3] = {"01", "02", "03", "04", "05", "06", "07", "08",
                                                "09", "0a", "0b", "0c", "0d", "0e", "0f"};

/// How many continuations a recording can have.
inline constexpr int MostContinuations = static_cast<int>(std::size(ChainExtensions));

/// Whether name, with or without a directory, is that of a first file.
inline bool IsFirstFileName(const QString& name)
{
    return name.endsWith(QLatin1String(".ZU")) || name.endsWith(QLatin1String(".zu"));
}

/// The name of file number 0 to MostContinuations of the chain of firstFile; 0 is firstFile itself.
inline QString ContinuationName(const QString& firstFile, int number)
{
    return number == 0 ? firstFile : firstFile.chopped(1) + QLatin1String(ChainExtensions[number - 1]);
}

/// The first file to which a continuation of this name belongs; empty if it is no continuation's name.
inline QString FirstFileOf(const QString& name)
{
    const QString stem = name.left(name.size() - 2);
    QString first = stem + QLatin1Char(stem.endsWith(QLatin1Char('Z')) ? 'U' : 'u');
    for (int number = 1; IsFirstFileName(first) && number <= MostContinuations; ++number) {
        if (ContinuationName(first, number) == name)
            return first;
    }
    return QString();
}

/// Whether name is one of a recorder's files.
inline bool IsRecorderFile(const QString& name)
{
    return IsFirstFileName(name) || !FirstFileOf(name).isEmpty();
}

/// What finds the first files of a directory, with regard to case.
inline QStringList FirstFilePatterns()
{
    return {QStringLiteral("*.ZU"), QStringLiteral("*.zu")};
}

} // namespace zu
