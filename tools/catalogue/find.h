// Finds entries of a catalogue.
#pragma once

#include "catalogue/catalogue.h"
#include "catalogue/wanted.h"

namespace catalogue {

/// Gives each entry that is wanted, in the wanted order, as a row of FoundColumns; the same in every kind of
/// database. Throws text::Error.
void Find(Catalogue& catalogue, const Wanted& wanted, const sql::Database::RowFunction& row);

} // namespace catalogue
