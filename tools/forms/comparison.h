// What differs between a record that was to be written and the one that was read back.
#pragma once

#include "forms/comtradewriter.h"
#include "forms/stream.h"

namespace forms {

/// The parts of a record beside its data.
struct RecordTexts
{
    const comtrade::Configuration& config;
    Texts texts;
};

/// Throws Different if the configurations or texts differ. Those of a container end with the end of a line.
void CompareTexts(const RecordTexts& written, const RecordTexts& read, bool isContainer);

/// The first difference of two streams, for people.
QString DifferenceOf(Stream& written, Stream& read);

} // namespace forms
