// What there is to say about a place in an ini file.
#pragma once

#include "text/reasons.h"
#include "text/severity.h"

#include <QString>

#include <vector>

namespace inicheck {

using ::Severity;

struct Finding
{
    int line = 0; // of the ini file, from 1; 0: of the whole file
    Severity severity = Severity::Note;
    const char* reason = reason::Unexpected; // what is wrong, for programs: a word of reasons.h
    QString text;                            // the same for people, and what to do
};

using Findings = std::vector<Finding>;

} // namespace inicheck
