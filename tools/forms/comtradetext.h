// The CFG text of a record, and what a COMTRADE form cannot hold.
#pragma once

#include "comtrade/record.h"
#include "text/error.h"

#include <QByteArray>
#include <QString>

namespace forms {

/// Something that the form asked for cannot hold. The message names it and a form that can.
class FormError : public text::Error
{
public:
    using text::Error::Error;
};

/// The shortest text that is read as the same number again: "0.1", "-3", "1e-07".
QString NumberText(double number);

/// The lines of a CFG file, with its line ends ("\r\n").
QString ConfigurationText(const comtrade::Configuration& configuration);

/// The text in that encoding. Throws FormError with `what` and the letter if the encoding lacks one.
QByteArray Encoded(const QString& text, const QByteArray& encoding, const QString& what);

/// Throws FormError for texts that are longer than the revision allows or would break their line.
void CheckTexts(const comtrade::Configuration& configuration);

} // namespace forms
