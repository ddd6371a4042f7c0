#include "archivepage/jsontext.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>

namespace archivepage {

QByteArray JsonText(const QString& text)
{
    QByteArray json = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    json = json.mid(1, json.size() - 2);
    json.replace("<", "\\u003c");
    json.replace("\xe2\x80\xa8", "\\u2028"); // the separators of lines and paragraphs
    json.replace("\xe2\x80\xa9", "\\u2029");
    return json;
}

QByteArray JsonNumber(const std::optional<double>& number, int digits)
{
    return number && std::isfinite(*number) ? QByteArray::number(*number, 'g', digits) : QByteArray("null");
}

} // namespace archivepage
