// The encodings of recorder files, ini files and records.
#pragma once

#include <QTextCodec>

namespace zu {

inline QTextCodec* CodecCP1251 = QTextCodec::codecForName("CP1251");
inline QTextCodec* CodecUtf8 = QTextCodec::codecForName("UTF8");
inline QTextCodec* CodecIni = CodecUtf8;
inline QTextCodec* CodecCP866 = QTextCodec::codecForName("CP866");

} // namespace zu
