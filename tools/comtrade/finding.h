// What a reader of a record forgives, and what else is wrong with the record.
#pragma once

#include "text/reasons.h"
#include "text/severity.h"

#include <QString>

#include <map>
#include <vector>

namespace comtrade {

/// Something about a record that the standard does not allow or that readers do not expect.
struct Finding
{
    QString file;
    qint64 line =
        0;          ///< of a text file or section, or the record of binary data, from 1; 0: of the whole file
    int column = 0; ///< character of the line, from 1; 0: of the whole line
    Severity severity = Severity::Note;
    const char* reason = reason::Unexpected; ///< what is wrong, for programs: a word of reasons.h
    QString text;                            ///< the same for people: the rule, what is there, how it is read
};

/// The findings about one record. Of each kind in each file only the first few are kept, however bad the
/// file, so that memory stays small; the others are counted.
class Findings
{
public:
    static constexpr qint64 MostOfAKind = 10;

    void Add(const Finding& finding);

    /// All of the others, with those that they did not keep. Those from the index on move down by so many
    /// lines, if they have one.
    void Add(const Findings& others, size_t firstMoved, qint64 lines);

    /// In the order in which they were added.
    const std::vector<Finding>& All() const { return findings; }

    /// How many of this kind were found in the file, with those that were not kept.
    qint64 CountOf(const QString& file, const char* reason) const;

    /// The heaviest one; Note if there is none.
    Severity Heaviest() const;

    bool IsEmpty() const { return findings.empty(); }

private:
    std::vector<Finding> findings;
    std::map<std::pair<QString, QString>, qint64> counts; // by file and reason
};

} // namespace comtrade
