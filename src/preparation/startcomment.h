// The recorder's start comment, taken apart.
//
// A comment reads: "Пуск", free text, a blank, the kind, "(", two to five items separated by ",", ")", the
// tail, and maybe a "," with anything after it. It may hold a time stamp of 24 characters that ends in a full
// stop and six digits, the word "(GPS)" and apostrophes; all these are taken out first.
#pragma once

#include <QString>

#include <vector>

namespace zu {

/// The pieces of a comment that has a pair of parentheses.
struct StartComment
{
    QString text;   // the comment without stamp, "(GPS)" and apostrophes
    QString kind;   // last word before the parenthesis
    QString inside; // between the parentheses, trimmed
    QString tail;   // after them up to the first ",", trimmed
    std::vector<QString> items;
};

/// comment without "(GPS)", apostrophes and its time stamp. The stamp is known by its microseconds, those of
/// the fault or else those of the start; one that starts before the fifth character stays.
QString CleanStartComment(const QString& comment, int trigMicroseconds, int startMicroseconds);

/// Splits a cleaned comment. False if it has no "(" with a ")" after it; pieces is then not touched.
bool SplitStartComment(const QString& text, StartComment& pieces);

/// A pick-up or return value made readable.
struct ThresholdText
{
    QString pickUp;
    QString returns; // return value; null for a harmonic, which has none
    QString unit;
};

/// Scales the values by primary and, from 1000 of the pick-up value on, takes them to thousands with "к"
/// before the unit. Values that are not numbers leave all three texts as they are.
void ScaleThreshold(ThresholdText& texts, double primary);

} // namespace zu
