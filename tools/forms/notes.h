// What users should know about what was written.
#pragma once

#include "forms/exporting.h"

namespace forms {

struct Note
{
    QString text;
    bool isAskedFor = false; ///< it follows from the request, and not from the record
};

std::vector<Note> NotesOf(const Exported& exported);

/// Lines about what was forgiven in the source. Those of less weight are left out.
QStringList ForgivenLines(const Exported& exported, Severity least = Severity::Note);

} // namespace forms
