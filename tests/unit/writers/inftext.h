// INF files as tests write and read them.
#pragma once

#include "support/dictionarysection.h"

#include <QFile>
#include <QTextCodec>

/// The lines of an INF file as text, each with its carriage return and line feed.
QString InfText(const QStringList& lines);

/// What write(file) puts into an empty file opened as the INF file is, decoded as CP1251 and split at CR LF.
/// A text that does not end in CR LF has its rest as the last item, else the last item is empty.
template <class Write>
QStringList LinesOf(const Write& write)
{
    const TestDirectory directory;
    QFile file(directory.Path(QStringLiteral("inf")));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write a test file");
    write(file);
    file.close();
    return ZuCmtrConverter::codec_CP1251->toUnicode(ReadBytes(file.fileName())).split(QStringLiteral("\r\n"));
}

/// The lines of WriteInf for a dictionary and a recording, from the first section whose head starts with "["
/// + section; none without such a section.
QStringList InfFrom(const QString& section, SortedDictionary& dictionary, ZuFileFormat& file);
