// Whether a catalogue agrees with itself.
#pragma once

#include "sql/database.h"

namespace catalogue {

struct Flaw
{
    const char* reason; ///< word for programs
    QString path;       ///< as it is stored; empty: it is about the whole database
    QString text;
};

enum class Thoroughness { Quick, Whole };

/// What is wrong in the database itself, whatever the files are: damaged pages, rows that belong to nothing,
/// entries whose parts do not fit together. Whole also holds each index against its table. Throws Failure if
/// the database cannot be read for another reason than damage.
std::vector<Flaw> FlawsOf(sql::Database& database, Thoroughness thoroughness);

} // namespace catalogue
