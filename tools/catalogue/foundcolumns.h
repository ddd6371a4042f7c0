// What is shown of an entry that was found: columns of the table of entries.
#pragma once

#include "sql/database.h"

#include <QJsonObject>

#include <vector>

namespace catalogue {

struct FoundColumn
{
    const char* name;  ///< in the database
    const char* group; ///< object of the JSON output that it belongs to; empty: the outer one
    const char* key;   ///< there
    bool isFlag;       ///< true or false there
};

const std::vector<FoundColumn>& FoundColumns();

/// Their names, with commas between and "e." in front of each.
const QString& FoundList();

/// Place of a column in FoundColumns.
int FoundPlace(const char* name);

/// A row of them as JSON. An object whose first value is NULL, as of an entry without a fault, is null.
QJsonObject FoundObject(const sql::Row& row, const QString& path);

} // namespace catalogue
