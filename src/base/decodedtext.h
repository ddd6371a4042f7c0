// Text files read in a given encoding.
#pragma once

#include <QString>

class QIODevice;
class QTextCodec;

namespace zu {

/// The text from where the device stands, in codec, or in the locale's encoding if it is null. A byte order
/// mark names the encoding instead and is left out, and so are a character that is cut off at the end and, if
/// the device is in text mode, all carriage returns.
QString DecodedText(QIODevice& device, QTextCodec* codec);

} // namespace zu
