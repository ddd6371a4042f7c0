// What a user writes to say which entries are wanted. All throw WantedTextError, whose text says what to
// write instead.
#pragma once

#include "catalogue/wanted.h"
#include "text/error.h"

namespace archive {

class WantedTextError : public text::Error
{
public:
    using text::Error::Error;
};

enum class End { First, Last };

/// "2024", "2024-03", "2024-03-31", "2024-03-31T12:00", with seconds too: on the clock of each recorder,
/// unless a time has "Z" or an offset such as "+03:00"; "today"; "30d" ago (min, h, d, w, y). End::First is
/// its first instant, End::Last the first after it: of a day, that of the next day.
catalogue::Instant InstantOf(const QString& text, End end);

/// Seconds: "80ms", "0.5s", "2min".
double SecondsOf(const QString& text);

/// Seconds of a longer time: "30d" (min, h, d, w, y).
double AgeOf(const QString& text);

/// Amperes: "12kA", "800A".
double AmperesOf(const QString& text);

/// "20-30" (km), "20-30km", "40-60%"; one of the two may be missing.
struct Distances
{
    catalogue::Range kilometres;
    catalogue::Range percent;
};
Distances DistancesOf(const QString& text);

/// The kinds of fault that words mean: "AG" to "ABCG", "single", "two", "two-earth", "three", "earth", "any",
/// "none" (as an empty text), several with commas between.
QStringList KindsOf(const QString& text);

/// The words of KindsOf.
const std::vector<std::string>& KindWords();

/// The kinds of fault in which all these phases are: "A", "BC", "ABC".
QStringList KindsWithPhases(const QString& text);

} // namespace archive
