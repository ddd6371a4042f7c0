// In which form data are stored, where it is not the one that the configuration says.
#pragma once

#include "comtrade/record.h"

class QFile;

namespace comtrade {

struct StoredForm
{
    DataType type = DataType::Ascii;
    int bytesOfACharacter = 1; ///< of ASCII data; 2: UTF-16
    int lowByte = 0;           ///< of two, the one with the character
};

/// The form of the data, from offset on and length bytes long. It is that of the configuration unless exactly
/// one other fits size, number of samples and content: that is added to the findings, each without place.
/// Throws Error if no form fits.
StoredForm FormOf(QFile& file, qint64 offset, qint64 length, const Configuration& configuration,
                  Findings& forgiven);

} // namespace comtrade
