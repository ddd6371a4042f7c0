// Text and file helpers without state. Nothing here knows the recording format.
#pragma once

#include <QFile>
#include <QString>

#include <vector>

class GlobalFunction
{
public:
    /// Removes the characters that file systems refuse (" \ / : * ? < > |) from name without a replacement.
    /// All other characters stay.
    static void FileNameRemoveBadSymbols(QString& name);

    /// Trims text and cuts it at its first ";", which opens a comment also inside quotes.
    static void ClearComment(QString& text);

    /// text without its leading blanks and tabs.
    static QString TrimLeft(const QString& text);

    /// Appends the parts of text between commas to names, unchanged. The first empty part ends the list.
    /// Returns whether all parts were good; false for an empty text.
    static bool GetNamesFromString(QString text, std::vector<QString>* names);

    /// Appends the parts of text between separators to items, trimmed; empty parts keep their place.
    /// Returns false only for an empty text, which appends nothing.
    static bool GetItemsFromString(QString text, std::vector<QString>* items, const QChar* separator);

    /// The same with the first byte of separator as the character.
    static bool GetItemsFromString(QString text, std::vector<QString>* items, const char* separator);

    /// Adds permissions to those of the file. False if it does not exist or refuses them.
    static bool AddFilePermissions(const QString& fileName, QFile::Permissions permissions);

    /// Lets the file's group read and write it. False if it does not exist or refuses.
    static bool AddFileGrpPermissions(const QString& fileName);
};

/// value rounded to the nearest whole number, halves away from zero, computed in 64 bits.
float RoundSigned(float value);
double RoundSigned(double value);
