// Rules, and the findings about what breaks them.
#pragma once

#include "comtrade/finding.h"

#include <QStringList>

namespace validate {

/// A row of the tables of rules that each part of the check starts with.
struct Rule
{
    const char* reason; ///< a word of reasons.h
    Severity severity;
    /// In the context "validate": the rule, what is there (%1, %2 ...), and what to do.
    const char* text;
};

struct Position
{
    qint64 line = 0; ///< from 1; 0: the whole file
    int column = 0;  ///< from 1; 0: the whole line
};

/// Adds findings about one file.
class Report
{
public:
    /// linesBefore: lines of the file before the text that is checked, if it is a section of a container.
    Report(comtrade::Findings& findings_, const QString& file_, qint64 linesBefore_ = 0);

    /// The values take the places of %1, %2 ... in the rule's text.
    void Add(const Rule& rule, const Position& position, const QStringList& values = {});

private:
    comtrade::Findings& findings;
    const QString file;
    const qint64 linesBefore;
};

} // namespace validate
