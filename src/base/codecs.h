// The encodings of recorder files, ini files and records.
#pragma once

class QTextCodec;

namespace zu {

extern QTextCodec* CodecCP1251;
extern QTextCodec* CodecUtf8;
extern QTextCodec* CodecIni; // CodecUtf8
extern QTextCodec* CodecCP866;

} // namespace zu
