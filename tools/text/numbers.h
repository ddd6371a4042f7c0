// Numbers as texts that are the same with Qt 5 and Qt 6: where Qt 6 takes an exponent because it is one
// character shorter, as in 7e-04 and 1e+05, these have 0.0007 and 100000, as with Qt 5.
#pragma once

#include <QJsonDocument>
#include <QString>

namespace text {

/// The shortest text that gives the value again.
QString ShortestNumber(double value);

/// The document, with such numbers.
QByteArray JsonText(const QJsonDocument& document,
                    QJsonDocument::JsonFormat format = QJsonDocument::Indented);

} // namespace text
