#include "archivepage/columns.h"

#include "archivepage/jsontext.h"

#include <algorithm>

namespace archivepage {

QByteArray Column::Json() const
{
    const bool isOne =
        !values.empty() && std::all_of(values.begin(), values.end(),
                                       [this](const QByteArray& value) { return value == values.front(); });
    if (isOne)
        return values.front();
    QByteArray json = "[";
    for (const QByteArray& value : values) {
        if (json.size() > 1)
            json += ',';
        json += value;
    }
    return json + "]";
}

void Rising::Add(qint64 value)
{
    if (isEmpty)
        first = last = value;
    isEmpty = false;
    steps.Add(value - last);
    last = value;
}

QByteArray Rising::Json() const
{
    return "{\"first\":" + QByteArray::number(first) + ",\"steps\":" + steps.Json() + "}";
}

int Words::Place(const QString& text)
{
    const auto known = places.constFind(text);
    if (known != places.constEnd())
        return *known;
    const int place = places.size();
    places.insert(text, place);
    list += (place > 0 ? "," : "") + JsonText(text);
    return place;
}

} // namespace archivepage
