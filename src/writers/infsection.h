// A section of the INF file.
#pragma once

#include "base/encodedtext.h"

#include <QString>

class QFile;
class ResorterZuCmtrConv;

namespace zu {

/// The lines of one section, which go to the file together.
class InfSection
{
public:
    /// A failed write sets err_.
    InfSection(const ResorterZuCmtrConv& resorter, QFile& file_, bool& err_);

    /// Adds text as it stands.
    void Raw(const char* lines) { text.AddBytes(lines); }

    /// Adds "[name]" or "[nameN]".
    void Head(const char* name);
    void Head(const char* name, size_t number);

    /// Adds key (with its equals sign), value and line end. Value may be any text; the line ends with its
    /// first NUL, without a line end.
    void Key(const char* key, QStringView value);
    void Key(const char* key, size_t value);

    /// Writes what has been added. If that fails, logs the error of the file, sets err and throws
    /// std::runtime_error.
    void Write();

private:
    EncodedText text;
    QFile& file;
    bool& err;
};

} // namespace zu
