// What is wanted as a condition of SQL, with its values beside it and never in it.
#pragma once

#include "catalogue/wanted.h"
#include "sql/database.h"

namespace catalogue {

struct Conditions
{
    QStringList terms;  ///< all have to be true of an entry "e"
    sql::Values values; ///< for their place holders

    void Add(const QString& term, const sql::Values& more = {});
    /// Adds "column IN (...)"; without values nothing is found.
    void AddIn(const QString& column, const QStringList& more);
    /// "WHERE ...".
    QString Where() const;
};

/// Looks names up in the database, which tells as well how the rarest of the conditions is best tried.
Conditions ConditionsOf(sql::Database& database, const Wanted& wanted);

} // namespace catalogue
