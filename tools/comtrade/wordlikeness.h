// Which of the old encodings a text is in, by what its words look like.
#pragma once

#include <QByteArray>
#include <QString>

namespace comtrade {

/// CP1251, CP866, KOI8-R, GBK or Latin-1: the one in which the words of the bytes look most like those of
/// records. `detected`, one of them or empty, is what a detector takes the text for; it is good at long
/// texts, and names are short.
QString MostLikely(const QByteArray& bytes, const QString& detected);

} // namespace comtrade
