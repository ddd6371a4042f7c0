#include "writers/textlines.h"

#include <QFile>

zu::TextLines::~TextLines()
{
    // Deliberate: a failed write is not noticed; the conversion goes on.
    file.write(text.Data(), text.Size());
}
