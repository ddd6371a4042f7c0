#include "inicheck/dictionaryentries.h"

#include <config/GlobalFunction.h>

namespace inicheck {

QStringList FieldsOf(const QString& value)
{
    std::vector<QString> fields;
    GlobalFunction::GetItemsFromString(value, &fields, ",");
    if (fields.empty())
        return {QString()};
    QStringList list;
    for (const QString& field : fields)
        list << field;
    return list;
}

std::vector<Signal> SignalsOf(const Section& section, const Family& family)
{
    const bool analog = family.prefix == Analog.prefix;
    std::vector<Signal> entries;
    for (const Entry* entry : EntriesOf(section, family)) {
        if (entry->value.isEmpty())
            continue;
        Signal one{entry, {}, {}, {}, FieldsOf(entry->value), std::nullopt};
        one.name = one.fields[0];
        const int colon = one.name.indexOf(QLatin1Char(':'));
        one.equipment = colon < 0 ? one.name : one.name.left(colon).trimmed();
        if (colon >= 0)
            one.signal = one.name.mid(colon + 1).trimmed();
        if (one.fields.size() >= 2 && !one.name.isEmpty())
            one.parameters = Read(one.fields[1], analog);
        entries.push_back(one);
    }
    return entries;
}

} // namespace inicheck
