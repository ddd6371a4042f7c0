// What a check of an ini file says.
#pragma once

#include <QString>

#include <vector>

namespace inicheck {

enum class Severity {
    Error,   // the library refuses the section, or reads something else than what is meant
    Warning, // something of the file is not in force
    Note     // in force, and perhaps not meant
};

/// What the library does about it.
enum class Effect {
    None,
    Refused,   // the section fails to load
    Defaulted, // the value of the defaults is taken
    Dropped    // the line has no effect: the library makes the same of the file without it
};

struct Finding
{
    int line = 0; // from 1; 0: the file as a whole
    Severity severity = Severity::Note;
    Effect effect = Effect::None;
    QString section; // empty outside of sections
    QString key;     // empty if it is about no key
    QString what;
    QString advice;    // what to do
    QString file = {}; // empty: the ini file
};

using Findings = std::vector<Finding>;

} // namespace inicheck
