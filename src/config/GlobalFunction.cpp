// Text and file helpers without state.
#include "config/GlobalFunction.h"

#include "base/permissions.h"

#include <QStringList>

#include <cmath>

void GlobalFunction::FileNameRemoveBadSymbols(QString& name)
{
    for (const char symbol : {'"', '\\', '/', ':', '*', '?', '<', '>', '|'})
        name.remove(QLatin1Char(symbol), Qt::CaseSensitive);
}

void GlobalFunction::ClearComment(QString& text)
{
    text = text.trimmed();
    const auto comment = text.indexOf(QLatin1Char(';'));
    if (comment >= 0)
        text = text.left(comment).trimmed();
}

QString GlobalFunction::TrimLeft(const QString& text)
{
    int first = 0;
    while (first < text.length() && (text[first] == QLatin1Char(' ') || text[first] == QLatin1Char('\t')))
        ++first;
    return text.mid(first);
}

bool GlobalFunction::GetNamesFromString(QString text, std::vector<QString>* names)
{
    if (text.isEmpty())
        return false;
    const QStringList parts = text.split(QLatin1Char(','));
    for (const QString& part : parts) {
        if (part.isEmpty())
            return false;
        names->push_back(part);
    }
    return true;
}

bool GlobalFunction::GetItemsFromString(QString text, std::vector<QString>* items, const QChar* separator)
{
    if (text.isEmpty())
        return false;
    const QStringList parts = text.split(*separator);
    for (const QString& part : parts)
        items->push_back(part.trimmed());
    return true;
}

bool GlobalFunction::GetItemsFromString(QString text, std::vector<QString>* items, const char* separator)
{
    const QChar character(static_cast<unsigned char>(*separator));
    return GetItemsFromString(std::move(text), items, &character);
}

bool GlobalFunction::AddFilePermissions(const QString& fileName, QFile::Permissions permissions)
{
    return zu::AddPermissions(fileName, permissions);
}

bool GlobalFunction::AddFileGrpPermissions(const QString& fileName)
{
    return AddFilePermissions(fileName, zu::GroupAccess);
}

double RoundSigned(double value)
{
    return value >= 0 ? std::floor(value + 0.5) : std::ceil(value - 0.5);
}

float RoundSigned(float value)
{
    return static_cast<float>(RoundSigned(static_cast<double>(value)));
}
