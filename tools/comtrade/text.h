// Texts of COMTRADE files.
#pragma once

#include <QByteArray>
#include <QString>

namespace comtrade {

/// The text of bytes that are UTF-8 or, where they are not, Windows-1251. Every byte sequence has a text.
QString DecodedText(const QByteArray& bytes);

} // namespace comtrade
