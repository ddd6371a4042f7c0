#include "base/codecs.h"

#include <QTextCodec>

QTextCodec* zu::CodecCP1251 = QTextCodec::codecForName("CP1251");
QTextCodec* zu::CodecUtf8 = QTextCodec::codecForName("UTF8");
QTextCodec* zu::CodecIni = zu::CodecUtf8;
QTextCodec* zu::CodecCP866 = QTextCodec::codecForName("CP866");
